#include "print/frmImpressao.h"
#include "print/tests/Duplos.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTest>

class TesteFrmImpressao : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void temOsControlesEOsTextos_data();
    void temOsControlesEOsTextos();
    void mostraAConfiguracaoAtual_data();
    void mostraAConfiguracaoAtual();
    void listaAsImpressorasNaOrdemDoSistema();
    void zeroCopiasMostraUma();
    void cancelarNaoMudaNada_data();
    void cancelarNaoMudaNada();
    void confirmarGravaTudo();
    void trocarDeImpressoraParteDaConfiguracaoDela();
    void enterNoNumeroDeCopiasConfirma();
    void asSetasContamDeCabecaParaBaixo_data();
    void asSetasContamDeCabecaParaBaixo();
    void aBarraFicaIgualAoNumeroDigitado();
    void copiasDigitadas_data();
    void copiasDigitadas();
    void semImpressoraConfirmarDaMenosUm();
    void impressoraAtualForaDaListaNaoEscolheNenhuma();
    void erroAoListarNaoImpedeODialogo();
    void tabPercorreOsControlesEmOrdem();

private:
    void Abrir();
    template <typename T>
    T *Controle(const char *nome)
    {
        auto *controle = m_dialogo->findChild<T *>(nome);
        if (!controle)
            qFatal("no control %s", nome);
        return controle;
    }
    QString Marcadas();
    void Seta(bool deCima);
    void Marcar(const char *opcao);

    std::unique_ptr<ImpressorasDeTeste> m_impressoras;
    ImpressoraAtual m_atual;
    std::unique_ptr<frmImpressao> m_dialogo;
};

void TesteFrmImpressao::init()
{
    m_impressoras = std::make_unique<ImpressorasDeTeste>();
    m_atual = {"Cozinha", 1, 1, -3, 1};
}

void TesteFrmImpressao::cleanup()
{
    m_dialogo.reset();
}

void TesteFrmImpressao::Abrir()
{
    m_dialogo = std::make_unique<frmImpressao>(*m_impressoras, m_atual);
    m_dialogo->show();
    m_dialogo->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_dialogo.get()));
}

/// The chosen options, e.g. "Retrato Baixa Preto e Branco".
QString TesteFrmImpressao::Marcadas()
{
    QStringList marcadas;
    for (const char *nome : {"optRetrato", "optPaisagem", "optRascunho", "optBaixa", "optNormal", "optOtima",
                             "optPretoBranco", "optColorido"}) {
        if (Controle<QRadioButton>(nome)->isChecked())
            marcadas << Controle<QRadioButton>(nome)->text();
    }
    return marcadas.join(u' ');
}

/// A click with the mouse on one of the spin bar's arrows.
void TesteFrmImpressao::Seta(bool deCima)
{
    auto *barra = Controle<QScrollBar>("VScrllCopia");
    QStyleOptionSlider opcao;
    opcao.initFrom(barra);
    opcao.orientation = Qt::Vertical;
    opcao.subControls = QStyle::SC_All;
    opcao.minimum = barra->minimum();
    opcao.maximum = barra->maximum();
    opcao.sliderPosition = opcao.sliderValue = barra->value();
    opcao.singleStep = barra->singleStep();
    opcao.pageStep = barra->pageStep();
    const QRect lugar = barra->style()->subControlRect(
        QStyle::CC_ScrollBar, &opcao, deCima ? QStyle::SC_ScrollBarSubLine : QStyle::SC_ScrollBarAddLine,
        barra);
    QVERIFY(!lugar.isEmpty());
    QTest::mouseClick(barra, Qt::LeftButton, {}, lugar.center());
}

void TesteFrmImpressao::Marcar(const char *opcao)
{
    auto *botao = Controle<QRadioButton>(opcao);
    QTest::mouseClick(botao, Qt::LeftButton, {}, QPoint(8, botao->height() / 2));
    QVERIFY(botao->isChecked());
}

