#include "news/tests/CenaDoPainel.h"

#include <QDialog>

class TestePainelNovidades : public QObject
{
    Q_OBJECT

private slots:
    void nasceEscondidoComATimerArmada();
    void oCliqueRolaOPainelEMostraAPagina();
    void enquantoProcuraVeSeOAviso();
    void oCliqueSemConexaoESemPaginaAvisaEDevolveAsTelas();
    void telasEscondidasContinuamEscondidasNaVolta();
    void aPaginaAntigaAparecePeloCliqueSemConexao();
    void aPrimeiraPartidaSemConexaoFicaNaListaSemAviso();
    void oAutomaticoMostraAPaginaAQuemNaoComecou();
    void oAutomaticoMostraAPaginaAntiga();
    void oAutomaticoNaoTiraAListaDeQuemComecou_data();
    void oAutomaticoNaoTiraAListaDeQuemComecou();
    void enquantoOServidorNaoRespondeNadaSeVe();
    void oAutomaticoEsperaOQueEstaEmCurso();
    void quemComecaDepoisDaRespostaRecebeASuaTela_data();
    void quemComecaDepoisDaRespostaRecebeASuaTela();
    void cliqueNoTituloNaoEComecar();
    void soTeclaBotaoOuLinhaEComecar();
    void outraTelaCortaATransferencia();
    void outraTelaCortaOAutomatico();
    void oCliqueDuranteOAutomaticoMostraAPagina();
    void oCliqueDuranteOAutomaticoAvisaQuandoNaoHaConexao();
    void oCliqueAntesDaTimerDispensaOAutomatico();
    void depoisDoAutomaticoOCliqueAvisa();
    void doisCliquesUmDownload();
    void outraTelaDuranteODownloadNaoEDesfeita_data();
    void outraTelaDuranteODownloadNaoEDesfeita();
    void voltarAClicarDuranteODownloadMostraDeNovo();
    void outraTelaDuranteARolagemNaoEDesfeita();
    void aSegundaVisitaMostraAPaginaNova();
    void apagadaAPaginaAListaVoltaMesmoNaSegundaVisita();
    void oPainelPodeSerDestruidoDuranteODownload_data();
    void oPainelPodeSerDestruidoDuranteODownload();
    void oPainelPodeSerDestruidoDuranteARolagem();
    void tudoTemNomeParaQuemNaoVe();
};

void TestePainelNovidades::nasceEscondidoComATimerArmada()
{
    CenaDoPainel cena;
    QCOMPARE(cena.picWeb->objectName(), "picWeb");
    QVERIFY(cena.picWeb->isHidden());
    QVERIFY(cena.WbBsr1()->isHidden());
    QCOMPARE(cena.TimerWeb()->interval(), 500);
    QVERIFY(cena.TimerWeb()->isSingleShot());
    QVERIFY(!cena.TimerWeb()->property("tag").toString().isEmpty());
    QVERIFY(!cena.TimerWeb()->isActive()); // the window says when it is ready
    cena.picWeb->LigarTimer();
    QVERIFY(cena.TimerWeb()->isActive());
    QCOMPARE(cena.servidor.conexoes, 0);
}

void TestePainelNovidades::oCliqueRolaOPainelEMostraAPagina()
{
    CenaDoPainel cena;
    cena.PorSite();
    auto *olho = new Observador(cena.picWeb);
    cena.picWeb->imgInternet_Click();

    QCOMPARE(cena.NaTela(), "Novidades de hoje");
    QVERIFY(cena.lista->isHidden());
    QVERIFY(cena.telas.restauradas > 0);
    QCOMPARE(cena.picWeb->Altura(), 6930);
    QCOMPARE(cena.picWeb->height(), 462);
    QVERIFY(cena.avisos.textos.isEmpty());
    QCOMPARE(cena.WbBsr1()->geometry(), QRect(-2, -2, 622, 461));
    // What is seen of the page leaves the panel's border whole, all around.
    const QRect visto = cena.WbBsr1()->mask().boundingRect().translated(-2, -2);
    QVERIFY(cena.picWeb->rect().adjusted(1, 1, -1, -1).contains(visto));
    QVERIFY(visto.height() > 450 && visto.width() > 610);

    QList<int> esperadas;
    for (int altura = 220; altura <= 6930; altura += 200)
        esperadas += TwipsParaPixels(altura);
    esperadas += TwipsParaPixels(6930);
    while (!olho->alturas.isEmpty() && olho->alturas.first() != esperadas.first())
        olho->alturas.removeFirst(); // what the showing itself says of the 20 twips
    QCOMPARE(olho->alturas, esperadas);
}

