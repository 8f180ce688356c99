#include "app/CopiaUnica.h"
#include "app/HistoricoTelas.h"
#include "app/Pasta.h"

#include <QDir>
#include <QFile>
#include <QLocalSocket>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

class TesteAppRegras : public QObject
{
    Q_OBJECT
private slots:
    void aHistoriaGuardaTituloTabEChave()
    {
        HistoricoTelas historico;
        historico.Empilhar(" Receitas Cadastradas", "Listagem");
        QCOMPARE(historico.Profundidade(), quint8(1));
        QCOMPARE(historico.Entrada(1), QString(" Receitas Cadastradas\tListagem"));
        QCOMPARE(historico.Titulo(1), QString(" Receitas Cadastradas"));
        QCOMPARE(historico.Chave(1), QString("Listagem"));
        QCOMPARE(historico.Entrada(0), QString());
    }

    // Six views in a row: the fourth and the fifth are lost, the first stands twice.
    void aSextaTelaApagaAQuartaEAQuinta()
    {
        HistoricoTelas historico;
        for (int i = 1; i <= 6; ++i)
            historico.Empilhar(QString("e%1").arg(i), "Listagem");
        QCOMPARE(historico.Profundidade(), quint8(5));
        QStringList titulos;
        for (int i = 1; i <= 5; ++i)
            titulos << historico.Titulo(i);
        QCOMPARE(titulos, (QStringList{"e1", "e1", "e2", "e3", "e6"}));
    }

    void baixarNuncaPassaDeZero()
    {
        HistoricoTelas historico;
        historico.Baixar();
        QCOMPARE(historico.Profundidade(), quint8(0));
        historico.Empilhar("a", "b");
        historico.Baixar();
        QCOMPARE(historico.Profundidade(), quint8(0));
        QCOMPARE(historico.Chave(1), QString());
    }

    void aPrimeiraCopiaPrendeAPasta()
    {
        QTemporaryDir pasta, outra;
        CopiaUnica primeira(pasta.path());
        CopiaUnica segunda(pasta.path());
        CopiaUnica alheia(outra.path());
        QVERIFY(primeira.Primeira());
        QVERIFY(!segunda.Primeira());
        QVERIFY(alheia.Primeira());
    }

    void aPastaFicaLivreQuandoAPrimeiraTermina()
    {
        QTemporaryDir pasta;
        {
            CopiaUnica primeira(pasta.path());
            QVERIFY(primeira.Primeira());
        }
        QVERIFY(CopiaUnica(pasta.path()).Primeira());
    }

    void aSegundaCopiaEntregaSeuAviso_data()
    {
        QTest::addColumn<int>("aviso");
        QTest::newRow("importação") << int(CopiaUnica::Aviso::ImportacaoTerminada);
        QTest::newRow("ativação") << int(CopiaUnica::Aviso::Ativar);
    }
    void aSegundaCopiaEntregaSeuAviso()
    {
        QFETCH(int, aviso);
        QTemporaryDir pasta;
        CopiaUnica primeira(pasta.path());
        primeira.Escutar();
        QSignalSpy importacao(&primeira, &CopiaUnica::importacaoTerminada);
        QSignalSpy ativacao(&primeira, &CopiaUnica::ativacaoPedida);
        // The other copy is another process; here a thread stands for it, so that this loop can answer.
        bool entregue = false;
        std::unique_ptr<QThread> outra(QThread::create([&] {
            CopiaUnica segunda(pasta.path());
            entregue = segunda.Entregar(static_cast<CopiaUnica::Aviso>(aviso));
        }));
        outra->start();
        QTRY_VERIFY_WITH_TIMEOUT(outra->isFinished(), 10'000);
        QVERIFY(entregue);
        const bool importou = aviso == int(CopiaUnica::Aviso::ImportacaoTerminada);
        QCOMPARE(importacao.count(), importou ? 1 : 0);
        QCOMPARE(ativacao.count(), importou ? 0 : 1);
    }

    void quemFalaDemaisNaoEOuvido()
    {
        QTemporaryDir pasta;
        CopiaUnica primeira(pasta.path());
        primeira.Escutar();
        QSignalSpy importacao(&primeira, &CopiaUnica::importacaoTerminada);
        QLocalSocket visita;
        visita.connectToServer(primeira.NomeDoCanal());
        QVERIFY(visita.waitForConnected());
        visita.write(QByteArray(100'000, 'x'));
        visita.flush();
        QTRY_COMPARE(visita.state(), QLocalSocket::UnconnectedState);
        QCOMPARE(importacao.count(), 0);
    }

    void semNinguemEscutandoAEntregaFalha()
    {
        QTemporaryDir pasta;
        CopiaUnica primeira(pasta.path());
        CopiaUnica segunda(pasta.path());
        QVERIFY(!segunda.Entregar(CopiaUnica::Aviso::Ativar));
    }

    void umRestoDeUmaCopiaMortaNaoImpedeDeEscutar()
    {
        QTemporaryDir pasta;
        CopiaUnica primeira(pasta.path());
        QFile resto(primeira.NomeDoCanal());
        QVERIFY(resto.open(QIODevice::WriteOnly));
        resto.close();
        primeira.Escutar();
        QLocalSocket visita;
        visita.connectToServer(primeira.NomeDoCanal());
        QVERIFY(visita.waitForConnected());
    }

    void oLivroFicaAoLadoDoPrograma()
    {
        QTemporaryDir pasta;
        QCOMPARE(PastaDoLivro(pasta.path()), pasta.path());
    }
};

QTEST_GUILESS_MAIN(TesteAppRegras)
#include "teste_app_regras.moc"
