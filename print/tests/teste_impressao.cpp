#include "base/EventosPendentes.h"
#include "base/Operacao.h"
#include "base/Ponteiro.h"
#include "print/Impressao.h"
#include "print/ImprimirReceita.h"
#include "print/tests/Duplos.h"
#include "print/tests/ReceitasDeTeste.h"
#include "print/tests/SuperficieDeTeste.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"
#include "store/Figuras.h"

#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

#include <cmath>
#include <map>

using namespace ReceitasDeTeste;

namespace
{
constexpr double kMmPorPonto = 25.4 / 72;
constexpr double kMargem = 6; // of the test's printers

struct Palavra {
    int pagina;
    double x1, y1, x2; // mm of the printable area
    QString texto;
};

struct Documento {
    int paginas = 0;
    double W = 0;
    double H = 0;
    QList<Palavra> palavras;

    QString Texto(int pagina) const
    {
        QStringList textos;
        for (const Palavra &palavra : palavras) {
            if (palavra.pagina == pagina)
                textos << palavra.texto;
        }
        return textos.join(u' ');
    }
};

QByteArray Rodar(const QString &programa, const QStringList &argumentos)
{
    QProcess processo;
    processo.start(programa, argumentos);
    if (!processo.waitForStarted())
        qFatal("%s is missing: install poppler-utils", qPrintable(programa));
    processo.waitForFinished(60000);
    return processo.readAllStandardOutput();
}

/// What a PDF reader sees: every word and where it stands.
Documento LerPdf(const QString &arquivo)
{
    Documento documento;
    QXmlStreamReader xml(Rodar("pdftotext", {"-bbox", "-enc", "UTF-8", arquivo, "-"}));
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto mm = [&](const char *nome) {
            return xml.attributes().value(QLatin1String(nome)).toDouble() * kMmPorPonto;
        };
        if (xml.name() == u"page") {
            ++documento.paginas;
            documento.W = mm("width") - 2 * kMargem;
            documento.H = mm("height") - 2 * kMargem;
        } else if (xml.name() == u"word") {
            documento.palavras.append({documento.paginas, mm("xMin") - kMargem, mm("yMin") - kMargem,
                                       mm("xMax") - kMargem, xml.readElementText()});
        }
    }
    return documento;
}

QImage Fotografar(const QString &arquivo, int pagina)
{
    const QByteArray png = Rodar("pdftoppm", {"-png", "-r", "127", "-f", QString::number(pagina), "-l",
                                              QString::number(pagina), arquivo}); // five pixels a millimetre
    return QImage::fromData(png, "PNG");
}
} // namespace

class TesteImpressao : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void leAReceitaComoEstaNoLivro();
    void figuraNadaOuSumidaEFiguraNenhuma();
    void receitaQueNaoExisteNaoSeDesenha();
    void hostDoSite();
    void tresSelecionadasSaoUmTrabalho();
    void semSelecaoPedeUma();
    void cancelarNaoImprimeNemAvisa_data();
    void cancelarNaoImprimeNemAvisa();
    void menuImprimeSoAReceitaAtual();
    void telaImprimeAReceitaAbertaSemPainel();
    void telaSemReceitaSalvaERecusada();
    void pesquisaNuncaAbreODialogo();
    void aConfiguracaoValeParaOsTrabalhosSeguintes();
    void semImpressoraNadaSai();
    void trabalhoRecusadoNaoDizSucesso();
    void arquivoQueNaoSaiuNaoDizSucesso();
    void receitaQueSumiuENomeada();
    void impressoraQueSumiuDaListaDaLugarAPadrao();
    void aPadraoMudadaValeEnquantoNinguemEscolheu();
    void erroNoLivroEscondeOPainelENaoImprime();
    void segundoPedidoDuranteAImpressaoEIgnorado();
    void paginasDoPdf_data();
    void paginasDoPdf();
    void figuraNoLugar();
    void cadaReceitaComecaNaPaginaUm();
    void sairDoProgramaNoMeioNaoImprime(); // last: nothing brings a program back that is ending