void TestePainelNovidades::enquantoProcuraVeSeOAviso()
{
    CenaDoPainel cena;
    cena.PorSite();
    auto *lblMsgInternet = cena.picWeb->findChild<QLabel *>("lblMsgInternet");
    QCOMPARE(lblMsgInternet->text(),
             "Procurando o servidor do Cozinhario na Internet para exibir as novidades...");
    bool visto = false;
    bool ampulheta = false;
    connect(&cena.servidor, &ServidorLocal::pedido, this, [&] {
        visto = lblMsgInternet->isVisible() && !cena.WbBsr1()->isVisible() && cena.picWeb->Altura() == 6930;
        ampulheta = Ponteiro::EmEspera();
    });
    cena.picWeb->imgInternet_Click();
    QVERIFY(visto);
    QVERIFY(ampulheta);
    QVERIFY(!Ponteiro::EmEspera());
}

void TestePainelNovidades::oCliqueSemConexaoESemPaginaAvisaEDevolveAsTelas()
{
    CenaDoPainel cena;
    QTest::keyClicks(cena.txtNome, "bolo");
    cena.picWeb->imgInternet_Click();
    QCOMPARE(cena.avisos.textos, QStringList({"Sem Conexão com a Internet"}));
    QCOMPARE(cena.avisos.icones.first(), Avisos::Icone::Informacao);
    QVERIFY(cena.picWeb->isHidden());
    QVERIFY(cena.lista->isVisible());
    QVERIFY(cena.detalhe->isHidden());
    QVERIFY(cena.pesquisa->isHidden());
    QCOMPARE(cena.janela.focusWidget(), cena.txtNome);
    QCOMPARE(cena.txtNome->text(), "bolo");
}

void TestePainelNovidades::telasEscondidasContinuamEscondidasNaVolta()
{
    CenaDoPainel cena;
    cena.lista->hide();
    cena.detalhe->show();
    cena.pesquisa->show();
    cena.picWeb->imgInternet_Click();
    QVERIFY(cena.lista->isHidden());
    QVERIFY(cena.detalhe->isVisible());
    QVERIFY(cena.pesquisa->isVisible());
}

void TestePainelNovidades::aPaginaAntigaAparecePeloCliqueSemConexao()
{
    CenaDoPainel cena;
    cena.PorPaginaAntiga();
    cena.picWeb->imgInternet_Click();
    QCOMPARE(cena.NaTela(), "Novidades de ontem");
    QVERIFY(cena.avisos.textos.isEmpty());
}

void TestePainelNovidades::aPrimeiraPartidaSemConexaoFicaNaListaSemAviso()
{
    CenaDoPainel cena;
    cena.picWeb->LigarTimer();
    QTRY_VERIFY(cena.TimerPassou());
    QCOMPARE(cena.TimerWeb()->interval(), 0);
    QVERIFY(!cena.TimerWeb()->isActive());
    QVERIFY(cena.servidor.pedidos.contains("/cozinhario/index.file"));
    QVERIFY(cena.avisos.textos.isEmpty());
    QVERIFY(cena.picWeb->isHidden());
    QVERIFY(cena.lista->isVisible());
    QCOMPARE(cena.olhoDaLista->escondidas, 0); // not even for a moment
    QCOMPARE(cena.janela.focusWidget(), cena.txtNome);
}

