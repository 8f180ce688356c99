#include "backup/EscritaSegura.h"

#include <QFileInfo>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace
{
constexpr qint64 kBloco = 1024 * 1024;

QString SemLink(const QString &caminho)
{
    const QFileInfo info(caminho);
    return info.isSymLink() && info.exists() ? info.canonicalFilePath() : caminho;
}

QString AoLado(const QString &caminho)
{
    const QFileInfo info(caminho);
    return info.path() + "/~" + info.fileName() + ".tmp";
}

bool Renomear(const QString &origem, const QString &destino)
{
    return std::rename(QFile::encodeName(origem).constData(), QFile::encodeName(destino).constData()) == 0;
}
} // namespace

EscritaSegura::EscritaSegura(const QString &destino)
    : m_destino(SemLink(destino))
    , m_arquivo(AoLado(m_destino))
{
}

EscritaSegura::~EscritaSegura()
{
    m_arquivo.close();
    if (m_pendente)
        m_arquivo.remove();
}

bool EscritaSegura::Abrir()
{
    if (QFileInfo(m_destino).isDir())
        return false;
    m_arquivo.remove(); // left by a run that was cut off, if any
    m_pendente = m_arquivo.open(QIODevice::ReadWrite | QIODevice::NewOnly | QIODevice::Unbuffered);
    return m_pendente;
}

bool EscritaSegura::Confirmar()
{
    const QFileInfo anterior(m_destino);
    if (!m_pendente || !Sincronizar(m_arquivo))
        return false;
    if (anterior.exists())
        m_arquivo.setPermissions(
            anterior.permissions()); // keeps the user's; a file system without any is no failure
    if (!Renomear(m_arquivo.fileName(), m_destino))
        return false;
    m_pendente = false;
    m_arquivo.close();
    SincronizarPasta(anterior.path());
    return true;
}

void IniciarGravacao(QFile &arquivo)
{
    sync_file_range(arquivo.handle(), 0, 0, SYNC_FILE_RANGE_WRITE); // a hint: failures show at Sincronizar()
}

bool Sincronizar(QFile &arquivo)
{
    return arquivo.flush() && fsync(arquivo.handle()) == 0;
}

void SincronizarPasta(const QString &pasta)
{
    const int fd = open(QFile::encodeName(pasta).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    fsync(fd);
    close(fd);
}

bool RenomearSobre(const QString &origem, const QString &destino)
{
    if (Renomear(origem, SemLink(destino)))
        return true;
    if (errno != EXDEV)
        return false;
    QFile lida(origem);
    EscritaSegura nova(destino);
    return lida.open(QIODevice::ReadOnly) && nova.Abrir() && CopiarResto(lida, nova.Arquivo()) &&
           nova.Confirmar() && lida.remove();
}

bool CopiarResto(QFile &origem, QFile &destino)
{
    while (!origem.atEnd()) {
        const QByteArray bloco = origem.read(kBloco);
        if (bloco.isEmpty() || destino.write(bloco) != bloco.size())
            return false;
    }
    return origem.error() == QFileDevice::NoError;
}
