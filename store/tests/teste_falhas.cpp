#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <functional>

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Comandos;

namespace
{
const QDate kDia(2005, 11, 21);
const QByteArray kInicioAccess("\0\1\0\0Standard Jet DB\0", 20);

Receita UmaReceita(const QString &nome)
{
    Receita r;
    r.Nome = nome;
    r.Modo = QString("Misture tudo. ").repeated(200);
    return r;
}

QString ErroDe(const std::function<void()> &operacao)
{
    try {
        operacao();
    } catch (const ErroBanco &erro) {
        return erro.Mensagem();
    }
    return {};
}

QByteArray Ler(const QString &caminho)
{
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray("(ausente)");
}

void Gravar(const QString &caminho, const QByteArray &bytes)
{
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(bytes) != bytes.size())
        qFatal("não foi possível gravar %s", qPrintable(caminho));
}

QStringList Nomes(const Banco &banco)
{
    QStringList nomes;
    for (RecordSet rs = banco.AbrirRecordset(SqlLista(), {"Nome"}); !rs.Eof(); rs.MoveNext())
        nomes += rs.Texto(0);
    return nomes;
}

/// What the engine says of a file on its own; "ok" is the good answer.
QString Integridade(const QString &caminho)
{
    sqlite3 *conexao = nullptr;
    QString resposta;
    if (sqlite3_open(caminho.toUtf8().constData(), &conexao) == SQLITE_OK) {
        // Comparing by bytes is enough: no index depends on the order.
        sqlite3_create_collation(conexao, "PORTUGUES", SQLITE_UTF8, nullptr,
                                 [](void *, int a, const void *, int b, const void *) { return a - b; });
        const auto guardar = [](void *onde, int, char **valores, char **) {
            *static_cast<QString *>(onde) += valores[0];
            return 0;
        };
        if (sqlite3_exec(conexao, "PRAGMA integrity_check", guardar, &resposta, nullptr) != SQLITE_OK)
            resposta = sqlite3_errmsg(conexao);
    }
    sqlite3_close(conexao);
    return resposta;
}

/**
 * A disk on which only so many more bytes find room: stands before the engine's own writing.
 */
class DiscoCheio
{
public:
    explicit DiscoCheio(qint64 livres)
    {
        s_livres = livres;
        Trocar(reinterpret_cast<sqlite3_syscall_ptr>(&DiscoCheio::Escrever));
    }
    ~DiscoCheio() { Trocar(nullptr); }
    DiscoCheio(const DiscoCheio &) = delete;
    DiscoCheio &operator=(const DiscoCheio &) = delete;

private:
    static ssize_t Escrever(int arquivo, const void *bytes, size_t quantos, off_t onde)
    {
        if (s_livres < static_cast<qint64>(quantos)) {
            errno = ENOSPC;
            return -1;
        }
        s_livres -= static_cast<qint64>(quantos);
        return ::pwrite(arquivo, bytes, quantos, onde);
    }
    static void Trocar(sqlite3_syscall_ptr funcao)
    {
        sqlite3_vfs *vfs = sqlite3_vfs_find(nullptr);
        for (const char *nome : {"pwrite", "pwrite64"})
            vfs->xSetSystemCall(vfs, nome, funcao); // one of the two is in use
    }
    static qint64 s_livres;
};
qint64 DiscoCheio::s_livres = 0;

/// The books as a crash in the middle of a change leaves it: half the pages written, the journal beside them.
void DeixarPelaMetade(const Banco &banco, const QString &paraPasta)
{
    sqlite3 *conexao = nullptr;
    const QString caminho = banco.CaminhoDoLivro();
    if (sqlite3_open(caminho.toUtf8().constData(), &conexao) != SQLITE_OK ||
        sqlite3_exec(conexao, "BEGIN; UPDATE Receitas SET Nome = 'pela metade', Modo = 'pela metade'",
                     nullptr, nullptr, nullptr) != SQLITE_OK ||
        sqlite3_db_cacheflush(conexao) != SQLITE_OK)
        qFatal("%s", sqlite3_errmsg(conexao));
    for (const char *cauda : {"", "-journal"})
        Gravar(paraPasta + "/dadosr.lst" + cauda, Ler(caminho + cauda));
    sqlite3_close(conexao); // the original is rolled back
}
} // namespace