void TestePainelNovidades::oAutomaticoMostraAPaginaAQuemNaoComecou()
{
    CenaDoPainel cena;
    cena.PorSite();
    QStringList listaNaTela;
    connect(&cena.servidor, &ServidorLocal::pedido, this, [&](const QString &caminho) {
        if (cena.lista->isVisible())
            listaNaTela += caminho;
    });
    cena.picWeb->LigarTimer();
    QTRY_VERIFY(cena.TimerPassou());
    QCOMPARE(listaNaTela, QStringList("/cozinhario/index.file")); // until the server has answered
    QCOMPARE(cena.NaTela(), "Novidades de hoje");
    QVERIFY(cena.lista->isHidden());
    QCOMPARE(cena.picWeb->Altura(), 6930);
}

void TestePainelNovidades::oAutomaticoMostraAPaginaAntiga()
{
    CenaDoPainel cena;
    cena.PorPaginaAntiga();
    cena.picWeb->LigarTimer();
    QTRY_VERIFY(cena.TimerPassou());
    QCOMPARE(cena.NaTela(), "Novidades de ontem");
}

void TestePainelNovidades::oAutomaticoNaoTiraAListaDeQuemComecou_data()
{
    QTest::addColumn<bool>("antes"); // before the timer, or before the server answers
    QTest::addColumn<bool>("tecla");
    QTest::newRow("tecla no primeiro meio segundo") << true << true;
    QTest::newRow("clique antes") << true << false;
    QTest::newRow("tecla antes da resposta") << false << true;
    QTest::newRow("clique antes da resposta") << false << false;
}

void TestePainelNovidades::oAutomaticoNaoTiraAListaDeQuemComecou()
{
    QFETCH(bool, antes);
    QFETCH(bool, tecla);
    CenaDoPainel cena;
    cena.PorSite();
    const auto comecar = [&cena, tecla] {
        if (tecla)
            QTest::keyClick(cena.txtNome, Qt::Key_B);
        else
            QTest::mouseClick(cena.lista, Qt::LeftButton);
    };
    bool comecou = false;
    if (antes) {
        comecar();
    } else {
        connect(&cena.servidor, &ServidorLocal::pedido, this, [&] {
            if (!std::exchange(comecou, true))
                comecar();
        });
    }
    cena.picWeb->LigarTimer();
    QTRY_VERIFY(cena.TimerPassou());
    QVERIFY(cena.picWeb->isHidden());
    QCOMPARE(cena.olhoDaLista->escondidas, 0);
    QVERIFY(cena.avisos.textos.isEmpty());
    QVERIFY(QFile::exists(cena.Arquivo("index.htm"))); // fetched all the same, for when they ask

    cena.servidor.pedidos.clear();
    cena.picWeb->imgInternet_Click();
    QCOMPARE(cena.NaTela(), "Novidades de hoje");
    QCOMPARE(cena.servidor.pedidos, QStringList({"/cozinhario/index.file", "/cozinhario/index.htm"}));
}

void TestePainelNovidades::enquantoOServidorNaoRespondeNadaSeVe()
{
    CenaDoPainel cena;
    cena.servidor.Por("/cozinhario/index.file", {"", "200 OK", {}, ServidorLocal::Modo::Cala});
    bool visto = true;
    bool ampulheta = true;
    connect(&cena.servidor, &ServidorLocal::pedido, this, [&] {
        QTimer::singleShot(50, &cena.janela, [&] {
            visto = cena.picWeb->isVisible() || !cena.lista->isVisible();
            ampulheta = Ponteiro::EmEspera();
        });
    });
    cena.picWeb->LigarTimer();
    QTRY_VERIFY(cena.TimerPassou());
    QVERIFY(!visto);
    QVERIFY(!ampulheta);
    QCOMPARE(cena.olhoDaLista->escondidas, 0);
    QCOMPARE(cena.telas.restauradas, 0);
}

