#pragma once

#include "store/access/DefinicaoTabela.h"
#include "store/access/Trecho.h"

#include <array>
#include <optional>

namespace Access
{
/**
 * One row of a table, taken apart: which columns are NULL and where the others' bytes lie. A row may be older
 * than the table's newest columns and hold fewer of them. Checked as a whole when made.
 */
class Linha
{
public:
    /// @param registro the row's bytes, which must outlive this object
    Linha(const Formato &formato, const DefinicaoTabela &tabela, const Trecho &registro);

    /// The value's bytes, none for NULL; no bytes (a length of 0) are an empty text.
    std::optional<Trecho> Valor(const Coluna &coluna) const;

private:
    void LerComecos(qint64 mascara);
    void LerComecosJet3(qint64 mascara);
    void LerComecosJet4(qint64 mascara);

    const Formato &m_formato;
    const DefinicaoTabela &m_tabela;
    Trecho m_registro;
    int m_colunas = 0; ///< columns when the row was written
    Trecho m_naoNulos; ///< one bit a column
    qint64 m_fimFixo = 0;
    int m_variaveis = 0;                 ///< variable values in the row
    std::array<qint32, 257> m_comecos{}; ///< where each begins; one more tells the last one's end
};
} // namespace Access
