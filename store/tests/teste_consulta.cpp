#include "store/Consulta.h"

#include "base/Ordem.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"
#include "store/OrdemDeChegada.h"
#include "store/Plano.h"

#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <memory>

#include <sqlite3.h>

using namespace Comandos;

namespace
{
const QStringList kColunas{"id_receitas", "Nome"};

QStringList Coluna(const RecordSet &rs, int campo)
{
    QStringList valores;
    for (int linha = 0; linha < rs.RecordCount(); ++linha)
        valores += rs.NuloEm(linha, campo) ? QString("NULL") : rs.TextoEm(linha, campo);
    return valores;
}

/// Names and words in which accents, letter cases and the nearly ignored signs meet.
QString Sortear(QRandomGenerator &sorte)
{
    static const QStringList pecas{"pão",  "Pao",  "PÃO",   "-de-",  " d'", "água", "Água",
                                   "bolo", "Bólo", " ",     "crème", "ñ",   "(1)",  "Ж",
                                   "ж",    "2",    "doce-", "-",     "zé",  "É"};
    QString texto;
    for (int n = sorte.bounded(1, 5); n > 0; --n)
        texto += pecas[sorte.bounded(pecas.size())];
    return texto;
}

QString Literal(const QString &texto)
{
    return "'" + QString(texto).replace("'", "''") + "'";
}
} // namespace

class TesteConsulta : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void poeEmOrdemOQueChegaQuaseEmOrdem_data();
    void poeEmOrdemOQueChegaQuaseEmOrdem();
    void aListaVemNaOrdemDoLivro();
    void asListasDeEscolhaSaoAsDoMotor_data();
    void asListasDeEscolhaSaoAsDoMotor();
    void oIngredienteEAchadoEmQualquerCaixa();
    void semOsIndicesARespostaEAMesma();
    void oComandoFicaComoFoiEscrito();

    void vemAosPoucos();
    void quemGravaEsperaQueALeituraTermine();
    void guardaOQueLeuEnquantoNadaMuda();
    void duasCopiasSeVeem();
    void outroArquivoNoLugarNaoEnganaAMemoria();
    void umLivroSendoGravadoNaoEDaMemoria();

    void aRemessaGravaCadaComandoPorSi();
    void aRemessaSabeOsNomesQueJaExistem();
    void aRemessaMortaNoMeioSeDesfazNaProximaAbertura();
    void aRemessaDeixaUmArquivoSo();

private:
    void Encher(int receitas);
    QString Caminho() const { return m_pasta->filePath("dadosr.lst"); }
    void Fora(const QString &sql) const;

    std::unique_ptr<QTemporaryDir> m_pasta;
    std::unique_ptr<Banco> m_banco;
};

void TesteConsulta::init()
{
    m_pasta = std::make_unique<QTemporaryDir>();
    m_banco = std::make_unique<Banco>(m_pasta->path());
    m_banco->LerUmaVez();
}

/// Runs statements as another tool of the same engine would.
void TesteConsulta::Fora(const QString &sql) const
{
    sqlite3 *conexao = nullptr;
    sqlite3_open(Caminho().toUtf8().constData(), &conexao);
    char *erro = nullptr;
    if (sqlite3_exec(conexao, sql.toUtf8().constData(), nullptr, nullptr, &erro) != SQLITE_OK)
        qFatal("%s", erro);
    sqlite3_close(conexao);
}

void TesteConsulta::Encher(int receitas)
{
    QRandomGenerator sorte(2005);
    QString sql = "BEGIN;";
    for (int i = 1; i <= receitas; ++i) {
        sql += QString("INSERT INTO Receitas(Nome,Classificacao,Origem) VALUES(%1,%2,%3);")
                   .arg(i % 97 == 0 ? QString("NULL") : Literal(Sortear(sorte)),
                        i % 5 == 0 ? QString("NULL") : Literal(Sortear(sorte).left(4)),
                        i % 2 == 0 ? QString("NULL") : Literal("Vó"));
        for (int k = 0; k < 3; ++k)
            sql += QString("INSERT INTO Ingredientes(id_receitas,Ingrediente,Unidade) VALUES(%1,%2,%3);")
                       .arg(i)
                       .arg(k == 0              ? Literal("sal")
                            : (i + k) % 50 == 0 ? QString("NULL")
                                                : Literal(Sortear(sorte)),
                            k == 1 ? QString("NULL") : Literal(k == 2 ? "xícaras" : "XÍCARAS"));
    }
    Fora(sql + "COMMIT;");
}

