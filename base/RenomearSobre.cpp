#include "base/RenomearSobre.h"

#include "base/ArquivoSeguro.h"

#include <QFileInfo>

#include <cerrno>

#include <stdio.h>

bool Disco::RenomearSobre(const QString &origem, const QString &destino, bool seguirLink)
{
    QString alvo = destino;
    if (seguirLink && QFileInfo(destino).isSymLink() && QFileInfo::exists(destino))
        alvo = QFileInfo(destino).canonicalFilePath();
    if (::rename(QFile::encodeName(origem).constData(), QFile::encodeName(alvo).constData()) == 0)
        return true;
    if (errno != EXDEV || !QFileInfo(origem).isFile())
        return false;
    QFile lida(origem);
    try {
        ArquivoSeguro nova(alvo);
        nova.Abrir();
        if (!lida.open(QIODevice::ReadOnly) || !CopiarResto(lida, nova.Arquivo()))
            return false;
        nova.Confirmar();
    } catch (const ErroArquivo &) {
        return false;
    }
    return lida.remove();
}
