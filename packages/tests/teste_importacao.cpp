#include "base/Alcance.h"
#include "base/PaginaCodigo.h"
#include "base/Ponteiro.h"
#include "packages/ComandosImportacao.h"
#include "packages/Pacote.h"
#include "packages/Recipiente.h"
#include "packages/frmImportacao.h"
#include "packages/tests/Duplos.h"

#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <memory>

namespace
{
const QString kSucesso = "nenhum|Importação de Pacote do Cozinhario 2005 Realizada com Sucesso!";
const QString kCorrompido = "parada|Pacote do Cozinhario 2005 Corrompido!\r\nImpossível Continuar!";
const QString kInvalido = "parada|Pacote do Cozinhario 2005 Inválido!";
const QString kCabecalho = "Exportação do Cozinhario 2005 por Tamarel\r\n";

QByteArray Recipiente9(const QByteArray &texto)
{
    QByteArray recipiente;
    Recipiente::Compactar(texto, recipiente);
    return recipiente;
}

QString Linha(const QString &tag, const QString &valor)
{
    return "<" + tag + ">" + valor + "</" + tag + ">\r\n";
}

QString Registro(const QString &nome, const QString &outros = "")
{
    return "<RECEITA>\r\n" + Linha("NOME", nome) + outros + "<INGREDIENTES>\r\n</INGREDIENTES>\r\n";
}

QByteArray PacoteDe(const QString &registros)
{
    return Recipiente9(PaginaCodigo::ParaAnsi(kCabecalho + registros));
}
} // namespace

class TesteImportacao : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void listaTodasSelecionadasComOsNomesComoEstao();
    void controlesTemNomesTextosETeclas();
    void importaSoAsEscolhidas();
    void espacoDesmarcaPeloTeclado();
    void gravaCadaCampoComoPrometido();
    void vaziosViramZeroNuloOuTexto();
    void figuraGanhaONomeDoNumeroNovo();
    void figuraQueNaoEFiguraFicaComoEsta();
    void figuraQueNaoSeGravaEAvisada();
    void comandosSaoOsPrometidos();

    void nomeRepetidoPerguntaEComSimDobra();
    void nomeRepetidoComNaoPulaSoAquela();
    void nomeComVirgulaNuncaERepetido();
    void nomeComApostrofoNaoPerguntaEEntra();
    void aQueFalhaEDitaEAsOutrasSeguem();
    void textoGrandeDemaisRecusaSoAquelaPeloNome();
    void controlesViramBrancos();
    void figuraGrandeChegaInteira();
    void valorQueESqlNaoEstragaOLivro_data();
    void valorQueESqlNaoEstragaOLivro();
    void ingredienteQueFalhaDeixaReceitaIncompletaEAvisa();
    void muitasFalhasCabemNaMensagem();

    void doisCliquesImportamUmaVez();
    void teclaDeAtalhoImporta();
    void progressoCresceAteOMaximo();
    void cancelarNaoImportaNada_data();
    void cancelarNaoImportaNada();
    void pararNoMeioDeixaOQueEntrou_data();
    void pararNoMeioDeixaOQueEntrou();
    void pararNumaReceitaDeMuitasLinhas();
    void receitaComumNaoFicaPelaMetade();
    void perguntaFechadaDevolveOCancelar();
    void perguntaFechadaValeNaoEImportarSegue();

    void abrePacoteDeQualquerNivelESemOZero();
    void recusaArquivo_data();
    void recusaArquivo();
    void registroCortadoEntraComoChegou();
    void recusaPacoteGrandeDemais();
    void recusaReceitasDemais();
    void pastaSemEscritaEAvisada();
    void restoDeOutraVezESubstituidoEApagado();
    void doisPacotesAoMesmoTempoNaoSeMisturam();

private:
    QString Pacote(const QByteArray &bytes);
    frmImportacao &Abrir(const QByteArray &bytes);
    QListWidget *Lista() const { return m_form->findChild<QListWidget *>("lstImportacao"); }
    QPushButton *Importar() const { return m_form->findChild<QPushButton *>("cmdSalvarIngredientes"); }
    QPushButton *Cancelar() const { return m_form->findChild<QPushButton *>("cmdCancelar"); }
    void Clicar(QWidget *controle) { QTest::mouseClick(controle, Qt::LeftButton); }
    void ClicarNaLinha(int linha);
    void Desistir(const QString &como);
    QString Trabalho() const { return m_livro->Caminho("PacoteReceita.lrs"); }

    std::unique_ptr<Livro> m_livro;
    std::unique_ptr<QTemporaryDir> m_correio;
    AvisosDeTeste m_avisos;
    RelogioParado m_relogio;
    const Alcance m_alcance;
    std::unique_ptr<frmImportacao> m_form;
};

void TesteImportacao::init()
{
    m_form.reset();
    m_livro = std::make_unique<Livro>();
    m_correio = std::make_unique<QTemporaryDir>();
    m_avisos = {};
    m_form = std::make_unique<frmImportacao>(m_livro->banco, m_livro->figuras, m_avisos, m_relogio);
}

QString TesteImportacao::Pacote(const QByteArray &bytes)
{
    const QString caminho = m_correio->filePath("Pacote da Vovó.lr$");
    GravarArquivo(caminho, bytes);
    return caminho;
}

frmImportacao &TesteImportacao::Abrir(const QByteArray &bytes)
{
    if (m_form->CarregarReceitas(Pacote(bytes))) {
        m_form->show();
        if (!QTest::qWaitForWindowActive(m_form.get()))
            qWarning("the dialog did not become active");
    }
    return *m_form;
}

void TesteImportacao::ClicarNaLinha(int linha)
{
    const QRect lugar = Lista()->visualItemRect(Lista()->item(linha));
    QTest::mouseClick(Lista()->viewport(), Qt::LeftButton, {}, lugar.center());
}

