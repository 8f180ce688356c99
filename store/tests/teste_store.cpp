#include "store/Banco.h"

#include "base/Ponteiro.h"
#include "base/Separadores.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"
#include "store/NuloParaValor.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

#include <sqlite3.h>

using namespace Comandos;

namespace
{
const QDate kDia(2005, 11, 21);

Receita UmaReceita(const QString &nome)
{
    Receita r;
    r.Nome = nome;
    r.Modo = "Misture tudo.\r\nAsse.";
    return r;
}

/// Another program of the same engine, which knows nothing of this one.
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

    /// "" or the engine's message.
    QString Executar(const char *sql)
    {
        return sqlite3_exec(m_conexao, sql, nullptr, nullptr, nullptr) == SQLITE_OK
                   ? QString()
                   : QString::fromUtf8(sqlite3_errmsg(m_conexao));
    }
    /// All rows, values joined by "|".
    QStringList Ler(const QString &sql)
    {
        QStringList linhas;
        const auto guardar = [](void *onde, int campos, char **valores, char **) {
            QStringList linha;
            for (int i = 0; i < campos; ++i)
                linha += valores[i] ? QString::fromUtf8(valores[i]) : QString("NULL");
            static_cast<QStringList *>(onde)->append(linha.join('|'));
            return 0;
        };
        char *erro = nullptr;
        if (sqlite3_exec(m_conexao, sql.toUtf8().constData(), guardar, &linhas, &erro) != SQLITE_OK)
            qFatal("%s", erro);
        return linhas;
    }
    sqlite3 *Conexao() { return m_conexao; }

private:
    sqlite3 *m_conexao = nullptr;
};

QString ErroDe(const std::function<void()> &operacao)
{
    try {
        operacao();
    } catch (const ErroBanco &erro) {
        return erro.Mensagem();
    }
    return {};
}
} // namespace

class TesteStore : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void terminaAPastaComUmaSoBarra_data();
    void terminaAPastaComUmaSoBarra();
    void formaAConexao();
    void traduzCaminhosAbaixoDaPasta();
    void abreOLivroEmPastasDeNomeEstranho_data();
    void abreOLivroEmPastasDeNomeEstranho();
    void trocaONuloPorTextoVazio();

    void criaOLivroVazioNaPrimeiraOperacao();
    void criaOLivroNumArquivoVazio();
    void naoDeixaArquivosAlemDoLivro();
    void executaTodosOsComandosComoEscritos();
    void guardaOApostrofoComoDigitado();
    void guardaZeroENuloDoQueFicouVazio();
    void guardaTextoForaDaPaginaDeCodigo();
    void guardaTextosLongos();
    void oNumeroNovoEOMaiorDaTabela();
    void naoRepeteONumeroExcluido();
    void naoAlteraADataAoAlterar();
    void entendeDatas_data();
    void entendeDatas();

    void guardaNumeros_data();
    void guardaNumeros();
    void aVirgulaSemAspasEErroDoBanco();
    void importaNumerosEntreApostrofos();

    void ignoraACaixaEmComparacoes();
    void ordenaNomesPelaOrdemDoLivro();
    void juntaOsTiposQueSoDiferemNaCaixa();
    void procuraComLike();
    void procuraPeloNomeEmMaiusculas();

    void recusaComentarios_data();
    void recusaComentarios();
    void aceitaSinaisDeComentarioDentroDeTextos();
    void recusaOQueNaoEDoLivro_data();
    void recusaOQueNaoEDoLivro();
    void consultaNaoAltera();

    void buscaSoAsColunasPedidas();
    void colunaQueNaoExisteEErro();
    void mantemAOrdemComColunas();
    void naoLeAsColunasQueNaoForamPedidas();

    void oResultadoNaoDependeDoBanco();
    void oResultadoAcabaComErro();
    void escreveNumerosNaNotacaoDoUsuario();

    void mostraAAmpulhetaEnquantoTrabalha();
    void aFalhaDeixaAAmpulheta();
    void outrasFerramentasPodemGravar();

private:
    Banco Abrir() const { return Banco(m_pasta->path()); }
    std::unique_ptr<QTemporaryDir> m_pasta;
};

void TesteStore::init()
{
    m_pasta = std::make_unique<QTemporaryDir>();
    QVERIFY(m_pasta->isValid());
    Ponteiro::NormalSempre();
    Separadores::Definir({});
}

void TesteStore::cleanup()
{
    Ponteiro::NormalSempre();
}

void TesteStore::terminaAPastaComUmaSoBarra_data()
{
    QTest::addColumn<QString>("pasta");
    QTest::addColumn<QString>("resultado");
    QTest::newRow("sem barra") << "/home/ana/livro"
                               << "/home/ana/livro\\";
    QTest::newRow("com barra do sistema") << "/home/ana/livro/"
                                          << "/home/ana/livro\\";
    QTest::newRow("com barra invertida") << "C:\\livro\\"
                                         << "C:\\livro\\";
    QTest::newRow("raiz") << "/"
                          << "/\\";
}

void TesteStore::terminaAPastaComUmaSoBarra()
{
    QFETCH(QString, pasta);
    QFETCH(QString, resultado);
    QCOMPARE(AppFolder(pasta), resultado);
    QCOMPARE(Banco(pasta).AppFolder(), resultado);
}

void TesteStore::formaAConexao()
{
    const QString esperada =
        "DBQ=/home/ana/livro\\dadosr.lst;user=;pwd=;Driver={Microsoft Access Driver (*.mdb)}";
    QCOMPARE(Banco("/home/ana/livro").ConnectionString(), esperada);
    QCOMPARE(Banco("/home/ana/livro/").ConnectionString(), esperada);
}