void TestePainelNovidades::oAutomaticoEsperaOQueEstaEmCurso()
{
    CenaDoPainel cena;
    cena.PorSite();
    cena.livre = false;
    bool eventoCorreu = false;
    QMetaObject::invokeMethod(
        &cena.janela, [&] { eventoCorreu = true; }, Qt::QueuedConnection);
    cena.picWeb->TimerWeb_Timer();
    QVERIFY(!eventoCorreu); // inside another operation it lets nothing in
    QVERIFY(cena.TimerWeb()->isActive());
    QVERIFY(!cena.TimerPassou());
    QTest::qWait(2 * cena.TimerWeb()->interval());
    QCOMPARE(cena.servidor.conexoes, 0);

    cena.livre = true;
    QTRY_COMPARE(cena.NaTela(), "Novidades de hoje");
    QTRY_VERIFY(cena.TimerPassou());
    QCOMPARE(cena.TimerWeb()->interval(), 0);
    QVERIFY(!cena.TimerWeb()->isActive());
}

void TestePainelNovidades::quemComecaDepoisDaRespostaRecebeASuaTela_data()
{
    QTest::addColumn<bool>("tecla");
    QTest::newRow("uma tecla") << true;
    QTest::newRow("um botao") << false;
}

/// The list has come, the panel is open and the page stands still on its way: whoever begins gets her view.
void TestePainelNovidades::quemComecaDepoisDaRespostaRecebeASuaTela()
{
    QFETCH(bool, tecla);
    LimitesWeb longos; // only the cook can end the wait
    longos.msSemByte = longos.msTotal = 600'000;
    CenaDoPainel cena(longos);
    cena.PorSite();
    QPushButton daBarra("Barra", &cena.janela);
    daBarra.move(0, 560);
    daBarra.show();
    cena.servidor.Por("/cozinhario/index.htm", {"abc", "200 OK", {}, ServidorLocal::Modo::CalaNoMeio});
    bool aberto = false;
    connect(&cena.servidor, &ServidorLocal::pedido, this, [&](const QString &caminho) {
        if (!caminho.endsWith("index.htm"))
            return;
        aberto = cena.picWeb->isVisible() && cena.picWeb->Altura() == 6930 && Ponteiro::EmEspera();
        if (tecla)
            QTest::keyClick(&cena.janela, Qt::Key_B);
        else
            QTest::mouseClick(&daBarra, Qt::LeftButton);
    });
    cena.picWeb->LigarTimer();
    QTRY_VERIFY(cena.TimerPassou());
    QVERIFY(aberto);
    QVERIFY(cena.picWeb->isHidden());
    QVERIFY(cena.lista->isVisible());
    QCOMPARE(cena.janela.focusWidget(), cena.txtNome);
    QVERIFY(!Ponteiro::EmEspera());
    QVERIFY(cena.avisos.textos.isEmpty());

    cena.PorSite();
    cena.picWeb->imgInternet_Click();
    QCOMPARE(cena.NaTela(), "Novidades de hoje");
}

void TestePainelNovidades::cliqueNoTituloNaoEComecar()
{
    CenaDoPainel cena;
    cena.PorSite();
    connect(&cena.servidor, &ServidorLocal::pedido, this, [&] {
        QTest::mouseClick(cena.lblTitulo, Qt::LeftButton);
        QTest::mouseClick(&cena.janela, Qt::LeftButton, {}, QPoint(630, 590));
        QTest::keyClick(&cena.janela, Qt::Key_Alt); // what Alt+Tab leaves behind
    });
    cena.picWeb->LigarTimer();
    QTRY_VERIFY(cena.TimerPassou());
    QCOMPARE(cena.NaTela(), "Novidades de hoje");
}

