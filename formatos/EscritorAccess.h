#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace Formatos
{
/**
 * A fresh Access file (of the kind that Access 2000 to 2003 write) with the book's two tables, made in one
 * go: what an old installation opens as its `dadosr.lst`. No value means NULL.
 */
class EscritorAccess
{
public:
    using Texto = std::optional<QString>;
    using Numero = std::optional<double>;

    struct Receita {
        qint32 id_receitas = 0;
        Texto Nome;
        Numero Data; ///< days since 30 December 1899, the time of day behind the point
        Texto Classificacao, Modo;
        Numero Tipo;
        Texto Origem;
        Numero Porcoes;
        Texto Preparo, Tipo_Calorias;
        Numero Calorias;
        Texto Observacao, Figura;
    };
    struct Ingrediente {
        qint32 id_ingredientes = 0;
        qint32 id_receitas = 0;
        Texto Ingrediente, Quantidade, Unidade;
    };

    /// The whole file; empty when it would pass 2 GB. Numbers ascend and none stands twice.
    static QByteArray Gerar(const QList<Receita> &receitas, const QList<Ingrediente> &ingredientes);

    /// The longest text that a column takes; memos take any.
    static constexpr qsizetype kMaiorTexto = 255;
};
} // namespace Formatos
