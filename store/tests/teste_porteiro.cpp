#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"
#include "store/Porteiro.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

#include <sqlite3.h>

using namespace Comandos;

namespace
{
const QDate kDia(2005, 11, 21);

Receita UmaReceita(const QString &nome)
{
    Receita r;
    r.Nome = nome;
    r.Modo = "Misture.";
    return r;
}

QString Recusa(const QString &sql)
{
    return Porteiro::Recusa(sql.toUtf8().toStdString());
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

void OutroPrograma(const QString &caminho, const QByteArray &sql)
{
    sqlite3 *conexao = nullptr;
    if (sqlite3_open(caminho.toUtf8().constData(), &conexao) != SQLITE_OK ||
        sqlite3_create_collation(conexao, "PORTUGUES", SQLITE_UTF8, nullptr,
                                 [](void *, int a, const void *, int b, const void *) { return a - b; }) !=
            SQLITE_OK ||
        sqlite3_exec(conexao, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        qFatal("%s", sqlite3_errmsg(conexao));
    sqlite3_close(conexao);
}
} // namespace

class TestePorteiro : public QObject
{
    Q_OBJECT
private slots:
    void deixaPassarOsComandosDoPrograma()
    {
        Receita r = UmaReceita("Pão d'água -- select | (from) \"x\" [y");
        r.Modo = QString("union select; ' -- /* ").repeated(20);
        for (const QString &sql :
             {SqlInserirReceita(r, kDia), SqlAlterarReceita(r, 1, Figura::Mantida), SqlAlterarReceita(r, 1, Figura::Nova),
              SqlMaiorNumero(), SqlGravarFigura(1), SqlExcluirIngredientes(1), SqlExcluirReceita(1),
              SqlInserirIngrediente(1, "sal d'oeste", "1/2", "kg (bem)"), SqlReceita(1), SqlReceitaFigura(1), SqlFigura(1),
              SqlIngredientes(1), SqlLista(), SqlTipos(), SqlUnidades(), SqlNomesDeIngredientes(), SqlTiposPesquisa(),
              SqlOrigensPesquisa(), SqlFigurasDoBackup(), SqlReceitasDoPacote({1, 2, 3}), SqlReceitaDeNome("select"),
              SqlPesquisa({.Nome = "bolo", .Tipo = "Doces", .Origem = "x", .Ingrediente = "union select", .Calorias = "8",
                           .Preparo = "1 h", .ComFigura = true}),
              SqlLista() + " ; \r\n", QString("SELECT nome FROM receitas")})
            QCOMPARE(Recusa(sql), "");
    }

    void recusaOQueNaoTemAForma_data()
    {
        QTest::addColumn<QString>("sql");
        const auto nome = [](const char *valor) { return SqlReceitaDeNome(QString(valor)).toLower(); };
        QTest::newRow("junção") << nome("' or 1=1) , (Select * from Receitas");
        QTest::newRow("união") << nome("x' union select * from Receitas where '1'='1");
        QTest::newRow("subconsulta") << nome("' or exists(select 1 from Receitas) or '1'='");
        QTest::newRow("tabela com in") << nome("' or 1 in Receitas or '1'='");
        QTest::newRow("texto que cresce") << nome("' or Modo||Modo||Modo like '");
        QTest::newRow("duas tabelas") << "Select * from Receitas, Ingredientes";
        QTest::newRow("junção por extenso") << "Select * from Receitas join Ingredientes";
        QTest::newRow("apelido") << "Select * from Receitas r, Receitas s";
        QTest::newRow("outra tabela") << "Select * from sqlite_master";
        QTest::newRow("entre aspas") << "Select * from \"sqlite_master\"";
        QTest::newRow("função como tabela") << "Select * from generate_series(1,9)";
        QTest::newRow("sem tabela") << "Select 1";
        QTest::newRow("pesquisa com outra pergunta")
            << SqlPesquisa({.Ingrediente = "x' and 1 in (select 1 from Receitas) and '1'='1"});
        QTest::newRow("pesquisa que fecha o parêntese")
            << SqlPesquisa({.Ingrediente = "x') or id_receitas in (select max(id_receitas) from Receitas where '1'='1"});
        QTest::newRow("valores como consulta") << "Values (1)";
        QTest::newRow("com nome") << "With x as (Select 1) Select * from Receitas";
        const auto linha = [](const char *quantidade) { return SqlInserirIngrediente(2, "sal", quantidade, ""); };
        QTest::newRow("segunda linha") << linha("1',NULL),(1,'VENENO','1");
        QTest::newRow("conflito") << linha("1',NULL) on conflict do nothing; --");
        QTest::newRow("conflito que altera") << linha("1',NULL) on conflict (id_ingredientes) do update set x=('1'");
        QTest::newRow("consulta na linha") << linha("1',(select 1 from Receitas)) --");
        QTest::newRow("devolve") << linha("1',NULL) returning ('1'");
        QTest::newRow("linha de consulta") << "Insert into Receitas(Nome) select Nome from Receitas";
        QTest::newRow("alteração com consulta") << "Update Receitas set Nome = (select 1 from Receitas)";
        QTest::newRow("alteração com fonte") << "Update Receitas set Nome = 'x' from Ingredientes where 1=1";
        QTest::newRow("duas condições") << "Update Receitas set Porcoes = 1 where 1=1 where id_receitas = 2";
        QTest::newRow("exclusão com consulta") << "Delete from Receitas where id_receitas in (select 1 from Receitas)";
        QTest::newRow("outro comando") << "Drop table Receitas";
        QTest::newRow("comentário") << "Select * from Receitas -- x";
        QTest::newRow("vazio") << " ; ";
    }
    void recusaOQueNaoTemAForma()
    {
        QFETCH(QString, sql);
        QVERIFY2(!Recusa(sql).isEmpty(), qPrintable(sql));
    }

    void umValorNaoChegaAOutraReceita()
    {
        QTemporaryDir pasta;
        const Banco banco(pasta.path());
        for (const char *nome : {"Sal", "Mel"})
            banco.ExecutarSQL(SqlInserirReceita(UmaReceita(nome), kDia));
        QVERIFY(!ErroDe([&] {
                     banco.ExecutarSQL(SqlInserirIngrediente(2, "sal", "1',NULL),(1,'VENENO','1", ""));
                 }).isEmpty());
        QCOMPARE(banco.AbrirRecordset(SqlIngredientes(1)).RecordCount(), 0);
        QVERIFY(!ErroDe([&] {
                     banco.AbrirRecordset(SqlReceitaDeNome("' or exists(select 1 from receitas,receitas) or '"));
                 }).isEmpty());
        // The functions that could make a text without end grow are the book's own, not a statement's.
        for (const char *funcao : {"replace(Nome,'a','aa')", "typeof(Nome)", "trim(Nome)", "printf('%9d',1)"})
            QVERIFY(!ErroDe([&] {
                         banco.AbrirRecordset(QString("Select %1 from Receitas").arg(funcao));
                     }).isEmpty());
        QVERIFY(!ErroDe([&] { banco.AbrirRecordset(SqlPesquisa({.Nome = QString(5000, 'x')})); }).isEmpty());
    }

    /// What no shape forbids still comes to an end: a list of conditions as long as a package's name may be.
    void oQueDemoraDemaisEInterrompido()
    {
        QTemporaryDir pasta;
        const Banco banco(pasta.path());
        for (int i = 0; i < 40; ++i)
            banco.ExecutarSQL(SqlInserirReceita(UmaReceita(QString::number(i)), kDia));
        const QString longo = "' or 1 in (" + QString("porcoes=7 and calorias=id_receitas,").repeated(250'000) + "2) or '";
        const QString erro = ErroDe([&] {
            banco.AbrirRecordset("Select * from Receitas Where ucase(Nome) = '" + longo + "'");
        });
        QVERIFY2(erro.startsWith("A operação demoraria demais"), qPrintable(erro.left(200)));
        QCOMPARE(banco.AbrirRecordset(SqlLista()).RecordCount(), 40);
    }

    void recusaOLivroMexido_data()
    {
        QTest::addColumn<QByteArray>("sql");
        QTest::addColumn<QString>("estranho");
        QTest::newRow("gatilho") << QByteArray("CREATE TRIGGER ladrao AFTER INSERT ON Receitas BEGIN DELETE FROM "
                                               "Receitas; END")
                                 << "ladrao";
        QTest::newRow("visão") << QByteArray("CREATE VIEW v AS SELECT 1") << "v";
        QTest::newRow("tabela") << QByteArray("CREATE TABLE x(a)") << "x";
        QTest::newRow("índice") << QByteArray("CREATE INDEX i ON Receitas(Nome)") << "i";
        QTest::newRow("visão no lugar da tabela")
            << QByteArray("DROP TABLE Ingredientes; CREATE VIEW Ingredientes AS WITH RECURSIVE n(x) AS (SELECT 1 UNION "
                          "ALL SELECT x+1 FROM n) SELECT x AS Ingrediente FROM n")
            << "Ingredientes";
        QTest::newRow("outra coluna") << QByteArray("ALTER TABLE Receitas ADD COLUMN y") << "Receitas";
        QTest::newRow("gatilho trocado")
            << QByteArray("DROP TRIGGER NumerosAoInserir; CREATE TRIGGER NumerosAoInserir AFTER INSERT ON Receitas "
                          "BEGIN DELETE FROM Ingredientes; END")
            << "NumerosAoInserir";
    }
    void recusaOLivroMexido()
    {
        QFETCH(QByteArray, sql);
        QFETCH(QString, estranho);
        for (const bool wal : {false, true}) {
            QTemporaryDir pasta;
            const QString caminho = Banco(pasta.path()).CaminhoDoLivro();
            Banco(pasta.path()).ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
            OutroPrograma(caminho, sql);
            if (wal)
                OutroPrograma(caminho, "PRAGMA journal_mode=WAL");
            const QByteArray antes = Ler(caminho);
            const Banco banco(pasta.path());
            for (const auto &operacao :
                 {std::function<void()>([&] { banco.AbrirRecordset(SqlLista()); }),
                  std::function<void()>([&] { banco.ExecutarSQL(SqlExcluirReceita(1)); }),
                  std::function<void()>([&] { banco.LerUmaVez(); })}) {
                const QString erro = ErroDe(operacao);
                QVERIFY2(erro.contains("não é do Cozinhario 2005 (\"" + estranho + "\")"), qPrintable(erro));
            }
            QCOMPARE(Ler(caminho), antes);
            QCOMPARE(QDir(pasta.path()).entryList(QDir::Files), QStringList("dadosr.lst"));
        }
    }

    void oBancoDeOutroProgramaFicaComoEsta_data()
    {
        QTest::addColumn<QByteArray>("sql");
        QTest::newRow("comum") << QByteArray("CREATE TABLE Discos(Nome); INSERT INTO Discos VALUES ('a')");
        QTest::newRow("diário à parte")
            << QByteArray("PRAGMA journal_mode=WAL; CREATE TABLE Discos(Nome); INSERT INTO Discos VALUES ('a')");
        QTest::newRow("com número de versão") << QByteArray("CREATE TABLE Discos(Nome); PRAGMA user_version=77");
        QTest::newRow("só uma das tabelas") << QByteArray("CREATE TABLE Receitas(Nome)");
    }
    void oBancoDeOutroProgramaFicaComoEsta()
    {
        QFETCH(QByteArray, sql);
        QTemporaryDir pasta;
        const Banco banco(pasta.path());
        OutroPrograma(banco.CaminhoDoLivro(), sql);
        const QByteArray antes = Ler(banco.CaminhoDoLivro());
        const QString erro = ErroDe([&] { banco.AbrirRecordset(SqlLista()); });
        QVERIFY2(erro.startsWith("O arquivo dadosr.lst não é um livro de receitas"), qPrintable(erro));
        QCOMPARE(Ler(banco.CaminhoDoLivro()), antes);
        QCOMPARE(QDir(pasta.path()).entryList(QDir::Files), QStringList("dadosr.lst"));
    }

    void oLivroMexidoComOProgramaAbertoERecusado()
    {
        QTemporaryDir pasta;
        const Banco banco(pasta.path());
        banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
        OutroPrograma(banco.CaminhoDoLivro(), "CREATE TABLE x(a)");
        QVERIFY(!ErroDe([&] { banco.AbrirRecordset(SqlLista()); }).isEmpty());
        OutroPrograma(banco.CaminhoDoLivro(), "DROP TABLE x");
        QCOMPARE(banco.AbrirRecordset(SqlLista()).RecordCount(), 1);
        // What the engine's own tools leave behind is no harm.
        OutroPrograma(banco.CaminhoDoLivro(), "ANALYZE");
        QCOMPARE(banco.AbrirRecordset(SqlLista()).RecordCount(), 1);
    }
};

QTEST_GUILESS_MAIN(TestePorteiro)
#include "teste_porteiro.moc"