private:
    qint64 Gravar(const ReceitaImpressa &receita);
    void Confirmar();
    /// Whether the job's file is a finished document.
    bool Saiu(int trabalho) const;

    std::unique_ptr<QTemporaryDir> m_pasta;
    std::unique_ptr<Banco> m_banco;
    std::unique_ptr<Figuras> m_figuras;
    std::unique_ptr<ImpressorasDeTeste> m_impressoras;
    std::unique_ptr<Operador> m_operador;
    std::unique_ptr<Impressao> m_impressao;
    AvisosDeTeste m_avisos;
    PainelDeTeste m_painel;
};

void TesteImpressao::initTestCase()
{
    QFont::insertSubstitution("Verdana", "DejaVu Sans");
}

void TesteImpressao::init()
{
    m_pasta = std::make_unique<QTemporaryDir>();
    m_banco = std::make_unique<Banco>(m_pasta->path());
    m_figuras = std::make_unique<Figuras>(*m_banco);
    m_impressoras = std::make_unique<ImpressorasDeTeste>(m_pasta->path());
    m_operador = std::make_unique<Operador>();
    m_avisos = AvisosDeTeste();
    m_painel = PainelDeTeste();
    m_impressao = std::make_unique<Impressao>(*m_banco, *m_figuras, m_avisos, m_painel, *m_impressoras,
                                              "https://www.tamarel.example");
    Confirmar();
}

void TesteImpressao::cleanup()
{
    QVERIFY(!Ponteiro::EmEspera());
    m_operador.reset();
}

void TesteImpressao::Confirmar()
{
    m_operador->aoAbrir = [](frmImpressao &dialogo) {
        QTest::mouseClick(dialogo.findChild<QPushButton *>("cmdImprimir"), Qt::LeftButton);
    };
}

bool TesteImpressao::Saiu(int trabalho) const
{
    QFile arquivo(m_impressoras->Arquivo(trabalho));
    return arquivo.open(QIODevice::ReadOnly) && arquivo.readAll().contains("%%EOF");
}

qint64 TesteImpressao::Gravar(const ReceitaImpressa &receita)
{
    Comandos::Receita nova;
    nova.Nome = receita.Nome;
    nova.Classificacao = receita.Classificacao;
    nova.Modo = receita.Modo;
    nova.Porcoes = receita.Porcoes;
    nova.Preparo = receita.Preparo;
    nova.Calorias = receita.Calorias;
    nova.Observacao = receita.Observacao;
    nova.Tipo_Calorias = receita.Tipo_Calorias;
    m_banco->ExecutarSQL(Comandos::SqlInserirReceita(nova, QDate(2005, 11, 21)));
    const qint64 numero = m_banco->AbrirRecordset(Comandos::SqlMaiorNumero()).Valor(0).toLongLong();
    for (const IngredienteImpresso &linha : receita.Ingredientes)
        m_banco->ExecutarSQL(Comandos::SqlInserirIngrediente(numero, linha.Ingrediente,
                                                             linha.Quantidade.value_or(QString()),
                                                             linha.Unidade.value_or(QString())));
    if (!receita.Origem.isEmpty())
        m_banco->ExecutarSQL(QString("Update Receitas Set Origem = %1 Where id_receitas = %2")
                                 .arg(Comandos::Texto(receita.Origem))
                                 .arg(numero));
    if (!receita.Figura.isNull()) {
        const QString arquivo = m_pasta->filePath("figura.png");
        receita.Figura.save(arquivo);
        m_figuras->CopiarFigura(arquivo, numero);
        m_banco->ExecutarSQL(Comandos::SqlGravarFigura(numero));
    }
    return numero;
}