void TesteImportacao::listaTodasSelecionadasComOsNomesComoEstao()
{
    Abrir(Dourado("PacoteReceita.lr$"));
    QCOMPARE(Lista()->count(), 3);
    QCOMPARE(Lista()->item(0)->text(), "Arroz doce");
    QCOMPARE(Lista()->item(1)->text(), "Bolo de fubá\\VG/ simples");
    QCOMPARE(Lista()->item(2)->text(), "Pão d'água");
    QCOMPARE(Lista()->selectedItems().size(), 3);
    QCOMPARE(LerArquivo(Trabalho()), Dourado("PacoteReceitas.lrs") + '\0');
    QCOMPARE(m_avisos.ditos, QStringList());
    QCOMPARE(m_livro->Contar("Receitas"), 0);
}

void TesteImportacao::controlesTemNomesTextosETeclas()
{
    Abrir(Dourado("PacoteReceita.lr$"));
    QCOMPARE(m_form->objectName(), "frmImportacao");
    QCOMPARE(m_form->findChild<QLabel *>("lblGeral")->text(), "Listagem das Receitas Existentes no Pacote :");
    QCOMPARE(Importar()->text(), "&Importar");
    QCOMPARE(Cancelar()->text(), "&Cancelar");
    QCOMPARE(Lista()->selectionMode(), QAbstractItemView::MultiSelection);
    QVERIFY(m_form->findChild<QProgressBar *>("PrgrssBr")->isHidden());
    for (const QWidget *controle : std::initializer_list<QWidget *>{Lista(), Importar(), Cancelar()}) {
        QVERIFY(!controle->accessibleName().isEmpty());
        QVERIFY(!controle->toolTip().isEmpty());
    }
    QVERIFY(Lista()->hasFocus());
    QTest::keyClick(m_form->focusWidget(), Qt::Key_Tab);
    QVERIFY(Importar()->hasFocus());
    QTest::keyClick(m_form->focusWidget(), Qt::Key_Tab);
    QVERIFY(Cancelar()->hasFocus());
}

void TesteImportacao::importaSoAsEscolhidas()
{
    const QByteArray pacote = PacoteDe(Registro("A") + Registro("B") + Registro("C"));
    Abrir(pacote);
    ClicarNaLinha(1);
    QCOMPARE(Lista()->selectedItems().size(), 2);
    Clicar(Importar());
    QCOMPARE(m_livro->Nomes(), QStringList({"A", "C"}));
    QCOMPARE(m_avisos.ditos, QStringList(kSucesso));
    QCOMPARE(m_form->Resultado(), frmImportacao::Desfecho::Importado);
    QVERIFY(!m_form->isVisible());
    QVERIFY(!Ponteiro::EmEspera());
    QCOMPARE(m_livro->Arquivos(), QStringList("dadosr.lst"));
    QCOMPARE(LerArquivo(m_correio->filePath("Pacote da Vovó.lr$")), pacote);
}

void TesteImportacao::espacoDesmarcaPeloTeclado()
{
    Abrir(PacoteDe(Registro("A") + Registro("B") + Registro("C")));
    Lista()->setFocus();
    QTest::keyClick(Lista(), Qt::Key_Home);
    QTest::keyClick(Lista(), Qt::Key_Space);
    QVERIFY(!Lista()->item(0)->isSelected());
    Clicar(Importar());
    QCOMPARE(m_livro->Nomes(), QStringList({"B", "C"}));
}

void TesteImportacao::gravaCadaCampoComoPrometido()
{
    Abrir(PacoteDe(Registro(
        "Bolo\\VG/ bom",
        Linha("CLASSIFICACAO", "Bolos\\VG/ d'ovos") + Linha("MODO", "Bata\\VG/ bem.</BR\\>Asse d'um lado.") +
            Linha("PORCOES", "2,5") + Linha("PREPARO", "1 h\\VG/ d'olho") + Linha("TIPO_CALORIAS", "P") +
            Linha("CALORIAS", "120") + Linha("TIPO", "2") + Linha("ORIGEM", "Vovó\\VG/ d'ouro") +
            Linha("OBSERVACAO", "Sirva\\VG/</BR\\>d'uma vez"))));
    Clicar(Importar());
    QCOMPARE(m_avisos.ditos, QStringList(kSucesso));
    const RecordSet rs = m_livro->banco.AbrirRecordset("Select * from Receitas");
    QCOMPARE(rs.RecordCount(), 1);
    QCOMPARE(rs.Texto(u"Nome"), "Bolo, bom");
    QVERIFY(rs.Texto(u"Data").contains("2005") && rs.Texto(u"Data").contains("21"));
    QCOMPARE(rs.Texto(u"Classificacao"), "Bolos, d'ovos");
    QCOMPARE(rs.Texto(u"Modo"), "Bata, bem.\r\nAsse d'um lado.");
    QCOMPARE(rs.Valor(u"Tipo").toInt(), 2);
    QCOMPARE(rs.Texto(u"Origem"), "Vovó, d'ouro");
    QCOMPARE(rs.Valor(u"Porcoes").toDouble(), 2.5);
    QCOMPARE(rs.Texto(u"Preparo"), "1 h, d'olho");
    QCOMPARE(rs.Texto(u"Tipo_Calorias"), "P");
    QCOMPARE(rs.Valor(u"Calorias").toDouble(), 120.0);
    QCOMPARE(rs.Texto(u"Observacao"), "Sirva,\r\nd'uma vez");
    QVERIFY(rs.Valor(u"Figura").isNull());
}