void TesteFrmImpressao::temOsControlesEOsTextos_data()
{
    QTest::addColumn<QString>("nome");
    QTest::addColumn<QString>("texto");
    const auto linha = [](const char *nome, const char *texto) {
        QTest::newRow(nome) << QString(nome) << QString::fromUtf8(texto);
    };
    linha("fraSelImpressora", " Selecionar Impressora ");
    linha("fraOrientacao", " Orientação ");
    linha("optRetrato", "Retrato");
    linha("optPaisagem", "Paisagem");
    linha("fraQualidade", " Configuração da Qualidade ");
    linha("optRascunho", "Rascunho");
    linha("optBaixa", "Baixa");
    linha("optNormal", "Normal");
    linha("optOtima", "Ótima");
    linha("fraCor", " Cor ");
    linha("optPretoBranco", "Preto e Branco");
    linha("optColorido", "Colorido");
    linha("fraCopias", " Cópias ");
    linha("lblGeral", "Número :");
    linha("cmdImprimir", "&Imprimir");
    linha("cmdCancelar", "&Cancelar");
}

void TesteFrmImpressao::temOsControlesEOsTextos()
{
    QFETCH(QString, nome);
    QFETCH(QString, texto);
    Abrir();
    QCOMPARE(m_dialogo->windowTitle(), QString("Impressão da Receita"));
    auto *controle = m_dialogo->findChild<QWidget *>(nome);
    QVERIFY(controle && controle->isVisible());
    const char *propriedade = nome.startsWith("fra") ? "title" : "text";
    QCOMPARE(controle->property(propriedade).toString(), texto);
    QCOMPARE(m_dialogo->font().family(), QString("Verdana"));
}

void TesteFrmImpressao::mostraAConfiguracaoAtual_data()
{
    QTest::addColumn<ImpressoraAtual>("atual");
    QTest::addColumn<QString>("marcadas");
    QTest::addColumn<QString>("copias");
    QTest::newRow("retrato normal") << ImpressoraAtual{"Cozinha", 1, 1, -3, 1}
                                    << "Retrato Normal Preto e Branco"
                                    << "1";
    QTest::newRow("paisagem otima") << ImpressoraAtual{"Cozinha", 7, 2, -4, 2} << "Paisagem Ótima Colorido"
                                    << "7";
    QTest::newRow("rascunho") << ImpressoraAtual{"Sala", 999, 1, -1, 2} << "Retrato Rascunho Colorido"
                              << "999";
    QTest::newRow("baixa") << ImpressoraAtual{"Sala", 2, 1, -2, 1} << "Retrato Baixa Preto e Branco"
                           << "2";
    QTest::newRow("resolucao em pontos")
        << ImpressoraAtual{"Sala", 1, 1, 600, 1} << "Retrato Baixa Preto e Branco"
        << "1";
    QTest::newRow("valores desconhecidos")
        << ImpressoraAtual{"Sala", 1, 9, -9, 9} << "Retrato Baixa Preto e Branco"
        << "1";
    QTest::newRow("copias negativas ficam")
        << ImpressoraAtual{"Sala", -3, 1, -3, 1} << "Retrato Normal Preto e Branco"
        << "-3";
}

void TesteFrmImpressao::mostraAConfiguracaoAtual()
{
    QFETCH(ImpressoraAtual, atual);
    QFETCH(QString, marcadas);
    QFETCH(QString, copias);
    m_atual = atual;
    Abrir();
    QCOMPARE(Marcadas(), marcadas);
    QCOMPARE(Controle<QLineEdit>("txtCopies")->text(), copias);
    QCOMPARE(Controle<QComboBox>("cmbImpressora")->currentText(), atual.DeviceName);
}