void TesteImpressao::leAReceitaComoEstaNoLivro()
{
    ReceitaImpressa bolo = Bolo();
    bolo.Figura = Figura();
    const ReceitaImpressa lida = CarregarReceitaImpressa(*m_banco, *m_figuras, Gravar(bolo)).value();
    QCOMPARE(lida.Nome, bolo.Nome);
    QCOMPARE(lida.Origem, bolo.Origem);
    QCOMPARE(lida.Classificacao, bolo.Classificacao);
    QCOMPARE(lida.Preparo, bolo.Preparo);
    QCOMPARE(lida.Porcoes, bolo.Porcoes);
    QCOMPARE(lida.Calorias, bolo.Calorias);
    QCOMPARE(lida.Tipo_Calorias, bolo.Tipo_Calorias);
    QCOMPARE(lida.Modo, bolo.Modo);
    QCOMPARE(lida.Observacao, bolo.Observacao);
    QCOMPARE(lida.Figura.size(), bolo.Figura.size());
    QCOMPARE(lida.Ingredientes.size(), bolo.Ingredientes.size());
    for (qsizetype i = 0; i < bolo.Ingredientes.size(); ++i)
        QCOMPARE(LinhaIngrediente(lida.Ingredientes[i]), LinhaIngrediente(bolo.Ingredientes[i]));
    QVERIFY(!lida.Ingredientes[2].Unidade.has_value()); // NULL, not empty
    // A book that came from elsewhere may hold an empty text where ours writes NULL.
    m_banco->ExecutarSQL("Update Ingredientes Set Quantidade = '' Where Ingrediente = 'sal'");
    QCOMPARE(LinhaIngrediente(CarregarReceitaImpressa(*m_banco, *m_figuras, 1)->Ingredientes.last()),
             QString(" sal"));
}

void TesteImpressao::figuraNadaOuSumidaEFiguraNenhuma()
{
    ReceitaImpressa bolo = Bolo();
    const qint64 numero = Gravar(bolo);
    for (const char *figura : {"'NADA'", "''", "'F0000001.img'", "NULL"}) {
        m_banco->ExecutarSQL(QString("Update Receitas Set Figura = %1").arg(figura));
        QVERIFY(CarregarReceitaImpressa(*m_banco, *m_figuras, numero)->Figura.isNull());
    }
}

void TesteImpressao::receitaQueNaoExisteNaoSeDesenha()
{
    SuperficieDeTeste superficie(200, 280);
    QVERIFY(!ImprimirReceita(superficie, 77, *m_banco, *m_figuras, kSite));
    QVERIFY(superficie.corridas.empty());
    QVERIFY(!CarregarReceitaImpressa(*m_banco, *m_figuras, 77));
    QVERIFY(ImprimirReceita(superficie, Gravar(Bolo()), *m_banco, *m_figuras, kSite));
    QVERIFY(!superficie.corridas.empty());
}

void TesteImpressao::hostDoSite()
{
    QCOMPARE(HostDoSite("https://www.tamarel.example"), QString("www.tamarel.example"));
    QCOMPARE(HostDoSite("http://127.0.0.1:8080/"), QString("127.0.0.1:8080"));
    QCOMPARE(HostDoSite("www.tamarel.example"), QString("www.tamarel.example"));
}

void TesteImpressao::tresSelecionadasSaoUmTrabalho()
{
    QList<qint64> numeros;
    for (const char *nome : {"Pão", "Bolo", "Sopa"}) {
        ReceitaImpressa receita = Bolo();
        receita.Nome = nome;
        numeros << Gravar(receita);
    }
    m_impressao->ImprimirSelecionadas({numeros[2], numeros[0], numeros[1]});
    QCOMPARE(m_operador->dialogos, 1);
    QCOMPARE(m_impressoras->pedidas.size(), 1);
    QCOMPARE(m_painel.diario,
             (QStringList{"mostrar 3: Efetuando Impressão das Receitas...", "1", "2", "3", "esconder"}));
    QCOMPARE(m_avisos.textos, QStringList{"Documento Impresso com Sucesso"});
    QCOMPARE(m_avisos.icones, QList{Avisos::Icone::Nenhum});
    QVERIFY(Saiu(1));
    const Documento documento = LerPdf(m_impressoras->Arquivo(1));
    QCOMPARE(documento.paginas, 3);
    QVERIFY(documento.Texto(1).startsWith("Sopa"));
    QVERIFY(documento.Texto(2).startsWith("Pão"));
    QVERIFY(documento.Texto(3).startsWith("Bolo"));
}

