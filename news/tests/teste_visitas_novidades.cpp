#include "news/tests/CenaDoPainel.h"

/**
 * The same visit by the timer and by the click, with a page from earlier and without, at a server that
 * answers, is silent, drips, cuts off or sends elsewhere, for the list and for the page itself.
 *
 * What is promised: until the server has given its list, the automatic visit shows nothing at all. Then both
 * show the same, and end with the page of today, the page of yesterday, or nothing; only the one who clicked
 * is told that there is no connection.
 */
class TesteVisitasNovidades : public QObject
{
    Q_OBJECT

private slots:
    void cadaServidorDasDuasManeiras_data();
    void cadaServidorDasDuasManeiras();
    void servidorForaDoAr_data();
    void servidorForaDoAr();
};

namespace
{
using Resposta = ServidorLocal::Resposta;
using Modo = ServidorLocal::Modo;

const QByteArray kLista = "index.htm\r\nfoto.gif";
const QByteArray kPagina = "<p>Novidades de hoje</p>";

/// What is seen at the moment of a request.
struct Visto {
    bool painel = false;
    bool lista = false;
    bool aviso = false;
    bool ampulheta = false;
};

Visto Olhar(const CenaDoPainel &cena)
{
    const auto *lblMsgInternet = cena.picWeb->findChild<QLabel *>("lblMsgInternet");
    return {cena.picWeb->isVisible(), cena.lista->isVisible(),
            lblMsgInternet->isVisible() && !cena.WbBsr1()->isVisible() && cena.picWeb->Altura() == 6930,
            Ponteiro::EmEspera()};
}

void Comecar(CenaDoPainel &cena, bool automatico)
{
    if (automatico)
        cena.picWeb->TimerWeb_Timer();
    else
        cena.picWeb->imgInternet_Click();
    QVERIFY(cena.TimerPassou());
}

/// How a visit ends: with that page, or with nothing, which only the one who clicked is told.
void ConferirFim(const CenaDoPainel &cena, bool automatico, const QString &pagina)
{
    QCOMPARE(cena.NaTela(), pagina);
    QCOMPARE(cena.picWeb->isVisible(), !pagina.isEmpty());
    QCOMPARE(cena.lista->isVisible(), pagina.isEmpty());
    QCOMPARE(cena.avisos.textos,
             pagina.isEmpty() && !automatico ? QStringList("Sem Conexão com a Internet") : QStringList());
    QVERIFY(!Ponteiro::EmEspera());
    if (!pagina.isEmpty())
        QCOMPARE(cena.picWeb->Altura(), 6930);
    else
        QCOMPARE(cena.janela.focusWidget(), cena.txtNome);
}
} // namespace

Q_DECLARE_METATYPE(ServidorLocal::Resposta)

void TesteVisitasNovidades::cadaServidorDasDuasManeiras_data()
{
    QTest::addColumn<bool>("automatico");
    QTest::addColumn<bool>("antiga");
    QTest::addColumn<bool>("naPagina"); // the server behaves so for the page, not for the list
    QTest::addColumn<Resposta>("resposta");
    QTest::addColumn<bool>("vem"); // the file comes for all that

    struct Caso {
        const char *nome;
        Resposta resposta; // without a body: that of the file is put in
        bool vem;
    };
    const QByteArray paraLa = "Location: /la\r\n";
    const Caso casos[] = {
        {"responde", {{}, "200 OK", {}, Modo::Normal}, true},
        {"goteja", {{}, "200 OK", {}, Modo::Goteja}, true},
        {"manda para outro lugar", {{}, "302 Found", paraLa, Modo::Normal}, true},
        {"cala", {{}, "200 OK", {}, Modo::Cala}, false},
        {"cala no meio", {{}, "200 OK", {}, Modo::CalaNoMeio}, false},
        {"corta", {{}, "200 OK", {}, Modo::FechaNoMeio}, false},
        {"corta o ultimo trecho", {{}, "200 OK", {}, Modo::TrecoCortado}, false},
        {"goteja sem fim", {QByteArray(400, 'x'), "200 OK", {}, Modo::Goteja}, false},
        {"nao acaba", {{}, "200 OK", {}, Modo::SemFim}, false},
        {"anuncia demais", {{}, "200 OK", {}, Modo::SemFimAnunciado}, false},
        {"manda em circulos", {{}, "302 Found", "Location: /roda\r\n", Modo::Normal}, false},
        {"manda para o disco", {{}, "302 Found", "Location: file:///etc/passwd\r\n", Modo::Normal}, false},
        {"nao tem", {{}, "404 Not Found", {}, Modo::Normal}, false},
        {"erra", {{}, "500 Oops", {}, Modo::Normal}, false},
    };
    for (const bool automatico : {true, false}) {
        for (const bool antiga : {true, false}) {
            for (const bool naPagina : {true, false}) {
                for (const Caso &caso : casos) {
                    QTest::addRow("%s, %s, %s, %s", automatico ? "pela timer" : "pelo clique",
                                  antiga ? "com pagina antiga" : "sem pagina antiga",
                                  naPagina ? "index.htm" : "index.file", caso.nome)
                        << automatico << antiga << naPagina << caso.resposta << caso.vem;
                }
            }
        }
    }
}

