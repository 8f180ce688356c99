#include "app/Pasta.h"

#include "base/ArquivoSeguro.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace
{
constexpr auto kLivro = "/dadosr.lst";
constexpr auto kDiario = "/dadosr.lst-journal";
constexpr auto kFotos = "/Fotos";

/// A file or a link of that name: a link that leads nowhere for the moment is a book too.
bool TemLivro(const QString &pasta)
{
    const QFileInfo livro(pasta + kLivro);
    return livro.exists() || livro.isSymLink();
}

bool Instalado(const QString &pastaDoPrograma)
{
    return QFileInfo::exists(pastaDoPrograma + "/../share/applications/cozinhario.desktop");
}

void Copiar(const QString &de, const QString &para, const QString &modelo)
{
    QFile origem(de);
    ArquivoSeguro destino(para, {.modelo = modelo});
    destino.Abrir();
    if (!origem.open(QIODevice::ReadOnly) || !Disco::CopiarResto(origem, destino.Arquivo()))
        throw Disco::ErroArquivo(para, 0);
    destino.Confirmar();
}

/// Copies the book, last, and what belongs to it; then removes the originals, as far as that is allowed.
/// False, and nothing has changed, when that fails.
bool Levar(const QString &de, const QString &para)
{
    const QString livro = de + kLivro;
    const QDir fotos(de + kFotos);
    const QStringList nomes = fotos.entryList(QDir::Files | QDir::Hidden);
    try {
        if (!nomes.isEmpty() && !Disco::FazerPasta(para + kFotos))
            return false;
        for (const QString &nome : nomes)
            Copiar(fotos.filePath(nome), para + kFotos + '/' + nome, livro);
        // What a crash left half done is undone from here when the book is first opened.
        if (QFileInfo::exists(de + kDiario))
            Copiar(de + kDiario, para + kDiario, livro);
        Copiar(livro, para + kLivro, livro);
    } catch (const Disco::ErroArquivo &) {
        return false;
    }
    if (QFile::remove(livro)) {
        QFile::remove(de + kDiario);
        for (const QString &nome : nomes)
            QFile::remove(fotos.filePath(nome));
        QDir().rmdir(de + kFotos);
    }
    return true;
}
} // namespace

LugarDoLivro PastaDoLivro(const QString &pastaDoPrograma)
{
    const bool instalado = Instalado(pastaDoPrograma);
    if (!instalado && (TemLivro(pastaDoPrograma) || QFileInfo(pastaDoPrograma).isWritable()))
        return {pastaDoPrograma, {}};

    const QString dados =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/cozinhario2005";
    QDir().mkpath(dados);
    if (!instalado || TemLivro(dados) || !TemLivro(pastaDoPrograma))
        return {dados, {}};
    if (!Levar(pastaDoPrograma, dados))
        return {pastaDoPrograma, {}}; // better where it should not be than an empty one in its place
    QString recado =
        "O seu livro de receitas estava na pasta do programa instalado e foi passado, com as figuras, "
        "para a sua pasta de dados:\r\n" +
        dados;
    if (TemLivro(pastaDoPrograma))
        recado +=
            "\r\n\r\nO original, que não pôde ser removido, não é mais usado:\r\n" + pastaDoPrograma + kLivro;
    return {dados, recado};
}
