#include "store/CopiasDatadas.h"

#include <QDir>
#include <QFileInfo>

QString CopiasDatadas::Nome(const QDateTime &quando)
{
    return quando.toString("'dadosr-'yyyyMMdd'-'HHmmss'.lst'");
}

QStringList CopiasDatadas::Nomes(const QString &pasta)
{
    const QString algarismo = "[0-9]";
    return QDir(pasta).entryList({"dadosr-" + algarismo.repeated(8) + '-' + algarismo.repeated(6) + ".lst"},
                                 QDir::Files, QDir::Name);
}

QString CopiasDatadas::MaisNova(const QString &livro)
{
    const QString pasta = QFileInfo(livro).absolutePath();
    const QStringList nomes = Nomes(pasta);
    return nomes.isEmpty() ? QString() : pasta + '/' + nomes.last();
}

QString CopiasDatadas::ComoVoltar(const QString &copia)
{
    return "O livro de antes da última restauração está guardado, inteiro, com o nome:\r\n" + copia +
           "\r\n\r\nPara tê-lo de volta, saia do programa, dê outro nome ao arquivo dadosr.lst e dê a esse "
           "arquivo o nome dadosr.lst.";
}
