#include "print/Impressao.h"
#include "print/tests/Duplos.h"
#include "print/tests/ReceitasDeTeste.h"
#include "print/tests/ServidorDeImpressao.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/Figuras.h"

#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTest>

namespace
{
/// A printer's description with paper, duplex, quality and colour, and what each does when nothing is asked.
QString Descricao(const QString &papel, const QString &duplex, const QString &qualidade, const QString &cor)
{
    const auto escolha = [](const QString &nome, const QString &padrao, const QStringList &escolhas) {
        QString texto = QString("*OpenUI *%1: PickOne\n*Default%1: %2\n").arg(nome, padrao);
        for (const QString &uma : escolhas)
            texto += QString("*%1 %2/%2: \"\"\n").arg(nome, uma);
        return texto + QString("*CloseUI: *%1\n").arg(nome);
    };
    return "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n*LanguageVersion: English\n"
           "*LanguageEncoding: ISOLatin1\n*PCFileName: \"TESTE.PPD\"\n*Manufacturer: \"Teste\"\n"
           "*Product: \"(Teste)\"\n*ModelName: \"Teste\"\n*ShortNickName: \"Teste\"\n*NickName: \"Teste\"\n"
           "*PSVersion: \"(3010.000) 0\"\n*LanguageLevel: \"3\"\n*ColorDevice: True\n*DefaultColorSpace: "
           "RGB\n"
           "*cupsFilter2: \"application/pdf application/pdf 0 -\"\n" +
           escolha("PageSize", papel, {"A4", "Letter"}) + escolha("PageRegion", papel, {"A4", "Letter"}) +
           "*DefaultImageableArea: " + papel +
           "\n*ImageableArea A4/A4: \"17 17 578 825\"\n*ImageableArea Letter/Letter: \"17 17 595 775\"\n"
           "*DefaultPaperDimension: " +
           papel + "\n*PaperDimension A4/A4: \"595 842\"\n*PaperDimension Letter/Letter: \"612 792\"\n" +
           escolha("Duplex", duplex, {"None", "DuplexNoTumble", "DuplexTumble"}) +
           escolha("cupsPrintQuality", qualidade, {"Draft", "Normal", "High", "600dpi"}) +
           escolha("ColorModel", cor, {"Gray", "RGB", "CMYK"}) +
           "*DefaultFont: Courier\n*Font Courier: Standard \"(002.004S)\" Standard ROM\n";
}

QList<ServidorDeImpressao::Fila> Filas()
{
    return {
        {"Simples"},
        {"Padrao", true},
        {"Carta", false, true, {"media na_letter_8.5x11in"}},
        {"Tres", false, true, {"copies 3"}},
        {"Otima", false, true, {"print-quality 5"}},
        {"Rascunho", false, true, {"print-quality 3"}},
        {"Pontos", false, true, {"printer-resolution 600dpi"}},
        {"Dupla", false, true, {"sides two-sided-long-edge"}},
        {"Deitada", false, true, {"orientation-requested 4"}},
        {"DeitadaAoContrario", false, true, {"orientation-requested 5"}},
        {"Cores", false, true, {"print-color-mode color"}},
        {"Cinza", false, true, {"print-color-mode monochrome"}},
        {"Tudo",
         false,
         true,
         {"copies 4", "media na_letter_8.5x11in", "print-quality 5", "print-color-mode color",
          "orientation-requested 4", "sides two-sided-short-edge"}},
        {"DescritaCarta", false, true, {}, Descricao("Letter", "DuplexNoTumble", "Normal", "RGB")},
        {"DescritaOtima", false, true, {}, Descricao("A4", "None", "High", "Gray")},
        {"DescritaPontos", false, true, {}, Descricao("A4", "None", "600dpi", "CMYK")},
        {"DescritaRascunho", false, true, {"copies 2"}, Descricao("A4", "None", "Draft", "CMYK")},
    };
}

QByteArray Rodar(const QString &programa, const QStringList &argumentos)
{
    QProcess processo;
    processo.start(programa, argumentos);
    if (!processo.waitForStarted())
        qFatal("%s is missing: install poppler-utils", qPrintable(programa));
    processo.waitForFinished(60000);
    return processo.readAllStandardOutput();
}
} // namespace