void TesteImportacao::vaziosViramZeroNuloOuTexto()
{
    Abrir(PacoteDe(
        "<RECEITA>\r\n<NOME>A</NOME>\r\n<INGREDIENTES>\r\n<ITEM>\r\n<INGREDIENTE>Sal</INGREDIENTE>\r\n"
        "<QUANTIDADE></QUANTIDADE>\r\n<UNIDADE></UNIDADE>\r\n<ITEM>\r\n<INGREDIENTE>Ovo d'água\\VG/ "
        "novo</INGREDIENTE>\r\n<QUANTIDADE>1\\VG/5'</QUANTIDADE>\r\n<UNIDADE>d'uma\\VG/ só</UNIDADE>\r\n"
        "</INGREDIENTES>\r\n"));
    Clicar(Importar());
    QCOMPARE(m_avisos.ditos, QStringList(kSucesso));
    const RecordSet rs = m_livro->banco.AbrirRecordset("Select * from Receitas");
    for (const QStringView nulo :
         {u"Classificacao", u"Tipo", u"Origem", u"Preparo", u"Tipo_Calorias", u"Observacao", u"Figura"})
        QVERIFY2(rs.Valor(nulo).isNull(), qPrintable(nulo.toString()));
    QVERIFY(!rs.Valor(u"Modo").isNull());
    QCOMPARE(rs.Texto(u"Modo"), "");
    QCOMPARE(rs.Valor(u"Porcoes").toDouble(), 0.0);
    QVERIFY(!rs.Valor(u"Porcoes").isNull());
    QCOMPARE(rs.Valor(u"Calorias").toDouble(), 0.0);
    QVERIFY(!rs.Valor(u"Calorias").isNull());
    QCOMPARE(m_livro->Coluna("Ingredientes", "Ingrediente", "id_ingredientes"),
             QStringList({"Sal", "Ovo d'água, novo"}));
    QCOMPARE(m_livro->Coluna("Ingredientes", "Quantidade", "id_ingredientes"), QStringList({"NULL", "1,5'"}));
    QCOMPARE(m_livro->Coluna("Ingredientes", "Unidade", "id_ingredientes"),
             QStringList({"NULL", "d'uma, só"}));
    QCOMPARE(m_livro->Coluna("Ingredientes", "id_receitas", "id_ingredientes"), QStringList({"1", "1"}));
}

void TesteImportacao::figuraGanhaONomeDoNumeroNovo()
{
    m_livro->banco.ExecutarSQL("Insert into Receitas(Nome,Modo) values ('Já havia','x')");
    Abrir(Dourado("PacoteReceita.lr$"));
    ClicarNaLinha(2); // its name holds an apostrophe
    Clicar(Importar());
    QCOMPARE(m_avisos.ditos, QStringList(kSucesso));
    QCOMPARE(m_livro->Coluna("Receitas", "Figura", "id_receitas"),
             QStringList({"NULL", "NULL", "F0000003.img"}));
    QCOMPARE(LerArquivo(m_livro->Caminho("Fotos\\F0000003.img")), Dourado("figura.png"));
    QCOMPARE(QDir(m_livro->Caminho("Fotos")).entryList(QDir::Files), QStringList("F0000003.img"));
    QCOMPARE(m_livro->Contar("Ingredientes"), 3);
}

void TesteImportacao::figuraQueNaoEFiguraFicaComoEsta()
{
    Abrir(PacoteDe(Registro("A", Linha("FIGURA", "x") + Linha("DADOS_FIGURA", "TW*u")) +
                   Registro("B", Linha("FIGURA", "x")) + Registro("C", Linha("DADOS_FIGURA", "TWFu"))));
    Clicar(Importar());
    QCOMPARE(m_avisos.ditos, QStringList(kSucesso));
    QCOMPARE(m_livro->Coluna("Receitas", "Figura", "id_receitas"),
             QStringList({"F0000001.img", "F0000002.img", "NULL"}));
    QCOMPARE(LerArquivo(m_livro->Caminho("Fotos\\F0000001.img")), QByteArray("M`."));
    QCOMPARE(LerArquivo(m_livro->Caminho("Fotos\\F0000002.img")), QByteArray());
    QVERIFY(CarregarImagem(m_livro->Caminho("Fotos\\F0000001.img")).isNull());
}

void TesteImportacao::figuraQueNaoSeGravaEAvisada()
{
    QVERIFY(GravarArquivo(m_livro->Caminho("Fotos"), "um arquivo no lugar da pasta"));
    Abrir(PacoteDe(Registro("A", Linha("FIGURA", "x") + Linha("DADOS_FIGURA", "TWFu")) + Registro("B")));
    Clicar(Importar());
    QCOMPARE(m_livro->Nomes(), QStringList({"A", "B"}));
    QCOMPARE(m_avisos.ditos.size(), 2);
    QVERIFY(m_avisos.ditos[0].startsWith("parada|Receita Importada Incompleta:\r\n\r\nA\r\n\r\nA figura"));
    QVERIFY(m_avisos.ditos[1].startsWith(
        "exclamação|Importação de Pacote do Cozinhario 2005 Concluída com Falhas!"));
}

void TesteImportacao::comandosSaoOsPrometidos()
{
    const QString cheia =
        "<NOME>Pão d'ló\\VG/ x</NOME><CLASSIFICACAO>a'</CLASSIFICACAO><MODO>m'</BR\\>n</MODO>"
        "<PORCOES>2'</PORCOES><PREPARO>p\\VG/</PREPARO><TIPO_CALORIAS>R'</TIPO_CALORIAS>"
        "<CALORIAS>9\\VG/</CALORIAS><TIPO>1'</TIPO><ORIGEM>o'</ORIGEM><OBSERVACAO>b</BR\\></OBSERVACAO>";
    const QDate dia(2005, 11, 21);
    QCOMPARE(ComandosImportacao::SqlInserirReceita(Pacote::Registro(cheia), dia),
             "Insert into "
             "Receitas(Nome,Data,Classificacao,Modo,Tipo,Origem,Porcoes,Preparo,Tipo_Calorias,Calorias,"
             "Observacao,Figura) values ('Pão d''ló, "
             "x',CDATE('2005-11-21'),'a''','m''\r\nn',1','o''','2'','p,','R'',"
             "'9\\VG/','b\r\n',NULL)");
    QCOMPARE(ComandosImportacao::SqlInserirReceita(Pacote::Registro(""), dia),
             "Insert into "
             "Receitas(Nome,Data,Classificacao,Modo,Tipo,Origem,Porcoes,Preparo,Tipo_Calorias,Calorias,"
             "Observacao,Figura) values ('',CDATE('2005-11-21'),NULL,'',NULL,NULL,0,NULL,NULL,0,NULL,NULL)");
    const QString item =
        "<INGREDIENTE>i'\\VG/</INGREDIENTE><QUANTIDADE>q'</QUANTIDADE><UNIDADE>u\\VG/</UNIDADE>";
    QCOMPARE(
        ComandosImportacao::SqlInserirIngrediente(7, Pacote::Registro(item)),
        "Insert into Ingredientes(id_receitas,Ingrediente,Quantidade,Unidade) values (7,'i'',','q''','u,')");
    QCOMPARE(ComandosImportacao::SqlInserirIngrediente(7, Pacote::Registro("<INGREDIENTE>i</INGREDIENTE>")),
             "Insert into Ingredientes(id_receitas,Ingrediente,Quantidade,Unidade) values (7,'i',NULL,NULL)");
}

