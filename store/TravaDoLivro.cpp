#include "store/TravaDoLivro.h"

#include "store/Banco.h"

#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace
{
constexpr int kPausaMs = 20;

/// A book may be a link into another folder.
QByteArray PastaDoLivro(const Banco &banco)
{
    const QFileInfo livro(banco.CaminhoDoLivro());
    const QString real = livro.canonicalFilePath();
    return QFile::encodeName(real.isEmpty() ? livro.absolutePath() : QFileInfo(real).absolutePath());
}
} // namespace

TravaDoLivro::TravaDoLivro(const Banco &banco)
    : m_banco(banco)
{
}

TravaDoLivro::~TravaDoLivro()
{
    Soltar();
}

bool TravaDoLivro::Pegar(const std::function<bool()> &respirar)
{
    if (m_pasta >= 0)
        return true;
    m_pasta = open(PastaDoLivro(m_banco).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (m_pasta < 0)
        return true; // no folder, nothing to meet in
    while (flock(m_pasta, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            break; // a drive without locks
        if (!respirar()) {
            Soltar();
            return false;
        }
        QThread::msleep(kPausaMs); // the other copy has nobody to tell when it is done
    }
    return true;
}

void TravaDoLivro::Soltar()
{
    if (m_pasta >= 0)
        close(m_pasta);
    m_pasta = -1;
}
