#include "base/Alcance.h"
#include "base/AvisosQt.h"
#include "base/BotaoImagem.h"
#include "base/CampoTexto.h"
#include "base/Comando.h"
#include "base/EventosPendentes.h"
#include "base/Painel.h"
#include "base/Ponteiro.h"
#include "base/Protegido.h"
#include "base/SeletorArquivosQt.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>

namespace
{
class AvisosGravados : public Avisos
{
public:
    void Avisar(const QString &texto, Icone icone) override
    {
        textos << texto;
        icones << icone;
        ponteiroEmEspera = Ponteiro::EmEspera();
    }
    bool Perguntar(const QString &) override { return false; }
    QStringList textos;
    QList<Icone> icones;
    bool ponteiroEmEspera = true;
};

class PainelGravado : public Painel
{
public:
    using Painel::Painel;
    QList<int> alturas;
    std::function<void()> aoRolar;

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        Painel::resizeEvent(event);
        alturas << Altura();
        if (aoRolar)
            QTimer::singleShot(0, this, aoRolar);
    }
};

/// Two panels in one place, the second in front, and a button beside them.
struct DoisPaineis {
    DoisPaineis()
    {
        Painel::DefinirRitmo(0);
        janela.resize(600, 500);
        atras.DefinirLugar(0, 0, 6000, 6000);
        frente.DefinirLugar(0, 0, 6000, 6000);
        ao_lado.setGeometry(450, 10, 100, 30);
        int y = 10;
        for (QWidget *controle : std::initializer_list<QWidget *>{&campoAtras, &salvarAtras, &marcaAtras}) {
            controle->setGeometry(10, y, 200, 30);
            y += 40;
        }
        campoFrente.setGeometry(10, 10, 200, 30);
        excluirFrente.setGeometry(10, 50, 200, 30);
        atras.setFocusProxy(&campoAtras);
        frente.hide();
        janela.show();
        janela.activateWindow();
        if (!QTest::qWaitForWindowActive(&janela))
            qFatal("the window does not become active");
    }
    void Teclar(Qt::Key tecla, Qt::KeyboardModifiers modificadores = {})
    {
        QTest::keyClick(janela.windowHandle(), tecla, modificadores);
    }

    Alcance alcance;
    QWidget janela;
    Painel atras{"atras", &janela};
    Painel frente{"frente", &janela};
    QPushButton ao_lado{"&Voltar", &janela};
    CampoTexto campoAtras{"campoAtras", &atras};
    QPushButton salvarAtras{"&Salvar", &atras};
    QCheckBox marcaAtras{"&Marcar", &atras};
    CampoTexto campoFrente{"campoFrente", &frente};
    QPushButton excluirFrente{"&Excluir", &frente};
};

QMessageBox *CaixaAberta()
{
    return qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
}
} // namespace

