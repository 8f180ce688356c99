#include "store/Plano.h"

#include "store/Comandos.h"
#include "store/Esquema.h"

#include <array>

namespace
{
QString Colchetes(const QStringList &colunas)
{
    return "[" + colunas.join("],[") + "]";
}

struct Escolha {
    QString (*comando)();
    const char *tabela;
    const char *coluna;
    const char *indice;
    bool comNulo; ///< the statement asks for NULL as well
};

constexpr std::array kEscolhas = {
    Escolha{Comandos::SqlTipos, "Receitas", "Classificacao", Esquema::kIndiceDosTipos, false},
    Escolha{Comandos::SqlTiposPesquisa, "Receitas", "Classificacao", Esquema::kIndiceDosTipos, false},
    Escolha{Comandos::SqlOrigensPesquisa, "Receitas", "Origem", Esquema::kIndiceDasOrigens, false},
    Escolha{Comandos::SqlUnidades, "Ingredientes", "Unidade", Esquema::kIndiceDasUnidades, false},
    Escolha{Comandos::SqlNomesDeIngredientes, "Ingredientes", "Ingrediente", Esquema::kIndiceDosIngredientes,
            true}};

Plano PlanoDaEscolha(const Escolha &escolha)
{
    const QString coluna = escolha.coluna;
    const QString fonte = "Select " + coluna + " from " + escolha.tabela + " Indexed By " + escolha.indice +
                          " Where " + coluna + " is not null and " + coluna + " collate nocase ";
    const QString ordem = " Order By " + coluna + " collate nocase";
    Plano plano{Plano::Tipo::Distintos, fonte + ">= ''" + ordem, 0};
    plano.seguinte = fonte + "> ?1" + ordem;
    if (escolha.comNulo)
        plano.comNulo = "Select 1 from " + QString(escolha.tabela) + " Where " + coluna + " is null Limit 1";
    return plano;
}

/// The same text in all letter cases that the index tells apart and the book's order does not: only letters
/// outside ASCII. Empty when there would be too many.
QStringList Caixas(const QString &texto)
{
    constexpr int kMaisLetras = 6;
    QStringList caixas{texto};
    int letras = 0;
    for (qsizetype i = 0; i < texto.size(); ++i) {
        const QChar c = texto[i];
        const QChar outra = c.toUpper() == c ? c.toLower() : c.toUpper();
        if (c.unicode() < 0x80 || outra == c)
            continue;
        if (++letras > kMaisLetras)
            return {};
        for (qsizetype k = caixas.size(); k > 0; --k) {
            QString nova = caixas[k - 1];
            nova[i] = outra;
            caixas += nova;
        }
    }
    return caixas;
}

/// Shows the engine the way to the ingredient's index; what it finds there is compared as written all the
/// same.
QString ComCaminhoDoIngrediente(const QString &sql)
{
    const QLatin1String marca(
        " and id_receitas in (Select id_receitas from Ingredientes Where Ingrediente = '");
    const qsizetype inicio = sql.indexOf(marca);
    if (inicio < 0)
        return sql;
    const qsizetype valor = inicio + marca.size();
    const qsizetype fim = sql.indexOf('\'', valor);
    if (fim < 0 || QStringView(sql).sliced(fim).left(2) != QLatin1String("')"))
        return sql;
    const QStringList caixas = Caixas(sql.mid(valor, fim - valor));
    if (caixas.isEmpty())
        return sql;
    return sql.left(fim + 1) + " and Ingrediente collate nocase in ('" + caixas.join("','") + "')" +
           sql.mid(fim + 1);
}
} // namespace

QString Estreitar(const QString &sql, const QStringList &colunas)
{
    QString origem = sql;
    while (!origem.isEmpty() && (origem.back() == ';' || origem.back().isSpace()))
        origem.chop(1);
    return "Select " + Colchetes(colunas) + " from (" + origem + ")";
}

Plano PlanoDe(const QString &sql, const QStringList &colunas, int versao)
{
    if (versao >= 1) {
        const qsizetype nome = colunas.indexOf("Nome");
        if (nome >= 0 && sql == Comandos::SqlLista())
            return {Plano::Tipo::EmOrdem,
                    "Select " + Colchetes(colunas) + " from Receitas Indexed By " + Esquema::kIndiceDaLista +
                        " Order By " + Esquema::ChaveDoNome() + " collate nocase,id_receitas",
                    static_cast<int>(nome)};
        for (const Escolha &escolha : kEscolhas)
            if (sql == escolha.comando())
                return PlanoDaEscolha(escolha);
    }
    const QString comCaminho = versao >= 1 ? ComCaminhoDoIngrediente(sql) : sql;
    return {Plano::Tipo::Direto, colunas.isEmpty() ? comCaminho : Estreitar(comCaminho, colunas)};
}
