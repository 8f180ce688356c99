#pragma once

#include <QString>

#include <array>
#include <cstddef>

#include <sys/stat.h>

/**
 * The first bytes of a book, read beside the engine.
 *
 * A process that closes a file loses the locks that it holds on it through any other opening. So while a
 * connection to a book lives (`Prendedor`), what was opened here stays open and is read again.
 */
struct Cabecalho {
    static constexpr std::size_t kTamanho = 100;

    std::array<char, kTamanho> bytes{};
    std::ptrdiff_t lidos = -1; ///< less than 0: see `erro`
    int erro = 0;              ///< errno, 0 with `lidos` less than 0: it is no file
    struct stat dados = {};

    static Cabecalho De(const QString &caminho);

    class Prendedor
    {
    public:
        Prendedor();
        ~Prendedor();
        Prendedor(const Prendedor &) = delete;
        Prendedor &operator=(const Prendedor &) = delete;
    };
};
