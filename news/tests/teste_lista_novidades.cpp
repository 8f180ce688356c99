#include "news/ListaNovidades.h"

#include <QTest>

using namespace ListaNovidades;

namespace
{
QStringList Nomes(const QByteArray &bytes)
{
    QStringList nomes;
    for (const Entrada &entrada : Ler(bytes))
        nomes += entrada.nome;
    return nomes;
}
} // namespace

class TesteListaNovidades : public QObject
{
    Q_OBJECT

private slots:
    void separaAsEntradasPorCrLf()
    {
        const QList<Entrada> entradas = Ler("index.htm\r\nimg/foto1.jpg\r\n");
        QCOMPARE(entradas.size(), 2);
        QCOMPARE(entradas[0].nome, "index.htm");
        QCOMPARE(entradas[1].caminho, "img/foto1.jpg");
        QCOMPARE(entradas[1].nome, "foto1.jpg");
    }

    void listaVaziaNaoTemEntradas()
    {
        QCOMPARE(Ler("").size(), 0);
        QCOMPARE(Ler("\r\n\r\n").size(), 0);
    }

    void aUltimaLinhaPodeNaoTerFim() { QCOMPARE(Nomes("a.gif\r\nb.gif"), QStringList({"a.gif", "b.gif"})); }

    void umLfSozinhoNaoSepara()
    {
        QCOMPARE(Nomes("a.gif\nb.gif\r\nc.gif"), QStringList({"c.gif"}));
        QCOMPARE(Nomes("a.gif\rb.gif\r\nc.gif"), QStringList({"c.gif"}));
    }

    void aPaginaDeEntradaDeUmHotelNaoLista() { QCOMPARE(Ler(" \r\n<html>\r\nlogin\r\n</html>").size(), 0); }

    void limitaONumeroDeEntradas()
    {
        QByteArray lista;
        for (int i = 0; i < 5000; ++i)
            lista += "f" + QByteArray::number(i) + ".gif\r\n";
        QCOMPARE(Ler(lista).size(), kMaximo);
    }

    void oNomeEOTextoDepoisDaUltimaBarra_data()
    {
        QTest::addColumn<QByteArray>("caminho");
        QTest::addColumn<QString>("nome");
        QTest::newRow("sem pasta") << QByteArray("foto1.jpg") << "foto1.jpg";
        QTest::newRow("com pasta") << QByteArray("img/foto1.jpg") << "foto1.jpg";
        QTest::newRow("endereco inteiro") << QByteArray("http://a.b/c/d.gif") << "d.gif";
        QTest::newRow("acaba em barra") << QByteArray("img/") << "";
        QTest::newRow("utf-8") << QByteArray("img/p\xC3\xA3o.jpg") << "pão.jpg";
        QTest::newRow("windows-1252") << QByteArray("img/p\xE3o.jpg") << "pão.jpg";
        QTest::newRow("escapado fica como esta") << QByteArray("..%2Fx.gif") << "..%2Fx.gif";
    }

    void oNomeEOTextoDepoisDaUltimaBarra()
    {
        QFETCH(QByteArray, caminho);
        QTEST(NomeLocal(caminho), "nome");
    }

    void soNomesDeArquivoSaoAceitos_data()
    {
        QTest::addColumn<QString>("nome");
        QTest::addColumn<bool>("aceito");
        for (const char *bom :
             {"index.htm", "foto 1.jpg", "pão.gif", "a", "..a", "a..b", ".oculto", "CONTO.gif", "COM.gif",
              "COM10.gif", "nulo", "bnrtml1.png", "x%20y.gif", "a#b.gif"})
            QTest::newRow(bom) << QString::fromUtf8(bom) << true;
        for (const char *mau : {"",
                                ".",
                                "..",
                                "a/b",
                                "a\\b",
                                "C:a",
                                "a:b",
                                "a*",
                                "a?.gif",
                                "\"a\"",
                                "<a>",
                                "a|b",
                                "a.",
                                "a ",
                                " a",
                                "con",
                                "CON.gif",
                                "Nul.txt",
                                "aux",
                                "PRN .gif",
                                "com1",
                                "LPT9.x",
                                "com¹.x",
                                "CLOCK$",
                                "CONIN$",
                                "a\tb",
                                "a\x7F"
                                "b",
                                "a\nb",
                                "a\u202Egpj.exe",
                                "a\u0085"
                                "b"})
            QTest::newRow(qPrintable("recusa " + QString::fromUtf8(mau))) << QString::fromUtf8(mau) << false;
        QTest::newRow("recusa nulo dentro") << QString::fromLatin1("a\0b", 3) << false;
        QTest::newRow("recusa metade de par") << QString(QChar(0xD800)) << false;
        QTest::newRow("cem letras") << QString(100, 'a') << true;
        QTest::newRow("recusa 101 letras") << QString(101, 'a') << false;
        QTest::newRow("recusa mais de 200 bytes") << QString(99, u'\u20AC') << false;
    }

    void soNomesDeArquivoSaoAceitos()
    {
        QFETCH(QString, nome);
        QTEST(NomeAceito(nome), "aceito");
    }

    void nomesRecusadosFicamForaDaLista()
    {
        QCOMPARE(Nomes("..\r\n../..\r\nimg\\..\\..\\x\r\nc:x.gif\r\nnul\r\nbom.gif\r\na\\b.gif"),
                 QStringList({"bom.gif"}));
    }

    void aPaginaEOsBannersSaoBaixadosSempre()
    {
        QVERIFY(SempreBaixada("index.htm"));
        QVERIFY(SempreBaixada("bnrtml.gif"));
        QVERIFY(SempreBaixada("topo_bnrtml2.png"));
        QVERIFY(!SempreBaixada("foto1.jpg"));
        QVERIFY(!SempreBaixada("index.html"));
        QVERIFY(!SempreBaixada("BNRTML.gif"));
    }

    void oEnderecoEABaseMaisAEntrada()
    {
        const QString base = "http://a.b/cozinhario/";
        QCOMPARE(Endereco(base, "img/foto1.jpg"), "http://a.b/cozinhario/img/foto1.jpg");
        QCOMPARE(Endereco(base, "a b.gif"), "http://a.b/cozinhario/a%20b.gif");
        QCOMPARE(Endereco(base, "p\xE3o.gif"), "http://a.b/cozinhario/p%E3o.gif");
        QCOMPARE(Endereco(base, "a%20b.gif"), "http://a.b/cozinhario/a%20b.gif");
        QCOMPARE(Endereco(base, "http://mau/x.gif"), "http://a.b/cozinhario/http://mau/x.gif");
    }
};

QTEST_GUILESS_MAIN(TesteListaNovidades)
#include "teste_lista_novidades.moc"
