#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"
#include "store/Esquema.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <memory>

#include <sqlite3.h>

using namespace Comandos;

namespace
{
/// A tool of the same engine that knows nothing of this program, its order of texts included.
class OutroPrograma
{
public:
    explicit OutroPrograma(const QString &caminho)
    {
        if (sqlite3_open(caminho.toUtf8().constData(), &m_conexao) != SQLITE_OK)
            qFatal("%s", sqlite3_errmsg(m_conexao));
    }
    ~OutroPrograma() { sqlite3_close(m_conexao); }
    OutroPrograma(const OutroPrograma &) = delete;
    OutroPrograma &operator=(const OutroPrograma &) = delete;

    QStringList Executar(const QByteArray &sql)
    {
        QStringList linhas;
        const auto guardar = [](void *onde, int campos, char **valores, char **) {
            QStringList linha;
            for (int i = 0; i < campos; ++i)
                linha += valores[i] ? QString::fromUtf8(valores[i]) : QString("NULL");
            static_cast<QStringList *>(onde)->append(linha.join('|'));
            return 0;
        };
        if (sqlite3_exec(m_conexao, sql.constData(), guardar, &linhas, nullptr) != SQLITE_OK)
            linhas = {QString::fromUtf8(sqlite3_errmsg(m_conexao))};
        return linhas;
    }

private:
    sqlite3 *m_conexao = nullptr;
};

QByteArray Bytes(const QString &caminho)
{
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray("(ausente)");
}

QStringList Coluna(const RecordSet &rs, const char *campo)
{
    QStringList valores;
    for (int linha = 0; linha < rs.RecordCount(); ++linha)
        valores += rs.TextoEm(linha, rs.Campo(campo));
    return valores;
}

constexpr auto kDoEsquema = "SELECT type,name,tbl_name,sql FROM sqlite_master ORDER BY type,name";
constexpr auto kVersaoDoLivro = "PRAGMA user_version";
} // namespace

class TesteEsquema : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void oLivroNovoTemAVersaoDeHoje();
    void subirDaOMesmoEsquemaDoLivroNovo_data();
    void subirDaOMesmoEsquemaDoLivroNovo();
    void subirNaoMudaNadaDoQueOLivroGuarda_data() { subirDaOMesmoEsquemaDoLivroNovo_data(); }
    void subirNaoMudaNadaDoQueOLivroGuarda();
    void oLivroPequenoSobeAoSerEncontrado();
    void oLivroGrandeEsperaUmMomento();
    void quemParaNoMeioDeixaUmLivroQueServe();
    void oLivroQueNaoPodeSerGravadoELidoComoEsta();
    void aguentaSerMortoNoMeio();
    void outrosProgramasGravamNoLivro();
    void recusaUmLivroDeVersaoMaisNova();

private:
    QString Caminho() const { return m_pasta->filePath("dadosr.lst"); }
    /// A book of a version, filled by another tool.
    void Fazer(int versao, int receitas = 3);

    std::unique_ptr<QTemporaryDir> m_pasta;
};

void TesteEsquema::init()
{
    m_pasta = std::make_unique<QTemporaryDir>();
}

void TesteEsquema::Fazer(int versao, int receitas)
{
    {
        sqlite3 *conexao = nullptr;
        sqlite3_open(Caminho().toUtf8().constData(), &conexao);
        // Making a table needs the collation by name, filling it does not.
        sqlite3_create_collation(conexao, "PORTUGUES", SQLITE_UTF8, nullptr,
                                 [](void *, int a, const void *, int b, const void *) { return a - b; });
        QCOMPARE(sqlite3_exec(conexao, Esquema::Livro(versao).constData(), nullptr, nullptr, nullptr),
                 SQLITE_OK);
        sqlite3_close(conexao);
    }
    OutroPrograma outro(Caminho());
    outro.Executar("PRAGMA synchronous=OFF");
    outro.Executar("BEGIN");
    for (int i = 1; i <= receitas; ++i) {
        const QByteArray n = QByteArray::number(i);
        outro.Executar(
            "INSERT INTO Receitas(Nome,Classificacao,Origem,Preparo,Calorias,Modo) VALUES('Pão nº " + n +
            "','Pães','Vó " + n + "','1 hora'," + n + ",'" + QByteArray(600, 'x') + "')");
        outro.Executar("INSERT INTO Ingredientes(id_receitas,Ingrediente,Unidade) VALUES(" + n +
                       ",'fermento','g'),(" + n + ",'água " + n + "',NULL)");
    }
    outro.Executar("COMMIT");
    QCOMPARE(outro.Executar(kVersaoDoLivro), QStringList(QString::number(versao)));
}

