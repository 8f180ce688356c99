#include "backup/RestauracaoDoLivro.h"

#include "base/ArquivoSeguro.h"
#include "store/Banco.h"
#include "store/Figuras.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <vector>

namespace
{
constexpr qint64 kBloco = 1024 * 1024;
constexpr qsizetype kCopiasGuardadas = 3;

QString NomeDaCopia(const QDateTime &quando)
{
    return quando.toString("'dadosr-'yyyyMMdd'-'HHmmss'.lst'");
}

/// What NomeDaCopia() gives, as a file pattern.
QString PadraoDasCopias()
{
    const QString algarismo = "[0-9]";
    return "dadosr-" + algarismo.repeated(8) + '-' + algarismo.repeated(6) + ".lst";
}

bool SincronizarArquivo(const QString &caminho)
{
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadWrite | QIODevice::ExistingOnly) && Disco::Sincronizar(arquivo);
}

/// Puts behind the end of `novo` what the file it will replace holds from there on.
bool GuardarCauda(const QString &alvo, QFile &novo)
{
    const QFileInfo info(alvo);
    if (!info.isFile())
        return true;
    if (info.size() <= novo.pos())
        return true;
    QFile antigo(alvo);
    return antigo.open(QIODevice::ReadOnly) && antigo.seek(novo.pos()) && Disco::CopiarResto(antigo, novo);
}

/// Makes `novo`, or overwrites its start when an earlier entry of the same name made it.
Fim PrepararArquivo(QFile &arquivo, const ArquivoBackup::Entrada &entrada, const QString &alvo,
                    const QString &caminho, const QString &livro, const RecipienteEmFatias::Pausa &pausa)
{
    const bool primeiro = !QFile::exists(caminho);
    QFile novo(caminho);
    if (!novo.open(QIODevice::ReadWrite | QIODevice::Unbuffered) || !arquivo.seek(entrada.posicao))
        return Fim::Falhou;
    if (primeiro)
        Disco::DarDireitos(novo, alvo, livro);
    std::vector<char> bloco(static_cast<std::size_t>(std::min(entrada.tamanho, kBloco)));
    for (qint64 falta = entrada.tamanho; falta > 0;) {
        const qint64 bytes = arquivo.read(bloco.data(), std::min(falta, kBloco));
        if (bytes <= 0 || novo.write(bloco.data(), bytes) != bytes)
            return Fim::Falhou;
        falta -= bytes;
        if (!pausa())
            return Fim::Interrompido;
    }
    if (primeiro && !GuardarCauda(alvo, novo))
        return Fim::Falhou;
    Disco::IniciarGravacao(novo);
    return Fim::Feito;
}
} // namespace

Fim RestauracaoDoLivro::Preparar(QFile &arquivo, const QList<ArquivoBackup::Entrada> &entradas,
                                 const std::function<void(const ArquivoBackup::Entrada &)> &andamento,
                                 const RecipienteEmFatias::Pausa &pausa)
{
    Descartar();
    const QString fotos = Preparo() + "/Fotos/";
    if (!Disco::FazerPasta(PastaDeTrabalho()) || !Disco::FazerPasta(Preparo()) ||
        !Disco::FazerPasta(Preparo() + "/Fotos"))
        return Fim::Falhou;
    QStringList novos;
    QHash<QString, QString> nomes; // names that differ in letter case only are one picture
    for (const ArquivoBackup::Entrada &entrada : entradas) {
        QString alvo = m_banco.CaminhoDoLivro();
        QString novo = Preparo() + '/' + ArquivoBackup::kNomeDoLivro;
        if (!novos.isEmpty()) { // every entry but the first is a picture, whatever its name
            QString &nome = nomes[entrada.nome.toCaseFolded()];
            if (nome.isEmpty())
                nome = QFileInfo(m_figuras.Caminho(entrada.nome)).fileName();
            alvo = m_figuras.Caminho(nome);
            novo = fotos + nome;
        }
        if (const Fim fim = PrepararArquivo(arquivo, entrada, alvo, novo, m_banco.CaminhoDoLivro(), pausa);
            fim != Fim::Feito)
            return fim;
        novos << novo;
        andamento(entrada);
    }
    for (const QString &novo : novos) {
        if (!SincronizarArquivo(novo))
            return Fim::Falhou;
        if (!pausa())
            return Fim::Interrompido;
    }
    Disco::SincronizarPasta(fotos);
    Disco::SincronizarPasta(Preparo());
    return Fim::Feito;
}