void TesteStore::traduzCaminhosAbaixoDaPasta()
{
    const Banco banco("/home/ana/livro");
    QCOMPARE(banco.Caminho("Fotos\\F0000001.img"), "/home/ana/livro/Fotos/F0000001.img");
    QCOMPARE(banco.Caminho("\\PacoteReceita.lrs"), "/home/ana/livro/PacoteReceita.lrs");
    QCOMPARE(banco.Caminho("temporario"), "/home/ana/livro/temporario");
    QCOMPARE(banco.CaminhoDoLivro(), "/home/ana/livro/dadosr.lst");
    QCOMPARE(Banco("/").CaminhoDoLivro(), "/dadosr.lst");
}

void TesteStore::abreOLivroEmPastasDeNomeEstranho_data()
{
    QTest::addColumn<QString>("nome");
    QTest::newRow("ponto e vírgula") << "doces;user=ana;pwd=";
    QTest::newRow("barra invertida") << "doces\\salgados";
    QTest::newRow("barra invertida no fim") << "doces\\";
    QTest::newRow("o próprio fim da conexão") << ";user=;pwd=;Driver={Microsoft Access Driver (*.mdb)}";
    QTest::newRow("sinais de endereço") << "file:a?mode=memory#%41";
    QTest::newRow("acentos e brancos") << " Pão d'água 北 ";
}

void TesteStore::abreOLivroEmPastasDeNomeEstranho()
{
    QFETCH(QString, nome);
    const QString pasta = m_pasta->filePath(nome);
    QVERIFY(QDir().mkpath(pasta));
    const Banco banco(pasta);
    QCOMPARE(banco.CaminhoDoLivro(), pasta + "/dadosr.lst");
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    QCOMPARE(banco.AbrirRecordset(SqlLista()).RecordCount(), 1);
    QVERIFY(QFile::exists(pasta + "/dadosr.lst"));
}

void TesteStore::trocaONuloPorTextoVazio()
{
    QCOMPARE(NuloParaValor(QVariant()), QVariant(QString("")));
    QCOMPARE(NuloParaValor(QVariant(7)), QVariant(7));
    QCOMPARE(NuloParaValor(QVariant(QString("a"))), QVariant(QString("a")));
    QCOMPARE(NuloParaValor(QVariant(QString(""))), QVariant(QString("")));
}

void TesteStore::criaOLivroVazioNaPrimeiraOperacao()
{
    const Banco banco = Abrir();
    QVERIFY(!QFile::exists(banco.CaminhoDoLivro()));
    const RecordSet rs = banco.AbrirRecordset(SqlLista());
    QVERIFY(rs.Eof());
    QCOMPARE(rs.RecordCount(), 0);
    QStringList nomes = rs.FieldNames();
    nomes.sort();
    QCOMPARE(nomes, QStringList({"Calorias", "Classificacao", "Data", "Figura", "Modo", "Nome", "Observacao",
                                 "Origem", "Porcoes", "Preparo", "Tipo", "Tipo_Calorias", "id_receitas"}));
    QStringList linhas = banco.AbrirRecordset(SqlIngredientes(1)).FieldNames();
    QCOMPARE(linhas, QStringList({"id_ingredientes", "id_receitas", "Ingrediente", "Quantidade", "Unidade"}));
    const RecordSet maior = banco.AbrirRecordset(SqlMaiorNumero());
    QCOMPARE(maior.RecordCount(), 1);
    QVERIFY(maior.Nulo(0));
}

void TesteStore::criaOLivroNumArquivoVazio()
{
    const Banco banco = Abrir();
    QFile arquivo(banco.CaminhoDoLivro());
    QVERIFY(arquivo.open(QIODevice::WriteOnly));
    arquivo.close();
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    QCOMPARE(banco.AbrirRecordset(SqlLista()).RecordCount(), 1);
    QCOMPARE(OutroPrograma(banco.CaminhoDoLivro()).Ler("PRAGMA integrity_check(1)").size(), 1);
}

void TesteStore::naoDeixaArquivosAlemDoLivro()
{
    const Banco banco = Abrir();
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    banco.AbrirRecordset(SqlLista());
    QCOMPARE(QDir(m_pasta->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList("dadosr.lst"));
    // Nothing is held open either.
    const QDir abertos("/proc/self/fd");
    for (const QFileInfo &aberto :
         abertos.entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot))
        QVERIFY(!aberto.symLinkTarget().startsWith(m_pasta->path()));
}

