#include "base/Separadores.h"
#include "browse/frmMenu.h"
#include "browse/tests/Apoio.h"

#include <QAccessible>
#include <QFile>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolTip>

namespace
{
/// Writes down every height, in pixels, that a widget takes.
class Alturas : public QObject
{
public:
    explicit Alturas(QWidget *alvo) { alvo->installEventFilter(this); }
    QList<int> vistas;

protected:
    bool eventFilter(QObject *objeto, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            vistas += static_cast<QWidget *>(objeto)->height();
        return false;
    }
};

QList<int> AlturasDaRolagem(int final)
{
    QList<int> pixels;
    for (int twips = 20; twips <= final; twips += 200)
        pixels += qRound(twips / 15.0);
    pixels += final / 15;
    return pixels;
}
} // namespace

class TesteLista : public QObject
{
    Q_OBJECT

    static void Selecionar(Bancada &b, const QList<int> &linhas)
    {
        b.Lst()->clearSelection();
        for (int i = 0; i < linhas.size(); ++i)
            QTest::mouseClick(b.Lst()->viewport(), Qt::LeftButton,
                              i == 0 ? Qt::NoModifier : Qt::ControlModifier, b.Centro(linhas[i]));
    }
    static QMenu *Menu(Bancada &b) { return b.Controle<QMenu>("mnuPopUp"); }
    static void Escolher(Bancada &b, const char *item)
    {
        QMenu *menu = Menu(b);
        QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                          menu->actionGeometry(b.Controle<QAction>(item)).center());
    }
    static void AbrirMenu(Bancada &b, int linha)
    {
        QTest::mouseClick(b.Lst()->viewport(), Qt::RightButton, Qt::NoModifier, b.Centro(linha));
    }
    static void ClicarColuna(Bancada &b, int coluna)
    {
        QHeaderView *cabecalho = b.Lst()->header();
        QTest::mouseClick(
            cabecalho->viewport(), Qt::LeftButton, Qt::NoModifier,
            QPoint(cabecalho->sectionViewportPosition(coluna) + cabecalho->sectionSize(coluna) / 2,
                   cabecalho->height() / 2));
    }

