#include "base/EventosPendentes.h"
#include "base/Operacao.h"
#include "base/Ponteiro.h"
#include "packages/Exportacao.h"
#include "packages/MensagemPacote.h"
#include "packages/Pacote.h"
#include "packages/Recipiente.h"
#include "packages/tests/Duplos.h"
#include "store/Comandos.h"

#include <QProcess>
#include <QTest>
#include <QTimer>

#include <memory>

namespace
{
const QString kSite = "https://www.tamarel.example";
} // namespace

class TesteExportacao : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void foraDaListaTrazAListaEPedeASelecao();
    void foraDaListaVisivelAbreATelaComAlturaInteira();
    void semSelecaoPedePeloMenosUma();
    void tiposDe2EmDianteFicamDeFora_data();
    void tiposDe2EmDianteFicamDeFora();

    void gravaPacoteEMensagemPrometidos();
    void outroLeitorDeMensagensAchaOPacote();
    void ordemEADoNomeENaoADaSelecao();
    void progressoVaiAteOMaximo();
    void exportarDuasVezesSubstituiOsArquivos();
    void figuraQueFaltaSaiDoPacote_data();
    void figuraQueFaltaSaiDoPacote();

    void nomeOuModoNuloInterrompe_data();
    void nomeOuModoNuloInterrompe();
    void textoQueNaoSeGravaAvisaENaoAbreNada();
    void mensagemQueNaoSeGravaAvisaENaoAbreNada();
    void mensagemAnteriorSobreviveAFalha();
    void falhaAoCompactarNaoImpedeAMensagem();
    void pacoteVelhoNaoVaiComDiscoCheio();
    void semProgramaDeEmailDizOndeEstao();
    void figuraGrandeVaiInteiraEAJanelaVive();
    void linkNoLugarDoTextoNaoESeguido();
    void bancoQueFalhaEAvisado();
    void segundoCliqueDuranteAExportacaoNaoFazNada();
    void livroETelaFicamComoEstavam();
    void fimDoProgramaNoMeioNaoAbreNada(); // last: the program's end cannot be taken back

private:
    void Exportar(const QList<ReceitaSelecionada> &selecionadas);
    void GravarTresReceitas();

    std::unique_ptr<Livro> m_livro;
    AvisosDeTeste m_avisos;
    PainelDeTeste m_painel;
    JanelaDeTeste m_janela;
    AbridorDeTeste m_abridor;
    std::unique_ptr<Exportacao> m_exportacao;
};

void TesteExportacao::init()
{
    m_livro = std::make_unique<Livro>();
    m_avisos = {};
    m_painel = {};
    m_janela = {};
    m_abridor = {};
    m_exportacao = std::make_unique<Exportacao>(m_livro->banco, m_livro->figuras, m_avisos, m_painel,
                                                m_janela, m_janela, m_abridor, kSite);
    GravarTresReceitas();
}

// The golden package's recipes, not in the order of their names: 1 Pão, 2 Bolo, 3 Arroz.
void TesteExportacao::GravarTresReceitas()
{
    const Banco &banco = m_livro->banco;
    banco.ExecutarSQL(
        "Insert into Receitas(Nome,Classificacao,Modo,Tipo,Origem,Porcoes,Preparo,Tipo_Calorias,Calorias) "
        "values ('Pão d''água','Pães','Sove bem.',1,'Receitas da Vovó, vol. 2','2,5','3 h','P',120)");
    banco.ExecutarSQL(
        "Insert into Receitas(Nome,Classificacao,Modo,Porcoes,Preparo,Tipo_Calorias,Calorias,Observacao,"
        "Figura) values ('Bolo de fubá, simples','Bolos, tortas','Bata os ovos, o açúcar e o óleo.\r\nAsse "
        "por 40 minutos.',8,'1 hora, mais ou menos','R','2150,5','Sirva morno,\r\ncom "
        "café.','F0000002.img')");
    banco.ExecutarSQL(
        "Insert into Receitas(Nome,Modo,Porcoes,Calorias) values ('Arroz doce','Cozinhe o arroz no "
        "leite.',0,0)");
    banco.ExecutarSQL(Comandos::SqlInserirIngrediente(1, "Farinha d'aveia", "500", "g"));
    banco.ExecutarSQL(Comandos::SqlInserirIngrediente(2, "Fubá, fino", "1,5", "xícara(s), de chá"));
    banco.ExecutarSQL(Comandos::SqlInserirIngrediente(2, "Óleo", "1/2", "xícara"));
    banco.ExecutarSQL(Comandos::SqlInserirIngrediente(2, "Sal", "", ""));
    m_livro->figuras.GravarFigura(Dourado("figura.png"), 2);
}

