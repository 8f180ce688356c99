#include "livro/Comandos.h"

#include <QApplication>
#include <QFile>

#include <cstdio>
#include <memory>

int main(int argc, char *argv[])
{
    // Only what is opened from the desktop may have to speak in a window.
    const bool abrir = argc > 1 && qstrcmp(argv[1], "abrir") == 0;
    const bool tela = !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    std::unique_ptr<QCoreApplication> aplicacao;
    if (abrir && tela)
        aplicacao = std::make_unique<QApplication>(argc, argv);
    else
        aplicacao = std::make_unique<QCoreApplication>(argc, argv);
    QCoreApplication::setApplicationName("livro");

    QFile saida;
    QFile erros;
    if (!saida.open(stdout, QIODevice::WriteOnly) || !erros.open(stderr, QIODevice::WriteOnly))
        return Livro::kFalhou;
    const int estado = Livro::Executar(QCoreApplication::arguments().mid(1),
                                       {saida, erros, QCoreApplication::applicationDirPath()});
    // A full disk or a closed pipe takes the answer away: that is no success.
    return saida.flush() || estado != Livro::kFeito ? estado : Livro::kFalhou;
}