void TesteConsulta::poeEmOrdemOQueChegaQuaseEmOrdem_data()
{
    QTest::addColumn<bool>("unicas");
    QTest::newRow("todas") << false;
    QTest::newRow("únicas") << true;
}

void TesteConsulta::poeEmOrdemOQueChegaQuaseEmOrdem()
{
    QFETCH(bool, unicas);
    QRandomGenerator sorte(unicas ? 8 : 7);
    for (int vez = 0; vez < 300; ++vez) {
        std::vector<std::string> textos;
        for (int n = sorte.bounded(40); n > 0; --n)
            textos.push_back(Sortear(sorte).toStdString());
        if (vez % 3 == 0) // nearly in order, as the engine's own collation gives them
            std::sort(textos.begin(), textos.end(), [](const std::string &a, const std::string &b) {
                return sqlite3_stricmp(a.c_str(), b.c_str()) < 0;
            });
        const int nulos = sorte.bounded(2);
        textos.insert(textos.begin(), static_cast<std::size_t>(nulos), std::string());

        OrdemDeChegada ordem([&textos](quint32 linha) { return std::string_view(textos[linha]); });
        std::vector<quint32> esperadas(textos.size());
        for (std::size_t i = 0; i < textos.size(); ++i) {
            esperadas[i] = static_cast<quint32>(i);
            ordem.Chegou(i < static_cast<std::size_t>(nulos));
        }
        std::stable_sort(esperadas.begin() + nulos, esperadas.end(), [&textos](quint32 a, quint32 b) {
            return Ordem::Comparar(textos[a], textos[b]) < 0;
        });
        if (unicas)
            esperadas.erase(std::unique(esperadas.begin() + nulos, esperadas.end(),
                                        [&textos](quint32 a, quint32 b) {
                                            return Ordem::Comparar(textos[a], textos[b]) == 0;
                                        }),
                            esperadas.end());
        if (unicas || ordem.Desviadas() > 0)
            QVERIFY(ordem.Terminar(unicas) == esperadas);
    }
}

void TesteConsulta::aListaVemNaOrdemDoLivro()
{
    Encher(700);
    QCOMPARE(PlanoDe(SqlLista(), kColunas, 1).tipo, Plano::Tipo::EmOrdem);
    const RecordSet pelaOrdem = m_banco->AbrirRecordset(SqlLista(), kColunas);
    // All columns: no index gives them, and the engine sorts by itself.
    const RecordSet peloMotor = m_banco->AbrirRecordset(SqlLista());
    QCOMPARE(pelaOrdem.RecordCount(), 700);
    QCOMPARE(Coluna(pelaOrdem, 1), Coluna(peloMotor, peloMotor.Campo("Nome")));
    QCOMPARE(Coluna(pelaOrdem, 0), Coluna(peloMotor, peloMotor.Campo("id_receitas")));
}

void TesteConsulta::asListasDeEscolhaSaoAsDoMotor_data()
{
    QTest::addColumn<QString>("sql");
    QTest::newRow("tipos") << SqlTipos();
    QTest::newRow("tipos da pesquisa") << SqlTiposPesquisa();
    QTest::newRow("origens") << SqlOrigensPesquisa();
    QTest::newRow("unidades") << SqlUnidades();
    QTest::newRow("ingredientes") << SqlNomesDeIngredientes();
}

void TesteConsulta::asListasDeEscolhaSaoAsDoMotor()
{
    QFETCH(QString, sql);
    Encher(600);
    QCOMPARE(PlanoDe(sql, {}, 1).tipo, Plano::Tipo::Distintos);
    const auto semCaixa = [](QStringList valores) {
        for (QString &valor : valores)
            valor = valor == "Ж" || valor == "ж"
                        ? valor
                        : valor.toLower(); // which of the cases is the engine's choice
        return valores;
    };
    QString comOutroTexto = sql; // the engine does not mind, the plans do
    comOutroTexto.replace("Select DISTINCT", "SELECT DISTINCT");
    const QStringList doMotor = Coluna(m_banco->AbrirRecordset(comOutroTexto), 0);
    const QStringList doPlano = Coluna(m_banco->AbrirRecordset(sql), 0);
    QVERIFY(doMotor.size() >= 1);
    QCOMPARE(doPlano.size(), doMotor.size());
    QCOMPARE(semCaixa(doPlano), semCaixa(doMotor));
    QCOMPARE(m_banco->AbrirRecordset(sql).FieldNames(), m_banco->AbrirRecordset(comOutroTexto).FieldNames());
}