void TesteFrmImpressao::listaAsImpressorasNaOrdemDoSistema()
{
    m_impressoras->nomes = {"Zebra", "Cozinha", "Ateliê"};
    Abrir();
    auto *combo = Controle<QComboBox>("cmbImpressora");
    QCOMPARE(combo->count(), 3);
    QCOMPARE(combo->itemText(0), QString("Zebra"));
    QCOMPARE(combo->itemText(2), QString("Ateliê"));
    QVERIFY(!combo->isEditable());
}

void TesteFrmImpressao::zeroCopiasMostraUma()
{
    m_atual.Copies = 0;
    Abrir();
    QCOMPARE(Controle<QLineEdit>("txtCopies")->text(), QString("1"));
    QCOMPARE(Controle<QScrollBar>("VScrllCopia")->value(), 1);
    QCOMPARE(Controle<QScrollBar>("VScrllCopia")->minimum(), 0);
    QCOMPARE(Controle<QScrollBar>("VScrllCopia")->maximum(), 999);
}

void TesteFrmImpressao::cancelarNaoMudaNada_data()
{
    QTest::addColumn<QString>("como");
    QTest::newRow("botao") << "cmdCancelar";
    for (const char *nome :
         {"cmbImpressora", "optRetrato", "optColorido", "txtCopies", "VScrllCopia", "cmdImprimir"})
        QTest::newRow(nome) << QString("Esc ") + nome; // whichever control has the keyboard
}

void TesteFrmImpressao::cancelarNaoMudaNada()
{
    QFETCH(QString, como);
    const ImpressoraAtual antes = m_atual;
    Abrir();
    Marcar("optPaisagem");
    Controle<QLineEdit>("txtCopies")->clear();
    QTest::keyClicks(Controle<QLineEdit>("txtCopies"), "5");
    if (como.startsWith("Esc "))
        QTest::keyClick(m_dialogo->findChild<QWidget *>(como.mid(4)), Qt::Key_Escape);
    else
        QTest::mouseClick(Controle<QPushButton>("cmdCancelar"), Qt::LeftButton);
    QVERIFY(!m_dialogo->isVisible());
    QCOMPARE(m_dialogo->Indice(), qint16(-1));
    QVERIFY(m_atual == antes);
}

void TesteFrmImpressao::confirmarGravaTudo()
{
    Abrir();
    Marcar("optPaisagem");
    Marcar("optRascunho");
    Marcar("optColorido");
    auto *txtCopies = Controle<QLineEdit>("txtCopies");
    QCOMPARE(txtCopies->selectedText(), QString("1")); // typing replaces the number
    QTest::keyClicks(txtCopies, "12");
    QTest::mouseClick(Controle<QPushButton>("cmdImprimir"), Qt::LeftButton);
    QVERIFY(!m_dialogo->isVisible());
    QCOMPARE(m_dialogo->Indice(), qint16(0));
    QVERIFY((m_atual == ImpressoraAtual{"Cozinha", 12, 2, -1, 2}));

    // The settings hold: the next dialog shows them.
    Abrir();
    QCOMPARE(Marcadas(), QString("Paisagem Rascunho Colorido"));
    QCOMPARE(Controle<QLineEdit>("txtCopies")->text(), QString("12"));
}

void TesteFrmImpressao::trocarDeImpressoraParteDaConfiguracaoDela()
{
    m_impressoras->propria.Copies = 4;
    Abrir();
    auto *combo = Controle<QComboBox>("cmbImpressora");
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_Down);
    QCOMPARE(combo->currentText(), QString("Sala"));
    Controle<QLineEdit>("txtCopies")->setText("70000"); // no 16-bit number: the setting is skipped
    QTest::mouseClick(Controle<QPushButton>("cmdImprimir"), Qt::LeftButton);
    QCOMPARE(m_dialogo->Indice(), qint16(1));
    QVERIFY((m_atual == ImpressoraAtual{"Sala", 4, 1, -3, 1}));
}

