#include "base/AvisosQt.h"
#include "base/BotaoImagem.h"
#include "base/CampoTexto.h"
#include "base/EventosPendentes.h"
#include "base/Painel.h"
#include "base/Ponteiro.h"
#include "base/Protegido.h"
#include "base/SeletorArquivosQt.h"

#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
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
    }

    void oDialogoDeArquivosMostraSuasColunasInteiras()
    {
        QTemporaryDir pasta;
        QFile arquivo(pasta.filePath("bolo.jpg"));
        QVERIFY(arquivo.open(QIODevice::WriteOnly));
        QVERIFY(arquivo.resize(123456));
        arquivo.close();
        int colunas = 0;
        QStringList cortadas;
        QTimer::singleShot(0, this, [&] {
            auto *dialogo = QApplication::activeModalWidget();
            auto *lista = dialogo->findChild<QTreeView *>("treeView");
            QTRY_VERIFY(lista->model()->rowCount(lista->rootIndex()) > 0);
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
