// conferir_access FOLDER...: reads every sample below the folders and compares it with what is expected of
// it.
//
// A sample is a folder with dadosr.lst and esperado.json; its file is read, and a copy of it is converted
// through the book's own operations and compared again. Every .lst file in a folder named "danificados" must
// be refused, unchanged. Prints a line per file; ends with status 0 when all are as expected, 1 when not.

#include "store/Banco.h"
#include "store/ErroBanco.h"
#include "store/access/ConversorAccess.h"
#include "store/access/ErroAccess.h"
#include "store/access/tests/Esperado.h"

#include <QDir>
#include <QDirIterator>
#include <QTemporaryDir>

#include <iostream>

namespace
{
QByteArray Bytes(const QString &caminho)
{
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
}

/// A folder with a copy of the file as its book.
class Copia
{
public:
    explicit Copia(const QString &caminho)
        : banco(m_pasta.path())
    {
        QFile::copy(caminho, banco.CaminhoDoLivro());
        banco.DefinirConversor(ConversorAccess([this](const QString &) { ++mensagens; }));
    }

private:
    QTemporaryDir m_pasta;

public:
    Banco banco;
    int mensagens = 0;
};

QStringList ConferirAmostra(const QString &caminho, const Esperado &esperado)
{
    if (!esperado.Valido())
        return {"esperado.json não pôde ser lido"};
    try {
        QFile arquivo(caminho);
        if (!arquivo.open(QIODevice::ReadOnly))
            return {arquivo.errorString()};
        QStringList diferencas = esperado.Diferencas(LerLivroAccess(arquivo));
        Copia copia(caminho);
        const QStringList depois = esperado.Diferencas(copia.banco);
        for (const QString &diferenca : depois)
            diferencas += "convertido: " + diferenca;
        if (copia.mensagens != 1)
            diferencas += QString("%1 mensagens ao converter").arg(copia.mensagens);
        return diferencas;
    } catch (const Access::ErroAccess &erro) {
        return {"recusado: " + erro.Mensagem()};
    } catch (const ErroBanco &erro) {
        return {"não convertido: " + erro.Mensagem()};
    }
}

/// The refusal's message; empty when the file was taken or changed.
QString ConferirRecusa(const QString &caminho)
{
    Copia copia(caminho);
    try {
        copia.banco.AbrirRecordset("Select * from Receitas");
    } catch (const ErroBanco &erro) {
        return Bytes(caminho) == Bytes(copia.banco.CaminhoDoLivro()) ? erro.Mensagem() : QString();
    }
    return {};
}

void Dizer(const QString &caminho, const QString &texto)
{
    std::cout << qPrintable(caminho) << ": " << qPrintable(texto) << '\n';
}
} // namespace

int main(int argc, char **argv)
{
    int conferidos = 0;
    int errados = 0;
    for (int i = 1; i < argc; ++i) {
        QStringList caminhos;
        QDirIterator arquivos(QFile::decodeName(argv[i]), {"*.lst"}, QDir::Files,
                              QDirIterator::Subdirectories);
        while (arquivos.hasNext())
            caminhos += arquivos.next();
        caminhos.sort();
        for (const QString &caminho : caminhos) {
            const QDir pasta = QFileInfo(caminho).dir();
            const bool danificado = pasta.dirName() == "danificados";
            if (!danificado && !pasta.exists("esperado.json"))
                continue;
            ++conferidos;
            if (danificado) {
                const QString mensagem = ConferirRecusa(caminho);
                errados += mensagem.isEmpty();
                Dizer(caminho, mensagem.isEmpty() ? QString("ERRADO: não foi recusado")
                                                  : "recusado: " + mensagem.section("\r\n\r\n", 1, 1));
                continue;
            }
            const QStringList diferencas =
                ConferirAmostra(caminho, Esperado(pasta.filePath("esperado.json")));
            errados += !diferencas.isEmpty();
            Dizer(caminho, diferencas.isEmpty() ? QString("ok") : "ERRADO\n  " + diferencas.join("\n  "));
        }
    }
    std::cout << conferidos << " arquivos, " << errados << " errados\n";
    if (conferidos == 0)
        std::cerr << "uso: conferir_access PASTA...\n";
    return conferidos > 0 && errados == 0 ? 0 : 1;
}
