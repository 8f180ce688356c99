#pragma once

#include "base/FonteDeItens.h"

#include <QAbstractListModel>

#include <memory>

/**
 * A combo box's list: perhaps an empty text, what a source gives, and what was added by hand. While the
 * source is still reading, nobody is told; the first who asks how many there are has it read to its end.
 */
class ModeloDeItens : public QAbstractListModel
{
    Q_OBJECT
public:
    using QAbstractListModel::QAbstractListModel;

    /// Takes a new list's place. What was chosen from the old one is chosen no more; texts in fields stay.
    void Trocar(std::shared_ptr<FonteDeItens> fonte, bool comVazio);
    void Acrescentar(const QString &item);
    /// As FonteDeItens; rows of this list.
    int Procurar(QStringView prefixo) const;
    bool Contem(const QString &valor) const;
    /// While true, nobody waits: the list counts as empty until its rows are asked for.
    void DefinirSemEsperar(bool semEsperar) { m_semEsperar = semEsperar; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    int DaFonte() const { return (m_comVazio ? 1 : 0) + m_fonte->Quantos(); }

    std::shared_ptr<FonteDeItens> m_fonte = std::make_shared<FonteDeTextos>();
    mutable FonteDeTextos m_acrescentados;
    bool m_comVazio = false;
    bool m_semEsperar = false;
};