void TesteImpressao::semSelecaoPedeUma()
{
    m_impressao->ImprimirSelecionadas({});
    QCOMPARE(m_avisos.textos, QStringList{"Selecione pelo menos 1 (uma) Receita para Imprimir!"});
    QCOMPARE(m_avisos.icones, QList{Avisos::Icone::Informacao});
    QCOMPARE(m_operador->dialogos, 0);
    QVERIFY(m_painel.diario.isEmpty());
}

void TesteImpressao::cancelarNaoImprimeNemAvisa_data()
{
    QTest::addColumn<int>("caminho");
    QTest::newRow("lista") << 0;
    QTest::newRow("tela") << 1;
    QTest::newRow("menu") << 2;
}

void TesteImpressao::cancelarNaoImprimeNemAvisa()
{
    QFETCH(int, caminho);
    const qint64 numero = Gravar(Bolo());
    m_operador->aoAbrir = [](frmImpressao &dialogo) {
        QVERIFY(dialogo.isModal());
        QTest::keyClick(&dialogo, Qt::Key_Escape);
    };
    if (caminho == 0)
        m_impressao->ImprimirSelecionadas({numero});
    else if (caminho == 1)
        m_impressao->ImprimirDaTela(numero);
    else
        m_impressao->ImprimirDoMenu(numero);
    QCOMPARE(m_operador->dialogos, 1);
    QCOMPARE(m_impressao->IndiceImpressora(), qint16(-1));
    QVERIFY(m_impressoras->pedidas.isEmpty());
    QVERIFY(m_avisos.textos.isEmpty());
    QVERIFY(m_painel.diario.isEmpty());
}

void TesteImpressao::menuImprimeSoAReceitaAtual()
{
    Gravar(Bolo());
    ReceitaImpressa sopa = Bolo();
    sopa.Nome = "Sopa";
    m_impressao->ImprimirDoMenu(Gravar(sopa));
    QCOMPARE(m_painel.diario, (QStringList{"mostrar 1: Efetuando Impressão da Receita...", "1", "esconder"}));
    QCOMPARE(m_avisos.textos, QStringList{"Documento Impresso com Sucesso"});
    QCOMPARE(m_avisos.icones, QList{Avisos::Icone::Nenhum});
    const Documento documento = LerPdf(m_impressoras->Arquivo(1));
    QCOMPARE(documento.paginas, 1);
    QVERIFY(documento.Texto(1).startsWith("Sopa"));
}

void TesteImpressao::telaImprimeAReceitaAbertaSemPainel()
{
    m_impressao->ImprimirDaTela(Gravar(Bolo()));
    QVERIFY(m_painel.diario.isEmpty());
    QCOMPARE(m_avisos.textos, QStringList{"Documento Impresso com Sucesso"});
    QCOMPARE(m_impressao->IndiceImpressora(), qint16(0));
    QCOMPARE(LerPdf(m_impressoras->Arquivo(1)).paginas, 1);
}

void TesteImpressao::telaSemReceitaSalvaERecusada()
{
    m_impressao->ImprimirDaTela(0);
    QCOMPARE(m_operador->dialogos, 0);
    QCOMPARE(m_avisos.textos,
             QStringList{"É Necessário ter a Receita Aberta na Tela para Executar a Impressão!"});
}

