#include "store/access/TrocaDeArquivo.h"

#include "base/ArquivoSeguro.h"
#include "store/ErroBanco.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>

#include <unistd.h>

namespace
{
constexpr int kMaisNomes = 100000;

QString NomeDoOriginal(const QString &caminho, int vez)
{
    const QFileInfo arquivo(caminho);
    QString nome = arquivo.completeBaseName() + "-access-original";
    if (vez > 1)
        nome += '-' + QString::number(vez);
    if (!arquivo.suffix().isEmpty())
        nome += '.' + arquivo.suffix();
    return arquivo.absoluteDir().filePath(nome);
}

constexpr const char *kNaoGuardado = "O arquivo original não pôde ser guardado com outro nome";
} // namespace

namespace TrocaDeArquivo
{
void RemoverSobras(const QString &caminho)
{
    const QFileInfo arquivo(caminho);
    ArquivoSeguro::RemoverSobras(arquivo.absolutePath());
    QDir pasta = arquivo.absoluteDir();
    const QString antigas = arquivo.fileName() + ".convertendo-";
    for (const QString &nome : pasta.entryList({antigas + "??????"}, QDir::Files | QDir::Hidden))
        pasta.remove(nome); // one that stays does no harm
}

QString Guardar(const QString &caminho, bool &novo)
{
    const QByteArray original = QFile::encodeName(caminho);
    for (int vez = 1; vez < kMaisNomes; ++vez) {
        const QString nome = NomeDoOriginal(caminho, vez);
        const QByteArray guardado = QFile::encodeName(nome);
        novo = ::link(original.constData(), guardado.constData()) == 0;
        if (novo)
            return nome;
        if (errno != EEXIST) {
            novo = true;
            return GuardarPorCopia(caminho);
        }
        if (Disco::MesmoArquivo(caminho, nome))
            return nome;
    }
    throw ErroBanco(kNaoGuardado);
}

QString GuardarPorCopia(const QString &caminho)
{
    QFile original(caminho);
    if (!original.open(QIODevice::ReadOnly))
        throw ErroBanco(kNaoGuardado + QString(": ") + original.errorString());
    ArquivoSeguro copia(NomeDoOriginal(caminho, 1), {.modelo = caminho});
    copia.Abrir();
    if (!Disco::CopiarResto(original, copia.Arquivo()) || copia.Arquivo().size() != original.size())
        throw ErroBanco(kNaoGuardado);
    for (int vez = 1; vez < kMaisNomes; ++vez) {
        const QString nome = NomeDoOriginal(caminho, vez);
        if (copia.ConfirmarSeNovo(nome))
            return nome;
    }
    throw ErroBanco(kNaoGuardado);
}
} // namespace TrocaDeArquivo