class TesteFalhas : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void recusaOQueNaoELivro_data();
    void recusaOQueNaoELivro();
    void recusaLivroCortado_data();
    void recusaLivroCortado();
    void ignoraORestoDeUmArquivoMaior();
    void recusaBancoDeOutroPrograma();
    void oLivroQueSomeEErro_data();
    void oLivroQueSomeEErro();
    void chamaOConversorSoParaAccess();
    void recusaAccessQueOConversorNaoConverteu();
    void trazDeVoltaUmLivroEmOutroModoDeDiario();

    void pastaSemEscritaEErro();
    void livroSemEscritaPodeSerLido();
    void livroIlegivelEErro();
    void discoCheioEErroEOLivroFica();
    void discoCheioAoCriarNaoDeixaNada();
    void esperaPelaTrancaDeOutroPrograma();
    void trancaQueNaoSoltaEErro();

    void desfazOQueAQuedaDeixouPelaMetade();
    void leUmaVezDeixaOLivroInteiroNumArquivo();
    void oDiarioVelhoNaoEntraNoLivroRestaurado();
    void oDiarioVelhoNaoEntraNumLivroNovo();
    void oDiarioVelhoNaoEntraNoLivroConvertido();
    void duasCopiasSalvamAoMesmoTempo();
    void mortoAoSalvarNaoPerdeNada();
    void mortoAoCriarDeixaUmLivroOuNenhum();

private:
    /// Runs the helper, as a user without rights when the tests have all of them; what it printed.
    QString Rodar(const QString &modo, const QString &pasta);

    QTemporaryDir m_programas;
    QString m_processo;
    std::unique_ptr<QTemporaryDir> m_pasta;
};

void TesteFalhas::initTestCase()
{
    // Copied to where another user can run it as well.
    QVERIFY(m_programas.isValid());
    QVERIFY(QFile::setPermissions(m_programas.path(), QFile::Permissions(0x7755)));
    m_processo = m_programas.filePath("processo_store");
    QVERIFY(QFile::copy(PROCESSO_STORE, m_processo));
    QVERIFY(QFile::setPermissions(m_processo, QFile::Permissions(0x7755)));
}

void TesteFalhas::init()
{
    m_pasta = std::make_unique<QTemporaryDir>();
    QVERIFY(m_pasta->isValid());
}

QString TesteFalhas::Rodar(const QString &modo, const QString &pasta)
{
    QProcess processo;
    if (::geteuid() == 0)
        processo.setChildProcessModifier([] {
            constexpr uid_t kNinguem = 65534;
            if (::setgid(kNinguem) != 0 || ::setuid(kNinguem) != 0)
                ::_exit(3);
        });
    processo.start(m_processo, {modo, pasta});
    processo.waitForFinished();
    return QString::fromUtf8(processo.readAllStandardOutput()).trimmed();
}

void TesteFalhas::recusaOQueNaoELivro_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("um byte") << QByteArray("S");
    QTest::newRow("texto") << QByteArray("isto não é um banco de dados").repeated(1000);
    QTest::newRow("zeros") << QByteArray(8192, '\0');
    QTest::newRow("Access sem conversor") << kInicioAccess + QByteArray(4096, 'x');
    QTest::newRow("Access novo sem conversor")
        << QByteArray("\0\1\0\0Standard ACE DB\0", 20) + QByteArray(4096, 'x');
    QTest::newRow("começo de Access") << kInicioAccess.left(12);
    QTest::newRow("só o nome do formato") << QByteArray("SQLite format 3\0", 16);
    QTest::newRow("cabeçalho sem sentido") << QByteArray("SQLite format 3\0", 16) + QByteArray(8192, '\x7f');
}