/// The catalogue, from first to last, on one book.
void TesteStore::executaTodosOsComandosComoEscritos()
{
    const Banco banco = Abrir();
    const auto contar = [&banco](const QString &sql) { return banco.AbrirRecordset(sql).RecordCount(); };

    banco.ExecutarSQL(
        "Insert into Receitas(Nome,Data,Classificacao,Modo,Porcoes,Preparo,Tipo_Calorias,Calorias,"
        "Observacao,Figura) values ('Pão d''água',CDATE('2005-11-21'),'Pães','Misture.',8,'2 h','P',250,"
        "'Bom.',NULL)");
    banco.ExecutarSQL(
        "Insert into Receitas(Nome,Data,Classificacao,Modo,Tipo,Origem,Porcoes,Preparo,Tipo_Calorias,"
        "Calorias,Observacao,Figura) values ('Bolo',CDATE('21/11/2005'),NULL,'',2,'Pacote 1','4',NULL,"
        "'R','1200',NULL,NULL)");
    QCOMPARE(banco.AbrirRecordset("Select max(id_receitas) from Receitas").Valor(0), QVariant(2LL));
    banco.ExecutarSQL("Update Receitas set Figura = 'F0000002.img' Where id_receitas = 2");
    for (const char *linha : {"'farinha','1/2','kg'", "'sal',NULL,NULL", "'água','1','copo'"})
        banco.ExecutarSQL(
            QString("Insert into Ingredientes(id_receitas,Ingrediente,Quantidade,Unidade) values (1,%1)")
                .arg(QString::fromUtf8(linha)));

    QCOMPARE(contar("Select * from Receitas Where id_Receitas = 1"), 1);
    QCOMPARE(contar("Select * from Receitas Where id_receitas = 1"), 1);
    QCOMPARE(banco.AbrirRecordset("Select Figura from Receitas Where id_Receitas = 2").Texto("figura"),
             "F0000002.img");
    const RecordSet linhas = banco.AbrirRecordset("Select * from Ingredientes Where id_receitas = 1 Order By "
                                                  "id_ingredientes");
    QCOMPARE(linhas.RecordCount(), 3);
    const int campo = linhas.Campo(u"Ingrediente");
    QCOMPARE(linhas.TextoEm(0, campo) + "," + linhas.TextoEm(1, campo) + "," + linhas.TextoEm(2, campo),
             "farinha,sal,água");
    QCOMPARE(banco.AbrirRecordset("Select * from Receitas Order By Nome").Texto(u"Nome"), "Bolo");

    QCOMPARE(contar("Select * from Receitas Where 1=1  and Nome like '%BOLO%' and Origem = 'pacote 1' and "
                    "Figura is not "
                    "Null  and Calorias <= 1200 Order By Nome "),
             1);
    QCOMPARE(
        contar("Select * from Receitas Where 1=1  and Nome like '%ÁGUA%' and Classificacao = 'pães' and "
               "id_receitas "
               "in (Select id_receitas from Ingredientes Where Ingrediente = 'SAL') and Calorias <= 800 and "
               "Preparo like '%2%' Order By Nome "),
        1);
    QCOMPARE(contar("Select * from Receitas Where 1=1  and id_receitas in (Select id_receitas from "
                    "Ingredientes Where "
                    "Ingrediente = 'mel') Order By Nome "),
             0);
    QCOMPARE(contar("Select DISTINCT Classificacao from Receitas Where Classificacao is not null Order By "
                    "Classificacao"),
             1);
    QCOMPARE(contar("Select DISTINCT Unidade from Ingredientes Where Unidade is not null Order By Unidade"),
             2);
    QCOMPARE(contar("Select DISTINCT Ingrediente from Ingredientes Order By Ingrediente"), 3);
    QCOMPARE(contar("Select DISTINCT Classificacao from Receitas Where Classificacao is not Null Order By "
                    "Classificacao"),
             1);
    QCOMPARE(contar("Select DISTINCT Origem from Receitas Where Origem is not Null Order By Origem"), 1);
    QCOMPARE(contar("Select Distinct Figura from Receitas Where Figura is not Null and Figura <> ''"), 1);
    QCOMPARE(contar("Select * from Receitas Where id_Receitas in (2,1) Order By Nome"), 2);
    QCOMPARE(contar("Select * from Receitas Where ucase(Nome) = 'BOLO'"), 1);

    banco.ExecutarSQL(
        "Update Receitas set  Nome = 'Pão', Classificacao = NULL, Modo = 'M', Porcoes = 0, Preparo = NULL, "
        "Calorias = 0, Observacao = NULL, Tipo_Calorias = 'R',  Figura = 'F0000001.img'  Where "
        "id_Receitas = 1");
    QCOMPARE(banco.AbrirRecordset(SqlFigura(1)).Texto(0), "F0000001.img");
    banco.ExecutarSQL(
        "Update Receitas set  Nome = 'Pão', Classificacao = 'Pães', Modo = 'M', Porcoes = 0, Preparo = "
        "NULL, Calorias = 0, Observacao = 'O', Tipo_Calorias = NULL, Figura = Figura  Where "
        "id_Receitas = 1");
    QCOMPARE(banco.AbrirRecordset(SqlFigura(1)).Texto(0), "F0000001.img");
    banco.ExecutarSQL(
        "Update Receitas set  Nome = 'Pão', Classificacao = 'Pães', Modo = 'M', Porcoes = 0, Preparo = "
        "NULL, Calorias = 0, Observacao = 'O', Tipo_Calorias = NULL, Figura = NULL  Where "
        "id_Receitas = 1");
    QVERIFY(banco.AbrirRecordset(SqlFigura(1)).Nulo(0));
    banco.ExecutarSQL("Delete from Ingredientes Where id_receitas = 1");
    banco.ExecutarSQL("Delete from Receitas Where id_receitas = 1");
    QCOMPARE(contar(SqlLista()), 1);
    QCOMPARE(contar(SqlNomesDeIngredientes()), 0);
}

void TesteStore::guardaOApostrofoComoDigitado()
{
    const Banco banco = Abrir();
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Pão d'água"), kDia));
    banco.ExecutarSQL(SqlInserirIngrediente(1, "caixa d'água", "1/2", "copo d'água"));
    QCOMPARE(banco.AbrirRecordset(SqlReceita(1)).Texto("Nome"), "Pão d'água");
    QCOMPARE(banco.AbrirRecordset(SqlIngredientes(1)).Texto("Ingrediente"), "caixa d'água");
    QCOMPARE(banco.AbrirRecordset(SqlIngredientes(1)).Texto("Unidade"), "copo d'água");
    QVERIFY(!ErroDe([&] { banco.ExecutarSQL(SqlInserirIngrediente(1, "sal", "1'2", "g")); }).isEmpty());
}