void TesteConsulta::oIngredienteEAchadoEmQualquerCaixa()
{
    Fora("INSERT INTO Receitas(Nome) VALUES('A'),('B'),('C'),('D');"
         "INSERT INTO Ingredientes(id_receitas,Ingrediente) VALUES"
         "(1,'PÃO DE AÇÚCAR'),(2,'pão de açúcar'),(3,'pao de acucar'),(4,'Pão de Açúcar mascavo')");
    for (const char *procurado : {"pão de açúcar", "PÃO DE AÇÚCAR", "Pão De aÇúcar"}) {
        Pesquisa pesquisa;
        pesquisa.Ingrediente = procurado;
        QVERIFY(PlanoDe(SqlPesquisa(pesquisa), kColunas, 1).sql.contains("collate nocase in"));
        QCOMPARE(Coluna(m_banco->AbrirRecordset(SqlPesquisa(pesquisa), kColunas), 1),
                 QStringList({"A", "B"}));
    }
    Pesquisa muitas;
    muitas.Ingrediente = "áéíóúãõç";
    QVERIFY(!PlanoDe(SqlPesquisa(muitas), kColunas, 1).sql.contains("nocase"));
    QCOMPARE(m_banco->AbrirRecordset(SqlPesquisa(muitas), kColunas).RecordCount(), 0);
}

void TesteConsulta::semOsIndicesARespostaEAMesma()
{
    Encher(200);
    const QStringList comandos{SqlLista(), SqlTipos(), SqlOrigensPesquisa(), SqlUnidades(),
                               SqlNomesDeIngredientes()};
    QList<qsizetype> antes;
    for (const QString &sql : comandos)
        antes += m_banco->AbrirRecordset(sql, sql == SqlLista() ? kColunas : QStringList()).RecordCount();
    Fora("DROP INDEX ListaPorNome;DROP INDEX ReceitasPorTipo;DROP INDEX ReceitasPorOrigem;"
         "DROP INDEX IngredientesPorNome;DROP INDEX IngredientesPorUnidade");
    for (qsizetype i = 0; i < comandos.size(); ++i)
        QCOMPARE(m_banco->AbrirRecordset(comandos[i], comandos[i] == SqlLista() ? kColunas : QStringList())
                     .RecordCount(),
                 antes[i]);
}

void TesteConsulta::oComandoFicaComoFoiEscrito()
{
    // An apostrophe still breaks the search, and what is no query is still refused.
    Pesquisa pesquisa;
    pesquisa.Ingrediente = "copo d'água";
    QVERIFY_EXCEPTION_THROWN(m_banco->AbrirRecordset(SqlPesquisa(pesquisa), kColunas), ErroBanco);
    QVERIFY_EXCEPTION_THROWN(m_banco->AbrirConsulta(SqlExcluirReceita(1), {}), ErroBanco);
    QVERIFY_EXCEPTION_THROWN(m_banco->AbrirRecordset(SqlLista(), {"Nada"}), ErroBanco);
}

void TesteConsulta::vemAosPoucos()
{
    Encher(700);
    const std::unique_ptr<Consulta> consulta = m_banco->AbrirConsulta(SqlLista(), kColunas);
    int fatias = 1;
    int antes = 0;
    while (!consulta->Avancar(0)) {
        const int agora = consulta->Linhas().RecordCount();
        QVERIFY(agora > antes);
        antes = agora;
        ++fatias;
    }
    QVERIFY(fatias > 5);
    QCOMPARE(Coluna(consulta->Linhas(), 0), Coluna(m_banco->AbrirRecordset(SqlLista(), kColunas), 0));
}

void TesteConsulta::quemGravaEsperaQueALeituraTermine()
{
    Encher(700);
    m_banco->DefinirEspera(500);
    const std::unique_ptr<Consulta> consulta = m_banco->AbrirConsulta(SqlLista(), kColunas);
    const std::unique_ptr<Consulta> abandonada = m_banco->AbrirConsulta(SqlNomesDeIngredientes(), {});
    consulta->Avancar(0);
    abandonada->Avancar(0);
    m_banco->ExecutarSQL(SqlExcluirReceita(1)); // would wait for the readers, which wait for this thread
    QVERIFY(consulta->Completa());
    QVERIFY(abandonada->Completa());
    QCOMPARE(consulta->Linhas().RecordCount(), 700); // as the book was when it began
    QCOMPARE(m_banco->AbrirRecordset(SqlLista(), kColunas).RecordCount(), 699);
}

