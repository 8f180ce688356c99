#include "news/tests/CenaDoPainel.h"

#include <QScrollBar>

/// The example site, downloaded and shown as a user's program would.
class TesteNovidadesExemplo : public QObject
{
    Q_OBJECT

private slots:
    void oSiteDeExemploEBaixadoEMostradoInteiro();
};

void TesteNovidadesExemplo::oSiteDeExemploEBaixadoEMostradoInteiro()
{
    CenaDoPainel cena;
    const QDir site(PASTA_FONTES "/../novidades-exemplo/cozinhario");
    const QStringList arquivos{"index.file", "index.htm", "img/bolo.png", "img/sopa.png", "img/bnrtml1.png"};
    for (const QString &nome : arquivos) {
        QFile arquivo(site.filePath(nome));
        QVERIFY2(arquivo.open(QIODevice::ReadOnly), qPrintable(nome));
        cena.servidor.PorCorpo("/cozinhario/" + nome, arquivo.readAll());
    }
    cena.picWeb->imgInternet_Click();
    cena.servidor.pedidos.replaceInStrings("/cozinhario/", "");
    QCOMPARE(cena.servidor.pedidos, arquivos);
    QVERIFY(cena.NaTela().contains("Bolo de fubá com goiabada"));
    QVERIFY(cena.NaTela().contains("açúcar"));
    QCOMPARE(cena.NaTela().count(QChar::ObjectReplacementCharacter), 3); // the pictures

    QVERIFY(!cena.WbBsr1()->horizontalScrollBar()->isVisible()); // it fits the panel

    // For eyes: COZINHARIO_RETRATO=page.png ctest -R exemplo
    const QString retrato = qEnvironmentVariable("COZINHARIO_RETRATO");
    if (!retrato.isEmpty()) {
        cena.picWeb->DefinirAltura(15000);
        QVERIFY(cena.picWeb->grab().save(retrato));
    }
}

QTEST_MAIN(TesteNovidadesExemplo)
#include "teste_novidades_exemplo.moc"