void TesteExportacao::Exportar(const QList<ReceitaSelecionada> &selecionadas)
{
    m_exportacao->imgTransmit_Click(selecionadas);
    QVERIFY(!m_painel.visivel);
    QVERIFY(!Ponteiro::EmEspera());
    QVERIFY(!m_livro->Arquivos().contains("PacoteReceitas.lrs"));
}

void TesteExportacao::foraDaListaTrazAListaEPedeASelecao()
{
    m_janela.tela = "Detalhe";
    m_janela.listaVisivel = false;
    Exportar({{1, ""}});
    QCOMPARE(m_janela.pedidos, QStringList("mostra lista"));
    QCOMPARE(m_avisos.ditos,
             QStringList("parada|Faça a Seleção das Receitas que Deseja Enviar, pela Lista de "
                         "Receitas Cadastradas!"));
    QVERIFY(!m_livro->Arquivos().contains("PacoteReceita.lr$"));
    QVERIFY(m_abridor.abertos.isEmpty());
}

void TesteExportacao::foraDaListaVisivelAbreATelaComAlturaInteira()
{
    m_janela.tela = "Pesquisa";
    Exportar({{1, ""}});
    QCOMPARE(m_janela.pedidos, QStringList({"abre ListaReceitas", "altura 6540"}));
    QCOMPARE(m_avisos.ditos.size(), 1);
    QVERIFY(m_abridor.abertos.isEmpty());
}

void TesteExportacao::semSelecaoPedePeloMenosUma()
{
    Exportar({});
    QCOMPARE(m_avisos.ditos,
             QStringList("informação|Selecione pelo menos 1 (uma) Receita para criar o Pacote!"));
    QVERIFY(m_painel.passos.isEmpty());
    QVERIFY(m_abridor.abertos.isEmpty());
}

void TesteExportacao::tiposDe2EmDianteFicamDeFora_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<bool>("vai");
    QTest::newRow("sem tipo") << "" << true;
    QTest::newRow("0") << "0" << true;
    QTest::newRow("1") << "1" << true;
    QTest::newRow("1,9") << "1,9" << true;
    QTest::newRow("-3") << "-3" << true;
    QTest::newRow("2") << "2" << false;
    QTest::newRow("2,1") << "2,1" << false;
    QTest::newRow("3") << "3" << false;
}

void TesteExportacao::tiposDe2EmDianteFicamDeFora()
{
    QFETCH(QString, tag);
    QFETCH(bool, vai);
    Exportar({{1, tag}});
    QCOMPARE(m_abridor.abertos.size(), vai ? 1 : 0);
    QCOMPARE(m_avisos.ditos.size(), vai ? 0 : 1);
}

void TesteExportacao::gravaPacoteEMensagemPrometidos()
{
    Exportar({{1, "1"}, {2, ""}, {3, ""}});
    QCOMPARE(m_avisos.ditos, QStringList());
    QCOMPARE(LerArquivo(m_livro->Caminho("PacoteReceita.lr$")), Dourado("PacoteReceita.lr$"));
    QCOMPARE(LerArquivo(m_livro->Caminho("~temppct.eml")), Dourado("temppct.eml"));
    QCOMPARE(m_abridor.abertos, QStringList(m_livro->Caminho("~temppct.eml")));
    QCOMPARE(m_livro->Arquivos(), QStringList({"PacoteReceita.lr$", "dadosr.lst", "~temppct.eml"}));
}

void TesteExportacao::outroLeitorDeMensagensAchaOPacote()
{
    // Base64 of every length of a last line.
    for (int i = 0; i < 6; ++i) {
        m_livro->banco.ExecutarSQL("Update Receitas set Observacao = '" + QString("Sirva!").first(i + 1) +
                                   "' Where id_receitas = 3");
        Exportar({{1, ""}, {3, ""}});
        QProcess leitor;
        leitor.start("python3", {PASTA_FONTES "/tests/ler_mensagem.py", m_livro->Caminho("~temppct.eml"),
                                 m_livro->Caminho("PacoteReceita.lr$"), "Arroz doce<LI>Pão d'água"});
        QVERIFY(leitor.waitForFinished());
        QVERIFY2(leitor.exitCode() == 0, leitor.readAllStandardError().constData());
    }
}

