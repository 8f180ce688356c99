#include "base/ProgramasDoDesktop.h"

#include <QDir>
#include <QFile>

#include <utility>

namespace
{
/// Folders in the order of their weight; a variable holds some of them, else `usuais` are meant.
QStringList Pastas(const char *doUsuario, const QString &usual, const char *doSistema, const QString &usuais)
{
    const QString primeira = qEnvironmentVariable(doUsuario, QDir::homePath() + usual);
    QString outras = qEnvironmentVariable(doSistema);
    if (outras.isEmpty())
        outras = usuais;
    return QStringList(primeira) + outras.split(':', Qt::SkipEmptyParts);
}

/// The value of a key in one group of an entry or list; "" when there is none.
QString Valor(const QString &arquivo, const QString &grupo, const QString &chave)
{
    QFile lista(arquivo);
    if (!lista.open(QIODevice::ReadOnly))
        return {};
    bool noGrupo = false;
    while (!lista.atEnd()) {
        const QString linha = QString::fromUtf8(lista.readLine()).trimmed();
        if (linha.startsWith('['))
            noGrupo = linha == '[' + grupo + ']';
        else if (noGrupo && linha.section('=', 0, 0).trimmed() == chave)
            return linha.section('=', 1).trimmed();
    }
    return {};
}

QStringList PastasDeEntradas()
{
    QStringList pastas =
        Pastas("XDG_DATA_HOME", "/.local/share", "XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    for (QString &pasta : pastas)
        pasta += "/applications";
    return pastas;
}
} // namespace

QStringList ProgramasDoDesktop::Para(const QString &tipo)
{
    const QStringList entradas = PastasDeEntradas();
    QStringList nomes;
    const QStringList listas = Pastas("XDG_CONFIG_HOME", "/.config", "XDG_CONFIG_DIRS", "/etc/xdg") + entradas;
    for (const char *grupo : {"Default Applications", "Added Associations"})
        for (const QString &pasta : listas)
            nomes += Valor(pasta + "/mimeapps.list", grupo, tipo).split(';', Qt::SkipEmptyParts);
    for (const QString &pasta : entradas)
        nomes += Valor(pasta + "/mimeinfo.cache", "MIME Cache", tipo).split(';', Qt::SkipEmptyParts);

    QStringList achados;
    for (const QString &nome : std::as_const(nomes))
        for (const QString &pasta : entradas)
            if (const QString entrada = pasta + '/' + nome.trimmed(); QFile::exists(entrada)) {
                achados += entrada;
                break;
            }
    achados.removeDuplicates();
    return achados;
}

bool ProgramasDoDesktop::ENavegador(const QString &entrada)
{
    return Valor(entrada, "Desktop Entry", "Categories").split(';').contains("WebBrowser");
}
