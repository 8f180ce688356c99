#pragma once

#include "store/access/ArquivoJet.h"
#include "store/access/Trecho.h"

#include <vector>

namespace Access
{
/**
 * A page of records: rows, pieces of long values or usage maps. The whole chain of slots is checked when the
 * page is opened. The records' bytes live as long as this object or a copy of it.
 */
class PaginaDeDados
{
public:
    /// What a slot's marks say of its record.
    enum class Estado {
        Vivo,
        Ponteiro,      ///< the row lives elsewhere, the record begins with the pointer to it
        SoPorPonteiro, ///< reached by a pointer, or left over from one: no row by itself
        Apagado
    };
    static constexpr quint32 kDonoValorLongo = 0x4C41564C; ///< "LVAL": the page holds long values

    PaginaDeDados(const ArquivoJet &arquivo, qint64 numero);

    /// The page of the definition that the records belong to, or one of a few special numbers.
    quint32 Dono() const { return m_dono; }
    int Registros() const { return static_cast<int>(m_registros.size()); }
    Estado EstadoDe(int registro) const { return Slot(registro).estado; }
    Trecho Registro(int registro) const;

private:
    struct Lugar {
        qint64 comeco;
        qint64 tamanho;
        Estado estado;
    };
    const Lugar &Slot(int registro) const;

    QByteArray m_bytes;
    quint32 m_dono = 0;
    std::vector<Lugar> m_registros;
};
} // namespace Access