void TesteStore::guardaZeroENuloDoQueFicouVazio()
{
    const Banco banco = Abrir();
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    const RecordSet rs = banco.AbrirRecordset(SqlReceita(1));
    QCOMPARE(rs.Valor("Porcoes"), QVariant(0LL));
    QCOMPARE(rs.Valor("Calorias"), QVariant(0LL));
    for (const char *coluna :
         {"Classificacao", "Preparo", "Observacao", "Tipo_Calorias", "Tipo", "Origem", "Figura"}) {
        QVERIFY(!rs.Valor(QString(coluna)).isValid());
        QCOMPARE(NuloParaValor(rs.Valor(QString(coluna))), QVariant(QString("")));
        QCOMPARE(rs.Texto(QString(coluna)), "");
    }
    // An empty text stays what it is.
    banco.ExecutarSQL("Update Receitas set Observacao = '' Where id_receitas = 1");
    QVERIFY(banco.AbrirRecordset(SqlReceita(1)).Valor("Observacao").isValid());
}

void TesteStore::guardaTextoForaDaPaginaDeCodigo()
{
    const Banco banco = Abrir();
    const QString nome = "Bolo 北京 😀 Ω “½” €";
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita(nome), kDia));
    QCOMPARE(banco.AbrirRecordset(SqlLista()).Texto("Nome"), nome);
}

void TesteStore::guardaTextosLongos()
{
    const Banco banco = Abrir();
    Receita receita = UmaReceita("Torta");
    receita.Modo = QString("Misture a massa. ").repeated(500000).trimmed();
    receita.Observacao = QString("ç").repeated(70000);
    banco.ExecutarSQL(SqlInserirReceita(receita, kDia));
    const RecordSet rs = banco.AbrirRecordset(SqlReceita(1));
    QVERIFY(rs.Texto("Modo") == receita.Modo);
    QVERIFY(rs.Texto("Observacao") == receita.Observacao);
}

void TesteStore::oNumeroNovoEOMaiorDaTabela()
{
    const Banco banco = Abrir();
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    QCOMPARE(OutroPrograma(banco.CaminhoDoLivro())
                 .Executar("INSERT INTO Receitas(id_receitas, Nome) VALUES (1000, 'De outra cópia')"),
             "");
    QCOMPARE(banco.AbrirRecordset(SqlMaiorNumero()).Valor(0), QVariant(1000LL));
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Mel"), kDia));
    QCOMPARE(banco.AbrirRecordset(SqlMaiorNumero()).Valor(0), QVariant(1001LL));
}

void TesteStore::naoRepeteONumeroExcluido()
{
    const Banco banco = Abrir();
    for (const char *nome : {"Sal", "Mel"})
        banco.ExecutarSQL(SqlInserirReceita(UmaReceita(nome), kDia));
    banco.ExecutarSQL(SqlExcluirReceita(2));
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Pão"), kDia));
    QCOMPARE(banco.AbrirRecordset(SqlMaiorNumero()).Valor(0), QVariant(3LL));
}

void TesteStore::naoAlteraADataAoAlterar()
{
    const Banco banco = Abrir();
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    banco.ExecutarSQL(SqlAlterarReceita(UmaReceita("Mel"), 1, Figura::Mantida));
    const RecordSet rs = banco.AbrirRecordset(SqlReceita(1));
    QCOMPARE(rs.Texto("Nome"), "Mel");
    QCOMPARE(rs.Texto("Data"), "2005-11-21");
}

void TesteStore::entendeDatas_data()
{
    QTest::addColumn<QString>("escrita");
    QTest::addColumn<QString>("guardada"); // empty: refused
    QTest::newRow("inequívoca") << "2005-11-21"
                                << "2005-11-21";
    QTest::newRow("brasileira") << "21/11/2005"
                                << "2005-11-21";
    QTest::newRow("sem zeros") << "1/2/2005"
                               << "2005-02-01";
    QTest::newRow("com hora") << "2005-11-21 08:30:05"
                              << "2005-11-21 08:30:05";
    QTest::newRow("com hora sem segundos") << "21/11/2005 23:59"
                                           << "2005-11-21 23:59:00";
    QTest::newRow("meia-noite") << "2005-11-21 00:00:00"
                                << "2005-11-21";
    QTest::newRow("29 de fevereiro") << "29/02/2004"
                                     << "2004-02-29";
    QTest::newRow("29 de fevereiro que não houve") << "29/02/2005"
                                                   << "";
    QTest::newRow("mês treze") << "2005-13-01"
                               << "";
    QTest::newRow("hora 25") << "2005-11-21 25:00"
                             << "";
    QTest::newRow("palavra") << "hoje"
                             << "";
    QTest::newRow("vazia") << ""
                           << "";
}

void TesteStore::entendeDatas()
{
    QFETCH(QString, escrita);
    QFETCH(QString, guardada);
    const Banco banco = Abrir();
    const QString erro = ErroDe([&] {
        banco.ExecutarSQL("Insert into Receitas(Nome,Data) values ('Sal',CDATE('" + escrita + "'))");
    });
    QCOMPARE(erro.isEmpty(), !guardada.isEmpty());
    const RecordSet rs = banco.AbrirRecordset(SqlLista());
    QCOMPARE(rs.Eof() ? QString() : rs.Texto("Data"), guardada);
}

