#include "store/Semelhante.h"

#include "base/Ordem.h"

#include <QChar>
#include <QString>

#include <array>

namespace
{
/// Reads one character and moves on; a byte that belongs to none stands for itself.
char32_t Ler(std::string_view texto, std::size_t &i)
{
    const auto c = static_cast<unsigned char>(texto[i++]);
    const int mais = c < 0xC2 ? 0 : c < 0xE0 ? 1 : c < 0xF0 ? 2 : c < 0xF5 ? 3 : 0;
    if (mais == 0)
        return c < 0x80 ? c : 0x110000u + c;
    if (texto.size() - i < static_cast<std::size_t>(mais))
        return 0x110000u + c;
    char32_t codigo = c & (0x3Fu >> mais);
    for (int k = 0; k < mais; ++k) {
        const auto continuacao = static_cast<unsigned char>(texto[i + static_cast<std::size_t>(k)]);
        if ((continuacao & 0xC0) != 0x80)
            return 0x110000u + c;
        codigo = codigo << 6 | (continuacao & 0x3Fu);
    }
    i += static_cast<std::size_t>(mais);
    return codigo;
}

char32_t SemCaixa(char32_t c)
{
    if (c < 0x80)
        return c >= 'A' && c <= 'Z' ? c + 0x20 : c;
    return c <= 0x10FFFF ? QChar::toCaseFolded(c) : c;
}

int Comparar(char32_t a, char32_t b)
{
    return Ordem::Comparar(QString::fromUcs4(&a, 1), QString::fromUcs4(&b, 1));
}
} // namespace

namespace
{
// What a search looks for is a word nearly always: it is looked for byte by byte, letter case set aside by a
// table. ASCII folds to itself, and so do the letters of Latin-1 (two bytes, the first of them 0xC3); a text
// with anything else is looked at the slow way when nothing was found.
constexpr std::array<unsigned char, 256> kDobrados = [] {
    std::array<unsigned char, 256> tabela{};
    for (unsigned c = 0; c < 256; ++c) {
        const bool maiuscula = (c >= 'A' && c <= 'Z') || (c >= 0x80 && c <= 0x9E && c != 0x97);
        tabela[c] = static_cast<unsigned char>(maiuscula ? c + 0x20 : c);
    }
    return tabela;
}();

unsigned char Dobrado(char c)
{
    return kDobrados[static_cast<unsigned char>(c)];
}

/// A first byte of a character that the table does not speak for.
bool ForaDaTabela(unsigned char c)
{
    return c >= 0xC0 && c != 0xC3;
}

/// 1 found, 0 not there, -1 unknown.
int Contem(std::string_view texto, std::string_view palavra)
{
    const auto primeira = static_cast<unsigned char>(palavra[0]);
    bool fora = false;
    for (std::size_t i = 0; i < texto.size(); ++i) {
        const unsigned char c = Dobrado(texto[i]);
        fora = fora || ForaDaTabela(c);
        if (c != primeira || texto.size() - i < palavra.size())
            continue;
        std::size_t k = 1;
        while (k < palavra.size() && Dobrado(texto[i + k]) == static_cast<unsigned char>(palavra[k]))
            ++k;
        if (k == palavra.size())
            return 1;
    }
    return fora ? -1 : 0;
}

std::string PalavraDe(std::string_view padrao)
{
    if (padrao.size() < 3 || padrao.front() != '%' || padrao.back() != '%')
        return {};
    std::string palavra;
    for (const char c : padrao.substr(1, padrao.size() - 2)) {
        if (c == '%' || c == '_' || c == '[' || ForaDaTabela(static_cast<unsigned char>(c)))
            return {};
        palavra += static_cast<char>(Dobrado(c));
    }
    // The table knows a byte only behind the one that it belongs to.
    return (static_cast<unsigned char>(palavra[0]) & 0xC0) == 0x80 ? std::string() : palavra;
}
} // namespace

