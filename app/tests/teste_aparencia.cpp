#include "app/Aparencia.h"
#include "app/CaberNaTela.h"
#include "app/Dicas.h"
#include "app/Fundo.h"
#include "assets/Recursos.h"
#include "base/Abridor.h"
#include "base/Fontes.h"
#include "base/LinhaMarcavel.h"
#include "browse/ListaReceitas.h"
#include "browse/ModeloLista.h"
#include "editor/ImagemFigura.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QStyleOptionHeader>
#include <QStyleOptionViewItem>
#include <QTest>
#include <QTextLayout>
#include <QTreeWidget>

#include <algorithm>
#include <cmath>

namespace
{
const QColor kPainel(0xe6, 0xee, 0xfb);
const QColor kPeDaJanela(0xb9, 0xcd, 0xf1); // the darkest place that a link stands on

double Luz(const QColor &cor)
{
    const auto linear = [](double v) {
        return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(cor.redF()) + 0.7152 * linear(cor.greenF()) + 0.0722 * linear(cor.blueF());
}

double Contraste(const QColor &a, const QColor &b)
{
    const auto [menor, maior] = std::minmax({Luz(a), Luz(b)});
    return (maior + 0.05) / (menor + 0.05);
}

/// The control on a panel, with or without the keyboard.
QImage Fotografar(QWidget &controle, bool comFoco, const QSize &tamanho)
{
    QWidget painel;
    painel.setStyleSheet("QWidget#painel { background: #e6eefb; }");
    painel.setObjectName("painel");
    QPushButton outro(&painel);
    outro.setGeometry(300, 0, 10, 10);
    controle.setParent(&painel);
    controle.setGeometry(QRect(QPoint(10, 10), tamanho));
    painel.resize(320, 120);
    controle.show();
    painel.show();
    painel.activateWindow();
    [&] { QVERIFY(QTest::qWaitForWindowActive(&painel)); }();
    (comFoco ? &controle : static_cast<QWidget *>(&outro))->setFocus();
    const QImage foto = painel.grab(QRect(QPoint(8, 8), tamanho + QSize(4, 4))).toImage();
    controle.setParent(nullptr);
    return foto;
}

/// To the eye: corners are smoothed, and not by the same sum everywhere.
bool Iguais(const QColor &a, const QColor &b)
{
    return qAbs(a.red() - b.red()) < 16 && qAbs(a.green() - b.green()) < 16 && qAbs(a.blue() - b.blue()) < 16;
}

/// The best contrast to the panel on the way from left to right through the control's first pixels.
double ContrasteDaBorda(const QImage &foto, int pixels)
{
    double maior = 0;
    for (int x = 0; x < pixels; ++x)
        maior = std::max(maior, Contraste(foto.pixelColor(x, foto.height() / 2), kPainel));
    return maior;
}
} // namespace

/// What the program looks like, as far as numbers can tell.
class TesteAparencia : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void comboComFocoTemAFormaDosVizinhos();
    void bordasSeDistinguem_data();
    void bordasSeDistinguem();
    void eloAcesoSeLe();
    void dicasCabemInteiras_data();
    void dicasCabemInteiras();
    void minutosCabemNaColuna();
    void cabecalhosFicamSobreAsCelulas();
    void linhasTemAr();
    void quadroDaFiguraTemABordaInteira_data();
    void quadroDaFiguraTemABordaInteira();
    void cliqueDesmarcaALinha();
    void janelaCabeNaTela_data();
    void janelaCabeNaTela();
    void temaEscuroNaoEntra();
};

void TesteAparencia::initTestCase()
{
    IniciarRecursos();
    AplicarAparencia(*qApp);
    InstalarFontes();
}

void TesteAparencia::comboComFocoTemAFormaDosVizinhos()
{
    const QSize tamanho(150, 22);
    QLineEdit campo("Doces");
    const QImage vizinho = Fotografar(campo, true, tamanho);
    for (const bool editavel : {false, true}) {
        QComboBox combo;
        combo.setEditable(editavel);
        combo.addItem("Doces");
        const QImage sem = Fotografar(combo, false, tamanho);
        const QImage com = Fotografar(combo, true, tamanho);
        // The same rounded edge as the text field with the focus, all around.
        for (int x = 0; x < vizinho.width() - 24; ++x)
            QVERIFY(Iguais(com.pixelColor(x, 2), vizinho.pixelColor(x, 2)));
        for (int y = 0; y < vizinho.height(); ++y)
            QVERIFY(Iguais(com.pixelColor(2, y), vizinho.pixelColor(2, y)));
        // And the arrow where it was: what is dark stays dark, nothing else becomes so.
        for (int y = 5; y < com.height() - 5; ++y) {
            for (int x = com.width() - 20; x < com.width() - 4; ++x)
                QCOMPARE(com.pixelColor(x, y).lightness() < 140, sem.pixelColor(x, y).lightness() < 140);
        }
    }
}