void TesteStore::guardaNumeros_data()
{
    QTest::addColumn<QString>("escrito");
    QTest::addColumn<QVariant>("guardado"); // invalid: refused
    QTest::newRow("inteiro") << "8" << QVariant(8LL);
    QTest::newRow("texto inteiro") << "'8'" << QVariant(8LL);
    QTest::newRow("texto com vírgula") << "'1,5'" << QVariant(1.5);
    QTest::newRow("texto com ponto") << "'1.5'" << QVariant(1.5);
    QTest::newRow("negativo") << "-3" << QVariant(-3LL);
    QTest::newRow("texto negativo") << "'-2,25'" << QVariant(-2.25);
    QTest::newRow("vírgula sem fração") << "'2,0'" << QVariant(2LL);
    QTest::newRow("palavra") << "'abc'" << QVariant();
    QTest::newRow("palavra com vírgula") << "'a,b'" << QVariant();
    QTest::newRow("número e palavra") << "'8 porções'" << QVariant();
    QTest::newRow("duas vírgulas") << "'1,2,3'" << QVariant();
    QTest::newRow("milhar e fração") << "'1.234,5'" << QVariant();
    QTest::newRow("hexadecimal") << "'0x10'" << QVariant();
    QTest::newRow("texto vazio") << "''" << QVariant();
}

void TesteStore::guardaNumeros()
{
    QFETCH(QString, escrito);
    QFETCH(QVariant, guardado);
    const Banco banco = Abrir();
    for (const char *coluna : {"Porcoes", "Calorias", "Tipo"}) {
        const QString inserir =
            QString("Insert into Receitas(Nome,%1) values ('Sal',%2)").arg(coluna, escrito);
        const QString erro = ErroDe([&] { banco.ExecutarSQL(inserir); });
        QCOMPARE(erro.isEmpty(), guardado.isValid());
        if (guardado.isValid()) {
            const RecordSet rs = banco.AbrirRecordset(SqlLista());
            QCOMPARE(rs.Valor(QString(coluna)), guardado);
            QCOMPARE(rs.Valor(QString(coluna)).typeId(), guardado.typeId());
        } else {
            QVERIFY2(erro.contains("não é um número"), qPrintable(erro));
            QCOMPARE(banco.AbrirRecordset(SqlLista()).RecordCount(), 0);
        }
        banco.ExecutarSQL("Delete from Receitas");

        banco.ExecutarSQL("Insert into Receitas(Nome,Porcoes,Calorias,Tipo) values ('Sal',7,7,7)");
        const QString alterar = QString("Update Receitas set %1 = %2").arg(coluna, escrito);
        QCOMPARE(ErroDe([&] { banco.ExecutarSQL(alterar); }).isEmpty(), guardado.isValid());
        QCOMPARE(banco.AbrirRecordset(SqlLista()).Valor(QString(coluna)),
                 guardado.isValid() ? guardado : QVariant(7LL));
        banco.ExecutarSQL("Delete from Receitas");
    }
}

void TesteStore::aVirgulaSemAspasEErroDoBanco()
{
    const Banco banco = Abrir();
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    Receita receita = UmaReceita("Mel");
    receita.Calorias = "1,5";
    for (const QString &sql :
         {SqlInserirReceita(receita, kDia), SqlAlterarReceita(receita, 1, Figura::Mantida)}) {
        const QString erro = ErroDe([&] { banco.ExecutarSQL(sql); });
        QVERIFY2(erro.startsWith("Não foi possível executar a operação no banco de dados.\r\n\r\n"),
                 qPrintable(erro));
        QVERIFY(erro.size() >
                QString("Não foi possível executar a operação no banco de dados.\r\n\r\n").size());
    }
    QVERIFY(!ErroDe([&] { banco.AbrirRecordset(SqlPesquisa({.Calorias = "1,5"})); }).isEmpty());
    const RecordSet rs = banco.AbrirRecordset(SqlLista());
    QCOMPARE(rs.RecordCount(), 1);
    QCOMPARE(rs.Texto("Nome"), "Sal");
}

void TesteStore::importaNumerosEntreApostrofos()
{
    const Banco banco = Abrir();
    banco.ExecutarSQL(
        "Insert into Receitas(Nome,Data,Classificacao,Modo,Tipo,Origem,Porcoes,Preparo,Tipo_Calorias,"
        "Calorias,Observacao,Figura) values ('Bolo',CDATE('2005-11-21'),NULL,'',1,NULL,'4,5',NULL,'P',"
        "'250,25',NULL,NULL)");
    const RecordSet rs = banco.AbrirRecordset(SqlReceita(1));
    QCOMPARE(rs.Valor("Porcoes"), QVariant(4.5));
    QCOMPARE(rs.Valor("Calorias"), QVariant(250.25));
    QCOMPARE(banco.AbrirRecordset(SqlPesquisa({.Calorias = "250"})).RecordCount(), 0);
    QCOMPARE(banco.AbrirRecordset(SqlPesquisa({.Calorias = "251"})).RecordCount(), 1);
}

void TesteStore::ignoraACaixaEmComparacoes()
{
    const Banco banco = Abrir();
    Receita receita = UmaReceita("Sal");
    receita.Classificacao = "Pães";
    banco.ExecutarSQL(SqlInserirReceita(receita, kDia));
    banco.ExecutarSQL(SqlInserirIngrediente(1, "Açúcar", "", ""));
    QCOMPARE(banco.AbrirRecordset(SqlPesquisa({.Tipo = "PÃES"})).RecordCount(), 1);
    QCOMPARE(banco.AbrirRecordset(SqlPesquisa({.Tipo = "paes"})).RecordCount(), 0);
    QCOMPARE(banco.AbrirRecordset(SqlPesquisa({.Ingrediente = "AÇÚCAR"})).RecordCount(), 1);
}

