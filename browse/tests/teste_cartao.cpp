#include "base/Separadores.h"
#include "browse/CanvasCartao.h"
#include "browse/Cartao.h"
#include "browse/tests/Apoio.h"
#include "store/ErroBanco.h"

#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <cmath>

class TesteCartao : public QObject
{
    Q_OBJECT

    static QScrollBar *Barra(const Bancada &b) { return b.Controle<QScrollBar>("vScrlPic"); }
    static CanvasCartao *Canvas(const Bancada &b) { return b.Controle<CanvasCartao>("picViewDados"); }
    static QPushButton *Botao(const Bancada &b) { return b.Controle<QPushButton>("cmdAlterarReceita"); }
    static qint64 GuardarLonga(Bancada &b, const QString &tipo = {})
    {
        QString modo;
        for (int i = 1; i <= 60; ++i)
            modo += QString("Passo %1.\r\n").arg(i);
        return b.livro.Guardar({.nome = "Longa", .tipo = tipo, .modo = modo});
    }
    /// Where the drawing ends, in twips.
    static int Fim(const Bancada &b)
    {
        return static_cast<int>(std::lround(Canvas(b)->Desenho().Limites().bottom() * 1440 / 25.4));
    }

private slots:
    void initTestCase() { Separadores::Definir({u',', u'.'}); }

    void controlesTemSeusNomes()
    {
        Bancada b;
        QCOMPARE(b.cartao->objectName(), "picView");
        QVERIFY(b.cartao->isHidden());
        QCOMPARE(b.cartao->parentWidget(), b.detalhePainel);
        QVERIFY(Canvas(b) && Barra(b));
        QCOMPARE(Botao(b)->text(), "&Alterar Receita");
        QVERIFY(b.Controle<QLabel>("imgPrint")->isHidden());
    }

    void receitaCurtaDeixaABarraParada()
    {
        Bancada b;
        const qint64 n = b.livro.Guardar({.nome = "Sal"});
        b.cartao->CarregarPreviewReceita(n);
        QVERIFY(b.cartao->isVisible());
        QCOMPARE(b.cartao->Receita(), n);
        QCOMPARE(b.telas.pedidos, QStringList{"NovaReceita"});
        QCOMPARE(b.detalhePainel->Altura(), 6540);
        QVERIFY(b.cartao->AlturaDoCanvas() <= 6150);
        QCOMPARE(b.cartao->AlturaDoCanvas(), Fim(b) + 550);
        QCOMPARE(Canvas(b)->height(), qRound(b.cartao->AlturaDoCanvas() / 15.0));
        QVERIFY(!Barra(b)->isEnabled());
        QCOMPARE(Barra(b)->maximum(), 0);
        QVERIFY(Canvas(b)->hasFocus()); // a bar that is off cannot take the focus
    }

    void botaoFicaSobADesenho()
    {
        Bancada b;
        b.cartao->CarregarPreviewReceita(b.livro.Guardar({.nome = "Sal"}));
        QVERIFY(Botao(b)->isVisible());
        QCOMPARE(Botao(b)->parentWidget(), Canvas(b));
        QCOMPARE(Botao(b)->x(), qRound(5800 / 15.0));
        QCOMPARE(Botao(b)->y(), qRound((Fim(b) + 100) / 15.0));
        QVERIFY(Botao(b)->geometry().bottom() < Canvas(b)->height());
    }

    void tipoDecideSeSePodeAlterar_data()
    {
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<bool>("pode");
        QTest::newRow("nulo") << "" << true;
        QTest::newRow("0") << "0" << true;
        QTest::newRow("0.9") << "0.9" << true;
        QTest::newRow("1") << "1" << false;
        QTest::newRow("2") << "2" << false;
        QTest::newRow("3") << "3" << false;
    }
    void tipoDecideSeSePodeAlterar()
    {
        QFETCH(QString, tipo);
        QFETCH(bool, pode);
        Bancada b;
        b.cartao->CarregarPreviewReceita(b.livro.Guardar({.nome = "Sal", .tipo = tipo}));
        QCOMPARE(Botao(b)->isVisible(), pode);
        QCOMPARE(b.cartao->AlturaDoCanvas(), Fim(b) + (pode ? 550 : 150));
    }