void TesteVisitasNovidades::cadaServidorDasDuasManeiras()
{
    QFETCH(bool, automatico);
    QFETCH(bool, antiga);
    QFETCH(bool, naPagina);
    QFETCH(Resposta, resposta);
    QFETCH(bool, vem);

    CenaDoPainel cena;
    if (antiga)
        cena.PorPaginaAntiga();
    const QByteArray corpo = naPagina ? kPagina : kLista;
    if (resposta.corpo.isEmpty())
        resposta.corpo = corpo;
    cena.PorSite();
    cena.servidor.PorCorpo("/la", corpo);
    cena.servidor.Por("/roda", {{}, "302 Found", "Location: /roda\r\n"});
    cena.servidor.Por(naPagina ? "/cozinhario/index.htm" : "/cozinhario/index.file", resposta);

    Visto naLista;
    Visto noArquivo;
    connect(&cena.servidor, &ServidorLocal::pedido, this, [&](const QString &caminho) {
        (caminho.endsWith("index.file") ? naLista : noArquivo) = Olhar(cena);
    });
    Comecar(cena, automatico);

    // The server has said nothing yet.
    QCOMPARE(naLista.painel, !automatico);
    QCOMPARE(naLista.lista, automatico);
    QCOMPARE(naLista.aviso, !automatico);
    QCOMPARE(naLista.ampulheta, !automatico);
    if (naPagina) {
        // It has given its list: both look the same.
        QVERIFY(noArquivo.painel && noArquivo.aviso && noArquivo.ampulheta && !noArquivo.lista);
    }
    ConferirFim(cena, automatico, vem ? "Novidades de hoje" : antiga ? "Novidades de ontem" : "");
    if (!vem && !antiga && automatico && !naPagina)
        QCOMPARE(cena.olhoDaLista->escondidas, 0); // not for a moment
}

void TesteVisitasNovidades::servidorForaDoAr_data()
{
    QTest::addColumn<bool>("automatico");
    QTest::addColumn<bool>("antiga");
    QTest::newRow("pela timer") << true << false;
    QTest::newRow("pela timer, com pagina antiga") << true << true;
    QTest::newRow("pelo clique") << false << false;
    QTest::newRow("pelo clique, com pagina antiga") << false << true;
}

void TesteVisitasNovidades::servidorForaDoAr()
{
    QFETCH(bool, automatico);
    QFETCH(bool, antiga);
    CenaDoPainel cena;
    cena.servidor.Desligar();
    if (antiga)
        cena.PorPaginaAntiga();
    Comecar(cena, automatico);
    ConferirFim(cena, automatico, antiga ? "Novidades de ontem" : "");
}

QTEST_MAIN(TesteVisitasNovidades)
#include "teste_visitas_novidades.moc"
