#include "store/access/ConversorAccess.h"

#include "base/ArquivoSeguro.h"
#include "store/ErroBanco.h"
#include "store/access/ErroAccess.h"
#include "store/access/LivroAccess.h"
#include "store/access/NovoLivro.h"
#include "store/access/TrancaDeArquivo.h"
#include "store/access/TrocaDeArquivo.h"

#include <QDir>
#include <QFileInfo>

#include <new>

namespace
{
constexpr int kEsperaMs = 60000; // a large book takes its time

QString Contar(std::size_t quantos, const char *um, const char *varios)
{
    return QString::number(quantos) + ' ' + QString::fromUtf8(quantos == 1 ? um : varios);
}

QString MensagemAoConverter(const LivroAccess &livro, const QString &guardado)
{
    return QString("O seu livro de receitas estava no formato antigo (Access) e foi passado para o formato "
                   "atual, com %1 e %2.\r\n\r\n"
                   "O arquivo original foi guardado, sem nenhuma alteração, com o nome:\r\n%3")
        .arg(Contar(livro.receitas.size(), "receita", "receitas"),
             Contar(livro.ingredientes.size(), "linha de ingredientes", "linhas de ingredientes"),
             QDir::toNativeSeparators(guardado));
}

/// The new book takes the old one's place; returns the old one's new name.
QString Trocar(const QString &caminho, const LivroAccess &livro, const TrancaDeArquivo &tranca)
{
    if (tranca.Trancado())
        TrocaDeArquivo::RemoverSobras(caminho);
    ArquivoSeguro novo(caminho, {.trancar = false});
    try {
        novo.Abrir();
    } catch (const Disco::ErroArquivo &erro) {
        throw ErroBanco("Não se pode gravar na pasta do livro: " + qt_error_string(erro.Codigo()));
    }
    GravarNovoLivro(novo.Trabalho(), livro);
    if (!tranca.AindaEOMesmo())
        throw ErroBanco("O arquivo foi mudado por outro programa durante a conversão. Tente de novo.");
    bool nomeNovo = false;
    const QString guardado = TrocaDeArquivo::Guardar(caminho, nomeNovo);
    Disco::SincronizarPasta(QFileInfo(caminho).absolutePath());
    try {
        novo.Confirmar();
    } catch (const Erro &) {
        if (nomeNovo)
            QFile::remove(guardado);
        throw;
    }
    return guardado;
}

[[noreturn]] void Recusar(const QString &caminho, const QString &motivo)
{
    throw ErroBanco(
        "O livro de receitas está no formato antigo (Access) e não pôde ser convertido. O arquivo "
        "não foi alterado.\r\n\r\n" +
        motivo + "\r\n\r\n" + caminho);
}
} // namespace

ConversorAccess::ConversorAccess(AoConverter aoConverter)
    : m_aoConverter(std::move(aoConverter))
{
}

void ConversorAccess::operator()(const QString &caminho) const
{
    QString mensagem;
    try {
        // A link to the book stays a link: the files change where they are.
        const QString real = QFileInfo(caminho).canonicalFilePath();
        TrancaDeArquivo tranca(real.isEmpty() ? caminho : real, kEsperaMs);
        if (!tranca.AindaEOMesmo())
            return; // another copy of the program was quicker
        const LivroAccess livro = LerLivroAccess(tranca.Arquivo());
        mensagem = MensagemAoConverter(livro, Trocar(tranca.Arquivo().fileName(), livro, tranca));
    } catch (const Erro &erro) {
        Recusar(caminho, erro.Mensagem());
    } catch (const std::bad_alloc &) {
        Recusar(caminho, "Não há memória para um arquivo deste tamanho.");
    }
    if (m_aoConverter)
        m_aoConverter(mensagem);
}