void TesteStore::ordenaNomesPelaOrdemDoLivro()
{
    const QStringList nomes = {
        "½ quindim", "Abacaxi", "Água", "Azeite-de-dendê", "bolo",       "Carnes", "Carne-seca",
        "Coco",      "Cocó",    "Pão",  "Pão da casa",     "Pão d'água", "zimbro", "北"};
    QStringList embaralhados = nomes;
    std::sort(embaralhados.begin(), embaralhados.end(),
              [](const QString &a, const QString &b) { return qHash(a) < qHash(b); });
    const Banco banco = Abrir();
    for (const QString &nome : embaralhados)
        banco.ExecutarSQL(SqlInserirReceita(UmaReceita(nome), kDia));
    QStringList lidos;
    for (RecordSet rs = banco.AbrirRecordset(SqlLista()); !rs.Eof(); rs.MoveNext())
        lidos += rs.Texto("Nome");
    QCOMPARE(lidos, nomes);
}

void TesteStore::juntaOsTiposQueSoDiferemNaCaixa()
{
    const Banco banco = Abrir();
    for (const char *tipo : {"Doces", "DOCES", "doces", "Dóces", "Massas"}) {
        Receita receita = UmaReceita("Sal");
        receita.Classificacao = QString::fromUtf8(tipo);
        banco.ExecutarSQL(SqlInserirReceita(receita, kDia));
    }
    QCOMPARE(banco.AbrirRecordset(SqlTipos()).RecordCount(), 3);
}

void TesteStore::procuraComLike()
{
    const Banco banco = Abrir();
    for (const char *nome :
         {"Pão de ló", "PÃO DE MEL", "Pao de forma", "100% cacau", "1000 folhas", "[kg] de mel"})
        banco.ExecutarSQL(SqlInserirReceita(UmaReceita(QString::fromUtf8(nome)), kDia));
    const auto achadas = [&](const QString &nome) {
        return banco.AbrirRecordset(SqlPesquisa({.Nome = nome})).RecordCount();
    };
    QCOMPARE(achadas("pão"), 2);
    QCOMPARE(achadas("PAO"), 1);
    QCOMPARE(achadas("p_o de [l-m]"), 2);
    QCOMPARE(achadas("p_o de [!m]"), 2);
    QCOMPARE(achadas("100[%]"), 1);
    QCOMPARE(achadas("100%"), 2);
    QVERIFY(!ErroDe([&] { achadas("d'água"); }).isEmpty());
    // NULL matches nothing.
    QCOMPARE(banco.AbrirRecordset(SqlPesquisa({.Preparo = "%"})).RecordCount(), 0);
}

void TesteStore::procuraPeloNomeEmMaiusculas()
{
    const Banco banco = Abrir();
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Pão de Ló ß"), kDia));
    QCOMPARE(banco.AbrirRecordset(SqlReceitaDeNome("PÃO de lÓ ß")).RecordCount(), 1);
    QCOMPARE(banco.AbrirRecordset(SqlReceitaDeNome("pao de lo ß")).RecordCount(), 0);
    QVERIFY(!ErroDe([&] { banco.AbrirRecordset(SqlReceitaDeNome("Pão d'água")); }).isEmpty());
}

void TesteStore::recusaComentarios_data()
{
    QTest::addColumn<QString>("sql");
    Receita receita = UmaReceita("Trocada");
    receita.Calorias = "5--";
    QTest::newRow("calorias que comentam o Where") << SqlAlterarReceita(receita, 1, Figura::Mantida);
    receita.Calorias = "--5";
    QTest::newRow("dois sinais de menos") << SqlAlterarReceita(receita, 1, Figura::Mantida);
    receita.Calorias = "5/*";
    QTest::newRow("comentário sem fim") << SqlAlterarReceita(receita, 1, Figura::Mantida);
    QTest::newRow("só o começo do comando") << "Update Receitas set Nome = 'x' -- Where id_receitas = 1";
    QTest::newRow("depois de apóstrofos dobrados")
        << "Update Receitas set Nome = 'd''x'--' Where id_receitas = 1";
    QTest::newRow("dois comandos") << "Update Receitas set Nome = 'x'; Delete from Receitas";
    QTest::newRow("segundo comando quebrado") << "Update Receitas set Nome = 'x'; xyz";
    QTest::newRow("caractere nulo") << QString("Update Receitas set Nome = 'x'") + QChar(0) +
                                           " Where id_receitas = 1";
    QTest::newRow("vazio") << "";
    QTest::newRow("só um ponto e vírgula") << ";";
}

void TesteStore::recusaComentarios()
{
    QFETCH(QString, sql);
    const Banco banco = Abrir();
    for (const char *nome : {"Sal", "Mel"})
        banco.ExecutarSQL(SqlInserirReceita(UmaReceita(nome), kDia));
    QVERIFY(!ErroDe([&] { banco.ExecutarSQL(sql); }).isEmpty());
    QVERIFY(!ErroDe([&] { banco.AbrirRecordset(sql); }).isEmpty());
    const RecordSet rs = banco.AbrirRecordset(SqlLista());
    QCOMPARE(rs.RecordCount(), 2);
    QCOMPARE(rs.TextoEm(0, rs.Campo(u"Nome")) + rs.TextoEm(1, rs.Campo(u"Nome")), "MelSal");
}

void TesteStore::aceitaSinaisDeComentarioDentroDeTextos()
{
    const Banco banco = Abrir();
    const QString nome = "Bolo -- d'água /* \"bom\" */ ; [x";
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita(nome), kDia));
    QCOMPARE(banco.AbrirRecordset(SqlLista()).Texto("Nome"), nome);
    QCOMPARE(banco.AbrirRecordset(SqlLista() + " ; \r\n").RecordCount(), 1);
}