void TesteExportacao::ordemEADoNomeENaoADaSelecao()
{
    Exportar({{3, ""}, {1, ""}, {2, ""}});
    QCOMPARE(LerArquivo(m_livro->Caminho("PacoteReceita.lr$")), Dourado("PacoteReceita.lr$"));
    QVERIFY(LerArquivo(m_livro->Caminho("~temppct.eml"))
                .contains("<BR><LI>Arroz doce<LI>Bolo de fub\xE1, simples<LI>P\xE3o d'\xE1gua</TBODY>"));
}

void TesteExportacao::progressoVaiAteOMaximo()
{
    Exportar({{1, ""}, {2, ""}, {3, ""}});
    QCOMPARE(m_painel.passos,
             QStringList({"mostra Gerando Pacote de Receitas... 5", "1", "2", "3", "4", "5", "esconde"}));
}

void TesteExportacao::exportarDuasVezesSubstituiOsArquivos()
{
    Exportar({{1, ""}, {2, ""}, {3, ""}});
    const QByteArray tres = LerArquivo(m_livro->Caminho("~temppct.eml"));
    Exportar({{3, ""}});
    const QByteArray uma = LerArquivo(m_livro->Caminho("~temppct.eml"));
    QVERIFY(uma.size() < tres.size());
    QVERIFY(uma.contains("<BR><LI>Arroz doce</TBODY>"));
    QCOMPARE(m_abridor.abertos.size(), 2);
    Exportar({{1, ""}, {2, ""}, {3, ""}});
    QCOMPARE(LerArquivo(m_livro->Caminho("~temppct.eml")), tres);
}

void TesteExportacao::figuraQueFaltaSaiDoPacote_data()
{
    QTest::addColumn<QString>("caso");
    QTest::newRow("apagada") << "apagada";
    QTest::newRow("vazia") << "vazia";
    QTest::newRow("pasta") << "pasta";
    QTest::newRow("nome com caminho") << "nome";
}

void TesteExportacao::figuraQueFaltaSaiDoPacote()
{
    QFETCH(QString, caso);
    const QString figura = m_livro->Caminho("Fotos\\F0000002.img");
    QVERIFY(QFile::remove(figura));
    if (caso == "vazia")
        QVERIFY(GravarArquivo(figura, ""));
    if (caso == "pasta")
        QVERIFY(QDir().mkdir(figura));
    if (caso == "nome")
        m_livro->banco.ExecutarSQL("Update Receitas set Figura = '../dadosr.lst' Where id_receitas = 2");

    Exportar({{1, ""}, {2, ""}, {3, ""}});
    QCOMPARE(m_avisos.ditos, QStringList());
    QCOMPARE(m_abridor.abertos.size(), 1);
    QByteArray esperado = Dourado("PacoteReceitas.lrs");
    const qsizetype inicio = esperado.indexOf("<FIGURA>");
    const qsizetype fim = esperado.indexOf("<INGREDIENTES>", inicio);
    esperado.remove(inicio, fim - inicio);
    QByteArray lido;
    QCOMPARE(Recipiente::Descompactar(LerArquivo(m_livro->Caminho("PacoteReceita.lr$")), lido), 0);
    QCOMPARE(lido, esperado + '\0');
}

void TesteExportacao::nomeOuModoNuloInterrompe_data()
{
    QTest::addColumn<QString>("campo");
    QTest::newRow("nome") << "Nome";
    QTest::newRow("modo") << "Modo";
}

void TesteExportacao::nomeOuModoNuloInterrompe()
{
    QFETCH(QString, campo);
    m_livro->banco.ExecutarSQL("Update Receitas set " + campo + " = NULL Where id_receitas = 1");
    Exportar({{1, ""}, {2, ""}});
    QCOMPARE(m_avisos.ditos.size(), 1);
    QVERIFY(m_avisos.ditos[0].startsWith("parada|A receita número 1 está sem "));
    QVERIFY(m_abridor.abertos.isEmpty());
    QCOMPARE(m_livro->Arquivos(), QStringList("dadosr.lst"));
}

void TesteExportacao::textoQueNaoSeGravaAvisaENaoAbreNada()
{
    QVERIFY(QDir().mkdir(m_livro->Caminho("PacoteReceitas.lrs")));
    Exportar({{1, ""}});
    QCOMPARE(m_avisos.ditos.size(), 1);
    QVERIFY(m_avisos.ditos[0].startsWith("parada|Não foi possível gravar o arquivo:\r\n"));
    QVERIFY(m_avisos.ditos[0].contains(m_livro->Caminho("PacoteReceitas.lrs")));
    QVERIFY(m_abridor.abertos.isEmpty());
    QVERIFY(!m_livro->Arquivos().contains("~temppct.eml"));
}

