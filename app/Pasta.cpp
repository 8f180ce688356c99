#include "app/Pasta.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

QString PastaDoLivro(const QString &pastaDoPrograma)
{
    const bool instalado =
        QDir(pastaDoPrograma).canonicalPath() == QDir(COZINHARIO_PASTA_INSTALADA).canonicalPath() &&
        QFileInfo::exists(COZINHARIO_MARCA_INSTALADA);
    if (!instalado && QFileInfo(pastaDoPrograma).isWritable())
        return pastaDoPrograma;
    const QString dados =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/cozinhario2005";
    QDir().mkpath(dados);
    return dados;
}
