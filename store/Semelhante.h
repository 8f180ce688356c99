#pragma once

#include <string>
#include <string_view>
#include <vector>

/**
 * The pattern of a `like`: % any run of characters, _ any one character, [abc], [a-z] and [!a-z] one
 * character inside or outside a set (ranges follow the book's order). Letter case is ignored, accents are
 * not: "PÃO" matches "pão" but not "pao". A "[" that no "]" closes stands for itself.
 *
 * Compiled once and then matched against many texts, in time at most length times length.
 */
class Semelhante
{
public:
    explicit Semelhante(std::string_view padraoUtf8);

    bool Casa(std::string_view textoUtf8) const;

private:
    enum class Tipo { Letra, Uma, Varias, Conjunto };
    struct Faixa {
        char32_t de;
        char32_t ate;
    };
    struct Peca {
        Tipo tipo;
        char32_t letra = 0;
        bool negado = false;
        std::vector<Faixa> faixas;
    };
    static bool Aceita(const Peca &peca, char32_t caractere);
    bool CasaPecas(std::string_view texto) const;

    /// Of a pattern "%word%" whose letters are plain: the word folded, byte by byte; else empty.
    std::string m_palavra;
    std::vector<Peca> m_pecas;
};