void TesteImportacao::nomeRepetidoPerguntaEComSimDobra()
{
    m_livro->banco.ExecutarSQL("Insert into Receitas(Nome,Modo) values ('PÃO de Ló','x')");
    m_avisos.resposta = true;
    Abrir(PacoteDe(Registro("Pão de ló")));
    Clicar(Importar());
    QCOMPARE(
        m_avisos.ditos,
        QStringList(
            {"pergunta|Você já Possui uma Receita com o Título: \r\n\r\nPão de ló\r\n\r\nCadastrada em seu "
             "Cozinhario 2005.\r\n\r\nDeseja Cadastrar esta Nova Receita com o Mesmo Nome?",
             kSucesso}));
    QCOMPARE(m_livro->Nomes(), QStringList({"PÃO de Ló", "Pão de ló"}));
}

void TesteImportacao::nomeRepetidoComNaoPulaSoAquela()
{
    m_livro->banco.ExecutarSQL("Insert into Receitas(Nome,Modo) values ('B','x')");
    Abrir(PacoteDe(Registro("A") + Registro("B") + Registro("C")));
    Clicar(Importar());
    QCOMPARE(m_livro->Nomes(), QStringList({"B", "A", "C"}));
    QCOMPARE(m_avisos.ditos.size(), 2);
    QCOMPARE(m_avisos.ditos.last(), kSucesso);
}

void TesteImportacao::nomeComVirgulaNuncaERepetido()
{
    m_livro->banco.ExecutarSQL("Insert into Receitas(Nome,Modo) values ('Bolo, simples','x')");
    Abrir(PacoteDe(Registro("Bolo\\VG/ simples")));
    Clicar(Importar());
    QCOMPARE(m_avisos.ditos, QStringList(kSucesso));
    QCOMPARE(m_livro->Nomes(), QStringList({"Bolo, simples", "Bolo, simples"}));
}

void TesteImportacao::nomeComApostrofoNaoPerguntaEEntra()
{
    m_livro->banco.ExecutarSQL("Insert into Receitas(Nome,Modo) values ('Pão d''água','x')");
    Abrir(Dourado("PacoteReceita.lr$"));
    Clicar(Importar());
    QCOMPARE(m_livro->Nomes(), QStringList({"Pão d'água", "Arroz doce", "Bolo de fubá, simples", "Pão d'água"}));
    QCOMPARE(m_avisos.ditos, QStringList(kSucesso));
    QVERIFY(!Ponteiro::EmEspera());
    QCOMPARE(m_livro->Arquivos(), QStringList("dadosr.lst"));
}

void TesteImportacao::aQueFalhaEDitaEAsOutrasSeguem()
{
    Abrir(PacoteDe(Registro("A") + Registro("B\\VG/ ruim", Linha("TIPO", "x")) + Registro("C")));
    Clicar(Importar());
    QCOMPARE(m_livro->Nomes(), QStringList({"A", "C"}));
    QCOMPARE(m_avisos.ditos,
             QStringList({"parada|Receita Não Importada:\r\n\r\nB, ruim\r\n\r\nO campo TIPO da receita, no pacote, "
                          "é inválido.",
                          "exclamação|Importação de Pacote do Cozinhario 2005 Concluída com Falhas!\r\n\r\n"
                          "Receitas que não foram importadas, ou não por inteiro:\r\n\r\nB, ruim"}));
    QCOMPARE(m_form->Resultado(), frmImportacao::Desfecho::Importado);
    QVERIFY(!Ponteiro::EmEspera());
    QCOMPARE(m_livro->Arquivos(), QStringList("dadosr.lst"));
}

void TesteImportacao::textoGrandeDemaisRecusaSoAquelaPeloNome()
{
    const QString grande(5'000'000, 'x');
    QString linhas = "<RECEITA>\r\n" + Linha("NOME", "C") + "<INGREDIENTES>\r\n";
    linhas += QString("<ITEM>\r\n<INGREDIENTE>Sal</INGREDIENTE>\r\n").repeated(5001) + "</INGREDIENTES>\r\n";
    Abrir(PacoteDe(Registro("A") + Registro("B", Linha("MODO", grande)) + linhas + Registro("D")));
    Clicar(Importar());
    QCOMPARE(m_livro->Nomes(), QStringList({"A", "D"}));
    QCOMPARE(m_livro->Contar("Ingredientes"), 0);
    QCOMPARE(m_avisos.ditos.size(), 3);
    QVERIFY(m_avisos.ditos[0].startsWith("parada|Receita Não Importada:\r\n\r\nB\r\n\r\nO campo MODO"));
    QVERIFY(m_avisos.ditos[1].startsWith("parada|Receita Não Importada:\r\n\r\nC\r\n\r\nA receita tem ingredientes"));
    QVERIFY(m_avisos.ditos[2].endsWith("\r\nB\r\nC"));
}

