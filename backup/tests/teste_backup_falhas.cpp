// What a crash and a full disk leave behind. The program runs itself again as the child that is killed.
#include "backup/ArquivoBackup.h"
#include "backup/tests/Duplos.h"
#include "packages/Recipiente.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

using ArquivoBackup::Cabecalho;

namespace
{
constexpr int kFiguras = 40;
constexpr int kMortes = 50;
const QString kIndisponivel = "Unidade/Diretório Indisponível no Momento!";
const QString kNadaAlterado = kIndisponivel + "\r\nNenhum Arquivo foi Alterado.";

/// A book whose recipes and pictures all carry one word.
void EncherLivro(Cozinha &cozinha, const QString &palavra)
{
    for (int i = 1; i <= kFiguras; ++i)
        cozinha.NovaReceita(palavra + ' ' + QString::number(i),
                            palavra.toLatin1().repeated(8000) + QByteArray::number(i));
}

/// The one word that the book and every picture carry; something else when they do not agree.
QString PalavraDoLivro(const Cozinha &cozinha)
{
    const QStringList nomes = cozinha.Nomes();
    if (nomes.size() != kFiguras)
        return QString("%1 recipes").arg(nomes.size());
    const QString palavra = nomes[0].section(' ', 0, 0);
    for (const QString &nome : nomes)
        if (!nome.startsWith(palavra + ' '))
            return "recipes of two books";
    for (int i = 1; i <= kFiguras; ++i) {
        const QByteArray figura = Conteudo(cozinha.figuras.Caminho(Comandos::NomeFigura(i)));
        if (figura != palavra.toLatin1().repeated(8000) + QByteArray::number(i))
            return QString("%1, but picture %2 is another's").arg(palavra).arg(i);
    }
    return palavra;
}

void CopiarPasta(const QString &de, const QString &para)
{
    const auto retrato = Retrato(de);
    QVERIFY(QDir().mkpath(para));
    for (auto it = retrato.begin(); it != retrato.end(); ++it) {
        if (it.value() == "(folder)") {
            QVERIFY(QDir().mkpath(para + '/' + it.key()));
            continue;
        }
        QFile arquivo(para + '/' + it.key());
        QVERIFY(arquivo.open(QIODevice::WriteOnly));
        QCOMPARE(arquivo.write(it.value()), it.value().size());
    }
}

/// A small disk in memory; only the superuser can make one.
class DiscoPequeno
{
public:
    explicit DiscoPequeno(qint64 bytes)
    {
        const QByteArray opcoes = "size=" + QByteArray::number(bytes);
        m_montado =
            m_pasta.isValid() && mount("tmpfs", Caminho().constData(), "tmpfs", 0, opcoes.constData()) == 0;
    }
    ~DiscoPequeno()
    {
        if (m_montado)
            umount2(Caminho().constData(), MNT_DETACH);
    }
    DiscoPequeno(const DiscoPequeno &) = delete;
    DiscoPequeno &operator=(const DiscoPequeno &) = delete;

    bool Montado() const { return m_montado; }
    QString Pasta() const { return m_pasta.path(); }
    /// Fills the disk until only so many bytes are free.
    void Encher(qint64 livres)
    {
        struct statvfs estado;
        QCOMPARE(statvfs(Caminho().constData(), &estado), 0);
        const qint64 resta = static_cast<qint64>(estado.f_bavail) * static_cast<qint64>(estado.f_bsize);
        QVERIFY2(resta >= livres, qPrintable(QString::number(resta)));
        QFile lastro(m_pasta.filePath("lastro"));
        QVERIFY(lastro.open(QIODevice::WriteOnly));
        QCOMPARE(lastro.write(QByteArray(resta - livres, 'l')), resta - livres);
    }

private:
    QByteArray Caminho() const { return QFile::encodeName(m_pasta.path()); }

    QTemporaryDir m_pasta;
    bool m_montado = false;
};

QByteArray Acaso(qsizetype tamanho, quint32 semente)
{
    QRandomGenerator gerador(semente);
    QByteArray bytes(tamanho, Qt::Uninitialized);
    for (char &c : bytes)
        c = static_cast<char>(gerador.generate());
    return bytes;
}

#define EXIGIR_DISCO(disco)                                                                                  \
    if (!(disco).Montado())                                                                                  \
    QSKIP("A small disk cannot be mounted here: not the superuser")
} // namespace