/// What queues say of themselves, what the dialog then shows, and what the job takes along.
class TesteFilas : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void oDialogoEOTrabalhoDizemOQueAFilaDiz_data();
    void oDialogoEOTrabalhoDizemOQueAFilaDiz();
    void oQueOUsuarioMudaVale_data();
    void oQueOUsuarioMudaVale();
    void filaQueSomeComODialogoAberto();
    void filaQueSomeNoMeioDoTrabalho();
    void servicoMudoNaoEFilaQueFalta();
    void sairNoMeioNaoDeixaArquivo();
    void semPadraoEAPrimeira_data(); // from here on the service has other queues
    void semPadraoEAPrimeira();

private:
    void ReiniciarCom(const QList<ServidorDeImpressao::Fila> &filas);
    void Abrir();
    QStringList OpcoesDoTrabalho() const;

    ServidorDeImpressao m_servidor;
    QTemporaryDir m_pasta;
    ImpressorasDoSistema m_impressoras;
    std::unique_ptr<Banco> m_banco;
    std::unique_ptr<Figuras> m_figuras;
    std::unique_ptr<Impressao> m_impressao;
    std::unique_ptr<Operador> m_operador;
    AvisosDeTeste m_avisos;
    PainelDeTeste m_painel;
    qsizetype m_antes = 0;
};

void TesteFilas::initTestCase()
{
    if (!ServidorDeImpressao::Instalado())
        QSKIP("the print scheduler is not installed (Debian: cups-daemon, cups-client)");
    QString erro;
    QVERIFY2(m_servidor.Iniciar(erro, Filas()), qPrintable(erro));
    m_banco = std::make_unique<Banco>(m_pasta.path());
    m_figuras = std::make_unique<Figuras>(*m_banco);
    Comandos::Receita receita;
    receita.Nome = "Pão";
    receita.Modo = "Misture e asse.";
    m_banco->ExecutarSQL(Comandos::SqlInserirReceita(receita, QDate(2005, 11, 21)));
}

void TesteFilas::init()
{
    m_avisos = AvisosDeTeste();
    m_painel = PainelDeTeste();
    m_operador = std::make_unique<Operador>();
    m_impressao = std::make_unique<Impressao>(*m_banco, *m_figuras, m_avisos, m_painel, m_impressoras,
                                              ReceitasDeTeste::kSite);
    m_antes = m_servidor.Trabalhos().size();
    QVERIFY(m_servidor.EscreverLpoptions(""));
}

void TesteFilas::cleanup()
{
    m_operador.reset();
    m_servidor.Acordar();
}

