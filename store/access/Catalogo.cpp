#include "store/access/Catalogo.h"

#include "store/access/ErroAccess.h"
#include "store/access/Linhas.h"
#include "store/access/Valores.h"

using namespace Access;

namespace
{
constexpr qint64 kPaginaDoCatalogo = 2;
constexpr qint32 kTabela = 1;
constexpr qint32 kVinculadaOdbc = 4;
constexpr qint32 kVinculada = 6;
constexpr quint32 kDoSistema = 0x80000000;
constexpr quint32 kTemporaria = 2;
constexpr quint32 kPaginaDaTabela = 0x00FFFFFF;

/// What the catalogue says of one of our names.
struct Achado {
    QString nome;
    int vezes = 0;
    bool vinculada = false;
    qint64 pagina = 0;
};

const Coluna &Exigir(const DefinicaoTabela &catalogo, const char *nome)
{
    const Coluna *coluna = catalogo.Procurar(nome);
    if (!coluna)
        Danificado("o catálogo não tem a coluna " + QString::fromLatin1(nome));
    return *coluna;
}

qint64 Resolver(const Achado &achado)
{
    if (achado.vezes > 1)
        Danificado("há duas tabelas " + achado.nome);
    if (achado.vezes == 0 && achado.vinculada)
        throw ErroAccess(QString("A tabela %1 é vinculada: os dados dela estão em outro arquivo. "
                           "Traga o arquivo que contém as receitas.")
                       .arg(achado.nome));
    if (achado.vezes == 0)
        throw ErroAccess(QString("O arquivo não contém a tabela %1.").arg(achado.nome));
    return achado.pagina;
}
} // namespace

Catalogo Access::LerCatalogo(const ArquivoJet &arquivo)
{
    const DefinicaoTabela catalogo = LerDefinicao(arquivo, kPaginaDoCatalogo);
    const Coluna &id = Exigir(catalogo, "Id");
    const Coluna &nome = Exigir(catalogo, "Name");
    const Coluna &tipo = Exigir(catalogo, "Type");
    const Coluna &marcas = Exigir(catalogo, "Flags");

    Achado receitas{.nome = "Receitas"};
    Achado ingredientes{.nome = "Ingredientes"};
    LeitorDeValores leitor(arquivo);
    VisitarLinhas(arquivo, catalogo, [&](const Linha &linha) {
        const QString nomeDoObjeto = leitor.Texto(linha, nome).value_or(QString());
        const qint32 tipoDoObjeto = leitor.Inteiro(linha, tipo).value_or(0);
        const auto marcasDoObjeto = static_cast<quint32>(leitor.Inteiro(linha, marcas).value_or(0));
        for (Achado *achado : {&receitas, &ingredientes}) {
            // Queries, forms and reports may bear the same name.
            if (nomeDoObjeto.compare(achado->nome, Qt::CaseInsensitive) != 0)
                continue;
            if (tipoDoObjeto == kVinculada || tipoDoObjeto == kVinculadaOdbc)
                achado->vinculada = true;
            if (tipoDoObjeto != kTabela || (marcasDoObjeto & (kDoSistema | kTemporaria)))
                continue;
            ++achado->vezes;
            achado->pagina = static_cast<quint32>(leitor.Inteiro(linha, id).value_or(0)) & kPaginaDaTabela;
        }
    });
    return {.receitas = Resolver(receitas), .ingredientes = Resolver(ingredientes)};
}