void TesteImpressao::pesquisaNuncaAbreODialogo()
{
    m_impressao->RecusarNaPesquisa();
    QCOMPARE(m_operador->dialogos, 0);
    QCOMPARE(m_avisos.textos,
             QStringList{"É Necessário ter a Receita Aberta na Tela para Executar a Impressão!"});
    QCOMPARE(m_avisos.icones, QList{Avisos::Icone::Exclamacao});
}

void TesteImpressao::aConfiguracaoValeParaOsTrabalhosSeguintes()
{
    const qint64 numero = Gravar(Bolo());
    m_operador->aoAbrir = [](frmImpressao &dialogo) {
        dialogo.findChild<QComboBox *>("cmbImpressora")->setCurrentIndex(1);
        dialogo.findChild<QLineEdit *>("txtCopies")->setText("2000");
        dialogo.findChild<QRadioButton *>("optPaisagem")->click();
        QTest::mouseClick(dialogo.findChild<QPushButton *>("cmdImprimir"), Qt::LeftButton);
    };
    m_impressao->ImprimirDaTela(numero);
    QCOMPARE(m_impressao->IndiceImpressora(), qint16(1));
    QVERIFY((m_impressoras->pedidas.last() == ImpressoraAtual{"Sala", 2000, 2, -3, 1}));
    const Documento deitado = LerPdf(m_impressoras->Arquivo(1));
    QVERIFY(deitado.W > deitado.H);

    m_operador->aoAbrir = [](frmImpressao &dialogo) {
        QCOMPARE(dialogo.findChild<QComboBox *>("cmbImpressora")->currentText(), QString("Sala"));
        QCOMPARE(dialogo.findChild<QLineEdit *>("txtCopies")->text(), QString("2000"));
        QTest::keyClick(&dialogo, Qt::Key_Escape);
    };
    m_impressao->ImprimirDaTela(numero);
    QCOMPARE(m_impressao->IndiceImpressora(), qint16(-1));
    QCOMPARE(m_operador->dialogos, 2);
    QCOMPARE(m_impressao->Atual()->DeviceName, QString("Sala"));
}

void TesteImpressao::semImpressoraNadaSai()
{
    m_impressoras->nomes.clear();
    m_impressao->ImprimirSelecionadas({Gravar(Bolo())});
    QCOMPARE(m_operador->dialogos, 1);
    QCOMPARE(m_impressao->IndiceImpressora(), qint16(-1));
    QVERIFY(m_impressoras->pedidas.isEmpty());
    QVERIFY(m_avisos.textos.isEmpty());

    // One that is installed later is found.
    m_impressoras->nomes = QStringList{"Cozinha"};
    m_impressao->ImprimirSelecionadas({1});
    QCOMPARE(m_avisos.textos, QStringList{"Documento Impresso com Sucesso"});
}

void TesteImpressao::trabalhoRecusadoNaoDizSucesso()
{
    class SemFila : public ImpressorasDeTeste
    {
    public:
        std::unique_ptr<SaidaImpressao> Criar(const ImpressoraAtual &, const QString &) const override
        {
            throw ErroImpressao("A Impressora \"Cozinha\" não foi Encontrada.");
        }
    };
    m_impressoras = std::make_unique<SemFila>();
    m_impressao =
        std::make_unique<Impressao>(*m_banco, *m_figuras, m_avisos, m_painel, *m_impressoras, kSite);
    m_impressao->ImprimirSelecionadas({Gravar(Bolo())});
    QCOMPARE(m_avisos.textos, QStringList{"A Impressora \"Cozinha\" não foi Encontrada."});
    QCOMPARE(m_avisos.icones, QList{Avisos::Icone::Parada});
    QCOMPARE(m_painel.diario.last(), QString("esconder"));
}

