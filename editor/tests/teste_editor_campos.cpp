#include "editor/ArvoreIngredientes.h"
#include "editor/Colagem.h"
#include "editor/ComboCompletavel.h"
#include "editor/tests/Bancada.h"

#include "base/EventosPendentes.h"
#include "base/Separadores.h"
#include "base/Twips.h"
#include "store/ErroBanco.h"

#include <QGroupBox>
#include <QInputMethodEvent>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>

#include <memory>

class TesteEditorCampos : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<Bancada> m_b;
    Bancada &B() { return *m_b; }

    QString Selecionado(const char *nome) { return B().Combo(nome)->lineEdit()->selectedText(); }
    QString Texto(const char *nome) { return B().Combo(nome)->currentText(); }

    // Every control that can be seen and reached, in the panel.
    QList<QWidget *> Visiveis()
    {
        QList<QWidget *> visiveis;
        for (QWidget *w : B().painel->findChildren<QWidget *>()) {
            if (w->isVisible())
                visiveis += w;
        }
        return visiveis;
    }

private slots:
    void init()
    {
        Painel::DefinirRitmo(0);
        Separadores::Definir({u',', u'.'});
        m_b = std::make_unique<Bancada>();
        B().Combo("cmbTipo")->DefinirItens(
            {"Doces", "Massas", "Massas Finas", "Sobremesas de festa com frutas"});
        B().Combo("cmbMedida")->DefinirItens({"colher", "xícaras"});
        B().Combo("cmbIngrediente")->DefinirItens({"farinha", "farinha de rosca", "óleo"});
    }
    void cleanup() { m_b.reset(); }

    // --- captions, tips, looks ---------------------------------------------------------------------------

    void trazLegendasEDicas_data()
    {
        QTest::addColumn<QString>("nome");
        QTest::addColumn<QString>("legenda");
        QTest::addColumn<QString>("dica");
        const char *const tabela[][3] = {
            {"txtNome", "", "Nome da Receita"},
            {"cmbTipo", "", "Tipo da Receita (Exemplo: Doces, Massas, ...)"},
            {"fraModo", " Modo de Preparar : ", ""},
            {"txtModo", "", "Modo de Preparar a Receita"},
            {"fraValores", " Valores de Referência :", ""},
            {"txtPorcoes", "", "Número de Rendimentos da Receita"},
            {"txtPreparo", "", "Tempo de Preparo da Receita"},
            {"txtCalorias", "", "Número de Calorias"},
            {"optReceita", "Receita", "Total de Calorias por Receita"},
            {"optPorcao", "Porção", "Total de Calorias por Porção da Receita"},
            {"FraInformacoes", " Informações Adicionais : ", ""},
            {"txtObs", "", "Informações Adicionais da Receita"},
            {"optIngredientes", "Ingredientes", "Visualizar Quadro de Ingredientes da Receita"},
            {"optImagem", "Imagem da Receita", "Visualizar Quadro da Imagem da Receita"},
            {"fraIngredientes", " Ingredientes : ", ""},
            {"txtQtde", "", "Quantidade do Ingrediente"},
            {"cmbMedida", "", "Medida da Quantidade do Ingrediente"},
            {"cmbIngrediente", "", "Nome do Ingrediente"},
            {"cmdSalvarIngredientes", "Salvar &Dados", "Salva Informações do Ingrediente"},
            {"cmdLimparDados", "&Limpar", "Limpar Campos do Ingrediente"},
            {"TrVwIngredientes", "",
             "Clique uma vez no ingrediente para alterar ou selecione o ingrediente e tecle [DEL] para "
             "excluir."},
            {"fraFigura", " Ingredientes : ", ""},
            {"cmdSalvarFig", "Alterar &Imagem", ""},
            {"cmdLimparFig", "&Limpar Imagem", ""},
            {"imgFigura", "", ""},
            {"cmdSalvarRct", "&Salvar Receita", "Salva Informações da Receita"},
            {"cmdExcluirRct", "&Excluir Receita", "Exclusão da Receita"},
        };
        for (const auto &linha : tabela)
            QTest::newRow(linha[0]) << linha[0] << linha[1] << linha[2];
    }
    void trazLegendasEDicas()
    {
        QFETCH(QString, nome);
        const auto *controle = B().painel->findChild<QWidget *>(nome);
        QVERIFY(controle);
        QTEST(controle->toolTip(), "dica");
        QFETCH(QString, legenda);
        if (const auto *quadro = qobject_cast<const QGroupBox *>(controle))
            QCOMPARE(quadro->title(), legenda);
        else if (const auto *botao = qobject_cast<const QAbstractButton *>(controle))
            QCOMPARE(botao->text(), legenda);
        if (!qobject_cast<const QGroupBox *>(controle))
            QVERIFY(!controle->accessibleName().isEmpty());
    }

    void trazOsRotulos()
    {
        QStringList rotulos;
        for (const QLabel *rotulo : B().painel->findChildren<QLabel *>("lblGeral"))
            rotulos += rotulo->text();
        for (const char *texto : {"Rendimento :", "porção(ões)", "Tempo Preparo :", "Calorias da",
                                  "Qtde.:", "Medida :", "Ingrediente :"})
            QVERIFY2(rotulos.contains(texto), texto);
    }

    void usaVerdana()
    {
        for (const QWidget *w : Visiveis())
            QCOMPARE(w->font().family(), "Verdana");
        QCOMPARE(B().Campo("txtNome")->font().pointSizeF(), 8.25);
    }

    void escondeOsCamposDeServico()
    {
        QCOMPARE(B().painel->objectName(), "picDetReceita");
        QVERIFY(!B().Campo("txtNroReceita")->isVisible());
        QVERIFY(!B().Campo("txtTipoRect")->isVisible());
        QVERIFY(!B().Controle("imgNada")->isVisible());
        QVERIFY(B().Campo("txtOrigem")->isReadOnly());
    }

    void nenhumTextoFicaCortado_data()
    {
        QTest::addColumn<bool>("imagem");
        QTest::addColumn<int>("altura");
        QTest::newRow("ingredientes") << false << 6540;
        QTest::newRow("imagem") << true << 6540;
        QTest::newRow("ingredientes sob a pesquisa") << false << 3780;
        QTest::newRow("imagem sob a pesquisa") << true << 3780;
    }
    void nenhumTextoFicaCortado()
    {
        QFETCH(bool, imagem);
        QFETCH(int, altura);
        const QString figura = B().CriarFigura("a.bmp", Qt::red, "BMP");
        B().EntrarLinha("1", "kg", "sal");
        B().ClicarNo(B().Linha(0)); // shows "Limpar"
        B().seletor.resposta = figura;
        B().Clicar("optImagem");
        B().Clicar("cmdSalvarFig"); // shows "Limpar Imagem"
        B().Clicar(imagem ? "optImagem" : "optIngredientes");
        B().painel->DefinirAltura(altura);
        QCoreApplication::processEvents();
        int vistos = 0;
        for (const QWidget *w : Visiveis()) {
            if (qobject_cast<const QAbstractButton *>(w) || w->objectName() == "lblGeral") {
                QVERIFY2(w->width() >= w->sizeHint().width() && w->height() >= w->fontMetrics().height(),
                         qPrintable(w->objectName()));
                ++vistos;
            } else if (qobject_cast<const QLineEdit *>(w) || qobject_cast<const QComboBox *>(w)) {
                QVERIFY2(w->height() >= w->fontMetrics().height() + 4, qPrintable(w->objectName()));
            }
        }
        QVERIFY(vistos > 12);
        const auto *rolagem = B().Controle<QScrollArea>("rolagemDetReceita");
        QVERIFY(rolagem->widget()->minimumSizeHint().width() <= rolagem->viewport()->width());
        QVERIFY(rolagem->widget()->width() <= rolagem->viewport()->width());
        QVERIFY(rolagem->widget()->minimumSizeHint().height() <= TwipsParaPixels(PainelEditor::kAltura));
    }

    void asTeclasDeAcessoSaoUnicas_data()
    {
        QTest::addColumn<bool>("imagem");
        QTest::newRow("ingredientes") << false;
        QTest::newRow("imagem") << true;
    }
    void asTeclasDeAcessoSaoUnicas()
    {
        QFETCH(bool, imagem);
        B().EntrarLinha("1", "kg", "sal");
        B().ClicarNo(B().Linha(0));
        B().seletor.resposta = B().CriarFigura("a.bmp", Qt::red, "BMP");
        B().Clicar("optImagem");
        B().Clicar("cmdSalvarFig");
        B().Clicar(imagem ? "optImagem" : "optIngredientes");
        QStringList teclas;
        for (const QWidget *w : Visiveis()) {
            if (const auto *botao = qobject_cast<const QAbstractButton *>(w);
                botao && !botao->shortcut().isEmpty())
                teclas += botao->shortcut().toString();
        }
        teclas.sort();
        QCOMPARE(teclas, imagem ? QStringList({"Alt+E", "Alt+I", "Alt+L", "Alt+S"})
                                : QStringList({"Alt+D", "Alt+E", "Alt+L", "Alt+S"}));
    }

    void oTabPercorreOsCampos()
    {
        B().painel->setFocus();
        QStringList caminho;
        for (int i = 0; i < 15; ++i) {
            caminho += QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(caminho, QStringList({"txtNome", "cmbTipo", "txtModo", "txtObs", "txtPorcoes", "txtPreparo",
                                       "optReceita", "txtCalorias", "optIngredientes", "txtQtde", "cmbMedida",
                                       "cmbIngrediente", "cmdSalvarIngredientes", "TrVwIngredientes",
                                       "cmdSalvarRct"}));
    }

    void asSetasEscolhemEntreAsOpcoes()
    {
        B().Controle("optReceita")->setFocus();
        B().Tecla("optReceita", Qt::Key_Space);
        QVERIFY(B().Controle<QRadioButton>("optReceita")->isChecked());
        B().Tecla("optReceita", Qt::Key_Right);
        QVERIFY(B().Controle<QRadioButton>("optPorcao")->isChecked());
        QVERIFY(!B().Controle<QRadioButton>("optReceita")->isChecked());
    }

    void trocaOQuadroPelasOpcoes()
    {
        QVERIFY(B().Controle("fraIngredientes")->isVisible());
        QVERIFY(!B().Controle("fraFigura")->isVisible());
        const QRect lugar = B().Controle("fraIngredientes")->geometry();
        B().Clicar("optImagem");
        QCoreApplication::processEvents();
        QVERIFY(!B().Controle("fraIngredientes")->isVisible());
        QVERIFY(B().Controle("fraFigura")->isVisible());
        QCOMPARE(B().Controle("fraFigura")->geometry(), lugar);
        B().Clicar("optIngredientes");
        QVERIFY(B().Controle("fraIngredientes")->isVisible());
        QVERIFY(!B().Controle("fraFigura")->isVisible());
    }

    // --- under the search panel --------------------------------------------------------------------------

    void rolaSoSobAPesquisa()
    {
        const auto *barra = B().Controle<QScrollArea>("rolagemDetReceita")->verticalScrollBar();
        B().painel->DefinirAltura(6540);
        QCoreApplication::processEvents();
        QVERIFY(!barra->isVisible());
        B().painel->DefinirAltura(3780);
        QCoreApplication::processEvents();
        QVERIFY(barra->isVisible());

        // The control that takes the focus comes into view.
        B().Controle("cmdSalvarRct")->setFocus();
        const QWidget *area = B().Controle<QScrollArea>("rolagemDetReceita")->viewport();
        const auto inteiro = [&](const char *nome) {
            const QWidget *w = B().Controle(nome);
            return area->rect().contains(QRect(w->mapTo(area, QPoint()), w->size()));
        };
        QVERIFY(inteiro("cmdSalvarRct"));
        QVERIFY(!inteiro("txtNome"));
        B().Clicar("cmdSalvarRct"); // refuses, and the focus goes to the name
        QVERIFY(inteiro("txtNome"));
        B().painel->DefinirAltura(6540);
        QCoreApplication::processEvents();
        QVERIFY(!barra->isVisible());
        QVERIFY(inteiro("txtNome") && inteiro("cmdSalvarRct"));
    }

    void oControleComOFocoFicaAVistaQuandoOPainelEncolhe()
    {
        B().Controle("cmdSalvarRct")->setFocus();
        B().painel->DefinirAltura(3780);
        const QWidget *area = B().Controle<QScrollArea>("rolagemDetReceita")->viewport();
        const QWidget *w = B().Controle("cmdSalvarRct");
        QTRY_VERIFY(area->rect().contains(QRect(w->mapTo(area, QPoint()), w->size())));
    }

    void aBarraNaoApareceEnquantoAbre()
    {
        class Espia : public QObject
        {
        public:
            bool eventFilter(QObject *, QEvent *event) override
            {
                vezes += event->type() == QEvent::Show;
                return false;
            }
            int vezes = 0;
        } espia;
        auto *rolagem = B().Controle<QScrollArea>("rolagemDetReceita");
        rolagem->verticalScrollBar()->installEventFilter(&espia);
        const int altura = rolagem->widget()->height();
        QVERIFY(B().painel->Rolar(6540));
        QCOMPARE(espia.vezes, 0);
        QCOMPARE(rolagem->widget()->height(), altura);
        QCOMPARE(B().painel->height(), 436);
    }

    void camposCobertosNaoRespondem()
    {
        QVERIFY(B().Controle("cmdSalvarRct")->isVisible());
        B().painel->MostrarCampos(false);
        QVERIFY(!B().Controle("cmdSalvarRct")->isVisible());
        QTest::keyClick(&B().janela, Qt::Key_S, Qt::AltModifier);
        QVERIFY(B().avisos.avisos.isEmpty());
        B().painel->MostrarCampos(true);
        QTest::keyClick(&B().janela, Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(B().avisos.avisos, QStringList("Por Favor, Informe o Nome da Receita!"));
    }

    // --- keystroke filter --------------------------------------------------------------------------------

    void filtraOApostrofo_data()
    {
        QTest::addColumn<QString>("nome");
        for (const char *nome : {"txtNome", "txtPreparo", "txtQtde", "cmbTipo", "cmbMedida", "cmbIngrediente",
                                 "txtModo", "txtObs"})
            QTest::newRow(nome) << nome;
    }
    void filtraOApostrofo()
    {
        QFETCH(QString, nome);
        const QByteArray n = nome.toUtf8();
        const auto texto = [&] {
            if (const auto *combo = B().painel->findChild<QComboBox *>(nome))
                return combo->currentText();
            if (const auto *campo = B().painel->findChild<QLineEdit *>(nome))
                return campo->text();
            return B().Memo(n.constData())->Texto();
        };
        B().Digitar(n.constData(), "d'ajuda");
        QCOMPARE(texto(), "dajuda");
        B().Tecla(n.constData(), Qt::Key_Return);
        B().Tecla(n.constData(), Qt::Key_Enter);
        QCOMPARE(texto(), "dajuda");
        B().Colar(n.constData(), " d'água");
        QCOMPARE(texto(), "dajuda d'água");
    }

    void camposNumericosSoGuardamNumeros_data()
    {
        QTest::addColumn<QString>("nome");
        QTest::addColumn<QString>("digitado");
        QTest::addColumn<QString>("texto");
        for (const char *nome : {"txtCalorias", "txtPorcoes"}) {
            QTest::addRow("%s vírgula", nome) << nome << "1,5"
                                              << "1,5";
            QTest::addRow("%s ponto", nome) << nome << "1.5"
                                            << "15";
            QTest::addRow("%s letras", nome) << nome << "a1b2'"
                                             << "12";
            QTest::addRow("%s menos em qualquer lugar", nome) << nome << "-1-2-"
                                                              << "-1-2-";
        }
    }
    void camposNumericosSoGuardamNumeros()
    {
        QFETCH(QString, nome);
        QFETCH(QString, digitado);
        B().Digitar(nome.toUtf8().constData(), digitado);
        QTEST(B().painel->findChild<QLineEdit *>(nome)->text(), "texto");
    }

    void limitaOsCamposSimples_data()
    {
        QTest::addColumn<QString>("nome");
        QTest::addColumn<int>("limite");
        QTest::newRow("txtNome") << "txtNome" << 100;
        QTest::newRow("txtPreparo") << "txtPreparo" << 50;
        QTest::newRow("txtQtde") << "txtQtde" << 20;
        QTest::newRow("txtPorcoes") << "txtPorcoes" << 9;
        QTest::newRow("txtCalorias") << "txtCalorias" << 9;
    }
    void limitaOsCamposSimples()
    {
        QFETCH(QString, nome);
        QFETCH(int, limite);
        B().Digitar(nome.toUtf8().constData(), QString(limite + 5, '7'));
        QCOMPARE(B().painel->findChild<QLineEdit *>(nome)->text().size(), limite);
    }

    void colarVariasLinhasViraUmaSo()
    {
        QCOMPARE(EmUmaLinha("a\r\nb\tc\u2028\nd"), "a b c d");
        B().Colar("txtNome", "Bolo\r\nde\tfubá");
        QCOMPARE(B().Campo("txtNome")->text(), "Bolo de fubá");
        QCOMPARE(B().Campo("txtNome")->cursorPosition(), 12);
        B().Colar("cmbIngrediente", "farinha\nde r");
        QCOMPARE(Texto("cmbIngrediente"), "farinha de rosca");
        QCOMPARE(Selecionado("cmbIngrediente"), "osca");
    }

    // --- completion --------------------------------------------------------------------------------------

    void completaOTipoDigitado()
    {
        B().Digitar("cmbTipo", "ma");
        QCOMPARE(Texto("cmbTipo"), "massas");
        QCOMPARE(Selecionado("cmbTipo"), "ssas");
        B().Digitar("cmbTipo", "x");
        QCOMPARE(Texto("cmbTipo"), "max");
        QCOMPARE(Selecionado("cmbTipo"), "");
    }

    void continuarDigitandoChegaAoItemSeguinte()
    {
        B().Digitar("cmbTipo", "massas ");
        QCOMPARE(Texto("cmbTipo"), "massas Finas");
        QCOMPARE(Selecionado("cmbTipo"), "Finas");
    }

    void completaCadaUmaDasTresListas()
    {
        B().Digitar("cmbMedida", "X");
        QCOMPARE(Texto("cmbMedida"), "Xícaras");
        B().Digitar("cmbIngrediente", "Ó");
        QCOMPARE(Texto("cmbIngrediente"), "Óleo");
        B().Combo("cmbIngrediente")->DefinirTexto("");
        B().Digitar("cmbIngrediente", "o");
        QCOMPARE(Texto("cmbIngrediente"), "o"); // accents are kept apart
    }

    void backspaceTiraARestanteENaoCompletaDeNovo()
    {
        B().Digitar("cmbTipo", "mas");
        QCOMPARE(Texto("cmbTipo"), "massas");
        B().Tecla("cmbTipo", Qt::Key_Backspace);
        QCOMPARE(Texto("cmbTipo"), "mas");
        B().Tecla("cmbTipo", Qt::Key_Backspace);
        QCOMPARE(Texto("cmbTipo"), "ma");
        B().Digitar("cmbTipo", "s");
        QCOMPARE(Texto("cmbTipo"), "massas");
        B().Tecla("cmbTipo", Qt::Key_Delete);
        QCOMPARE(Texto("cmbTipo"), "mas");
    }

    void apagarNumaListaCalaAProximaMudancaDeOutra()
    {
        B().Digitar("cmbMedida", "co");
        QCOMPARE(Texto("cmbMedida"), "colher");
        B().Tecla("cmbMedida", Qt::Key_End);
        B().Tecla("cmbMedida", Qt::Key_Delete); // deletes nothing: the note stays for the next change
        B().Digitar("cmbTipo", "m");
        QCOMPARE(Texto("cmbTipo"), "m");
        B().Digitar("cmbTipo", "a");
        QCOMPARE(Texto("cmbTipo"), "massas");
    }

    void esvaziarOCampoVoltaACompletar()
    {
        B().Digitar("cmbTipo", "d");
        QCOMPARE(Texto("cmbTipo"), "doces");
        B().Tecla("cmbTipo", Qt::Key_A, Qt::ControlModifier);
        B().Tecla("cmbTipo", Qt::Key_Backspace);
        QCOMPARE(Texto("cmbTipo"), "");
        B().Digitar("cmbTipo", "d");
        QCOMPARE(Texto("cmbTipo"), "doces");
    }

    void recortarTudoNaoPropoeNada()
    {
        B().Digitar("cmbTipo", "d");
        B().Tecla("cmbTipo", Qt::Key_A, Qt::ControlModifier);
        B().Tecla("cmbTipo", Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(Texto("cmbTipo"), "");
    }

    void textoInteiroNaoTemOQueCompletar()
    {
        B().Digitar("cmbTipo", "MASSAS");
        QCOMPARE(Texto("cmbTipo"), "MASSAS");
        QCOMPARE(Selecionado("cmbTipo"), "");
    }

    void colarTambemCompleta()
    {
        B().Colar("cmbIngrediente", "farinha de");
        QCOMPARE(Texto("cmbIngrediente"), "farinha de rosca");
        QCOMPARE(Selecionado("cmbIngrediente"), " rosca");
    }

    // The missing letters go where the cursor is, wherever that is.
    void completaOndeEstaOCursor()
    {
        B().Combo("cmbTipo")->DefinirItens({"Massas Finas"});
        B().Combo("cmbTipo")->DefinirTexto("assas");
        B().Tecla("cmbTipo", Qt::Key_Home);
        B().Digitar("cmbTipo", "M");
        QCOMPARE(Texto("cmbTipo"), "M Finasassas");
        QCOMPARE(Selecionado("cmbTipo"), "sassas");
    }

    void textoDoProgramaNaoECompletado()
    {
        B().Combo("cmbTipo")->DefinirTexto("Mas");
        QCOMPARE(Texto("cmbTipo"), "Mas");
        B().Combo("cmbTipo")->DefinirItens({"Massas"});
        QCOMPARE(Texto("cmbTipo"), "Mas");
    }

    void desfazerNaoCompletaDeNovo()
    {
        B().Combo("cmbTipo")->DefinirTexto("Mas");
        B().Tecla("cmbTipo", Qt::Key_End);
        B().Digitar("cmbTipo", "x");
        QCOMPARE(Texto("cmbTipo"), "Masx");
        B().Tecla("cmbTipo", Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(Texto("cmbTipo"), "Mas");
        B().Digitar("cmbTipo", "s");
        QCOMPARE(Texto("cmbTipo"), "Massas");
    }

    void acentoMortoContaComoUmaTecla()
    {
        B().Digitar("cmbIngrediente", "far");
        QCOMPARE(Texto("cmbIngrediente"), "farinha");
        B().Combo("cmbIngrediente")->DefinirTexto("");
        // The accent waits as a composition; the letter ends it.
        QInputMethodEvent espera("´", {});
        QApplication::sendEvent(B().Combo("cmbIngrediente"), &espera);
        QCOMPARE(Texto("cmbIngrediente"), "");
        QInputMethodEvent letra;
        letra.setCommitString("ó");
        QApplication::sendEvent(B().Combo("cmbIngrediente"), &letra);
        QCOMPARE(Texto("cmbIngrediente"), "óleo");
        QCOMPARE(Selecionado("cmbIngrediente"), "leo");
        QInputMethodEvent outra;
        outra.setCommitString("ã");
        QApplication::sendEvent(B().Combo("cmbIngrediente"), &outra);
        QCOMPARE(Texto("cmbIngrediente"), "óã");
    }

    void itemNovoEntraNaProcura()
    {
        B().Combo("cmbTipo")->AdicionarItem("Zarzuelas");
        B().Digitar("cmbTipo", "za");
        QCOMPARE(Texto("cmbTipo"), "zarzuelas");
    }

    void completaEmListasGrandes()
    {
        QStringList itens;
        for (int i = 0; i < 190000; ++i)
            itens += QString("Ingrediente %1").arg(i, 6, 10, QChar('0'));
        B().Combo("cmbIngrediente")->DefinirItens(itens);
        B().Digitar("cmbIngrediente", "ingrediente 18999");
        QCOMPARE(Texto("cmbIngrediente"), "ingrediente 189990");
        B().Combo("cmbIngrediente")->AdicionarItem("Último");
        B().Combo("cmbIngrediente")->DefinirTexto("");
        B().Digitar("cmbIngrediente", "ú");
        QCOMPARE(Texto("cmbIngrediente"), "último");
    }

    // --- length limits -----------------------------------------------------------------------------------

    void oLimiteRecusaTodaTecla_data()
    {
        QTest::addColumn<QString>("nome");
        QTest::addColumn<int>("limite");
        QTest::newRow("cmbTipo") << "cmbTipo" << 30;
        QTest::newRow("cmbMedida") << "cmbMedida" << 20;
        QTest::newRow("cmbIngrediente") << "cmbIngrediente" << 40;
    }
    void oLimiteRecusaTodaTecla()
    {
        QFETCH(QString, nome);
        QFETCH(int, limite);
        const QByteArray n = nome.toUtf8();
        QSignalSpy bipes(B().Combo(n.constData()), SIGNAL(teclaRecusada()));
        const QString cheio(limite, 'w');
        B().Digitar(n.constData(), cheio);
        QCOMPARE(Texto(n.constData()), cheio);
        QCOMPARE(bipes.size(), 0);
        B().Digitar(n.constData(), "w");
        QCOMPARE(bipes.size(), 1);
        B().Tecla(n.constData(), Qt::Key_Backspace);
        QCOMPARE(bipes.size(), 2);
        B().Colar(n.constData(), "mais");
        QCOMPARE(bipes.size(), 3);
        QInputMethodEvent composicao;
        composicao.setCommitString("é");
        QApplication::sendEvent(B().Combo(n.constData()), &composicao);
        QCOMPARE(bipes.size(), 4);
        QCOMPARE(Texto(n.constData()), cheio);

        // Keys that type nothing are no key presses: they work.
        B().Tecla(n.constData(), Qt::Key_Home);
        B().Tecla(n.constData(), Qt::Key_Delete);
        QCOMPARE(Texto(n.constData()).size(), limite - 1);
        QCOMPARE(bipes.size(), 4);
        B().Tecla(n.constData(), Qt::Key_Backspace);
        B().Digitar(n.constData(), "a");
        QCOMPARE(Texto(n.constData()), "a" + QString(limite - 1, 'w'));
    }

    void colarAlemDoLimiteECortadoAoSair()
    {
        const QString cinquenta = QString("0123456789").repeated(5);
        B().Controle("cmbIngrediente")->setFocus();
        B().Colar("cmbIngrediente", cinquenta);
        QCOMPARE(Texto("cmbIngrediente"), cinquenta);
        B().Controle("txtQtde")->setFocus();
        QCOMPARE(Texto("cmbIngrediente"), cinquenta.left(40));
    }

    void aTeclaDeAcessoTambemCorta()
    {
        B().Controle("cmbIngrediente")->setFocus();
        B().Colar("cmbIngrediente", QString(50, 'q'));
        QTest::keyClick(B().Controle("cmbIngrediente"), Qt::Key_D, Qt::AltModifier);
        QTRY_COMPARE(B().TextosDaArvore(), QStringList({"Ingredientes Cadastrados", QString(40, 'q')}));
    }

    void naoCortaUmCaractereAoMeio()
    {
        B().Controle("cmbMedida")->setFocus();
        B().Colar("cmbMedida", QString(19, 'x') + "😋😋");
        B().Controle("txtQtde")->setFocus();
        QCOMPARE(Texto("cmbMedida"), QString(19, 'x'));
    }

    void completarAlemDoLimiteECortadoAoSair()
    {
        B().Combo("cmbMedida")->DefinirItens({"colher de sopa bem cheia"});
        B().Controle("cmbMedida")->setFocus();
        B().Digitar("cmbMedida", "col");
        QCOMPARE(Texto("cmbMedida"), "colher de sopa bem cheia");
        B().Controle("txtQtde")->setFocus();
        QCOMPARE(Texto("cmbMedida"), "colher de sopa bem c");
    }

    void aRodaSoMudaAListaComOFoco()
    {
        B().Combo("cmbTipo")->setCurrentIndex(0);
        B().Controle("txtNome")->setFocus();
        const auto girar = [&] {
            QWheelEvent roda(QPointF(5, 5), B().Combo("cmbTipo")->mapToGlobal(QPointF(5, 5)), {},
                             QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(B().Combo("cmbTipo"), &roda);
        };
        girar();
        QCOMPARE(Texto("cmbTipo"), "Doces");
        B().Controle("cmbTipo")->setFocus();
        girar();
        QCOMPARE(Texto("cmbTipo"), "Massas");
    }

    // --- filling the lists -------------------------------------------------------------------------------

    void encheAsListasDoLivro_data()
    {
        QTest::addColumn<int>("bytTipo");
        QTest::addColumn<bool>("tipos");
        QTest::addColumn<bool>("outros");
        QTest::newRow("0: todas") << 0 << true << true;
        QTest::newRow("1: ingredientes e medidas") << 1 << false << true;
        QTest::newRow("2: nenhuma") << 2 << false << false;
    }
    void encheAsListasDoLivro()
    {
        QFETCH(int, bytTipo);
        QFETCH(bool, tipos);
        QFETCH(bool, outros);
        for (const char *tipo : {"'Tortas'", "'Aves'", "NULL", "'Tortas'"})
            B().banco.ExecutarSQL(
                QString("Insert into Receitas(Nome,Modo,Classificacao,Porcoes,Calorias) values "
                        "('a','b',%1,0,0)")
                    .arg(tipo));
        for (const char *linha : {"'sal',NULL", "'água','ml'", "'Sal','g'"})
            B().banco.ExecutarSQL(
                QString("Insert into Ingredientes(id_receitas,Ingrediente,Unidade) values (1,%1)")
                    .arg(linha));
        B().Combo("cmbTipo")->DefinirTexto("meu texto");
        B().painel->CarregarValoresDetalheReceita(static_cast<quint8>(bytTipo));
        QCOMPARE(B().Combo("cmbTipo")->Itens().contains("Aves"), tipos);
        if (tipos)
            QCOMPARE(B().Combo("cmbTipo")->Itens(), QStringList({"Aves", "Tortas"}));
        QCOMPARE(Texto("cmbTipo"), "meu texto");
        QCOMPARE(B().Combo("cmbIngrediente")->Itens(),
                 outros ? QStringList({"água", "sal"})
                        : QStringList({"farinha", "farinha de rosca", "óleo"}));
        QCOMPARE(B().Combo("cmbMedida")->Itens(),
                 outros ? QStringList({"g", "ml"}) : QStringList({"colher", "xícaras"}));
    }

    void erroDoBancoDeixaAsListasComoEstavam()
    {
        QFile arquivo(B().banco.Caminho("dadosr.lst"));
        QVERIFY(arquivo.open(QIODevice::WriteOnly));
        arquivo.write("not a database at all, but long enough to be looked at");
        arquivo.close();
        QVERIFY_EXCEPTION_THROWN(B().painel->CarregarValoresDetalheReceita(0), ErroBanco);
        QCOMPARE(B().Combo("cmbMedida")->Itens(), QStringList({"colher", "xícaras"}));
        QCOMPARE(B().Combo("cmbTipo")->Itens().size(), 4);
    }
};

QTEST_MAIN(TesteEditorCampos)
#include "teste_editor_campos.moc"