void TestePainelNovidades::soTeclaBotaoOuLinhaEComecar()
{
    const auto comecou = [](const auto &entrada) {
        CenaDoPainel cena;
        entrada(cena);
        return cena.paineis.UsuarioComecou();
    };
    QVERIFY(!comecou([](CenaDoPainel &) {}));
    QVERIFY(!comecou([](CenaDoPainel &c) { QTest::mouseClick(c.lblTitulo, Qt::LeftButton); }));
    QVERIFY(!comecou([](CenaDoPainel &c) { QTest::mouseMove(c.lista); }));
    QVERIFY(comecou([](CenaDoPainel &c) { QTest::mouseClick(c.cmdLetra, Qt::LeftButton); }));
    QVERIFY(comecou([](CenaDoPainel &c) { QTest::mouseDClick(c.lista, Qt::LeftButton); }));
    QVERIFY(comecou([](CenaDoPainel &c) { QTest::keyClick(c.txtNome, Qt::Key_B); }));
    QVERIFY(comecou([](CenaDoPainel &) {
        QDialog dialogo;
        dialogo.show();
        QTest::mouseClick(&dialogo, Qt::LeftButton);
    }));
}

/// A view opened over a transfer that stands still ends it at once, at the server too; the user's next wish
/// for the page begins anew.
void TestePainelNovidades::outraTelaCortaATransferencia()
{
    LimitesWeb longos;
    longos.msSemByte = longos.msTotal = 600'000;
    CenaDoPainel cena(longos);
    cena.servidor.Por("/cozinhario/index.file", {"abc", "200 OK", {}, ServidorLocal::Modo::CalaNoMeio});
    connect(&cena.servidor, &ServidorLocal::pedido, &cena.janela,
            [&] { QTimer::singleShot(0, &cena.janela, [&cena] { cena.AbrirOutraTela(); }); });
    cena.picWeb->imgInternet_Click();
    QVERIFY(cena.picWeb->isHidden());
    QVERIFY(cena.detalhe->isVisible());
    QVERIFY(cena.avisos.textos.isEmpty()); // the connection was not missing
    QTRY_COMPARE(cena.servidor.desligadas, 1);
    QVERIFY(!Ponteiro::EmEspera());

    disconnect(&cena.servidor, nullptr, &cena.janela, nullptr);
    cena.PorSite();
    cena.picWeb->imgInternet_Click();
    QCOMPARE(cena.NaTela(), "Novidades de hoje");
}

void TestePainelNovidades::outraTelaCortaOAutomatico()
{
    LimitesWeb longos;
    longos.msSemByte = longos.msTotal = 600'000;
    CenaDoPainel cena(longos);
    cena.PorPaginaAntiga();
    cena.servidor.Por("/cozinhario/index.file", {"", "200 OK", {}, ServidorLocal::Modo::Cala});
    connect(&cena.servidor, &ServidorLocal::pedido, &cena.janela,
            [&] { QTimer::singleShot(0, &cena.janela, [&cena] { cena.AbrirOutraTela(); }); });
    cena.picWeb->LigarTimer();
    QTRY_VERIFY(cena.TimerPassou());
    QVERIFY(cena.picWeb->isHidden());
    QVERIFY(cena.detalhe->isVisible());
    QTRY_COMPARE(cena.servidor.desligadas, 1);
}

void TestePainelNovidades::oCliqueDuranteOAutomaticoMostraAPagina()
{
    CenaDoPainel cena;
    cena.PorSite();
    bool clicou = false;
    connect(&cena.servidor, &ServidorLocal::pedido, this, [&] {
        if (std::exchange(clicou, true))
            return;
        QTest::mouseClick(&cena.janela, Qt::LeftButton);
        cena.picWeb->imgInternet_Click();
        QVERIFY(cena.picWeb->isVisible());
    });
    cena.picWeb->LigarTimer();
    QTRY_COMPARE(cena.NaTela(), "Novidades de hoje");
    QCOMPARE(cena.servidor.pedidos.count("/cozinhario/index.file"), 1);
}

void TestePainelNovidades::oCliqueDuranteOAutomaticoAvisaQuandoNaoHaConexao()
{
    CenaDoPainel cena;
    connect(&cena.servidor, &ServidorLocal::pedido, this, [&] { cena.picWeb->imgInternet_Click(); });
    cena.picWeb->LigarTimer();
    QTRY_COMPARE(cena.avisos.textos, QStringList({"Sem Conexão com a Internet"}));
    QVERIFY(cena.picWeb->isHidden());
    QVERIFY(cena.lista->isVisible());
}

