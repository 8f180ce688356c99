#include "backup/RestauracaoDoLivro.h"

#include "backup/LivroParado.h"
#include "base/ArquivoSeguro.h"
#include "base/RenomearSobre.h"
#include "store/Banco.h"
#include "store/CopiasDatadas.h"
#include "store/ErroBanco.h"
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
constexpr int kTentativas = 5;
/// In the folder of a restore: where the book of the moment of decision was copied to.
const QString kNomeDaAnotacao = "~copia";

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

/// Whether the engine can read the book; waits for who is writing, and throws when that takes too long.
bool Legivel(const Banco &banco)
{
    try {
        banco.LerUmaVez();
        return true;
    } catch (const ErroOcupado &) {
        throw;
    } catch (const ErroBanco &) {
        return false; // what lies there is no book: it is copied as it is
    }
}

/// Copies the book with nothing half done in it; false when that cannot be had.
bool CopiarInteiro(const Banco &banco, const QString &destino)
{
    try {
        for (int vez = 0; vez < kTentativas; ++vez) {
            const bool eLivro = Legivel(banco);
            const LivroParado parado(banco);
            QFile livro(banco.CaminhoDoLivro());
            ArquivoSeguro copia(destino, {.modelo = banco.CaminhoDoLivro()});
            copia.Abrir();
            if (!livro.open(QIODevice::ReadOnly) || !Disco::CopiarResto(livro, copia.Arquivo()))
                return false;
            if (!parado.Continua(eLivro))
                continue;
            copia.Confirmar();
            return true;
        }
    } catch (const Erro &) {
    }
    return false;
}

/// Makes `novo`, or overwrites its start when an earlier entry of the same name made it.
Fim PrepararArquivo(QFile &arquivo, const ArquivoBackup::Entrada &entrada, const QString &alvo,
                    const QString &caminho, const QString &livro, const RecipienteEmFatias::Pausa &pausa)
{
    const bool primeiro = !QFile::exists(caminho);
    QFile novo(caminho);
    if (!novo.open(QIODevice::ReadWrite | QIODevice::Unbuffered) || !arquivo.seek(entrada.posicao))
        return Fim::Falhou;
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
    if (primeiro)
        Disco::DarDireitos(novo, alvo, livro);
    Disco::IniciarGravacao(novo);
    return Fim::Feito;
}
} // namespace

Fim RestauracaoDoLivro::Preparar(QFile &arquivo, const QList<ArquivoBackup::Entrada> &entradas,
                                 const std::function<void(const ArquivoBackup::Entrada &)> &andamento,
                                 const RecipienteEmFatias::Pausa &pausa)
{
    const QString fotos = Preparo() + "/Fotos/";
    if (!Descartar() || !Disco::FazerPasta(PastaDeTrabalho()) || !Disco::FazerPasta(Preparo()) ||
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

std::optional<QString> RestauracaoDoLivro::GuardarLivroAtual(const QDateTime &agora)
{
    const QString caminho = m_banco.CaminhoDoLivro();
    if (!QFileInfo::exists(caminho))
        return "";
    QDir pasta(QFileInfo(caminho).absolutePath());
    QDateTime quando = agora;
    while (QFileInfo(pasta.filePath(CopiasDatadas::Nome(quando))).isSymLink() || pasta.exists(CopiasDatadas::Nome(quando)))
        quando = quando.addSecs(1); // two restores within a second
    const QString guardada = pasta.filePath(CopiasDatadas::Nome(quando));
    if (!CopiarInteiro(m_banco, guardada))
        return std::nullopt;

    // The clock may have been wrong when a copy was made, or may be now. What is dated in days to come was made
    // before it was set back, so it counts as older than the rest; the new copy stays whatever its date.
    QStringList outras = CopiasDatadas::Nomes(pasta.path());
    outras.removeAll(QFileInfo(guardada).fileName());
    const QString amanha = CopiasDatadas::Nome(agora.addDays(1));
    std::stable_partition(outras.begin(), outras.end(), [&amanha](const QString &nome) { return nome > amanha; });
    while (outras.size() >= kCopiasGuardadas)
        pasta.remove(outras.takeFirst()); // one that cannot be removed is tried again next time
    return guardada;
}

bool RestauracaoDoLivro::Decidir(const QString &copia)
{
    try {
        ArquivoSeguro::Gravar(Preparo() + '/' + kNomeDaAnotacao, QFileInfo(copia).fileName().toUtf8());
    } catch (const Erro &) {
        return false;
    }
    if (!Disco::RenomearSobre(Preparo(), Pronto()))
        return false;
    Disco::SincronizarPasta(PastaDeTrabalho());
    return true;
}

bool RestauracaoDoLivro::LivroMudouDesdeADecisao() const
{
    if (!QFileInfo::exists(Pronto() + '/' + ArquivoBackup::kNomeDoLivro))
        return false; // it has the book's place already
    QFile livro(m_banco.CaminhoDoLivro());
    QFile anotacao(Pronto() + '/' + kNomeDaAnotacao);
    if (!anotacao.open(QIODevice::ReadOnly))
        return livro.exists(); // decided by an earlier version of the program
    const QString nome = QString::fromUtf8(anotacao.readAll());
    if (nome.isEmpty())
        return livro.exists();
    QFile copia(QFileInfo(livro).absolutePath() + '/' + nome);
    if (!livro.open(QIODevice::ReadOnly) || !copia.open(QIODevice::ReadOnly) || livro.size() != copia.size())
        return livro.exists();
    while (!livro.atEnd())
        if (const QByteArray bloco = livro.read(kBloco); bloco.isEmpty() || bloco != copia.read(kBloco))
            return true;
    return false;
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
        if (!Disco::RenomearSobre(livro, m_banco.CaminhoDoLivro(), true)) // the book itself may be a link
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

bool RestauracaoDoLivro::Descartar()
{
    if (!Disco::EPasta(PastaDeTrabalho()))
        return true; // none, or a link in its place, which leads to somebody else's
    Disco::RemoverArvore(Preparo());
    // A decision is taken back in one step: cut off in the middle of removing, it must not look like one.
    if (Pendente() && Disco::RenomearSobre(Pronto(), Preparo())) {
        Disco::SincronizarPasta(PastaDeTrabalho());
        Disco::RemoverArvore(Preparo());
    }
    if (Pendente())
        return false;
    Disco::RemoverArvore(Pronto()); // a link in its place
    return true;
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
