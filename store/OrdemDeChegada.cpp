#include "store/OrdemDeChegada.h"

#include "base/Ordem.h"

#include <algorithm>
#include <string>

void OrdemDeChegada::Chegou(bool nulo)
{
    const quint32 linha = m_proxima++;
    if (nulo && m_nulas == linha) {
        ++m_nulas;
        m_emOrdem.push_back(linha);
        return;
    }
    const std::string_view texto = m_texto(linha);
    // One that came too early must not send all that follow aside: a few of the last may have to go instead.
    constexpr std::size_t kVoltas = 4;
    std::size_t cedo = 0;
    while (m_emOrdem.size() - cedo > m_nulas && cedo <= kVoltas &&
           Ordem::Comparar(m_texto(m_emOrdem[m_emOrdem.size() - 1 - cedo]), texto) > 0)
        ++cedo;
    if (cedo > kVoltas) {
        m_desviadas.push_back(linha);
        return;
    }
    for (; cedo > 0; --cedo) {
        m_desviadas.push_back(m_emOrdem.back());
        m_emOrdem.pop_back();
    }
    m_emOrdem.push_back(linha);
}

std::vector<quint32> OrdemDeChegada::Terminar(bool unicas)
{
    struct Chave {
        std::string chave;
        quint32 linha;
    };
    std::vector<Chave> chaves;
    chaves.reserve(m_desviadas.size());
    for (const quint32 linha : m_desviadas)
        chaves.push_back({Ordem::Chave(m_texto(linha)), linha});
    std::sort(chaves.begin(), chaves.end(), [](const Chave &a, const Chave &b) {
        const int c = a.chave.compare(b.chave);
        return c != 0 ? c < 0 : a.linha < b.linha;
    });

    std::vector<quint32> todas;
    todas.reserve(m_emOrdem.size() + chaves.size());
    const auto igual = [this, &todas](quint32 linha) {
        return todas.size() > m_nulas && Ordem::Comparar(m_texto(todas.back()), m_texto(linha)) == 0;
    };
    const auto por = [&](quint32 linha) {
        if (!unicas || !igual(linha))
            todas.push_back(linha);
    };
    auto desviada = chaves.cbegin();
    for (std::size_t i = 0; i < m_emOrdem.size(); ++i) {
        const quint32 linha = m_emOrdem[i];
        while (i >= m_nulas && desviada != chaves.cend()) {
            const int c = Ordem::Comparar(m_texto(desviada->linha), m_texto(linha));
            if (c > 0 || (c == 0 && desviada->linha > linha))
                break;
            por(desviada++->linha);
        }
        if (i < m_nulas)
            todas.push_back(linha);
        else
            por(linha);
    }
    for (; desviada != chaves.cend(); ++desviada)
        por(desviada->linha);
    m_emOrdem = {};
    m_desviadas = {};
    return todas;
}
