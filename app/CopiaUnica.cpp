#include "app/CopiaUnica.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>

#include <cerrno>
#include <ctime>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr int kEsperaMs = 2000;
constexpr int kEsperaPelaNovaMs = 8000;
constexpr int kNovaSegundos = 15;
constexpr int kLinhaMaxima = 64;
constexpr QByteArrayView kImportacao = "importacaoTerminada\n";
constexpr QByteArrayView kAtivar = "ativar\n";
} // namespace

CopiaUnica::CopiaUnica(const QString &pasta, QObject *parent)
    : QObject(parent)
    , m_pasta(QDir(pasta).canonicalPath())
{
    const QByteArray arquivo = QFile::encodeName(pasta + "/cozinhario.lck");
    // No other program that we start may inherit the lock, and a link in its place is not followed.
    m_trava = open(arquivo.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (m_trava >= 0)
        Trancar();
    // Without a lock (a folder that cannot be written, a drive of a network that knows none) whoever answers
    // on the channel is the first.
    if (!m_trancada && m_primeira)
        m_primeira = !AlguemEscuta();
}

void CopiaUnica::Trancar()
{
    int rc = 0;
    do
        rc = flock(m_trava, LOCK_EX | LOCK_NB);
    while (rc != 0 && errno == EINTR);
    m_trancada = rc == 0;
    m_primeira = m_trancada || errno != EWOULDBLOCK;
    if (m_trancada)
        futimens(m_trava, nullptr); // since when it is held: one that is just starting is waited for longer
}

bool CopiaUnica::AlguemEscuta() const
{
    QLocalSocket linha;
    linha.connectToServer(NomeDoCanal());
    return linha.waitForConnected(kEsperaMs);
}

/// A copy that is just starting may need its time, on a machine where many things start at once.
int CopiaUnica::Paciencia() const
{
    struct stat trava = {};
    const bool nova =
        m_trava >= 0 && fstat(m_trava, &trava) == 0 && trava.st_mtime + kNovaSegundos > time(nullptr);
    return nova ? kEsperaPelaNovaMs : kEsperaMs;
}

CopiaUnica::~CopiaUnica()
{
    if (m_trava >= 0)
        close(m_trava);
}

QString CopiaUnica::NomeDoCanal() const
{
    // The desktop's own folder for such things where there is one, private to the user.
    QString onde = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (onde.isEmpty() || !QFileInfo(onde).isDir())
        onde = QDir::tempPath();
    const QByteArray marca = QCryptographicHash::hash(m_pasta.toUtf8(), QCryptographicHash::Sha1).toHex();
    return QString("%1/cozinhario-%2-%3").arg(onde).arg(getuid()).arg(QString::fromLatin1(marca.left(16)));
}

void CopiaUnica::Escutar()
{
    if (!m_primeira)
        return;
    m_servidor.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_servidor, &QLocalServer::newConnection, this, &CopiaUnica::Receber);
    const QString canal = NomeDoCanal();
    // Only the holder of the lock gets here, or who found nobody listening: what lies there is what a killed
    // copy left.
    QLocalServer::removeServer(canal);
    if (!m_servidor.listen(canal))
        qWarning("cozinhario: %s", qPrintable(m_servidor.errorString()));
}

void CopiaUnica::Receber()
{
    while (QLocalSocket *visita = m_servidor.nextPendingConnection()) {
        connect(visita, &QLocalSocket::disconnected, visita, &QObject::deleteLater);
        const auto ler = [this, visita] {
            if (!visita->canReadLine()) {
                if (visita->bytesAvailable() > kLinhaMaxima)
                    visita->abort();
                return;
            }
            const QByteArray linha = visita->readLine(kLinhaMaxima);
            visita->write("ok\n");
            visita->flush();
            visita->disconnectFromServer();
            if (linha == kImportacao)
                emit importacaoTerminada();
            else if (linha == kAtivar)
                emit ativacaoPedida();
        };
        connect(visita, &QLocalSocket::readyRead, this, ler);
        if (visita->bytesAvailable() > 0)
            ler();
    }
}

bool CopiaUnica::Entregar(Aviso aviso) const
{
    const QDeadlineTimer prazo(Paciencia());
    const QString canal = NomeDoCanal();
    // A first copy that is just starting holds the lock before it listens: try until the time is over.
    do {
        QLocalSocket linha;
        linha.connectToServer(canal);
        if (linha.waitForConnected(static_cast<int>(prazo.remainingTime()))) {
            linha.write((aviso == Aviso::ImportacaoTerminada ? kImportacao : kAtivar).toByteArray());
            linha.flush();
            return linha.waitForReadyRead(static_cast<int>(prazo.remainingTime()));
        }
        usleep(20'000); // there is nothing to wait on until the other copy has made its end of the channel
    } while (!prazo.hasExpired());
    return false;
}