void TesteFilas::oDialogoEOTrabalhoDizemOQueAFilaDiz_data()
{
    QTest::addColumn<QString>("lpoptions");
    QTest::addColumn<QString>("impressora");
    QTest::addColumn<QString>("mostra"); // copies and the chosen options
    QTest::addColumn<int>("copias");
    QTest::addColumn<QString>("pontos"); // the page, in points
    QTest::addColumn<QStringList>("leva");
    const auto linha = [](const char *nome, const QString &lpoptions, const QString &impressora,
                          const QString &mostra, int copias, const QString &pontos, const QStringList &leva) {
        QTest::newRow(nome) << lpoptions << impressora << mostra << copias << pontos << leva;
    };
    const QString a4 = "595 x 842";
    const QString carta = "612 x 792";
    const QString nada = "1 Retrato Normal Preto e Branco";
    linha("padrao do servico", "", "Padrao", nada, 1, a4,
          {"print-quality=4", "print-color-mode=monochrome", "orientation-requested=3"});
    linha("padrao do usuario", "Default Simples\n", "Simples", nada, 1, a4, {});
    linha("padrao do usuario que sumiu", "Default Vendida\n", "Padrao", nada, 1, a4, {});
    linha("carta", "Default Carta\n", "Carta", nada, 1, carta, {"media=na_letter_8.5x11in"});
    linha("tres copias", "Default Tres\n", "Tres", "3 Retrato Normal Preto e Branco", 3, a4, {});
    linha("otima", "Default Otima\n", "Otima", "1 Retrato Ótima Preto e Branco", 1, a4, {"print-quality=5"});
    linha("rascunho", "Default Rascunho\n", "Rascunho", "1 Retrato Rascunho Preto e Branco", 1, a4,
          {"print-quality=3"});
    linha("resolucao em pontos", "Default Pontos\n", "Pontos", "1 Retrato Baixa Preto e Branco", 1, a4,
          {"print-quality=3"});
    linha("dois lados", "Default Dupla\n", "Dupla", nada, 1, a4, {"sides=two-sided-long-edge"});
    linha("deitada", "Default Deitada\n", "Deitada", "1 Paisagem Normal Preto e Branco", 1, "842 x 595",
          {"orientation-requested=4"});
    linha("deitada ao contrario", "Default DeitadaAoContrario\n", "DeitadaAoContrario",
          "1 Paisagem Normal Preto e Branco", 1, "842 x 595", {"orientation-requested=5"});
    linha("cores", "Default Cores\n", "Cores", "1 Retrato Normal Colorido", 1, a4,
          {"print-color-mode=color"});
    linha("cinza", "Default Cinza\n", "Cinza", nada, 1, a4, {"print-color-mode=monochrome"});
    linha("tudo junto", "Default Tudo\n", "Tudo", "4 Paisagem Ótima Colorido", 4, "792 x 612",
          {"print-quality=5", "print-color-mode=color", "orientation-requested=4",
           "sides=two-sided-short-edge", "media=na_letter_8.5x11in"});
    linha("descricao: carta, dois lados, cores", "Default DescritaCarta\n", "DescritaCarta",
          "1 Retrato Normal Colorido", 1, carta, {"sides=two-sided-long-edge", "ColorModel=RGB"});
    linha("descricao: otima e cinza", "Default DescritaOtima\n", "DescritaOtima",
          "1 Retrato Ótima Preto e Branco", 1, a4,
          {"print-quality=5", "cupsPrintQuality=High", "ColorModel=Gray", "print-color-mode=monochrome"});
    linha("descricao: resolucao", "Default DescritaPontos\n", "DescritaPontos", "1 Retrato Baixa Colorido", 1,
          a4, {"print-quality=3", "ColorModel=CMYK"});
    linha("descricao: rascunho, copias do servico", "Default DescritaRascunho\n", "DescritaRascunho",
          "2 Retrato Rascunho Colorido", 2, a4, {"print-quality=3", "cupsPrintQuality=Draft"});
    linha("opcoes do usuario", "Default Simples copies=5 media=Letter landscape print-quality=5\n", "Simples",
          "5 Paisagem Ótima Preto e Branco", 5, "792 x 612", {"media=Letter", "print-quality=5"});
    linha("opcoes do usuario sobre as da fila",
          "Default Tudo copies=1 orientation-requested=3 print-quality=4 print-color-mode=monochrome "
          "media=iso_a4_210x297mm sides=one-sided\n",
          "Tudo", nada, 1, a4,
          {"print-quality=4", "print-color-mode=monochrome", "orientation-requested=3", "sides=one-sided",
           "media=iso_a4_210x297mm"});
    linha("opcoes do usuario sobre a descricao",
          "Default DescritaCarta PageSize=A4 Duplex=None cupsPrintQuality=Draft ColorModel=Gray\n",
          "DescritaCarta", "1 Retrato Rascunho Preto e Branco", 1, a4,
          {"PageSize=A4", "Duplex=None", "cupsPrintQuality=Draft", "ColorModel=Gray"});
    linha("instancia",
          "Dest Simples\nDefault Simples/festa copies=7 print-color-mode=color sides=two-sided-long-edge\n",
          "Simples/festa", "7 Retrato Normal Colorido", 7, a4, {"sides=two-sided-long-edge"});
    linha("instancia de uma fila descrita", "Default DescritaOtima/carta PageSize=Letter\n",
          "DescritaOtima/carta", "1 Retrato Ótima Preto e Branco", 1, carta, {"PageSize=Letter"});
}