void TesteImportacao::controlesViramBrancos()
{
    m_livro->banco.ExecutarSQL("Insert into Receitas(Nome,Modo) values ('Torta  Bcc: x','x')");
    Abrir(PacoteDe("<RECEITA>\r\n" +
                   Linha("NOME", "Torta\r\nBcc: x") + Linha("CLASSIFICACAO", "a\nb") + Linha("PREPARO", "1\th") +
                   Linha("ORIGEM", QString("o") + QChar(0) + "p") + Linha("MODO", "um</BR\\>dois\ttrês") +
                   "<INGREDIENTES>\r\n<ITEM>\r\n" + Linha("INGREDIENTE", "Sal\r\ngrosso") +
                   Linha("QUANTIDADE", "1\n2") + Linha("UNIDADE", "g\v") + "</INGREDIENTES>\r\n"));
    QCOMPARE(Lista()->item(0)->text(), "Torta  Bcc: x");
    m_avisos.resposta = true;
    Clicar(Importar());
    QCOMPARE(m_avisos.ditos.size(), 2); // the name is found as it is stored
    const RecordSet rs = m_livro->banco.AbrirRecordset("Select * from Receitas Where id_receitas = 2");
    QCOMPARE(rs.Texto(u"Nome"), "Torta  Bcc: x");
    QCOMPARE(rs.Texto(u"Classificacao"), "a b");
    QCOMPARE(rs.Texto(u"Preparo"), "1 h");
    QCOMPARE(rs.Texto(u"Origem"), "o p");
    QCOMPARE(rs.Texto(u"Modo"), "um\r\ndois\ttrês");
    QCOMPARE(m_livro->Coluna("Ingredientes", "Ingrediente", "id_ingredientes"), QStringList("Sal  grosso"));
    QCOMPARE(m_livro->Coluna("Ingredientes", "Quantidade", "id_ingredientes"), QStringList("1 2"));
    QCOMPARE(m_livro->Coluna("Ingredientes", "Unidade", "id_ingredientes"), QStringList("g "));
}

void TesteImportacao::figuraGrandeChegaInteira()
{
    QByteArray dados(5'000'000, Qt::Uninitialized);
    for (qsizetype i = 0; i < dados.size(); ++i)
        dados[i] = static_cast<char>(i * 31 + i / 257);
    ::Pacote::Receita receita;
    receita.Nome = "A";
    receita.Figura = "x.img";
    receita.DadosFigura = dados;
    receita.Ingredientes = {{"Sal", "1", "g"}};
    Abrir(Recipiente9(::Pacote::EscreverCabecalho() + ::Pacote::EscreverReceita(receita)));
    Clicar(Importar());
    QCOMPARE(m_avisos.ditos, QStringList(kSucesso));
    QVERIFY(LerArquivo(m_livro->Caminho("Fotos\\F0000001.img")) == dados);
    QCOMPARE(m_livro->Contar("Ingredientes"), 1);
}

void TesteImportacao::valorQueESqlNaoEstragaOLivro_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("valor");
    QTest::newRow("segundo comando") << "TIPO"
                                     << "1,'o',0,NULL,NULL,0,NULL,NULL); Delete from Receitas; --";
    QTest::newRow("resto em comentário") << "TIPO"
                                         << "1,'o',0,NULL,NULL,0,NULL,NULL) --";
    QTest::newRow("comentário com barra") << "TIPO"
                                          << "1 /* ";
    QTest::newRow("mais linhas") << "TIPO"
                                 << "1,'o',0,NULL,NULL,0,NULL,NULL),('X',NULL,NULL,'m',1";
    QTest::newRow("mais linhas só com números") << "TIPO"
                                                << "1,1,1,1,1,1,1,1),(1,1,1,1,1";
    QTest::newRow("dois sinais") << "TIPO"
                                 << "1--";
    QTest::newRow("mais linhas pelas porções") << "PORCOES"
                                               << "0',NULL,NULL,'0',NULL,NULL),('X',NULL,NULL,'m',1,'o','0";
    QTest::newRow("mais linhas pelas calorias") << "CALORIAS"
                                                << "0',NULL,NULL),('X',NULL,NULL,'m',1,'o','0',NULL,NULL,'0";
    QTest::newRow("mais linhas pelo tipo de calorias")
        << "TIPO_CALORIAS"
        << "P','0',NULL,NULL),('X',NULL,NULL,'m',1,'o','0',NULL,'R";
    QTest::newRow("outro arquivo") << "TIPO"
                                   << "1); Attach 'x.db' as x; --";
    QTest::newRow("palavra") << "TIPO"
                             << "abc";
    QTest::newRow("duas colunas") << "TIPO"
                                  << "1,5";
    QTest::newRow("texto aberto") << "TIPO"
                                  << "'";
}

void TesteImportacao::valorQueESqlNaoEstragaOLivro()
{
    QFETCH(QString, tag);
    QFETCH(QString, valor);
    m_livro->banco.ExecutarSQL("Insert into Receitas(Nome,Modo) values ('Já havia','x')");
    Abrir(PacoteDe(Registro("A") + Registro("B", Linha(tag, valor)) + Registro("C")));
    Clicar(Importar());
    QCOMPARE(m_livro->Nomes(), QStringList({"Já havia", "A", "C"}));
    QVERIFY(m_avisos.ditos[0].startsWith("parada|Receita Não Importada:\r\n\r\nB\r\n\r\n"));
    QCOMPARE(m_livro->Arquivos(), QStringList("dadosr.lst"));
}

