#pragma once

#include "browse/LinhasLista.h"

#include <QAbstractTableModel>
#include <QIcon>

/// The list's rows as views see them. A row's key and tag stand in the roles of its first column.
class ModeloLista : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Papel { kChave = Qt::UserRole, kTag = Qt::UserRole + 1 };

    explicit ModeloLista(QObject *parent = nullptr);

    void Preencher(LinhasLista linhas);
    /// Takes the rows over that have come since. Views learn of them when there are many more than they know
    /// of, and at the end (`todas`): each time they measure all of them anew.
    void Tomar(bool todas);
    /// The same recipes, all of them now, and in their right order; what is selected stays selected.
    void Substituir(LinhasLista linhas);
    void Limpar() { Preencher({}); }
    void Ordenar(LinhasLista::Coluna coluna);
    void Remover(int linha);
    const LinhasLista &Linhas() const { return m_linhas; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    LinhasLista m_linhas;
    int m_mostradas = 0; ///< rows that views know of
    QIcon m_marcador;
};
