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

namespace
{
void Escrever(const QString &caminho, const QByteArray &bytes)
{
    QFile arquivo(caminho);
    QVERIFY(arquivo.open(QIODevice::WriteOnly));
    QCOMPARE(arquivo.write(bytes), bytes.size());
}

QByteArray Ler(const QString &caminho)
{
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray("(none)");
}
} // namespace

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
        // The first has been there for long: it is not waited for as one that is just starting.
        QFile trava(pasta.filePath("cozinhario.lck"));
        QVERIFY(trava.open(QIODevice::ReadWrite));
        QVERIFY(
            trava.setFileTime(QDateTime::currentDateTime().addDays(-1), QFileDevice::FileModificationTime));
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
        QCOMPARE(PastaDoLivro(pasta.path()).pasta, pasta.path());
    }

    void semTravaAPrimeiraEAQueEscuta()
    {
        QTemporaryDir pasta;
        QVERIFY(QDir(pasta.path()).mkdir("cozinhario.lck")); // the lock cannot be made
        CopiaUnica primeira(pasta.path());
        QVERIFY(primeira.Primeira());
        QVERIFY(!primeira.Trancada());
        primeira.Escutar();
        CopiaUnica segunda(pasta.path());
        QVERIFY(!segunda.Primeira());
    }

    void oProgramaInstaladoGuardaOLivroComOUsuario()
    {
        QTemporaryDir prefixo, dados;
        const QByteArray antes = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", QFile::encodeName(dados.path()));
        const auto voltar = qScopeGuard([&] { qputenv("XDG_DATA_HOME", antes); });
        const QString bin = prefixo.filePath("bin");
        QVERIFY(QDir().mkpath(bin));
        QCOMPARE(PastaDoLivro(bin).pasta, bin); // not installed: a portable program in a folder of that name

        QVERIFY(QDir().mkpath(prefixo.filePath("share/applications")));
        Escrever(prefixo.filePath("share/applications/cozinhario.desktop"), "[Desktop Entry]");
        const QString doUsuario = dados.filePath("cozinhario2005");
        QCOMPARE(PastaDoLivro(bin).pasta, doUsuario);
        QVERIFY(PastaDoLivro(bin).recado.isEmpty());
        QVERIFY(QFileInfo(doUsuario).isDir());
    }

    void oLivroEsquecidoComOProgramaInstaladoELevado()
    {
        QTemporaryDir prefixo, dados;
        const QByteArray antes = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", QFile::encodeName(dados.path()));
        const auto voltar = qScopeGuard([&] { qputenv("XDG_DATA_HOME", antes); });
        const QString bin = prefixo.filePath("bin");
        const QString doUsuario = dados.filePath("cozinhario2005");
        QVERIFY(QDir().mkpath(bin + "/Fotos"));
        QVERIFY(QDir().mkpath(prefixo.filePath("share/applications")));
        Escrever(prefixo.filePath("share/applications/cozinhario.desktop"), "[Desktop Entry]");
        Escrever(bin + "/dadosr.lst", "o livro");
        Escrever(bin + "/Fotos/F0000001.img", "a figura");

        const LugarDoLivro lugar = PastaDoLivro(bin);
        QCOMPARE(lugar.pasta, doUsuario);
        QVERIFY(lugar.recado.contains(doUsuario));
        QCOMPARE(Ler(doUsuario + "/dadosr.lst"), "o livro");
        QCOMPARE(Ler(doUsuario + "/Fotos/F0000001.img"), "a figura");
        QVERIFY(QDir(bin).isEmpty());
        QVERIFY(PastaDoLivro(bin).recado.isEmpty()); // told once

        Escrever(bin + "/dadosr.lst", "outro livro");
        QCOMPARE(PastaDoLivro(bin).pasta, doUsuario);
        QCOMPARE(Ler(doUsuario + "/dadosr.lst"), "o livro"); // the user's own is never replaced
    }

    void oLivroQueNaoPodeSerLevadoFicaSendoOLivro()
    {
        QTemporaryDir prefixo, dados;
        const QByteArray antes = qgetenv("XDG_DATA_HOME");
        Escrever(dados.filePath("arquivo"), "no folder can be made below a file");
        qputenv("XDG_DATA_HOME", QFile::encodeName(dados.filePath("arquivo")));
        const auto voltar = qScopeGuard([&] { qputenv("XDG_DATA_HOME", antes); });
        const QString bin = prefixo.filePath("bin");
        QVERIFY(QDir().mkpath(bin));
        QVERIFY(QDir().mkpath(prefixo.filePath("share/applications")));
        Escrever(prefixo.filePath("share/applications/cozinhario.desktop"), "[Desktop Entry]");
        Escrever(bin + "/dadosr.lst", "o livro");
        QCOMPARE(PastaDoLivro(bin).pasta, bin);
        QCOMPARE(Ler(bin + "/dadosr.lst"), "o livro");
    }
};

QTEST_GUILESS_MAIN(TesteAppRegras)
#include "teste_app_regras.moc"
