#include "base/EventosPendentes.h"
#include "news/tests/CenaDoPainel.h"

/// Apart from the other tests, because a program that has begun to end does not come back.
class TesteSaidaNovidades : public QObject
{
    Q_OBJECT

private slots:
    void aSaidaNoMeioDoDownloadAcabaNaHora();
};

void TesteSaidaNovidades::aSaidaNoMeioDoDownloadAcabaNaHora()
{
    LimitesWeb longos; // were the exit to wait for the server, the test would run into its time limit
    longos.msSemByte = longos.msTotal = 600'000;
    CenaDoPainel cena(longos);
    cena.servidor.PorCorpo("/cozinhario/index.file", "index.htm\r\nfoto.gif\r\n");
    cena.servidor.Por("/cozinhario/index.htm",
                      {"metade e mais", "200 OK", {}, ServidorLocal::Modo::CalaNoMeio});
    connect(&cena.servidor, &ServidorLocal::pedido, this, [](const QString &caminho) {
        if (caminho.endsWith("index.htm"))
            QTimer::singleShot(20, qApp, [] { EncerrarPrograma(7); });
    });
    bool voltou = false;
    QTimer::singleShot(0, &cena.janela, [&] {
        cena.picWeb->imgInternet_Click();
        voltou = true;
    });
    QCOMPARE(QCoreApplication::exec(), 7);
    QVERIFY(voltou);
    QVERIFY(cena.avisos.textos.isEmpty());
    QCOMPARE(cena.NaTela(), "");
    QVERIFY(!QFile::exists(cena.Arquivo("index.htm")));
    QVERIFY(!Ponteiro::EmEspera());

    // From now on nothing is asked for any more.
    const qsizetype pedidos = cena.servidor.pedidos.size();
    cena.picWeb->imgInternet_Click();
    QCOMPARE(cena.servidor.pedidos.size(), pedidos);
}

QTEST_MAIN(TesteSaidaNovidades)
#include "teste_saida_novidades.moc"