private slots:
    void initTestCase() { Separadores::Definir({u',', u'.'}); }

    // --- what the list is ---

    void temAsColunasDoProjeto()
    {
        Bancada b;
        QCOMPARE(b.lista->objectName(), "picLstReceitas");
        QCOMPARE(b.Lst()->objectName(), "lstVwReceitas");
        QCOMPARE(b.Lst()->toolTip(), "Listagem das Receitas Cadastradas");
        QCOMPARE(b.Lst()->font().family(), "Verdana");
        QCOMPARE(b.Lst()->font().pointSizeF(), 8.25);
        QCOMPARE(b.Lst()->selectionMode(), QAbstractItemView::ExtendedSelection);
        const QStringList titulos{"Nome da Receita", "Tipo", "Origem / Pacote", "Preparo", "Calorias"};
        const QList<int> larguras{278, 103, 110, 67, 40};
        QCOMPARE(b.Lst()->model()->columnCount(), 5);
        for (int c = 0; c < 5; ++c) {
            QCOMPARE(b.Lst()->model()->headerData(c, Qt::Horizontal).toString(), titulos[c]);
            QCOMPARE(b.Lst()->columnWidth(c), larguras[c]);
        }
        QCOMPARE(b.lista->size(), QSize(622, 436));
    }

    void cadaLinhaTrazChaveTagIconeECelulas()
    {
        Bancada b;
        const qint64 n = b.livro.Guardar({.nome = "Vatapá",
                                          .classificacao = "Peixes",
                                          .origem = "Bahia",
                                          .preparo = "1 h",
                                          .calorias = "250",
                                          .tipoCalorias = "P",
                                          .porcoes = "4",
                                          .tipo = "2",
                                          .figura = true});
        b.livro.Guardar({.nome = "Água"});
        b.lista->imgLstRcta_Click();
        const QAbstractItemModel *m = b.Lst()->model();
        QCOMPARE(b.Nomes(), (QStringList{"Água", "Vatapá"}));
        QCOMPARE(m->index(1, 0).data(Qt::UserRole).toString(), QString("C%1").arg(n));
        QCOMPARE(m->index(1, 0).data(Qt::UserRole + 1).toString(), "2");
        QCOMPARE(m->index(0, 0).data(Qt::UserRole + 1).toString(), "");
        QVERIFY(m->index(1, 0).data(Qt::DecorationRole).isValid());
        QVERIFY(!m->index(0, 0).data(Qt::DecorationRole).isValid());
        QCOMPARE((QStringList{b.Celula(1, 1), b.Celula(1, 2), b.Celula(1, 3), b.Celula(1, 4)}),
                 (QStringList{"Peixes", "Bahia", "1 h", "1000"}));
        QCOMPARE((QStringList{b.Celula(0, 1), b.Celula(0, 2), b.Celula(0, 3), b.Celula(0, 4)}),
                 (QStringList{"", "", "", "0"}));
        QVERIFY(m->index(0, 4).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
        QVERIFY(m->index(0, 3).data(Qt::TextAlignmentRole).toInt() & Qt::AlignLeft);
    }

    void nomeCortadoApareceInteiroComoTexto()
    {
        Bancada b;
        b.livro.Guardar({.nome = "<b>Moqueca</b> " + QString("de peixe ").repeated(8).trimmed()});
        b.livro.Guardar({.nome = "Sal"});
        b.lista->imgLstRcta_Click();
        const auto dicaEm = [&b](int linha) {
            QHelpEvent ajuda(QEvent::ToolTip, b.Centro(linha),
                             b.Lst()->viewport()->mapToGlobal(b.Centro(linha)));
            QApplication::sendEvent(b.Lst()->viewport(), &ajuda);
            return QToolTip::text();
        };
        QVERIFY(dicaEm(0).startsWith("<p>&lt;b&gt;Moqueca&lt;/b&gt; de peixe"));
        QCOMPARE(dicaEm(1), "Listagem das Receitas Cadastradas");
    }

    // --- filling ---

    void livroVazioDaListaVaziaEAindaAssimRola()
    {
        Bancada b;
        Alturas alturas(b.lista);
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.Lst()->model()->rowCount(), 0);
        QCOMPARE(b.lista->Altura(), 6540);
        alturas.vistas.removeAll(1); // the collapsed height comes twice, from before and within the roll
        QCOMPARE(alturas.vistas, AlturasDaRolagem(6540).mid(1));
        QCOMPARE(b.telas.pedidos, QStringList{"ListaReceitas"});
        QVERIFY(b.telas.restauradas > 0);
        QVERIFY(b.Lst()->hasFocus());
        QVERIFY(!b.Lst()->accessibleDescription().isEmpty());
        QVERIFY(b.avisos.vistos.isEmpty());
    }

    void listaAbertaEhPreenchidaNoLugar()
    {
        Bancada b;
        b.lista->imgLstRcta_Click();
        b.livro.Guardar({.nome = "Nova"});
        Alturas alturas(b.lista);
        b.lista->imgLstRcta_Click();
        QVERIFY(alturas.vistas.isEmpty());
        QCOMPARE(b.Nomes(), QStringList{"Nova"});
        QCOMPARE(b.Lst()->accessibleDescription(), QString()); // that of an empty list
    }

    void comAPesquisaAbertaAListaFicaBaixa()
    {
        Bancada b;
        b.lista->imgLstRcta_Click();
        b.pesquisa->imgPesRcta_Click();
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.lista->Altura(), 3780);
        b.lista->hide();
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.lista->Altura(), 3780);
    }

    void consultaQueFalhaDeixaAListaVaziaSemAviso()
    {
        Bancada b;
        b.livro.Guardar({.nome = "Bolo"});
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.Lst()->model()->rowCount(), 1);
        b.lista->DefinirConsulta("Select * from Receitas Where Nome = 'd'água'");
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.Lst()->model()->rowCount(), 0);
        QVERIFY(b.avisos.vistos.isEmpty());
        QVERIFY(!b.lista->Carregando());
        QCOMPARE(b.Lst()->accessibleDescription(), QString("A lista de receitas não pôde ser lida."));
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.Nomes(), QStringList{"Bolo"});
        QCOMPARE(b.Lst()->accessibleDescription(), QString()); // of an empty list only
    }

    void consultaELimiteValemParaUmPreenchimento()
    {
        Bancada b;
        b.livro.Guardar({.nome = "Inteira", .calorias = "800", .tipoCalorias = "R", .porcoes = "4"});
        b.livro.Guardar({.nome = "Porção", .calorias = "250", .tipoCalorias = "P", .porcoes = "4"});
        b.livro.Guardar({.nome = "Zebra"});
        b.lista->DefinirConsulta("Select * from Receitas Where 1=1  and Calorias > 0 Order By Nome ");
        b.lista->DefinirLimite(800);
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.Nomes(), QStringList{"Inteira"});
        QCOMPARE(b.lista->Limite(), 0);
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.Nomes(), (QStringList{"Inteira", "Porção", "Zebra"}));
    }

    void segundaChamadaDuranteOPreenchimentoVoltaLogo()
    {
        Bancada b;
        b.livro.Guardar({.nome = "Bolo"});
        AoRolar meio(b.lista, [&] {
            QVERIFY(b.lista->Carregando());
            b.lista->imgLstRcta_Click();
        });
        b.lista->imgLstRcta_Click();
        QVERIFY(meio.Rodou());
        QCOMPARE(b.telas.pedidos, QStringList{"ListaReceitas"});
        QCOMPARE(b.lista->Altura(), 6540);
        QVERIFY(!b.lista->Carregando());
    }

    void pesquisaFeitaDuranteARolagemNaoSePerde()
    {
        Bancada b;
        b.livro.Guardar({.nome = "Bolo"});
        b.livro.Guardar({.nome = "Torta"});
        b.telas.AbrirTela("PesquisaReceitas");
        b.Controle<QLineEdit>("txtPesNome")->setText("bolo");
        AoRolar meio(b.lista, [&] {
            QTest::mouseClick(b.Controle<QPushButton>("cmdPesquisa"), Qt::LeftButton);
            QCOMPARE(b.Nomes(), (QStringList{"Bolo", "Torta"})); // the list under way goes first
        });
        b.lista->imgLstRcta_Click();
        QVERIFY(meio.Rodou());
        QTRY_COMPARE(b.Nomes(), QStringList{"Bolo"});
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.Nomes(), (QStringList{"Bolo", "Torta"}));
    }

    void focoNaoVoltaParaAListaQuandoOutraTelaAbriu()
    {
        Bancada b;
        QLineEdit campo(b.detalhePainel);
        AoRolar meio(b.lista, [&] {
            b.telas.AbrirTela("DetalheReceitas");
            campo.setFocus();
        });
        b.lista->imgLstRcta_Click();
        QVERIFY(meio.Rodou());
        QVERIFY(campo.hasFocus());
    }

    void receitasAosMilharesEntramEmPedacos()
    {
        Bancada b;
        b.livro.GuardarMuitas(5000);
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.Lst()->model()->rowCount(), 5000);
        QCOMPARE(b.Celula(4999, 0), "Receita 5000");
    }

    // --- sorting ---

    void cliqueNaColunaOrdenaPelasTresPrimeiras()
    {
        Bancada b;
        b.livro.Guardar({.nome = "A", .classificacao = "Massas", .origem = "Zona", .preparo = "9"});
        b.livro.Guardar({.nome = "B", .classificacao = "Doces", .origem = "Bahia", .preparo = "8"});
        b.livro.Guardar({.nome = "C", .classificacao = "Aves", .origem = "Minas", .preparo = "7"});
        b.lista->imgLstRcta_Click();
        QVERIFY(!b.Lst()->header()->isSortIndicatorShown());
        ClicarColuna(b, 1);
        QCOMPARE(b.Nomes(), (QStringList{"C", "B", "A"}));
        QVERIFY(b.Lst()->header()->isSortIndicatorShown());
        QCOMPARE(b.Lst()->header()->sortIndicatorSection(), 1);
        ClicarColuna(b, 2);
        QCOMPARE(b.Nomes(), (QStringList{"B", "C", "A"}));
        ClicarColuna(b, 2); // once more: the key is the same
        QCOMPARE(b.Nomes(), (QStringList{"B", "C", "A"}));
        QCOMPARE(b.Lst()->header()->sortIndicatorOrder(), Qt::AscendingOrder);
        for (const int coluna : {3, 4}) {
            ClicarColuna(b, coluna);
            QCOMPARE(b.Nomes(), (QStringList{"B", "C", "A"}));
            QCOMPARE(b.Lst()->header()->sortIndicatorSection(), 2);
        }
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.Nomes(), (QStringList{"B", "C", "A"}));
        ClicarColuna(b, 0);
        QCOMPARE(b.Nomes(), (QStringList{"A", "B", "C"}));
    }

    void preparoECaloriasNaoOrdenamNemMarcam()
    {
        Bancada b;
        b.livro.Guardar({.nome = "A", .preparo = "9", .calorias = "9"});
        b.livro.Guardar({.nome = "B", .preparo = "8", .calorias = "8"});
        b.lista->imgLstRcta_Click();
        for (const int coluna : {3, 4}) {
            ClicarColuna(b, coluna);
            QCOMPARE(b.Nomes(), (QStringList{"A", "B"}));
            QVERIFY(!b.Lst()->header()->isSortIndicatorShown());
        }
    }

    void selecaoAcompanhaAOrdem()
    {
        Bancada b;
        b.livro.Guardar({.nome = "A", .classificacao = "Z"});
        b.livro.Guardar({.nome = "B", .classificacao = "Y"});
        b.livro.Guardar({.nome = "C", .classificacao = "X"});
        b.lista->imgLstRcta_Click();
        Selecionar(b, {0});
        const QList<qint64> antes = b.lista->ReceitasSelecionadas();
        ClicarColuna(b, 1);
        QCOMPARE(b.Lst()->LinhasSelecionadas(), QList<int>{2});
        QCOMPARE(b.lista->ReceitasSelecionadas(), antes);
        QCOMPARE(b.lista->ReceitaAtual(), antes.first());
    }

    void selecaoComoTextoVaiNaOrdemDaLista()
    {
        Bancada b;
        const qint64 z = b.livro.Guardar({.nome = "Z"});
        const qint64 a = b.livro.Guardar({.nome = "A"});
        b.livro.Guardar({.nome = "M"});
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.lista->SelecaoComoTexto(), "");
        Selecionar(b, {2, 0});
        QCOMPARE(b.lista->SelecaoComoTexto(), QString("%1,%2,").arg(a).arg(z));
    }

    // --- opening ---

    void duploCliqueAbreOCartao()
    {
        Bancada b;
        b.livro.Guardar({.nome = "A"});
        const qint64 n = b.livro.Guardar({.nome = "B"});
        b.lista->imgLstRcta_Click();
        QTest::mouseClick(b.Lst()->viewport(), Qt::LeftButton, Qt::NoModifier, b.Centro(1, 2));
        QTest::mouseDClick(b.Lst()->viewport(), Qt::LeftButton, Qt::NoModifier, b.Centro(1, 2));
        QCOMPARE(b.detalhe.passos, (QStringList{"esquecer", QString("detalhe %1 ver").arg(n)}));
        QCOMPARE(b.cartao->Receita(), n);
        QVERIFY(b.cartao->isVisible());
        QCOMPARE(b.telas.pedidos, (QStringList{"ListaReceitas", "NovaReceita"}));
    }

    /// Who works by ear or by voice opens, marks and asks for the menu of any row.
    void aLinhaTemAcoesParaQuemNaoUsaOMouse()
    {
        Bancada b;
        b.livro.Guardar({.nome = "Arroz"});
        b.livro.Guardar({.nome = "Bolo"});
        b.lista->imgLstRcta_Click();
        QAccessibleInterface *lista = QAccessible::queryAccessibleInterface(b.Lst());
        QCOMPARE(lista->role(), QAccessible::Table);
        QAccessibleTableInterface *tabela = lista->tableInterface();
        QCOMPARE(tabela->rowCount(), 2);
        QCOMPARE(lista->childCount(), 3 * tabela->columnCount()); // the headers come first
        QCOMPARE(lista->child(0)->role(), QAccessible::ColumnHeader);
        QCOMPARE(lista->child(0)->text(QAccessible::Name), tabela->columnDescription(0));

        QAccessibleInterface *bolo = tabela->cellAt(1, 0);
        QCOMPARE(bolo->text(QAccessible::Name), "Bolo");
        QCOMPARE(lista->indexOfChild(bolo), 2 * tabela->columnCount());
        QCOMPARE(tabela->cellAt(1, 0), bolo); // one place, one interface
        QCOMPARE(tabela->cellAt(2, 0), nullptr);
        QVERIFY(!bolo->state().invisible);
        QCOMPARE(bolo->tableCellInterface()->rowIndex(), 1);
        QAccessibleActionInterface *acoes = bolo->actionInterface();
        QVERIFY(acoes->actionNames().contains("open"));
        QCOMPARE(acoes->localizedActionName("open"), "Abrir");

        QSignalSpy abrir(b.Lst(), &ListaReceitas::abrirPedido);
        acoes->doAction("open");
        QCOMPARE(abrir.size(), 0); // not inside the question of whoever listens
        QTRY_COMPARE(abrir.size(), 1);
        QCOMPARE(tabela->selectedRows(), QList<int>{1});
        QVERIFY(bolo->state().selected);

        b.livro.Guardar({.nome = "Amendoim"});
        b.lista->imgLstRcta_Click();
        QCOMPARE(tabela->rowCount(), 3);
        QCOMPARE(tabela->cellAt(0, 0)->text(QAccessible::Name), "Amendoim");
    }

    void duploCliqueAbreAPrimeiraDasSelecionadas()
    {
        Bancada b;
        const qint64 n = b.livro.Guardar({.nome = "A"});
        b.livro.Guardar({.nome = "B"});
        b.lista->imgLstRcta_Click();
        b.Lst()->selectAll();
        QTest::keyClick(b.Lst(), Qt::Key_Return);
        QCOMPARE(b.cartao->Receita(), n);
    }

    void duploCliqueSemSelecaoNaoFazNada()
    {
        Bancada b;
        b.lista->imgLstRcta_Click();
        QTest::mouseDClick(b.Lst()->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
        b.livro.Guardar({.nome = "A"});
        b.lista->imgLstRcta_Click();
        QTest::mouseDClick(b.Lst()->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(50, 300));
        QTest::keyClick(b.Lst(), Qt::Key_Enter);
        QVERIFY(b.detalhe.passos.isEmpty());
        QVERIFY(!b.cartao->isVisible());
    }

    void receitaApagadaPorOutraCopiaDaErroENadaMais()
    {
        Bancada b;
        const qint64 n = b.livro.Guardar({.nome = "A"});
        b.lista->imgLstRcta_Click();
        b.livro.banco.ExecutarSQL(Comandos::SqlExcluirReceita(n));
        Selecionar(b, {0});
        QTest::keyClick(b.Lst(), Qt::Key_Return);
        QCOMPARE(b.avisos.vistos.size(), 1);
        QVERIFY(b.avisos.vistos.first().startsWith("parada: "));
        QVERIFY(!b.cartao->isVisible());
    }

    void letrasLevamAoNome()
    {
        Bancada b;
        for (const char *nome : {"Arroz", "Bolo", "Broa", "Pão"})
            b.livro.Guardar({.nome = nome, .classificacao = "Z"});
        b.lista->imgLstRcta_Click();
        QTest::mouseClick(b.Lst()->viewport(), Qt::LeftButton, Qt::NoModifier, b.Centro(0, 1));
        QTest::keyClick(b.Lst(), 'b');
        QCOMPARE(b.Lst()->LinhasSelecionadas(), QList<int>{1});
        QTest::keyClick(b.Lst(), 'r');
        QCOMPARE(b.Lst()->LinhasSelecionadas(), QList<int>{2});
    }

    void semALetraExataOsAcentosNaoContam()
    {
        Bancada b;
        for (const char *nome : {"Panqueca", "Pão", "Pãozinho", "Épocas", "Torta"})
            b.livro.Guardar({.nome = nome});
        b.lista->imgLstRcta_Click();
        const auto procurar = [&b](const QString &letras) {
            b.Lst()->clearSelection();
            b.Lst()->setCurrentIndex(b.Lst()->model()->index(0, 0));
            QTest::qWait(QApplication::keyboardInputInterval() + 20); // a pause begins a new search
            Teclar(b.Lst(), letras);
            const QList<int> linhas = b.Lst()->LinhasSelecionadas();
            return linhas.size() == 1 ? b.Celula(linhas.first(), 0) : QString();
        };
        QCOMPARE(procurar("pao"), QString("Pão"));
        QCOMPARE(procurar("paoz"), QString("Pãozinho"));
        QCOMPARE(procurar("pa"), QString("Panqueca")); // exact letters go first
        QCOMPARE(procurar("pã"), QString("Pão"));
        QCOMPARE(procurar("epo"), QString("Épocas"));
    }

    void asTeclasComecamASelecao_data()
    {
        QTest::addColumn<int>("tecla");
        QTest::addColumn<int>("receitas");
        QTest::addColumn<int>("linha");
        QTest::newRow("abaixo, uma só") << int(Qt::Key_Down) << 1 << 0;
        QTest::newRow("acima, uma só") << int(Qt::Key_Up) << 1 << 0;
        QTest::newRow("abaixo") << int(Qt::Key_Down) << 3 << 0;
        QTest::newRow("início") << int(Qt::Key_Home) << 3 << 0;
        QTest::newRow("fim") << int(Qt::Key_End) << 3 << 2;
        QTest::newRow("fim, uma só") << int(Qt::Key_End) << 1 << 0;
        QTest::newRow("página") << int(Qt::Key_PageDown) << 3 << 0;
        QTest::newRow("letra") << int(Qt::Key_R) << 1 << 0;
    }
    void asTeclasComecamASelecao()
    {
        QFETCH(int, tecla);
        QFETCH(int, receitas);
        QFETCH(int, linha);
        Bancada b;
        b.livro.GuardarMuitas(receitas);
        b.lista->imgLstRcta_Click();
        QVERIFY(b.Lst()->LinhasSelecionadas().isEmpty());
        QTest::keyClick(b.Lst(), static_cast<Qt::Key>(tecla));
        QCOMPARE(b.Lst()->LinhasSelecionadas(), QList<int>{linha});
        QTest::keyClick(b.Lst(), Qt::Key_Return);
        QVERIFY(b.detalhe.passos.contains(QString("detalhe %1 ver").arg(linha + 1)));
    }

    void depoisDeSalvaAReceitaFicaMarcadaEAVista()
    {
        Bancada b;
        b.livro.GuardarMuitas(300);
        b.lista->imgLstRcta_Click();
        b.lista->MarcarDepois(250);
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.Lst()->LinhasSelecionadas(), QList<int>{249});
        QVERIFY(b.Lst()->viewport()->rect().contains(b.Centro(249)));
        b.lista->imgLstRcta_Click(); // once
        QVERIFY(b.Lst()->LinhasSelecionadas().isEmpty());
        b.lista->MarcarDepois(999); // not there: nothing
        b.lista->imgLstRcta_Click();
        QVERIFY(b.Lst()->LinhasSelecionadas().isEmpty());
    }

    void depoisDaExclusaoOLugarFica()
    {
        Bancada b;
        b.livro.GuardarMuitas(300);
        b.lista->imgLstRcta_Click();
        b.Lst()->scrollTo(b.Lst()->model()->index(150, 0), QAbstractItemView::PositionAtCenter);
        Selecionar(b, {150});
        const int topo = b.Lst()->verticalScrollBar()->value();
        QVERIFY(topo > 0);
        QTest::keyClick(b.Lst(), Qt::Key_Delete);
        QCOMPARE(b.Lst()->model()->rowCount(), 299);
        QCOMPARE(b.Lst()->verticalScrollBar()->value(), topo);
        QCOMPARE(b.Lst()->currentIndex().row(), 150);
        QVERIFY(b.Lst()->LinhasSelecionadas().isEmpty()); // another Delete asks for nothing
        QTest::keyClick(b.Lst(), Qt::Key_Delete);
        QCOMPARE(b.avisos.perguntas.size(), 1);
        QTest::keyClick(b.Lst(), Qt::Key_Down);
        QCOMPARE(b.Lst()->LinhasSelecionadas(), QList<int>{150});
    }

    void aMesmaLetraLevaAoProximo()
    {
        Bancada b;
        for (const char *nome : {"Arroz", "Bolo", "Broa", "Pão"})
            b.livro.Guardar({.nome = nome});
        b.lista->imgLstRcta_Click();
        for (const int linha : {1, 2, 1}) {
            QTest::keyClick(b.Lst(), 'b');
            QCOMPARE(b.Lst()->LinhasSelecionadas(), QList<int>{linha});
        }
    }

    void mouseSobreAListaRestauraOsBotoes()
    {
        Bancada b;
        b.lista->imgLstRcta_Click();
        b.telas.restauradas = 0;
        QTest::mouseMove(b.Lst()->viewport(), QPoint(30, 30));
        QTest::mouseMove(b.Lst()->viewport(), QPoint(60, 60));
        QTRY_VERIFY(b.telas.restauradas > 0);
    }

    // --- deleting with the key ---

    void deleteSemSelecaoNaoPerguntaNada()
    {
        Bancada b;
        b.lista->imgLstRcta_Click();
        QTest::keyClick(b.Lst(), Qt::Key_Delete);
        b.livro.Guardar({.nome = "A"});
        b.lista->imgLstRcta_Click();
        QTest::keyClick(b.Lst(), Qt::Key_Delete);
        QVERIFY(b.avisos.perguntas.isEmpty());
        QCOMPARE(b.livro.Quantas("Receitas"), 1);
    }

    void deleteDeUmaPerguntaENaoMostraPainel()
    {
        Bancada b;
        b.livro.Guardar({.nome = "A", .figura = true, .ingredientes = {"1|-|sal"}});
        b.livro.Guardar({.nome = "B"});
        b.lista->imgLstRcta_Click();
        Selecionar(b, {0});
        QTest::keyClick(b.Lst(), Qt::Key_Delete);
        QCOMPARE(b.avisos.perguntas, QStringList{"Confirma Exclusão da Receita?"});
        QCOMPARE(b.mensagem.passos, QStringList{"esconder"});
        QCOMPARE(b.Nomes(), QStringList{"B"});
        QCOMPARE(b.livro.Quantas("Ingredientes"), 0);
        QCOMPARE(b.telas.pedidos, (QStringList{"ListaReceitas", "ListaReceitas"}));
    }

    void deleteDeTresMostraABarraDeUmATres()
    {
        Bancada b;
        b.livro.GuardarMuitas(5);
        b.lista->imgLstRcta_Click();
        Selecionar(b, {0, 2, 4});
        QTest::keyClick(b.Lst(), Qt::Key_Delete);
        QCOMPARE(b.avisos.perguntas, QStringList{"Confirma Exclusão das Receitas?"});
        QCOMPARE(b.mensagem.passos, (QStringList{"mostrar Efetuando Exclusão das Receitas... de 3", "1", "2",
                                                 "3", "3", "esconder"}));
        QCOMPARE(b.Nomes(), (QStringList{"Receita 0002", "Receita 0004"}));
        QCOMPARE(b.livro.Quantas("Receitas"), 2);
    }

    void barraAvancaAntesDeCadaExclusao()
    {
        Bancada b;
        b.livro.GuardarMuitas(3);
        b.lista->imgLstRcta_Click();
        QList<int> restam;
        b.mensagem.aoAvancar = [&](int) { restam += b.livro.Quantas("Receitas"); };
        b.Lst()->selectAll();
        QTest::keyClick(b.Lst(), Qt::Key_Delete);
        QCOMPARE(restam, (QList<int>{3, 2, 1, 0}));
    }

    void recusaDeixaTudoComoEstava()
    {
        Bancada b;
        b.livro.GuardarMuitas(3);
        b.lista->imgLstRcta_Click();
        b.avisos.resposta = false;
        Selecionar(b, {0, 1});
        QTest::keyClick(b.Lst(), Qt::Key_Delete);
        QCOMPARE(b.avisos.perguntas.size(), 1);
        QCOMPARE(b.livro.Quantas("Receitas"), 3);
        QCOMPARE(b.Lst()->LinhasSelecionadas(), (QList<int>{0, 1}));
        QVERIFY(b.mensagem.passos.isEmpty());
        QCOMPARE(b.telas.pedidos.size(), 1);
    }

    void quinhentasExclusoesDeixamAJanelaViva()
    {
        Bancada b;
        b.livro.GuardarMuitas(510);
        b.lista->imgLstRcta_Click();
        int batidas = 0;
        int maior = 0;
        QTimer pulso;
        connect(&pulso, &QTimer::timeout, [&] { ++batidas; });
        b.mensagem.aoAvancar = [&](int valor) {
            QVERIFY(valor >= maior && valor <= 500);
            maior = valor;
        };
        b.Lst()->setCurrentIndex(b.Lst()->model()->index(0, 0));
        QItemSelection faixa(b.Lst()->model()->index(0, 0), b.Lst()->model()->index(499, 4));
        b.Lst()->selectionModel()->select(faixa, QItemSelectionModel::ClearAndSelect);
        pulso.start(0);
        QTest::keyClick(b.Lst(), Qt::Key_Delete);
        QCOMPARE(maior, 500);
        QVERIFY2(batidas >= 500, qPrintable(QString::number(batidas)));
        QCOMPARE(b.Lst()->model()->rowCount(), 10);
        QVERIFY(!b.mensagem.visivel);
    }

    void teclaDeleteDuranteAExclusaoNaoComecaOutra()
    {
        Bancada b;
        b.livro.GuardarMuitas(4);
        b.lista->imgLstRcta_Click();
        b.mensagem.aoAvancar = [&](int) { QTest::keyClick(b.Lst(), Qt::Key_Delete); };
        Selecionar(b, {0, 1});
        QTest::keyClick(b.Lst(), Qt::Key_Delete);
        QCOMPARE(b.avisos.perguntas.size(), 1);
        QCOMPARE(b.livro.Quantas("Receitas"), 2);
    }

    void teclaDeleteDuranteARolagemEspera()
    {
        Bancada b;
        b.livro.GuardarMuitas(2);
        AoRolar meio(b.lista, [&] {
            QVERIFY(b.lista->Carregando());
            b.Lst()->setCurrentIndex(b.Lst()->model()->index(0, 0));
            QTest::keyClick(b.Lst(), Qt::Key_Delete);
            QVERIFY(b.avisos.perguntas.isEmpty());
        });
        b.lista->imgLstRcta_Click();
        QTRY_COMPARE(b.avisos.perguntas.size(), 1);
        QCOMPARE(b.Nomes(), QStringList{"Receita 0002"});
    }

    void falhaNoMeioEscondeOPainelEMostraOQueFicou()
    {
        Bancada b;
        b.livro.GuardarMuitas(3);
        b.lista->imgLstRcta_Click();
        const QString arquivo = b.livro.banco.Caminho("dadosr.lst");
        b.mensagem.aoAvancar = [&](int valor) {
            if (valor != 2)
                return;
            QVERIFY(QFile::rename(arquivo, arquivo + ".bom"));
            QFile ruim(arquivo);
            QVERIFY(ruim.open(QIODevice::WriteOnly));
            ruim.write(QByteArray(4096, 'x'));
        };
        b.Lst()->selectAll();
        QTest::keyClick(b.Lst(), Qt::Key_Delete);
        QCOMPARE(b.avisos.vistos.size(), 1);
        QVERIFY(b.avisos.vistos.first().startsWith("parada: "));
        QVERIFY(!b.mensagem.visivel);
        QCOMPARE(b.Lst()->model()->rowCount(), 0); // the broken book cannot be listed either
        QVERIFY(QFile::remove(arquivo));
        QVERIFY(QFile::rename(arquivo + ".bom", arquivo));
        b.mensagem.aoAvancar = nullptr;
        b.lista->imgLstRcta_Click();
        QCOMPARE(b.Lst()->model()->rowCount(), 2);
    }

    // --- deleting from the editor ---

    void exclusaoDaTelaPerguntaFechaEMostraALista()
    {
        Bancada b;
        const qint64 n = b.livro.Guardar({.nome = "A", .figura = true, .ingredientes = {"1|-|sal"}});
        b.livro.Guardar({.nome = "B"});
        Exclusao exclusao(b.livro.banco, b.avisos, b.telas, *b.lista);
        b.avisos.resposta = false;
        QVERIFY(!exclusao.ExcluirDaTela(n));
        QCOMPARE(b.avisos.perguntas, QStringList{"Confirma Exclusão dessa Receita?"});
        QCOMPARE(b.livro.Quantas("Receitas"), 2);
        QVERIFY(b.telas.pedidos.isEmpty());

        b.avisos.resposta = true;
        QVERIFY(exclusao.ExcluirDaTela(n));
        QCOMPARE(b.telas.pedidos, (QStringList{"fechar", "ListaReceitas"}));
        QCOMPARE(b.Nomes(), QStringList{"B"});
        QCOMPARE(b.livro.Quantas("Ingredientes"), 0);
        QVERIFY(!QFile::exists(Figuras(b.livro.banco).Caminho(Comandos::NomeFigura(n))));
    }

    // --- the pop-up menu ---

    void menuTemSeusItensEmOrdem()
    {
        Bancada b;
        QVERIFY(b.Controle<frmMenu>("frmMenu")->isHidden());
        QStringList itens;
        for (const QAction *acao : Menu(b)->actions())
            itens += acao->objectName() + "=" + (acao->isSeparator() ? "-" : acao->text());
        QCOMPARE(itens,
                 (QStringList{"mnuConsultarReceita=&Consultar Receita", "mnuAlterarReceita=&Alterar Receita",
                              "mnuNada2=-", "mnuImprimirReceita=&Imprimir Receita", "mnuNada=-",
                              "mnuExcluirReceita=&Excluir Receita"}));
    }

    void botaoDireitoAbreOMenuSoSobreSelecao()
    {
        Bancada b;
        b.lista->imgLstRcta_Click();
        QTest::mouseClick(b.Lst()->viewport(), Qt::RightButton, Qt::NoModifier, QPoint(40, 40));
        QVERIFY(!Menu(b)->isVisible());
        b.livro.GuardarMuitas(2);
        b.lista->imgLstRcta_Click();
        QTest::mouseClick(b.Lst()->viewport(), Qt::RightButton, Qt::NoModifier, QPoint(40, 350));
        QVERIFY(!Menu(b)->isVisible());
        QTest::mouseClick(b.Lst()->viewport(), Qt::LeftButton, Qt::NoModifier, b.Centro(1));
        QVERIFY(!Menu(b)->isVisible());
        AbrirMenu(b, 1);
        QVERIFY(Menu(b)->isVisible());
        QCOMPARE(b.lista->ReceitaAtual(), b.lista->ReceitasSelecionadas().first());
    }

    void teclaDeMenuAbreOMenuNaLinhaAtual_data()
    {
        QTest::addColumn<int>("tecla");
        QTest::addColumn<int>("modificador");
        QTest::newRow("menu") << int(Qt::Key_Menu) << int(Qt::NoModifier);
        QTest::newRow("shift+F10") << int(Qt::Key_F10) << int(Qt::ShiftModifier);
    }
    void teclaDeMenuAbreOMenuNaLinhaAtual()
    {
        QFETCH(int, tecla);
        QFETCH(int, modificador);
        Bancada b;
        b.livro.GuardarMuitas(2);
        b.lista->imgLstRcta_Click();
        QTest::keyClick(b.Lst(), Qt::Key(tecla), Qt::KeyboardModifier(modificador));
        QVERIFY(!Menu(b)->isVisible());
        Selecionar(b, {1});
        QTest::keyClick(b.Lst(), Qt::Key(tecla), Qt::KeyboardModifier(modificador));
        QVERIFY(Menu(b)->isVisible());
        const QRect linha = b.Lst()->visualRect(b.Lst()->model()->index(1, 0));
        QVERIFY(b.Lst()->viewport()->mapFromGlobal(Menu(b)->pos()).y() >= linha.top());
        QTest::keyClick(Menu(b), Qt::Key_C);
        QVERIFY(b.cartao->isVisible());
    }

    void alterarFicaCinzaPeloTipo_data()
    {
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<bool>("pode");
        QTest::newRow("nulo") << "" << true;
        QTest::newRow("0") << "0" << true;
        QTest::newRow("1") << "1" << false;
        QTest::newRow("3") << "3" << false;
    }
    void alterarFicaCinzaPeloTipo()
    {
        QFETCH(QString, tipo);
        QFETCH(bool, pode);
        Bancada b;
        b.livro.Guardar({.nome = "A", .tipo = tipo});
        b.livro.Guardar({.nome = "B", .tipo = "1"});
        b.lista->imgLstRcta_Click();
        AbrirMenu(b, 1); // greyed once must not stay greyed
        Menu(b)->close();
        AbrirMenu(b, 0);
        QCOMPARE(b.Controle<QAction>("mnuAlterarReceita")->isEnabled(), pode);
        for (const char *outro : {"mnuConsultarReceita", "mnuImprimirReceita", "mnuExcluirReceita"})
            QVERIFY(b.Controle<QAction>(outro)->isEnabled());
    }

    void menuConsultaAlteraEImprime()
    {
        Bancada b;
        b.livro.Guardar({.nome = "A"});
        const qint64 n = b.livro.Guardar({.nome = "B"});
        b.lista->imgLstRcta_Click();
        AbrirMenu(b, 1);
        Escolher(b, "mnuConsultarReceita");
        QCOMPARE(b.detalhe.passos, (QStringList{"esquecer", QString("detalhe %1 ver").arg(n)}));
        QVERIFY(b.cartao->isVisible());

        b.telas.FecharTela();
        b.detalhe.passos.clear();
        AbrirMenu(b, 1);
        Escolher(b, "mnuAlterarReceita");
        QCOMPARE(b.detalhe.passos, (QStringList{"valores 0", QString("detalhe %1 alterar").arg(n)}));

        qint64 impressa = 0;
        connect(b.lista, &PainelLista::impressaoPedida, [&](qint64 receita) { impressa = receita; });
        b.Lst()->selectAll();
        AbrirMenu(b, 1);
        Escolher(b, "mnuImprimirReceita");
        QCOMPARE(impressa, n);
    }

    void menuExcluiSoAquelaLinha()
    {
        Bancada b;
        b.livro.GuardarMuitas(60);
        b.lista->imgLstRcta_Click();
        ClicarColuna(b, 1);
        b.Lst()->verticalScrollBar()->setValue(25);
        const int rolagem = b.Lst()->verticalScrollBar()->value();
        QVERIFY(rolagem > 0);
        QStringList esperado = b.Nomes();
        const int linha = rolagem + 3;
        AbrirMenu(b, linha);
        Escolher(b, "mnuExcluirReceita");
        QCOMPARE(b.avisos.perguntas, QStringList{"Confirma Exclusão da Receita?"});
        esperado.removeAt(linha);
        QCOMPARE(b.Nomes(), esperado);
        QCOMPARE(b.livro.Quantas("Receitas"), 59);
        QCOMPARE(b.Lst()->verticalScrollBar()->value(), rolagem);
        QCOMPARE(b.telas.pedidos, QStringList{"ListaReceitas"});
        QVERIFY(b.mensagem.passos.isEmpty());
    }

    void menuRecusadoNaoExclui()
    {
        Bancada b;
        b.livro.GuardarMuitas(2);
        b.lista->imgLstRcta_Click();
        b.avisos.resposta = false;
        AbrirMenu(b, 0);
        Escolher(b, "mnuExcluirReceita");
        QCOMPARE(b.avisos.perguntas.size(), 1);
        QCOMPARE(b.Lst()->model()->rowCount(), 2);
        QCOMPARE(b.livro.Quantas("Receitas"), 2);
    }
};

QTEST_MAIN(TesteLista)
#include "teste_lista.moc"