void TesteFalhas::recusaOQueNaoELivro()
{
    QFETCH(QByteArray, bytes);
    const Banco banco(m_pasta->path());
    Gravar(banco.CaminhoDoLivro(), bytes);
    const auto operacoes = {
        std::function<void()>([&] { banco.AbrirRecordset(SqlLista()); }),
        std::function<void()>([&] { banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia)); }),
        std::function<void()>([&] { banco.LerUmaVez(); })};
    for (const auto &operacao : operacoes) {
        const QString erro = ErroDe(operacao);
        QVERIFY2(erro.startsWith("O arquivo dadosr.lst não é um livro de receitas"), qPrintable(erro));
        QVERIFY(erro.contains("\r\n\r\n"));
    }
    QCOMPARE(Ler(banco.CaminhoDoLivro()), bytes);
    QCOMPARE(QDir(m_pasta->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList("dadosr.lst"));

    QVERIFY(QFile::remove(banco.CaminhoDoLivro()));
    QVERIFY(QDir().mkpath(banco.CaminhoDoLivro()));
    QVERIFY(ErroDe([&] {
                banco.AbrirRecordset(SqlLista());
            }).startsWith("Não foi possível abrir o livro de receitas."));
    QVERIFY(QDir(banco.CaminhoDoLivro()).isEmpty());
}

void TesteFalhas::recusaLivroCortado_data()
{
    QTest::addColumn<int>("porMil");
    for (const int porMil : {1, 5, 10, 100, 500, 900, 999})
        QTest::addRow("%d por mil", porMil) << porMil;
}

void TesteFalhas::recusaLivroCortado()
{
    QFETCH(int, porMil);
    const Banco banco(m_pasta->path());
    for (int i = 0; i < 20; ++i)
        banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    const QByteArray inteiro = Ler(banco.CaminhoDoLivro());
    const QByteArray cortado = inteiro.left(inteiro.size() * porMil / 1000);
    Gravar(banco.CaminhoDoLivro(), cortado);
    QVERIFY(!ErroDe([&] { banco.AbrirRecordset(SqlLista()); }).isEmpty());
    QVERIFY(!ErroDe([&] { banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia)); }).isEmpty());
    QCOMPARE(Ler(banco.CaminhoDoLivro()), cortado);
}

/// A restored book is written over a longer one, whose tail stays.
void TesteFalhas::ignoraORestoDeUmArquivoMaior()
{
    const Banco banco(m_pasta->path());
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    const QByteArray livro = Ler(banco.CaminhoDoLivro());
    for (const int resto : {1, 2048, 4096, 100000}) {
        Gravar(banco.CaminhoDoLivro(), livro + QByteArray(resto, 'x'));
        QCOMPARE(Nomes(banco), QStringList("Sal"));
        for (int i = 0; i < 20; ++i)
            banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Mel"), kDia));
        QCOMPARE(Nomes(banco).size(), 21);
        QCOMPARE(Integridade(banco.CaminhoDoLivro()), "ok");
    }
}

void TesteFalhas::recusaBancoDeOutroPrograma()
{
    const Banco banco(m_pasta->path());
    sqlite3 *conexao = nullptr;
    QCOMPARE(sqlite3_open(banco.CaminhoDoLivro().toUtf8().constData(), &conexao), SQLITE_OK);
    QCOMPARE(sqlite3_exec(conexao, "CREATE TABLE Discos(Nome); INSERT INTO Discos VALUES ('a')", nullptr,
                          nullptr, nullptr),
             SQLITE_OK);
    sqlite3_close(conexao);
    const QByteArray bytes = Ler(banco.CaminhoDoLivro());
    for (const QString &sql : {SqlLista(), SqlInserirReceita(UmaReceita("Sal"), kDia)}) {
        const QString erro = ErroDe([&] { banco.ExecutarSQL(sql); });
        QVERIFY2(erro.startsWith("O arquivo dadosr.lst não é um livro de receitas"), qPrintable(erro));
    }
    QVERIFY(!ErroDe([&] { banco.AbrirRecordset("Select * from Discos"); }).isEmpty());
    QCOMPARE(Ler(banco.CaminhoDoLivro()), bytes);
}

void TesteFalhas::oLivroQueSomeEErro_data()
{
    QTest::addColumn<QString>("como");
    QTest::newRow("mudou de nome") << "nome";
    QTest::newRow("ficou vazio") << "vazio";
    QTest::newRow("a pasta sumiu") << "pasta";
}

