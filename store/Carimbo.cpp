#include "store/Carimbo.h"

#include "store/Cabecalho.h"

#include <QFile>
#include <QtEndian>

#include <cstring>

#include <unistd.h>

namespace
{
constexpr std::size_t kVersaoDeEscrita = 18; ///< 2: part of the book lies in another file
constexpr std::size_t kContador = 24;
} // namespace

Carimbo Carimbo::De(const QString &caminho)
{
    const Cabecalho lido = Cabecalho::De(caminho);
    const char *bytes = lido.bytes.data();
    if (lido.lidos != static_cast<std::ptrdiff_t>(Cabecalho::kTamanho) ||
        std::memcmp(bytes, "SQLite format 3", 16) != 0 || bytes[kVersaoDeEscrita] != 1)
        return {};
    const QByteArray nome = QFile::encodeName(caminho);
    for (const char *cauda : {"-journal", "-wal"})
        if (::access((nome + cauda).constData(), F_OK) == 0)
            return {};
    Carimbo carimbo;
    carimbo.disco = lido.dados.st_dev;
    carimbo.arquivo = lido.dados.st_ino;
    carimbo.tamanho = lido.dados.st_size;
    carimbo.mudadoEm = lido.dados.st_ctim.tv_sec * 1'000'000'000LL + lido.dados.st_ctim.tv_nsec;
    carimbo.contador = qFromBigEndian<quint32>(bytes + kContador);
    return carimbo;
}
