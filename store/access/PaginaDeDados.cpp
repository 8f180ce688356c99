#include "store/access/PaginaDeDados.h"

#include "store/access/ErroAccess.h"

using namespace Access;

namespace
{
constexpr qint64 kDono = 4;
constexpr int kMaisRegistros = 256;
constexpr quint16 kLugar = 0x1FFF;
constexpr quint16 kNuncaUsada = 0x2000;
constexpr quint16 kPonteiro = 0x4000;
constexpr quint16 kOculto = 0x8000;

PaginaDeDados::Estado EstadoDasMarcas(quint16 slot)
{
    using Estado = PaginaDeDados::Estado;
    switch (slot & (kPonteiro | kOculto)) {
    case 0:
        return Estado::Vivo;
    case kPonteiro:
        return Estado::Ponteiro;
    case kOculto:
        return Estado::SoPorPonteiro;
    default:
        return Estado::Apagado;
    }
}
} // namespace

PaginaDeDados::PaginaDeDados(const ArquivoJet &arquivo, qint64 numero)
    : m_bytes(arquivo.Pagina(numero, TipoDePagina::Dados))
{
    const Trecho pagina{m_bytes};
    const Formato &formato = arquivo.formato();
    m_dono = pagina.U32(kDono);
    const int total = pagina.U16(formato.registros);
    const qint64 primeiro = formato.registros + 2 + 2 * qint64(total);
    qint64 fim = formato.pagina;
    if (total > kMaisRegistros || primeiro > fim)
        Danificado(QString("registros demais na página %1").arg(numero));
    m_registros.reserve(static_cast<std::size_t>(total));
    // Records lie from the page's end downwards; a deleted one keeps its place in the chain.
    for (int i = 0; i < total; ++i) {
        const quint16 slot = pagina.U16(formato.registros + 2 + 2 * qint64(i));
        const qint64 comeco = slot & kLugar;
        if ((slot & kNuncaUsada) || comeco < primeiro || comeco > fim)
            Danificado(QString("registro fora do lugar na página %1").arg(numero));
        m_registros.push_back({comeco, fim - comeco, EstadoDasMarcas(slot)});
        fim = comeco;
    }
}

const PaginaDeDados::Lugar &PaginaDeDados::Slot(int registro) const
{
    if (registro < 0 || registro >= Registros())
        Danificado("um ponteiro leva a um registro que não existe");
    return m_registros[static_cast<std::size_t>(registro)];
}

Trecho PaginaDeDados::Registro(int registro) const
{
    const Lugar &lugar = Slot(registro);
    return Trecho{m_bytes}.Parte(lugar.comeco, lugar.tamanho);
}
