#include "news/ArquivoInteiro.h"

#include <QFile>
#include <QFileInfo>

#include <filesystem>

#include <unistd.h>

bool GravarArquivoInteiro(const QString &caminho, const QByteArray &bytes)
{
    // One work name for all files: what a power cut leaves behind is taken up by the next download.
    const QString trabalho = QFileInfo(caminho).path() + "/~novidade.tmp";
    QFile::remove(trabalho); // usually there is none
    QFile arquivo(trabalho);
    if (!arquivo.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return false;
    const bool gravado =
        arquivo.write(bytes) == bytes.size() && arquivo.flush() && ::fsync(arquivo.handle()) == 0;
    arquivo.close();
    std::error_code erro;
    if (gravado)
        std::filesystem::rename(trabalho.toStdU16String(), caminho.toStdU16String(), erro);
    if (!gravado || erro) {
        QFile::remove(trabalho);
        return false;
    }
    return true;
}
