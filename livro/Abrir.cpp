#include "livro/Abrir.h"

#include "base/AvisosQt.h"

#include <QApplication>
#include <QFileInfo>
#include <QIODevice>
#include <QProcess>
#include <QStandardPaths>

#include <unistd.h>

void Livro::AvisarNaTela(const QString &texto, const QStringList &linhas)
{
    constexpr qsizetype kMaisLinhas = 15;
    if (::isatty(STDERR_FILENO) || !qobject_cast<QApplication *>(QCoreApplication::instance()))
        return;
    QString tudo = texto;
    if (!linhas.isEmpty())
        tudo += "\r\n\r\n" + linhas.mid(0, kMaisLinhas).join("\r\n");
    if (linhas.size() > kMaisLinhas)
        tudo += "\r\n(e mais " + QString::number(linhas.size() - kMaisLinhas) + ")";
    AvisosQt().Avisar(tudo, Avisos::Icone::Informacao);
}

bool Livro::EntregarAoPrograma(const QString &pacote, const QString &programa, const QString &pastaDoPrograma, QIODevice &erros)
{
    QString executavel = programa;
    if (executavel.isEmpty()) {
        executavel = pastaDoPrograma + "/cozinhario";
        if (!QFileInfo(executavel).isExecutable())
            executavel = QStandardPaths::findExecutable("cozinhario");
    }
    QProcess processo;
    processo.setProcessChannelMode(QProcess::ForwardedChannels);
    processo.start(executavel, {pacote});
    if (executavel.isEmpty() || !processo.waitForStarted(-1)) {
        const QString texto = "O Cozinhario 2005 não foi encontrado para abrir o pacote.";
        erros.write(("livro: " + texto + "\n").toUtf8());
        AvisarNaTela(texto, {});
        return false;
    }
    processo.waitForFinished(-1);
    return processo.exitStatus() == QProcess::NormalExit && processo.exitCode() == 0;
}
