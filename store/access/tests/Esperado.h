#pragma once

#include "store/access/LivroAccess.h"

#include <QJsonObject>
#include <QStringList>

class Banco;

/**
 * The values that a correct reader finds in a sample file, and the comparison with what was found. NULL and
 * the empty text are different values.
 */
class Esperado
{
public:
    /// @param caminho the sample's esperado.json; a file that cannot be read gives an invalid object
    explicit Esperado(const QString &caminho);

    bool Valido() const { return !m_raiz.isEmpty(); }
    /// One line a difference; none when the book is as expected.
    QStringList Diferencas(const LivroAccess &livro) const;
    /// The same for the book in a database. Tries the next numbers as well, and so changes it.
    QStringList Diferencas(const Banco &banco) const;

private:
    using Linhas = QList<QVariantMap>;
    QStringList Comparar(const Linhas &receitas, const Linhas &ingredientes) const;
    qint64 MaiorNumero(const char *chave) const;

    QJsonObject m_raiz;
};
