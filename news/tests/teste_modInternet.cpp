#include "news/ClienteWebQt.h"
#include "news/modInternet.h"
#include "news/tests/ServidorLocal.h"

#include <QFile>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QTest>

namespace
{

/// Answers from memory, and lets a test act between two pieces.
class ClienteFalso : public ClienteWeb
{
public:
    struct Diario {
        QList<int> pedidos; ///< bytes asked for by each read
        QList<QUrl> abertos;
        int fechados = 0;
        bool interrompido = false;
    };
    std::shared_ptr<Diario> diario = std::make_shared<Diario>();
    QByteArray corpo;
    bool completa = true;
    bool abre = true;

    std::unique_ptr<Transferencia> Abrir(const QUrl &url) override
    {
        diario->abertos += url;
        if (!abre)
            return nullptr;
        auto t = std::make_unique<Falsa>();
        t->diario = diario;
        t->resto = corpo;
        t->completa = completa;
        return t;
    }
    void Interromper() override { diario->interrompido = true; }

private:
    struct Falsa : Transferencia {
        ~Falsa() override { ++diario->fechados; }
        QByteArray Ler(int maximo) override
        {
            diario->pedidos += maximo;
            const QByteArray pedaco = resto.left(maximo);
            resto.remove(0, pedaco.size());
            return pedaco;
        }
        bool Completa() const override { return completa; }
        std::shared_ptr<Diario> diario;
        QByteArray resto;
        bool completa = true;
    };
};

QByteArray TodosOsBytes(int vezes)
{
    QByteArray bytes;
    for (int i = 0; i < 256 * vezes; ++i)
        bytes += static_cast<char>(i);
    return bytes;
}

LimitesWeb LimitesCurtos()
{
    LimitesWeb limites;
    limites.bytesPorArquivo = 200'000;
    limites.msSemByte = 300;
    limites.msTotal = 900;
    limites.redirecionamentos = 3;
    return limites;
}

} // namespace

class TesteModInternet : public QObject
{
    Q_OBJECT

private slots:
    void leEmPedacosDe256();
    void contaOsPedacosEDeixaEventosRodarem();
    void enderecoComInfoNaoContaPedacos();
    void aBandeiraAbandonaEntrePedacos();
    void falhaAoAbrirDaTextoVazio();
    void transferenciaIncompletaDaTextoVazio();

    void trazTodosOsBytesComoSao();
    void falaComoVbWininetSemCacheNemCookies();
    void qualquerFalhaDaTextoVazio_data();
    void qualquerFalhaDaTextoVazio();
    void servidorQueNaoExisteDaTextoVazio();
    void enderecoQueNaoEDaWebNaoSaiDoPrograma_data();
    void enderecoQueNaoEDaWebNaoSaiDoPrograma();
    void segueRedirecionamentosAteOLimite();
    void naoSegueRedirecionamentoParaForaDaWeb_data();
    void naoSegueRedirecionamentoParaForaDaWeb();
    void porHttpsSoComCertificadoQueVale();
    void deHttpsNaoSeDesceParaHttp();
    void umGigabyteNaoEnche();
    void aJanelaViveEnquantoOServidorCala();
    void abandonarAcordaATransferenciaParada();
};

void TesteModInternet::leEmPedacosDe256()
{
    auto cliente = std::make_unique<ClienteFalso>();
    cliente->corpo = TodosOsBytes(2) + "fim";
    const auto diario = cliente->diario;
    modInternet internet(std::move(cliente));
    QCOMPARE(internet.LerUrl("http://a.b/x"), TodosOsBytes(2) + "fim");
    QCOMPARE(diario->pedidos, QList<int>({256, 256, 256, 256}));
    QCOMPARE(diario->fechados, 1);
    QCOMPARE(diario->abertos, QList<QUrl>({QUrl("http://a.b/x")}));
}

