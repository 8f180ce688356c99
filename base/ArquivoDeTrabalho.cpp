#include "base/ArquivoDeTrabalho.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr int kTentativas = 100; ///< other copies of the program make theirs at the same moment
} // namespace

ArquivoDeTrabalho::ArquivoDeTrabalho(const QString &caminho)
    : m_caminho(caminho)
{
}

ArquivoDeTrabalho::~ArquivoDeTrabalho()
{
    Remover();
}

void ArquivoDeTrabalho::Abrir()
{
    Remover();
    m_arquivo.close();
    const QByteArray nome = QFile::encodeName(m_caminho);
    int arquivo = -1;
    for (int vez = 0; vez < kTentativas && arquivo < 0; ++vez) {
        if (::unlink(nome.constData()) != 0 && errno != ENOENT)
            break;
        arquivo = ::open(nome.constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
        if (arquivo < 0 && errno != EEXIST && errno != EINTR)
            break;
    }
    struct stat dados = {};
    if (arquivo < 0 || ::fstat(arquivo, &dados) != 0)
        throw Disco::ErroArquivo(m_caminho, errno);
    m_dispositivo = dados.st_dev;
    m_numero = dados.st_ino;
    m_arquivo.open(arquivo, QIODevice::ReadWrite | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle);
}

void ArquivoDeTrabalho::Remover()
{
    if (m_numero == 0)
        return;
    const QByteArray nome = QFile::encodeName(m_caminho);
    struct stat dados = {};
    if (::lstat(nome.constData(), &dados) == 0 && dados.st_dev == m_dispositivo && dados.st_ino == m_numero)
        ::unlink(nome.constData());
    m_numero = 0;
}
