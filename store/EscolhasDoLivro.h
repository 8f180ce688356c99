#pragma once

#include "base/FonteDeItens.h"
#include "store/RecordSet.h"

#include <QTimer>

#include <functional>
#include <memory>

class Banco;
class Consulta;
class ErroBanco;

/**
 * What a choice list takes from the book: the values of a "Select DISTINCT ..." in the book's order. They are
 * read a slice at a time between the window's events; whoever asks for one meanwhile waits for the rest.
 */
class EscolhasDoLivro : public FonteDeItens
{
public:
    /// Told, from the event loop, of a failure after the statement was accepted; the list then ends there.
    using AoFalhar = std::function<void(const ErroBanco &)>;

    /// Opens the query, and reads it whole if that takes only moments. Throws ErroBanco.
    EscolhasDoLivro(const Banco &banco, const QString &sql, AoFalhar aoFalhar);
    ~EscolhasDoLivro() override;

    int Quantos() override;
    QString Item(int qual) override;
    int Procurar(QStringView prefixo) override;
    bool Contem(const QString &valor) override;
    bool Completa() const { return !m_consulta; }

private:
    void Avancar(int ms);

    std::unique_ptr<Consulta> m_consulta; ///< while it is being read
    RecordSet m_valores;
    QTimer m_vez;
    AoFalhar m_aoFalhar;
};
