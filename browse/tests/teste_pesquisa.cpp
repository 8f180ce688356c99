#include "base/CampoTexto.h"
#include "base/Separadores.h"
#include "browse/tests/Apoio.h"
#include "store/ErroBanco.h"

#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QTest>

class TestePesquisa : public QObject
{
    Q_OBJECT

    static void Escrever(Bancada &b, const char *campo, const QString &texto)
    {
        Teclar(b.Controle<QWidget>(campo), texto);
    }
    static void Pesquisar(Bancada &b)
    {
        QTest::mouseClick(b.Controle<QPushButton>("cmdPesquisa"), Qt::LeftButton);
    }
    static void Abrir(Bancada &b)
    {
        b.lista->imgLstRcta_Click();
        b.pesquisa->imgPesRcta_Click();
    }

private slots:
    void initTestCase() { Separadores::Definir({u',', u'.'}); }

    void camposTemNomesEDicas()
    {
        Bancada b;
        const QList<QPair<QString, QString>> dicas{
            {"txtPesNome", "Nome da Receita para Pesquisa"},
            {"cmbPesTipo", "Seleção por Tipo de Receita"},
            {"cmbPesOrigem", "Seleção de Origem ou Pacote da Receita"},
            {"cmbPesIngrediente", "Seleção por Ingrediente da Receita"},
            {"chkPesFoto", "Filtro de Receita só com Imagens"},
            {"txtPesCalorias", "Filtro pela Quantidade de Calorias da Receita"},
            {"txtPesPreparo", "Filtro pelo Tempo de Preparo da Receita"},
            {"cmdPesquisa", "Executar Pesquisa"}};
        for (const auto &[nome, dica] : dicas) {
            auto *controle = b.pesquisa->findChild<QWidget *>(nome);
            QVERIFY2(controle, qPrintable(nome));
            QCOMPARE(controle->toolTip(), dica);
            QVERIFY(!controle->accessibleName().isEmpty());
        }
        QStringList rotulos;
        for (const QLabel *rotulo : b.pesquisa->findChildren<QLabel *>("lblgeral"))
            rotulos += rotulo->text();
        QCOMPARE(rotulos, (QStringList{"Nome da Receita :", "Tipo :", "Origem / Pacote :", "Ingrediente :",
                                       "Tempo Preparo :", "Até :", "calorias"}));
        QCOMPARE(b.Controle<QCheckBox>("chkPesFoto")->text(), "Somente com Imagem");
        QCOMPARE(b.Controle<QPushButton>("cmdPesquisa")->text(), "Efetuar &Pesquisa");
        QCOMPARE(b.pesquisa->size(), QSize(622, 252));
    }

    void tabulacaoSegueOsOlhos()
    {
        Bancada b;
        Abrir(b);
        for (const char *nome : {"txtPesNome", "cmbPesTipo", "cmbPesOrigem", "cmbPesIngrediente",
                                 "txtPesPreparo", "txtPesCalorias", "chkPesFoto", "cmdPesquisa"}) {
            auto *controle = b.Controle<QWidget>(nome);
            QVERIFY2(controle->hasFocus(), nome);
            QTest::keyClick(controle, Qt::Key_Tab);
        }
    }

    void abrirEncheAsListasERola()
    {
        Bancada b;
        b.livro.Guardar(
            {.nome = "A", .classificacao = "Massas", .origem = "Bahia", .ingredientes = {"1|-|sal"}});
        b.livro.Guardar({.nome = "B", .classificacao = "Doces", .ingredientes = {"1|-|sal", "2|-|Alho"}});
        Abrir(b);
        QCOMPARE(b.Controle<ComboTexto>("cmbPesTipo")->Itens(), (QStringList{"", "Doces", "Massas"}));
        QCOMPARE(b.Controle<ComboTexto>("cmbPesOrigem")->Itens(), (QStringList{"", "Bahia"}));
        QCOMPARE(b.Controle<ComboTexto>("cmbPesIngrediente")->Itens(), (QStringList{"", "Alho", "sal"}));
        QCOMPARE(b.telas.pedidos, (QStringList{"ListaReceitas", "PesquisaReceitas"}));
        QCOMPARE(b.pesquisa->Altura(), 3780);
        QVERIFY(b.Controle<QWidget>("txtPesNome")->hasFocus());
    }

