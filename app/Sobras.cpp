#include "app/Sobras.h"

#include "base/ArquivoSeguro.h"
#include "store/Banco.h"
#include "store/Consulta.h"
#include "store/ErroBanco.h"
#include "store/ExameArquivo.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace
{
constexpr qint64 kMaiorLivroVazio = 64 * 1024;

/// A new book that was never finished, or another file made by chance. "dadosr.lst.backup" is somebody's own,
/// and so is whatever holds a recipe or may hold one.
bool LivroInacabado(const QFileInfo &arquivo)
{
    static const QRegularExpression sorteado("[A-Z0-9]");
    if (!sorteado.match(arquivo.suffix()).hasMatch() || arquivo.size() > kMaiorLivroVazio)
        return false;
    int versao = 0;
    switch (ExaminarArquivo(arquivo.filePath(), nullptr, &versao)) {
    case TipoArquivo::Vazio:
    case TipoArquivo::Cortado:
    case TipoArquivo::Outro:
        return true;
    case TipoArquivo::Livro:
        try {
            Consulta consulta({arquivo.filePath(), 0, "Select max(id_receitas) from Receitas", {}, versao});
            consulta.Avancar(-1);
            return consulta.Linhas().Valor(0).isNull();
        } catch (const Erro &) {
            return false;
        }
    default:
        return false;
    }
}
} // namespace

void RemoverSobras(const Banco &banco)
{
    const QDir pasta(QFileInfo(banco.CaminhoDoLivro()).path());
    ArquivoSeguro::RemoverSobras(pasta.path());
    ArquivoSeguro::RemoverSobras(banco.Caminho("Lixeira"));

    static const QRegularExpression trabalho(
        "\\A(PacoteReceitas?\\.lrs(\\.lock|\\.[A-Za-z0-9]{6})?|~dadosr-\\d{8}-\\d{6}\\.lst\\.tmp|~.+\\.bck\\."
        "tmp"
        "|dadosr\\.lst\\.convertendo-[A-Za-z0-9]{6}|~temp(pct)?\\.eml\\.[A-Za-z0-9]{6})\\z");
    static const QRegularExpression novo("\\Adadosr\\.lst\\.[A-Za-z0-9]{6}\\z");
    const QFileInfoList entradas =
        pasta.entryInfoList({"PacoteReceita*", "~*", "dadosr.lst.*"},
                            QDir::Files | QDir::Hidden | QDir::System | QDir::CaseSensitive);
    for (const QFileInfo &entrada : entradas) {
        const QString nome = entrada.fileName();
        if (trabalho.match(nome).hasMatch() ||
            (novo.match(nome).hasMatch() && (entrada.isSymLink() || LivroInacabado(entrada))))
            QFile::remove(entrada.filePath()); // of a link the link
    }
}