void TesteImportacao::ingredienteQueFalhaDeixaReceitaIncompletaEAvisa()
{
    // Longer than the rest of the disk: the line's statement fails, the recipe has its row already.
    Abrir(PacoteDe("<RECEITA>\r\n<NOME>A</NOME>\r\n<INGREDIENTES>\r\n<ITEM>\r\n<INGREDIENTE>Sal</"
                   "INGREDIENTE>\r\n<ITEM>\r\n<INGREDIENTE>" +
                   QString(1'000'000, 'P') + "</INGREDIENTE>\r\n</INGREDIENTES>\r\n" + Registro("B")));
    {
        const LimiteDeArquivo disco(300'000);
        Clicar(Importar());
    }
    QCOMPARE(m_livro->Nomes(), QStringList({"A", "B"}));
    QCOMPARE(m_livro->Contar("Ingredientes"), 1);
    QVERIFY(m_avisos.ditos[0].startsWith("parada|Receita Importada Incompleta:\r\n\r\nA\r\n\r\n"));
    QVERIFY(m_avisos.ditos[1].startsWith("exclamação|"));
}

void TesteImportacao::muitasFalhasCabemNaMensagem()
{
    const QString ruim = Linha("TIPO", "x");
    QString registros;
    for (int i = 0; i < 4; ++i)
        registros += Registro("Pão " + QString::number(i), ruim);
    registros += Registro(QString(5000, 'x'), ruim);
    for (int i = 5; i < 21; ++i)
        registros += Registro("Pão " + QString::number(i), ruim);
    Abrir(PacoteDe(registros));
    Clicar(Importar());
    // The first few get a box each; a package of thousands must not.
    QCOMPARE(m_avisos.ditos.size(), 6);
    QVERIFY(m_avisos.ditos[4].contains("\r\n" + QString(100, 'x') + "...\r\n"));
    QVERIFY(m_avisos.ditos.last().endsWith("\r\nPão 14\r\n... e mais 6"));
    QCOMPARE(m_livro->Contar("Receitas"), 0);
}

void TesteImportacao::doisCliquesImportamUmaVez()
{
    Abrir(PacoteDe(Registro("A") + Registro("B")));
    m_avisos.aoAvisar = [this] { Clicar(Importar()); };
    Clicar(Importar());
    m_avisos.aoAvisar = nullptr;
    Importar()->click();
    QCOMPARE(m_livro->Nomes(), QStringList({"A", "B"}));
    QCOMPARE(m_avisos.ditos, QStringList(kSucesso));
}

void TesteImportacao::teclaDeAtalhoImporta()
{
    Abrir(PacoteDe(Registro("A")));
    QTest::keyClick(m_form.get(), Qt::Key_I, Qt::AltModifier);
    QTRY_COMPARE(m_avisos.ditos, QStringList(kSucesso));
    QCOMPARE(m_livro->Nomes(), QStringList("A"));
}

void TesteImportacao::progressoCresceAteOMaximo()
{
    Abrir(PacoteDe(Registro("A") + Registro("B") + Registro("C")));
    auto *barra = m_form->findChild<QProgressBar *>("PrgrssBr");
    QVERIFY(!barra->isTextVisible());
    QList<int> valores;
    connect(barra, &QProgressBar::valueChanged, this, [&](int valor) { valores += valor; });
    bool visivel = false;
    bool trabalhoApagado = false;
    m_avisos.aoAvisar = [&] {
        visivel = barra->isVisible();
        trabalhoApagado = !QFile::exists(Trabalho());
    };
    Clicar(Importar());
    QVERIFY(visivel);
    QVERIFY(trabalhoApagado);
    QCOMPARE(barra->maximum(), 3);
    QCOMPARE(valores, QList<int>({0, 1, 2, 3}));
}

void TesteImportacao::cancelarNaoImportaNada_data()
{
    QTest::addColumn<QString>("como");
    QTest::newRow("botão") << "botão";
    QTest::newRow("tecla de atalho") << "atalho";
    QTest::newRow("Esc") << "esc";
    QTest::newRow("fechar a janela") << "fechar";
}

void TesteImportacao::cancelarNaoImportaNada()
{
    QFETCH(QString, como);
    const QByteArray pacote = Dourado("PacoteReceita.lr$");
    QTimer::singleShot(0, m_form.get(), [&] {
        QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
        QVERIFY(m_form->isModal());
        QVERIFY(QFile::exists(Trabalho()));
        Desistir(como);
    });
    bool preso = false;
    QTimer::singleShot(20'000, m_form.get(), [&] {
        preso = true;
        m_form->done(0);
    });
    QCOMPARE(m_form->Executar(Pacote(pacote)), frmImportacao::Desfecho::Cancelado);
    QVERIFY(!preso);
    QCOMPARE(m_avisos.ditos, QStringList());
    QVERIFY(!QFile::exists(Trabalho()));
    QCOMPARE(m_livro->Contar("Receitas"), 0);
    QCOMPARE(LerArquivo(m_correio->filePath("Pacote da Vovó.lr$")), pacote);
}

void TesteImportacao::Desistir(const QString &como)
{
    if (como == "botão")
        Clicar(Cancelar());
    else if (como == "atalho")
        QTest::keyClick(m_form.get(), Qt::Key_C, Qt::AltModifier);
    else if (como == "esc")
        QTest::keyClick(m_form->focusWidget() ? m_form->focusWidget() : m_form.get(), Qt::Key_Escape);
    else
        m_form->close();
}

void TesteImportacao::pararNoMeioDeixaOQueEntrou_data()
{
    QTest::addColumn<QString>("como");
    QTest::newRow("botão") << "botão";
    QTest::newRow("tecla de atalho") << "atalho";
    QTest::newRow("Esc") << "esc";
    QTest::newRow("fechar a janela") << "fechar";
}

void TesteImportacao::pararNoMeioDeixaOQueEntrou()
{
    QFETCH(QString, como);
    const QByteArray pacote = PacoteDe(Registro("A") + Registro("B") + Registro("C") + Registro("D"));
    Abrir(pacote);
    connect(m_form->findChild<QProgressBar *>("PrgrssBr"), &QProgressBar::valueChanged, this, [&](int valor) {
        if (valor == 1)
            Desistir(como);
    });
    QVERIFY(Cancelar()->isEnabled());
    Clicar(Importar());
    QTRY_VERIFY(!m_form->isVisible());
    QCOMPARE(m_livro->Nomes(), QStringList({"A", "B"}));
    QCOMPARE(m_form->Resultado(), frmImportacao::Desfecho::Cancelado);
    QVERIFY(m_form->AlgumaEntrou());
    QCOMPARE(m_avisos.ditos, QStringList()); // as Cancel ends: in silence
    QVERIFY(!Ponteiro::EmEspera());
    QCOMPARE(m_livro->Arquivos(), QStringList("dadosr.lst"));
    QCOMPARE(LerArquivo(m_correio->filePath("Pacote da Vovó.lr$")), pacote);
}

