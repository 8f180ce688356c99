#include "store/access/Linha.h"

#include "store/access/ErroAccess.h"

#include <algorithm>

using namespace Access;

Linha::Linha(const Formato &formato, const DefinicaoTabela &tabela, const Trecho &registro)
    : m_formato(formato)
    , m_tabela(tabela)
    , m_registro(registro)
{
    m_colunas = formato.linhaContagem == 1 ? registro.U8(0) : registro.U16(0);
    if (m_colunas < 1 || m_colunas > tabela.topo)
        Danificado("uma linha com colunas demais");
    const qint64 tamanhoDaMascara = (m_colunas + 7) / 8;
    const qint64 mascara = registro.Tamanho() - tamanhoDaMascara;
    if (mascara < formato.linhaContagem)
        Danificado("uma linha curta demais");
    m_naoNulos = registro.Parte(mascara, tamanhoDaMascara);
    if (tabela.variaveis == 0) {
        m_fimFixo = mascara; // such rows say nothing of variable values
        return;
    }
    LerComecos(mascara);
}

void Linha::LerComecos(qint64 mascara)
{
    m_variaveis = m_formato.jet == 3 ? m_registro.U8(mascara - 1) : m_registro.U16(mascara - 2);
    if (m_variaveis > m_tabela.variaveis)
        Danificado("uma linha com valores demais");
    if (m_formato.jet == 3)
        LerComecosJet3(mascara);
    else
        LerComecosJet4(mascara);
    const auto fim = m_comecos.begin() + m_variaveis + 1;
    if (m_comecos[0] < m_formato.linhaContagem || !std::is_sorted(m_comecos.begin(), fim))
        Danificado("uma linha com valores fora de ordem");
    m_fimFixo = m_comecos[0];
}

void Linha::LerComecosJet4(qint64 mascara)
{
    for (int i = 0; i <= m_variaveis; ++i)
        m_comecos[static_cast<std::size_t>(i)] = m_registro.U16(mascara - 4 - 2 * qint64(i));
    if (m_comecos[static_cast<std::size_t>(m_variaveis)] > mascara - 4 - 2 * qint64(m_variaveis))
        Danificado("uma linha mais curta do que os seus valores");
}

// A start has one byte only. Rows of more than 256 bytes carry jump bytes: jump k names the first value that
// begins at 256 times k+1 or later. When no value begins in the last 256 bytes the last jump is a filler,
// which takes its place but counts for nothing.
void Linha::LerComecosJet3(qint64 mascara)
{
    const qint64 saltos = (m_registro.Tamanho() - 1) / 256;
    const qint64 primeiro = mascara - 2 - saltos;
    const bool recheio = saltos > 0 && (primeiro - m_variaveis) / 256 < saltos;
    const qint64 validos = saltos - (recheio ? 1 : 0);
    for (int i = 0; i <= m_variaveis; ++i) {
        qint32 comeco = m_registro.U8(primeiro - i);
        for (qint64 k = 0; k < validos; ++k)
            if (m_registro.U8(mascara - 2 - k) <= i)
                comeco += 256;
        m_comecos[static_cast<std::size_t>(i)] = comeco;
    }
    if (m_comecos[static_cast<std::size_t>(m_variaveis)] > primeiro - m_variaveis)
        Danificado("uma linha mais curta do que os seus valores");
}

std::optional<Trecho> Linha::Valor(const Coluna &coluna) const
{
    if (coluna.numero >= m_colunas)
        return {}; // the row is older than the column
    if (!(m_naoNulos.U8(coluna.numero / 8) >> (coluna.numero % 8) & 1))
        return {};
    // The flag decides, not the type: numbers may lie among the variable values.
    if (coluna.fixa) {
        const qint64 comeco = m_formato.linhaContagem + coluna.lugarFixo;
        const qint64 tamanho = coluna.TamanhoFixo();
        if (comeco + tamanho > m_fimFixo)
            Danificado("um valor fora da sua linha");
        return m_registro.Parte(comeco, tamanho);
    }
    if (coluna.variavel >= m_variaveis)
        return {};
    const auto i = static_cast<std::size_t>(coluna.variavel);
    return m_registro.Parte(m_comecos[i], m_comecos[i + 1] - m_comecos[i]);
}