/// Opens the dialog on the user's default printer and confirms it untouched.
void TesteFilas::oDialogoEOTrabalhoDizemOQueAFilaDiz()
{
    QFETCH(QString, lpoptions);
    QFETCH(QString, impressora);
    QFETCH(QString, mostra);
    QFETCH(int, copias);
    QFETCH(QString, pontos);
    QFETCH(QStringList, leva);
    QVERIFY(m_servidor.EscreverLpoptions(lpoptions));
    QString mostrada;
    QString mostrado;
    m_operador->aoAbrir = [&](frmImpressao &dialogo) {
        mostrada = dialogo.findChild<QComboBox *>("cmbImpressora")->currentText();
        QStringList textos{dialogo.findChild<QLineEdit *>("txtCopies")->text()};
        for (const char *nome : {"optRetrato", "optPaisagem", "optRascunho", "optBaixa", "optNormal",
                                 "optOtima", "optPretoBranco", "optColorido"}) {
            auto *opcao = dialogo.findChild<QRadioButton *>(nome);
            if (opcao->isChecked())
                textos << opcao->text();
        }
        mostrado = textos.join(u' ');
        QTest::mouseClick(dialogo.findChild<QPushButton *>("cmdImprimir"), Qt::LeftButton);
    };
    m_impressao->ImprimirDaTela(1);
    QCOMPARE(m_avisos.textos, QStringList{"Documento Impresso com Sucesso"});
    QCOMPARE(mostrada, impressora);
    QCOMPARE(mostrado, mostra);
    QTRY_COMPARE(m_servidor.Trabalhos().size(), m_antes + 1);
    const ServidorDeImpressao::Trabalho trabalho = m_servidor.Trabalhos().last();
    QCOMPARE(trabalho.copias.toInt(), copias);
    const QStringList opcoes = trabalho.opcoes.split(u' ');
    for (const QString &opcao : leva)
        QVERIFY2(opcoes.contains(opcao), qPrintable(opcao + " is not in " + trabalho.opcoes));
    const QString sobre = QString::fromUtf8(Rodar("pdfinfo", {trabalho.arquivo}));
    QVERIFY2(sobre.contains(pontos), qPrintable(sobre));
}

void TesteFilas::oQueOUsuarioMudaVale_data()
{
    QTest::addColumn<QString>("lpoptions");
    QTest::addColumn<QString>("copias");
    QTest::addColumn<QStringList>("marcar");
    QTest::addColumn<QStringList>("leva");
    QTest::addColumn<QStringList>("naoLeva");
    QTest::newRow("uma copia na fila de tres") << "Default Tres\n"
                                               << "1" << QStringList{} << QStringList{} << QStringList{};
    QTest::newRow("tudo ao contrario")
        << "Default Tudo\n"
        << "1" << QStringList{"optRetrato", "optNormal", "optPretoBranco"}
        << QStringList{"orientation-requested=3", "print-quality=4", "print-color-mode=monochrome",
                       "sides=two-sided-short-edge", "media=na_letter_8.5x11in"}
        << QStringList{};
    QTest::newRow("a descricao muda junto") << "Default DescritaOtima\n"
                                            << "2" << QStringList{"optRascunho", "optColorido"}
                                            << QStringList{"print-quality=3", "cupsPrintQuality=Draft",
                                                           "print-color-mode=color", "ColorModel=RGB"}
                                            << QStringList{"cupsPrintQuality=High", "ColorModel=Gray"};
    QTest::newRow("a opcao do usuario nao fica contra o dialogo")
        << "Default DescritaCarta cupsPrintQuality=Draft ColorModel=Gray landscape\n"
        << "1" << QStringList{"optOtima", "optColorido", "optRetrato"}
        << QStringList{"print-quality=5", "cupsPrintQuality=High", "orientation-requested=3"}
        << QStringList{"cupsPrintQuality=Draft", "ColorModel=Gray", "landscape"};
}

