#include "store/access/DefinicaoTabela.h"

#include "store/access/ErroAccess.h"
#include "store/access/Texto.h"
#include "store/access/Trecho.h"

#include <algorithm>

using namespace Access;

namespace
{
constexpr qint64 kSeguinte = 4; ///< u32: the definition's next page
constexpr qint64 kTamanho = 8;  ///< u32: length of the stream
constexpr qint64 kCabecalhoDePagina = 8;
constexpr std::size_t kMaisPaginas = 16;
constexpr int kMaisColunas = 255;
constexpr quint32 kMaisIndices = 64;
constexpr quint8 kFixa = 1;

/// All pages of the definition as one run of bytes.
QByteArray LerFluxo(const ArquivoJet &arquivo, qint64 pagina)
{
    QByteArray fluxo;
    std::vector<qint64> vistas;
    while (pagina != 0) {
        if (vistas.size() == kMaisPaginas || std::find(vistas.begin(), vistas.end(), pagina) != vistas.end())
            Danificado("a definição de uma tabela não tem fim");
        vistas.push_back(pagina);
        const QByteArray bytes = arquivo.Pagina(pagina, TipoDePagina::Definicao);
        fluxo += vistas.size() == 1 ? bytes : bytes.sliced(kCabecalhoDePagina);
        pagina = Trecho{bytes}.U32(kSeguinte);
    }
    return fluxo;
}

/// Walks the definition's blocks, which follow one another without gaps.
class Leitor
{
public:
    Leitor(const Formato &formato, Trecho fluxo)
        : m_formato(formato)
        , m_fluxo(fluxo)
        , m_lugar(formato.defBlocos)
    {
    }

    Trecho Pegar(qint64 tamanho)
    {
        const Trecho bloco = m_fluxo.Parte(m_lugar, tamanho);
        m_lugar += tamanho;
        return bloco;
    }

    QString PegarNome()
    {
        const Trecho tamanho = Pegar(m_formato.nomeTamanho);
        const Trecho nome = Pegar(m_formato.nomeTamanho == 1 ? tamanho.U8(0) : tamanho.U16(0));
        // Names are never compressed.
        return m_formato.jet == 3 ? TextoDaPagina1252(nome) : TextoUtf16(nome);
    }

private:
    const Formato &m_formato;
    Trecho m_fluxo;
    qint64 m_lugar;
};

Coluna LerColuna(const Formato &formato, const Trecho &entrada)
{
    Coluna coluna = {};
    coluna.tipo = static_cast<TipoColuna>(entrada.U8(0));
    coluna.numero = entrada.U16(formato.colNumero);
    coluna.fixa = entrada.U8(formato.colMarcas) & kFixa;
    coluna.lugarFixo = entrada.U16(formato.colFixo);
    coluna.variavel = entrada.U16(formato.colVariavel);
    coluna.tamanho = entrada.U16(formato.colTamanho);
    coluna.escala = entrada.U8(formato.colEscala);
    return coluna;
}

void ConferirColunas(const Formato &formato, const DefinicaoTabela &tabela)
{
    std::vector<bool> vistos(static_cast<std::size_t>(tabela.topo));
    for (const Coluna &coluna : tabela.colunas) {
        const auto numero = static_cast<std::size_t>(coluna.numero);
        if (numero >= vistos.size() || vistos[numero])
            Danificado("colunas com o mesmo número");
        vistos[numero] = true;
        if (coluna.fixa ? coluna.lugarFixo + coluna.TamanhoFixo() > formato.fimDaAreaFixa
                        : coluna.variavel >= tabela.variaveis)
            Danificado("uma coluna fora do lugar");
    }
}
} // namespace

int Coluna::TamanhoFixo() const
{
    switch (tipo) {
    case TipoColuna::SimNao:
        return 0;
    case TipoColuna::Byte:
        return 1;
    case TipoColuna::Inteiro:
        return 2;
    case TipoColuna::Longo:
    case TipoColuna::Simples:
        return 4;
    case TipoColuna::Moeda:
    case TipoColuna::Duplo:
    case TipoColuna::DataHora:
        return 8;
    case TipoColuna::Guid:
        return 16;
    case TipoColuna::Decimal:
        return 17;
    case TipoColuna::Binario:
    case TipoColuna::Texto:
    case TipoColuna::Ole:
    case TipoColuna::Memo:
        break;
    }
    return tamanho;
}

const Coluna *DefinicaoTabela::Procurar(const char *nome) const
{
    const QString procurado = QString::fromLatin1(nome);
    const Coluna *achada = nullptr;
    for (const Coluna &coluna : colunas) {
        if (coluna.nome.compare(procurado, Qt::CaseInsensitive) != 0)
            continue;
        if (achada)
            Danificado("duas colunas " + procurado);
        achada = &coluna;
    }
    return achada;
}

DefinicaoTabela Access::LerDefinicao(const ArquivoJet &arquivo, qint64 pagina)
{
    const Formato &formato = arquivo.formato();
    const QByteArray bytes = LerFluxo(arquivo, pagina);
    const Trecho fluxo{bytes};
    if (fluxo.U32(kTamanho) > fluxo.Tamanho())
        Danificado("falta um pedaço da definição de uma tabela");

    DefinicaoTabela tabela = {};
    tabela.pagina = pagina;
    tabela.linhas = fluxo.U32(formato.defLinhas);
    tabela.contador = fluxo.I32(formato.defContador);
    tabela.topo = fluxo.U16(formato.defTopo);
    tabela.variaveis = fluxo.U16(formato.defVariaveis);
    tabela.mapa = fluxo.U32(formato.defMapa);
    const int colunas = fluxo.U16(formato.defColunas);
    const quint32 logicos = fluxo.U32(formato.defIndicesLogicos);
    const quint32 reais = fluxo.U32(formato.defIndicesReais);
    if (colunas < 1 || colunas > kMaisColunas || tabela.variaveis > kMaisColunas || logicos > kMaisIndices ||
        reais > kMaisIndices)
        Danificado("a definição de uma tabela não faz sentido");

    Leitor leitor(formato, fluxo);
    leitor.Pegar(formato.indiceResumo * reais);
    for (int i = 0; i < colunas; ++i)
        tabela.colunas.push_back(LerColuna(formato, leitor.Pegar(formato.coluna)));
    for (Coluna &coluna : tabela.colunas)
        coluna.nome = leitor.PegarNome();
    ConferirColunas(formato, tabela);

    const auto anotarMapa = [&tabela](quint32 ponteiro) {
        if (ponteiro != 0)
            tabela.outrosMapas.push_back(ponteiro);
    };
    for (quint32 i = 0; i < reais; ++i)
        anotarMapa(leitor.Pegar(formato.indiceReal).U32(formato.indiceRealMapa));
    leitor.Pegar(formato.indiceLogico * logicos);
    for (quint32 i = 0; i < logicos; ++i)
        leitor.PegarNome();
    constexpr quint16 kFimDosLongos = 0xFFFF;
    while (leitor.Pegar(2).U16(0) != kFimDosLongos) {
        anotarMapa(leitor.Pegar(4).U32(0));
        leitor.Pegar(4); // the map of pages with room
        if (tabela.outrosMapas.size() > kMaisIndices + kMaisColunas)
            Danificado("a definição de uma tabela não tem fim");
    }
    return tabela;
}