void TesteEsquema::oLivroNovoTemAVersaoDeHoje()
{
    Banco(m_pasta->path()).LerUmaVez();
    QCOMPARE(OutroPrograma(Caminho()).Executar(kVersaoDoLivro),
             QStringList(QString::number(Esquema::kVersao)));
}

void TesteEsquema::subirDaOMesmoEsquemaDoLivroNovo_data()
{
    QTest::addColumn<int>("versao");
    for (int versao = 0; versao <= Esquema::kVersao; ++versao)
        QTest::addRow("%d", versao) << versao;
}

void TesteEsquema::subirDaOMesmoEsquemaDoLivroNovo()
{
    QFETCH(int, versao);
    Fazer(versao);
    const Banco banco(m_pasta->path());
    banco.Evoluir({});
    QVERIFY(!banco.PrecisaEvoluir());
    const QTemporaryDir outra;
    Banco(outra.path()).LerUmaVez();
    OutroPrograma subido(Caminho());
    QCOMPARE(subido.Executar(kDoEsquema), OutroPrograma(outra.filePath("dadosr.lst")).Executar(kDoEsquema));
    QCOMPARE(subido.Executar(kVersaoDoLivro), QStringList(QString::number(Esquema::kVersao)));
}

void TesteEsquema::subirNaoMudaNadaDoQueOLivroGuarda()
{
    QFETCH(int, versao);
    Fazer(versao, 200);
    const QByteArrayList tudo{"SELECT * FROM Receitas ORDER BY id_receitas",
                              "SELECT * FROM Ingredientes ORDER BY id_ingredientes",
                              "SELECT * FROM sqlite_sequence ORDER BY name"};
    QList<QStringList> antes;
    for (const QByteArray &sql : tudo)
        antes += OutroPrograma(Caminho()).Executar(sql);
    QCOMPARE(antes[0].size(), 200);
    Banco(m_pasta->path()).Evoluir({});
    for (qsizetype i = 0; i < tudo.size(); ++i)
        QCOMPARE(OutroPrograma(Caminho()).Executar(tudo[i]), antes[i]);
}

void TesteEsquema::oLivroPequenoSobeAoSerEncontrado()
{
    Fazer(0);
    const Banco banco(m_pasta->path());
    QVERIFY(banco.PrecisaEvoluir());
    QCOMPARE(Coluna(banco.AbrirRecordset(SqlLista()), "Nome"),
             QStringList({"Pão nº 1", "Pão nº 2", "Pão nº 3"}));
    QVERIFY(!banco.PrecisaEvoluir());
}

void TesteEsquema::oLivroGrandeEsperaUmMomento()
{
    Fazer(0, 4000);
    QVERIFY(QFile(Caminho()).size() > 2 * 1024 * 1024);
    const Banco banco(m_pasta->path());
    QCOMPARE(banco.AbrirRecordset(SqlLista()).RecordCount(), 4000);
    QVERIFY(banco.PrecisaEvoluir());

    int vezes = 0;
    int ultimo = 0;
    bool recuou = false;
    banco.Evoluir([&](int feito, int total) {
        ++vezes;
        recuou = recuou || feito < ultimo || feito > total;
        ultimo = feito;
        return true;
    });
    QVERIFY(vezes > 0);
    QVERIFY(!recuou);
    QVERIFY(!banco.PrecisaEvoluir());
    QCOMPARE(banco.AbrirRecordset(SqlLista()).RecordCount(), 4000);
}

void TesteEsquema::quemParaNoMeioDeixaUmLivroQueServe()
{
    Fazer(0, 4000);
    {
        const Banco banco(m_pasta->path());
        QVERIFY_EXCEPTION_THROWN(banco.Evoluir([](int feito, int total) { return feito < total / 2; }),
                                 ErroBanco);
        QCOMPARE(banco.AbrirRecordset(SqlLista()).RecordCount(), 4000);
        banco.ExecutarSQL(SqlExcluirReceita(1));
        QVERIFY(!banco.PrecisaEvoluir()); // not again and again
    }
    QCOMPARE(OutroPrograma(Caminho()).Executar(kVersaoDoLivro), QStringList("0"));
    const Banco banco(m_pasta->path());
    banco.Evoluir({});
    QCOMPARE(banco.AbrirRecordset(SqlLista()).RecordCount(), 3999);
    QCOMPARE(OutroPrograma(Caminho()).Executar("PRAGMA quick_check"), QStringList("ok"));
}