    void receitaLongaDaOsNumerosDaBarra()
    {
        Bancada b;
        b.cartao->CarregarPreviewReceita(GuardarLonga(b));
        const int excesso = b.cartao->AlturaDoCanvas() - 6150;
        QVERIFY(excesso > 0);
        QVERIFY(Barra(b)->isEnabled());
        QCOMPARE(Barra(b)->value(), 0);
        QCOMPARE(Barra(b)->maximum(), excesso);
        QCOMPARE(Barra(b)->pageStep(), excesso / 2);
        QCOMPARE(Barra(b)->singleStep(), excesso / 20);
        QVERIFY(Barra(b)->hasFocus());
    }

    void rolarMoveOCanvasELheDaOFoco()
    {
        Bancada b;
        b.cartao->CarregarPreviewReceita(GuardarLonga(b));
        QCOMPARE(Canvas(b)->y(), 0);
        QTest::keyClick(Barra(b), Qt::Key_Down);
        QCOMPARE(Barra(b)->value(), Barra(b)->singleStep());
        QCOMPARE(Canvas(b)->y(), -qRound(Barra(b)->value() / 15.0));
        QVERIFY(Canvas(b)->hasFocus());

        QTest::keyClick(Canvas(b), Qt::Key_End);
        QCOMPARE(Barra(b)->value(), Barra(b)->maximum());
        QTest::keyClick(Canvas(b), Qt::Key_PageUp);
        QCOMPARE(Barra(b)->value(), Barra(b)->maximum() - Barra(b)->pageStep());
        QTest::keyClick(Canvas(b), Qt::Key_Up);
        QCOMPARE(Barra(b)->value(), Barra(b)->maximum() - Barra(b)->pageStep() - Barra(b)->singleStep());
        QTest::keyClick(Canvas(b), Qt::Key_Home);
        QCOMPARE(Barra(b)->value(), 0);
        QTest::keyClick(Canvas(b), Qt::Key_PageDown);
        QCOMPARE(Barra(b)->value(), Barra(b)->pageStep());
        QTest::keyClick(Canvas(b), Qt::Key_Down);
        QCOMPARE(Barra(b)->value(), Barra(b)->pageStep() + Barra(b)->singleStep());
    }

    void arrastarAMarcaMoveNaHora()
    {
        Bancada b;
        b.cartao->CarregarPreviewReceita(GuardarLonga(b));
        Barra(b)->setSliderDown(true);
        Barra(b)->setSliderPosition(300);
        QCOMPARE(Canvas(b)->y(), -20);
        Barra(b)->setSliderDown(false);
        QVERIFY(Canvas(b)->hasFocus());
    }

