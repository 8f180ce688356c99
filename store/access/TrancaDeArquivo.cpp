#include "store/access/TrancaDeArquivo.h"

#include "store/ErroBanco.h"

#include <QDeadlineTimer>
#include <QThread>

#include <cerrno>

#include <sys/file.h>
#include <sys/stat.h>

namespace
{
using Retrato = TrancaDeArquivo::Retrato;

Retrato De(const struct stat &dados)
{
    return {.dispositivo = dados.st_dev,
            .numero = dados.st_ino,
            .tamanho = dados.st_size,
            .segundos = dados.st_mtim.tv_sec,
            .nanossegundos = dados.st_mtim.tv_nsec};
}

Retrato DoArquivo(int arquivo)
{
    struct stat dados = {};
    return ::fstat(arquivo, &dados) == 0 ? De(dados) : Retrato{};
}

Retrato DoNome(const QString &caminho)
{
    struct stat dados = {};
    return ::stat(QFile::encodeName(caminho).constData(), &dados) == 0 ? De(dados) : Retrato{};
}

/// False where the file system knows no locks.
bool Trancar(int arquivo, int esperaMs)
{
    constexpr int kPausaMs = 20;
    const QDeadlineTimer prazo(esperaMs);
    while (::flock(arquivo, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return false;
        if (prazo.hasExpired())
            throw ErroBanco("Outra cópia do programa está usando o arquivo. Tente de novo daqui a pouco.");
        QThread::msleep(kPausaMs);
    }
    return true;
}
} // namespace

TrancaDeArquivo::TrancaDeArquivo(const QString &caminho, int esperaMs)
    : m_arquivo(caminho)
{
    if (!m_arquivo.open(QIODevice::ReadOnly))
        throw ErroBanco("O arquivo não pôde ser aberto: " + m_arquivo.errorString());
    m_trancado = Trancar(m_arquivo.handle(), esperaMs);
    m_retrato = DoArquivo(m_arquivo.handle());
}

bool TrancaDeArquivo::AindaEOMesmo() const
{
    return DoNome(m_arquivo.fileName()) == m_retrato;
}
