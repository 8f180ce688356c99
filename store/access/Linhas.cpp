#include "store/access/Linhas.h"

#include "store/access/ErroAccess.h"
#include "store/access/MapaDePaginas.h"
#include "store/access/PaginaDeDados.h"

#include <unordered_set>

using namespace Access;

namespace
{
using Estado = PaginaDeDados::Estado;

constexpr int kMaisSaltos = 8;

/// Follows pointers to where a moved row lives and calls `usar` with its bytes.
class Seguidor
{
public:
    Seguidor(const ArquivoJet &arquivo, const DefinicaoTabela &tabela)
        : m_arquivo(arquivo)
        , m_tabela(tabela)
    {
    }

    void Seguir(Trecho registro, const std::function<void(const Trecho &)> &usar)
    {
        quint32 destino = registro.U32(0);
        for (int saltos = 0; saltos < kMaisSaltos; ++saltos) {
            const auto [numero, linha] = Ponteiro::De(destino);
            const PaginaDeDados pagina(m_arquivo, numero);
            // Without this a damaged pointer could show a row twice.
            if (pagina.Dono() != m_tabela.pagina || !m_vistos.insert(destino).second)
                break;
            switch (pagina.EstadoDe(linha)) {
            case Estado::SoPorPonteiro:
                usar(pagina.Registro(linha));
                return;
            case Estado::Ponteiro:
                destino = pagina.Registro(linha).U32(0);
                continue;
            case Estado::Vivo:
            case Estado::Apagado:
                break;
            }
            break;
        }
        Danificado("uma linha que mudou de lugar não foi achada");
    }

private:
    const ArquivoJet &m_arquivo;
    const DefinicaoTabela &m_tabela;
    std::unordered_set<quint32> m_vistos;
};
} // namespace

std::vector<qint64> Access::PaginasDaTabela(const ArquivoJet &arquivo, const DefinicaoTabela &tabela)
{
    return LerMapaDePaginas(arquivo, tabela.mapa);
}

quint32 Access::VisitarLinhas(const ArquivoJet &arquivo, const DefinicaoTabela &tabela,
                              const std::function<void(const Linha &)> &visita)
{
    quint32 linhas = 0;
    const auto usar = [&](const Trecho &registro) {
        visita(Linha(arquivo.formato(), tabela, registro));
        ++linhas;
    };
    Seguidor seguidor(arquivo, tabela);
    for (const qint64 numero : PaginasDaTabela(arquivo, tabela)) {
        // Only pages of the table's map: freed pages keep their owner, and dead rows would return. A page of
        // the map that is not the table's holds no row of it; the count of rows decides.
        if (static_cast<quint8>(arquivo.Pagina(numero)[0]) != static_cast<quint8>(TipoDePagina::Dados))
            continue;
        const PaginaDeDados pagina(arquivo, numero);
        if (pagina.Dono() != tabela.pagina)
            continue;
        for (int i = 0; i < pagina.Registros(); ++i) {
            if (pagina.EstadoDe(i) == Estado::Vivo)
                usar(pagina.Registro(i));
            else if (pagina.EstadoDe(i) == Estado::Ponteiro)
                seguidor.Seguir(pagina.Registro(i), usar);
        }
    }
    return linhas;
}