void TesteFrmImpressao::enterNoNumeroDeCopiasConfirma()
{
    Abrir();
    QTest::keyClicks(Controle<QLineEdit>("txtCopies"), "3");
    QTest::keyClick(Controle<QLineEdit>("txtCopies"), Qt::Key_Return);
    QCOMPARE(m_dialogo->Indice(), qint16(0));
    QCOMPARE(m_atual.Copies, 3);
}

void TesteFrmImpressao::asSetasContamDeCabecaParaBaixo_data()
{
    QTest::addColumn<QString>("antes");
    QTest::addColumn<QString>("setas"); // "+" the upper one, "-" the lower one
    QTest::addColumn<QString>("depois");
    QTest::newRow("a de cima aumenta") << "1"
                                       << "+"
                                       << "2";
    QTest::newRow("a de baixo diminui") << "5"
                                        << "-"
                                        << "4";
    QTest::newRow("de um a de baixo deixa um") << "1"
                                               << "--"
                                               << "1";
    QTest::newRow("de 999 a de cima deixa 999") << "999"
                                                << "++"
                                                << "999";
    QTest::newRow("de 999 a de baixo diminui") << "999"
                                               << "--"
                                               << "997";
    QTest::newRow("de 998 para o fim e de volta") << "998"
                                                  << "++--"
                                                  << "997";
    QTest::newRow("vai e volta") << "7"
                                 << "+++--+"
                                 << "9";
    QTest::newRow("de dois ate um") << "2"
                                    << "---"
                                    << "1";
    QTest::newRow("numero maior diminui") << "2000"
                                          << "-"
                                          << "1999";
    QTest::newRow("numero maior sobe") << "2000"
                                       << "++"
                                       << "2002";
    QTest::newRow("numero maior vai e volta") << "1000"
                                              << "-+-"
                                              << "998";
    QTest::newRow("negativo sobe") << "-3"
                                   << "+"
                                   << "-2";
    QTest::newRow("de zero sobe") << "0"
                                  << "+"
                                  << "1";
}

void TesteFrmImpressao::asSetasContamDeCabecaParaBaixo()
{
    QFETCH(QString, antes);
    QFETCH(QString, setas);
    QFETCH(QString, depois);
    Abrir();
    auto *txtCopies = Controle<QLineEdit>("txtCopies");
    txtCopies->selectAll();
    QTest::keyClicks(txtCopies, antes);
    for (QChar seta : setas)
        Seta(seta == u'+');
    QCOMPARE(txtCopies->text(), depois);

    // The keyboard's arrows do the same.
    txtCopies->selectAll();
    QTest::keyClicks(txtCopies, antes);
    auto *barra = Controle<QScrollBar>("VScrllCopia");
    for (QChar seta : setas)
        QTest::keyClick(barra, seta == u'+' ? Qt::Key_Up : Qt::Key_Down);
    QCOMPARE(txtCopies->text(), depois);
}

void TesteFrmImpressao::aBarraFicaIgualAoNumeroDigitado()
{
    m_atual.Copies = 5;
    Abrir();
    auto *barra = Controle<QScrollBar>("VScrllCopia");
    QCOMPARE(barra->value(), 5);
    QCOMPARE(Controle<QLineEdit>("txtCopies")->text(), QString("5")); // opening the dialog does not count
    Seta(true);
    QCOMPARE(barra->value(), 6);
    auto *txtCopies = Controle<QLineEdit>("txtCopies");
    txtCopies->selectAll();
    QTest::keyClicks(txtCopies, "50");
    QCOMPARE(barra->value(), 50);
    // Anything that changes the value counts as one press of an arrow.
    barra->triggerAction(QScrollBar::SliderPageStepAdd);
    QCOMPARE(txtCopies->text(), QString("49"));
    QCOMPARE(barra->value(), 49);
}