    void reabrirMantemOsTextosDosCombos()
    {
        Bancada b;
        b.livro.Guardar({.nome = "A", .classificacao = "Massas", .ingredientes = {"1|-|sal"}});
        Abrir(b);
        Escrever(b, "cmbPesTipo", "Massas");
        Escrever(b, "cmbPesOrigem", "Inexistente");
        Escrever(b, "cmbPesIngrediente", "alh");
        b.telas.FecharTela();
        b.livro.Guardar({.nome = "B", .classificacao = "Aves"});
        b.pesquisa->imgPesRcta_Click();
        QCOMPARE(b.Controle<ComboTexto>("cmbPesTipo")->currentText(), "Massas");
        QCOMPARE(b.Controle<ComboTexto>("cmbPesOrigem")->currentText(), "Inexistente");
        QCOMPARE(b.Controle<ComboTexto>("cmbPesIngrediente")->currentText(), "alh");
        QCOMPARE(b.Controle<ComboTexto>("cmbPesTipo")->Itens(), (QStringList{"", "Aves", "Massas"}));
    }

    void camposFiltramAsTeclas()
    {
        Bancada b;
        Abrir(b);
        for (const char *campo : {"cmbPesTipo", "cmbPesOrigem", "cmbPesIngrediente"}) {
            Escrever(b, campo, "d'água");
            QCOMPARE(b.Controle<ComboTexto>(campo)->currentText(), "dágua");
        }
        Escrever(b, "txtPesNome", "d'água");
        QCOMPARE(b.Controle<QLineEdit>("txtPesNome")->text(), "dágua");
        Escrever(b, "txtPesPreparo", "1'h");
        QCOMPARE(b.Controle<QLineEdit>("txtPesPreparo")->text(), "1h");
        Escrever(b, "txtPesCalorias", "8a0.0,5-");
        QCOMPARE(b.Controle<QLineEdit>("txtPesCalorias")->text(), "800,5-");
    }

    void semCriterioPedeUm()
    {
        Bancada b;
        b.livro.Guardar({.nome = "A"});
        Abrir(b);
        b.lista->DefinirLimite(5);
        Escrever(b, "txtPesNome", "   ");
        Pesquisar(b);
        QCOMPARE(
            b.avisos.vistos,
            QStringList{"informacao: Por Favor, Informe no Mínimo uma Informação para Efetuar a Pesquisa!"});
        QCOMPARE(b.telas.pedidos.size(), 2);
        QCOMPARE(b.lista->Limite(), 5);
    }

    void enterNosCamposNaoPesquisaENoBotaoPesquisa()
    {
        Bancada b;
        b.livro.Guardar({.nome = "Bolo"});
        b.livro.Guardar({.nome = "Torta"});
        Abrir(b);
        Escrever(b, "txtPesNome", "bolo");
        for (const char *campo : {"txtPesNome", "cmbPesTipo", "cmbPesOrigem", "cmbPesIngrediente",
                                  "txtPesPreparo", "txtPesCalorias", "chkPesFoto"}) {
            QTest::keyClick(b.Controle<QWidget>(campo), Qt::Key_Return);
            QTest::keyClick(b.Controle<QWidget>(campo), Qt::Key_Enter);
        }
        QCOMPARE(b.Lst()->model()->rowCount(), 2);
        QCOMPARE(b.telas.pedidos.size(), 2);
        QTest::keyClick(b.Controle<QWidget>("cmdPesquisa"), Qt::Key_Return);
        QCOMPARE(b.Nomes(), QStringList{"Bolo"});
    }

    void teclaDeAcessoPesquisa()
    {
        Bancada b;
        b.livro.Guardar({.nome = "Bolo"});
        b.livro.Guardar({.nome = "Torta"});
        Abrir(b);
        Escrever(b, "txtPesNome", "bolo");
        QTest::keyClick(b.Controle<QWidget>("txtPesNome"), Qt::Key_P, Qt::AltModifier);
        QTRY_COMPARE(b.Nomes(), QStringList{"Bolo"});
    }