void TesteFilas::oQueOUsuarioMudaVale()
{
    QFETCH(QString, lpoptions);
    QFETCH(QString, copias);
    QFETCH(QStringList, marcar);
    QFETCH(QStringList, leva);
    QFETCH(QStringList, naoLeva);
    QVERIFY(m_servidor.EscreverLpoptions(lpoptions));
    m_operador->aoAbrir = [&](frmImpressao &dialogo) {
        dialogo.findChild<QLineEdit *>("txtCopies")->setText(copias);
        for (const QString &opcao : marcar)
            dialogo.findChild<QRadioButton *>(opcao)->click();
        QTest::mouseClick(dialogo.findChild<QPushButton *>("cmdImprimir"), Qt::LeftButton);
    };
    m_impressao->ImprimirDoMenu(1);
    QCOMPARE(m_avisos.textos, QStringList{"Documento Impresso com Sucesso"});
    QTRY_COMPARE(m_servidor.Trabalhos().size(), m_antes + 1);
    const ServidorDeImpressao::Trabalho trabalho = m_servidor.Trabalhos().last();
    QCOMPARE(trabalho.copias, copias);
    const QStringList opcoes = trabalho.opcoes.split(u' ');
    for (const QString &opcao : leva)
        QVERIFY2(opcoes.contains(opcao), qPrintable(opcao + " is not in " + trabalho.opcoes));
    for (const QString &opcao : naoLeva)
        QVERIFY2(!opcoes.contains(opcao), qPrintable(opcao + " is in " + trabalho.opcoes));
}

void TesteFilas::filaQueSomeComODialogoAberto()
{
    m_operador->aoAbrir = [&](frmImpressao &dialogo) {
        dialogo.findChild<QComboBox *>("cmbImpressora")->setCurrentText("Cinza");
        QVERIFY(m_servidor.Remover("Cinza"));
        QTest::mouseClick(dialogo.findChild<QPushButton *>("cmdImprimir"), Qt::LeftButton);
    };
    m_impressao->ImprimirDoMenu(1);
    QCOMPARE(m_avisos.textos,
             QStringList{"A Impressora \"Cinza\" não foi Encontrada. O Documento não foi Impresso!"});
    QCOMPARE(m_avisos.icones, QList{Avisos::Icone::Parada});
}

void TesteFilas::filaQueSomeNoMeioDoTrabalho()
{
    m_operador->aoAbrir = [&](frmImpressao &dialogo) {
        dialogo.findChild<QComboBox *>("cmbImpressora")->setCurrentText("Cores");
        QTest::mouseClick(dialogo.findChild<QPushButton *>("cmdImprimir"), Qt::LeftButton);
    };
    m_painel.aoAvancar = [this](int) { QVERIFY(m_servidor.Remover("Cores")); };
    m_impressao->ImprimirDoMenu(1);
    QCOMPARE(m_avisos.textos,
             QStringList{"A Impressora \"Cores\" não foi Encontrada. O Documento não foi Impresso!"});
    QCOMPARE(m_painel.diario.last(), QString("esconder"));
}