void TesteImpressao::arquivoQueNaoSaiuNaoDizSucesso()
{
    m_impressoras = std::make_unique<ImpressorasDeTeste>(m_pasta->filePath("não existe"));
    m_impressao =
        std::make_unique<Impressao>(*m_banco, *m_figuras, m_avisos, m_painel, *m_impressoras, kSite);
    m_impressao->ImprimirDoMenu(Gravar(Bolo()));
    QCOMPARE(m_avisos.icones, QList{Avisos::Icone::Parada});
    QVERIFY2(m_avisos.textos[0].contains("não foi Impresso") ||
                 m_avisos.textos[0].contains("Nada foi Impresso"),
             qPrintable(m_avisos.textos[0]));
    QCOMPARE(m_painel.diario.last(), QString("esconder"));
}

void TesteImpressao::receitaQueSumiuENomeada()
{
    const qint64 numero = Gravar(Bolo());
    const qint64 sumida = numero + 1;
    m_impressao = std::make_unique<Impressao>(
        *m_banco, *m_figuras, m_avisos, m_painel, *m_impressoras, kSite,
        [=](qint64 lngReceita) { return lngReceita == sumida ? QString("Pão da Vó") : QString(); });
    m_impressao->ImprimirSelecionadas({numero, sumida});
    QCOMPARE(m_avisos.textos,
             QStringList{"A Receita \"Pão da Vó\" não está mais no Livro. O Documento não foi Impresso!"});
    QCOMPARE(m_avisos.icones, QList{Avisos::Icone::Parada});
    QCOMPARE(m_painel.diario.last(), QString("esconder"));
    QVERIFY(!Saiu(1)); // not even the first recipe

    m_impressao->ImprimirDaTela(sumida + 1); // whose name nobody knows
    QCOMPARE(
        m_avisos.textos.last(),
        QString("A Receita nº %1 não está mais no Livro. O Documento não foi Impresso!").arg(sumida + 1));
    m_impressao->ImprimirDoMenu(numero);
    QCOMPARE(m_avisos.textos.last(), QString("Documento Impresso com Sucesso"));
}

void TesteImpressao::impressoraQueSumiuDaListaDaLugarAPadrao()
{
    const qint64 numero = Gravar(Bolo());
    m_operador->aoAbrir = [](frmImpressao &dialogo) {
        dialogo.findChild<QComboBox *>("cmbImpressora")->setCurrentText("Sala");
        QTest::mouseClick(dialogo.findChild<QPushButton *>("cmdImprimir"), Qt::LeftButton);
    };
    m_impressao->ImprimirDaTela(numero);
    QCOMPARE(m_impressoras->pedidas.last().DeviceName, QString("Sala"));

    m_impressoras->nomes = QStringList{"Cozinha"};
    QString mostrada;
    m_operador->aoAbrir = [&](frmImpressao &dialogo) {
        mostrada = dialogo.findChild<QComboBox *>("cmbImpressora")->currentText();
        QTest::mouseClick(dialogo.findChild<QPushButton *>("cmdImprimir"), Qt::LeftButton);
    };
    m_impressao->ImprimirDaTela(numero);
    QCOMPARE(mostrada, QString("Cozinha"));
    QCOMPARE(m_impressoras->pedidas.last().DeviceName, QString("Cozinha"));
}

void TesteImpressao::aPadraoMudadaValeEnquantoNinguemEscolheu()
{
    const qint64 numero = Gravar(Bolo());
    QStringList mostradas;
    m_operador->aoAbrir = [&](frmImpressao &dialogo) {
        mostradas << dialogo.findChild<QComboBox *>("cmbImpressora")->currentText();
        QTest::keyClick(&dialogo, Qt::Key_Escape);
    };
    m_impressao->ImprimirDaTela(numero);
    m_impressoras->padrao = "Sala";
    m_impressao->ImprimirDaTela(numero);
    QCOMPARE(mostradas, (QStringList{"Cozinha", "Sala"}));
}