void TestePainelNovidades::oCliqueAntesDaTimerDispensaOAutomatico()
{
    CenaDoPainel cena;
    cena.picWeb->LigarTimer();
    cena.picWeb->imgInternet_Click();
    QCOMPARE(cena.avisos.textos.size(), 1);
    QVERIFY(!cena.TimerWeb()->isActive());
    cena.picWeb->LigarTimer();
    QVERIFY(!cena.TimerWeb()->isActive());
    const qsizetype pedidos = cena.servidor.pedidos.size();
    cena.picWeb->TimerWeb_Timer(); // one that was on its way already
    QCOMPARE(cena.servidor.pedidos.size(), pedidos);
}

void TestePainelNovidades::depoisDoAutomaticoOCliqueAvisa()
{
    CenaDoPainel cena;
    cena.picWeb->TimerWeb_Timer();
    QVERIFY(cena.avisos.textos.isEmpty());
    cena.picWeb->imgInternet_Click();
    QCOMPARE(cena.avisos.textos.size(), 1);
    cena.picWeb->imgInternet_Click();
    QCOMPARE(cena.avisos.textos.size(), 2);
}

void TestePainelNovidades::doisCliquesUmDownload()
{
    CenaDoPainel cena;
    cena.PorSite();
    bool clicou = false;
    connect(&cena.servidor, &ServidorLocal::pedido, this, [&] {
        if (!std::exchange(clicou, true))
            cena.picWeb->imgInternet_Click();
    });
    // The second click of a double click arrives while the panel rolls.
    QMetaObject::invokeMethod(
        cena.picWeb, [&cena] { cena.picWeb->imgInternet_Click(); }, Qt::QueuedConnection);
    cena.picWeb->imgInternet_Click();
    QCOMPARE(cena.servidor.pedidos.count("/cozinhario/index.file"), 1);
    QCOMPARE(cena.NaTela(), "Novidades de hoje");
    QCOMPARE(cena.picWeb->Altura(), 6930);
}

void TestePainelNovidades::outraTelaDuranteODownloadNaoEDesfeita_data()
{
    QTest::addColumn<bool>("ha");
    QTest::newRow("com pagina") << true;
    QTest::newRow("sem pagina") << false;
}

void TestePainelNovidades::outraTelaDuranteODownloadNaoEDesfeita()
{
    QFETCH(bool, ha);
    CenaDoPainel cena;
    if (ha)
        cena.PorSite();
    connect(&cena.servidor, &ServidorLocal::pedido, this, [&] {
        if (cena.picWeb->isVisible())
            cena.AbrirOutraTela();
    });
    cena.picWeb->imgInternet_Click();
    QVERIFY(cena.picWeb->isHidden());
    QVERIFY(cena.WbBsr1()->isHidden());
    QVERIFY(cena.detalhe->isVisible());
    QVERIFY(cena.lista->isHidden());
    QVERIFY(cena.avisos.textos.isEmpty()); // the connection is there, it was given up
}

void TestePainelNovidades::voltarAClicarDuranteODownloadMostraDeNovo()
{
    CenaDoPainel cena;
    cena.PorSite();
    bool voltou = false;
    connect(&cena.servidor, &ServidorLocal::pedido, this, [&](const QString &caminho) {
        if (!caminho.endsWith("index.htm") || std::exchange(voltou, true))
            return;
        cena.AbrirOutraTela();
        cena.picWeb->imgInternet_Click();
    });
    cena.picWeb->imgInternet_Click();
    QCOMPARE(cena.servidor.pedidos.count("/cozinhario/index.file"), 2); // the first visit had ended
    QCOMPARE(cena.NaTela(), "Novidades de hoje");
    QCOMPARE(cena.picWeb->Altura(), 6930);
    QVERIFY(cena.detalhe->isHidden());
}