void TesteFilas::servicoMudoNaoEFilaQueFalta()
{
    m_operador->aoAbrir = [&](frmImpressao &dialogo) {
        dialogo.findChild<QComboBox *>("cmbImpressora")->setCurrentText("Simples");
        QTest::mouseClick(dialogo.findChild<QPushButton *>("cmdImprimir"), Qt::LeftButton);
    };
    m_painel.aoAvancar = [this](int) { m_servidor.Adormecer(); };
    m_impressao->ImprimirDoMenu(1);
    QCOMPARE(m_avisos.textos,
             QStringList{"O Serviço de Impressão não Responde. O Documento não foi Impresso!"});

    // The dialog opens all the same, and nothing hangs.
    m_operador->aoAbrir = [&](frmImpressao &dialogo) {
        QCOMPARE(dialogo.findChild<QComboBox *>("cmbImpressora")->count(), 0);
        QCOMPARE(dialogo.findChild<QComboBox *>("cmbImpressora")->placeholderText(),
                 QString("O serviço de impressão não responde"));
        QTest::mouseClick(dialogo.findChild<QPushButton *>("cmdImprimir"), Qt::LeftButton);
    };
    m_impressao->ImprimirDaTela(1);
    QCOMPARE(m_operador->dialogos, 2);
    QCOMPARE(m_avisos.textos.size(), 1);

    m_servidor.Acordar();
    m_operador->aoAbrir = [&](frmImpressao &dialogo) {
        QTest::mouseClick(dialogo.findChild<QPushButton *>("cmdImprimir"), Qt::LeftButton);
    };
    m_painel.aoAvancar = nullptr;
    m_impressao->ImprimirDoMenu(1);
    QCOMPARE(m_avisos.textos.last(), QString("Documento Impresso com Sucesso"));
    QTRY_COMPARE(m_servidor.Trabalhos().size(), m_antes + 1);
}

void TesteFilas::sairNoMeioNaoDeixaArquivo()
{
    const auto arquivos = [] {
        return QDir::temp().entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    };
    // A folder of the test's own: other programs come and go in the machine's.
    const QTemporaryDir temporaria;
    qputenv("TMPDIR", QFile::encodeName(temporaria.path()));
    QCOMPARE(QDir::tempPath(), temporaria.path());
    m_operador->aoAbrir = [&](frmImpressao &dialogo) {
        QTest::mouseClick(dialogo.findChild<QPushButton *>("cmdImprimir"), Qt::LeftButton);
    };
    bool durante = false;
    m_painel.aoAvancar = [&](int) {
        durante = true;
        QCOMPARE(arquivos(), QStringList()); // so not even a program that is killed now leaves one
    };
    m_impressao->ImprimirSelecionadas({1, 99}); // given up at the second one
    QVERIFY(durante);
    QCOMPARE(arquivos(), QStringList());
    m_impressao->ImprimirDoMenu(1);
    QCOMPARE(m_avisos.textos.last(), QString("Documento Impresso com Sucesso"));
    QCOMPARE(arquivos(), QStringList());
    qunsetenv("TMPDIR");
    QTRY_COMPARE(m_servidor.Trabalhos().size(), m_antes + 1);
}

void TesteFilas::ReiniciarCom(const QList<ServidorDeImpressao::Fila> &filas)
{
    m_servidor.Parar();
    QString erro;
    QVERIFY2(m_servidor.Iniciar(erro, filas), qPrintable(erro));
}

void TesteFilas::semPadraoEAPrimeira_data()
{
    QTest::addColumn<QStringList>("filas");
    QTest::newRow("duas, nenhuma padrao") << QStringList{"Alfa", "Beta"};
    QTest::newRow("uma so") << QStringList{"Beta"};
}

void TesteFilas::semPadraoEAPrimeira()
{
    QFETCH(QStringList, filas);
    QList<ServidorDeImpressao::Fila> novas;
    for (const QString &fila : filas)
        novas.append({fila});
    ReiniciarCom(novas);
    QString mostrada;
    m_operador->aoAbrir = [&](frmImpressao &dialogo) {
        mostrada = dialogo.findChild<QComboBox *>("cmbImpressora")->currentText();
        QTest::mouseClick(dialogo.findChild<QPushButton *>("cmdImprimir"), Qt::LeftButton);
    };
    m_impressao->ImprimirDaTela(1);
    QCOMPARE(mostrada, filas.first());
    QCOMPARE(m_avisos.textos, QStringList{"Documento Impresso com Sucesso"});
    QTRY_COMPARE(m_servidor.Trabalhos().size(), m_antes + 1);
}

QTEST_MAIN(TesteFilas)
#include "teste_filas.moc"
