#include "store/access/MapaDePaginas.h"

#include "store/access/ErroAccess.h"
#include "store/access/PaginaDeDados.h"

#include <algorithm>

using namespace Access;

namespace
{
constexpr quint32 kMapaDasLivres = 0x100; // page 1, row 0
enum : quint8 { kEmLinha = 0, kPorReferencia = 1 };

enum class AlemDoFim { Recusar, Ignorar };

/// Appends the pages whose bits are set, the first bit standing for page `primeira`.
void AcrescentarBits(const Trecho &bits, qint64 primeira, qint64 paginas, AlemDoFim alemDoFim,
                     std::vector<qint64> &lista)
{
    const QByteArrayView bytes = bits.Bytes();
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<quint8>(bytes[i]);
        for (int bit = 0; byte >> bit; ++bit) {
            if (!(byte >> bit & 1))
                continue;
            const qint64 pagina = primeira + 8 * qint64(i) + bit;
            if (pagina < paginas)
                lista.push_back(pagina);
            else if (alemDoFim == AlemDoFim::Recusar)
                Danificado(QString("a página %1 está além do fim: falta o resto do arquivo").arg(pagina));
        }
    }
}

std::vector<qint64> Ler(const ArquivoJet &arquivo, quint32 ponteiro, AlemDoFim alemDoFim)
{
    const auto [pagina, linha] = Ponteiro::De(ponteiro);
    const PaginaDeDados dados(arquivo, pagina);
    if (dados.EstadoDe(linha) != PaginaDeDados::Estado::Vivo)
        Danificado("um mapa de páginas foi apagado");
    const Trecho mapa = dados.Registro(linha);
    std::vector<qint64> lista;
    switch (mapa.U8(0)) {
    case kEmLinha:
        AcrescentarBits(mapa.Desde(5), mapa.U32(1), arquivo.Paginas(), alemDoFim, lista);
        break;
    case kPorReferencia: {
        constexpr qint64 kBits = 4; // where the bits begin on a page of them
        const qint64 total = std::min((mapa.Tamanho() - 1) / 4, arquivo.formato().referencias);
        const qint64 porPagina = (arquivo.formato().pagina - kBits) * 8;
        for (qint64 i = 0; i < total; ++i) {
            const quint32 referencia = mapa.U32(1 + 4 * i);
            if (referencia == 0)
                continue;
            const QByteArray bits = arquivo.Pagina(referencia, TipoDePagina::Mapa);
            AcrescentarBits(Trecho{bits}.Desde(kBits), i * porPagina, arquivo.Paginas(), alemDoFim, lista);
        }
        break;
    }
    default:
        Danificado("mapa de páginas de tipo desconhecido");
    }
    return lista;
}
} // namespace

std::vector<qint64> Access::LerMapaDePaginas(const ArquivoJet &arquivo, quint32 ponteiro)
{
    return Ler(arquivo, ponteiro, AlemDoFim::Recusar);
}

std::vector<qint64> Access::LerPaginasLivres(const ArquivoJet &arquivo)
{
    // Pages behind the file's end are free by nature.
    return Ler(arquivo, kMapaDasLivres, AlemDoFim::Ignorar);
}