    void rodaDoMouseVaiPorLinhas()
    {
        Bancada b;
        b.cartao->CarregarPreviewReceita(GuardarLonga(b));
        const auto girar = [&b](int angulo) {
            QWheelEvent roda(QPointF(50, 50), b.cartao->mapToGlobal(QPointF(50, 50)), QPoint(),
                             QPoint(0, angulo), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(b.cartao, &roda);
        };
        girar(-120);
        QCOMPARE(Barra(b)->value(), 765);
        girar(-60);
        QCOMPARE(Barra(b)->value(), 765 + 382);
        girar(-60); // halves that the first left over are not lost
        QCOMPARE(Barra(b)->value(), 2 * 765);
        girar(1200);
        QCOMPARE(Barra(b)->value(), 0);
    }

    void rolarNaoLeOLivro()
    {
        Bancada b;
        b.cartao->CarregarPreviewReceita(GuardarLonga(b));
        b.livro.banco.ExecutarSQL("Delete from Receitas Where id_receitas > 0");
        QTest::keyClick(Barra(b), Qt::Key_End);
        QVERIFY(Canvas(b)->Desenho().Texto().contains("Passo 60."));
        QVERIFY(b.avisos.vistos.isEmpty());
    }

    void novaReceitaVoltaAoAlto()
    {
        Bancada b;
        const qint64 longa = GuardarLonga(b);
        b.cartao->CarregarPreviewReceita(longa);
        Barra(b)->setValue(Barra(b)->maximum());
        b.cartao->CarregarPreviewReceita(longa);
        QCOMPARE(Barra(b)->value(), 0);
        QCOMPARE(Canvas(b)->y(), 0);
        b.cartao->CarregarPreviewReceita(b.livro.Guardar({.nome = "Curta"}));
        QVERIFY(!Barra(b)->isEnabled());
        QVERIFY(!Canvas(b)->Desenho().Texto().contains("Passo"));
    }

    void comAPesquisaAbertaOFimAindaSeAlcanca()
    {
        Bancada b;
        const qint64 n = GuardarLonga(b);
        b.lista->imgLstRcta_Click();
        b.pesquisa->imgPesRcta_Click();
        b.cartao->CarregarPreviewReceita(n);
        QCOMPARE(b.detalhePainel->Altura(), 3780);
        QCOMPARE(Barra(b)->maximum(), b.cartao->AlturaDoCanvas() - 3390);
        QVERIFY(Barra(b)->geometry().bottom() <= b.cartao->height());
        QVERIFY(b.cartao->geometry().bottom() <= b.detalhePainel->height());
        Barra(b)->setValue(Barra(b)->maximum());
        b.detalhePainel->DefinirAltura(6540); // what closing the search does
        QCOMPARE(Barra(b)->maximum(), b.cartao->AlturaDoCanvas() - 6150);
        QCOMPARE(Barra(b)->value(), Barra(b)->maximum());
        QCOMPARE(Canvas(b)->y(), -qRound(Barra(b)->value() / 15.0));
        b.detalhePainel->DefinirAltura(3780);
        QCOMPARE(Barra(b)->maximum(), b.cartao->AlturaDoCanvas() - 3390);
    }

    void painelJaAbertoNaoRolaDeNovo()
    {
        Bancada b;
        const qint64 n = b.livro.Guardar({.nome = "Sal"});
        b.cartao->CarregarPreviewReceita(n);
        QSignalSpy avisou(Barra(b), &QScrollBar::rangeChanged);
        b.detalhePainel->resize(b.detalhePainel->width(), 436);
        b.cartao->CarregarPreviewReceita(n);
        QCOMPARE(b.detalhePainel->Altura(), 6540);
        QVERIFY(avisou.isEmpty());
    }

    void tabulacaoNaoEntraNoEditorCoberto()
    {
        Bancada b;
        QLineEdit coberto(b.detalhePainel);
        coberto.setGeometry(20, 20, 100, 24);
        coberto.show();
        QLineEdit fora(&b.janela);
        fora.show();
        const qint64 n = GuardarLonga(b);
        b.cartao->CarregarPreviewReceita(n);
        QStringList visitados;
        for (int i = 0; i < 8; ++i) {
            QWidget *foco = b.janela.focusWidget();
            visitados += foco == &fora ? "fora" : foco == &coberto ? "coberto" : foco->objectName();
            if (foco == &fora)
                break;
            QTest::keyClick(foco, Qt::Key_Tab);
        }
        QVERIFY(!visitados.contains("coberto"));
        QCOMPARE(visitados, (QStringList{"vScrlPic", "picViewDados", "cmdAlterarReceita", "fora"}));
    }

    void botaoAlterarEscondeOCartaoEAbreOEditor()
    {
        Bancada b;
        const qint64 n = b.livro.Guardar({.nome = "Sal"});
        b.cartao->CarregarPreviewReceita(n);
        QTest::mouseClick(Botao(b), Qt::LeftButton);
        QVERIFY(b.cartao->isHidden());
        QCOMPARE(b.detalhe.passos, (QStringList{"valores 0", QString("detalhe %1 alterar").arg(n)}));
    }

    void receitaQueNaoExisteDeixaOCartaoComoEstava()
    {
        Bancada b;
        b.cartao->CarregarPreviewReceita(b.livro.Guardar({.nome = "Sal grosso"}));
        QVERIFY_EXCEPTION_THROWN(b.cartao->CarregarPreviewReceita(999), ErroBanco);
        QVERIFY(Canvas(b)->Desenho().Texto().contains("Sal grosso"));
        QVERIFY(b.cartao->isVisible());
    }

    void leitorDeTelaOuveAReceita()
    {
        Bancada b;
        b.cartao->CarregarPreviewReceita(
            b.livro.Guardar({.nome = "Bolo", .porcoes = "1", .ingredientes = {"2|xícaras|farinha"}}));
        QCOMPARE(Canvas(b)->accessibleName(), "Receita Bolo");
        QAccessibleInterface *cartao = QAccessible::queryAccessibleInterface(Canvas(b));
        QVERIFY(cartao->state().readOnly);
        QVERIFY(!cartao->state().editable);
        QAccessibleTextInterface *texto = cartao->textInterface();
        QVERIFY(texto);
        QCOMPARE(texto->text(0, texto->characterCount()),
                 "Bolo\n()\nRendimento : 1 porção\nIngredientes :\n"
                 "2 xícaras farinha\nModo de Preparo :\nMisture tudo.");
        int inicio = 0;
        int fim = 0;
        const int onde = static_cast<int>(texto->text(0, texto->characterCount()).indexOf("farinha"));
        QCOMPARE(texto->textAtOffset(onde, QAccessible::LineBoundary, &inicio, &fim).trimmed(),
                 "2 xícaras farinha");
        QCOMPARE(texto->offsetAtPoint(texto->characterRect(onde).center()), onde);
        QCOMPARE(texto->offsetAtPoint(Canvas(b)->mapToGlobal(QPoint(1, Canvas(b)->height() - 1))), -1);
    }

    /// Who moves through the card by ear has it scrolled under the eyes of whoever looks on.
    void oCursorDeQuemOuveRolaOCartao()
    {
        Bancada b;
        b.cartao->CarregarPreviewReceita(
            b.livro.Guardar({.nome = "Bolo", .modo = QString("Mexa.\r\n").repeated(200)}));
        QAccessibleTextInterface *texto = QAccessible::queryAccessibleInterface(Canvas(b))->textInterface();
        texto->setCursorPosition(texto->characterCount() - 3);
        QCOMPARE(texto->cursorPosition(), texto->characterCount() - 3);
        QVERIFY(Barra(b)->value() > Barra(b)->maximum() / 2);
        texto->setCursorPosition(0);
        QCOMPARE(Barra(b)->value(), 0);
    }

    void papelEhBrancoETituloAzulNaTela()
    {
        Bancada b;
        b.cartao->CarregarPreviewReceita(b.livro.Guardar({.nome = "MMMM", .figura = true}));
        const QImage foto = Canvas(b)->grab().toImage();
        QCOMPARE(foto.pixelColor(foto.width() - 2, 2), QColor(Qt::white));
        int azuis = 0;
        for (int y = 0; y < 24; ++y)
            for (int x = 0; x < 120; ++x)
                azuis += foto.pixelColor(x, y) == QColor(Qt::blue) ? 1 : 0;
        QVERIFY(azuis > 50);
        // The picture: right edge at the usable width, 157 mm of the canvas.
        const int x = static_cast<int>((157 - 27) * 96 / 25.4);
        const int y = static_cast<int>((Canvas(b)->Desenho().Limites().height() / 2 - 5) * 96 / 25.4);
        QCOMPARE(foto.pixelColor(x, y), QColor(200, 120, 40));
    }

    void mouseSobreOCartaoRestauraOsBotoes()
    {
        Bancada b;
        b.cartao->CarregarPreviewReceita(b.livro.Guardar({.nome = "Sal"}));
        b.telas.restauradas = 0;
        QTest::mouseMove(Canvas(b), QPoint(30, 30));
        QTest::mouseMove(Canvas(b), QPoint(60, 60));
        QTRY_VERIFY(b.telas.restauradas > 0);
    }

    void focoFicaOndeOUsuarioFoiDuranteARolagem()
    {
        Bancada b;
        const qint64 n = GuardarLonga(b);
        b.telas.AbrirTela("ListaReceitas");
        AoRolar meio(b.detalhePainel, [&] { b.lista->imgLstRcta_Click(); });
        b.cartao->CarregarPreviewReceita(n);
        QVERIFY(meio.Rodou());
        QVERIFY(b.Lst()->hasFocus());
    }
};

QTEST_MAIN(TesteCartao)
#include "teste_cartao.moc"
