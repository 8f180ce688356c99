#pragma once

#include "store/RecordSet.h"

#include <memory>
#include <string_view>
#include <vector>

/**
 * What a record set holds: column names, one small cell a value, and the texts as UTF-8 in large blocks.
 * A quarter of a million rows cost a few thousand allocations, and no text is copied when the storage grows.
 */
struct RecordSet::Dados {
    enum class Tipo : quint32 { Nulo, Inteiro, Real, Texto };

    struct Celula {
        union {
            qint64 inteiro;
            double real;
            const char *texto;
        };
        quint32 tamanho; ///< of a text, in bytes
        Tipo tipo;
    };

    QStringList nomes;
    std::vector<Celula> celulas; ///< row after row
    int linhas = 0;

    void AcrescentarNulo();
    void AcrescentarInteiro(qint64 valor);
    void AcrescentarReal(double valor);
    /// Copies the bytes; a text longer than 4 GB cannot come out of the engine.
    void AcrescentarTexto(std::string_view utf8);

private:
    std::vector<std::unique_ptr<char[]>> m_blocos;
    char *m_livre = nullptr;
    std::size_t m_resto = 0;
};
