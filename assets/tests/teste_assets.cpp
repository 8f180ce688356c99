#include "assets/Recursos.h"

#include <QFile>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QTest>
#include <QTranslator>

namespace
{
const QStringList Botoes = {"imgLstRcta", "imgDetRcta",  "imgPesRcta",  "imgImpressao",
                            "imgEmail",   "imgTransmit", "imgInternet", "imgBackup",
                            "imgRestore", "imgMinimize", "imgSaida"};

// The gradient of the toolbar, a row of pixels at a time: strong blue at the bottom, white at the top.
QImage FundoDaBarra(int lado)
{
    QImage fundo(lado, lado, QImage::Format_RGB32);
    for (int y = 0; y < lado; ++y) {
        const int claro = 80 + (255 - 80) * (lado - 1 - y) / (lado - 1);
        for (int x = 0; x < lado; ++x)
            fundo.setPixelColor(x, y, QColor(claro, claro, 255));
    }
    return fundo;
}

QImage Desenhado(const QString &arquivo, int lado)
{
    QSvgRenderer desenho(arquivo);
    QImage imagem = FundoDaBarra(lado);
    QPainter pintor(&imagem);
    desenho.render(&pintor);
    return imagem;
}

// The part of the pixels in which two pictures of the same size differ clearly.
double Diferenca(const QImage &a, const QImage &b)
{
    int diferentes = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QColor ca = a.pixelColor(x, y);
            const QColor cb = b.pixelColor(x, y);
            const int distancia =
                qAbs(ca.red() - cb.red()) + qAbs(ca.green() - cb.green()) + qAbs(ca.blue() - cb.blue());
            diferentes += distancia > 48;
        }
    }
    return double(diferentes) / (a.width() * a.height());
}
} // namespace

class TesteAssets : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { IniciarRecursos(); }
    void cadaAvisoTemSeuDesenho_data();
    void cadaAvisoTemSeuDesenho();
    void cadaBotaoTemDoisAspectosDiferentes_data();
    void cadaBotaoTemDoisAspectosDiferentes();
    void botoesNaoSeConfundem();
    void desenhosTemAProporcaoDoSeuLugar_data();
    void desenhosTemAProporcaoDoSeuLugar();
    void semFiguraEhJpeg();
    void fontesTrazemOsAcentosEALicenca();
    void qtFalaPortugues();
};

void TesteAssets::cadaAvisoTemSeuDesenho_data()
{
    QTest::addColumn<QString>("aviso");
    QTest::addColumn<QPoint>("onde"); // a place that only the ground colour covers
    QTest::addColumn<QRgb>("cor");
    QTest::newRow("informação") << "informacao" << QPoint(12, 24) << qRgb(0x4f, 0x81, 0xdd);
    QTest::newRow("pergunta") << "pergunta" << QPoint(12, 24) << qRgb(0x4f, 0x81, 0xdd);
    QTest::newRow("exclamação") << "exclamacao" << QPoint(15, 32) << qRgb(0xf6, 0xb4, 0x3c);
    QTest::newRow("parada") << "parada" << QPoint(12, 24) << qRgb(0xd7, 0x42, 0x37);
}

void TesteAssets::cadaAvisoTemSeuDesenho()
{
    QFETCH(QString, aviso);
    QFETCH(QPoint, onde);
    QFETCH(QRgb, cor);
    QSvgRenderer desenho(":/avisos/" + aviso + ".svg");
    QVERIFY(desenho.isValid());
    QImage imagem(48, 48, QImage::Format_ARGB32);
    imagem.fill(Qt::transparent);
    QPainter pintor(&imagem);
    desenho.render(&pintor);
    pintor.end();
    QCOMPARE(qAlpha(imagem.pixel(0, 0)), 0);
    const QRgb achada = imagem.pixel(onde);
    QVERIFY2(qAbs(qRed(achada) - qRed(cor)) < 16 && qAbs(qGreen(achada) - qGreen(cor)) < 16 &&
                 qAbs(qBlue(achada) - qBlue(cor)) < 16,
             qPrintable(QColor(achada).name()));
}

void TesteAssets::cadaBotaoTemDoisAspectosDiferentes_data()
{
    QTest::addColumn<QString>("botao");
    QTest::addColumn<int>("lado");
    for (const QString &botao : Botoes) {
        for (int lado : {36, 72})
            QTest::addRow("%s %d", qPrintable(botao), lado) << botao << lado;
    }
}

