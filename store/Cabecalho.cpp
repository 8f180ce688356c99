#include "store/Cabecalho.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace
{
struct Preso {
    int arquivo;
    dev_t disco;
    ino_t numero;
};
std::vector<Preso> presos;
int prendedores = 0;

/// The number of an opening of this file that had to stay, or -1.
int JaAberto(const char *nome)
{
    struct stat dados = {};
    if (presos.empty() || ::stat(nome, &dados) != 0)
        return -1;
    const auto achado = std::find_if(presos.begin(), presos.end(), [&dados](const Preso &preso) {
        return preso.disco == dados.st_dev && preso.numero == dados.st_ino;
    });
    return achado == presos.end() ? -1 : achado->arquivo;
}
} // namespace

Cabecalho::Prendedor::Prendedor()
{
    ++prendedores;
}

Cabecalho::Prendedor::~Prendedor()
{
    if (--prendedores > 0)
        return;
    for (const Preso &preso : presos)
        ::close(preso.arquivo);
    presos.clear();
}

Cabecalho Cabecalho::De(const QString &caminho)
{
    Cabecalho lido;
    const QByteArray nome = QFile::encodeName(caminho);
    const int preso = JaAberto(nome.constData());
    // O_NONBLOCK: a pipe of that name must not make the program wait for ever.
    const int arquivo = preso >= 0 ? preso : ::open(nome.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (arquivo < 0) {
        lido.erro = errno;
        return lido;
    }
    errno = 0;
    if (::fstat(arquivo, &lido.dados) == 0 && S_ISREG(lido.dados.st_mode))
        lido.lidos = ::pread(arquivo, lido.bytes.data(), lido.bytes.size(), 0);
    lido.erro = lido.lidos < 0 ? errno : 0;
    if (preso < 0 && prendedores > 0 && S_ISREG(lido.dados.st_mode))
        presos.push_back({arquivo, lido.dados.st_dev, lido.dados.st_ino});
    else if (preso < 0)
        ::close(arquivo);
    return lido;
}