void TesteConsulta::guardaOQueLeuEnquantoNadaMuda()
{
    Encher(300);
    const auto ler = [this] { return m_banco->AbrirConsulta(SqlLista(), kColunas, Banco::Guardar::Sim); };
    QVERIFY(!ler()->Completa());
    ler()->Avancar(0); // what was not read to its end is not kept
    QVERIFY(!ler()->Completa());
    ler()->Avancar(-1);
    QVERIFY(ler()->Completa());
    QCOMPARE(ler()->Linhas().RecordCount(), 300);
    // Not for another statement, other columns, or who does not ask for it.
    QVERIFY(!m_banco->AbrirConsulta(SqlLista(), {"Nome"}, Banco::Guardar::Sim)->Completa());
    QVERIFY(!m_banco->AbrirConsulta(SqlLista(), kColunas)->Completa());
    m_banco->ExecutarSQL(SqlExcluirReceita(2));
    QVERIFY(!ler()->Completa());
    QCOMPARE(m_banco->AbrirRecordset(SqlLista(), kColunas, Banco::Guardar::Sim).RecordCount(), 299);
    QVERIFY(ler()->Completa());
}

void TesteConsulta::duasCopiasSeVeem()
{
    const Banco outra(m_pasta->path());
    const auto nomes = [](const Banco &banco) {
        return Coluna(banco.AbrirRecordset(SqlLista(), kColunas, Banco::Guardar::Sim), 1);
    };
    QStringList todos;
    for (int vez = 0; vez < 40; ++vez) {
        const Banco &grava = vez % 2 ? outra : *m_banco;
        Receita receita;
        receita.Nome = QString("Receita %1").arg(vez, 2, 10, QLatin1Char('0'));
        grava.ExecutarSQL(SqlInserirReceita(receita, QDate(2005, 11, 21)));
        todos += receita.Nome;
        QCOMPARE(nomes(outra), todos);
        QCOMPARE(nomes(*m_banco), todos);
        QCOMPARE(nomes(outra), todos);
    }
}

void TesteConsulta::outroArquivoNoLugarNaoEnganaAMemoria()
{
    // Two books with the same number of changes and the same size.
    const QTemporaryDir pasta;
    const Banco gemeo(pasta.path());
    gemeo.LerUmaVez();
    Receita receita;
    receita.Nome = "Aqui";
    m_banco->ExecutarSQL(SqlInserirReceita(receita, QDate(2005, 11, 21)));
    receita.Nome = "Ali!";
    gemeo.ExecutarSQL(SqlInserirReceita(receita, QDate(2005, 11, 21)));
    const auto nome = [this] {
        return m_banco->AbrirRecordset(SqlLista(), kColunas, Banco::Guardar::Sim).TextoEm(0, 1);
    };
    QCOMPARE(nome(), "Aqui");
    QCOMPARE(QFile(Caminho()).size(), QFile(gemeo.CaminhoDoLivro()).size());
    QFile original(gemeo.CaminhoDoLivro());
    QVERIFY(original.open(QIODevice::ReadOnly));
    const QByteArray bytes = original.readAll();
    QFile livro(Caminho());
    QVERIFY(livro.open(QIODevice::ReadWrite) && livro.write(bytes) == bytes.size());
    livro.close();
    QCOMPARE(nome(), "Ali!");
}