void TesteImpressao::erroNoLivroEscondeOPainelENaoImprime()
{
    const qint64 numero = Gravar(Bolo());
    m_painel.aoAvancar = [this](int) {
        QFile livro(m_banco->CaminhoDoLivro());
        QVERIFY(livro.open(QIODevice::WriteOnly) && livro.write("isto já não é um livro") > 0);
    };
    QVERIFY_EXCEPTION_THROWN(m_impressao->ImprimirSelecionadas({numero, numero}), ErroBanco);
    QCOMPARE(m_painel.diario,
             (QStringList{"mostrar 2: Efetuando Impressão das Receitas...", "1", "esconder"}));
    QVERIFY(m_avisos.textos.isEmpty());
    QVERIFY(!Saiu(1));        // not even the first recipe
    Ponteiro::NormalSempre(); // the error report would do it
}

void TesteImpressao::segundoPedidoDuranteAImpressaoEIgnorado()
{
    const qint64 numero = Gravar(Bolo());
    m_painel.aoAvancar = [&](int) {
        QVERIFY(!Operacao::Pedir(this, [&] { m_impressao->ImprimirDoMenu(numero); }));
    };
    m_impressao->ImprimirSelecionadas({numero, numero});
    QCOMPARE(m_operador->dialogos, 1);
    QCOMPARE(m_impressoras->pedidas.size(), 1);
    QCOMPARE(m_avisos.textos, QStringList{"Documento Impresso com Sucesso"});
}

void TesteImpressao::paginasDoPdf_data()
{
    QTest::addColumn<int>("resolucao");
    QTest::newRow("1200 pontos por polegada") << 1200;
    QTest::newRow("300") << 300;
    QTest::newRow("72, a do rascunho") << 72;
}

/// A recipe of three pages: footers, headers, full lines to the right edge, last lines at the left.
void TesteImpressao::paginasDoPdf()
{
    QFETCH(int, resolucao);
    m_impressoras->resolucao = resolucao;
    ReceitaImpressa receita = Bolo();
    receita.Modo = Paragrafos(40);
    receita.Observacao.clear();
    m_impressao->ImprimirDaTela(Gravar(receita));
    QCOMPARE(m_avisos.textos, QStringList{"Documento Impresso com Sucesso"});

    const Documento documento = LerPdf(m_impressoras->Arquivo(1));
    QCOMPARE(documento.paginas, 3);
    for (int pagina = 1; pagina <= 3; ++pagina) {
        const QString texto = documento.Texto(pagina);
        QVERIFY2(texto.startsWith("Bolo de fubá da Vovó Cota (Caderno da família)"), qPrintable(texto));
        QVERIFY(texto.contains(QString("Pag.: %1").arg(pagina)));
        QCOMPARE(texto.count("Pag.:"), 1);
        QVERIFY(texto.contains("Receita Impressa com o Cozinhario 2005 - Por Tamarel Informática Para mais "
                               "informações visite nosso site www.tamarel.example"));
    }

    // The method's lines, by page and height.
    std::map<std::pair<int, int>, QList<Palavra>> linhas;
    bool noModo = false;
    for (const Palavra &palavra : documento.palavras) {
        noModo |= palavra.texto == "Amasse";
        if (noModo && palavra.y1 > 18 && palavra.y1 < documento.H - 22)
            linhas[{palavra.pagina, static_cast<int>(std::lround(palavra.y1 * 2))}].append(palavra);
    }
    QVERIFY(linhas.size() > 80);
    int cheias = 0;
    int ultimas = 0;
    for (const auto &[lugar, linha] : linhas) {
        QVERIFY2(qAbs(linha.first().x1 - 15) < 0.1, qPrintable(QString::number(linha.first().x1)));
        const double fim = linha.last().x2;
        if (linha.last().texto == "frios.") {
            ++ultimas;
            QVERIFY2(fim < documento.W - 5.1, qPrintable(QString::number(fim)));
            for (qsizetype i = 1; i < linha.size(); ++i) // natural blanks between its words
                QVERIFY(qAbs(linha[i].x1 - linha[i - 1].x2 - 1.23) < 0.25);
        } else {
            ++cheias;
            QVERIFY2(
                qAbs(fim - (documento.W - 5)) < 0.1,
                qPrintable(QString("%1 of %2 at %3").arg(fim).arg(documento.W - 5).arg(linha.last().texto)));
        }
    }
    QCOMPARE(ultimas, 40);
    QVERIFY(cheias >= 40);

    // The page number ends at the right edge, too.
    for (qsizetype i = 1; i < documento.palavras.size(); ++i) {
        if (documento.palavras[i - 1].texto == "Pag.:")
            QVERIFY(qAbs(documento.palavras[i].x2 - (documento.W - 5)) < 0.1);
    }
}