class TesteBackupFalhas : public QObject
{
    Q_OBJECT

private slots:
    void morteNoMeioDaRestauracaoNuncaMistura();

    void semEspacoParaACopiaAAnteriorFica();
    void semEspacoParaOArquivoTemporarioEDito();
    void semEspacoParaDesdobrarNadaMuda();
    void semEspacoParaOsNovosArquivosNadaMuda();
    void semEspacoParaGuardarOLivroNadaMuda();
};

void TesteBackupFalhas::morteNoMeioDaRestauracaoNuncaMistura()
{
    QTemporaryDir pasta;
    const QString origem = pasta.filePath("velho");
    const QString backup = pasta.filePath("novo.bck");
    const QString livro = pasta.filePath("livro");
    QVERIFY(QDir(pasta.path()).mkdir("velho"));
    QVERIFY(QDir(pasta.path()).mkdir("novo"));
    {
        Cozinha velho(origem);
        EncherLivro(velho, "velha");
        Cozinha novo(pasta.filePath("novo"));
        EncherLivro(novo, "recem"); // as many letters: no tail stays behind
        novo.Backup(backup);
        QCOMPARE(PalavraDoLivro(velho), "velha");
        QCOMPARE(PalavraDoLivro(novo), "recem");
    }

    const auto restaurar = [&](QProcess &filho) {
        QDir(livro).removeRecursively();
        CopiarPasta(origem, livro);
        filho.start(QCoreApplication::applicationFilePath(), {"--restaurar", livro, backup});
        QVERIFY(filho.waitForStarted());
        // The child says when it begins, so that a moment is counted from there.
        QVERIFY(filho.waitForReadyRead(30000));
    };
    QProcess inteiro;
    restaurar(inteiro);
    QElapsedTimer relogio;
    relogio.start();
    QVERIFY(inteiro.waitForFinished(60000));
    const auto duracao = static_cast<unsigned long long>(relogio.nsecsElapsed() / 1000);
    QCOMPARE(inteiro.exitCode(), 0);
    QCOMPARE(PalavraDoLivro(Cozinha(livro)), "recem");

    // Half as long again as a whole restore takes: the last moments, when the files move, are met as well.
    int velhos = 0;
    int novos = 0;
    for (int i = 0; i < kMortes; ++i) {
        QProcess filho;
        restaurar(filho);
        usleep(static_cast<useconds_t>(QRandomGenerator::global()->bounded(duracao * 3 / 2 + 1)));
        kill(static_cast<pid_t>(filho.processId()), SIGKILL);
        QVERIFY(filho.waitForFinished(30000));

        Cozinha depois(livro);
        depois.backup.ConcluirRestauracao();
        const QString palavra = PalavraDoLivro(depois);
        QVERIFY2(palavra == "velha" || palavra == "recem", qPrintable(palavra));
        ++(palavra == "velha" ? velhos : novos);
        QVERIFY(depois.avisos.textos.isEmpty());
        QVERIFY2(!QFile::exists(livro + "/Restore"),
                 qPrintable(QDir(livro + "/Restore")
                                .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
                                .join(' ')));
    }
    qInfo("a restore takes %llu us; %d times the old book, %d times the new one", duracao, velhos, novos);
}

void TesteBackupFalhas::semEspacoParaACopiaAAnteriorFica()
{
    DiscoPequeno disco(1024 * 1024);
    EXIGIR_DISCO(disco);
    QTemporaryDir pasta;
    Cozinha cozinha(pasta.path());
    cozinha.NovaReceita("Bolo");
    const QString destino = disco.Pasta() + "/a.bck";
    cozinha.Backup(destino);
    const QByteArray anterior = Conteudo(destino);
    const auto antes = Retrato(disco.Pasta());

    cozinha.NovaReceita("Pão", Acaso(3'000'000, 1));
    const auto livro = Retrato(pasta.path());
    cozinha.Backup(destino);
    QCOMPARE(cozinha.avisos.textos.last(), kIndisponivel);
    QCOMPARE(cozinha.avisos.icones.last(), Avisos::Icone::Parada);
    QVERIFY(Conteudo(destino) == anterior);
    QVERIFY(Retrato(disco.Pasta()) == antes);
    QVERIFY(Retrato(pasta.path()) == livro);
}