void TesteModInternet::contaOsPedacosEDeixaEventosRodarem()
{
    auto cliente = std::make_unique<ClienteFalso>();
    cliente->corpo = TodosOsBytes(3);
    modInternet internet(std::move(cliente));
    int eventos = 0;
    QMetaObject::invokeMethod(
        this, [&eventos] { ++eventos; }, Qt::QueuedConnection);
    internet.LerUrl("http://a.b/x");
    QCOMPARE(internet.Pedacos(), 3);
    QCOMPARE(eventos, 1);
}

void TesteModInternet::enderecoComInfoNaoContaPedacos()
{
    auto cliente = std::make_unique<ClienteFalso>();
    cliente->corpo = TodosOsBytes(3);
    modInternet internet(std::move(cliente));
    int eventos = 0;
    QMetaObject::invokeMethod(
        this, [&eventos] { ++eventos; }, Qt::QueuedConnection);
    QCOMPARE(internet.LerUrl("http://a.b/info.txt").size(), 768);
    QCOMPARE(internet.Pedacos(), 0);
    QCOMPARE(eventos, 0);
    QCOMPARE(internet.LerUrl("http://a.b/INFO.txt").size(), 768);
    QCOMPARE(internet.Pedacos(), 3);
    QCOMPARE(eventos, 1);
}

void TesteModInternet::aBandeiraAbandonaEntrePedacos()
{
    auto cliente = std::make_unique<ClienteFalso>();
    cliente->corpo = TodosOsBytes(10);
    const auto diario = cliente->diario;
    modInternet internet(std::move(cliente));
    QMetaObject::invokeMethod(
        this, [&internet] { internet.Abandonar(); }, Qt::QueuedConnection);
    QCOMPARE(internet.LerUrl("http://a.b/x"), QByteArray());
    QCOMPARE(diario->pedidos.size(), 2); // the flag is seen after the piece that was on its way
    QCOMPARE(diario->fechados, 1);
    QVERIFY(diario->interrompido);
    QCOMPARE(internet.LerUrl("http://a.b/x"), QByteArray());
    QCOMPARE(diario->abertos.size(), 1);
}

void TesteModInternet::falhaAoAbrirDaTextoVazio()
{
    auto cliente = std::make_unique<ClienteFalso>();
    cliente->abre = false;
    modInternet internet(std::move(cliente));
    QCOMPARE(internet.LerUrl("http://a.b/x"), QByteArray());
}

void TesteModInternet::transferenciaIncompletaDaTextoVazio()
{
    auto cliente = std::make_unique<ClienteFalso>();
    cliente->corpo = "metade";
    cliente->completa = false;
    modInternet internet(std::move(cliente));
    QCOMPARE(internet.LerUrl("http://a.b/x"), QByteArray());
}

// From here on with a real client and a real, local server.

void TesteModInternet::trazTodosOsBytesComoSao()
{
    ServidorLocal servidor;
    servidor.PorCorpo("/x", TodosOsBytes(40));
    modInternet internet(std::make_unique<ClienteWebQt>());
    QCOMPARE(internet.LerUrl(servidor.Site() + "/x"), TodosOsBytes(40));
    QVERIFY(internet.Pedacos() >= 40);
}

void TesteModInternet::falaComoVbWininetSemCacheNemCookies()
{
    ServidorLocal servidor;
    servidor.Por("/x", {"a", "200 OK", "Set-Cookie: c=1\r\nCache-Control: max-age=9999\r\n"});
    modInternet internet(std::make_unique<ClienteWebQt>());
    QCOMPARE(internet.LerUrl(servidor.Site() + "/x"), "a");
    QCOMPARE(internet.LerUrl(servidor.Site() + "/x"), "a");
    QCOMPARE(servidor.pedidos.size(), 2);
    for (const QByteArray &pedido : servidor.completos) {
        QVERIFY(pedido.contains("User-Agent: vb wininet\r\n"));
        QVERIFY(pedido.startsWith("GET /x HTTP/1.1\r\nHost: " + servidor.Site().toLatin1().mid(7) + "\r\n"));
        QVERIFY(pedido.contains("Cache-Control: no-cache\r\n"));
        QVERIFY(!pedido.toLower().contains("cookie:"));
        QVERIFY(!pedido.toLower().contains("if-modified"));
    }
}