void TesteExportacao::mensagemQueNaoSeGravaAvisaENaoAbreNada()
{
    QVERIFY(QDir().mkdir(m_livro->Caminho("~temppct.eml")));
    Exportar({{1, ""}});
    QCOMPARE(m_avisos.ditos.size(), 1);
    QVERIFY(m_avisos.ditos[0].startsWith("parada|Não foi possível gravar o arquivo:\r\n"));
    QVERIFY(m_abridor.abertos.isEmpty());
}

void TesteExportacao::mensagemAnteriorSobreviveAFalha()
{
    Exportar({{1, ""}});
    const QByteArray antes = LerArquivo(m_livro->Caminho("~temppct.eml"));
    m_livro->banco.ExecutarSQL("Update Receitas set Nome = '" + QString(3000, 'x') +
                               "' Where id_receitas = 1");
    {
        const LimiteDeArquivo discoCheio(4000);
        Exportar({{1, ""}});
    }
    QCOMPARE(m_avisos.ditos.size(), 1);
    QVERIFY(m_avisos.ditos[0].startsWith("parada|Não foi possível gravar o arquivo:\r\n"));
    QCOMPARE(m_abridor.abertos.size(), 1);
    QCOMPARE(LerArquivo(m_livro->Caminho("~temppct.eml")), antes);
}

void TesteExportacao::falhaAoCompactarNaoImpedeAMensagem()
{
    QVERIFY(QDir().mkdir(m_livro->Caminho("PacoteReceita.lr$")));
    Exportar({{3, ""}});
    QCOMPARE(m_avisos.ditos, QStringList());
    QCOMPARE(m_abridor.abertos.size(), 1);
    QVERIFY(LerArquivo(m_livro->Caminho("~temppct.eml"))
                .contains("lr$?=\"\r\n\r\n\r\n------=_NextPart_000_0009_01C4903F.EF2FE790--\r\n"));
}