Semelhante::Semelhante(std::string_view padrao)
    : m_palavra(PalavraDe(padrao))
{
    for (std::size_t i = 0; i < padrao.size();) {
        const char32_t c = Ler(padrao, i);
        if (c == '%') {
            if (m_pecas.empty() || m_pecas.back().tipo != Tipo::Varias)
                m_pecas.push_back({Tipo::Varias, 0, false, {}});
            continue;
        }
        if (c == '_') {
            m_pecas.push_back({Tipo::Uma, 0, false, {}});
            continue;
        }
        const std::size_t fecho = c == '[' ? padrao.find(']', i) : std::string_view::npos;
        if (fecho == std::string_view::npos) {
            m_pecas.push_back({Tipo::Letra, SemCaixa(c), false, {}});
            continue;
        }
        std::u32string conteudo;
        while (i < fecho)
            conteudo += Ler(padrao, i);
        i = fecho + 1;
        if (conteudo.empty())
            continue; // "[]" asks for nothing
        Peca peca{Tipo::Conjunto, 0, false, {}};
        std::size_t k = 0;
        if (conteudo.size() > 1 && conteudo[0] == '!') {
            peca.negado = true;
            k = 1;
        }
        while (k < conteudo.size()) {
            // A hyphen is a range's only between two characters.
            const bool faixa = k + 2 < conteudo.size() && conteudo[k + 1] == '-';
            peca.faixas.push_back({SemCaixa(conteudo[k]), SemCaixa(conteudo[faixa ? k + 2 : k])});
            k += faixa ? 3 : 1;
        }
        m_pecas.push_back(std::move(peca));
    }
}

bool Semelhante::Aceita(const Peca &peca, char32_t caractere)
{
    switch (peca.tipo) {
    case Tipo::Letra:
        return peca.letra == caractere;
    case Tipo::Uma:
        return true;
    case Tipo::Conjunto:
        for (const Faixa &faixa : peca.faixas) {
            const bool dentro = faixa.de == faixa.ate ? faixa.de == caractere
                                                      : Comparar(faixa.de, caractere) <= 0 &&
                                                            Comparar(caractere, faixa.ate) <= 0;
            if (dentro)
                return !peca.negado;
        }
        return peca.negado;
    case Tipo::Varias:
        break;
    }
    return false;
}

bool Semelhante::Casa(std::string_view texto) const
{
    const int contem = m_palavra.empty() ? -1 : Contem(texto, m_palavra);
    return contem < 0 ? CasaPecas(texto) : contem == 1;
}

bool Semelhante::CasaPecas(std::string_view texto) const
{
    std::size_t i = 0;
    std::size_t p = 0;
    // The last % met: only it needs to be tried again with one character more.
    bool haVarias = false;
    std::size_t pecaDepois = 0;
    std::size_t textoDepois = 0;
    while (i < texto.size()) {
        if (p < m_pecas.size() && m_pecas[p].tipo == Tipo::Varias) {
            haVarias = true;
            pecaDepois = ++p;
            textoDepois = i;
            if (p == m_pecas.size())
                return true;
            continue;
        }
        if (haVarias && p == pecaDepois && p < m_pecas.size() && m_pecas[p].tipo == Tipo::Letra) {
            // Behind a % most of a text is only looked through for the next letter: plain ASCII, which folds
            // to itself, is skipped byte by byte.
            const auto outroAscii = [&](char byte) {
                const auto c = static_cast<unsigned char>(byte);
                return c < 0x80 && SemCaixa(c) != m_pecas[p].letra;
            };
            while (i < texto.size() && outroAscii(texto[i]))
                ++i;
            textoDepois = i;
            if (i == texto.size())
                return false;
        }
        std::size_t seguinte = i;
        const char32_t c = SemCaixa(Ler(texto, seguinte));
        if (p < m_pecas.size() && Aceita(m_pecas[p], c)) {
            ++p;
            i = seguinte;
        } else if (haVarias) {
            Ler(texto, textoDepois);
            i = textoDepois;
            p = pecaDepois;
        } else {
            return false;
        }
    }
    while (p < m_pecas.size() && m_pecas[p].tipo == Tipo::Varias)
        ++p;
    return p == m_pecas.size();
}