void TesteModInternet::qualquerFalhaDaTextoVazio_data()
{
    using Modo = ServidorLocal::Modo;
    using R = ServidorLocal::Resposta;
    const QByteArray corpo(5000, 'x');
    QTest::addColumn<ServidorLocal::Resposta>("resposta");
    QTest::newRow("nao ha") << R{corpo, "404 Not Found"};
    QTest::newRow("proibido") << R{corpo, "403 Forbidden"};
    QTest::newRow("pede senha") << R{corpo, "401 Unauthorized", "WWW-Authenticate: Basic realm=\"x\"\r\n"};
    QTest::newRow("erro do servidor") << R{corpo, "500 Internal Server Error"};
    QTest::newRow("fora do ar") << R{corpo, "503 Service Unavailable"};
    QTest::newRow("sem conteudo") << R{"", "204 No Content"};
    QTest::newRow("so um pedaco") << R{corpo, "206 Partial Content"};
    QTest::newRow("nao mudou") << R{"", "304 Not Modified"};
    QTest::newRow("redireciona para lugar nenhum") << R{corpo, "302 Found"};
    QTest::newRow("vazio") << R{""};
    QTest::newRow("status estranho") << R{corpo, "999 Eh"};
    QTest::newRow("nao fala http") << R{corpo, "x\r\n\r\n"};
    QTest::newRow("nunca responde") << R{corpo, "200 OK", {}, Modo::Cala};
    QTest::newRow("para no meio") << R{corpo, "200 OK", {}, Modo::CalaNoMeio};
    QTest::newRow("fecha no meio") << R{corpo, "200 OK", {}, Modo::FechaNoMeio};
    QTest::newRow("trecos cortados") << R{corpo, "200 OK", {}, Modo::TrecoCortado};
    QTest::newRow("goteja") << R{corpo, "200 OK", {}, Modo::Goteja};
    QTest::newRow("sem fim") << R{corpo, "200 OK", {}, Modo::SemFim};
    QTest::newRow("um gigabyte anunciado") << R{corpo, "200 OK", {}, Modo::SemFimAnunciado};
    QTest::newRow("redireciona para si") << R{corpo, "302 Found", "Location: /x\r\n"};
}

void TesteModInternet::qualquerFalhaDaTextoVazio()
{
    QFETCH(ServidorLocal::Resposta, resposta);
    ServidorLocal servidor;
    servidor.Por("/x", resposta);
    modInternet internet(std::make_unique<ClienteWebQt>(LimitesCurtos()));
    QCOMPARE(internet.LerUrl(servidor.Site() + "/x"), QByteArray());
    QVERIFY(servidor.pedidos.size() >= 1);
    QVERIFY2(servidor.pedidos.size() <= 1 + LimitesCurtos().redirecionamentos,
             qPrintable(servidor.pedidos.join(u' ')));

    // The next transfer is not harmed by it.
    servidor.PorCorpo("/y", "bom");
    QCOMPARE(internet.LerUrl(servidor.Site() + "/y"), "bom");
}

void TesteModInternet::servidorQueNaoExisteDaTextoVazio()
{
    QString site;
    {
        ServidorLocal servidor;
        site = servidor.Site();
    }
    modInternet internet(std::make_unique<ClienteWebQt>());
    QCOMPARE(internet.LerUrl(site + "/x"), QByteArray());
    QCOMPARE(internet.LerUrl("http://nao.existe.invalid/x"), QByteArray());
}

