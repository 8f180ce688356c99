#include "PortasDeTeste.h"

#include "app/AjustarRegiao.h"
#include "app/Aparencia.h"
#include "app/Dicas.h"
#include "app/Gradiente.h"
#include "app/MensagemNaJanela.h"
#include "assets/Recursos.h"
#include "base/BotaoImagem.h"
#include "base/EventosPendentes.h"
#include "base/Fontes.h"
#include "base/OperacaoLonga.h"
#include "base/Painel.h"
#include "editor/PainelEditor.h"
#include "store/Comandos.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QUrl>

class TesteApp : public QObject
{
    Q_OBJECT

    std::unique_ptr<ProgramaDeTeste> p;

    template <typename T = QWidget>
    T *C(const char *nome) const
    {
        T *controle = p->janela.findChild<T *>(nome);
        if (!controle)
            qFatal("%s is missing", nome);
        return controle;
    }
    void Clique(const char *nome) const { QTest::mouseClick(C(nome), Qt::LeftButton); }
    // Through the window, as the window system brings it: the child under the mouse is found on the way.
    void Aponte(QWidget *controle, QPoint onde) const
    {
        QTest::mouseMove(p->janela.windowHandle(), controle->mapTo(&p->janela, onde));
        QCoreApplication::processEvents();
    }
    /// To the window, as the window system brings it.
    void Tecle(Qt::Key tecla, Qt::KeyboardModifiers modificadores = {}) const
    {
        QTest::keyClick(p->janela.windowHandle(), tecla, modificadores);
    }
    void Guardar(const QString &nome) const
    {
        Comandos::Receita receita;
        receita.Nome = nome;
        receita.Modo = "Asse.";
        p->banco.ExecutarSQL(Comandos::SqlInserirReceita(receita, QDate(2005, 1, 1)));
        const qint64 numero = p->banco.AbrirRecordset(Comandos::SqlMaiorNumero()).Valor(0).toLongLong();
        p->banco.ExecutarSQL(Comandos::SqlInserirIngrediente(numero, "farinha", "2", "xícaras"));
    }
    QStringList Nomes() const
    {
        const QAbstractItemModel *linhas = C<QAbstractItemView>("lstVwReceitas")->model();
        QStringList nomes;
        for (int linha = 0; linha < linhas->rowCount(); ++linha)
            nomes << linhas->index(linha, 0).data().toString();
        return nomes;
    }
    QString Titulo() const { return C<QLabel>("lblTitulo")->text(); }
    void Abrir()
    {
        p->janela.show();
        QVERIFY(QTest::qWaitForWindowExposed(&p->janela));
        QTRY_COMPARE(C<Painel>("picLstReceitas")->Altura(), 6540);
        QTRY_VERIFY(!C("picLstReceitas")->isHidden());
    }

private slots:
    void initTestCase()
    {
        IniciarRecursos();
        InstalarFontes();
        Painel::DefinirRitmo(0);
    }
    void init() { p = std::make_unique<ProgramaDeTeste>(); }
    void cleanup() { p.reset(); }

    void aListaAbreNaPrimeiraAtivacao()
    {
        Abrir();
        QCOMPARE(Titulo(), QString(" Receitas Cadastradas"));
        QVERIFY(QFile::exists(p->pasta.filePath("dadosr.lst")));
        QVERIFY(p->avisos.mostrados.isEmpty());
    }

    void quemOuveSabeOQueEstaNaTela()
    {
        Abrir();
        const auto acessivel = [this](const char *nome) {
            return QAccessible::queryAccessibleInterface(C(nome));
        };
        QCOMPARE(QAccessible::queryAccessibleInterface(&p->janela)->role(), QAccessible::Window);
        QVERIFY(!acessivel("picLstReceitas")->state().invisible);

        // The form covers the list, which is not showing then, and nothing in it is found.
        Clique("imgDetRcta");
        QTRY_COMPARE(C<Painel>("picDetReceita")->Altura(), 6540);
        QVERIFY(acessivel("picLstReceitas")->state().invisible);
        QCOMPARE(acessivel("picLstReceitas")->childCount(), 0);
        QVERIFY(!acessivel("picDetReceita")->state().invisible);
        QVERIFY(acessivel("picDetReceita")->childCount() > 0);
        Clique("lblFechar");
        QVERIFY(!acessivel("picLstReceitas")->state().invisible);

        // What an operation says is read out when it appears.
        auto *picMsg = C<MensagemNaJanela>("picMsg");
        QCOMPARE(acessivel("picMsg")->role(), QAccessible::AlertMessage);
        picMsg->Mostrar("Realizando Backup do Sistema...", 10);
        QCOMPARE(acessivel("picMsg")->text(QAccessible::Name), "Realizando Backup do Sistema...");
        QVERIFY(!acessivel("picMsg")->state().invisible);
        picMsg->DefinirValor(4);
        QCOMPARE(acessivel("PrgrssBrMsg")->valueInterface()->currentValue(), 4);
        picMsg->Esconder();
    }

