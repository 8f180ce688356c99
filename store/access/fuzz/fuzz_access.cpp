// Feeds nonsense to the reader of old books. Whatever the bytes, it must answer with a book or with
// Access::ErroAccess, soon and in little memory. Built for libFuzzer, and with repetir.cpp for any compiler.

#include "store/access/ErroAccess.h"
#include "store/access/LivroAccess.h"

#include <QBuffer>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho)
{
    QByteArray bytes(reinterpret_cast<const char *>(dados), static_cast<qsizetype>(tamanho));
    QBuffer arquivo(&bytes);
    arquivo.open(QIODevice::ReadOnly);
    try {
        LerLivroAccess(arquivo);
    } catch (const Access::ErroAccess &) {
        // the answer to almost everything
    }
    return 0;
}