/// A stick that was pulled out, a book that a synchroniser renamed: no empty one takes its place.
void TesteFalhas::oLivroQueSomeEErro()
{
    QFETCH(QString, como);
    const QString pasta = m_pasta->filePath("pendrive");
    QVERIFY(QDir().mkpath(pasta));
    const Banco banco(pasta);
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    const QByteArray livro = Ler(banco.CaminhoDoLivro());
    const QString longe = m_pasta->filePath("longe");
    if (como == "pasta")
        QVERIFY(QDir().rename(pasta, longe));
    else
        QVERIFY(QFile::rename(banco.CaminhoDoLivro(), longe));
    if (como == "vazio")
        Gravar(banco.CaminhoDoLivro(), {});

    const auto operacoes = {
        std::function<void()>([&] { banco.AbrirRecordset(SqlLista()); }),
        std::function<void()>([&] { banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Mel"), kDia)); }),
        std::function<void()>([&] { banco.Conferir({SqlExcluirReceita(1)}); }),
        std::function<void()>([&] { banco.LerUmaVez(); })};
    for (const auto &operacao : operacoes)
        QVERIFY2(ErroDe(operacao).startsWith("O livro de receitas sumiu da pasta"),
                 qPrintable(ErroDe(operacao)));
    QCOMPARE(QFileInfo(banco.CaminhoDoLivro()).size(), 0);

    // It comes back, and everything is as before.
    if (como == "pasta")
        QVERIFY(QDir().rename(longe, pasta));
    else
        Gravar(banco.CaminhoDoLivro(), livro);
    QCOMPARE(Nomes(banco), QStringList("Sal"));
}

void TesteFalhas::chamaOConversorSoParaAccess()
{
    QTemporaryDir modelo;
    const Banco pronto(modelo.path());
    pronto.ExecutarSQL(SqlInserirReceita(UmaReceita("De Access"), kDia));

    Banco banco(m_pasta->path());
    QStringList chamadas;
    banco.DefinirConversor([&](const QString &caminho) {
        chamadas += caminho;
        Gravar(caminho, Ler(pronto.CaminhoDoLivro()));
    });
    QVERIFY(Nomes(banco).isEmpty());
    QVERIFY(chamadas.isEmpty());
    Gravar(banco.CaminhoDoLivro(), kInicioAccess + QByteArray(4096, 'x'));
    QCOMPARE(Nomes(banco), QStringList("De Access"));
    QCOMPARE(Nomes(banco), QStringList("De Access"));
    QCOMPARE(chamadas, QStringList(banco.CaminhoDoLivro()));
}

void TesteFalhas::recusaAccessQueOConversorNaoConverteu()
{
    Banco banco(m_pasta->path());
    const QByteArray bytes = kInicioAccess + QByteArray(4096, 'x');
    Gravar(banco.CaminhoDoLivro(), bytes);
    banco.DefinirConversor([](const QString &) {});
    QVERIFY(!ErroDe([&] { banco.AbrirRecordset(SqlLista()); }).isEmpty());
    banco.DefinirConversor([](const QString &) { throw ErroBanco("protegido por senha"); });
    QCOMPARE(ErroDe([&] { banco.ExecutarSQL(SqlExcluirReceita(1)); }), "protegido por senha");
    QCOMPARE(Ler(banco.CaminhoDoLivro()), bytes);
}

void TesteFalhas::trazDeVoltaUmLivroEmOutroModoDeDiario()
{
    const Banco banco(m_pasta->path());
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    sqlite3 *conexao = nullptr;
    QCOMPARE(sqlite3_open(banco.CaminhoDoLivro().toUtf8().constData(), &conexao), SQLITE_OK);
    QCOMPARE(sqlite3_exec(conexao, "PRAGMA journal_mode=WAL", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(conexao);
    QCOMPARE(static_cast<int>(Ler(banco.CaminhoDoLivro())[19]), 2);
    QCOMPARE(Nomes(banco), QStringList("Sal"));
    QCOMPARE(static_cast<int>(Ler(banco.CaminhoDoLivro())[19]), 1);
    QCOMPARE(QDir(m_pasta->path()).entryList(QDir::Files), QStringList("dadosr.lst"));
}

void TesteFalhas::pastaSemEscritaEErro()
{
    QCOMPARE(::chmod(QFile::encodeName(m_pasta->path()).constData(), 0555), 0);
    QString saida = Rodar("inserir", m_pasta->path());
    QVERIFY2(saida.startsWith("Não foi possível criar o livro de receitas em " + m_pasta->path()),
             qPrintable(saida));
    QVERIFY(QDir(m_pasta->path()).isEmpty());

    QCOMPARE(::chmod(QFile::encodeName(m_pasta->path()).constData(), 0755), 0);
    const Banco banco(m_pasta->path());
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    QCOMPARE(::chmod(QFile::encodeName(banco.CaminhoDoLivro()).constData(), 0666), 0);
    QCOMPARE(::chmod(QFile::encodeName(m_pasta->path()).constData(), 0555), 0);
    saida = Rodar("inserir", m_pasta->path());
    QVERIFY2(saida.startsWith("Não é possível gravar na pasta do livro de receitas."), qPrintable(saida));
    QCOMPARE(::chmod(QFile::encodeName(m_pasta->path()).constData(), 0755), 0);
    QCOMPARE(Nomes(banco), QStringList("Sal"));
}

void TesteFalhas::livroSemEscritaPodeSerLido()
{
    const Banco banco(m_pasta->path());
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    QCOMPARE(::chmod(QFile::encodeName(m_pasta->path()).constData(), 0755), 0);
    QCOMPARE(::chmod(QFile::encodeName(banco.CaminhoDoLivro()).constData(), 0444), 0);
    const QString saida = Rodar("inserir", m_pasta->path());
    QVERIFY2(saida.startsWith("O livro de receitas não pode ser gravado."), qPrintable(saida));
    QCOMPARE(Nomes(banco), QStringList("Sal"));
}

void TesteFalhas::livroIlegivelEErro()
{
    const Banco banco(m_pasta->path());
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    QCOMPARE(::chmod(QFile::encodeName(m_pasta->path()).constData(), 0777), 0);
    QCOMPARE(::chmod(QFile::encodeName(banco.CaminhoDoLivro()).constData(), 0), 0);
    const QString saida = Rodar("inserir", m_pasta->path());
    QVERIFY2(saida.startsWith("Não foi possível abrir o livro de receitas."), qPrintable(saida));
    QVERIFY(saida.contains(banco.CaminhoDoLivro()));
    QCOMPARE(::chmod(QFile::encodeName(banco.CaminhoDoLivro()).constData(), 0644), 0);
    QCOMPARE(Nomes(banco), QStringList("Sal"));
}

void TesteFalhas::discoCheioEErroEOLivroFica()
{
    const Banco banco(m_pasta->path());
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    int falhas = 0;
    for (qint64 livres = 0;; livres += 1024) {
        QString erro;
        {
            const DiscoCheio disco(livres);
            erro = ErroDe([&] { banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Mel"), kDia)); });
        }
        if (erro.isEmpty())
            break;
        ++falhas;
        QVERIFY2(erro.startsWith("Não há espaço no disco para gravar no livro de receitas.\r\n\r\n"),
                 qPrintable(erro));
        QCOMPARE(Nomes(banco), QStringList("Sal"));
        QCOMPARE(Integridade(banco.CaminhoDoLivro()), "ok");
    }
    QVERIFY(falhas > 3);
    QCOMPARE(Nomes(banco), QStringList({"Mel", "Sal"}));
}

void TesteFalhas::discoCheioAoCriarNaoDeixaNada()
{
    QCOMPARE(::chmod(QFile::encodeName(m_pasta->path()).constData(), 0777), 0);
    const QString saida = Rodar("inserir-sem-disco", m_pasta->path());
    QVERIFY2(saida.startsWith("Não foi possível criar o livro de receitas em "), qPrintable(saida));
    QVERIFY(QDir(m_pasta->path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

void TesteFalhas::esperaPelaTrancaDeOutroPrograma()
{
    const Banco banco(m_pasta->path());
    banco.LerUmaVez();
    QProcess outro;
    outro.start(m_processo, {"trancar", m_pasta->path(), "300"});
    QVERIFY(outro.waitForReadyRead());
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    QTRY_COMPARE(outro.state(), QProcess::NotRunning);
    QCOMPARE(Nomes(banco), QStringList("Sal"));
}

void TesteFalhas::trancaQueNaoSoltaEErro()
{
    Banco banco(m_pasta->path());
    banco.LerUmaVez();
    banco.DefinirEspera(50);
    QProcess outro;
    outro.start(m_processo, {"trancar", m_pasta->path(), "60000"});
    QVERIFY(outro.waitForReadyRead());
    for (const auto &operacao : {std::function<void()>([&] { banco.AbrirRecordset(SqlLista()); }),
                                 std::function<void()>([&] { banco.ExecutarSQL(SqlExcluirReceita(1)); })}) {
        const QString erro = ErroDe(operacao);
        QVERIFY2(erro.startsWith("O livro de receitas está sendo usado por outro programa."),
                 qPrintable(erro));
    }
    outro.kill();
    QVERIFY(outro.waitForFinished());
    banco.ExecutarSQL(SqlExcluirReceita(1));
}

void TesteFalhas::desfazOQueAQuedaDeixouPelaMetade()
{
    QTemporaryDir queda;
    const Banco banco(m_pasta->path());
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    DeixarPelaMetade(banco, queda.path());
    const Banco caido(queda.path());
    QVERIFY(Ler(caido.CaminhoDoLivro()).contains("pela metade"));
    QCOMPARE(Nomes(caido), QStringList("Sal"));
    QCOMPARE(Integridade(caido.CaminhoDoLivro()), "ok");
}

void TesteFalhas::leUmaVezDeixaOLivroInteiroNumArquivo()
{
    QTemporaryDir queda;
    const Banco banco(m_pasta->path());
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    DeixarPelaMetade(banco, queda.path());
    const Banco caido(queda.path());
    caido.LerUmaVez();
    QCOMPARE(QDir(queda.path()).entryList(QDir::Files), QStringList("dadosr.lst"));
    QTemporaryDir copia;
    Gravar(copia.filePath("dadosr.lst"), Ler(caido.CaminhoDoLivro()));
    QCOMPARE(Nomes(Banco(copia.path())), QStringList("Sal"));
}

void TesteFalhas::oDiarioVelhoNaoEntraNoLivroRestaurado()
{
    QTemporaryDir queda;
    QTemporaryDir guardado;
    const Banco banco(m_pasta->path());
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    DeixarPelaMetade(banco, queda.path());
    const Banco copia(guardado.path());
    copia.ExecutarSQL(SqlInserirReceita(UmaReceita("Do backup"), kDia));
    const QByteArray restaurado = Ler(copia.CaminhoDoLivro());

    const Banco caido(queda.path());
    caido.RemoverJournal();
    Gravar(caido.CaminhoDoLivro(), restaurado);
    QCOMPARE(Nomes(caido), QStringList("Do backup"));
    QCOMPARE(Ler(caido.CaminhoDoLivro()), restaurado);
    caido.RemoverJournal(); // nothing to remove is no failure
}

void TesteFalhas::oDiarioVelhoNaoEntraNumLivroNovo()
{
    QTemporaryDir queda;
    const Banco banco(m_pasta->path());
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    DeixarPelaMetade(banco, queda.path());
    const Banco caido(queda.path());
    QVERIFY(QFile::remove(caido.CaminhoDoLivro())); // before the program starts
    QVERIFY(Nomes(caido).isEmpty());
    QCOMPARE(Integridade(caido.CaminhoDoLivro()), "ok");
}

void TesteFalhas::oDiarioVelhoNaoEntraNoLivroConvertido()
{
    QTemporaryDir queda;
    QTemporaryDir modelo;
    const Banco banco(m_pasta->path());
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    DeixarPelaMetade(banco, queda.path());
    const Banco pronto(modelo.path());
    pronto.ExecutarSQL(SqlInserirReceita(UmaReceita("De Access"), kDia));
    const QByteArray convertido = Ler(pronto.CaminhoDoLivro());

    Banco caido(queda.path());
    Gravar(caido.CaminhoDoLivro(), kInicioAccess);
    caido.DefinirConversor([&](const QString &caminho) { Gravar(caminho, convertido); });
    QCOMPARE(Nomes(caido), QStringList("De Access"));
    QCOMPARE(Ler(caido.CaminhoDoLivro()), convertido);
}

/// Neither copy ever takes what the other is just writing for a damaged book.
void TesteFalhas::duasCopiasSalvamAoMesmoTempo()
{
    const Banco banco(m_pasta->path());
    QProcess copias[2];
    for (QProcess &copia : copias)
        copia.start(m_processo, {"salvar", m_pasta->path()});
    QList<QByteArray> ditos[2];
    while (ditos[0].size() < 10 || ditos[1].size() < 10) {
        banco.AbrirRecordset(SqlLista(), {"Nome"});
        for (int i = 0; i < 2; ++i) {
            QVERIFY2(copias[i].state() == QProcess::Running || copias[i].waitForStarted(),
                     copias[i].readAllStandardOutput().constData());
            copias[i].waitForReadyRead(20);
            while (copias[i].canReadLine())
                ditos[i] += copias[i].readLine();
        }
    }
    for (QProcess &copia : copias) {
        copia.kill();
        QVERIFY(copia.waitForFinished());
    }
    for (const QList<QByteArray> &copia : ditos)
        for (const QByteArray &dito : copia)
            QVERIFY2(dito.startsWith("receita") || dito.startsWith("porcoes") || dito.startsWith("linha"),
                     dito.constData());
    QCOMPARE(Integridade(banco.CaminhoDoLivro()), "ok");
}

/// Every statement that had returned when the process died is in the book, and the book is sound.
void TesteFalhas::mortoAoSalvarNaoPerdeNada()
{
    QRandomGenerator sorte(20051121);
    int confirmados = 0;
    for (int vez = 0; vez < 40; ++vez) {
        const QTemporaryDir pasta;
        QProcess processo;
        processo.start(m_processo, {"salvar", pasta.path()});
        QVERIFY(processo.waitForReadyRead());
        QTest::qSleep(sorte.bounded(25)); // any moment of a save
        processo.kill();
        QVERIFY(processo.waitForFinished());
        QCOMPARE(processo.exitStatus(), QProcess::CrashExit);

        const Banco banco(pasta.path());
        QHash<QString, QString> porcoes;
        for (RecordSet rs = banco.AbrirRecordset(SqlLista(), {"Nome", "Porcoes"}); !rs.Eof(); rs.MoveNext())
            porcoes.insert(rs.Texto(0), rs.Texto(1));
        QSet<QString> linhas;
        for (RecordSet rs = banco.AbrirRecordset(SqlNomesDeIngredientes()); !rs.Eof(); rs.MoveNext())
            linhas.insert(rs.Texto(0));
        QCOMPARE(Integridade(banco.CaminhoDoLivro()), "ok");

        // Only whole lines: the last one may have been cut by the kill.
        QList<QByteArray> ditos = processo.readAllStandardOutput().split('\n');
        ditos.removeLast();
        for (const QByteArray &dito : ditos) {
            ++confirmados;
            const QString valor = QString::fromLatin1(dito.mid(dito.indexOf(' ') + 1));
            if (dito.startsWith("receita"))
                QVERIFY2(porcoes.contains("Receita " + valor), dito.constData());
            else if (dito.startsWith("porcoes"))
                QCOMPARE(porcoes.value("Receita " + valor), valor);
            else
                QVERIFY2(linhas.contains(valor), dito.constData());
        }
        banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Depois"), kDia));
    }
    QVERIFY(confirmados >= 40);
}

void TesteFalhas::mortoAoCriarDeixaUmLivroOuNenhum()
{
    QRandomGenerator sorte(1);
    int livros = 0;
    for (int vez = 0; vez < 20; ++vez) {
        const QTemporaryDir pasta;
        QProcess processo;
        processo.start(m_processo, {"criar", pasta.path()});
        QVERIFY(processo.waitForReadyRead());
        QTest::qSleep(sorte.bounded(12));
        processo.kill();
        QVERIFY(processo.waitForFinished());
        for (const QString &nome : QDir(pasta.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            const Banco banco(pasta.filePath(nome));
            if (QFile::exists(banco.CaminhoDoLivro())) {
                ++livros;
                QVERIFY(QFileInfo(banco.CaminhoDoLivro()).size() > 0);
                QCOMPARE(Integridade(banco.CaminhoDoLivro()), "ok");
            }
            banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
            QCOMPARE(Nomes(banco), QStringList("Sal"));
        }
    }
    QVERIFY(livros > 0);
}

QTEST_GUILESS_MAIN(TesteFalhas)
#include "teste_falhas.moc"