void TesteImpressao::figuraNoLugar()
{
    ReceitaImpressa receita = Bolo();
    receita.Figura = Figura();
    m_operador->aoAbrir = [](frmImpressao &dialogo) {
        dialogo.findChild<QRadioButton *>("optColorido")->click();
        QTest::mouseClick(dialogo.findChild<QPushButton *>("cmdImprimir"), Qt::LeftButton);
    };
    m_impressao->ImprimirDaTela(Gravar(receita));
    const Documento documento = LerPdf(m_impressoras->Arquivo(1));
    const auto tipo = std::find_if(documento.palavras.begin(), documento.palavras.end(),
                                   [](const Palavra &palavra) { return palavra.texto == "Tipo"; });
    QVERIFY(tipo != documento.palavras.end());
    const QImage foto = Fotografar(m_impressoras->Arquivo(1), 1);
    QVERIFY(!foto.isNull());
    const auto cor = [&](double x, double y) {
        const QColor pixel =
            foto.pixelColor(static_cast<int>((x + kMargem) * 5), static_cast<int>((y + kMargem) * 5));
        return qAbs(pixel.red() - 200) < 12 && qAbs(pixel.green() - 60) < 12 && qAbs(pixel.blue() - 40) < 12;
    };
    const double direita = documento.W - 5;
    // The name's and the origin's line are the header's; the facts begin 4.5 under the rule.
    const double topo = 5 + 6 + 5.1 + 4.5;
    QVERIFY2(qAbs(tipo->y1 - topo) < 1, qPrintable(QString::number(tipo->y1)));
    for (double x : {direita - 54.5, direita - 0.5}) {
        QVERIFY(cor(x, topo + 0.5));
        QVERIFY(cor(x, topo + 44.5));
    }
    for (double y : {topo - 0.5, topo + 45.5}) {
        QVERIFY(!cor(direita - 30, y));
        QVERIFY(!cor(direita - 0.5, y));
    }
    QVERIFY(!cor(direita - 55.5, topo + 20));
    QVERIFY(!cor(direita + 0.5, topo + 20));
}

void TesteImpressao::cadaReceitaComecaNaPaginaUm()
{
    ReceitaImpressa longa = Bolo();
    longa.Modo = Paragrafos(30);
    const qint64 primeira = Gravar(longa);
    const qint64 segunda = Gravar(Bolo());
    m_impressao->ImprimirSelecionadas({primeira, segunda});
    const Documento documento = LerPdf(m_impressoras->Arquivo(1));
    QCOMPARE(documento.paginas, 3);
    QVERIFY(documento.Texto(1).contains("Pag.: 1"));
    QVERIFY(documento.Texto(2).contains("Pag.: 2"));
    QVERIFY(documento.Texto(3).contains("Pag.: 1"));
}

void TesteImpressao::sairDoProgramaNoMeioNaoImprime()
{
    const qint64 numero = Gravar(Bolo());
    m_painel.aoAvancar = [](int) { EncerrarPrograma(); };
    m_impressao->ImprimirSelecionadas({numero, numero, numero});
    QCOMPARE(m_painel.diario,
             (QStringList{"mostrar 3: Efetuando Impressão das Receitas...", "1", "esconder"}));
    QVERIFY(m_avisos.textos.isEmpty());
    QVERIFY(!Saiu(1));
}

QTEST_MAIN(TesteImpressao)
#include "teste_impressao.moc"