    void achaPorCadaCriterio_data()
    {
        QTest::addColumn<QString>("campo");
        QTest::addColumn<QString>("valor");
        QTest::addColumn<QStringList>("acha");
        QTest::newRow("nome") << "txtPesNome"
                              << "cenoura" << QStringList{"Bolo de Cenoura"};
        QTest::newRow("nome sem caixa") << "txtPesNome"
                                        << "CENOURA" << QStringList{"Bolo de Cenoura"};
        QTest::newRow("tipo") << "cmbPesTipo"
                              << "doces" << QStringList{"Bolo de Cenoura", "Quindim"};
        QTest::newRow("origem") << "cmbPesOrigem"
                                << "Bahia" << QStringList{"Quindim"};
        QTest::newRow("ingrediente") << "cmbPesIngrediente"
                                     << "coco" << QStringList{"Quindim"};
        QTest::newRow("calorias") << "txtPesCalorias"
                                  << "300" << QStringList{"Bolo de Cenoura", "Sopa"};
        QTest::newRow("preparo") << "txtPesPreparo"
                                 << "hora" << QStringList{"Bolo de Cenoura"};
    }
    void achaPorCadaCriterio()
    {
        QFETCH(QString, campo);
        QFETCH(QString, valor);
        Bancada b;
        b.livro.Guardar(
            {.nome = "Bolo de Cenoura", .classificacao = "Doces", .preparo = "1 hora", .calorias = "300"});
        b.livro.Guardar({.nome = "Quindim",
                         .classificacao = "Doces",
                         .origem = "Bahia",
                         .calorias = "400",
                         .ingredientes = {"1|-|coco"}});
        b.livro.Guardar({.nome = "Sopa", .calorias = "100"});
        Abrir(b);
        Escrever(b, qPrintable(campo), valor);
        Pesquisar(b);
        QTEST(b.Nomes(), "acha");
        QVERIFY(b.avisos.vistos.isEmpty());
        QCOMPARE(b.lista->Altura(), 3780);
    }

    void soComImagemEhPesquisaValida()
    {
        Bancada b;
        b.livro.Guardar({.nome = "Com", .figura = true});
        b.livro.Guardar({.nome = "Sem"});
        Abrir(b);
        QTest::mouseClick(b.Controle<QCheckBox>("chkPesFoto"), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
        QVERIFY(b.Controle<QCheckBox>("chkPesFoto")->isChecked());
        Pesquisar(b);
        QCOMPARE(b.Nomes(), QStringList{"Com"});
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.Nomes(), (QStringList{"Com", "Sem"}));
    }

    void paoComTilAchaMaiusculasENaoPao()
    {
        Bancada b;
        for (const char *nome : {"PÃO DE QUEIJO", "Pão d'água", "pao sem acento", "Bolo"})
            b.livro.Guardar({.nome = nome});
        Abrir(b);
        Escrever(b, "txtPesNome", "pão");
        Pesquisar(b);
        QCOMPARE(b.Nomes(), (QStringList{"Pão d'água", "PÃO DE QUEIJO"}));
    }

    void curingasValemNoNome()
    {
        Bancada b;
        for (const char *nome : {"Bolo", "Bala", "Bule"})
            b.livro.Guardar({.nome = nome});
        Abrir(b);
        Escrever(b, "txtPesNome", "b[ao]l");
        Pesquisar(b);
        QCOMPARE(b.Nomes(), (QStringList{"Bala", "Bolo"}));
    }

    void nadaEncontradoDeixaAListaComoEstava()
    {
        Bancada b;
        b.livro.Guardar({.nome = "Bolo"});
        Abrir(b);
        Escrever(b, "txtPesNome", "feijoada");
        Pesquisar(b);
        QCOMPARE(b.avisos.vistos, QStringList{"parada: Nenhuma Receita Encontrada com esse(s) Valore(s)!"});
        QCOMPARE(b.Nomes(), QStringList{"Bolo"});
        QCOMPARE(b.telas.pedidos.size(), 2);
        QCOMPARE(b.Controle<QLineEdit>("txtPesNome")->text(), "feijoada");
    }