void TesteConsulta::umLivroSendoGravadoNaoEDaMemoria()
{
    Encher(5);
    const auto ler = [this] { return m_banco->AbrirConsulta(SqlLista(), kColunas, Banco::Guardar::Sim); };
    ler()->Avancar(-1);
    QVERIFY(ler()->Completa());
    sqlite3 *outra = nullptr;
    QCOMPARE(sqlite3_open(Caminho().toUtf8().constData(), &outra), SQLITE_OK);
    QCOMPARE(sqlite3_exec(outra, "BEGIN;UPDATE Receitas SET Tipo=1 WHERE id_receitas=1", nullptr, nullptr,
                          nullptr),
             SQLITE_OK);
    QVERIFY(!ler()->Completa()); // its journal is there: the engine decides what holds
    sqlite3_exec(outra, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(outra);
    ler()->Avancar(-1);
    QVERIFY(ler()->Completa());
}

namespace
{
Receita DeNome(const QString &nome)
{
    Receita receita;
    receita.Nome = nome;
    return receita;
}
const QDate kDia(2005, 11, 21);
} // namespace

void TesteConsulta::aRemessaGravaCadaComandoPorSi()
{
    const Banco outra(m_pasta->path());
    {
        const Banco::Remessa remessa(*m_banco);
        QVERIFY(QFile::exists(Caminho() + "-wal"));
        for (int i = 1; i <= 20; ++i) {
            m_banco->ExecutarSQL(SqlInserirReceita(DeNome(QString("Receita %1").arg(i)), kDia));
            QCOMPARE(m_banco->AbrirRecordset(SqlMaiorNumero()).TextoEm(0, 0), QString::number(i));
            QCOMPARE(m_banco->UltimoNumero(), i);
            QCOMPARE(outra.AbrirRecordset(SqlLista(), kColunas, Banco::Guardar::Sim).RecordCount(), i);
        }
        QVERIFY_EXCEPTION_THROWN(m_banco->ExecutarSQL("Insert into Receitas(Nada) values (1)"), ErroBanco);
        outra.ExecutarSQL(SqlExcluirReceita(1)); // writes meanwhile
        QCOMPARE(m_banco->AbrirRecordset(SqlLista(), kColunas).RecordCount(), 19);
    }
    QCOMPARE(m_banco->AbrirRecordset(SqlLista(), kColunas, Banco::Guardar::Sim).RecordCount(), 19);
}

void TesteConsulta::aRemessaSabeOsNomesQueJaExistem()
{
    const Banco outra(m_pasta->path());
    m_banco->ExecutarSQL(SqlInserirReceita(DeNome("Pão de ló"), kDia));
    const auto existe = [this](const QString &nome) {
        return !m_banco->AbrirRecordset(SqlReceitaDeNome(nome), {"id_receitas"}).Eof();
    };
    const Banco::Remessa remessa(*m_banco);
    QVERIFY(existe("PÃO de LÓ"));
    QVERIFY(!existe("Pão de lo"));
    QVERIFY(!existe("Bolo"));
    m_banco->ExecutarSQL(SqlInserirReceita(DeNome("bolo"), kDia));
    QVERIFY(existe("Bolo"));
    outra.ExecutarSQL(SqlInserirReceita(DeNome("Torta"), kDia));
    QVERIFY(existe("torta"));
    m_banco->ExecutarSQL(SqlAlterarReceita(DeNome("Pudim"), 1, Figura::Mantida));
    QVERIFY(existe("PUDIM"));
    QVERIFY(!existe("Pão de ló"));
    m_banco->ExecutarSQL(SqlExcluirReceita(1));
    QVERIFY(!existe("PUDIM"));
    QVERIFY_EXCEPTION_THROWN(existe("copo d'água"), ErroBanco);
    QCOMPARE(m_banco->AbrirRecordset(SqlReceitaDeNome("Nada"), {"id_receitas"}).FieldNames(),
             QStringList("id_receitas"));
}

void TesteConsulta::aRemessaDeixaUmArquivoSo()
{
    Encher(50);
    {
        Banco::Remessa remessa(*m_banco);
        {
            const Banco::Remessa dentro(*m_banco); // nothing at all
        }
        m_banco->ExecutarSQL(SqlInserirReceita(DeNome("Nova"), kDia));
        remessa.Sincronizar();
        QVERIFY(QFile::exists(Caminho() + "-wal"));
    }
    QVERIFY(!QFile::exists(Caminho() + "-wal"));
    QVERIFY(!QFile::exists(Caminho() + "-shm"));
    QFile arquivo(Caminho());
    QVERIFY(arquivo.open(QIODevice::ReadOnly));
    QCOMPARE(arquivo.read(20).mid(18), QByteArray("\1\1"));
    // A raw copy is the whole book.
    const QTemporaryDir copia;
    QVERIFY(QFile::copy(Caminho(), copia.filePath("dadosr.lst")));
    QCOMPARE(Banco(copia.path()).AbrirRecordset(SqlLista(), kColunas).RecordCount(), 51);
}

void TesteConsulta::aRemessaMortaNoMeioSeDesfazNaProximaAbertura()
{
    QProcess processo;
    processo.start(PROCESSO_STORE, {"remessa", m_pasta->path()});
    int gravadas = 0;
    while (gravadas < 300 && processo.waitForReadyRead())
        while (processo.canReadLine())
            gravadas = processo.readLine().trimmed().toInt();
    processo.kill();
    processo.waitForFinished();
    QVERIFY(gravadas >= 300);
    QVERIFY(QFile::exists(Caminho() + "-wal"));
    const int naLista = m_banco->AbrirRecordset(SqlLista(), kColunas).RecordCount();
    QVERIFY2(naLista >= gravadas, qPrintable(QString("%1 de %2").arg(naLista).arg(gravadas)));
    QVERIFY(!QFile::exists(Caminho() + "-wal"));
}

QTEST_GUILESS_MAIN(TesteConsulta)
#include "teste_consulta.moc"