void TestePainelNovidades::outraTelaDuranteARolagemNaoEDesfeita()
{
    CenaDoPainel cena;
    cena.PorSite();
    QMetaObject::invokeMethod(
        cena.picWeb, [&cena] { cena.AbrirOutraTela(); }, Qt::QueuedConnection);
    cena.picWeb->imgInternet_Click();
    QVERIFY(cena.picWeb->isHidden());
    QVERIFY(cena.detalhe->isVisible());
}

void TestePainelNovidades::aSegundaVisitaMostraAPaginaNova()
{
    CenaDoPainel cena;
    cena.PorSite();
    cena.picWeb->imgInternet_Click();
    cena.servidor.PorCorpo("/cozinhario/index.htm", "<p>Mais novidades</p>");
    cena.picWeb->imgInternet_Click();
    QCOMPARE(cena.NaTela(), "Mais novidades");

    cena.AbrirOutraTela();
    cena.picWeb->imgInternet_Click();
    QCOMPARE(cena.NaTela(), "Mais novidades");
    QVERIFY(cena.detalhe->isHidden());
    QCOMPARE(cena.servidor.pedidos.count("/cozinhario/foto.gif"), 1);
    QCOMPARE(cena.servidor.pedidos.count("/cozinhario/index.htm"), 3);
}

void TestePainelNovidades::apagadaAPaginaAListaVoltaMesmoNaSegundaVisita()
{
    CenaDoPainel cena;
    cena.PorSite();
    cena.picWeb->imgInternet_Click();
    QVERIFY(cena.lista->isHidden());
    QVERIFY(QDir(cena.Pasta()).removeRecursively());
    cena.servidor.Tirar("/cozinhario/index.file");
    cena.picWeb->imgInternet_Click();
    QCOMPARE(cena.avisos.textos.size(), 1);
    QVERIFY(cena.picWeb->isHidden());
    QVERIFY(cena.lista->isVisible());
}

void TestePainelNovidades::oPainelPodeSerDestruidoDuranteODownload_data()
{
    QTest::addColumn<bool>("automatico");
    QTest::newRow("pelo clique") << false;
    QTest::newRow("pela timer") << true;
}

void TestePainelNovidades::oPainelPodeSerDestruidoDuranteODownload()
{
    QFETCH(bool, automatico);
    LimitesWeb longos; // only the destruction can end the wait
    longos.msSemByte = longos.msTotal = 600'000;
    CenaDoPainel cena(longos);
    cena.servidor.Por("/cozinhario/index.file", {"abc", "200 OK", {}, ServidorLocal::Modo::CalaNoMeio});
    connect(&cena.servidor, &ServidorLocal::pedido, this,
            [&] { QTimer::singleShot(0, &cena.janela, [&cena] { delete cena.picWeb; }); });
    if (automatico)
        cena.picWeb->TimerWeb_Timer();
    else
        cena.picWeb->imgInternet_Click();
    QVERIFY(!cena.vivo);
    QVERIFY(cena.avisos.textos.isEmpty());
    QVERIFY(!Ponteiro::EmEspera());
}

void TestePainelNovidades::oPainelPodeSerDestruidoDuranteARolagem()
{
    CenaDoPainel cena;
    cena.PorSite();
    QTimer::singleShot(0, &cena.janela, [&cena] { delete cena.picWeb; });
    cena.picWeb->imgInternet_Click();
    QVERIFY(!cena.vivo);
    QCOMPARE(cena.servidor.conexoes, 0);
}

void TestePainelNovidades::tudoTemNomeParaQuemNaoVe()
{
    CenaDoPainel cena;
    for (const char *nome : {"lblMsgInternet", "WbBsr1"}) {
        const auto *controle = cena.picWeb->findChild<QWidget *>(nome);
        QVERIFY2(controle, nome);
        QVERIFY2(!controle->accessibleName().isEmpty(), nome);
        QVERIFY2(!controle->toolTip().isEmpty(), nome);
    }
    QVERIFY(!cena.picWeb->accessibleName().isEmpty());
}

QTEST_MAIN(TestePainelNovidades)
#include "teste_painel_novidades.moc"