bool RestauracaoDoLivro::GuardarLivroAtual(const QDateTime &agora)
{
    QFile livro(m_banco.CaminhoDoLivro());
    if (!livro.exists())
        return true;
    QDir pasta(QFileInfo(livro).absolutePath());
    QDateTime quando = agora;
    while (pasta.exists(NomeDaCopia(quando)))
        quando = quando.addSecs(1); // two restores within a second
    try {
        ArquivoSeguro copia(pasta.filePath(NomeDaCopia(quando)), {.modelo = livro.fileName()});
        copia.Abrir();
        if (!livro.open(QIODevice::ReadOnly) || !Disco::CopiarResto(livro, copia.Arquivo()))
            return false;
        copia.Confirmar();
    } catch (const Disco::ErroArquivo &) {
        return false;
    }
    QStringList copias = pasta.entryList({PadraoDasCopias()}, QDir::Files, QDir::Name);
    while (copias.size() > kCopiasGuardadas)
        pasta.remove(copias.takeFirst()); // one that cannot be removed is tried again next time
    return true;
}

bool RestauracaoDoLivro::Decidir()
{
    if (!Disco::RenomearSobre(Preparo(), Pronto()))
        return false;
    Disco::SincronizarPasta(PastaDeTrabalho());
    return true;
}

bool RestauracaoDoLivro::Pendente() const
{
    return Disco::EPasta(Pronto());
}

QString RestauracaoDoLivro::Aplicar()
{
    const QString livro = Pronto() + '/' + ArquivoBackup::kNomeDoLivro;
    const QString fotos = QFileInfo(m_figuras.Caminho("F0000000.img")).absolutePath();
    QString falhou;
    if (QFile::exists(livro)) {
        // A journal of the old book would be rolled back into the new one, and the two would mix.
        m_banco.RemoverJournal();
        if (!Disco::RenomearSobre(livro, m_banco.CaminhoDoLivro(), true))
            falhou = ArquivoBackup::kNomeDoLivro;
    }
    QDir().mkpath(fotos); // fails visibly below
    const QDir novas(Pronto() + "/Fotos");
    for (const QString &nome : novas.entryList(QDir::Files | QDir::Hidden, QDir::Name)) {
        if (!falhou.isEmpty())
            break;
        if (!Disco::RenomearSobre(novas.filePath(nome), m_figuras.Caminho(nome)))
            falhou = nome;
    }
    Disco::SincronizarPasta(fotos);
    Disco::SincronizarPasta(QFileInfo(m_banco.CaminhoDoLivro()).absolutePath());
    Descartar(); // only now: until here a cut leaves the rest to be moved at the next start
    return falhou;
}

void RestauracaoDoLivro::Descartar()
{
    if (!Disco::EPasta(PastaDeTrabalho()))
        return; // a link in its place leads to somebody else's
    Disco::RemoverArvore(Preparo());
    // A decision is taken back in one step: cut off in the middle of removing, it must not look like one.
    if (Pendente() && Disco::RenomearSobre(Pronto(), Preparo()))
        Disco::RemoverArvore(Preparo());
    if (!Pendente())
        Disco::RemoverArvore(Pronto()); // a link in its place
}

QString RestauracaoDoLivro::PastaDeTrabalho() const
{
    return m_banco.Caminho("Restore");
}

QString RestauracaoDoLivro::Preparo() const
{
    return PastaDeTrabalho() + "/~preparo";
}

QString RestauracaoDoLivro::Pronto() const
{
    return PastaDeTrabalho() + "/~pronto";
}