void TesteAparencia::bordasSeDistinguem_data()
{
    QTest::addColumn<QString>("tipo");
    for (const char *tipo : {"campo", "texto", "combo", "combo editável", "botão", "opção", "caixa", "lista"})
        QTest::newRow(tipo) << QString::fromUtf8(tipo);
}

void TesteAparencia::bordasSeDistinguem()
{
    QFETCH(QString, tipo);
    std::unique_ptr<QWidget> controle;
    if (tipo == "campo")
        controle = std::make_unique<QLineEdit>();
    else if (tipo == "texto")
        controle = std::make_unique<QPlainTextEdit>();
    else if (tipo.startsWith("combo")) {
        auto combo = std::make_unique<QComboBox>();
        combo->setEditable(tipo.endsWith("editável"));
        controle = std::move(combo);
    } else if (tipo == "botão")
        controle = std::make_unique<QPushButton>();
    else if (tipo == "opção")
        controle = std::make_unique<QRadioButton>();
    else if (tipo == "caixa")
        controle = std::make_unique<QCheckBox>();
    else
        controle = std::make_unique<QListWidget>();
    for (const bool comFoco : {false, true}) {
        const double contraste = ContrasteDaBorda(Fotografar(*controle, comFoco, QSize(80, 24)), 12);
        QVERIFY2(contraste >= 3, qPrintable(QString::number(contraste)));
    }
}

void TesteAparencia::eloAcesoSeLe()
{
    class SemAbridor : public Abridor
    {
    public:
        void AbrirArquivo(const QString &) override {}
        void AbrirEndereco(const QUrl &) override {}
    } abridor;
    Fundo fundo(abridor, "https://www.tamarel.example", nullptr);
    const QString folha = fundo.findChild<QPushButton *>("lblUrl")->styleSheet();
    QRegularExpression cor("[ {]color: (#[0-9a-f]{6})");
    int cores = 0;
    for (auto achada = cor.globalMatch(folha); achada.hasNext(); ++cores) {
        const QColor uma(achada.next().captured(1));
        QVERIFY2(Contraste(uma, kPeDaJanela) >= 4.5, qPrintable(uma.name()));
    }
    QCOMPARE(cores, 2); // at rest and lit
    QVERIFY(Contraste(qApp->palette().color(QPalette::PlaceholderText), Qt::white) >= 4.5);
}

void TesteAparencia::dicasCabemInteiras_data()
{
    QTest::addColumn<int>("dica");
    QTest::addColumn<double>("escala");
    for (int dica = 0; dica < Dicas("https://www.tamarel.example").size(); ++dica) {
        for (const double escala : {1.0, 1.5, 2.0})
            QTest::addRow("dica %d a %g", dica, escala) << dica << escala;
    }
}

void TesteAparencia::dicasCabemInteiras()
{
    QFETCH(int, dica);
    QFETCH(double, escala);
    RotuloAjustado rotulo;
    rotulo.setFont(FonteVerdana(8.25));
    rotulo.setText(Dicas("https://www.tamarel.example")[dica]);
    rotulo.resize(159, 28); // the tip's fixed place
    QTextLayout linhas;
    const double altura = rotulo.Ajustar(linhas);
    QVERIFY2(altura <= rotulo.height(), qPrintable(QString::number(altura)));
    QVERIFY2(linhas.font().pointSizeF() >= 5, qPrintable(QString::number(linhas.font().pointSizeF())));

    // Painted into a higher place by the same lines no pixel is added below: none was cut.
    const auto tinta = [&](int alturaDaFolha, double y) {
        QImage folha(QSize(159, alturaDaFolha) * escala, QImage::Format_RGB32);
        folha.setDevicePixelRatio(escala);
        folha.fill(Qt::white);
        QPainter painter(&folha);
        linhas.draw(&painter, QPointF(0, y));
        painter.end();
        int escuros = 0;
        for (int linha = 0; linha < folha.height(); ++linha) {
            for (int x = 0; x < folha.width(); ++x)
                escuros += folha.pixelColor(x, linha).lightness() < 128 ? 1 : 0;
        }
        return escuros;
    };
    QCOMPARE(tinta(28, (28 - altura) / 2), tinta(48, (28 - altura) / 2 + 10));
}