void TesteEsquema::oLivroQueNaoPodeSerGravadoELidoComoEsta()
{
    Fazer(0);
    sqlite3 *outra = nullptr;
    QCOMPARE(sqlite3_open(Caminho().toUtf8().constData(), &outra), SQLITE_OK);
    // Another copy that is writing lets others read, and makes them wait with what they want to write.
    QCOMPARE(sqlite3_exec(outra, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    Banco banco(m_pasta->path());
    banco.DefinirEspera(20);
    QCOMPARE(banco.AbrirRecordset(SqlLista()).RecordCount(), 3);
    QCOMPARE(Coluna(banco.AbrirRecordset(SqlNomesDeIngredientes()), "Ingrediente"),
             QStringList({"água 1", "água 2", "água 3", "fermento"}));
    sqlite3_close(outra);
    QCOMPARE(OutroPrograma(Caminho()).Executar(kVersaoDoLivro), QStringList("0"));
}

void TesteEsquema::aguentaSerMortoNoMeio()
{
    Fazer(0, 3000);
    const QByteArray original = Bytes(Caminho());
    bool cortado = false;
    bool inteiro = false;
    for (int espera = 0; espera < 400 && !(cortado && inteiro); espera += 2 + espera / 3) {
        for (const char *cauda : {"-journal", "-wal", "-shm"})
            QFile::remove(Caminho() + cauda);
        QFile arquivo(Caminho());
        QVERIFY(arquivo.open(QIODevice::WriteOnly) && arquivo.write(original) == original.size());
        arquivo.close();

        QProcess processo;
        processo.start(PROCESSO_STORE, {"evoluir", m_pasta->path()});
        QVERIFY(processo.waitForReadyRead());
        if (!processo.waitForFinished(espera))
            processo.kill();
        processo.waitForFinished();

        const Banco banco(m_pasta->path());
        (banco.PrecisaEvoluir() ? cortado : inteiro) = true;
        QCOMPARE(banco.AbrirRecordset(SqlLista()).RecordCount(), 3000);
        banco.Evoluir({});
        QCOMPARE(OutroPrograma(Caminho()).Executar("PRAGMA quick_check"), QStringList("ok"));
        QCOMPARE(
            OutroPrograma(Caminho()).Executar("SELECT count(*) FROM sqlite_master WHERE name LIKE '%Por%'"),
            QStringList("5"));
    }
    QVERIFY(cortado);
}

void TesteEsquema::outrosProgramasGravamNoLivro()
{
    const Banco banco(m_pasta->path());
    banco.LerUmaVez();
    const auto gravar = [this](const QByteArray &nome, const QByteArray &ingrediente) {
        OutroPrograma outro(Caminho());
        QCOMPARE(outro.Executar("INSERT INTO Receitas(Nome,Classificacao) VALUES('" + nome + "','Doces')"),
                 QStringList());
        QCOMPARE(outro.Executar(
                     "INSERT INTO Ingredientes(id_receitas,Ingrediente,Unidade) SELECT max(id_receitas),'" +
                     ingrediente + "','g' FROM Receitas"),
                 QStringList());
    };
    gravar("Pão d''água", "Água");
    gravar("zabaione", "água");
    gravar("Pão da casa", "açúcar");
    gravar("Éclair", "zimbro");
    QCOMPARE(OutroPrograma(Caminho()).Executar("UPDATE Receitas SET Nome='Zuccotto' WHERE Nome LIKE 'zab%'"),
             QStringList());
    QCOMPARE(Coluna(banco.AbrirRecordset(SqlLista()), "Nome"),
             QStringList({"Éclair", "Pão da casa", "Pão d'água", "Zuccotto"}));
    QCOMPARE(Coluna(banco.AbrirRecordset(SqlNomesDeIngredientes()), "Ingrediente"),
             QStringList({"açúcar", "Água", "zimbro"}));
    QCOMPARE(OutroPrograma(Caminho()).Executar("PRAGMA integrity_check"), QStringList("ok"));
}

void TesteEsquema::recusaUmLivroDeVersaoMaisNova()
{
    Fazer(0);
    OutroPrograma(Caminho()).Executar("PRAGMA user_version=" + QByteArray::number(Esquema::kVersao + 1));
    const QByteArray antes = Bytes(Caminho());
    const Banco banco(m_pasta->path());
    QVERIFY(!banco.PrecisaEvoluir());
    const std::function<void()> operacoes[] = {
        [&banco] { banco.AbrirRecordset(SqlLista()); }, [&banco] { banco.ExecutarSQL(SqlExcluirReceita(1)); },
        [&banco] { banco.LerUmaVez(); }, [&banco] { banco.Evoluir({}); }};
    for (const auto &operacao : operacoes) {
        QString erro;
        try {
            operacao();
        } catch (const ErroBanco &e) {
            erro = e.Mensagem();
        }
        QVERIFY2(erro.contains("versão mais nova do Cozinhario 2005"), qPrintable(erro));
    }
    QCOMPARE(Bytes(Caminho()), antes);
}

QTEST_GUILESS_MAIN(TesteEsquema)
#include "teste_esquema.moc"