void TesteAssets::cadaBotaoTemDoisAspectosDiferentes()
{
    QFETCH(QString, botao);
    QFETCH(int, lado);
    for (const char *aspecto : {"Norm", "Over"}) {
        QSvgRenderer desenho(":/botoes/" + botao + aspecto + ".svg");
        QVERIFY2(desenho.isValid(), aspecto);
        QCOMPARE(desenho.defaultSize(), QSize(48, 48));
    }
    const QImage normal = Desenhado(":/botoes/" + botao + "Norm.svg", lado);
    const QImage luminoso = Desenhado(":/botoes/" + botao + "Over.svg", lado);
    // A drawing stands out from the toolbar, and the lit look from the normal one.
    QVERIFY(Diferenca(normal, FundoDaBarra(lado)) > 0.25);
    QVERIFY(Diferenca(normal, luminoso) > 0.25);
}

void TesteAssets::botoesNaoSeConfundem()
{
    for (qsizetype i = 0; i < Botoes.size(); ++i) {
        for (qsizetype j = 0; j < i; ++j) {
            const double diferenca = Diferenca(Desenhado(":/botoes/" + Botoes[i] + "Norm.svg", 36),
                                               Desenhado(":/botoes/" + Botoes[j] + "Norm.svg", 36));
            QVERIFY2(diferenca > 0.10, qPrintable(Botoes[i] + " " + Botoes[j]));
        }
    }
}

void TesteAssets::desenhosTemAProporcaoDoSeuLugar_data()
{
    QTest::addColumn<QSize>("tamanho");
    QTest::newRow("marcador_foto") << QSize(16, 16);
    QTest::newRow("logo_tamarel") << QSize(39, 30);
    QTest::newRow("logo_vilanu") << QSize(39, 30);
    QTest::newRow("cozinhario") << QSize(64, 64);
    QTest::newRow("sem_figura") << QSize(440, 360);
}

void TesteAssets::desenhosTemAProporcaoDoSeuLugar()
{
    QFETCH(QSize, tamanho);
    QSvgRenderer desenho(QStringLiteral(":/%1.svg").arg(QTest::currentDataTag()));
    QVERIFY(desenho.isValid());
    QCOMPARE(desenho.defaultSize(), tamanho);
    QImage imagem(tamanho, QImage::Format_ARGB32_Premultiplied);
    imagem.fill(Qt::transparent);
    const QImage vazia = imagem;
    QPainter pintor(&imagem);
    desenho.render(&pintor);
    pintor.end();
    QVERIFY(Diferenca(imagem, vazia) > 0.25);
}

void TesteAssets::semFiguraEhJpeg()
{
    QFile arquivo(":/sem_figura.jpg");
    QVERIFY(arquivo.open(QIODevice::ReadOnly));
    const QByteArray bytes = arquivo.readAll();
    QVERIFY(bytes.startsWith("\xFF\xD8\xFF"));
    QCOMPARE(QImage::fromData(bytes, "JPEG").size(), QSize(440, 360));
}

void TesteAssets::fontesTrazemOsAcentosEALicenca()
{
    for (const char *nome : {":/fontes/DejaVuSans.ttf", ":/fontes/DejaVuSans-Bold.ttf"}) {
        const int numero = QFontDatabase::addApplicationFont(nome);
        QVERIFY2(numero >= 0, nome);
        QCOMPARE(QFontDatabase::applicationFontFamilies(numero), QStringList("DejaVu Sans"));
    }
    QVERIFY(QFontDatabase::writingSystems("DejaVu Sans").contains(QFontDatabase::Latin));
    const QFontMetrics medidas(QFont("DejaVu Sans", 8));
    for (const QChar letra : QStringLiteral("áâãàçéêíóôõúüÁÂÃÀÇÉÊÍÓÔÕÚÜº½"))
        QVERIFY2(medidas.inFont(letra), qPrintable(QString(letra)));
    QFile licenca(":/fontes/LICENCA-DejaVu.txt");
    QVERIFY(licenca.open(QIODevice::ReadOnly));
    QVERIFY(licenca.readAll().contains("Bitstream Vera"));
}

void TesteAssets::qtFalaPortugues()
{
    QTranslator tradutor;
    QVERIFY(tradutor.load(":/traducoes/qtbase_pt_BR.qm"));
    QCOMPARE(tradutor.translate("QPlatformTheme", "Cancel"), QStringLiteral("Cancelar"));
    QCOMPARE(tradutor.translate("QPlatformTheme", "&Yes"), QStringLiteral("&Sim"));
}

QTEST_MAIN(TesteAssets)
#include "teste_assets.moc"
