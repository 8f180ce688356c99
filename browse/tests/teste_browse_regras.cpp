#include "base/Separadores.h"
#include "browse/Cartao.h"
#include "browse/Criterios.h"
#include "browse/ExcluirReceita.h"
#include "browse/LinhasLista.h"
#include "browse/RegraTipo.h"
#include "browse/Selecao.h"
#include "browse/tests/Livro.h"
#include "browse/tests/SuperficieGravadora.h"
#include "store/ErroBanco.h"

#include <QFile>
#include <QTest>

namespace
{
LinhasLista Todas(const Livro &livro, qint64 limite = 0, const QString &sql = Comandos::SqlLista())
{
    LinhasLista linhas(livro.banco.AbrirRecordset(sql, LinhasLista::CamposLidos()), limite);
    while (linhas.Tomar(2)) {
    }
    return linhas;
}

QStringList Coluna(const LinhasLista &linhas, LinhasLista::Coluna coluna)
{
    QStringList textos;
    for (int linha = 0; linha < linhas.Quantas(); ++linha)
        textos += linhas.Texto(linha, coluna);
    return textos;
}
} // namespace

class TesteBrowseRegras : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { Separadores::Definir({u',', u'.'}); }

    // --- rows of the list ---

    void cadaLinhaTrazSuaReceita()
    {
        Livro livro;
        const qint64 n = livro.Guardar({.nome = "Moqueca",
                                        .classificacao = "Peixes",
                                        .origem = "Bahia",
                                        .preparo = "40 min",
                                        .calorias = "320",
                                        .tipo = "2",
                                        .figura = true});
        const LinhasLista linhas = Todas(livro);
        QCOMPARE(linhas.Quantas(), 1);
        QCOMPARE(linhas.Receita(0), n);
        QCOMPARE(linhas.Chave(0), "C" + QString::number(n));
        QCOMPARE(linhas.Texto(0, LinhasLista::Nome), "Moqueca");
        QCOMPARE(linhas.Texto(0, LinhasLista::Tipo), "Peixes");
        QCOMPARE(linhas.Texto(0, LinhasLista::Origem), "Bahia");
        QCOMPARE(linhas.Texto(0, LinhasLista::Preparo), "40 min");
        QCOMPARE(linhas.Texto(0, LinhasLista::Calorias), "320");
        QCOMPARE(linhas.Tag(0), "2");
        QVERIFY(linhas.TemFigura(0));
    }

    void nulosDaoCelulasVazias()
    {
        Livro livro;
        livro.Guardar({.nome = "Água", .calorias = "", .porcoes = ""});
        const LinhasLista linhas = Todas(livro);
        for (const auto coluna :
             {LinhasLista::Tipo, LinhasLista::Origem, LinhasLista::Preparo, LinhasLista::Calorias})
            QCOMPARE(linhas.Texto(0, coluna), "");
        QCOMPARE(linhas.Tag(0), "");
        QVERIFY(!linhas.TemFigura(0));
    }

    void mostraCaloriasDaReceitaInteira_data()
    {
        QTest::addColumn<QString>("calorias");
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<QString>("porcoes");
        QTest::addColumn<QString>("mostrado");
        QTest::newRow("por porção") << "250"
                                    << "P"
                                    << "4"
                                    << "1000";
        QTest::newRow("por receita") << "250"
                                     << "R"
                                     << "4"
                                     << "250";
        QTest::newRow("sem tipo") << "250"
                                  << ""
                                  << "4"
                                  << "250";
        QTest::newRow("fração por porção é cortada") << "33.3"
                                                     << "P"
                                                     << "2"
                                                     << "66";
        QTest::newRow("fração por receita fica") << "33.5"
                                                 << "R"
                                                 << "2"
                                                 << "33,5";
        QTest::newRow("negativo desce") << "-1.5"
                                        << "P"
                                        << "1"
                                        << "-2";
        QTest::newRow("sem porções") << "250"
                                     << "P"
                                     << ""
                                     << "";
        QTest::newRow("zero porções") << "250"
                                      << "P"
                                      << "0"
                                      << "0";
    }
    void mostraCaloriasDaReceitaInteira()
    {
        QFETCH(QString, calorias);
        QFETCH(QString, tipo);
        QFETCH(QString, porcoes);
        Livro livro;
        livro.Guardar({.nome = "X", .calorias = calorias, .tipoCalorias = tipo, .porcoes = porcoes});
        QTEST(Todas(livro).Texto(0, LinhasLista::Calorias), "mostrado");
    }

    void limiteDeixaForaSoQuemPassaPorPorcao_data()
    {
        QTest::addColumn<qint64>("limite");
        QTest::addColumn<QStringList>("ficam");
        QTest::newRow("nenhum") << qint64(0) << QStringList{"Inteira", "Porção", "Sem tipo"};
        QTest::newRow("abaixo do total") << qint64(999) << QStringList{"Inteira", "Sem tipo"};
        QTest::newRow("igual ao total") << qint64(1000) << QStringList{"Inteira", "Porção", "Sem tipo"};
        QTest::newRow("negativo") << qint64(-1) << QStringList{"Inteira", "Sem tipo"};
    }
    void limiteDeixaForaSoQuemPassaPorPorcao()
    {
        QFETCH(qint64, limite);
        Livro livro;
        livro.Guardar({.nome = "Inteira", .calorias = "5000", .tipoCalorias = "R", .porcoes = "4"});
        livro.Guardar({.nome = "Porção", .calorias = "250", .tipoCalorias = "P", .porcoes = "4"});
        livro.Guardar({.nome = "Sem tipo", .calorias = "5000", .porcoes = "4"});
        QTEST(Coluna(Todas(livro, limite), LinhasLista::Nome), "ficam");
    }

    void ordenaComoOLivroEMantemAOrdemDosIguais()
    {
        Livro livro;
        for (const auto &[nome, tipo] :
             {std::pair{"Ç", "Massas"}, {"B", "doces"}, {"A", "Massas"}, {"D", "Doces"}})
            livro.Guardar({.nome = nome, .classificacao = tipo});
        livro.Guardar({.nome = "Pão d'água"});
        livro.Guardar({.nome = "Pão da casa"});
        LinhasLista linhas = Todas(livro, 0, "Select * from Receitas Order By id_receitas");
        linhas.Ordenar(LinhasLista::Tipo);
        QCOMPARE(Coluna(linhas, LinhasLista::Nome),
                 (QStringList{"Pão d'água", "Pão da casa", "B", "D", "Ç", "A"}));
        const std::vector<int> antigos = linhas.Ordenar(LinhasLista::Nome);
        QCOMPARE(Coluna(linhas, LinhasLista::Nome),
                 (QStringList{"A", "B", "Ç", "D", "Pão da casa", "Pão d'água"}));
        QCOMPARE(antigos, (std::vector<int>{5, 2, 4, 3, 1, 0}));
    }

    void procuraPeloComecoDoNomeDandoAVolta()
    {
        Livro livro;
        for (const char *nome : {"Arroz", "Bolo", "Broa", "Pão"})
            livro.Guardar({.nome = nome});
        const LinhasLista linhas = Todas(livro);
        QCOMPARE(linhas.ProcurarNome("b", 0), 1);
        QCOMPARE(linhas.ProcurarNome("b", 2), 2);
        QCOMPARE(linhas.ProcurarNome("b", 3), 1);
        QCOMPARE(linhas.ProcurarNome("PÃ", 0), 3);
        QCOMPARE(linhas.ProcurarNome("olo", 0), -1);
        QCOMPARE(LinhasLista().ProcurarNome("a", 0), -1);
    }

    void aSelecaoLevaUmaVirgulaDepoisDeCadaNumero()
    {
        QCOMPARE(TextoSelecao({}), "");
        QCOMPARE(TextoSelecao({57}), "57,");
        QCOMPARE(TextoSelecao({12, 7, 30}), "12,7,30,");
    }

    // --- kinds of recipes ---

    void tipoUmOuMaisNaoSeAltera_data()
    {
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<bool>("pode");
        QTest::newRow("nulo") << "" << true;
        QTest::newRow("0") << "0" << true;
        QTest::newRow("0,9") << "0,9" << true;
        QTest::newRow("1") << "1" << false;
        QTest::newRow("1,5") << "1,5" << false;
        QTest::newRow("3") << "3" << false;
        QTest::newRow("-1") << "-1" << true;
    }
    void tipoUmOuMaisNaoSeAltera()
    {
        QFETCH(QString, tipo);
        QTEST(PodeAlterar(tipo), "pode");
    }

    // --- criteria ---

    void comandoDaPesquisa_data()
    {
        QTest::addColumn<Comandos::Pesquisa>("criterios");
        QTest::addColumn<QString>("esperado");
        using P = Comandos::Pesquisa;
        const QString cabeca = "Select * from Receitas Where 1=1 ";
        const QString pe = " Order By Nome ";
        const auto p = [](auto... mudancas) {
            P pesquisa;
            (mudancas(pesquisa), ...);
            return pesquisa;
        };
        const auto nome = [](P &x) { x.Nome = "  bolo "; };
        const auto tipo = [](P &x) { x.Tipo = "Doces"; };
        const auto origem = [](P &x) { x.Origem = " Bahia"; };
        const auto ingrediente = [](P &x) { x.Ingrediente = "sal "; };
        const auto foto = [](P &x) { x.ComFigura = true; };
        const auto calorias = [](P &x) { x.Calorias = "800"; };
        const auto preparo = [](P &x) { x.Preparo = " hora "; };
        const QString sNome = " and Nome like '%bolo%'";
        const QString sTipo = " and Classificacao = 'Doces'";
        const QString sOrigem = " and Origem = 'Bahia'";
        const QString sIngrediente =
            " and id_receitas in (Select id_receitas from Ingredientes Where Ingrediente = 'sal')";
        const QString sFoto = " and Figura is not Null ";
        const QString sCalorias = " and Calorias <= 800";
        const QString sPreparo = " and Preparo like '%hora%'";
        QTest::newRow("nome") << p(nome) << cabeca + sNome + pe;
        QTest::newRow("tipo") << p(tipo) << cabeca + sTipo + pe;
        QTest::newRow("origem") << p(origem) << cabeca + sOrigem + pe;
        QTest::newRow("ingrediente") << p(ingrediente) << cabeca + sIngrediente + pe;
        QTest::newRow("figura") << p(foto) << cabeca + sFoto + pe;
        QTest::newRow("calorias") << p(calorias) << cabeca + sCalorias + pe;
        QTest::newRow("preparo") << p(preparo) << cabeca + sPreparo + pe;
        QTest::newRow("bolo de doces com figura") << p(nome, tipo, foto)
                                                  << "Select * from Receitas Where 1=1  and Nome like "
                                                     "'%bolo%' and Classificacao = 'Doces' and Figura "
                                                     "is not Null  Order By Nome ";
        QTest::newRow("todos") << p(nome, tipo, origem, ingrediente, foto, calorias, preparo)
                               << cabeca + sNome + sTipo + sOrigem + sIngrediente + sFoto + sCalorias +
                                      sPreparo + pe;
        QTest::newRow("calorias como digitadas")
            << p([](P &x) { x.Calorias = " 800 "; }) << cabeca + " and Calorias <=  800 " + pe;
        QTest::newRow("apóstrofo não é dobrado")
            << p([](P &x) { x.Nome = "d'água"; }) << cabeca + " and Nome like '%d'água%'" + pe;
        QTest::newRow("combo só com brancos")
            << p([](P &x) { x.Tipo = "  "; }) << cabeca + " and Classificacao = ''" + pe;
    }
    void comandoDaPesquisa()
    {
        QFETCH(Comandos::Pesquisa, criterios);
        QVERIFY(!SemCriterios(criterios));
        QTEST(Comandos::SqlPesquisa(criterios), "esperado");
    }

    void cadaMisturaDeCriteriosTemSuasClausulasEmOrdem()
    {
        const QStringList clausulas = {
            " and Nome like '%a%'",
            " and Classificacao = 'b'",
            " and Origem = 'c'",
            " and id_receitas in (Select id_receitas from Ingredientes Where Ingrediente = 'd')",
            " and Figura is not Null ",
            " and Calorias <= 5",
            " and Preparo like '%f%'"};
        for (int mistura = 1; mistura < 128; ++mistura) {
            const auto tem = [mistura](int i) { return (mistura & (1 << i)) != 0; };
            Comandos::Pesquisa p;
            p.Nome = tem(0) ? "a" : "";
            p.Tipo = tem(1) ? "b" : "";
            p.Origem = tem(2) ? "c" : "";
            p.Ingrediente = tem(3) ? "d" : "";
            p.ComFigura = tem(4);
            p.Calorias = tem(5) ? "5" : "";
            p.Preparo = tem(6) ? "f" : "";
            QString esperado = "Select * from Receitas Where 1=1 ";
            for (int i = 0; i < 7; ++i)
                esperado += tem(i) ? clausulas[i] : "";
            QCOMPARE(Comandos::SqlPesquisa(p), esperado + " Order By Nome ");
            QVERIFY(!SemCriterios(p));
        }
    }

    void brancosNosCamposNaoSaoCriterio()
    {
        Comandos::Pesquisa criterios;
        QVERIFY(SemCriterios(criterios));
        criterios.Nome = criterios.Calorias = criterios.Preparo = "   ";
        QVERIFY(SemCriterios(criterios));
        criterios.Origem = " ";
        QVERIFY(!SemCriterios(criterios));
    }

    void limiteEhAParteInteira_data()
    {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<qint64>("limite");
        QTest::newRow("vazio") << "" << qint64(0);
        QTest::newRow("brancos") << "  " << qint64(0);
        QTest::newRow("inteiro") << "800" << qint64(800);
        QTest::newRow("cercado de brancos") << " 800 " << qint64(800);
        QTest::newRow("fração") << "799,9" << qint64(799);
        QTest::newRow("negativo desce") << "-0,5" << qint64(-1);
        QTest::newRow("enorme") << QString(30, u'9') << qint64(9000000000000000000);
    }
    void limiteEhAParteInteira()
    {
        QFETCH(QString, texto);
        Comandos::Pesquisa criterios;
        criterios.Calorias = texto;
        QTEST(LimiteCalorias(criterios), "limite");
    }

    void recusaCaloriasQueNaoSaoNumero_data()
    {
        QTest::addColumn<QString>("texto");
        for (const char *texto : {"-", "5--", "1-2", ",", "1,2,3", "abc", "inf", "nan"})
            QTest::newRow(texto) << texto;
    }
    void recusaCaloriasQueNaoSaoNumero()
    {
        QFETCH(QString, texto);
        Comandos::Pesquisa criterios;
        criterios.Calorias = texto;
        try {
            LimiteCalorias(criterios);
            QFAIL("aceitou");
        } catch (const ErroCriterio &erro) {
            QCOMPARE(QString::fromUtf8(erro.what()),
                     "A quantidade de calorias informada não é um número: " + texto);
        }
    }

    // --- deleting ---

    void exclusaoLevaFiguraLinhasEReceita()
    {
        Livro livro;
        const qint64 fica = livro.Guardar({.nome = "Fica", .figura = true, .ingredientes = {"1|-|sal"}});
        const qint64 sai =
            livro.Guardar({.nome = "Sai", .figura = true, .ingredientes = {"1|-|sal", "2|-|alho"}});
        const QString figura = Figuras(livro.banco).Caminho(Comandos::NomeFigura(sai));
        QVERIFY(QFile::exists(figura));

        ExcluirReceita(livro.banco, sai);
        QVERIFY(!QFile::exists(figura));
        QVERIFY(QFile::exists(Figuras(livro.banco).Caminho(Comandos::NomeFigura(fica))));
        QCOMPARE(livro.Quantas("Receitas"), 1);
        QCOMPARE(livro.Quantas("Ingredientes"), 1);
    }

    void exclusaoSegueSemAFigura()
    {
        Livro livro;
        const qint64 n = livro.Guardar({.nome = "Sai", .figura = true});
        QVERIFY(QFile::remove(Figuras(livro.banco).Caminho(Comandos::NomeFigura(n))));
        ExcluirReceita(livro.banco, n);
        QCOMPARE(livro.Quantas("Receitas"), 0);
    }

    // --- the card ---

    void cartaoSaiComoNoModelo_data()
    {
        QTest::addColumn<ReceitaDeTeste>("receita");
        QTest::newRow("minima") << ReceitaDeTeste{
            .nome = "Sal", .modo = "Salgue.", .ingredientes = {"-|-|sal"}};
        QTest::newRow("fatos_por_porcao") << ReceitaDeTeste{.nome = "Bolo",
                                                            .classificacao = "Doces",
                                                            .origem = "Caderno da Tia",
                                                            .preparo = "1 hora",
                                                            .calorias = "250",
                                                            .tipoCalorias = "P",
                                                            .porcoes = "1",
                                                            .observacao = "Sirva frio.\r\n\r\n\r\n",
                                                            .ingredientes = {"2|xícaras|farinha", "1|-|ovo"}};
        QTest::newRow("fatos_por_receita") << ReceitaDeTeste{.nome = "Bolo",
                                                             .calorias = "3200,5",
                                                             .tipoCalorias = "R",
                                                             .porcoes = "4",
                                                             .ingredientes = {" 1/2 | kg | carne moída "}};
        QTest::newRow("calorias_sem_tipo") << ReceitaDeTeste{.nome = "Bolo", .calorias = "90"};
        QTest::newRow("vazio_nao_nulo_traz_branco")
            << ReceitaDeTeste{.nome = "Bolo", .ingredientes = {"||sal", "-||alho", "2|-|ovos"}};
        QTest::newRow("figura_e_poucas_linhas")
            << ReceitaDeTeste{.nome = "Bolo", .figura = true, .ingredientes = {"1|-|ovo", "-|-|sal"}};
        QStringList muitas;
        for (int i = 1; i <= 14; ++i)
            muitas += QString("%1|xícaras|%2")
                          .arg(i)
                          .arg(i % 5 ? "leite" : "farinha de trigo bem peneirada com fermento");
        QTest::newRow("figura_e_muitas_linhas")
            << ReceitaDeTeste{.nome = "Bolo", .figura = true, .ingredientes = muitas};
        QTest::newRow("textos_que_quebram") << ReceitaDeTeste{
            .nome = "Bolo de cenoura com cobertura de chocolate meio amargo",
            .origem = "Receitas que a vizinha copiou do programa da tarde e guardou na gaveta da cozinha",
            .preparo =
                "uma hora e quinze minutos no forno baixo, mais duas horas na geladeira antes de servir",
            .modo = "Bata as cenouras com os ovos e o óleo até ficar um creme liso e sem pedaços.\r\nJunte a "
                    "farinha "
                    "e o açúcar peneirados, mexendo sempre na mesma direção, e leve ao forno.\r\n\r\n",
            .observacao =
                "Fica melhor no dia seguinte, coberto com um pano, fora da geladeira e longe das formigas."};
    }
    void cartaoSaiComoNoModelo()
    {
        QFETCH(ReceitaDeTeste, receita);
        Livro livro;
        // Decimal figures stand in the statement in the engine's notation.
        receita.calorias.replace(',', '.');
        const Cartao cartao = Cartao::Ler(livro.banco, livro.Guardar(receita));
        SuperficieGravadora superficie;
        const double fim = cartao.Desenhar(superficie);
        superficie.passos += QString("fim %1").arg(fim, 0, 'f', 2);
        const QByteArray saiu = superficie.passos.join('\n').toUtf8() + '\n';

        const QString nome = QString(PASTA_FONTES "/tests/data/cartao_%1.txt").arg(QTest::currentDataTag());
        // With this variable set the model files are written anew: read the difference before committing it.
        if (qEnvironmentVariableIsSet("COZINHARIO_GRAVAR_MODELOS")) {
            QFile novo(nome);
            QVERIFY(novo.open(QIODevice::WriteOnly));
            novo.write(saiu);
        }
        QFile modelo(nome);
        QVERIFY2(modelo.open(QIODevice::ReadOnly), qPrintable(nome));
        QCOMPARE(QString::fromUtf8(saiu), QString::fromUtf8(modelo.readAll()));
    }

    void quebrasDeOutrosSistemasSeparamLinhas()
    {
        const auto passos = [](const QString &quebra) {
            Livro livro;
            const Cartao cartao =
                Cartao::Ler(livro.banco, livro.Guardar({.nome = "B",
                                                        .modo = "Mexa a massa." + quebra + "Leve ao forno.",
                                                        .observacao = "Rende." + quebra + "Sirva."}));
            SuperficieGravadora superficie;
            cartao.Desenhar(superficie);
            return superficie.passos;
        };
        const QStringList comoSempre = passos("\r\n");
        QCOMPARE(comoSempre.filter("Leve ao forno.").size(), 1);
        QCOMPARE(comoSempre.filter("massa.Leve").size(), 0);
        QCOMPARE(passos("\n"), comoSempre);
        QCOMPARE(passos("\r"), comoSempre);
    }

    void semFiguraOModoVemLogoDepoisDosIngredientes()
    {
        const auto modoEm = [](bool comFigura) {
            Livro livro;
            const Cartao cartao = Cartao::Ler(
                livro.banco,
                livro.Guardar({.nome = "B", .figura = comFigura, .ingredientes = {"1|-|ovo", "-|-|sal"}}));
            SuperficieGravadora superficie;
            cartao.Desenhar(superficie);
            double ingredientes = 0;
            double modo = 0;
            for (const QString &passo : superficie.passos) {
                const double y = passo.mid(8, 7).toDouble();
                if (passo.contains("|Ingredientes :|"))
                    ingredientes = y;
                if (passo.contains("|Modo de Preparo :|"))
                    modo = y;
            }
            return modo - ingredientes;
        };
        QCOMPARE(modoEm(false), 2 * 4.5 + 9);
        QCOMPARE(modoEm(true), 45.0 + 9);
    }

    void figuraPerdidaOuEstragadaFicaDeFora()
    {
        Livro livro;
        const qint64 n = livro.Guardar({.nome = "B", .figura = true});
        QVERIFY(!Cartao::Ler(livro.banco, n).figura.isNull());
        Figuras(livro.banco).GravarFigura("isto não é figura", n);
        QVERIFY(Cartao::Ler(livro.banco, n).figura.isNull());
        QVERIFY(QFile::remove(Figuras(livro.banco).Caminho(Comandos::NomeFigura(n))));
        const Cartao cartao = Cartao::Ler(livro.banco, n);
        QVERIFY(cartao.figura.isNull());
        SuperficieGravadora superficie;
        cartao.Desenhar(superficie);
        QVERIFY(superficie.passos.filter("figura").isEmpty());
    }

    void figuraGrandeEhReduzidaUmaVezSo()
    {
        Livro livro;
        const qint64 n = livro.Guardar({.nome = "B", .figura = true});
        QImage foto(2500, 200, QImage::Format_RGB32);
        foto.fill(Qt::red);
        QByteArray bytes;
        QBuffer saida(&bytes);
        saida.open(QIODevice::WriteOnly);
        foto.save(&saida, "PNG");
        Figuras(livro.banco).GravarFigura(bytes, n);
        QCOMPARE(Cartao::Ler(livro.banco, n).figura.size(), QSize(831, 200));
    }

    void receitaQueNaoExisteEhErro()
    {
        Livro livro;
        QVERIFY_EXCEPTION_THROWN(Cartao::Ler(livro.banco, 77), ErroBanco);
    }

    void textoMaiorQueOCanvasNaoSePerde()
    {
        Livro livro;
        QString modo;
        for (int i = 1; i <= 400; ++i)
            modo += QString("Passo %1.\r\n").arg(i);
        const Cartao cartao = Cartao::Ler(livro.banco, livro.Guardar({.nome = "B", .modo = modo}));
        SuperficieGravadora superficie;
        QVERIFY(cartao.Desenhar(superficie) > superficie.ScaleHeight());
        QCOMPARE(superficie.passos.filter("|Passo 400.|").size(), 1);
        QVERIFY(!superficie.passos.contains("pagina"));
    }

    void textoParaOuvirTrazTudoEmOrdem()
    {
        Livro livro;
        const Cartao cartao =
            Cartao::Ler(livro.banco, livro.Guardar({.nome = "Bolo",
                                                    .classificacao = "Doces",
                                                    .calorias = "250",
                                                    .tipoCalorias = "P",
                                                    .porcoes = "4",
                                                    .modo = "Bata.\r\nAsse.\r\n",
                                                    .observacao = "Sirva.",
                                                    .ingredientes = {"2|xícaras|farinha"}}));
        QCOMPARE(cartao.Texto(), "Bolo\n()\nTipo : Doces\nRendimento : 4 porções\nCalorias : 250 por Porção\n"
                                 "Ingredientes : \n2 xícaras farinha\nModo de Preparo : \nBata.\nAsse.\n"
                                 "Informações Adicionais : \nSirva.");
    }

    /// What a package can bring and no cook reads: shown cut, with a bounded number of strokes of the pen.
    void textosSemFimCabemNoCartao()
    {
        Livro livro;
        const QString mega(1'000'000, 'x');
        const QString acentos = "a" + QString(3000, QChar(0x301));
        livro.banco.ExecutarSQL("Insert into Receitas(Nome,Modo,Origem,Observacao) values ('" + mega + "','" + mega +
                                "','" + acentos + "','" + mega + "')");
        for (int i = 0; i < 3; ++i)
            livro.banco.ExecutarSQL(Comandos::SqlInserirIngrediente(1, i == 1 ? acentos : "sal", "1", ""));
        const Cartao cartao = Cartao::Ler(livro.banco, 1);
        QCOMPARE(cartao.nome, QString(1000, 'x') + "...");
        QVERIFY(cartao.origem.size() < 20);
        QCOMPARE(cartao.modo.size(), 200'003);
        SuperficieGravadora superficie;
        cartao.Desenhar(superficie);
        QVERIFY(superficie.passos.size() < 20'000);
    }
};

QTEST_MAIN(TesteBrowseRegras)
#include "teste_browse_regras.moc"