void TesteStore::recusaOQueNaoEDoLivro_data()
{
    QTest::addColumn<QString>("sql");
    QTest::newRow("outro arquivo") << "ATTACH 'outro.db' AS outro";
    QTest::newRow("ajuste") << "PRAGMA writable_schema=1";
    QTest::newRow("ajuste como tabela") << "Select * from pragma_table_info('Receitas')";
    QTest::newRow("tabela nova") << "Create table x(a)";
    QTest::newRow("tabela a menos") << "Drop table Receitas";
    QTest::newRow("tabela mudada") << "Alter table Receitas add column x";
    QTest::newRow("índice") << "Create index x on Receitas(Nome)";
    QTest::newRow("gatilho") << "Create temp trigger x after insert on Receitas begin select 1; end";
    QTest::newRow("esquema") << "Select * from sqlite_master";
    QTest::newRow("contadores") << "Delete from sqlite_sequence";
    QTest::newRow("transação") << "Begin";
    QTest::newRow("compactação") << "Vacuum";
    QTest::newRow("cópia") << "Vacuum into 'outro.db'";
    QTest::newRow("extensão") << "Select load_extension('x') from Receitas";
    QTest::newRow("memória") << "Select randomblob(100000000) from Receitas";
    QTest::newRow("versão") << "Select sqlite_version() from Receitas";
    QTest::newRow("sem fim")
        << "With recursive n(x) as (Select 1 union all Select x+1 from n) Select max(x) from n";
    QTest::newRow("subconsulta de outra tabela")
        << "Insert into Receitas(Nome,Tipo) values ('x',(Select count(*) from sqlite_master))";
}

void TesteStore::recusaOQueNaoEDoLivro()
{
    QFETCH(QString, sql);
    const Banco banco = Abrir();
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    QVERIFY(!ErroDe([&] { banco.ExecutarSQL(sql); }).isEmpty());
    QVERIFY(!ErroDe([&] { banco.AbrirRecordset(sql); }).isEmpty());
    QCOMPARE(banco.AbrirRecordset(SqlLista()).RecordCount(), 1);
    QCOMPARE(QDir(m_pasta->path()).entryList(QDir::Files), QStringList("dadosr.lst"));
}

void TesteStore::consultaNaoAltera()
{
    const Banco banco = Abrir();
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    QVERIFY(!ErroDe([&] { banco.AbrirRecordset("Delete from Receitas"); }).isEmpty());
    QVERIFY(!ErroDe([&] { banco.AbrirRecordset("Delete from Receitas returning Nome"); }).isEmpty());
    QCOMPARE(banco.AbrirRecordset(SqlLista()).RecordCount(), 1);
}

void TesteStore::buscaSoAsColunasPedidas()
{
    const Banco banco = Abrir();
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    const RecordSet rs = banco.AbrirRecordset(SqlLista() + ";", {"nome", "ID_RECEITAS"});
    QCOMPARE(rs.FieldNames(), QStringList({"nome", "ID_RECEITAS"}));
    QCOMPARE(rs.Texto("Nome"), "Sal");
    QCOMPARE(rs.Valor("id_receitas"), QVariant(1LL));
    QVERIFY_EXCEPTION_THROWN(rs.Valor("Modo"), ErroBanco);
    // The statement is still judged by itself.
    QVERIFY(!ErroDe([&] {
                 banco.AbrirRecordset("Select Nome from Receitas) union Select (1", {"Nome"});
             }).isEmpty());
    QVERIFY(!ErroDe([&] { banco.AbrirRecordset(SqlPesquisa({.Calorias = "5--"}), {"Nome"}); }).isEmpty());
}

void TesteStore::colunaQueNaoExisteEErro()
{
    const Banco banco = Abrir();
    QVERIFY(ErroDe([&] { banco.AbrirRecordset(SqlLista(), {"Nome", "Sabor"}); }).contains("Sabor"));
    QVERIFY(!ErroDe([&] { banco.AbrirRecordset(SqlLista(), {"Nome], [Modo"}); }).isEmpty());
}

void TesteStore::mantemAOrdemComColunas()
{
    const Banco banco = Abrir();
    QRandomGenerator sorte(7);
    for (int i = 0; i < 45; ++i)
        banco.ExecutarSQL(SqlInserirReceita(UmaReceita(QString("Receita %1").arg(sorte.bounded(40))), kDia));
    for (const QString &sql :
         {SqlLista(), SqlPesquisa({.Nome = "receita"}), SqlReceitasDoPacote({3, 9, 1, 40, 22})}) {
        const RecordSet tudo = banco.AbrirRecordset(sql);
        const RecordSet duas = banco.AbrirRecordset(sql, {"id_receitas", "Nome"});
        QVERIFY(tudo.RecordCount() > 1);
        QCOMPARE(duas.RecordCount(), tudo.RecordCount());
        const int campo = tudo.Campo(u"id_receitas");
        for (int i = 0; i < tudo.RecordCount(); ++i)
            QCOMPARE(duas.ValorEm(i, 0), tudo.ValorEm(i, campo));
    }
}

