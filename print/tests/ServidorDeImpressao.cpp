#include "print/tests/ServidorDeImpressao.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>

namespace
{
const QString kExecutor = QStringLiteral("/usr/lib/cups/daemon/cups-exec");

QString Cupsd()
{
    return QStandardPaths::findExecutable("cupsd", {"/usr/sbin", "/usr/local/sbin", "/sbin"});
}
} // namespace

ServidorDeImpressao::~ServidorDeImpressao()
{
    Parar();
}

bool ServidorDeImpressao::Instalado()
{
    return !Cupsd().isEmpty() && QFile::exists(kExecutor);
}

bool ServidorDeImpressao::Escrever(const QString &nome, const QString &texto, bool programa)
{
    QFile arquivo(m_pasta.filePath(nome));
    if (!arquivo.open(QIODevice::WriteOnly))
        return false;
    arquivo.write(QString(texto).replace("@", m_pasta.path()).toUtf8());
    // A backend that only its owner may run keeps the scheduler's own rights, root's included.
    return !programa || arquivo.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

bool ServidorDeImpressao::Iniciar(QString &erro)
{
    if (!m_pasta.isValid()) {
        erro = m_pasta.errorString();
        return false;
    }
    for (const char *pasta : {"bin/backend", "bin/daemon", "etc/ppd", "spool/tmp", "cache", "state/certs",
                              "log", "docs", "chegou"})
        QDir(m_pasta.path()).mkpath(pasta);
    QFile::link(kExecutor, m_pasta.filePath("bin/daemon/cups-exec"));

    bool escrito =
        Escrever("bin/backend/gravador",
                 "#!/bin/sh\n"
                 "# arguments: job, user, title, copies, options, file; none when asked for devices\n"
                 "[ $# -eq 0 ] && exit 0\n"
                 "cat \"${6:--}\" > \"@/chegou/$1.pdf\"\n"
                 "printf '%s\\n' \"$3\" \"$4\" \"$5\" > \"@/chegou/$1.tmp\"\n"
                 "mv \"@/chegou/$1.tmp\" \"@/chegou/$1.txt\"\n",
                 true);
    escrito &=
        Escrever("etc/cupsd.conf", "Listen @/cups.sock\n"
                                   "LogLevel info\n"
                                   "WebInterface No\n"
                                   "Browsing No\n"
                                   "<Location />\n  Order allow,deny\n  Allow all\n</Location>\n"
                                   "<Policy default>\n"
                                   "  JobPrivateAccess all\n  JobPrivateValues none\n"
                                   "  SubscriptionPrivateAccess all\n  SubscriptionPrivateValues none\n"
                                   "  <Limit All>\n    Order allow,deny\n    Allow all\n  </Limit>\n"
                                   "</Policy>\n");
    escrito &= Escrever("etc/cups-files.conf", "ServerRoot @/etc\n"
                                               "ServerBin @/bin\n"
                                               "DataDir /usr/share/cups\n"
                                               "DocumentRoot @/docs\n"
                                               "RequestRoot @/spool\n"
                                               "TempDir @/spool/tmp\n"
                                               "CacheDir @/cache\n"
                                               "StateDir @/state\n"
                                               "AccessLog @/log/access\n"
                                               "ErrorLog @/log/error\n"
                                               "PageLog @/log/page\n"
                                               "Printcap @/printcap\n"
                                               "Sandboxing relaxed\n");
    QString filas;
    for (const char *fila : {"DefaultPrinter Cozinha", "Printer Sala", "Printer Recusa"}) {
        const QString nome = QString(fila);
        filas += QString("<%1>\nDeviceURI gravador:/papel\nState Idle\nAccepting %2\nShared No\n</%3>\n")
                     .arg(nome, nome.endsWith("Recusa") ? "No" : "Yes", nome.section(' ', 0, 0));
    }
    escrito &= Escrever("etc/printers.conf", filas);
    if (!escrito) {
        erro = "could not write below " + m_pasta.path();
        return false;
    }

    m_processo.setProcessChannelMode(QProcess::MergedChannels);
    m_processo.start(Cupsd(), {"-f", "-c", m_pasta.filePath("etc/cupsd.conf"), "-s",
                               m_pasta.filePath("etc/cups-files.conf")});
    qputenv("CUPS_SERVER", QFile::encodeName(m_pasta.filePath("cups.sock")));
    QElapsedTimer tempo;
    tempo.start();
    while (tempo.elapsed() < 20000 && m_processo.state() != QProcess::NotRunning) {
        QProcess lpstat;
        QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
        ambiente.insert("LC_ALL", "C"); // its answer is read below
        lpstat.setProcessEnvironment(ambiente);
        lpstat.start("lpstat", {"-r"});
        if (lpstat.waitForFinished() && lpstat.readAllStandardOutput().contains("is running"))
            return true;
        m_processo.waitForReadyRead(20);
    }
    QFile diario(m_pasta.filePath("log/error"));
    erro = "the scheduler did not start: " + QString::fromUtf8(m_processo.readAll());
    if (diario.open(QIODevice::ReadOnly))
        erro += QString::fromUtf8(diario.readAll());
    return false;
}

void ServidorDeImpressao::Parar()
{
    if (m_processo.state() == QProcess::NotRunning)
        return;
    m_processo.terminate();
    if (!m_processo.waitForFinished(10000)) {
        m_processo.kill();
        m_processo.waitForFinished();
    }
}

QList<ServidorDeImpressao::Trabalho> ServidorDeImpressao::Trabalhos() const
{
    const QDir pasta(m_pasta.filePath("chegou"));
    QStringList nomes = pasta.entryList({"*.txt"});
    std::sort(nomes.begin(), nomes.end(), [](const QString &a, const QString &b) {
        return a.section('.', 0, 0).toInt() < b.section('.', 0, 0).toInt();
    });
    QList<Trabalho> trabalhos;
    for (const QString &nome : nomes) {
        QFile arquivo(pasta.filePath(nome));
        if (!arquivo.open(QIODevice::ReadOnly))
            continue;
        const QStringList linhas = QString::fromUtf8(arquivo.readAll()).split('\n');
        trabalhos.append({linhas.value(0), linhas.value(1), linhas.value(2),
                          pasta.filePath(nome.section('.', 0, 0) + ".pdf")});
    }
    return trabalhos;
}