    /// A button is called by the words on it, a field by its label, and nothing is told twice.
    void osNomesSaoOsQueSeVeem()
    {
        QCOMPARE(C("cmdSalvarIngredientes")->accessibleName(), "Salvar Dados");
        QCOMPARE(C("cmdSalvarRct")->accessibleName(), "Salvar Receita");
        QCOMPARE(C("cmdAlterarReceita")->accessibleName(), "Alterar Receita");
        QCOMPARE(C("lblFechar")->accessibleName(), "Voltar");
        QCOMPARE(C("txtNome")->accessibleName(), "Nome");
        QCOMPARE(C("txtModo")->accessibleName(), "Modo de Preparar");
        for (const char *nome : {"cmbTipo", "cmbMedida", "cmbIngrediente", "cmbPesTipo"}) {
            const auto *combo = p->janela.findChild<QComboBox *>(nome);
            if (combo && combo->lineEdit())
                QCOMPARE(combo->lineEdit()->accessibleName(), combo->accessibleName());
        }
        for (QWidget *controle : p->janela.findChildren<QWidget *>()) {
            if (controle->focusPolicy() == Qt::NoFocus)
                continue;
            const QAccessibleInterface *dito = QAccessible::queryAccessibleInterface(controle);
            const QString nome = dito->text(QAccessible::Name);
            QVERIFY2(nome.isEmpty() || nome != dito->text(QAccessible::Description), qPrintable(nome));
        }
    }

    void aJanelaSePintaAntesDeFazerOsPaineis()
    {
        p = std::make_unique<ProgramaDeTeste>(false);
        QVERIFY(!p->janela.findChild<QWidget *>("picLstReceitas"));
        QVERIFY(p->janela.findChild<QWidget *>("imgLstRcta"));
        p->janela.show();
        QTRY_VERIFY(p->janela.findChild<QWidget *>("picLstReceitas"));
        Abrir();
        QCOMPARE(Titulo(), QString(" Receitas Cadastradas"));
        QVERIFY(C<QTimer>("TimerWeb")->isActive());
    }

    void quemPedeUmaTelaAntesDaPrimeiraPinturaARecebe()
    {
        p = std::make_unique<ProgramaDeTeste>(false);
        p->janela.AbrirTela("PesquisaReceitas");
        QVERIFY(!C("picPesReceita")->isHidden());
    }

    void voltarDeOutroProgramaNaoTocaNaReceitaComecada()
    {
        Abrir();
        Clique("imgDetRcta");
        QTest::keyClicks(C("txtNome"), "Bolo");
        QEvent ativacao(QEvent::ActivationChange);
        QCoreApplication::sendEvent(&p->janela, &ativacao);
        QCoreApplication::processEvents();
        QCOMPARE(C<QLineEdit>("txtNome")->text(), QString("Bolo"));
        QVERIFY(C("picDetReceita")->isVisible());
        QCOMPARE(Titulo(), QString(" Nova Receita "));
    }

    void umLivroQueNaoEBancoDeDadosEMostradoUmaVez()
    {
        QFile livro(p->pasta.filePath("dadosr.lst"));
        QVERIFY(livro.open(QIODevice::WriteOnly));
        const QByteArray bytes = "isto aqui nunca foi um banco de dados " + QByteArray(5000, 'x');
        livro.write(bytes);
        livro.close();
        p->janela.show();
        QTRY_COMPARE(p->avisos.mostrados.size(), 1);
        QVERIFY(p->avisos.mostrados[0].startsWith("parada: "));
        QVERIFY(livro.open(QIODevice::ReadOnly));
        QCOMPARE(livro.readAll(), bytes);
        // The list opens all the same, empty.
        QTRY_COMPARE(C<Painel>("picLstReceitas")->Altura(), 6540);
        QVERIFY(!C("picLstReceitas")->isHidden());
        QCOMPARE(C<QAbstractItemView>("lstVwReceitas")->model()->rowCount(), 0);
        QCOMPARE(p->avisos.mostrados.size(), 1);
    }

    void cadaPedidoTemSeuTitulo_data()
    {
        QTest::addColumn<QString>("request");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("painel");
        QTest::newRow("lista") << "ListaReceitas"
                               << " Receitas Cadastradas"
                               << "picLstReceitas";
        QTest::newRow("nova") << "DetalheReceitas"
                              << " Nova Receita "
                              << "picDetReceita";
        QTest::newRow("alteração") << "NovaReceita"
                                   << " Alteração da Receita "
                                   << "picDetReceita";
        QTest::newRow("pesquisa") << "PesquisaReceitas"
                                  << " Pesquisa de Receitas "
                                  << "picPesReceita";
    }
    void cadaPedidoTemSeuTitulo()
    {
        QFETCH(QString, request);
        QFETCH(QString, title);
        QFETCH(QString, painel);
        p->janela.AbrirTela(request);
        QCOMPARE(Titulo(), title);
        QVERIFY(!p->janela.findChild<QWidget *>(painel)->isHidden());
        QVERIFY(!C("picTitulo")->isHidden());
    }

    void umCliqueAntesDeOsPaineisExistiremNaoSePerde()
    {
        p = std::make_unique<ProgramaDeTeste>(false);
        QVERIFY(!p->janela.findChild<QWidget *>("picPesReceita"));
        C<BotaoImagem>("imgPesRcta")->click();
        QVERIFY(!C("picPesReceita")->isHidden());
        QCOMPARE(Titulo(), QString(" Pesquisa de Receitas "));
    }