void TesteModInternet::enderecoQueNaoEDaWebNaoSaiDoPrograma_data()
{
    QTest::addColumn<QString>("url");
    for (const char *url : {"", "x", "file:///etc/hostname", "ftp://127.0.0.1/x", "data:text/plain,oi",
                            "qrc:/x", "http:///x", "http://", "javascript:1", "http://127.0.0.1:99999/x"})
        QTest::newRow(url) << QString(url);
}

void TesteModInternet::enderecoQueNaoEDaWebNaoSaiDoPrograma()
{
    QFETCH(QString, url);
    modInternet internet(std::make_unique<ClienteWebQt>());
    QCOMPARE(internet.LerUrl(url), QByteArray());
}

void TesteModInternet::segueRedirecionamentosAteOLimite()
{
    ServidorLocal servidor;
    for (int i = 0; i < 4; ++i)
        servidor.Por("/" + QString::number(i),
                     {"nao", "302 Found", "Location: /" + QByteArray::number(i + 1) + "\r\n"});
    servidor.PorCorpo("/4", "chegou");
    modInternet internet(std::make_unique<ClienteWebQt>(LimitesCurtos()));
    QCOMPARE(internet.LerUrl(servidor.Site() + "/1"), "chegou"); // three steps
    QCOMPARE(internet.LerUrl(servidor.Site() + "/0"), QByteArray());
}

void TesteModInternet::naoSegueRedirecionamentoParaForaDaWeb_data()
{
    QTest::addColumn<QByteArray>("destino");
    for (const char *destino :
         {"file:///etc/hostname", "ftp://127.0.0.1/x", "data:text/plain,oi", "javascript:1"})
        QTest::newRow(destino) << QByteArray(destino);
}

void TesteModInternet::naoSegueRedirecionamentoParaForaDaWeb()
{
    QFETCH(QByteArray, destino);
    ServidorLocal servidor;
    servidor.Por("/x", {"nao", "301 Moved Permanently", "Location: " + destino + "\r\n"});
    modInternet internet(std::make_unique<ClienteWebQt>(LimitesCurtos()));
    QCOMPARE(internet.LerUrl(servidor.Site() + "/x"), QByteArray());
}

namespace
{

/// Answers every request over TLS with the same text, under the certificate made for these tests.
class ServidorSeguro : public QSslServer
{
public:
    explicit ServidorSeguro(const QByteArray &resposta)
    {
        QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
        tls.setLocalCertificate(Certificado());
        QFile chave(PASTA_FONTES "/tests/data/tls_de_teste.key");
        if (chave.open(QIODevice::ReadOnly))
            tls.setPrivateKey(QSslKey(chave.readAll(), QSsl::Rsa));
        setSslConfiguration(tls);
        connect(this, &QTcpServer::pendingConnectionAvailable, this, [this, resposta] {
            while (QTcpSocket *tomada = nextPendingConnection()) {
                connect(tomada, &QTcpSocket::readyRead, tomada, [this, tomada, resposta] {
                    ++pedidos;
                    tomada->readAll();
                    tomada->write(resposta);
                    tomada->disconnectFromHost();
                });
            }
        });
        listen(QHostAddress::LocalHost);
    }

    static QSslCertificate Certificado()
    {
        return QSslCertificate::fromPath(PASTA_FONTES "/tests/data/tls_de_teste.crt").value(0);
    }
    QString Site() const { return "https://127.0.0.1:" + QString::number(serverPort()); }

    int pedidos = 0;
};

/// Trusts the tests' certificate for as long as it lives.
struct Confianca {
    QSslConfiguration antes = QSslConfiguration::defaultConfiguration();
    Confianca()
    {
        QSslConfiguration tls = antes;
        tls.addCaCertificate(ServidorSeguro::Certificado());
        QSslConfiguration::setDefaultConfiguration(tls);
    }
    ~Confianca() { QSslConfiguration::setDefaultConfiguration(antes); }
};

} // namespace