void TesteAparencia::minutosCabemNaColuna()
{
    ModeloLista modelo;
    ListaReceitas lista(modelo);
    lista.ensurePolished();
    QStyleOptionViewItem opcao;
    opcao.initFrom(&lista);
    opcao.font = lista.font();
    opcao.fontMetrics = lista.fontMetrics();
    opcao.features = QStyleOptionViewItem::HasDisplay;
    opcao.rect = QRect(0, 0, lista.header()->sectionSize(LinhasLista::Preparo), 20);
    // What a cell leaves for its text: the style takes a margin from each side.
    const int margem = lista.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, &opcao, &lista) + 1;
    for (int minutos = 10; minutos < 100; ++minutos) {
        const QString texto = QString("%1 minutos").arg(minutos);
        const int largura = opcao.fontMetrics.horizontalAdvance(texto);
        QVERIFY2(
            largura <= opcao.rect.width() - 2 * margem,
            qPrintable(QString("%1: %2 of %3").arg(texto).arg(largura).arg(opcao.rect.width() - 2 * margem)));
    }
}

void TesteAparencia::cabecalhosFicamSobreAsCelulas()
{
    ModeloLista modelo;
    ListaReceitas lista(modelo);
    lista.resize(620, 200);
    lista.show();
    QVERIFY(QTest::qWaitForWindowExposed(&lista));
    const int celula = lista.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &lista) + 1;
    QStyleOptionHeader opcao;
    opcao.initFrom(lista.header());
    opcao.orientation = Qt::Horizontal;
    opcao.text = "Tipo";
    opcao.rect = QRect(0, 0, 100, 24);
    const int cabeca =
        lista.header()->style()->subElementRect(QStyle::SE_HeaderLabel, &opcao, lista.header()).left();
    QCOMPARE(cabeca, celula);
}

void TesteAparencia::linhasTemAr()
{
    QWidget painel;
    QComboBox combo(&painel);
    combo.setEditable(true);
    combo.addItems({"Bolos", "Doces"});
    QTreeWidget arvore(&painel);
    arvore.setObjectName("TrVwIngredientes");
    arvore.addTopLevelItem(new QTreeWidgetItem({"2 ovos"}));
    arvore.move(0, 40);
    painel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&painel));
    combo.showPopup();
    QVERIFY(combo.view()->visualRect(combo.model()->index(0, 0)).height() >= 20);
    combo.hidePopup();
    QVERIFY(arvore.visualItemRect(arvore.topLevelItem(0)).height() >= 18);
}

void TesteAparencia::quadroDaFiguraTemABordaInteira_data()
{
    QTest::addColumn<double>("escala");
    for (const double escala : {1.0, 1.5, 2.0})
        QTest::addRow("%g", escala) << escala;
}

void TesteAparencia::quadroDaFiguraTemABordaInteira()
{
    QFETCH(double, escala);
    QWidget painel;
    painel.resize(220, 140);
    auto *quadro = new ImagemFigura;
    quadro->setParent(&painel);
    quadro->setGeometry(10, 11, 193, 117);
    QImage figura(300, 300, QImage::Format_RGB32);
    figura.fill(Qt::yellow);
    quadro->Mostrar(figura);
    painel.ensurePolished();
    QImage foto(painel.size() * escala, QImage::Format_RGB32);
    foto.setDevicePixelRatio(escala);
    painel.render(&foto);
    const QRect borda(qRound(10 * escala), qRound(11 * escala), qRound(193 * escala), qRound(117 * escala));
    // On every line through the frame, from each side, some pixel near the edge is the border's.
    const auto ehBorda = [&](QPoint ponto) { return Contraste(foto.pixelColor(ponto), kPainel) >= 2; };
    const auto achou = [&](QPoint inicio, QPoint passo) {
        for (int i = -1; i < 4; ++i) {
            if (ehBorda(inicio + passo * i))
                return true;
        }
        return false;
    };
    for (int x = borda.left() + 3; x < borda.right() - 3; ++x) {
        QVERIFY2(achou({x, borda.top()}, {0, 1}), qPrintable(QString("above %1").arg(x)));
        QVERIFY2(achou({x, borda.bottom()}, {0, -1}), qPrintable(QString("below %1").arg(x)));
    }
    for (int y = borda.top() + 3; y < borda.bottom() - 3; ++y) {
        QVERIFY2(achou({borda.left(), y}, {1, 0}), qPrintable(QString("left %1").arg(y)));
        QVERIFY2(achou({borda.right(), y}, {-1, 0}), qPrintable(QString("right %1").arg(y)));
    }
}