/// The engine's own plan: with the columns named, the method and the remarks are never taken out of a row.
void TesteStore::naoLeAsColunasQueNaoForamPedidas()
{
    const Banco banco = Abrir();
    banco.AbrirRecordset(SqlLista());
    OutroPrograma outro(banco.CaminhoDoLivro());
    sqlite3_create_collation(outro.Conexao(), "PORTUGUES", SQLITE_UTF8, nullptr,
                             [](void *, int, const void *, int, const void *) { return 0; });
    const auto le = [&outro](const QString &sql, int coluna) {
        for (const QString &instrucao : outro.Ler("EXPLAIN " + sql))
            if (const QStringList campos = instrucao.split('|');
                campos[1] == "Column" && campos[3] == QString::number(coluna))
                return true;
        return false;
    };
    const QStringList ordem = banco.AbrirRecordset(SqlLista()).FieldNames();
    const int modo = static_cast<int>(ordem.indexOf("Modo"));
    QCOMPARE(modo, 11);
    QCOMPARE(ordem.indexOf("Observacao"), 12);
    QVERIFY(le(SqlLista(), modo));
    QVERIFY(!le("Select [id_receitas],[Nome] from (" + SqlLista() + ")", modo));
    QVERIFY(!le("Select [id_receitas],[Nome] from (" + SqlLista() + ")", modo + 1));
}

void TesteStore::oResultadoNaoDependeDoBanco()
{
    RecordSet rs;
    {
        const Banco banco = Abrir();
        for (int i = 0; i < 60; ++i)
            banco.ExecutarSQL(
                SqlInserirIngrediente(1, QString("ingrediente %1").arg(i).repeated(100), "", ""));
        rs = banco.AbrirRecordset(SqlIngredientes(1));
        QVERIFY(QFile::remove(banco.CaminhoDoLivro()));
    }
    const RecordSet copia = rs;
    int i = 0;
    for (; !rs.Eof(); rs.MoveNext(), ++i)
        QCOMPARE(rs.Texto("Ingrediente"), QString("ingrediente %1").arg(i).repeated(100));
    QCOMPARE(i, 60);
    QCOMPARE(copia.Texto("Ingrediente"), QString("ingrediente 0").repeated(100));
    rs.MoveFirst();
    QVERIFY(!rs.Eof());
}

void TesteStore::oResultadoAcabaComErro()
{
    const Banco banco = Abrir();
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Sal"), kDia));
    RecordSet rs = banco.AbrirRecordset(SqlLista());
    QVERIFY_EXCEPTION_THROWN(rs.Valor("Sabor"), ErroBanco);
    QVERIFY_EXCEPTION_THROWN(rs.Valor(99), ErroBanco);
    QVERIFY_EXCEPTION_THROWN(rs.Valor(-1), ErroBanco);
    rs.MoveNext();
    QVERIFY(rs.Eof());
    QVERIFY_EXCEPTION_THROWN(rs.Valor("Nome"), ErroBanco);
    QVERIFY_EXCEPTION_THROWN(RecordSet().Valor(0), ErroBanco);
    QVERIFY(RecordSet().Eof());
}

void TesteStore::escreveNumerosNaNotacaoDoUsuario()
{
    const Banco banco = Abrir();
    banco.ExecutarSQL("Insert into Receitas(Nome,Porcoes,Calorias) values ('Sal','2,5',300)");
    const RecordSet rs = banco.AbrirRecordset(SqlLista());
    QCOMPARE(rs.Texto("Porcoes"), "2,5");
    QCOMPARE(rs.Texto("Calorias"), "300");
}

void TesteStore::mostraAAmpulhetaEnquantoTrabalha()
{
    Banco banco = Abrir();
    QFile arquivo(banco.CaminhoDoLivro());
    QVERIFY(arquivo.open(QIODevice::WriteOnly));
    arquivo.write(QByteArray("\0\1\0\0Standard Jet DB\0", 20));
    arquivo.close();
    bool emEspera = false;
    banco.DefinirConversor([&](const QString &caminho) {
        emEspera = Ponteiro::EmEspera();
        QFile::remove(caminho);
    });
    QVERIFY(!Ponteiro::EmEspera());
    banco.AbrirRecordset(SqlLista());
    QVERIFY(emEspera);
    QVERIFY(!Ponteiro::EmEspera());
    banco.ExecutarSQL(SqlExcluirReceita(1));
    QVERIFY(!Ponteiro::EmEspera());
}

void TesteStore::aFalhaDeixaAAmpulheta()
{
    const Banco banco = Abrir();
    QVERIFY(!ErroDe([&] { banco.AbrirRecordset("Select"); }).isEmpty());
    QVERIFY(Ponteiro::EmEspera());
    banco.AbrirRecordset(SqlLista());
    QVERIFY(!Ponteiro::EmEspera());
    QVERIFY(!ErroDe([&] { banco.ExecutarSQL("Delete"); }).isEmpty());
    QVERIFY(Ponteiro::EmEspera());
    banco.ExecutarSQL(SqlExcluirReceita(1));
    QVERIFY(!Ponteiro::EmEspera());
}

void TesteStore::outrasFerramentasPodemGravar()
{
    const Banco banco = Abrir();
    banco.AbrirRecordset(SqlLista());
    OutroPrograma outro(banco.CaminhoDoLivro());
    QCOMPARE(
        outro.Executar("INSERT INTO Receitas(Nome, Porcoes, Calorias) VALUES ('De fora', '1,5', '2,25')"),
        "");
    QVERIFY(outro.Executar("INSERT INTO Receitas(Nome, Porcoes) VALUES ('De fora', 'abc')")
                .contains("não é um número"));
    QCOMPARE(outro.Executar("PRAGMA recursive_triggers=ON"), "");
    QCOMPARE(outro.Executar("UPDATE Receitas SET Porcoes = '3,5'"), "");
    QVERIFY(!outro.Executar("UPDATE Receitas SET Porcoes = 'abc'").isEmpty());
    QCOMPARE(outro.Ler("SELECT Porcoes, Calorias FROM Receitas"), QStringList("3.5|2.25"));
    QCOMPARE(outro.Ler("PRAGMA journal_mode"), QStringList("delete"));
}

QTEST_GUILESS_MAIN(TesteStore)
#include "teste_store.moc"