void TesteModInternet::porHttpsSoComCertificadoQueVale()
{
    const ServidorSeguro servidor("HTTP/1.1 200 OK\r\nContent-Length: 6\r\n\r\nsegura");
    QVERIFY(servidor.isListening());
    modInternet internet(std::make_unique<ClienteWebQt>(LimitesCurtos()));
    QCOMPARE(internet.LerUrl(servidor.Site() + "/x"), QByteArray());
    QCOMPARE(servidor.pedidos, 0); // not even the request is shown to a stranger
    const Confianca confianca;
    QCOMPARE(internet.LerUrl(servidor.Site() + "/x"), "segura");
    QCOMPARE(servidor.pedidos, 1);
    // The certificate is for 127.0.0.1, not for this name.
    QCOMPARE(internet.LerUrl(servidor.Site().replace("127.0.0.1", "localhost") + "/x"), QByteArray());
}

void TesteModInternet::deHttpsNaoSeDesceParaHttp()
{
    ServidorLocal aberto;
    aberto.PorCorpo("/y", "aberta");
    const ServidorSeguro servidor("HTTP/1.1 302 Found\r\nLocation: " + aberto.Site().toLatin1() +
                                  "/y\r\nContent-Length: 0\r\n\r\n");
    const Confianca confianca;
    modInternet internet(std::make_unique<ClienteWebQt>(LimitesCurtos()));
    QCOMPARE(internet.LerUrl(servidor.Site() + "/x"), QByteArray());
    QCOMPARE(servidor.pedidos, 1);
    QCOMPARE(aberto.conexoes, 0);

    // Up is allowed.
    const ServidorSeguro seguro("HTTP/1.1 200 OK\r\nContent-Length: 6\r\n\r\nsegura");
    aberto.Por("/z", {"", "301 Moved Permanently", "Location: " + seguro.Site().toLatin1() + "/x\r\n"});
    QCOMPARE(internet.LerUrl(aberto.Site() + "/z"), "segura");
}

void TesteModInternet::umGigabyteNaoEnche()
{
    ServidorLocal servidor;
    servidor.Por("/x", {"", "200 OK", {}, ServidorLocal::Modo::SemFim});
    LimitesWeb limites;
    limites.bytesPorArquivo = 1024 * 1024;
    modInternet internet(std::make_unique<ClienteWebQt>(limites));
    QCOMPARE(internet.LerUrl(servidor.Site() + "/x"), QByteArray());
    // What the limit allows and what lies in the system's socket buffers, far from the whole.
    QVERIFY2(servidor.enviados < 32 * 1024 * 1024, qPrintable(QString::number(servidor.enviados)));
}

void TesteModInternet::aJanelaViveEnquantoOServidorCala()
{
    ServidorLocal servidor;
    servidor.Por("/x", {"", "200 OK", {}, ServidorLocal::Modo::Cala});
    modInternet internet(std::make_unique<ClienteWebQt>(LimitesCurtos()));
    QTimer batida;
    int batidas = 0;
    connect(&batida, &QTimer::timeout, this, [&batidas] { ++batidas; });
    batida.start(10);
    internet.LerUrl(servidor.Site() + "/x");
    QVERIFY(batidas > 3);
}

void TesteModInternet::abandonarAcordaATransferenciaParada()
{
    ServidorLocal servidor;
    servidor.Por("/x", {"metade", "200 OK", {}, ServidorLocal::Modo::CalaNoMeio});
    // With the usual limits the silence would last longer than the test may.
    LimitesWeb limites;
    limites.msSemByte = limites.msTotal = 600'000;
    modInternet internet(std::make_unique<ClienteWebQt>(limites));
    connect(&servidor, &ServidorLocal::pedido, this,
            [this, &internet] { QTimer::singleShot(20, this, [&internet] { internet.Abandonar(); }); });
    QCOMPARE(internet.LerUrl(servidor.Site() + "/x"), QByteArray());
}

QTEST_GUILESS_MAIN(TesteModInternet)
#include "teste_modInternet.moc"