void TesteAparencia::cliqueDesmarcaALinha()
{
    QListWidget lista;
    lista.setSelectionMode(QAbstractItemView::MultiSelection);
    lista.setItemDelegate(new LinhaMarcavel(&lista));
    lista.addItems({"Arroz-doce", "Brigadeiro"});
    lista.selectAll();
    lista.resize(200, 80);
    lista.show();
    QVERIFY(QTest::qWaitForWindowExposed(&lista));
    const QRect linha = lista.visualItemRect(lista.item(0));
    const auto caixa = [&] {
        return lista.viewport()->grab(QRect(linha.topLeft(), QSize(20, linha.height()))).toImage();
    };
    const auto texto = [&] { return lista.viewport()->grab(linha.adjusted(24, 0, 0, 0)).toImage(); };
    const QImage marcada = caixa();
    const QImage nome = texto();
    QTest::mouseClick(lista.viewport(), Qt::LeftButton, {}, linha.center());
    QTest::mouseMove(lista.viewport(), QPoint(100, 70));
    QVERIFY(!lista.item(0)->isSelected());
    QVERIFY(caixa() != marcada);
    // Only the box says it: a list that is blue all over does not look like one to choose from.
    QVERIFY(qAbs(nome.pixelColor(nome.width() - 4, 3).lightness() - 255) < 30);
    QTest::mouseClick(lista.viewport(), Qt::LeftButton, {}, linha.center());
    QTest::mouseMove(lista.viewport(), QPoint(100, 70));
    QVERIFY(lista.item(0)->isSelected());
}

void TesteAparencia::janelaCabeNaTela_data()
{
    QTest::addColumn<QSize>("lugar");
    QTest::addColumn<double>("fator");
    QTest::newRow("1024x600") << QSize(1024, 600) << 1.0;
    QTest::newRow("1024x600 com barra") << QSize(1024, 572) << 572 / 598.0;
    QTest::newRow("1366x768 a 1,5") << QSize(910, 512) << 512 / 598.0;
    QTest::newRow("1920x1080 a 1,5") << QSize(1280, 720) << 1.0;
    QTest::newRow("1920x1080 a 2") << QSize(960, 540) << 540 / 598.0;
    QTest::newRow("tela em pe a 2") << QSize(400, 640) << 400 / 640.0;
    QTest::newRow("tela desconhecida") << QSize(0, 0) << 1.0;
}

void TesteAparencia::janelaCabeNaTela()
{
    QFETCH(QSize, lugar);
    QFETCH(double, fator);
    const QSize janela(640, 598);
    QCOMPARE(FatorQueCabe(janela, lugar), fator);
    if (!lugar.isEmpty()) {
        QVERIFY(janela.width() * fator <= lugar.width() + 1e-9);
        QVERIFY(janela.height() * fator <= lugar.height() + 1e-9);
    }
}

/// What a dark desktop gives single kinds of control is not taken.
void TesteAparencia::temaEscuroNaoEntra()
{
    const QPalette clara = QApplication::palette();
    for (const char *tipo : {"QMenu", "QMessageBoxLabel", "QHeaderView", "QAbstractItemView", "QToolButton"})
        QApplication::setPalette(QPalette(Qt::black), tipo);
    AplicarAparencia(*qApp);
    for (const char *tipo : {"QMenu", "QMessageBoxLabel", "QHeaderView", "QAbstractItemView", "QToolButton"})
        QCOMPARE(QApplication::palette(tipo).color(QPalette::Window), clara.color(QPalette::Window));
}

QTEST_MAIN(TesteAparencia)
#include "teste_aparencia.moc"
