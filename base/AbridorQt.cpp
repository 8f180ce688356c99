#include "base/AbridorQt.h"

#include "base/Operacao.h"
#include "base/ProgramasDoDesktop.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QSet>
#include <QStandardPaths>

#include <unistd.h>

namespace
{
const QString kAbridor = "xdg-open";
const QString kMensagemDeEmail = "message/rfc822";
/// An opener that fails later has opened something: on a bare desktop it ends with the program that it
/// started, and with that one's status.
constexpr int kAindaEOpener = 3000; ///< milliseconds

/// Whether the desktop would show an e-mail message in a web browser, if at all.
bool SoNavegadorAbre(const QString &abridor)
{
    const QStringList programas = ProgramasDoDesktop::Para(kMensagemDeEmail);
    if (!programas.isEmpty())
        return ProgramasDoDesktop::ENavegador(programas.first());
    // A full desktop's own opener says by itself that it knows no program. The plain one tries any browser;
    // but one that somebody put in its place decides for itself.
    const bool simples = qEnvironmentVariableIsEmpty("XDG_CURRENT_DESKTOP") &&
                         QFileInfo::exists(QFileInfo(abridor).absolutePath() + "/xdg-mime");
    return simples && !ProgramasDoDesktop::Para("text/html").isEmpty();
}

/// Starts the opener on its own and has `seFalhar` called when it says within moments that it could not.
void Abrir(const QString &abridor, const QString &caminho, const std::function<void()> &seFalhar)
{
    // What it opens outlives this program, so the process object may not take it along at the end.
    static auto &abertos = *new QSet<QProcess *>;
    auto *processo = new QProcess;
    abertos.insert(processo);
    processo->setProcessChannelMode(QProcess::ForwardedChannels);
    processo->setStandardInputFile(QProcess::nullDevice());
    processo->setChildProcessModifier([] { ::setsid(); });
    QElapsedTimer relogio;
    relogio.start();
    const auto terminar = [processo, relogio, seFalhar](bool aberto) {
        if (!aberto && relogio.elapsed() < kAindaEOpener)
            Operacao::QuandoLivre(qApp, seFalhar);
        abertos.remove(processo);
        processo->deleteLater();
    };
    QObject::connect(processo, &QProcess::finished, processo,
                     [terminar](int codigo, QProcess::ExitStatus fim) {
                         terminar(codigo == 0 && fim == QProcess::NormalExit);
                     });
    QObject::connect(processo, &QProcess::errorOccurred, processo, [terminar](QProcess::ProcessError erro) {
        if (erro == QProcess::FailedToStart)
            terminar(false);
    });
    processo->start(abridor, {QString::fromLatin1(QUrl::fromLocalFile(caminho).toEncoded())});
}
} // namespace

void AbridorQt::AbrirArquivo(const QString &caminho)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(caminho));
}

void AbridorQt::AbrirMensagem(const QString &caminho, const std::function<void()> &semPrograma)
{
    const QString abridor = QStandardPaths::findExecutable(kAbridor);
    if (abridor.isEmpty() || SoNavegadorAbre(abridor))
        Operacao::QuandoLivre(qApp, semPrograma);
    else
        Abrir(abridor, caminho, semPrograma);
}

void AbridorQt::AbrirEndereco(const QUrl &endereco)
{
    // A line break in an address would begin a line of somebody's message.
    const QByteArray codificado = endereco.toEncoded().toUpper();
    if (!codificado.contains("%0A") && !codificado.contains("%0D"))
        QDesktopServices::openUrl(endereco);
}
