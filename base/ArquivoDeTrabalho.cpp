#include "base/ArquivoDeTrabalho.h"

#include <QRandomGenerator>

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

void ArquivoDeTrabalho::AbrirSemNome(const QString &pasta)
{
    Remover();
    m_arquivo.close();
    int arquivo = ::open(QFile::encodeName(pasta).constData(), O_RDWR | O_TMPFILE | O_CLOEXEC, 0600);
    if (arquivo < 0 && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL)) {
        // A file system that does not know files without a name.
        ArquivoDeTrabalho comNome(
            pasta + "/~cozinhario-" +
            QString::number(QRandomGenerator::system()->generate64(), 16).rightJustified(16, '0') + ".tmp");
        comNome.Abrir();
        arquivo = ::fcntl(comNome.m_arquivo.handle(), F_DUPFD_CLOEXEC, 0);
    }
    if (arquivo < 0)
        throw Disco::ErroArquivo(pasta, errno);
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
