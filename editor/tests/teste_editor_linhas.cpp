#include "editor/tests/Bancada.h"

#include <memory>

class TesteEditorLinhas : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<Bancada> m_b;
    Bancada &B() { return *m_b; }

    QStringList Campos()
    {
        return {B().Campo("txtQtde")->text(), B().Combo("cmbMedida")->currentText(),
                B().Combo("cmbIngrediente")->currentText()};
    }
    bool LimparVisivel() { return B().Controle("cmdLimparDados")->isVisible(); }
    QString Foco()
    {
        return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
    }

    void TresLinhas()
    {
        B().EntrarLinha("2", "xícaras", "farinha");
        B().EntrarLinha("3", "", "ovos");
        B().EntrarLinha("", "", "sal");
    }

private slots:
    void init() { m_b = std::make_unique<Bancada>(); }
    void cleanup() { m_b.reset(); }

    void comecaSoComARaiz()
    {
        QCOMPARE(B().ChavesDaArvore(), QStringList("R"));
        QCOMPARE(B().TextosDaArvore(), QStringList("Ingredientes Cadastrados"));
        QVERIFY(!B().Arvore()->topLevelItem(0)->data(0, Qt::UserRole + 1).isValid());
        QCOMPARE(B().Arvore()->topLevelItemCount(), 1);
        QVERIFY(!LimparVisivel());
    }

    void entraLinhasNaOrdem()
    {
        TresLinhas();
        QCOMPARE(B().ChavesDaArvore(), QStringList({"R", "C1", "C2", "C3"}));
        QCOMPARE(B().TextosDaArvore(),
                 QStringList({"Ingredientes Cadastrados", "2 xícaras farinha", "3 ovos", "sal"}));
        QCOMPARE(B().Linha(0)->data(0, Qt::UserRole + 1).toString(), Tag("2|xícaras|farinha"));
        QCOMPARE(B().Linha(1)->data(0, Qt::UserRole + 1).toString(), Tag("3||ovos"));
        QCOMPARE(B().Linha(2)->data(0, Qt::UserRole + 1).toString(), Tag("||sal"));
        QCOMPARE(B().painel->DadosDaTela().ingredientes,
                 QStringList({Tag("2|xícaras|farinha"), Tag("3||ovos"), Tag("||sal")}));
    }

    void depoisDeEntrarFicaProntoParaAProxima()
    {
        B().EntrarLinha("2", "xícaras", "farinha");
        QCOMPARE(Campos(), QStringList({"", "", ""}));
        QCOMPARE(Foco(), "cmbIngrediente");
        QVERIFY(!LimparVisivel());
    }

    void aLinhaNovaFicaAVista()
    {
        for (int i = 1; i <= 30; ++i)
            B().EntrarLinha(QString::number(i), "", "ovos");
        const QRect lugar = B().Arvore()->visualItemRect(B().Linha(29));
        QVERIFY(B().Arvore()->viewport()->rect().contains(lugar.center()));
    }

    void recusaLinhaSemIngrediente_data()
    {
        QTest::addColumn<QString>("ingrediente");
        QTest::newRow("vazio") << "";
        QTest::newRow("só brancos") << "   ";
        QTest::newRow("só brancos inseparáveis") << "\u00A0";
    }
    void recusaLinhaSemIngrediente()
    {
        QFETCH(QString, ingrediente);
        B().Digitar("txtQtde", "2");
        B().Digitar("cmbMedida", "kg");
        B().Combo("cmbIngrediente")->DefinirTexto(ingrediente);
        B().Clicar("cmdSalvarIngredientes");
        QCOMPARE(B().avisos.avisos, QStringList("Por Favor, Informe o Ingrediente!"));
        QCOMPARE(B().avisos.ultimoIcone, Avisos::Icone::Exclamacao);
        QCOMPARE(Foco(), "cmbIngrediente");
        QCOMPARE(Campos(), QStringList({"2", "kg", ingrediente}));
        QCOMPARE(B().ChavesDaArvore(), QStringList("R"));
    }

    void valoresNovosEntramNasListas()
    {
        B().Combo("cmbIngrediente")->DefinirItens({"Farinha"});
        B().Combo("cmbMedida")->DefinirItens({"kg"});
        B().EntrarLinha("1", " lata ", " Milho ");
        B().EntrarLinha("1", "KG", "FARINHA");
        B().EntrarLinha("1", "", "sal");
        QCOMPARE(B().Combo("cmbIngrediente")->Itens(), QStringList({"Farinha", "Milho", "sal"}));
        QCOMPARE(B().Combo("cmbMedida")->Itens(), QStringList({"kg", "lata"}));
        B().Digitar("cmbIngrediente", "mi");
        QCOMPARE(B().Combo("cmbIngrediente")->currentText(), "milho");
    }

    void itemEscolhidoDaListaNaoEAcrescentado()
    {
        B().Combo("cmbIngrediente")->DefinirItens({"sal"});
        B().Combo("cmbIngrediente")->setCurrentIndex(0);
        B().Clicar("cmdSalvarIngredientes");
        QCOMPARE(B().Combo("cmbIngrediente")->Itens(), QStringList("sal"));
        QCOMPARE(B().TextosDaArvore().value(1), "sal");
    }

    void cliqueEscolheALinhaParaAlterar()
    {
        TresLinhas();
        B().ClicarNo(B().Linha(0));
        QCOMPARE(Campos(), QStringList({"2", "xícaras", "farinha"}));
        QVERIFY(LimparVisivel());
        QCOMPARE(Foco(), "cmbIngrediente");
        B().ClicarNo(B().Linha(2));
        QCOMPARE(Campos(), QStringList({"", "", "sal"}));
    }

    void alteraALinhaNoLugar()
    {
        TresLinhas();
        B().ClicarNo(B().Linha(1));
        B().Campo("txtQtde")->clear();
        B().Digitar("txtQtde", "4");
        B().Clicar("cmdSalvarIngredientes");
        QCOMPARE(B().ChavesDaArvore(), QStringList({"R", "C1", "C2", "C3"}));
        QCOMPARE(B().TextosDaArvore().mid(1), QStringList({"2 xícaras farinha", "4 ovos", "sal"}));
        QCOMPARE(B().Linha(1)->data(0, Qt::UserRole + 1).toString(), Tag("4||ovos"));
        QVERIFY(!LimparVisivel());
        QCOMPARE(Foco(), "cmbIngrediente");
        B().EntrarLinha("", "", "açúcar");
        QCOMPARE(B().ChavesDaArvore().last(), "C4");
    }

    void limparAbandonaAAlteracao()
    {
        TresLinhas();
        B().ClicarNo(B().Linha(0));
        B().Clicar("cmdLimparDados");
        QCOMPARE(Campos(), QStringList({"", "", ""}));
        QVERIFY(!LimparVisivel());
        QCOMPARE(Foco(), "cmbIngrediente");
        B().EntrarLinha("", "", "açúcar");
        QCOMPARE(B().TextosDaArvore().mid(1), QStringList({"2 xícaras farinha", "3 ovos", "sal", "açúcar"}));
    }

    void cliqueNaRaizAbandonaAAlteracao()
    {
        TresLinhas();
        B().ClicarNo(B().Linha(0));
        B().ClicarNo(B().Arvore()->topLevelItem(0));
        QCOMPARE(Campos(), QStringList({"", "", ""}));
        QVERIFY(!LimparVisivel());
        QCOMPARE(Foco(), "cmbIngrediente");
        B().EntrarLinha("", "", "açúcar");
        QCOMPARE(B().TextosDaArvore().mid(1), QStringList({"2 xícaras farinha", "3 ovos", "sal", "açúcar"}));
    }

    void oTecladoTambemEscolhe_data()
    {
        QTest::addColumn<int>("tecla");
        QTest::newRow("Enter") << int(Qt::Key_Return);
        QTest::newRow("barra de espaço") << int(Qt::Key_Space);
    }
    void oTecladoTambemEscolhe()
    {
        QFETCH(int, tecla);
        TresLinhas();
        B().Arvore()->setFocus();
        B().Arvore()->setCurrentItem(B().Arvore()->topLevelItem(0));
        B().Tecla("TrVwIngredientes", Qt::Key_Down);
        B().Tecla("TrVwIngredientes", Qt::Key_Down);
        QCOMPARE(Campos(), QStringList({"", "", ""})); // walking by is not choosing
        B().Tecla("TrVwIngredientes", static_cast<Qt::Key>(tecla));
        QCOMPARE(Campos(), QStringList({"3", "", "ovos"}));
        QVERIFY(LimparVisivel());
    }

    void delExcluiALinhaDepoisDoSim()
    {
        TresLinhas();
        B().ClicarNo(B().Linha(1));
        B().Arvore()->setFocus();
        B().avisos.resposta = true;
        B().Tecla("TrVwIngredientes", Qt::Key_Delete);
        QCOMPARE(B().avisos.perguntas, QStringList("Confirma Exclusão desse Ingrediente?"));
        QCOMPARE(B().ChavesDaArvore(), QStringList({"R", "C1", "C3"}));
        QCOMPARE(Campos(), QStringList({"", "", ""}));
        QVERIFY(!LimparVisivel());
        QCOMPARE(Foco(), "cmbIngrediente");
        B().EntrarLinha("", "", "leite");
        QCOMPARE(B().ChavesDaArvore(), QStringList({"R", "C1", "C3", "C4"}));
    }

    void depoisDeExcluirAUltimaANumeracaoSegueDaQueFicou()
    {
        TresLinhas();
        B().ClicarNo(B().Linha(2));
        B().Arvore()->setFocus();
        B().avisos.resposta = true;
        B().Tecla("TrVwIngredientes", Qt::Key_Delete);
        B().EntrarLinha("", "", "leite");
        QCOMPARE(B().ChavesDaArvore(), QStringList({"R", "C1", "C2", "C3"}));
    }

    void naoAPerguntaNadaMuda()
    {
        TresLinhas();
        B().ClicarNo(B().Linha(0));
        B().Arvore()->setFocus();
        B().Tecla("TrVwIngredientes", Qt::Key_Delete);
        QCOMPARE(B().avisos.perguntas.size(), 1);
        QCOMPARE(B().ChavesDaArvore(), QStringList({"R", "C1", "C2", "C3"}));
        QCOMPARE(Campos(), QStringList({"2", "xícaras", "farinha"}));
        QVERIFY(LimparVisivel());
        // The line is still the one being changed.
        B().Clicar("cmdSalvarIngredientes");
        QCOMPARE(B().ChavesDaArvore(), QStringList({"R", "C1", "C2", "C3"}));
    }

    void delNaRaizExcluiTodas()
    {
        TresLinhas();
        B().ClicarNo(B().Arvore()->topLevelItem(0));
        B().Arvore()->setFocus();
        B().Tecla("TrVwIngredientes", Qt::Key_Delete);
        QCOMPARE(B().avisos.perguntas, QStringList("Confirma Exclusão de Todos os Ingredientes?"));
        QCOMPARE(B().ChavesDaArvore().size(), 4);
        B().avisos.resposta = true;
        B().Tecla("TrVwIngredientes", Qt::Key_Delete);
        QCOMPARE(B().ChavesDaArvore(), QStringList("R"));
        QCOMPARE(B().TextosDaArvore(), QStringList("Ingredientes Cadastrados"));
        QCOMPARE(Foco(), "cmbIngrediente");
        B().EntrarLinha("", "", "leite");
        QCOMPARE(B().ChavesDaArvore(), QStringList({"R", "C1"}));
    }

    void umaLinhaComOTextoDaRaizNaoEARaiz()
    {
        B().EntrarLinha("", "", "Ingredientes Cadastrados");
        B().EntrarLinha("", "", "sal");
        B().ClicarNo(B().Linha(0));
        B().Arvore()->setFocus();
        B().avisos.resposta = true;
        B().Tecla("TrVwIngredientes", Qt::Key_Delete);
        QCOMPARE(B().avisos.perguntas, QStringList("Confirma Exclusão desse Ingrediente?"));
        QCOMPARE(B().TextosDaArvore().mid(1), QStringList("sal"));
    }

    void outrasTeclasNaoExcluem()
    {
        TresLinhas();
        B().ClicarNo(B().Linha(0));
        B().Arvore()->setFocus();
        B().avisos.resposta = true;
        B().Tecla("TrVwIngredientes", Qt::Key_Backspace);
        B().Tecla("TrVwIngredientes", Qt::Key_X);
        QVERIFY(B().avisos.perguntas.isEmpty());
        QCOMPARE(B().ChavesDaArvore().size(), 4);
    }

    void delSemNadaSelecionadoNaoPergunta()
    {
        B().Arvore()->clearSelection();
        B().Arvore()->setFocus();
        B().Arvore()->clearSelection();
        B().Tecla("TrVwIngredientes", Qt::Key_Delete);
        QVERIFY(B().avisos.perguntas.isEmpty());
    }

    void brancoInseparavelColadoNaoDivideAEtiqueta()
    {
        B().Colar("txtQtde", "1\u00A0½");
        B().Colar("cmbMedida", "colher\u00A0de\u00A0sopa");
        B().Colar("cmbIngrediente", "óleo\u00A0de\u00A0coco");
        B().Clicar("cmdSalvarIngredientes");
        QCOMPARE(B().Linha(0)->data(0, Qt::UserRole + 1).toString(), Tag("1 ½|colher de sopa|óleo de coco"));
        QCOMPARE(B().TextosDaArvore().value(1), "1 ½ colher de sopa óleo de coco");
        B().ClicarNo(B().Linha(0));
        QCOMPARE(Campos(), QStringList({"1 ½", "colher de sopa", "óleo de coco"}));
    }

    void esquecerLimpaCamposEMarca()
    {
        TresLinhas();
        B().ClicarNo(B().Linha(0));
        B().painel->EsquecerLinhaEmEdicao();
        QCOMPARE(Campos(), QStringList({"", "", ""}));
        QVERIFY(!LimparVisivel());
        B().EntrarLinha("", "", "leite");
        QCOMPARE(B().ChavesDaArvore().size(), 5);
    }

    void quantidadeLongaDeFora()
    {
        B().banco.ExecutarSQL("Insert into Receitas(Nome,Modo,Porcoes,Calorias) values ('a','b',0,0)");
        B().banco.ExecutarSQL(
            "Insert into Ingredientes(id_receitas,Ingrediente,Quantidade) values (1,'sal','mais "
            "ou menos umas duas pitadas')");
        B().painel->Carregar(1);
        B().ClicarNo(B().Linha(0));
        QCOMPARE(B().Campo("txtQtde")->text(), "mais ou menos umas duas pitadas");
        B().Clicar("cmdLimparDados");
        B().Digitar("txtQtde", QString(30, '1'));
        QCOMPARE(B().Campo("txtQtde")->text().size(), 20);
    }
};

QTEST_MAIN(TesteEditorLinhas)
#include "teste_editor_linhas.moc"
