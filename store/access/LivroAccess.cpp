#include "store/access/LivroAccess.h"

#include "store/access/Catalogo.h"
#include "store/access/ErroAccess.h"
#include "store/access/Linhas.h"
#include "store/access/MapaDePaginas.h"
#include "store/access/Valores.h"

#include <algorithm>

using namespace Access;

namespace
{
enum class Falta { Recusar, Nulo };

/// A column of ours: where it is in this file, if it is.
class Campo
{
public:
    Campo(const DefinicaoTabela &tabela, const char *nome, Falta falta = Falta::Nulo)
        : m_coluna(tabela.Procurar(nome))
    {
        if (!m_coluna && falta == Falta::Recusar)
            throw ErroAccess(QString("Falta a coluna %1 em uma tabela do arquivo.").arg(QString::fromLatin1(nome)));
    }

    std::optional<QString> Texto(LeitorDeValores &leitor, const Linha &linha) const
    {
        return m_coluna ? leitor.Texto(linha, *m_coluna) : std::nullopt;
    }
    std::optional<QString> Data(LeitorDeValores &leitor, const Linha &linha) const
    {
        return m_coluna ? leitor.Data(linha, *m_coluna) : std::nullopt;
    }
    std::optional<double> Numero(LeitorDeValores &leitor, const Linha &linha) const
    {
        return m_coluna ? leitor.Numero(linha, *m_coluna) : std::nullopt;
    }
    std::optional<qint32> Inteiro(LeitorDeValores &leitor, const Linha &linha) const
    {
        return m_coluna ? leitor.Inteiro(linha, *m_coluna) : std::nullopt;
    }
    qint32 Chave(LeitorDeValores &leitor, const Linha &linha) const
    {
        const std::optional<qint32> chave = Inteiro(leitor, linha);
        if (!chave)
            Danificado("uma linha sem número");
        return *chave;
    }

private:
    const Coluna *m_coluna;
};

std::vector<LivroAccess::Receita> LerReceitas(const ArquivoJet &arquivo, const DefinicaoTabela &tabela,
                                              LeitorDeValores &leitor, quint32 &linhas)
{
    const Campo id(tabela, "id_receitas", Falta::Recusar);
    const Campo nome(tabela, "Nome", Falta::Recusar);
    const Campo data(tabela, "Data", Falta::Recusar);
    const Campo classificacao(tabela, "Classificacao");
    const Campo modo(tabela, "Modo", Falta::Recusar);
    const Campo tipo(tabela, "Tipo");
    const Campo origem(tabela, "Origem");
    const Campo porcoes(tabela, "Porcoes", Falta::Recusar);
    const Campo preparo(tabela, "Preparo");
    const Campo tipoCalorias(tabela, "Tipo_Calorias");
    const Campo calorias(tabela, "Calorias", Falta::Recusar);
    const Campo observacao(tabela, "Observacao");
    const Campo figura(tabela, "Figura");

    std::vector<LivroAccess::Receita> receitas;
    linhas = VisitarLinhas(arquivo, tabela, [&](const Linha &linha) {
        receitas.push_back({.id_receitas = id.Chave(leitor, linha),
                            .Nome = nome.Texto(leitor, linha),
                            .Data = data.Data(leitor, linha),
                            .Classificacao = classificacao.Texto(leitor, linha),
                            .Modo = modo.Texto(leitor, linha),
                            .Tipo = tipo.Numero(leitor, linha),
                            .Origem = origem.Texto(leitor, linha),
                            .Porcoes = porcoes.Numero(leitor, linha),
                            .Preparo = preparo.Texto(leitor, linha),
                            .Tipo_Calorias = tipoCalorias.Texto(leitor, linha),
                            .Calorias = calorias.Numero(leitor, linha),
                            .Observacao = observacao.Texto(leitor, linha),
                            .Figura = figura.Texto(leitor, linha)});
    });
    return receitas;
}

std::vector<LivroAccess::Ingrediente> LerIngredientes(const ArquivoJet &arquivo,
                                                      const DefinicaoTabela &tabela, LeitorDeValores &leitor,
                                                      quint32 &linhas)
{
    const Campo id(tabela, "id_ingredientes", Falta::Recusar);
    const Campo receita(tabela, "id_receitas", Falta::Recusar);
    const Campo nome(tabela, "Ingrediente", Falta::Recusar);
    const Campo quantidade(tabela, "Quantidade");
    const Campo unidade(tabela, "Unidade");

    std::vector<LivroAccess::Ingrediente> ingredientes;
    linhas = VisitarLinhas(arquivo, tabela, [&](const Linha &linha) {
        ingredientes.push_back({.id_ingredientes = id.Chave(leitor, linha),
                                .id_receitas = receita.Inteiro(leitor, linha),
                                .Nome = nome.Texto(leitor, linha),
                                .Quantidade = quantidade.Texto(leitor, linha),
                                .Unidade = unidade.Texto(leitor, linha)});
    });
    return ingredientes;
}

/// Rows come in the file's order: sorts them by number and refuses a number that occurs twice. Returns the
/// highest number ever given.
template <typename T>
qint32 Ordenar(std::vector<T> &linhas, qint32 T::*chave, qint32 contador)
{
    std::ranges::sort(linhas, {}, chave);
    if (std::ranges::adjacent_find(linhas, {}, chave) != linhas.end())
        Danificado("duas linhas com o mesmo número");
    return std::max({0, contador, linhas.empty() ? 0 : linhas.back().*chave});
}

void ConferirContagem(const DefinicaoTabela &tabela, const char *nome, quint32 linhas)
{
    if (linhas != tabela.linhas)
        Danificado(QString("na tabela %1 há %2 linhas em vez de %3")
                       .arg(QString::fromLatin1(nome))
                       .arg(linhas)
                       .arg(tabela.linhas));
}

/// What a cut or a half-finished copy leaves behind even where no row is missing.
void ConferirPaginas(const ArquivoJet &arquivo, const DefinicaoTabela &tabela)
{
    for (const quint32 mapa : tabela.outrosMapas)
        LerMapaDePaginas(arquivo, mapa); // throws when a page of it lies behind the file's end
    const std::vector<qint64> livres = LerPaginasLivres(arquivo);
    for (const qint64 pagina : PaginasDaTabela(arquivo, tabela))
        if (std::ranges::binary_search(livres, pagina))
            Danificado(QString("a página %1 está em uso e livre ao mesmo tempo").arg(pagina));
}
} // namespace

LivroAccess LerLivroAccess(QIODevice &dispositivo)
{
    const ArquivoJet arquivo(dispositivo);
    const Catalogo catalogo = LerCatalogo(arquivo);
    const DefinicaoTabela receitas = LerDefinicao(arquivo, catalogo.receitas);
    const DefinicaoTabela ingredientes = LerDefinicao(arquivo, catalogo.ingredientes);
    ConferirPaginas(arquivo, receitas);
    ConferirPaginas(arquivo, ingredientes);

    LivroAccess livro;
    LeitorDeValores leitor(arquivo);
    quint32 linhas = 0;
    livro.receitas = LerReceitas(arquivo, receitas, leitor, linhas);
    ConferirContagem(receitas, "Receitas", linhas);
    livro.ingredientes = LerIngredientes(arquivo, ingredientes, leitor, linhas);
    ConferirContagem(ingredientes, "Ingredientes", linhas);
    livro.ultimaReceita = Ordenar(livro.receitas, &LivroAccess::Receita::id_receitas, receitas.contador);
    livro.ultimoIngrediente =
        Ordenar(livro.ingredientes, &LivroAccess::Ingrediente::id_ingredientes, ingredientes.contador);
    return livro;
}