void TesteFrmImpressao::copiasDigitadas_data()
{
    QTest::addColumn<QString>("texto");
    QTest::addColumn<int>("copias");
    QTest::newRow("duas mil") << "2000" << 2000;
    QTest::newRow("maior de 16 bits") << "32767" << 32767;
    QTest::newRow("nao cabe em 16 bits") << "32768" << 1;
    QTest::newRow("enorme") << "99999999999999999999" << 1;
    QTest::newRow("zero e recusado") << "0" << 1;
    QTest::newRow("negativo e recusado") << "-2" << 1;
    QTest::newRow("vazio e recusado") << "" << 1;
    QTest::newRow("parte inteira") << "3.9" << 3;
    QTest::newRow("letras") << "abc" << 1;
}

void TesteFrmImpressao::copiasDigitadas()
{
    QFETCH(QString, texto);
    QFETCH(int, copias);
    Abrir();
    Controle<QLineEdit>("txtCopies")->setText(texto);
    QTest::mouseClick(Controle<QPushButton>("cmdImprimir"), Qt::LeftButton);
    QCOMPARE(m_atual.Copies, copias);
    QCOMPARE(m_dialogo->Indice(), qint16(0));
}

void TesteFrmImpressao::semImpressoraConfirmarDaMenosUm()
{
    m_impressoras->nomes.clear();
    m_atual = ImpressoraAtual();
    Abrir();
    auto *combo = Controle<QComboBox>("cmbImpressora");
    QCOMPARE(combo->count(), 0);
    QCOMPARE(combo->placeholderText(), QString("Nenhuma impressora instalada"));
    QCOMPARE(combo->palette().color(QPalette::Text), combo->palette().color(QPalette::PlaceholderText));
    QCOMPARE(Marcadas(), QString("Retrato Baixa Preto e Branco"));
    QCOMPARE(Controle<QLineEdit>("txtCopies")->text(), QString("1"));
    Marcar("optOtima");
    QTest::mouseClick(Controle<QPushButton>("cmdImprimir"), Qt::LeftButton);
    QVERIFY(!m_dialogo->isVisible());
    QCOMPARE(m_dialogo->Indice(), qint16(-1));
    QCOMPARE(m_atual, ImpressoraAtual()); // next time the fields show their defaults again
}

void TesteFrmImpressao::impressoraAtualForaDaListaNaoEscolheNenhuma()
{
    m_atual.DeviceName = "Escritório";
    Abrir();
    QCOMPARE(Controle<QComboBox>("cmbImpressora")->currentIndex(), -1);
    QTest::mouseClick(Controle<QPushButton>("cmdImprimir"), Qt::LeftButton);
    QCOMPARE(m_dialogo->Indice(), qint16(-1));
}

void TesteFrmImpressao::erroAoListarNaoImpedeODialogo()
{
    class Quebrada : public ImpressorasDeTeste
    {
    public:
        QStringList Nomes() const override { throw ErroImpressao("sem serviço"); }
    };
    m_impressoras = std::make_unique<Quebrada>();
    m_atual.PrintQuality = -4;
    Abrir();
    QCOMPARE(Marcadas(), QString("Retrato Ótima Preto e Branco"));
}

void TesteFrmImpressao::tabPercorreOsControlesEmOrdem()
{
    Abrir();
    Controle<QComboBox>("cmbImpressora")->setFocus();
    QStringList ordem;
    for (int i = 0; i < 7; ++i) {
        ordem << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    // Of a group of options the chosen one takes the keyboard.
    QCOMPARE(ordem, (QStringList{"cmbImpressora", "optRetrato", "optNormal", "optPretoBranco", "txtCopies",
                                 "cmdImprimir", "cmdCancelar"}));
    for (QWidget *controle :
         m_dialogo->findChildren<QWidget *>(QRegularExpression("^(cmb|opt|txt|cmd|VScrll)"))) {
        QVERIFY2(!controle->toolTip().isEmpty(), qPrintable(controle->objectName()));
        QVERIFY2(!controle->accessibleName().isEmpty(), qPrintable(controle->objectName()));
    }
}

QTEST_MAIN(TesteFrmImpressao)
#include "teste_frmImpressao.moc"