class TesteBaseWidgets : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { Painel::DefinirRitmo(0); }

    void oCampoDeTextoRecusaApostrofoEEnter()
    {
        CampoTexto campo("txtNome");
        campo.show();
        QSignalSpy enter(&campo, &QLineEdit::returnPressed);
        QTest::keyClicks(&campo, "Pao d'agua");
        QTest::keyClick(&campo, Qt::Key_Return);
        QCOMPARE(campo.text(), QString("Pao dagua"));
        QCOMPARE(enter.count(), 0);
        QTest::keyClick(&campo, Qt::Key_Backspace);
        QCOMPARE(campo.text(), QString("Pao dagu"));
    }

    void oCampoNumericoSoTemAlgarismosMenosEVirgula()
    {
        CampoTexto campo("txtCalorias", nullptr, true);
        campo.show();
        QTest::keyClicks(&campo, "1.2,5a-");
        QCOMPARE(campo.text(), QString("12,5-"));
    }

    void teclasMortasPassamPeloFiltro()
    {
        CampoTexto campo("txtNome");
        campo.show();
        QInputMethodEvent composto;
        composto.setCommitString("'á");
        QCoreApplication::sendEvent(&campo, &composto);
        QCOMPARE(campo.text(), QString("á"));
    }

    void oQueSeColaNaoEFiltrado()
    {
        CampoTexto campo("txtNome");
        campo.show();
        QGuiApplication::clipboard()->setText("Pão d'água");
        QTest::keyClick(&campo, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(campo.text(), QString("Pão d'água"));
    }

    void oNuloColadoSai()
    {
        const QString comNulos = QString("Bo") + QChar::Null + "lo" + QChar::Null;
        CampoTexto campo("txtNome");
        campo.show();
        campo.setText("de milho");
        campo.setCursorPosition(0);
        QGuiApplication::clipboard()->setText(comNulos);
        QTest::keyClick(&campo, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(campo.text(), QString("Bolode milho"));
        QCOMPARE(campo.cursorPosition(), 4);
        CampoMemo memo("txtModo");
        memo.show();
        QTest::keyClick(&memo, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(memo.Texto(), QString("Bolo"));
    }

    /// A megabyte without a blank is broken anywhere: looking for the ends of its words takes minutes.
    void oMemoQuebraPalavrasSemFimEmQualquerLugar()
    {
        CampoMemo memo("txtModo");
        memo.DefinirTexto(QString("palavra ").repeated(1000));
        QCOMPARE(memo.wordWrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
        memo.DefinirTexto(QString(3000, 'x'));
        QCOMPARE(memo.wordWrapMode(), QTextOption::WrapAnywhere);
        memo.DefinirTexto("curto");
        QCOMPARE(memo.wordWrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
        QGuiApplication::clipboard()->setText(QString(3000, 'y'));
        memo.paste();
        QCOMPARE(memo.wordWrapMode(), QTextOption::WrapAnywhere);
    }

    void oMemoGuardaParagrafosEBrancosInseparaveis()
    {
        CampoMemo memo("txtModo");
        memo.show();
        QGuiApplication::clipboard()->setText(QString("Mexa 5\u00A0min.\r\nAsse."));
        QTest::keyClick(&memo, Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(&memo, Qt::Key_Return);
        QTest::keyClicks(&memo, "' Fim");
        QCOMPARE(memo.Texto(), QString("Mexa 5\u00A0min.\r\nAsse. Fim"));
        memo.DefinirTexto("a\r\nb");
        QCOMPARE(memo.Texto(), QString("a\r\nb"));
    }

    void aListaDoComboMudaSemTocarNoTexto()
    {
        ComboTexto combo("cmbTipo");
        combo.DefinirTexto("Massas da vovó");
        combo.DefinirItens({"Doces", "Massas"});
        QCOMPARE(combo.currentText(), QString("Massas da vovó"));
        QVERIFY(!combo.ItemSelecionado());
        combo.AdicionarItem("Sopas");
        QCOMPARE(combo.currentText(), QString("Massas da vovó"));
        QCOMPARE(combo.Itens(), (QStringList{"Doces", "Massas", "Sopas"}));
    }

    void digitarDesfazAEscolhaDaLista()
    {
        ComboTexto combo("cmbTipo");
        combo.DefinirItens({"Doces", "Massas"});
        combo.show();
        combo.setCurrentIndex(0);
        QVERIFY(combo.ItemSelecionado());
        QTest::keyClick(&combo, Qt::Key_End);
        QTest::keyClicks(&combo, "x");
        QCOMPARE(combo.currentText(), QString("Docesx"));
        QVERIFY(!combo.ItemSelecionado());
    }

    void localizaSemDistinguirMaiusculas()
    {
        ComboTexto combo("cmbTipo");
        combo.DefinirItens({"Pães"});
        QVERIFY(LocalizarValorCombo(combo, "PÃES"));
        QVERIFY(!LocalizarValorCombo(combo, "paes"));
    }

    void oPainelRolaEmPassosDeDuzentosTwips()
    {
        QWidget janela;
        PainelGravado painel("picLstReceitas", &janela);
        painel.DefinirLugar(0, 0, 3000, Painel::kRecolhido);
        janela.show();
        painel.alturas.clear();
        QVERIFY(painel.Rolar(6540));
        QList<int> esperadas;
        for (int h = 220; h <= 6540; h += 200)
            esperadas << h;
        esperadas << 6540;
        QCOMPARE(painel.alturas, esperadas); // the first step, 20, is the height it already had
        QCOMPARE(painel.Altura(), 6540);
        QCOMPARE(painel.height(), 436);
    }

    void umPassoLentoNaoEsperaParaSempre()
    {
        QWidget janela;
        PainelGravado painel("picLstReceitas", &janela);
        painel.DefinirLugar(0, 0, 3000, Painel::kRecolhido);
        janela.show();
        Painel::DefinirRitmo(1);
        bool lento = false;
        painel.aoRolar = [&lento] {
            if (!lento)
                QTest::qSleep(30); // the load the roll must bear, not a wait
            lento = true;
        };
        const bool chegou = painel.Rolar(6540);
        Painel::DefinirRitmo(0);
        QVERIFY(chegou);
    }

    void umaRolagemMaisNovaVence()
    {
        QWidget janela;
        PainelGravado painel("picLstReceitas", &janela);
        painel.DefinirLugar(0, 0, 3000, Painel::kRecolhido);
        janela.show();
        bool segunda = false;
        painel.aoRolar = [&] {
            if (!segunda && painel.Altura() > 1000) {
                segunda = true;
                painel.Rolar(3780);
            }
        };
        QVERIFY(!painel.Rolar(6540));
        QVERIFY(segunda);
        QCOMPARE(painel.Altura(), 3780);
    }

    void oFimDoPainelNoMeioDaRolagemNaoDerruba()
    {
        QWidget janela;
        auto *painel = new PainelGravado("picLstReceitas", &janela);
        painel->DefinirLugar(0, 0, 3000, Painel::kRecolhido);
        janela.show();
        QTimer::singleShot(0, &janela, [painel] { delete painel; });
        QVERIFY(!painel->Rolar(6540));
    }

    void aCaixaDeAvisoTemTituloIconeEOk_data()
    {
        QTest::addColumn<int>("icone");
        QTest::addColumn<int>("esperado");
        QTest::newRow("nenhum") << int(Avisos::Icone::Nenhum) << int(QMessageBox::NoIcon);
        QTest::newRow("informação") << int(Avisos::Icone::Informacao) << int(QMessageBox::Information);
        QTest::newRow("exclamação") << int(Avisos::Icone::Exclamacao) << int(QMessageBox::Warning);
        QTest::newRow("parada") << int(Avisos::Icone::Parada) << int(QMessageBox::Critical);
    }
    void aCaixaDeAvisoTemTituloIconeEOk()
    {
        QFETCH(int, icone);
        QFETCH(int, esperado);
        AvisosQt avisos;
        QString texto, titulo;
        int achado = -1;
        QTimer::singleShot(0, this, [&] {
            QMessageBox *caixa = CaixaAberta();
            QVERIFY(caixa);
            texto = caixa->text();
            titulo = caixa->windowTitle();
            achado = caixa->icon();
            QCOMPARE(caixa->textFormat(), Qt::PlainText);
            QCOMPARE(caixa->buttons().size(), 1);
            QTest::keyClick(caixa, Qt::Key_Return);
        });
        avisos.Avisar("Primeira\r\n<b>segunda</b>", static_cast<Avisos::Icone>(icone));
        QCOMPARE(titulo, QString("Cozinhario 2005"));
        QCOMPARE(texto, QString("Primeira\n<b>segunda</b>"));
        QCOMPARE(achado, esperado);
    }

    void aPerguntaTemNaoComoPadrao_data()
    {
        QTest::addColumn<int>("tecla");
        QTest::addColumn<bool>("sim");
        QTest::newRow("Enter") << int(Qt::Key_Return) << false;
        QTest::newRow("Escape") << int(Qt::Key_Escape) << false;
        QTest::newRow("S") << int(Qt::Key_S) << true;
    }
    void aPerguntaTemNaoComoPadrao()
    {
        QFETCH(int, tecla);
        QFETCH(bool, sim);
        AvisosQt avisos;
        QTimer::singleShot(0, this, [&] {
            QMessageBox *caixa = CaixaAberta();
            QVERIFY(caixa);
            QCOMPARE(caixa->icon(), QMessageBox::Question);
            QCOMPARE(caixa->defaultButton()->text(), QString("&Não"));
            QTest::keyClick(caixa, static_cast<Qt::Key>(tecla));
        });
        QCOMPARE(avisos.Perguntar("Confirma?"), sim);
    }

    void oErroChegaAoUsuarioComOPonteiroNormal()
    {
        AvisosGravados avisos;
        Ponteiro::Ampulheta();
        auto tratador = Protegido(avisos, [] { throw std::runtime_error("disco cheio"); });
        tratador();
        QCOMPARE(avisos.textos, QStringList{"disco cheio"});
        QCOMPARE(avisos.icones, QList<Avisos::Icone>{Avisos::Icone::Parada});
        QVERIFY(!avisos.ponteiroEmEspera);
    }

    void oFiltroDosDialogos()
    {
        QCOMPARE(SeletorArquivosQt::FiltroQt("Arquivos de Imagens|*.bmp;*.jpg;*.gif;*.img"),
                 QString("Arquivos de Imagens (*.bmp *.jpg *.gif *.img)"));
        QCOMPARE(SeletorArquivosQt::FiltroQt("Backups|*.bck|Imagens|*.jpg;*.GIF", true),
                 QString("Backups (*.bck *.BCK);;Imagens (*.jpg *.JPG *.GIF)"));
    }

    void oDialogoDeArquivosMostraSuasColunasInteiras()
    {
        QTemporaryDir pasta;
        QFile arquivo(pasta.filePath("bolo.jpg"));
        QVERIFY(arquivo.open(QIODevice::WriteOnly));
        QVERIFY(arquivo.resize(123456));
        arquivo.close();
        QVERIFY(arquivo.rename(pasta.filePath("BOLO.JPG")));
        QVERIFY(QDir(pasta.path()).mkdir("Fotos"));
        int colunas = 0;
        QStringList linhas;
        QStringList cortadas;
        QTimer::singleShot(0, this, [&] {
            auto *dialogo = QApplication::activeModalWidget();
            auto *lista = dialogo->findChild<QTreeView *>("treeView");
            QTRY_COMPARE(lista->model()->rowCount(lista->rootIndex()), 2);
            for (int linha = 0; linha < 2; ++linha)
                linhas << lista->model()->index(linha, 0, lista->rootIndex()).data().toString() + ": " +
                              lista->model()->index(linha, 2, lista->rootIndex()).data().toString();
            for (int coluna = 0; coluna < lista->header()->count(); ++coluna, ++colunas) {
                const QString titulo = lista->model()->headerData(coluna, Qt::Horizontal).toString();
                if (lista->sizeHintForIndex(lista->model()->index(0, coluna, lista->rootIndex())).width() >
                    lista->columnWidth(coluna))
                    cortadas << titulo;
            }
            const int fim = lista->header()->sectionViewportPosition(3) + lista->header()->sectionSize(3);
            if (fim > lista->viewport()->width())
                cortadas << "a largura da lista";
            dialogo->close();
        });
        SeletorArquivosQt seletor;
        PedidoArquivo pedido;
        pedido.titulo = "Selecione a Imagem ";
        pedido.filtro = "Arquivos de Imagens|*.bmp;*.jpg;*.gif;*.img";
        pedido.pastaInicial = pasta.path();
        seletor.EscolherParaAbrir(pedido);
        QCOMPARE(colunas, 4);
        QVERIFY2(linhas.contains("Fotos: Pasta"), qPrintable(linhas.join(", ")));
        QVERIFY2(linhas.join(' ').contains("BOLO.JPG"), qPrintable(linhas.join(", ")));
        QVERIFY2(cortadas.isEmpty(), qPrintable(cortadas.join(", ")));
    }

    void oBotaoTrocaDeFiguraEObedeceAoTeclado()
    {
        QLabel normal, sobre;
        QPixmap azul(36, 36), amarela(36, 36);
        azul.fill(Qt::blue);
        amarela.fill(Qt::yellow);
        normal.setPixmap(azul);
        sobre.setPixmap(amarela);
        BotaoImagem botao("imgLstRcta", "Lista de Receitas", &normal, &sobre);
        botao.show();
        QSignalSpy clicado(&botao, &QAbstractButton::clicked);
        QCOMPARE(botao.grab().toImage().pixelColor(20, 20), QColor(Qt::blue));
        botao.Acender(true);
        QCOMPARE(botao.grab().toImage().pixelColor(20, 20), QColor(Qt::yellow));
        QTest::keyClick(&botao, Qt::Key_Return);
        QTest::keyClick(&botao, Qt::Key_Space);
        QTest::mouseClick(&botao, Qt::LeftButton);
        QCOMPARE(clicado.count(), 3);
        QCOMPARE(botao.accessibleName(), QString("Lista de Receitas"));
    }

    void oBotaoApagaQuandoOFocoSai()
    {
        QWidget janela;
        janela.resize(300, 100);
        QLabel normal, sobre;
        normal.setPixmap(QPixmap(36, 36));
        sobre.setPixmap(QPixmap(36, 36));
        BotaoImagem botao("imgLstRcta", "Lista de Receitas", &normal, &sobre, &janela);
        botao.move(200, 40);
        QLineEdit campo(&janela);
        connect(&botao, &BotaoImagem::apontado, this, [&] { botao.Acender(true); });
        connect(&botao, &BotaoImagem::deixado, this, [&] { botao.Acender(false); });
        janela.show();
        janela.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&janela));
        campo.setFocus();
        botao.setFocus(Qt::TabFocusReason);
        QVERIFY(botao.Aceso());
        campo.setFocus(Qt::TabFocusReason);
        QVERIFY(!botao.Aceso());
    }

    void oQueOutroPainelCobreNaoSeAlcanca()
    {
        DoisPaineis p;
        QVERIFY(Alcance::Alcanca(p.campoAtras));
        QVERIFY(!Alcance::Alcanca(p.campoFrente)); // hidden
        p.frente.show();
        QVERIFY(Alcance::Alcanca(p.campoFrente));
        QVERIFY(p.campoAtras.isVisible());
        QVERIFY(Alcance::Encoberto(p.campoAtras));
        QVERIFY(!Alcance::Alcanca(p.campoAtras));
        QVERIFY(Alcance::Alcanca(p.ao_lado));
        p.ao_lado.setEnabled(false);
        QVERIFY(!Alcance::Alcanca(p.ao_lado));
        p.atras.raise();
        QVERIFY(Alcance::Alcanca(p.campoAtras));
        QVERIFY(!Alcance::Alcanca(p.campoFrente));
    }

    void oFocoVaiAoPainelQueCobre()
    {
        DoisPaineis p;
        p.campoAtras.setFocus();
        p.frente.show();
        QVERIFY(p.campoFrente.hasFocus());
        p.campoAtras.setFocus(); // and does not come back by anybody's wish
        QVERIFY(p.campoFrente.hasFocus());
        p.atras.raise();
        QVERIFY(p.campoAtras.hasFocus());
    }

    void umPainelQueRolaCobreDesdeOsPrimeirosPassos()
    {
        DoisPaineis p;
        p.campoAtras.setFocus();
        p.frente.DefinirAltura(Painel::kRecolhido);
        p.frente.show();
        QVERIFY(p.campoAtras.hasFocus()); // it is still what is seen
        QVERIFY(!Alcance::Encoberto(p.campoAtras));
        QList<int> alturas;
        QTimer olhar;
        connect(&olhar, &QTimer::timeout, this, [&] {
            QVERIFY(Alcance::Encoberto(p.campoAtras));
            QVERIFY(p.campoFrente.hasFocus() || p.frente.Altura() == Painel::kRecolhido);
            alturas << p.frente.Altura();
        });
        olhar.start(0);
        QVERIFY(p.frente.Rolar(6000));
        QVERIFY(alturas.contains(220));
    }

    void asTeclasNaoChegamAoQueEstaEncoberto()
    {
        DoisPaineis p;
        p.frente.show();
        QSignalSpy salvou(&p.salvarAtras, &QPushButton::clicked);
        QTest::keyClicks(&p.campoAtras, "abc");
        QTest::keyClick(&p.salvarAtras, Qt::Key_Space);
        QCOMPARE(p.campoAtras.text(), QString());
        QCOMPARE(salvou.count(), 0);
        QInputMethodEvent acento;
        acento.setCommitString("ã");
        QCoreApplication::sendEvent(&p.campoAtras, &acento);
        QCOMPARE(p.campoAtras.text(), QString());
    }

    void asTeclasDeAcessoSoDoQueSeAlcanca()
    {
        DoisPaineis p;
        QSignalSpy salvou(&p.salvarAtras, &QPushButton::clicked);
        QSignalSpy voltou(&p.ao_lado, &QPushButton::clicked);
        p.campoAtras.setFocus();
        p.Teclar(Qt::Key_S, Qt::AltModifier);
        QCOMPARE(salvou.count(), 1); // at once
        p.Teclar(Qt::Key_M, Qt::AltModifier);
        QVERIFY(p.marcaAtras.isChecked());
        QVERIFY(p.marcaAtras.hasFocus());

        p.frente.show();
        p.Teclar(Qt::Key_S, Qt::AltModifier);
        p.Teclar(Qt::Key_M, Qt::AltModifier);
        QCOMPARE(salvou.count(), 1);
        QVERIFY(p.marcaAtras.isChecked());
        QCOMPARE(p.campoFrente.text(), QString());
        p.Teclar(Qt::Key_V, Qt::AltModifier);
        QCOMPARE(voltou.count(), 1);

        // The same letter behind does not stand in the way of the one in front.
        p.excluirFrente.setText("&Salvar Tudo");
        QSignalSpy salvouTudo(&p.excluirFrente, &QPushButton::clicked);
        p.Teclar(Qt::Key_S, Qt::AltModifier);
        p.Teclar(Qt::Key_S, Qt::AltModifier);
        QCOMPARE(salvouTudo.count(), 2);
        QCOMPARE(salvou.count(), 1);
    }

    void osAtalhosSoDoQueSeAlcanca()
    {
        DoisPaineis p;
        QShortcut atalho(QKeySequence("Ctrl+K"), &p.atras);
        QSignalSpy ativado(&atalho, &QShortcut::activated);
        p.Teclar(Qt::Key_K, Qt::ControlModifier);
        QCOMPARE(ativado.count(), 1);
        p.frente.show();
        p.Teclar(Qt::Key_K, Qt::ControlModifier);
        QCOMPARE(ativado.count(), 1);
    }

    void altComLetraSemBotaoNaoEscreveNada()
    {
        DoisPaineis p;
        p.campoAtras.setFocus();
        QTest::keyClick(p.janela.windowHandle(), 'x', Qt::AltModifier);
        p.ao_lado.setEnabled(false);
        QTest::keyClick(p.janela.windowHandle(), 'v', Qt::AltModifier);
        QTest::keyClick(&p.campoAtras, 'y', Qt::AltModifier);
        QCOMPARE(p.campoAtras.text(), QString());
        QTest::keyClick(p.janela.windowHandle(), 'z');
        QKeyEvent arroba(QEvent::KeyPress, Qt::Key_At, Qt::GroupSwitchModifier, "@"); // AltGr is no Alt
        QCoreApplication::sendEvent(&p.campoAtras, &arroba);
        QCOMPARE(p.campoAtras.text(), QString("z@"));
    }

    void aTeclaTabNaoParaNoQueEstaEncoberto()
    {
        DoisPaineis p;
        p.frente.show();
        p.campoFrente.setFocus();
        for (QWidget *esperado : std::initializer_list<QWidget *>{&p.excluirFrente, &p.ao_lado}) {
            QVERIFY(Alcance::MoverFoco(p.janela, true));
            QVERIFY2(esperado->hasFocus(), qPrintable(p.janela.focusWidget()->objectName()));
        }
        QVERIFY(Alcance::MoverFoco(p.janela, true));
        QVERIFY(p.campoFrente.hasFocus());
        QVERIFY(Alcance::MoverFoco(p.janela, false));
        QVERIFY(p.ao_lado.hasFocus());
    }

    void atrasDeUmDialogoNadaSeAlcanca()
    {
        DoisPaineis p;
        QDialog dialogo(&p.janela);
        QPushButton ok("&OK", &dialogo);
        dialogo.setModal(true);
        dialogo.show();
        QVERIFY(Alcance::Alcanca(ok));
        QVERIFY(!Alcance::Alcanca(p.campoAtras));
    }

    void oComandoQueEsperouNaoComecaEncoberto()
    {
        DoisPaineis p;
        AvisosGravados avisos;
        int feitos = 0;
        connect(&p.salvarAtras, &QPushButton::clicked, &p.janela,
                Comando(avisos, &p.salvarAtras, [&] { ++feitos; }));
        const auto clicarDuranteUmaRolagem = [&] {
            const Operacao rolagem(Operacao::Tipo::Rolagem);
            p.salvarAtras.click();
            QCOMPARE(feitos, 0);
        };
        clicarDuranteUmaRolagem();
        QTRY_COMPARE(feitos, 1);
        feitos = 0;
        clicarDuranteUmaRolagem();
        p.frente.show();
        QCoreApplication::processEvents();
        QCOMPARE(feitos, 0);
        p.salvarAtras.click(); // nor does one that nothing holds up
        QCOMPARE(feitos, 0);
    }

    // Last, because the end of the program cannot be taken back.
    void oFimDoProgramaParaARolagem()
    {
        QWidget janela;
        PainelGravado painel("picLstReceitas", &janela);
        painel.DefinirLugar(0, 0, 3000, Painel::kRecolhido);
        janela.show();
        QTimer::singleShot(0, this, [] { EncerrarPrograma(); });
        QVERIFY(!painel.Rolar(6540));
        QVERIFY(painel.Altura() < 6540);
    }
};

QTEST_MAIN(TesteBaseWidgets)
#include "teste_base_widgets.moc"