void TesteImportacao::pararNumaReceitaDeMuitasLinhas()
{
    QString linhas = "<RECEITA>\r\n" + Linha("NOME", "A") + "<INGREDIENTES>\r\n";
    linhas += QString("<ITEM>\r\n<INGREDIENTE>Sal</INGREDIENTE>\r\n").repeated(3000) + "</INGREDIENTES>\r\n";
    Abrir(PacoteDe(linhas + Registro("B")));
    QTimer::singleShot(0, m_form.get(), [this] { // runs when the import lets the window live
        QTimer::singleShot(30, m_form.get(), [this] { Desistir("botão"); });
    });
    Clicar(Importar());
    QTRY_VERIFY(!m_form->isVisible());
    QCOMPARE(m_livro->Nomes(), QStringList("A"));
    QVERIFY(m_livro->Contar("Ingredientes") < 3000);
    QCOMPARE(m_form->Resultado(), frmImportacao::Desfecho::Cancelado);
}

void TesteImportacao::receitaComumNaoFicaPelaMetade()
{
    QString linhas = "<RECEITA>\r\n" + Linha("NOME", "A") + "<INGREDIENTES>\r\n";
    linhas += QString("<ITEM>\r\n<INGREDIENTE>Sal</INGREDIENTE>\r\n").repeated(12) + "</INGREDIENTES>\r\n";
    m_livro->banco.ExecutarSQL("Insert into Receitas(Nome,Modo) values ('A','x')");
    Abrir(PacoteDe(linhas + Registro("B")));
    m_avisos.resposta = true;
    m_avisos.aoPerguntar = [this] { m_form->reject(); }; // asked to stop while the question is open
    Clicar(Importar());
    QTRY_VERIFY(!m_form->isVisible());
    QCOMPARE(m_livro->Nomes(), QStringList({"A", "A"}));
    QCOMPARE(m_livro->Contar("Ingredientes"), 12);
}

void TesteImportacao::perguntaFechadaDevolveOCancelar()
{
    m_livro->banco.ExecutarSQL("Insert into Receitas(Nome,Modo) values ('A','x')");
    m_livro->banco.ExecutarSQL("Insert into Receitas(Nome,Modo) values ('B','x')");
    Abrir(PacoteDe(Registro("A") + Registro("B") + Registro("C")));
    m_avisos.semResposta = true;
    Clicar(Importar());
    QCOMPARE(m_avisos.ditos.size(), 1);
    QVERIFY(m_form->isVisible());
    QVERIFY(!Ponteiro::EmEspera());
    Clicar(Cancelar());
    QTRY_VERIFY(!m_form->isVisible());
    QCOMPARE(m_form->Resultado(), frmImportacao::Desfecho::Cancelado);
    QVERIFY(!m_form->AlgumaEntrou());
    QCOMPARE(m_livro->Nomes(), QStringList({"A", "B"}));
    QVERIFY(!QFile::exists(Trabalho()));
}

void TesteImportacao::perguntaFechadaValeNaoEImportarSegue()
{
    m_livro->banco.ExecutarSQL("Insert into Receitas(Nome,Modo) values ('A','x')");
    m_livro->banco.ExecutarSQL("Insert into Receitas(Nome,Modo) values ('B','x')");
    Abrir(PacoteDe(Registro("A") + Registro("B") + Registro("C")));
    m_avisos.semResposta = true;
    Clicar(Importar());
    Clicar(Importar());
    QCOMPARE(m_avisos.ditos.size(), 2);
    Clicar(Importar());
    QCOMPARE(m_avisos.ditos.last(), kSucesso);
    QCOMPARE(m_livro->Nomes(), QStringList({"A", "B", "C"}));
    QCOMPARE(m_form->Resultado(), frmImportacao::Desfecho::Importado);
}

void TesteImportacao::abrePacoteDeQualquerNivelESemOZero()
{
    const QByteArray texto = Dourado("PacoteReceitas.lrs");
    for (int nivel = 0; nivel <= 9; ++nivel) {
        QByteArray recipiente;
        QCOMPARE(Recipiente::Compactar(texto, recipiente, nivel), 0);
        frmImportacao form(m_livro->banco, m_livro->figuras, m_avisos, m_relogio);
        QVERIFY(form.CarregarReceitas(Pacote(recipiente)));
        QCOMPARE(form.findChild<QListWidget *>("lstImportacao")->count(), 3);
    }
    QVERIFY(!QFile::exists(Trabalho()));
}