    void oComandoAchaEAListaDeixaDeForaPorPorcao()
    {
        Bancada b;
        b.livro.Guardar({.nome = "Inteira", .calorias = "800", .tipoCalorias = "R", .porcoes = "4"});
        b.livro.Guardar({.nome = "Porção", .calorias = "250", .tipoCalorias = "P", .porcoes = "4"});
        Abrir(b);
        Escrever(b, "txtPesCalorias", "800");
        Pesquisar(b);
        QCOMPARE(b.Nomes(), QStringList{"Inteira"});
        QCOMPARE(b.lista->Limite(), 0);
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.Nomes(), (QStringList{"Inteira", "Porção"}));
    }

    void seSoAsExcluidasCasamAListaFicaVaziaSemAviso()
    {
        Bancada b;
        b.livro.Guardar({.nome = "Porção", .calorias = "250", .tipoCalorias = "P", .porcoes = "4"});
        Abrir(b);
        Escrever(b, "txtPesCalorias", "800");
        Pesquisar(b);
        QVERIFY(b.avisos.vistos.isEmpty());
        QCOMPARE(b.Lst()->model()->rowCount(), 0);
        QCOMPARE(b.Lst()->accessibleDescription(), "Nenhuma receita para mostrar.");
    }

    void pesquisaFalhaDeixaOLimiteParaOProximoPreenchimento()
    {
        Bancada b;
        b.livro.Guardar({.nome = "Porção", .calorias = "250", .tipoCalorias = "P", .porcoes = "4"});
        Abrir(b);
        Escrever(b, "txtPesNome", "nada");
        Escrever(b, "txtPesCalorias", "800");
        Pesquisar(b);
        QCOMPARE(b.avisos.vistos.size(), 1);
        QCOMPARE(b.lista->Limite(), 800);
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.Lst()->model()->rowCount(), 0);
        QCOMPARE(b.lista->Limite(), 0);
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.Lst()->model()->rowCount(), 1);
    }

    void apostrofoColadoMostraOErroDoBanco()
    {
        Bancada b;
        b.livro.Guardar({.nome = "Pão d'água"});
        Abrir(b);
        QGuiApplication::clipboard()->setText("d'água");
        QTest::keyClick(b.Controle<QWidget>("txtPesNome"), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(b.Controle<QLineEdit>("txtPesNome")->text(), "d'água");
        Pesquisar(b);
        QCOMPARE(b.avisos.vistos.size(), 1);
        QVERIFY(b.avisos.vistos.first().startsWith("parada: "));
        QCOMPARE(b.Nomes(), QStringList{"Pão d'água"});
        QCOMPARE(b.Controle<QLineEdit>("txtPesNome")->text(), "d'água");
        b.lista->imgLstRcta_Click(); // nothing of the failed search is left behind
        QCOMPARE(b.Lst()->model()->rowCount(), 1);
    }

    void caloriasSemNumeroDaoErroClaroENadaMais()
    {
        Bancada b;
        b.livro.Guardar({.nome = "Bolo"});
        Abrir(b);
        Escrever(b, "txtPesNome", "bolo");
        Escrever(b, "txtPesCalorias", "5--");
        Pesquisar(b);
        QCOMPARE(b.avisos.vistos,
                 QStringList{"parada: A quantidade de calorias informada não é um número: 5--"});
        QCOMPARE(b.telas.pedidos.size(), 2);
        QCOMPARE(b.Controle<QLineEdit>("txtPesCalorias")->text(), "5--");
        QCOMPARE(b.lista->Limite(), 0);
        QCOMPARE(b.livro.Quantas("Receitas"), 1);
    }

    void bancoQueNaoAbreNaoDeixaOPainelRecolhido()
    {
        Bancada b;
        Abrir(b);
        const QString arquivo = b.livro.banco.Caminho("dadosr.lst");
        QFile ruim(arquivo);
        QVERIFY(ruim.open(QIODevice::WriteOnly));
        ruim.write(QByteArray(4096, 'x'));
        ruim.close();
        QVERIFY_EXCEPTION_THROWN(b.pesquisa->imgPesRcta_Click(), ErroBanco);
        QCOMPARE(b.pesquisa->Altura(), 3780);
    }
};

QTEST_MAIN(TestePesquisa)
#include "teste_pesquisa.moc"