    void asTeclasDeAcessoAgemNaHora()
    {
        Abrir();
        p->janela.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&p->janela));
        QTest::keyClick(p->janela.windowHandle(), Qt::Key_V, Qt::AltModifier);
        QVERIFY(C("picTitulo")->isHidden()); // "&Voltar" closed the list before the key came back
    }

    void umPedidoDesconhecidoNaoFazNada()
    {
        p->janela.AbrirTela("OutraTela");
        QVERIFY(C("picTitulo")->isHidden());
    }

    void aPesquisaEncolheAListaEVoltarADevolve()
    {
        Abrir();
        Clique("imgPesRcta");
        QCOMPARE(C<Painel>("picLstReceitas")->Altura(), 3780);
        QCOMPARE(C<Painel>("picDetReceita")->Altura(), 3780);
        QCOMPARE(C<Painel>("picPesReceita")->Altura(), 3780);
        QCOMPARE(Titulo(), QString(" Pesquisa de Receitas "));
        // List and criteria are seen together.
        QVERIFY(!C("picPesReceita")->geometry().intersects(C("picLstReceitas")->geometry()));
        Clique("imgLstRcta");
        QCOMPARE(C<Painel>("picLstReceitas")->Altura(), 3780);
        Clique("lblFechar"); // the list's newest entry: its panel closes
        QCOMPARE(Titulo(), QString(" Pesquisa de Receitas "));
        QVERIFY(C("picLstReceitas")->isHidden());
        Clique("lblFechar"); // the search: nothing is left, the list's older entry does not count
        QVERIFY(C("picTitulo")->isHidden());
    }

    void fecharAPesquisaDevolveAAlturaInteira()
    {
        Abrir();
        Clique("imgPesRcta");
        Clique("lblFechar");
        QCOMPARE(C<Painel>("picLstReceitas")->Altura(), 6540);
        QCOMPARE(Titulo(), QString(" Receitas Cadastradas"));
        QVERIFY(C("picPesReceita")->isHidden());
    }

    void seisTelasSeguidasEAVoltaDelas()
    {
        Abrir(); // e1, list
        for (const char *request :
             {"DetalheReceitas", "NovaReceita", "PesquisaReceitas", "ListaReceitas", "DetalheReceitas"})
            p->janela.AbrirTela(request);
        QCOMPARE(Titulo(), QString(" Nova Receita "));
        // e1, e1, e2, e3, e6: the editor closes with e6, its entries e3 and e2 no longer count.
        p->janela.FecharTela();
        QCOMPARE(Titulo(), QString(" Receitas Cadastradas"));
        QVERIFY(!C("picPesReceita")->isHidden()); // e4 is gone: the search stays open without an entry
        p->janela.FecharTela();
        QVERIFY(C("picLstReceitas")->isHidden());
        QVERIFY(C("picTitulo")->isHidden()); // no entry counts any more
        QVERIFY(C("picPesReceita")->isHidden());
    }

    void aListaPedidaDeNovoNaoRolaDeNovo()
    {
        Abrir();
        Clique("imgLstRcta");
        QCOMPARE(C<Painel>("picLstReceitas")->Altura(), 6540);
        p->janela.FecharTela();
        QVERIFY(C("picLstReceitas")->isHidden()); // "Listagem" was on the history twice; its panel is closed
        QVERIFY(C("picTitulo")->isHidden());
    }

    void janelaSemTelaDizOndeClicar()
    {
        auto *lblConvite = C<QLabel>("lblConvite");
        QVERIFY(lblConvite->isHidden()); // not before the list opens by itself
        Abrir();
        QVERIFY(lblConvite->isHidden());
        p->janela.FecharTela();
        QVERIFY(lblConvite->isVisible());
        QVERIFY(lblConvite->text().contains("Lista de Receitas"));
        QCOMPARE(QApplication::focusWidget(), &p->janela); // on no link: the space bar opens no web site
        QVERIFY(lblConvite->sizeHint().width() <= lblConvite->width()); // in one line
        Clique("imgLstRcta");
        QVERIFY(lblConvite->isHidden());
        p->janela.FecharTela();
        QVERIFY(lblConvite->isVisible());
        Clique("imgDetRcta");
        QVERIFY(lblConvite->isHidden());
    }

    void cadaJanelaTemOIconeDoPrograma()
    {
        Abrir();
        QVERIFY(!p->janela.windowIcon().isNull());
        QVERIFY(!QDialog().windowIcon().isNull());
        QVERIFY(!QDialog(&p->janela).windowIcon().isNull());
    }

    void fecharSemTelaNaoFazNada()
    {
        p->janela.FecharTela();
        QVERIFY(C("picTitulo")->isHidden());
    }

    void aJanelaTemAFormaDosPaineis()
    {
        Abrir();
        QRegion esperada;
        for (const char *nome : {"picFundo", "picToolBar", "picTitulo", "picLstReceitas", "picDetReceita",
                                 "picPesReceita", "picWeb", "picMsg"})
            esperada += C(nome)->geometry();
        QCOMPARE(p->janela.mask(), esperada);
        QVERIFY(!p->janela.mask().contains(QPoint(2, 2))); // beside the toolbar
        QVERIFY(p->janela.mask().contains(QPoint(320, 20)));
        QVERIFY(p->janela.windowFlags().testFlag(Qt::FramelessWindowHint));
    }

    void minimizarDeixaAFormaComoEsta()
    {
        Abrir();
        const QRegion antes = p->janela.mask();
        p->janela.setWindowState(Qt::WindowMinimized);
        C("picFundo")->move(50, 58);
        AjustarRegiao(p->janela);
        QCOMPARE(p->janela.mask(), antes);
        p->janela.setWindowState(Qt::WindowNoState);
        AjustarRegiao(p->janela);
        QVERIFY(p->janela.mask() != antes);
    }

    void minimizadaVoltaComoEstava()
    {
        Abrir();
        Clique("imgDetRcta");
        C<QLineEdit>("txtNome")->setText("Pão");
        const QRegion forma = p->janela.mask();
        Clique("imgMinimize");
        QTRY_VERIFY(p->janela.isMinimized());
        p->janela.TrazerParaFrente();
        QTRY_VERIFY(!p->janela.isMinimized());
        QCOMPARE(p->janela.mask(), forma);
        QVERIFY(C("picDetReceita")->isVisible());
        QCOMPARE(C<QLineEdit>("txtNome")->text(), QString("Pão"));
    }

    void soOBotaoSobOMouseAcende()
    {
        Abrir();
        Aponte(C("imgLstRcta"), QPoint(20, 20));
        QTRY_VERIFY(C<BotaoImagem>("imgLstRcta")->Aceso());
        Aponte(C("imgPesRcta"), QPoint(20, 20));
        QTRY_VERIFY(!C<BotaoImagem>("imgLstRcta")->Aceso());
        QVERIFY(C<BotaoImagem>("imgPesRcta")->Aceso());
        Aponte(C("picFundo"), QPoint(300, 520));
        QTRY_VERIFY(!C<BotaoImagem>("imgPesRcta")->Aceso());
    }

    void oFundoABarraEOTituloDoProgramaArrastamAJanela_data()
    {
        QTest::addColumn<QString>("area");
        QTest::addColumn<QPoint>("onde");
        QTest::newRow("fundo") << "picFundo" << QPoint(320, 480);
        QTest::newRow("barra") << "picToolBar" << QPoint(520, 30);
        QTest::newRow("título") << "lblEntrada" << QPoint(50, 20);
    }
    void oFundoABarraEOTituloDoProgramaArrastamAJanela()
    {
        QFETCH(QString, area);
        QFETCH(QPoint, onde);
        Abrir();
        const QPoint antes = p->janela.pos();
        QWindow *janela = p->janela.windowHandle();
        auto *controle = p->janela.findChild<QWidget *>(area);
        const QPoint ponto = controle->mapTo(&p->janela, onde);
        QTest::mousePress(janela, Qt::LeftButton, {}, ponto);
        QTest::mouseMove(janela, ponto + QPoint(15, 10));
        QTest::mouseRelease(janela, Qt::LeftButton, {}, ponto);
        // The offscreen platform moves no windows itself, so the window has followed the mouse.
        QCOMPARE(p->janela.pos(), antes + QPoint(15, 10));
    }

    void osOnzeBotoesTemDuasFigurasEDica()
    {
        for (const char *nome :
             {"imgLstRcta", "imgDetRcta", "imgPesRcta", "imgSaida", "imgImpressao", "imgBackup", "imgRestore",
              "imgEmail", "imgTransmit", "imgMinimize", "imgInternet"}) {
            auto *botao = C<BotaoImagem>(nome);
            const QImage normal = botao->Figura().toImage();
            QCOMPARE(normal, C<QLabel>((QByteArray(nome) + "Norm").constData())->pixmap().toImage());
            p->janela.AtualizarBotoes(botao);
            QCOMPARE(botao->Figura().toImage(),
                     C<QLabel>((QByteArray(nome) + "Over").constData())->pixmap().toImage());
            QVERIFY(normal != botao->Figura().toImage());
            QVERIFY(!botao->toolTip().isEmpty());
        }
        QVERIFY(C("fraPicBotoes")->isHidden());
    }

    void aInternetEOSetimoIcone()
    {
        QList<BotaoImagem *> botoes = p->janela.findChildren<BotaoImagem *>();
        std::sort(botoes.begin(), botoes.end(), [](auto *a, auto *b) { return a->x() < b->x(); });
        QCOMPARE(botoes[6]->objectName(), QString("imgInternet"));
    }

    void gradienteDaBarraETitulo()
    {
        QCOMPARE(CorDaBarra(57, 870), QColor(83, 83, 255));  // lowest pixel row: 80 + 0.2 x 16
        QCOMPARE(CorDaBarra(0, 870), QColor(254, 254, 255)); // 80 + 0.2 x 871
        QCOMPARE(CorDaBarra(0, 3000), QColor(255, 255, 255));
        QCOMPARE(CorDoTitulo(0), QColor(133, 133, 255)); // 125 + 0.5 x 15, rounded
        QCOMPARE(CorDoTitulo(25), QColor(255, 255, 255));
        Abrir();
        QCOMPARE(C("picToolBar")->grab().toImage().pixelColor(3, 57), QColor(83, 83, 255));
    }

    void todasAsDicasMenosAUltima_data()
    {
        QTest::addColumn<double>("sorteio");
        QTest::addColumn<int>("indice");
        for (int i = 0; i < 12; ++i)
            QTest::addRow("dica %d", i) << (i + 0.5) / 12 << i;
        QTest::newRow("menor") << 0.0 << 0;
        QTest::newRow("maior") << std::nextafter(1.0, 0.0) << 11;
    }
    void todasAsDicasMenosAUltima()
    {
        QFETCH(double, sorteio);
        QFETCH(int, indice);
        QCOMPARE(IndiceDaDica(sorteio), indice);
    }

    void asTrezeDicasComoForamEscritas()
    {
        const QStringList dicas = Dicas("https://www.tamarel.example");
        QCOMPARE(dicas.size(), 13);
        QCOMPARE(
            dicas[0],
            QString(
                "Acesse regularmente a internet (7º ícone), para efetuar download de pacotes de receitas."));
        QCOMPARE(
            dicas[8],
            QString("Visite nosso site e confira outros programas e serviços. https://www.tamarel.example."));
        QCOMPARE(dicas[12], QString("Quando cadastrar ingredientes na receita, verifique se já não se "
                                    "encontram na caixas de informação."));
    }

    void aAreaDaDicaTemSeuLugar()
    {
        QCOMPARE(C("lblDica")->geometry(), QRect(315, 483, 159, 28));
        QCOMPARE(C("picTamarel")->pos(), QPoint(375, 453));
        QCOMPARE(C<QLabel>("lblDica")->text(), Dicas("")[0]);
        QVERIFY(C("picVilanuLogo")->isHidden());
        QVERIFY(!C("picTamarel")->isHidden());
    }

    void aOutraVarianteDaDica()
    {
        QWidget forma;
        QLabel dica(&forma);
        QWidget logo(&forma), url(&forma), outro(&forma);
        SorteioDeTeste sorteio;
        sorteio.proximo = 8.5 / 12;
        MostrarDica(1, {&dica, &logo, &url, &outro}, sorteio, "fabricante", "distribuidor");
        QCOMPARE(dica.geometry(), QRect(334, 489, 360, 13));
        QCOMPARE(dica.text(),
                 QString("Visite nosso site e confira outros programas e serviços. distribuidor."));
        QVERIFY(logo.isHidden());
        QVERIFY(url.isHidden());
        QVERIFY(!outro.isHidden());
    }

    void osElosAbremOsSites()
    {
        Abrir();
        Clique("picTamarel");
        Clique("lblUrl");
        C("picVilanuLogo")->show();
        C("picVilanuLogo")->move(0, 400);
        QTest::keyClick(C("picVilanuLogo"), Qt::Key_Space);
        QCOMPARE(p->abridor.abertos,
                 (QStringList{"https://www.tamarel.example", "https://www.tamarel.example",
                              "https://www.vilanu.example"}));
    }

    void oTituloDoProgramaEstaNaJanela()
    {
        QCOMPARE(C<QLabel>("lblEntrada")->text(), QString("Cozinhario 2005"));
        QCOMPARE(p->janela.windowTitle(), QString("Cozinhario 2005"));
    }

    void osPaineisTemAMesmaMargem()
    {
        for (const char *nome : {"picLstReceitas", "picDetReceita", "picPesReceita"})
            QCOMPARE(C(nome)->x(), 9); // 135 twips
    }

    void duranteUmaOperacaoAJanelaNaoAceitaOrdens()
    {
        Abrir();
        auto *picMsg = C<MensagemNaJanela>("picMsg");
        {
            OperacaoLonga operacao(*picMsg, "Realizando Backup do Sistema...", 5);
            QVERIFY(picMsg->isVisible());
            QCOMPARE(C<QLabel>("lblMensagem")->text(), QString("Realizando Backup do Sistema..."));
            operacao.DefinirValor(3);
            QCOMPARE(C<QProgressBar>("PrgrssBrMsg")->value(), 3);
            Clique("imgDetRcta");
            QTest::keyClick(&p->janela, Qt::Key_V, Qt::AltModifier);
            QVERIFY(C("picDetReceita")->isHidden());
            QVERIFY(!C("picLstReceitas")->isHidden());
            // The panel is the frontmost control of the window.
            QCOMPARE(p->janela.childAt(picMsg->geometry().topLeft() + QPoint(3, 3)),
                     static_cast<QWidget *>(picMsg));
        }
        QVERIFY(picMsg->isHidden());
        Clique("imgDetRcta");
        QVERIFY(C("picDetReceita")->isVisible());
    }

    void oCartaoCobreOEditorEOBotaoAlterarOAbre()
    {
        Abrir();
        Comandos::Receita receita;
        receita.Nome = "Bolo";
        receita.Modo = "Asse.";
        p->banco.ExecutarSQL(Comandos::SqlInserirReceita(receita, QDate(2005, 1, 1)));
        p->banco.ExecutarSQL(Comandos::SqlInserirIngrediente(1, "farinha", "2", "xícaras"));
        Clique("imgLstRcta");
        auto *lista = C<QAbstractItemView>("lstVwReceitas");
        const QPoint linha = lista->visualRect(lista->model()->index(0, 0)).center();
        QTest::mouseClick(lista->viewport(), Qt::LeftButton, {}, linha);
        QTest::mouseDClick(lista->viewport(), Qt::LeftButton, {}, linha);
        QVERIFY(C("picView")->isVisible());
        QVERIFY(!C("txtNome")->isVisible());
        QCOMPARE(Titulo(), QString(" Alteração da Receita "));
        QTest::mouseClick(C("cmdAlterarReceita"), Qt::LeftButton);
        QVERIFY(!C("picView")->isVisible());
        QVERIFY(C("txtNome")->isVisible());
        QCOMPARE(C<QLineEdit>("txtNome")->text(), QString("Bolo"));
        QTest::keyClick(C("txtNome"), Qt::Key_End);
        QTest::keyClicks(C("txtNome"), " de milho");
        Clique("cmdSalvarRct");
        QVERIFY(p->avisos.mostrados.isEmpty());
        QCOMPARE(lista->model()->index(0, 0).data().toString(), QString("Bolo de milho"));
        QVERIFY(lista->selectionModel()->isRowSelected(0));
        QVERIFY(C("picDetReceita")->isHidden());
        QCOMPARE(Titulo(), QString(" Receitas Cadastradas"));
    }

    void aExclusaoPeloEditorVoltaParaALista()
    {
        Abrir();
        Comandos::Receita receita;
        receita.Nome = "Bolo";
        receita.Modo = "Asse.";
        p->banco.ExecutarSQL(Comandos::SqlInserirReceita(receita, QDate(2005, 1, 1)));
        p->janela.CarregarDetalheReceita(1, false);
        Clique("cmdExcluirRct");
        QCOMPARE(p->avisos.mostrados, QStringList{"pergunta: Confirma Exclusão dessa Receita?"});
        QCOMPARE(C<QAbstractItemView>("lstVwReceitas")->model()->rowCount(), 0);
        QVERIFY(C("picDetReceita")->isHidden());
    }

    void aImportacaoDeOutraCopiaEsperaOFimDaOperacao()
    {
        Abrir();
        auto *picMsg = C<MensagemNaJanela>("picMsg");
        auto *lista = C<QAbstractItemView>("lstVwReceitas");
        Comandos::Receita receita;
        receita.Nome = "Bolo";
        receita.Modo = "Asse.";
        {
            OperacaoLonga operacao(*picMsg, "x", 1);
            p->banco.ExecutarSQL(Comandos::SqlInserirReceita(receita, QDate(2005, 1, 1)));
            p->janela.RecarregarLista();
            QCOMPARE(lista->model()->rowCount(), 0);
        }
        QTRY_COMPARE(lista->model()->rowCount(), 1);
    }

    void aTeclaTabNaoVaiAoQueEstaEncoberto()
    {
        Abrir();
        Clique("imgDetRcta");
        QTRY_VERIFY(C("txtNome")->hasFocus());
        QStringList visitados;
        for (int i = 0; i < 100 && !visitados.contains(p->janela.focusWidget()->objectName()); ++i) {
            visitados << p->janela.focusWidget()->objectName();
            QTest::keyClick(p->janela.focusWidget(), Qt::Key_Tab);
        }
        QVERIFY(visitados.contains("cmdSalvarRct"));
        QVERIFY(visitados.contains("imgSaida"));
        QVERIFY(visitados.contains("lblFechar"));
        QVERIFY(!visitados.contains("lstVwReceitas")); // the list lies under the editor
    }

    void sobreUmaReceitaComecadaSoSeAlcancaALista()
    {
        Abrir();
        Guardar("Bolo");
        p->janela.CarregarDetalheReceita(1, false);
        QTest::keyClicks(C("txtNome"), "X");
        Clique("imgLstRcta");
        QVERIFY(C("txtNome")->isVisible()); // covered, by promise, and no less
        p->janela.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&p->janela));
        for (const char tecla : {'e', 's', 'd', 'a', 'i', 'l'})
            QTest::keyClick(p->janela.windowHandle(), tecla, Qt::AltModifier);
        QCOMPARE(p->avisos.mostrados, QStringList());
        QVERIFY(C("lstVwReceitas")->hasFocus());
        C("txtNome")->setFocus(); // nobody sees it there
        QVERIFY(C("lstVwReceitas")->hasFocus());
        QTest::keyClicks(C("txtNome"), "Y");
        QCOMPARE(C<QLineEdit>("txtNome")->text(), QString("XBolo"));
        QCOMPARE(Nomes(), QStringList{"Bolo"});
    }

    void alterarReceitaPoeOFocoNoNome_data()
    {
        QTest::addColumn<QString>("como");
        QTest::newRow("menu") << "menu";
        QTest::newRow("cartão, mouse") << "mouse";
        QTest::newRow("cartão, tecla de acesso") << "acesso";
        QTest::newRow("cartão, barra de espaço") << "espaço";
    }
    void alterarReceitaPoeOFocoNoNome()
    {
        QFETCH(QString, como);
        Abrir();
        p->janela.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&p->janela));
        Guardar("Bolo");
        Guardar("Broa");
        Clique("imgLstRcta");
        auto *lista = C<QAbstractItemView>("lstVwReceitas");
        lista->setCurrentIndex(lista->model()->index(0, 0));
        if (como == "menu") {
            C<QAction>("mnuAlterarReceita")->trigger();
        } else {
            Tecle(Qt::Key_Return);
            QVERIFY(C("picView")->isVisible());
            auto *alterar = C<QPushButton>("cmdAlterarReceita");
            if (como == "mouse") {
                QTest::mouseClick(alterar, Qt::LeftButton);
            } else if (como == "acesso") {
                Tecle(Qt::Key_A, Qt::AltModifier);
            } else {
                alterar->setFocus();
                Tecle(Qt::Key_Space);
            }
        }
        QVERIFY(C("picDetReceita")->isVisible());
        QVERIFY(C("picView")->isHidden());
        QVERIFY(C("lstVwReceitas")->isVisible());
        QVERIFY2(C("txtNome")->hasFocus(), qPrintable(p->janela.focusWidget()->objectName()));
        // What is typed goes there, and nothing of it to the list behind.
        Tecle(Qt::Key_Delete);
        Tecle(Qt::Key_S);
        Tecle(Qt::Key_Return);
        QCOMPARE(p->avisos.mostrados, QStringList());
        QCOMPARE(Titulo(), QString(" Alteração da Receita "));
        QVERIFY(C<QLineEdit>("txtNome")->text() != "Bolo");
    }

    void salvarOuExcluirComAPesquisaAbertaFechaOEditor_data()
    {
        QTest::addColumn<QString>("botao");
        QTest::newRow("salvar") << "cmdSalvarRct";
        QTest::newRow("excluir") << "cmdExcluirRct";
    }
    void salvarOuExcluirComAPesquisaAbertaFechaOEditor()
    {
        QFETCH(QString, botao);
        Abrir();
        Guardar("Bolo");
        p->janela.CarregarDetalheReceita(1, false);
        Clique("imgPesRcta");
        QCOMPARE(Titulo(), QString(" Pesquisa de Receitas "));
        QVERIFY(C("picDetReceita")->isVisible());
        C<QPushButton>(botao.toLatin1().constData())->click();
        QVERIFY(C("picDetReceita")->isHidden());
        QVERIFY(C("picPesReceita")->isVisible());
        QCOMPARE(Titulo(), QString(" Receitas Cadastradas"));
        QCOMPARE(C<Painel>("picLstReceitas")->Altura(), 3780);
        QStringList titulos;
        for (int i = 0; i < 6 && !C("picTitulo")->isHidden(); ++i) {
            Clique("lblFechar");
            titulos << Titulo();
        }
        QVERIFY(!titulos.contains(" Nova Receita "));
        QVERIFY(!titulos.contains(" Alteração da Receita "));
    }

    void oQueAOutraCopiaPedeEsperaPorCadaOperacao_data()
    {
        QTest::addColumn<Operacao::Tipo>("tipo");
        int numero = 0;
        for (const auto tipo : {Operacao::Tipo::Preenchimento, Operacao::Tipo::Rolagem,
                                Operacao::Tipo::Dialogo, Operacao::Tipo::Gravacao, Operacao::Tipo::Exclusao,
                                Operacao::Tipo::Importacao, Operacao::Tipo::Exportacao, Operacao::Tipo::Email,
                                Operacao::Tipo::Impressao, Operacao::Tipo::Backup,
                                Operacao::Tipo::Restauracao, Operacao::Tipo::Visita, Operacao::Tipo::Menu})
            QTest::addRow("%d", ++numero) << tipo;
    }
    void oQueAOutraCopiaPedeEsperaPorCadaOperacao()
    {
        QFETCH(Operacao::Tipo, tipo);
        Abrir();
        Guardar("Bolo");
        {
            const Operacao operacao(tipo);
            p->janela.RecarregarLista();
            p->janela.RecarregarLista();
            p->janela.AvisarDepois("Um recado.");
            DeixarEventosRodarem();
            QCOMPARE(Nomes(), QStringList());
            QCOMPARE(p->avisos.mostrados, QStringList());
        }
        QTRY_COMPARE(p->avisos.mostrados, QStringList{"informacao: Um recado."});
        QCOMPARE(Nomes(), QStringList{"Bolo"});
    }

    void cadaBotaoContraUmaRolagem_data()
    {
        QTest::addColumn<QString>("botao");
        QTest::addColumn<QString>("titulo");
        QTest::newRow("nova") << "imgDetRcta"
                              << " Nova Receita ";
        QTest::newRow("pesquisa") << "imgPesRcta"
                                  << " Pesquisa de Receitas ";
        QTest::newRow("lista") << "imgLstRcta"
                               << " Receitas Cadastradas";
    }
    void cadaBotaoContraUmaRolagem()
    {
        QFETCH(QString, botao);
        QFETCH(QString, titulo);
        Abrir();
        Clique("lblFechar");
        QVERIFY(C("picTitulo")->isHidden());
        bool clicado = false;
        QStringList durante;
        QTimer timer; // a click of the user in the middle of the list's roll
        connect(&timer, &QTimer::timeout, this, [&] {
            if (C<Painel>("picLstReceitas")->Altura() < 1000)
                return;
            timer.stop();
            clicado = true;
            QTest::mouseClick(C(botao.toLatin1().constData()), Qt::LeftButton);
            durante << Titulo();
        });
        timer.start(0);
        Clique("imgLstRcta");
        QVERIFY(clicado);
        QCOMPARE(durante, QStringList{" Receitas Cadastradas"}); // it waits
        QCOMPARE(C<Painel>("picLstReceitas")->Altura(), 6540);
        QTRY_COMPARE(Titulo(), titulo); // and is not lost
    }

    void aBarraTemAtalhosQueADicaMostra()
    {
        Abrir();
        p->janela.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&p->janela));
        QCOMPARE(C("imgDetRcta")->toolTip(), QString("Nova Receita (Ctrl+N)"));
        QCOMPARE(C("imgDetRcta")->accessibleName(), QString("Nova Receita"));
        Tecle(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(Titulo(), QString(" Nova Receita "));
        QVERIFY(C("txtNome")->hasFocus());
        Tecle(Qt::Key_F, Qt::ControlModifier); // from within a field, too
        QCOMPARE(Titulo(), QString(" Pesquisa de Receitas "));
        Tecle(Qt::Key_L, Qt::ControlModifier);
        QCOMPARE(Titulo(), QString(" Receitas Cadastradas"));
        QSet<QString> teclas;
        for (const BotaoImagem *botao : p->janela.findChildren<BotaoImagem *>()) {
            const QString tecla = botao->shortcut().toString();
            QVERIFY2(tecla.isEmpty() || !teclas.contains(tecla), qPrintable(tecla));
            teclas << tecla;
        }
    }

    void osElosDaWebVemDepoisDaBarra()
    {
        Abrir();
        QStringList ordem;
        const QWidget *inicio = C("imgDetRcta");
        const QWidget *w = inicio;
        do {
            ordem << w->objectName();
            w = w->nextInFocusChain();
        } while (w != inicio);
        QVERIFY(ordem.indexOf("imgSaida") < ordem.indexOf("picTamarel"));
        QCOMPARE(ordem.indexOf("picTamarel"), ordem.indexOf("imgSaida") + 1);
    }

    void umPacoteSoltoNaJanelaAbreAImportacao()
    {
        Abrir();
        Clique("imgDetRcta");
        const QString caminho = p->pasta.filePath("Pacote da Vovó.LR$");
        QFile pacote(caminho);
        QVERIFY(pacote.open(QIODevice::WriteOnly));
        pacote.write("nada que se descompacte");
        pacote.close();
        QMimeData dados;
        dados.setUrls({QUrl::fromLocalFile(caminho)});
        dados.setText(caminho);
        QDragEnterEvent entra(QPoint(3, 3), Qt::CopyAction, &dados, Qt::LeftButton, {});
        QVERIFY(QCoreApplication::sendEvent(C("txtNome"), &entra) && entra.isAccepted());
        QDropEvent solta(QPointF(3, 3), Qt::CopyAction, &dados, Qt::LeftButton, {});
        QCoreApplication::sendEvent(C("txtNome"), &solta);
        QVERIFY(p->avisos.mostrados.isEmpty()); // the drop itself is over at once
        QTRY_COMPARE(p->avisos.mostrados.size(), 1);
        QVERIFY(p->avisos.mostrados.first().contains("Corrompido"));
        QCOMPARE(C<QLineEdit>("txtNome")->text(), QString());
        dados.setUrls({QUrl::fromLocalFile(p->pasta.filePath("outra.txt"))});
        QDragEnterEvent outra(QPoint(3, 3), Qt::CopyAction, &dados, Qt::LeftButton, {});
        QCoreApplication::sendEvent(C("lstVwReceitas"), &outra);
        QVERIFY(!outra.isAccepted());
    }

    void nenhumEloDoRodapeAcendeAoAbrir()
    {
        QStringList focados;
        connect(qApp, &QApplication::focusChanged, &p->janela, [&focados](QWidget *, QWidget *agora) {
            if (agora)
                focados << agora->objectName();
        });
        Abrir();
        QVERIFY(QTest::qWaitForWindowActive(&p->janela));
        QTRY_VERIFY(focados.contains("lstVwReceitas"));
        QVERIFY2(!focados.contains("picTamarel") && !focados.contains("lblUrl"),
                 qPrintable(focados.join(' ')));
    }

    void oBotaoVoltarCabeNaBarraDoTitulo()
    {
        AplicarAparencia(*qApp);
        Abrir();
        const QWidget *lblFechar = C("lblFechar");
        const int embaixo = C("picTitulo")->height() - lblFechar->geometry().bottom() - 1;
        QVERIFY(lblFechar->y() >= 2);
        QVERIFY(embaixo >= 2);
        QVERIFY(qAbs(lblFechar->y() - embaixo) <= 1);
    }

    void todoControleTemNomeAcessivelENenhumaTeclaRepetida()
    {
        Abrir();
        for (const char *botao : {"imgLstRcta", "imgPesRcta", "imgDetRcta"}) {
            Clique(botao);
            QSet<QString> teclas;
            const auto controles = p->janela.findChildren<QWidget *>();
            for (QWidget *controle : controles) {
                if (!controle->isVisible())
                    continue;
                const QString texto = controle->property("text").toString();
                const qsizetype e = texto.indexOf('&');
                const bool clicavel = qobject_cast<QAbstractButton *>(controle);
                if (clicavel && controle->focusPolicy() != Qt::NoFocus)
                    QVERIFY2(!controle->accessibleName().isEmpty() || !texto.isEmpty(),
                             qPrintable(controle->objectName()));
                if (!clicavel || e < 0 || controle->visibleRegion().isEmpty())
                    continue;
                const QString tecla = texto.mid(e + 1, 1).toUpper();
                QVERIFY2(!teclas.contains(tecla),
                         qPrintable(controle->objectName() + " repete Alt+" + tecla));
                teclas << tecla;
            }
        }
    }

    // Last: the end of the program cannot be taken back.
    void sairTerminaSemPergunta()
    {
        Abrir();
        Clique("imgSaida");
        QVERIFY(Encerrando());
        QVERIFY(p->avisos.mostrados.isEmpty());
        QVERIFY(!p->janela.isVisible());
    }
};

QTEST_MAIN(TesteApp)
#include "teste_app.moc"