void TesteExportacao::pacoteVelhoNaoVaiComDiscoCheio()
{
    Exportar({{1, ""}});
    const QByteArray velho = LerArquivo(m_livro->Caminho("PacoteReceita.lr$"));
    // As large packed as it was before: the text finds room, its package does not.
    QByteArray acaso(60'000, Qt::Uninitialized);
    for (qsizetype i = 0; i < acaso.size(); ++i)
        acaso[i] = static_cast<char>(qHash(i));
    m_livro->figuras.GravarFigura(acaso, 2);
    QVERIFY(QFile::remove(m_livro->Caminho("~temppct.eml")));
    std::unique_ptr<LimiteDeArquivo> disco;
    QTimer olhar; // the disk is full from the moment that the text is complete
    connect(&olhar, &QTimer::timeout, this, [&] {
        if (!disco && LerArquivo(m_livro->Caminho("PacoteReceitas.lrs")).endsWith("</INGREDIENTES>\r\n"))
            disco = std::make_unique<LimiteDeArquivo>(50'000);
    });
    olhar.start(0);
    Exportar({{2, ""}});
    QVERIFY(disco);
    disco.reset();
    QCOMPARE(m_avisos.ditos.size(), 1);
    QVERIFY(m_avisos.ditos[0].startsWith("parada|Não foi possível gravar o arquivo:\r\n"));
    QCOMPARE(m_abridor.abertos.size(), 1);
    QVERIFY(!m_livro->Arquivos().contains("~temppct.eml"));
    QCOMPARE(LerArquivo(m_livro->Caminho("PacoteReceita.lr$")), velho);
}

void TesteExportacao::semProgramaDeEmailDizOndeEstao()
{
    m_abridor.nenhumPrograma = true;
    Exportar({{1, ""}});
    QCOMPARE(m_avisos.ditos.size(), 1);
    QVERIFY(m_avisos.ditos[0].startsWith("informação|"));
    QVERIFY(m_avisos.ditos[0].contains(m_livro->Caminho("PacoteReceita.lr$")));
    QVERIFY(m_avisos.ditos[0].contains(m_livro->Caminho("~temppct.eml")));
}

void TesteExportacao::figuraGrandeVaiInteiraEAJanelaVive()
{
    QByteArray figura(7'000'003, Qt::Uninitialized);
    for (qsizetype i = 0; i < figura.size(); ++i)
        figura[i] = static_cast<char>(qHash(i));
    m_livro->figuras.GravarFigura(figura, 2);
    int batidas = 0;
    QTimer batida;
    connect(&batida, &QTimer::timeout, this, [&] { ++batidas; });
    batida.start(0);
    Exportar({{2, ""}});
    QVERIFY2(batidas > 60, qPrintable(QString::number(batidas))); // a beat a slice: text, package and message
    QByteArray texto;
    QCOMPARE(Recipiente::Descompactar(LerArquivo(m_livro->Caminho("PacoteReceita.lr$")), texto), 0);
    Pacote::Receita receita;
    receita.DadosFigura = figura;
    receita.Figura = "F0000002.img";
    const QByteArray linhas = Pacote::EscreverReceita(receita);
    const qsizetype inicio = linhas.indexOf("<FIGURA>");
    QVERIFY(texto.contains(linhas.mid(inicio, linhas.indexOf("<INGREDIENTES>") - inicio)));
    QCOMPARE(LerArquivo(m_livro->Caminho("~temppct.eml")),
             MensagemPacote("<LI>Bolo de fubá, simples", LerArquivo(m_livro->Caminho("PacoteReceita.lr$")), kSite));
    // Packed in slices, and the same bytes as in one piece.
    QByteArray recipiente;
    QCOMPARE(Recipiente::Compactar(texto.chopped(1), recipiente), 0);
    QVERIFY(recipiente == LerArquivo(m_livro->Caminho("PacoteReceita.lr$")));
}

void TesteExportacao::linkNoLugarDoTextoNaoESeguido()
{
    QTemporaryDir fora;
    QVERIFY(GravarArquivo(fora.filePath("alheio"), "de outro"));
    for (const char *nome : {"PacoteReceitas.lrs", "PacoteReceita.lr$", "~temppct.eml"})
        QVERIFY(QFile::link(fora.filePath("alheio"), m_livro->Caminho(nome)));
    Exportar({{1, ""}});
    QCOMPARE(m_avisos.ditos, QStringList());
    QCOMPARE(LerArquivo(fora.filePath("alheio")), QByteArray("de outro"));
    QVERIFY(LerArquivo(m_livro->Caminho("~temppct.eml")).contains("lr$?="));
}

void TesteExportacao::bancoQueFalhaEAvisado()
{
    QVERIFY(GravarArquivo(m_livro->Caminho("dadosr.lst"), "isto não é um livro de receitas, e nem um banco"));
    Exportar({{1, ""}});
    QCOMPARE(m_avisos.ditos.size(), 1);
    QVERIFY(m_avisos.ditos[0].startsWith("parada|"));
    QVERIFY(m_abridor.abertos.isEmpty());
}

void TesteExportacao::segundoCliqueDuranteAExportacaoNaoFazNada()
{
    int cliques = 0;
    m_painel.aoAvancar = [&](int) {
        ++cliques;
        QVERIFY(!Operacao::Pedir(this, [this] { m_exportacao->imgTransmit_Click({{1, ""}}); }));
        m_janela.tela = "Detalhe"; // nor does it matter that the user looks elsewhere by now
    };
    Exportar({{1, ""}, {2, ""}, {3, ""}});
    QCOMPARE(cliques, 5);
    QCOMPARE(m_avisos.ditos, QStringList());
    QCOMPARE(m_abridor.abertos.size(), 1);
    QCOMPARE(LerArquivo(m_livro->Caminho("~temppct.eml")), Dourado("temppct.eml"));
}

void TesteExportacao::livroETelaFicamComoEstavam()
{
    const QByteArray antes = LerArquivo(m_livro->Caminho("dadosr.lst"));
    Exportar({{1, ""}, {2, ""}});
    QCOMPARE(LerArquivo(m_livro->Caminho("dadosr.lst")), antes);
    QCOMPARE(m_janela.pedidos, QStringList());
}

void TesteExportacao::fimDoProgramaNoMeioNaoAbreNada()
{
    m_painel.aoAvancar = [](int valor) {
        if (valor == 1)
            EncerrarPrograma();
    };
    Exportar({{1, ""}, {2, ""}, {3, ""}});
    QVERIFY(m_abridor.abertos.isEmpty());
    QCOMPARE(m_livro->Arquivos(), QStringList("dadosr.lst"));
}

QTEST_MAIN(TesteExportacao)
#include "teste_exportacao.moc"
