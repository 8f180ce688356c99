#include "base/tests/LimiteDeArquivo.h"
#include "news/ClienteWebQt.h"
#include "news/Novidades.h"
#include "news/tests/ServidorLocal.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace
{

/// A site, a folder for it that does not exist yet, and what downloads the one into the other.
struct Cena {
    ServidorLocal servidor;
    QTemporaryDir raiz;
    QString pasta = raiz.filePath("temporario");
    Novidades novidades;

    explicit Cena(const LimitesVisita &visita = {})
        : novidades(std::make_unique<ClienteWebQt>(Limites()), servidor.Site(), pasta, visita)
    {
    }

    static LimitesWeb Limites()
    {
        LimitesWeb limites;
        limites.msSemByte = 300;
        limites.msTotal = 900;
        limites.bytesPorArquivo = 100'000;
        return limites;
    }

    void Site(const QByteArray &lista, const QHash<QString, QByteArray> &arquivos)
    {
        servidor.PorCorpo("/cozinhario/index.file", lista);
        for (auto it = arquivos.begin(); it != arquivos.end(); ++it)
            servidor.PorCorpo("/cozinhario/" + it.key(), it.value());
    }

    QStringList Visitar()
    {
        servidor.pedidos.clear();
        novidades.BaixarNovidades();
        QStringList pedidos = servidor.pedidos;
        return pedidos.replaceInStrings("/cozinhario/", "");
    }

    QByteArray Ler(const QString &nome) const
    {
        QFile arquivo(QDir(pasta).filePath(nome));
        return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
    }

    void Gravar(const QString &nome, const QByteArray &bytes) const
    {
        QDir().mkpath(pasta);
        QFile arquivo(QDir(pasta).filePath(nome));
        QVERIFY(arquivo.open(QIODevice::WriteOnly));
        QCOMPARE(arquivo.write(bytes), bytes.size());
    }

    QStringList NaPasta() const
    {
        return QDir(pasta).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};

} // namespace

class TesteNovidades : public QObject
{
    Q_OBJECT

private slots:
    void aPrimeiraVisitaBaixaTudoEASegundaSoAPaginaEOBanner();
    void aPaginaEOBannerSaoTrocadosPelosNovos();
    void aEntradaComPastaFicaComOUltimoNome();
    void osBytesFicamComoVieram();
    void semListaAPastaFicaComoEsta_data();
    void semListaAPastaFicaComoEsta();
    void downloadQueFalhaNaoTrocaOArquivoBom_data();
    void downloadQueFalhaNaoTrocaOArquivoBom();
    void figuraQueFalhouEPedidaDeNovo();
    void nadaSaiDaPasta();
    void naoSegueLinksSimbolicos();
    void umaPastaComONomeDoArquivoFica();
    void pastaQueNaoSePodeFazerNaoDerrubaNada();
    void aVisitaTemLimiteDeBytes();
    void aVisitaTemLimiteDeTempo();
    void aPastaCheiaSoRecebeAPagina();
    void abandonarTerminaAVisita();
    void aAmpulhetaFicaDuranteAVisita();
    void oTrabalhoQueUmaQuedaDeixouNaoAtrapalha();
    void discoQueRecusaDeixaOArquivoAntigo();
};

void TesteNovidades::aPrimeiraVisitaBaixaTudoEASegundaSoAPaginaEOBanner()
{
    Cena cena;
    cena.Site(
        "index.htm\r\nfoto1.gif\r\nfoto2.gif\r\nbnrtml1.gif\r\n",
        {{"index.htm", "pagina"}, {"foto1.gif", "um"}, {"foto2.gif", "dois"}, {"bnrtml1.gif", "banner"}});
    QVERIFY(!cena.novidades.TemPagina());
    QCOMPARE(cena.Visitar(),
             QStringList({"index.file", "index.htm", "foto1.gif", "foto2.gif", "bnrtml1.gif"}));
    QVERIFY(cena.novidades.TemPagina());
    QCOMPARE(cena.NaPasta(), QStringList({"bnrtml1.gif", "foto1.gif", "foto2.gif", "index.htm"}));
    QCOMPARE(cena.Visitar(), QStringList({"index.file", "index.htm", "bnrtml1.gif"}));
}

void TesteNovidades::aPaginaEOBannerSaoTrocadosPelosNovos()
{
    Cena cena;
    cena.Site("index.htm\r\nfoto.gif\r\nbnrtml.gif",
              {{"index.htm", "velha"}, {"foto.gif", "velha"}, {"bnrtml.gif", "velho"}});
    cena.Visitar();
    cena.Site("index.htm\r\nfoto.gif\r\nbnrtml.gif",
              {{"index.htm", "nova"}, {"foto.gif", "nova"}, {"bnrtml.gif", "novo"}});
    cena.Visitar();
    QCOMPARE(cena.Ler("index.htm"), "nova");
    QCOMPARE(cena.Ler("bnrtml.gif"), "novo");
    QCOMPARE(cena.Ler("foto.gif"), "velha");
}

void TesteNovidades::aEntradaComPastaFicaComOUltimoNome()
{
    Cena cena;
    cena.Site("img/foto1.jpg\r\n", {{"img/foto1.jpg", "foto"}});
    QCOMPARE(cena.Visitar(), QStringList({"index.file", "img/foto1.jpg"}));
    QCOMPARE(cena.NaPasta(), QStringList({"foto1.jpg"}));
    QCOMPARE(cena.Ler("foto1.jpg"), "foto");
}

void TesteNovidades::osBytesFicamComoVieram()
{
    QByteArray bytes;
    for (int i = 0; i < 3000; ++i)
        bytes += static_cast<char>(i * 7);
    Cena cena;
    cena.Site("a.bin\r\nindex.htm", {{"a.bin", bytes}, {"index.htm", "Rece\xE7\xE3o\r\n\n\0fim"}});
    cena.Visitar();
    QCOMPARE(cena.Ler("a.bin"), bytes);
    QCOMPARE(cena.Ler("index.htm"), QByteArray("Rece\xE7\xE3o\r\n\n\0fim"));
}

void TesteNovidades::semListaAPastaFicaComoEsta_data()
{
    using R = ServidorLocal::Resposta;
    QTest::addColumn<ServidorLocal::Resposta>("lista");
    QTest::newRow("vazia") << R{""};
    QTest::newRow("nao ha") << R{"index.htm", "404 Not Found"};
    QTest::newRow("cortada") << R{"index.htm\r\nfoto.gif", "200 OK", {}, ServidorLocal::Modo::FechaNoMeio};
    QTest::newRow("calada") << R{"index.htm", "200 OK", {}, ServidorLocal::Modo::Cala};
}

void TesteNovidades::semListaAPastaFicaComoEsta()
{
    QFETCH(ServidorLocal::Resposta, lista);
    Cena cena;
    cena.servidor.Por("/cozinhario/index.file", lista);
    cena.servidor.PorCorpo("/cozinhario/index.htm", "pagina");
    QCOMPARE(cena.Visitar(), QStringList({"index.file"}));
    QVERIFY(!QDir(cena.pasta).exists());

    cena.Gravar("index.htm", "antiga");
    cena.Visitar();
    QCOMPARE(cena.NaPasta(), QStringList({"index.htm"}));
    QCOMPARE(cena.Ler("index.htm"), "antiga");
    QVERIFY(cena.novidades.TemPagina());
}

void TesteNovidades::downloadQueFalhaNaoTrocaOArquivoBom_data()
{
    using Modo = ServidorLocal::Modo;
    using R = ServidorLocal::Resposta;
    QTest::addColumn<ServidorLocal::Resposta>("resposta");
    QTest::newRow("nao ha mais") << R{"erro", "404 Not Found"};
    QTest::newRow("fecha no meio") << R{"pagina nova", "200 OK", {}, Modo::FechaNoMeio};
    QTest::newRow("trecos cortados") << R{"pagina nova", "200 OK", {}, Modo::TrecoCortado};
    QTest::newRow("para no meio") << R{"pagina nova", "200 OK", {}, Modo::CalaNoMeio};
    QTest::newRow("cala") << R{"pagina nova", "200 OK", {}, Modo::Cala};
    QTest::newRow("sem fim") << R{"", "200 OK", {}, Modo::SemFim};
    QTest::newRow("vazia") << R{""};
    QTest::newRow("grande demais") << R{QByteArray(100'001, 'x')};
}

void TesteNovidades::downloadQueFalhaNaoTrocaOArquivoBom()
{
    QFETCH(ServidorLocal::Resposta, resposta);
    Cena cena;
    cena.Gravar("index.htm", "boa");
    cena.servidor.PorCorpo("/cozinhario/index.file", "index.htm");
    cena.servidor.Por("/cozinhario/index.htm", resposta);
    QCOMPARE(cena.Visitar().first(2), QStringList({"index.file", "index.htm"}));
    QCOMPARE(cena.Ler("index.htm"), "boa");
    QCOMPARE(cena.NaPasta(), QStringList({"index.htm"}));
}

void TesteNovidades::figuraQueFalhouEPedidaDeNovo()
{
    Cena cena;
    cena.Site("foto.gif", {});
    cena.Visitar();
    QCOMPARE(cena.NaPasta(), QStringList());
    cena.Site("foto.gif", {{"foto.gif", "agora"}});
    QCOMPARE(cena.Visitar(), QStringList({"index.file", "foto.gif"}));
    QCOMPARE(cena.Ler("foto.gif"), "agora");
}

void TesteNovidades::nadaSaiDaPasta()
{
    Cena cena;
    const QStringList maus{"..",
                           ".",
                           "img/..",
                           "..\\fora.txt",
                           "img\\..\\..\\fora.txt",
                           "C:fora.txt",
                           "/",
                           "img/",
                           "con",
                           "nul.gif",
                           "a/COM1.txt",
                           "fora\tx",
                           "fora.txt\n",
                           "fora.",
                           "fora ",
                           "a|b",
                           "f?ora",
                           "fo*ra",
                           QString(300, 'n')};
    cena.Site(maus.join("\r\n").toLatin1() + "\r\n/etc/passwd\r\n../../fora.txt\r\n", {});
    for (const QString &mau : maus)
        cena.servidor.PorCorpo("/cozinhario/" + mau, "mau");
    cena.servidor.PorCorpo("/cozinhario//etc/passwd", "inocente");
    cena.servidor.PorCorpo("/fora.txt", "inocente");
    cena.servidor.PorCorpo("/cozinhario/../../fora.txt", "inocente");
    // The last two are asked for, because their last part is a plain name, and land in the folder or nowhere.
    cena.Visitar();
    for (const QString &nome : cena.NaPasta())
        QVERIFY2(nome == "passwd" || nome == "fora.txt", qPrintable(nome));
    QCOMPARE(QDir(cena.raiz.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList({"temporario"}));
    for (const QString &pedido : cena.servidor.pedidos)
        QVERIFY2(pedido.endsWith("index.file") || pedido.endsWith("passwd") || pedido.endsWith("fora.txt"),
                 qPrintable(pedido));
}

void TesteNovidades::naoSegueLinksSimbolicos()
{
    Cena cena;
    const QString fora = cena.raiz.filePath("fora.htm");
    QFile arquivo(fora);
    QVERIFY(arquivo.open(QIODevice::WriteOnly));
    arquivo.write("intacto");
    arquivo.close();
    QDir().mkpath(cena.pasta);
    QVERIFY(QFile::link(fora, cena.pasta + "/index.htm"));
    QVERIFY(QFile::link(fora, cena.pasta + "/~novidade.tmp"));
    QVERIFY(QFile::link(cena.raiz.filePath("nova.gif"), cena.pasta + "/foto.gif"));
    cena.Site("index.htm\r\nfoto.gif", {{"index.htm", "pagina"}, {"foto.gif", "foto"}});
    cena.Visitar();
    QVERIFY(arquivo.open(QIODevice::ReadOnly));
    QCOMPARE(arquivo.readAll(), "intacto");
    QVERIFY(!QFile::exists(cena.raiz.filePath("nova.gif")));
    QCOMPARE(cena.Ler("index.htm"), "pagina");
    QCOMPARE(cena.Ler("foto.gif"), "foto");
}

void TesteNovidades::umaPastaComONomeDoArquivoFica()
{
    Cena cena;
    QDir().mkpath(cena.pasta + "/index.htm");
    cena.Site("index.htm", {{"index.htm", "pagina"}});
    QCOMPARE(cena.Visitar(), QStringList({"index.file"}));
    QVERIFY(QDir(cena.pasta + "/index.htm").exists());
    QVERIFY(!cena.novidades.TemPagina());
}

void TesteNovidades::pastaQueNaoSePodeFazerNaoDerrubaNada()
{
    Cena cena;
    QFile estorvo(cena.pasta); // a file where the folder should be
    QVERIFY(estorvo.open(QIODevice::WriteOnly));
    cena.Site("index.htm", {{"index.htm", "pagina"}});
    cena.Visitar();
    QVERIFY(!cena.novidades.TemPagina());
    QVERIFY(QFileInfo(cena.pasta).isFile());
}

void TesteNovidades::aVisitaTemLimiteDeBytes()
{
    LimitesVisita visita;
    visita.bytes = 150'000;
    Cena cena(visita);
    const QByteArray grande(60'000, 'x');
    cena.Site("a\r\nb\r\nc\r\nd\r\n", {{"a", grande}, {"b", grande}, {"c", grande}, {"d", grande}});
    QCOMPARE(cena.Visitar(), QStringList({"index.file", "a", "b", "c"}));
    QCOMPARE(cena.NaPasta(), QStringList({"a", "b"}));
}

void TesteNovidades::aVisitaTemLimiteDeTempo()
{
    LimitesVisita visita;
    visita.ms = 500;
    Cena cena(visita);
    cena.servidor.PorCorpo("/cozinhario/index.file", "a\r\nb\r\nc\r\nd\r\n");
    for (const char *nome : {"a", "b", "c", "d"})
        cena.servidor.Por("/cozinhario/" + QString(nome), {"x", "200 OK", {}, ServidorLocal::Modo::Cala});
    QCOMPARE(cena.Visitar(), QStringList({"index.file", "a", "b"})); // 300 ms of silence each
}

void TesteNovidades::aPastaCheiaSoRecebeAPagina()
{
    LimitesVisita visita;
    visita.arquivosNaPasta = 3;
    Cena cena(visita);
    for (const char *nome : {"x", "y", "bnrtml.gif"})
        cena.Gravar(nome, "velho");
    cena.Site("novo.gif\r\nbnrtml.gif\r\nindex.htm",
              {{"novo.gif", "n"}, {"bnrtml.gif", "novo"}, {"index.htm", "pagina"}});
    QCOMPARE(cena.Visitar(), QStringList({"index.file", "bnrtml.gif", "index.htm"}));
    QCOMPARE(cena.NaPasta(), QStringList({"bnrtml.gif", "index.htm", "x", "y"}));
    QCOMPARE(cena.Ler("bnrtml.gif"), "novo");
}

void TesteNovidades::abandonarTerminaAVisita()
{
    Cena cena;
    cena.Site("a.gif\r\nb.gif\r\nc.gif", {{"a.gif", "a"}, {"b.gif", "b"}, {"c.gif", "c"}});
    connect(&cena.servidor, &ServidorLocal::pedido, this, [&cena](const QString &caminho) {
        if (caminho.endsWith("b.gif"))
            cena.novidades.Abandonar();
    });
    QCOMPARE(cena.Visitar(), QStringList({"index.file", "a.gif", "b.gif"}));
    QCOMPARE(cena.NaPasta(), QStringList({"a.gif"}));
}

void TesteNovidades::aAmpulhetaFicaDuranteAVisita()
{
    Cena cena;
    cena.Site("a.gif", {{"a.gif", "a"}});
    QList<bool> vistas;
    connect(&cena.servidor, &ServidorLocal::pedido, this, [&vistas] { vistas += Ponteiro::EmEspera(); });
    QVERIFY(!Ponteiro::EmEspera());
    cena.Visitar();
    QCOMPARE(vistas, QList<bool>({true, true}));
    QVERIFY(!Ponteiro::EmEspera());
    cena.servidor.Tirar("/cozinhario/index.file");
    cena.Visitar();
    QVERIFY(!Ponteiro::EmEspera());
}

void TesteNovidades::oTrabalhoQueUmaQuedaDeixouNaoAtrapalha()
{
    Cena cena;
    cena.Gravar("~novidade.tmp", "metade de outro dia");
    cena.Site("index.htm", {{"index.htm", "pagina"}});
    cena.Visitar();
    QCOMPARE(cena.NaPasta(), QStringList({"index.htm"}));
    QCOMPARE(cena.Ler("index.htm"), "pagina");
}

void TesteNovidades::discoQueRecusaDeixaOArquivoAntigo()
{
    Cena cena;
    cena.Site("index.htm", {{"index.htm", "um"}});
    cena.Visitar();
    cena.Site("index.htm", {{"index.htm", QByteArray(5000, 'x')}});
    {
        const LimiteDeArquivo limite(1000);
        cena.Visitar();
    }
    QCOMPARE(cena.Ler("index.htm"), "um");
    QCOMPARE(cena.NaPasta(), QStringList({"index.htm"}));
}

QTEST_MAIN(TesteNovidades)
#include "teste_novidades.moc"
