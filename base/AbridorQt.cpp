#include "base/AbridorQt.h"

#include <QDesktopServices>

void AbridorQt::AbrirArquivo(const QString &caminho)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(caminho));
}

void AbridorQt::AbrirEndereco(const QUrl &endereco)
{
    QDesktopServices::openUrl(endereco);
}