void TesteBackupFalhas::semEspacoParaOArquivoTemporarioEDito()
{
    DiscoPequeno disco(6 * 1024 * 1024);
    EXIGIR_DISCO(disco);
    QTemporaryDir pasta;
    Cozinha cozinha(disco.Pasta());
    cozinha.NovaReceita("Bolo", Acaso(3'000'000, 1));
    disco.Encher(1'000'000);
    const auto antes = Retrato(disco.Pasta());
    cozinha.Backup(pasta.filePath("a.bck"));
    QCOMPARE(cozinha.avisos.textos, {kIndisponivel});
    QVERIFY(Retrato(disco.Pasta()) == antes);
    QVERIFY(Retrato(pasta.path()).isEmpty());
}

void TesteBackupFalhas::semEspacoParaDesdobrarNadaMuda()
{
    DiscoPequeno disco(4 * 1024 * 1024);
    EXIGIR_DISCO(disco);
    QTemporaryDir pasta;
    QVERIFY(QDir(pasta.path()).mkdir("livro"));
    Cozinha grande(pasta.filePath("livro"));
    grande.NovaReceita("Pão", Acaso(3'000'000, 1));
    grande.Backup(pasta.filePath("a.bck"));

    Cozinha cozinha(disco.Pasta());
    cozinha.NovaReceita("Bolo", "figura");
    disco.Encher(1'000'000);
    const auto antes = Retrato(disco.Pasta());
    cozinha.Restaurar(pasta.filePath("a.bck"));
    QCOMPARE(cozinha.avisos.textos, {kNadaAlterado});
    QVERIFY(cozinha.avisos.perguntas.isEmpty());
    QVERIFY(Retrato(disco.Pasta()) == antes);
}

void TesteBackupFalhas::semEspacoParaOsNovosArquivosNadaMuda()
{
    DiscoPequeno disco(8 * 1024 * 1024);
    EXIGIR_DISCO(disco);
    QTemporaryDir pasta;
    QVERIFY(QDir(pasta.path()).mkdir("livro"));
    Cozinha grande(pasta.filePath("livro"));
    grande.NovaReceita("Pão", Acaso(3'000'000, 1));
    grande.Backup(pasta.filePath("a.bck"));

    Cozinha cozinha(disco.Pasta());
    cozinha.NovaReceita("Bolo", "figura");
    disco.Encher(4'000'000); // room for the unpacked archive, not for its pictures as well
    const auto antes = Retrato(disco.Pasta());
    cozinha.Restaurar(pasta.filePath("a.bck"));
    QCOMPARE(cozinha.avisos.textos, {kNadaAlterado});
    QCOMPARE(cozinha.avisos.perguntas.size(), 1);
    QVERIFY(cozinha.janela.chamadas.isEmpty());
    QVERIFY(Retrato(disco.Pasta()) == antes);
    QCOMPARE(cozinha.Nomes(), {"Bolo"});
}

void TesteBackupFalhas::semEspacoParaGuardarOLivroNadaMuda()
{
    DiscoPequeno disco(8 * 1024 * 1024);
    EXIGIR_DISCO(disco);
    QTemporaryDir pasta;
    QByteArray recipiente;
    QCOMPARE(Recipiente::Compactar(Cabecalho("dadosr.lst", 5) + "livro", recipiente), Recipiente::kSucesso);
    QFile backup(pasta.filePath("a.bck"));
    QVERIFY(backup.open(QIODevice::WriteOnly));
    backup.write(recipiente);
    backup.close();

    Cozinha cozinha(disco.Pasta());
    cozinha.NovaReceita("Bolo", "figura");
    cozinha.banco.ExecutarSQL("Update Receitas set Modo = '" + QString("Bolo").repeated(500'000) +
                              "'"); // all of it tail
    disco.Encher(3'000'000);        // room for the new book, not for a copy as well
    const auto antes = Retrato(disco.Pasta());
    cozinha.Restaurar(pasta.filePath("a.bck"));
    QCOMPARE(cozinha.avisos.textos, {kNadaAlterado});
    QCOMPARE(cozinha.avisos.perguntas.size(), 1);
    QVERIFY(Retrato(disco.Pasta()) == antes);
}

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    if (app.arguments().value(1) == "--restaurar") {
        Cozinha cozinha(app.arguments().value(2));
        puts("ready");
        fflush(stdout);
        cozinha.Restaurar(app.arguments().value(3));
        return cozinha.janela.chamadas.contains("LivroRestaurado") ? 0 : 1;
    }
    TesteBackupFalhas teste;
    return QTest::qExec(&teste, argc, argv);
}

#include "teste_backup_falhas.moc"
