#include "print/tests/ServidorDeImpressao.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <csignal>

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
    return Iniciar(erro, {{"Cozinha", true}, {"Sala"}, {"Recusa", false, false}});
}

bool ServidorDeImpressao::Iniciar(QString &erro, const QList<Fila> &filas)
{
    if (!m_pasta.isValid()) {
        erro = m_pasta.errorString();
        return false;
    }
    for (const char *pasta : {"bin/backend", "bin/daemon", "etc/ppd", "spool/tmp", "cache", "state/certs",
                              "log", "docs", "chegou", "casa/.cups"})
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
    QString impressoras;
    for (const Fila &fila : filas) {
        const QString tipo = fila.padrao ? "DefaultPrinter" : "Printer";
        impressoras += QString("<%1 %2>\nDeviceURI gravador:/papel\nState Idle\nAccepting %3\nShared No\n")
                           .arg(tipo, fila.nome, fila.aceita ? "Yes" : "No");
        for (const QString &opcao : fila.opcoes)
            impressoras += "Option " + opcao + '\n';
        impressoras += "</" + tipo + ">\n";
        if (!fila.descricao.isEmpty())
            escrito &= Escrever("etc/ppd/" + fila.nome + ".ppd", fila.descricao);
    }
    escrito &= Escrever("etc/printers.conf", impressoras);
    if (!escrito) {
        erro = "could not write below " + m_pasta.path();
        return false;
    }

    m_processo.setProcessChannelMode(QProcess::MergedChannels);
    m_processo.start(Cupsd(), {"-f", "-c", m_pasta.filePath("etc/cupsd.conf"), "-s",
                               m_pasta.filePath("etc/cups-files.conf")});
    qputenv("HOME", QFile::encodeName(m_pasta.filePath("casa"))); // the user's own print options
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
    Acordar();
    m_processo.terminate();
    if (!m_processo.waitForFinished(10000)) {
        m_processo.kill();
        m_processo.waitForFinished();
    }
}

void ServidorDeImpressao::Adormecer()
{
    ::kill(static_cast<pid_t>(m_processo.processId()), SIGSTOP);
}

void ServidorDeImpressao::Acordar()
{
    ::kill(static_cast<pid_t>(m_processo.processId()), SIGCONT);
}

bool ServidorDeImpressao::Remover(const QString &fila)
{
    return QProcess::execute("/usr/sbin/lpadmin", {"-x", fila}) == 0;
}

bool ServidorDeImpressao::EscreverLpoptions(const QString &texto)
{
    return Escrever("casa/.cups/lpoptions", texto);
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
