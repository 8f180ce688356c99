// gerar_livro FOLDER N [SEED]: makes a book of N invented recipes in a folder.
#include "bench/GeradorLivro.h"

#include <QDir>
#include <QElapsedTimer>

#include <cstdio>
#include <exception>

int main(int argc, char **argv)
{
    bool numero = argc >= 3;
    const int receitas = numero ? QString(argv[2]).toInt(&numero) : 0;
    const unsigned semente = numero && argc > 3 ? QString(argv[3]).toUInt(&numero) : 2005;
    if (!numero || receitas < 0 || argc > 4) {
        std::fputs("usage: gerar_livro FOLDER N [SEED]\n", stderr);
        return 2;
    }
    try {
        const QString pasta = QFile::decodeName(argv[1]);
        QDir().mkpath(pasta);
        QElapsedTimer relogio;
        relogio.start();
        GerarLivro(pasta, receitas, semente);
        std::printf("%d recipes in %.1f s: %s/dadosr.lst\n", receitas,
                    static_cast<double>(relogio.elapsed()) / 1000, argv[1]);
    } catch (const std::exception &erro) {
        std::fprintf(stderr, "gerar_livro: %s\n", erro.what());
        return 1;
    }
    return 0;
}