void TesteImportacao::recusaArquivo_data()
{
    const QByteArray pacote = Dourado("PacoteReceita.lr$");
    const QByteArray fluxo = pacote.chopped(17);
    QByteArray torto = pacote;
    torto[100] = static_cast<char>(torto[100] ^ 0x40);
    const auto comprimento = [&](const QByteArray &campo) {
        return fluxo + QByteArray(5, '\0') + campo.leftJustified(12, '\0');
    };
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("mensagem");
    QTest::newRow("cortado") << pacote.chopped(1) << kCorrompido;
    QTest::newRow("cortado ao meio") << pacote.first(pacote.size() / 2) << kCorrompido;
    QTest::newRow("menos de 17 bytes") << QByteArray("pacote") << kCorrompido;
    QTest::newRow("trailer errado") << fluxo + QByteArray(17, 'x') << kCorrompido;
    QTest::newRow("danificado") << torto << kCorrompido;
    QTest::newRow("comprimento curto") << comprimento("1000") << kCorrompido;
    QTest::newRow("comprimento impossível") << comprimento("2000000000") << kCorrompido;
    QTest::newRow("doze noves") << comprimento("999999999999") << kCorrompido;
    QTest::newRow("comprimento negativo") << comprimento("-1888") << kCorrompido;
    QTest::newRow("comprimento com letras") << comprimento("mil") << kCorrompido;
    QTest::newRow("zeros atrás do fluxo") << fluxo + QByteArray(1'000'000, '\0') << kCorrompido;
    QTest::newRow("outro arquivo") << Dourado("figura.png") << kCorrompido;
    QTest::newRow("vazio") << QByteArray() << kInvalido;
    QTest::newRow("outro texto") << Recipiente9("Era uma vez\r\n") << kInvalido;
    QTest::newRow("outro produto") << Recipiente9(PaginaCodigo::ParaAnsi(
                                          "Exportação do Cozinhario 2004 por Tamarel\r\n" + Registro("A")))
                                   << kInvalido;
    QTest::newRow("outra casa") << Recipiente9(PaginaCodigo::ParaAnsi(
                                       "Exportação do Cozinhario 2005 por Outra\r\n" + Registro("A")))
                                << kInvalido;
    QTest::newRow("espaço no fim do cabeçalho")
        << Recipiente9(
               PaginaCodigo::ParaAnsi("Exportação do Cozinhario 2005 por Tamarel \r\n" + Registro("A")))
        << kInvalido;
    QTest::newRow("texto em UTF-8") << Recipiente9((kCabecalho + Registro("A")).toUtf8()) << kInvalido;
    QTest::newRow("não há") << QByteArray("(não há)") << kCorrompido;
    QTest::newRow("pasta") << QByteArray("(pasta)") << kCorrompido;
    QTest::newRow("sem caminho") << QByteArray("(sem caminho)") << kCorrompido;
}

void TesteImportacao::recusaArquivo()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, mensagem);
    QString caminho;
    if (bytes == "(não há)")
        caminho = m_correio->filePath("não há.lr$");
    else if (bytes == "(pasta)")
        caminho = m_correio->path();
    else if (bytes != "(sem caminho)")
        caminho = Pacote(bytes);
    QCOMPARE(m_form->Executar(caminho), frmImportacao::Desfecho::Recusado);
    QCOMPARE(m_avisos.ditos, QStringList(mensagem));
    QVERIFY(!m_form->isVisible());
    QCOMPARE(m_livro->Arquivos(), QStringList());
    if (QFileInfo(caminho).isFile())
        QCOMPARE(LerArquivo(caminho), bytes);
}

void TesteImportacao::registroCortadoEntraComoChegou()
{
    const QString inteiro = Registro("A") + Registro("B", Linha("MODO", "Bata e asse."));
    Abrir(PacoteDe(inteiro.first(inteiro.indexOf(" e asse"))));
    QCOMPARE(Lista()->count(), 2);
    Clicar(Importar());
    QCOMPARE(m_avisos.ditos, QStringList(kSucesso));
    QCOMPARE(m_livro->Nomes(), QStringList({"A", "B"}));
    QCOMPARE(m_livro->Coluna("Receitas", "Modo", "id_receitas"), QStringList({"", "Bata"}));
}

void TesteImportacao::recusaPacoteGrandeDemais()
{
    // A length that a stream of this size could fill, and more than a package may hold.
    const QByteArray fluxo(600'000, '\x55');
    QCOMPARE(m_form->Executar(
                 Pacote(fluxo + QByteArray(5, '\0') + QByteArray("600000000").leftJustified(12, '\0'))),
             frmImportacao::Desfecho::Recusado);
    QCOMPARE(m_avisos.ditos,
             QStringList("parada|Pacote do Cozinhario 2005 Grande Demais!\r\nImpossível Continuar!"));
}

void TesteImportacao::recusaReceitasDemais()
{
    const QByteArray pacote = PacoteDe(QString("<RECEITA>").repeated(300'001));
    QVERIFY(pacote.size() < 20'000);
    QCOMPARE(m_form->Executar(Pacote(pacote)), frmImportacao::Desfecho::Recusado);
    QCOMPARE(m_avisos.ditos,
             QStringList("parada|Pacote do Cozinhario 2005 Grande Demais!\r\nImpossível Continuar!"));
}

void TesteImportacao::pastaSemEscritaEAvisada()
{
    QVERIFY(QDir().mkdir(Trabalho()));
    QCOMPARE(m_form->Executar(Pacote(Dourado("PacoteReceita.lr$"))), frmImportacao::Desfecho::Recusado);
    QCOMPARE(m_avisos.ditos.size(), 1);
    QVERIFY(m_avisos.ditos[0].startsWith("parada|Não foi possível gravar o arquivo:\r\n" + Trabalho()));
}

void TesteImportacao::restoDeOutraVezESubstituidoEApagado()
{
    QVERIFY(GravarArquivo(Trabalho(), QByteArray(100'000, 'x')));
    Abrir(PacoteDe(Registro("A")));
    QCOMPARE(Lista()->count(), 1);
    Clicar(Cancelar());
    QVERIFY(!QFile::exists(Trabalho()));

    init();
    QVERIFY(GravarArquivo(Trabalho(), "resto"));
    QCOMPARE(m_form->Executar(Pacote("pacote")), frmImportacao::Desfecho::Recusado);
    QVERIFY(!QFile::exists(Trabalho()));
}

void TesteImportacao::doisPacotesAoMesmoTempoNaoSeMisturam()
{
    frmImportacao outra(m_livro->banco, m_livro->figuras, m_avisos, m_relogio);
    QVERIFY(m_form->CarregarReceitas(Pacote(PacoteDe(Registro("A")))));
    QVERIFY(outra.CarregarReceitas(Pacote(PacoteDe(Registro("B")))));
    outra.reject();
    m_form->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_form.get()));
    Clicar(Importar());
    QCOMPARE(m_livro->Nomes(), QStringList("A"));
}

QTEST_MAIN(TesteImportacao)
#include "teste_importacao.moc"
