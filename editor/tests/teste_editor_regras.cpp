#include "base/Relogio.h"
#include "editor/GravarReceita.h"
#include "editor/LerReceita.h"
#include "editor/LinhaIngrediente.h"
#include "editor/RecusaDeGravacao.h"
#include "store/Banco.h"
#include "store/ErroBanco.h"
#include "store/Figuras.h"
#include "store/tests/GravacaoQueFalha.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
QString Tag(QString partes)
{
    return partes.replace('|', QChar(0xA0));
}

class RelogioParado : public Relogio
{
public:
    QDateTime Agora() const override { return QDateTime(dia, QTime(23, 59)); }
    QDate dia = QDate(2005, 11, 21);
};

struct Livro {
    QTemporaryDir pasta;
    Banco banco{pasta.path()};
    Figuras figuras{banco};
    RelogioParado relogio;

    /// What a screen shows is saved; the screen itself is another's business.
    qint64 Gravar(ReceitaNaTela tela) const { return GravarReceita(banco, figuras, relogio, tela); }

    QStringList Linhas(const QString &sql) const
    {
        QStringList linhas;
        for (RecordSet rs = banco.AbrirRecordset(sql); !rs.Eof(); rs.MoveNext()) {
            QStringList colunas;
            for (int i = 0; i < rs.FieldCount(); ++i)
                colunas += rs.Nulo(i) ? QString("NULL") : rs.Texto(i);
            linhas += colunas.join('|');
        }
        return linhas;
    }

    QString Arquivo(const QString &nome, const QByteArray &bytes) const
    {
        QFile arquivo(pasta.filePath(nome));
        if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(bytes) != bytes.size())
            qFatal("cannot write");
        return arquivo.fileName();
    }

    QByteArray Figura(int numero) const
    {
        QFile arquivo(banco.Caminho(QString("Fotos\\F%1.img").arg(numero, 7, 10, QChar('0'))));
        return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray("(no file)");
    }
};

ReceitaNaTela Minima()
{
    ReceitaNaTela tela;
    tela.txtNome = "Pudim";
    tela.txtModo = "Cozinhe em banho-maria.";
    tela.imgFigura = EstadoDaFigura::Nenhuma();
    tela.ingredientes = {Tag("1|lata|leite condensado")};
    return tela;
}

ReceitaNaTela Cheia()
{
    ReceitaNaTela tela = Minima();
    tela.txtNome = "  Pão d'água ";
    tela.cmbTipo = " Pães ";
    tela.txtModo = "Sove.\r\n\r\nAsse.";
    tela.txtObs = "Rende 'bem'";
    tela.txtPorcoes = " 12 ";
    tela.txtPreparo = "2 horas";
    tela.txtCalorias = "250";
    tela.optPorcao = true;
    tela.ingredientes = {Tag("1/2|kg|farinha d'oeste"), Tag("||sal"), Tag("2||ovos"), Tag("|pitada|açúcar")};
    return tela;
}
} // namespace

class TesteEditorRegras : public QObject
{
    Q_OBJECT
private slots:
    void escreveTextoETagDaLinha_data()
    {
        QTest::addColumn<QString>("qtde");
        QTest::addColumn<QString>("unidade");
        QTest::addColumn<QString>("ingrediente");
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("tag");
        QTest::newRow("as três partes") << "2"
                                        << "xícaras"
                                        << "farinha"
                                        << "2 xícaras farinha"
                                        << "2|xícaras|farinha";
        QTest::newRow("só o ingrediente") << ""
                                          << ""
                                          << "farinha"
                                          << "farinha"
                                          << "||farinha";
        QTest::newRow("sem unidade") << "3"
                                     << ""
                                     << "ovos"
                                     << "3 ovos"
                                     << "3||ovos";
        QTest::newRow("sem quantidade") << ""
                                        << "pitada"
                                        << "sal"
                                        << "pitada sal"
                                        << "|pitada|sal";
        QTest::newRow("apara cada parte") << " 1 "
                                          << " kg "
                                          << "  carne seca  "
                                          << "1 kg carne seca"
                                          << "1|kg|carne seca";
        QTest::newRow("só brancos é vazio") << "   "
                                            << "  "
                                            << "sal"
                                            << "sal"
                                            << "||sal";
        QTest::newRow("brancos inseparáveis viram brancos") << "1\u00A0"
                                                            << "colher\u00A0rasa"
                                                            << "\u00A0óleo\u00A0de\u00A0soja"
                                                            << "1 colher rasa óleo de soja"
                                                            << "1|colher rasa|óleo de soja";
    }
    void escreveTextoETagDaLinha()
    {
        QFETCH(QString, qtde);
        QFETCH(QString, unidade);
        QFETCH(QString, ingrediente);
        const LinhaIngrediente linha = LinhaIngrediente::De(qtde, unidade, ingrediente);
        QTEST(linha.Texto(), "texto");
        QFETCH(QString, tag);
        QCOMPARE(linha.Tag(), Tag(tag));
        const LinhaIngrediente lida = LinhaIngrediente::DoTag(linha.Tag());
        QCOMPARE(lida.Tag(), linha.Tag());
        QCOMPARE(lida.Texto(), linha.Texto());
    }

    void numeraAsChaves_data()
    {
        QTest::addColumn<QString>("ultima");
        QTest::addColumn<QString>("proxima");
        QTest::newRow("depois da raiz") << "R"
                                        << "C1";
        QTest::newRow("depois da primeira") << "C1"
                                            << "C2";
        QTest::newRow("um algarismo a mais") << "C9"
                                             << "C10";
        QTest::newRow("depois de um vão") << "C41"
                                          << "C42";
    }
    void numeraAsChaves()
    {
        QFETCH(QString, ultima);
        QTEST(ProximaChave(ultima), "proxima");
    }

    void escreveOsComandosDaTela()
    {
        QCOMPARE(
            Comandos::SqlInserirReceita(ReceitaDaTela(Cheia()), QDate(2005, 11, 21)),
            "Insert into Receitas(Nome,Data,Classificacao,Modo,Porcoes,Preparo,Tipo_Calorias,Calorias,"
            "Observacao,Figura) values ('Pão d''água',CDATE('2005-11-21'),'Pães','Sove.\r\n\r\nAsse.',12,"
            "'2 horas','P',250,'Rende ''bem''',NULL)");
        ReceitaNaTela vazia = Minima();
        QCOMPARE(
            Comandos::SqlInserirReceita(ReceitaDaTela(vazia), QDate(2005, 11, 21)),
            "Insert into Receitas(Nome,Data,Classificacao,Modo,Porcoes,Preparo,Tipo_Calorias,Calorias,"
            "Observacao,Figura) values ('Pudim',CDATE('2005-11-21'),NULL,'Cozinhe em banho-maria.',0,NULL,"
            "NULL,0,NULL,NULL)");
        vazia.optReceita = true;
        QCOMPARE(
            Comandos::SqlAlterarReceita(ReceitaDaTela(vazia), 7, Comandos::Figura::Mantida),
            "Update Receitas set  Nome = 'Pudim', Classificacao = NULL, Modo = 'Cozinhe em banho-maria.', "
            "Porcoes = 0, Preparo = NULL, Calorias = 0, Observacao = NULL, Tipo_Calorias = 'R', Figura = "
            "Figura  Where id_Receitas = 7");
    }

    void gravaUmaReceitaNova()
    {
        Livro livro;
        QCOMPARE(livro.Gravar(Cheia()), 1);
        QCOMPARE(livro.Linhas("Select id_receitas,Nome,Classificacao,Modo,Tipo,Origem,Porcoes,Preparo,"
                              "Tipo_Calorias,Calorias,Observacao,Figura from Receitas"),
                 QStringList("1|Pão d'água|Pães|Sove.\r\n\r\nAsse.|NULL|NULL|12|2 horas|P|250|Rende "
                             "'bem'|NULL"));
        QVERIFY(livro.Linhas("Select Data from Receitas")[0].startsWith("2005-11-21"));
        QCOMPARE(livro.Linhas("Select id_receitas,Quantidade,Unidade,Ingrediente from Ingredientes Order By "
                              "id_ingredientes"),
                 QStringList({"1|1/2|kg|farinha d'oeste", "1|NULL|NULL|sal", "1|2|NULL|ovos",
                              "1|NULL|pitada|açúcar"}));
        QVERIFY(!QFileInfo::exists(livro.banco.Caminho("Fotos")));
    }

    void gravaVaziosComoZeroENulo()
    {
        Livro livro;
        livro.Gravar(Minima());
        QCOMPARE(livro.Linhas("Select Classificacao,Porcoes,Preparo,Tipo_Calorias,Calorias,Observacao,Figura "
                              "from Receitas"),
                 QStringList("NULL|0|NULL|NULL|0|NULL|NULL"));
    }

    void gravaAFiguraDeUmaReceitaNova()
    {
        Livro livro;
        ReceitaNaTela tela = Minima();
        livro.Gravar(tela);
        tela.imgFigura = livro.Arquivo("foto.gif", "GIF89a bytes");
        QCOMPARE(livro.Gravar(tela), 2);
        QCOMPARE(livro.Linhas("Select id_receitas,Figura from Receitas Order By id_receitas"),
                 QStringList({"1|NULL", "2|F0000002.img"}));
        QCOMPARE(livro.Figura(2), "GIF89a bytes");
    }

    void copiaQueFalhaDeixaALinhaApontandoParaNada()
    {
        Livro livro;
        ReceitaNaTela tela = Minima();
        tela.imgFigura = livro.pasta.filePath("sumiu.jpg");
        QCOMPARE(livro.Gravar(tela), 1);
        QCOMPARE(livro.Linhas("Select Figura from Receitas"), QStringList("F0000001.img"));
        QCOMPARE(livro.Figura(1), "(no file)");
        QCOMPARE(livro.Linhas("Select Ingrediente from Ingredientes").size(), 1);
    }

    void alteraReescrevendoAsLinhas()
    {
        Livro livro;
        livro.Gravar(Cheia());
        livro.Gravar(Minima());
        livro.relogio.dia = QDate(2006, 1, 2);
        ReceitaNaTela tela = Cheia();
        tela.txtNroReceita = "1";
        tela.txtNome = "Pão";
        tela.optPorcao = false;
        tela.imgFigura = EstadoDaFigura::Guardada();
        tela.ingredientes = {Tag("||sal"), Tag("1|kg|farinha")};
        QCOMPARE(livro.Gravar(tela), 1);
        QCOMPARE(livro.Linhas("Select id_receitas,Nome,Tipo_Calorias from Receitas Order By id_receitas"),
                 QStringList({"1|Pão|NULL", "2|Pudim|NULL"}));
        QVERIFY(livro.Linhas("Select Data from Receitas Where id_receitas = 1")[0].startsWith("2005-11-21"));
        // Four lines of the first save and one of the second came before.
        QCOMPARE(livro.Linhas("Select id_ingredientes,id_receitas,Ingrediente from Ingredientes Order By "
                              "id_ingredientes"),
                 QStringList({"5|2|leite condensado", "6|1|sal", "7|1|farinha"}));
    }

    void alteraAFigura_data()
    {
        QTest::addColumn<QString>("acao");
        QTest::addColumn<QString>("figura");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nova") << "nova"
                              << "F0000001.img" << QByteArray("second");
        QTest::newRow("limpa") << "NADA"
                               << "NULL" << QByteArray("(no file)");
        QTest::newRow("mantida") << "OLD"
                                 << "F0000001.img" << QByteArray("first");
        QTest::newRow("o próprio arquivo") << "ela mesma"
                                           << "F0000001.img" << QByteArray("first");
    }
    void alteraAFigura()
    {
        Livro livro;
        ReceitaNaTela tela = Minima();
        tela.imgFigura = livro.Arquivo("um.jpg", "first");
        livro.Gravar(tela);

        QFETCH(QString, acao);
        tela.txtNroReceita = "1";
        tela.imgFigura = acao == "nova"        ? livro.Arquivo("dois.jpg", "second")
                         : acao == "ela mesma" ? livro.banco.Caminho("Fotos\\F0000001.img")
                                               : acao;
        livro.Gravar(tela);
        QFETCH(QString, figura);
        QCOMPARE(livro.Linhas("Select Figura from Receitas"), QStringList(figura));
        QTEST(livro.Figura(1), "bytes");
    }

    void recusaOQueNaoENumeroAntesDeGravar_data()
    {
        QTest::addColumn<QString>("valor");
        for (const char *valor : {"1,5", "-", "--5", "5-", "5-3", "abc", "Calorias", "1 2", "0x10", "1e3", ".5",
                                  "(Select max(Calorias) from Receitas)"})
            QTest::newRow(valor) << valor;
    }
    void recusaOQueNaoENumeroAntesDeGravar()
    {
        QFETCH(QString, valor);
        for (const bool calorias : {false, true}) {
            for (const bool nova : {false, true}) {
                Livro livro;
                ReceitaNaTela tela = Minima();
                tela.imgFigura = livro.Arquivo("um.jpg", "first");
                livro.Gravar(tela);
                tela.txtNroReceita = nova ? "" : "1";
                tela.txtNome = "Outro";
                tela.imgFigura = calorias ? EstadoDaFigura::Nenhuma() : livro.Arquivo("dois.jpg", "second");
                tela.ingredientes = {Tag("||nada")};
                (calorias ? tela.txtCalorias : tela.txtPorcoes) = valor;
                try {
                    livro.Gravar(tela);
                    QFAIL("saved");
                } catch (const RecusaDeGravacao &recusa) {
                    QCOMPARE(recusa.OndeFoi(), calorias ? RecusaDeGravacao::Onde::Calorias
                                                        : RecusaDeGravacao::Onde::Porcoes);
                    QVERIFY2(recusa.Mensagem().startsWith(
                                 QString("O campo %1 tem \"%2\"").arg(calorias ? "Calorias" : "Rendimento", valor)),
                             qPrintable(recusa.Mensagem()));
                }
                QCOMPARE(livro.Linhas("Select id_receitas,Nome,Figura from Receitas"),
                         QStringList("1|Pudim|F0000001.img"));
                QCOMPARE(livro.Linhas("Select Ingrediente from Ingredientes"), QStringList("leite condensado"));
                QCOMPARE(livro.Figura(1), "first");
            }
        }
    }

    void aceitaOsNumerosQueOLivroAceita()
    {
        Livro livro;
        ReceitaNaTela tela = Minima();
        for (const auto &[valor, guardado] :
             {std::pair{" 12 ", "12"}, {"-3", "-3"}, {"007", "7"}, {"2.5", "2,5"}, {"", "0"}}) {
            tela.txtPorcoes = valor;
            const qint64 n = livro.Gravar(tela);
            QCOMPARE(livro.Linhas(QString("Select Porcoes from Receitas Where id_receitas = %1").arg(n)),
                     QStringList(guardado));
        }
    }

    void recusaALinhaAntesDeGravar_data()
    {
        QTest::addColumn<QString>("qtde");
        // Only a paste or a package brings an apostrophe into a quantity; there it is not doubled.
        for (const char *qtde : {"1 copo d'água", "'", "1','x", "1',NULL) --", "1',NULL),(1,'VENENO','1",
                                 "1'+(Select max(id_receitas) from Receitas)+'"})
            QTest::newRow(qtde) << qtde;
    }
    void recusaALinhaAntesDeGravar()
    {
        QFETCH(QString, qtde);
        for (const bool nova : {false, true}) {
            Livro livro;
            ReceitaNaTela tela = Minima();
            tela.imgFigura = livro.Arquivo("um.jpg", "first");
            livro.Gravar(tela);
            tela.txtNroReceita = nova ? "" : "1";
            tela.txtNome = "Outro";
            tela.imgFigura = EstadoDaFigura::Nenhuma();
            tela.ingredientes = {Tag("||um"), Tag(qtde + "||dois"), Tag("||três")};
            try {
                livro.Gravar(tela);
                QFAIL("saved");
            } catch (const RecusaDeGravacao &recusa) {
                QCOMPARE(recusa.OndeFoi(), RecusaDeGravacao::Onde::Linha);
                QCOMPARE(recusa.Linha(), 1);
                QVERIFY2(recusa.Mensagem().startsWith("O ingrediente 2, \"" + qtde + " dois\", não pode"),
                         qPrintable(recusa.Mensagem()));
            }
            QCOMPARE(livro.Linhas("Select id_receitas,Nome,Figura from Receitas"),
                     QStringList("1|Pudim|F0000001.img"));
            QCOMPARE(livro.Linhas("Select Ingrediente from Ingredientes"), QStringList("leite condensado"));
            QCOMPARE(livro.Figura(1), "first");
        }
    }

    void aReceitaExcluidaNesseMeioTempoEGravadaDeNovo_data()
    {
        QTest::addColumn<QString>("acao");
        QTest::addColumn<QString>("figura");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nova") << "nova"
                              << "F0000003.img" << QByteArray("second");
        QTest::newRow("limpa") << "NADA"
                               << "NULL" << QByteArray("(no file)");
        QTest::newRow("mantida") << "OLD"
                                 << "F0000003.img" << QByteArray("first");
        QTest::newRow("mantida, sem bytes") << "OLD, none"
                                            << "NULL" << QByteArray("(no file)");
    }
    void aReceitaExcluidaNesseMeioTempoEGravadaDeNovo()
    {
        QFETCH(QString, acao);
        QFETCH(QString, figura);
        Livro livro;
        ReceitaNaTela tela = Cheia();
        tela.imgFigura = livro.Arquivo("um.jpg", "first");
        livro.Gravar(tela);
        livro.Gravar(Minima());
        livro.figuras.ApagarFigura(1);
        livro.banco.ExecutarSQL(Comandos::SqlExcluirReceita(1));
        livro.banco.ExecutarSQL(Comandos::SqlExcluirIngredientes(1));

        tela.txtNroReceita = "1";
        tela.imgFigura = acao == "nova" ? livro.Arquivo("dois.jpg", "second") : acao.section(',', 0, 0);
        tela.figuraAntiga = acao == "OLD" ? "first" : "";
        QCOMPARE(GravarReceita(livro.banco, livro.figuras, livro.relogio, tela), 3);
        QCOMPARE(tela.txtNroReceita, "3");
        QCOMPARE(livro.Linhas("Select id_receitas,Nome,Figura from Receitas Order By id_receitas"),
                 QStringList({"2|Pudim|NULL", "3|Pão d'água|" + figura}));
        QCOMPARE(livro.Linhas("Select id_receitas,Ingrediente from Ingredientes Order By id_ingredientes"),
                 QStringList({"2|leite condensado", "3|farinha d'oeste", "3|sal", "3|ovos", "3|açúcar"}));
        QTEST(livro.Figura(3), "bytes");
        QCOMPARE(livro.Figura(1), "(no file)");
    }

    void repetirOQueFalhouNoMeioDeixaUmaReceitaSo_data()
    {
        QTest::addColumn<bool>("nova");
        QTest::newRow("nova") << true;
        QTest::newRow("alterada") << false;
    }
    /// The disk is full from the n-th write on, for every n; then there is room again.
    void repetirOQueFalhouNoMeioDeixaUmaReceitaSo()
    {
        QFETCH(bool, nova);
        bool falhou = true;
        int falhas = 0;
        for (int n = 0; falhou; n += 4) {
            QVERIFY(n < 1000);
            Livro livro;
            ReceitaNaTela tela = Minima();
            tela.imgFigura = livro.Arquivo("um.jpg", "first");
            if (!nova)
                GravarReceita(livro.banco, livro.figuras, livro.relogio, tela);
            else
                livro.Linhas("Select Nome from Receitas"); // the book is made
            ReceitaNaTela depois = Cheia();
            depois.txtNroReceita = tela.txtNroReceita;
            depois.imgFigura = livro.Arquivo("dois.jpg", "second");
            falhou = false;
            {
                const GravacaoQueFalha falha(n);
                try {
                    GravarReceita(livro.banco, livro.figuras, livro.relogio, depois);
                } catch (const ErroBanco &) {
                    falhou = true;
                    ++falhas;
                }
            }
            GravarReceita(livro.banco, livro.figuras, livro.relogio, depois);
            QCOMPARE(livro.Linhas("Select id_receitas,Nome from Receitas"), QStringList("1|Pão d'água"));
            QCOMPARE(livro.Linhas("Select id_receitas,Ingrediente from Ingredientes Order By id_ingredientes"),
                     QStringList({"1|farinha d'oeste", "1|sal", "1|ovos", "1|açúcar"}));
            QCOMPARE(livro.Figura(1), "second");
        }
        QVERIFY(falhas > 10);
    }

    /// A change that the disk refuses at its first statement leaves the recipe as it was, its picture included.
    void oQueODiscoRecusaNaoLevaAFigura()
    {
        for (const bool limpar : {false, true}) {
            Livro livro;
            ReceitaNaTela tela = Minima();
            tela.imgFigura = livro.Arquivo("um.jpg", "first");
            GravarReceita(livro.banco, livro.figuras, livro.relogio, tela);
            tela.imgFigura = limpar ? EstadoDaFigura::Nenhuma() : livro.Arquivo("dois.jpg", "second");
            tela.txtNome = "Outro"; // a row that stays the same is not written
            {
                const GravacaoQueFalha falha(0);
                QVERIFY_EXCEPTION_THROWN(livro.Gravar(tela), ErroBanco);
            }
            QCOMPARE(livro.Linhas("Select Figura from Receitas"), QStringList("F0000001.img"));
            QCOMPARE(livro.Figura(1), "first");
        }
    }

    void oCaractereNuloNaoImpedeDeGravar()
    {
        Livro livro;
        ReceitaNaTela tela = Minima();
        tela.txtNome = QString("Pu") + QChar(0) + "dim";
        tela.txtPorcoes = QString("4") + QChar(0);
        tela.ingredientes = {Tag("1||sa") + QChar(0) + "l"};
        livro.Gravar(tela);
        QCOMPARE(livro.Linhas("Select Nome,Porcoes from Receitas"), QStringList("Pudim|4"));
        QCOMPARE(livro.Linhas("Select Ingrediente from Ingredientes"), QStringList("sal"));
    }

    void guardaTextoForaDaPaginaDeCodigo()
    {
        Livro livro;
        ReceitaNaTela tela = Minima();
        tela.txtNome = "Борщ 饺子 😋";
        tela.ingredientes = {Tag("½|杯|味噌")};
        livro.Gravar(tela);
        const ReceitaLida lida = LerParaATela(livro.banco, 1);
        QCOMPARE(lida.tela.txtNome, tela.txtNome);
        QCOMPARE(lida.tela.ingredientes, tela.ingredientes);
    }

    void leOQueGravou()
    {
        Livro livro;
        livro.Gravar(Cheia());
        const ReceitaLida lida = LerParaATela(livro.banco, 1);
        QCOMPARE(lida.tela.txtNroReceita, "1");
        QCOMPARE(lida.tela.txtNome, "Pão d'água");
        QCOMPARE(lida.tela.cmbTipo, "Pães");
        QCOMPARE(lida.tela.txtModo, "Sove.\r\n\r\nAsse.");
        QCOMPARE(lida.tela.txtObs, "Rende 'bem'");
        QCOMPARE(lida.tela.txtPorcoes, "12");
        QCOMPARE(lida.tela.txtPreparo, "2 horas");
        QCOMPARE(lida.tela.txtCalorias, "250");
        QCOMPARE(lida.tela.txtOrigem, "");
        QCOMPARE(lida.tela.txtTipoRect, "");
        QCOMPARE(lida.figura, "");
        QCOMPARE(lida.tela.ingredientes, Cheia().ingredientes);
    }

    void zeroApareceVazio()
    {
        Livro livro;
        livro.Gravar(Minima());
        const ReceitaLida lida = LerParaATela(livro.banco, 1);
        QCOMPARE(lida.tela.txtPorcoes, "");
        QCOMPARE(lida.tela.txtCalorias, "");
    }

    void leABaseDasCalorias_data()
    {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<bool>("receita");
        QTest::addColumn<bool>("porcao");
        QTest::newRow("NULL") << "NULL" << false << false;
        QTest::newRow("P") << "'P'" << false << true;
        QTest::newRow("R") << "'R'" << true << false;
        QTest::newRow("outra letra") << "'X'" << true << false;
        QTest::newRow("texto vazio") << "''" << true << false;
    }
    void leABaseDasCalorias()
    {
        Livro livro;
        livro.Gravar(Minima());
        QFETCH(QString, sql);
        livro.banco.ExecutarSQL("Update Receitas set Tipo_Calorias = " + sql);
        const ReceitaLida lida = LerParaATela(livro.banco, 1);
        QTEST(lida.tela.optReceita, "receita");
        QTEST(lida.tela.optPorcao, "porcao");
    }

    void leOrigemTipoEFigura()
    {
        Livro livro;
        livro.Gravar(Minima());
        livro.banco.ExecutarSQL("Update Receitas set Origem = 'Festas', Tipo = 2, Figura = 'F0000001.img'");
        const ReceitaLida lida = LerParaATela(livro.banco, 1);
        QCOMPARE(lida.tela.txtOrigem, "Festas");
        QCOMPARE(lida.tela.txtTipoRect, "2");
        QCOMPARE(lida.figura, "F0000001.img");
    }

    void linhaDePacoteComBrancoInseparavelTemTresPartes()
    {
        Livro livro;
        livro.Gravar(Minima());
        livro.banco.ExecutarSQL("Update Ingredientes set Ingrediente = 'leite\u00A0de\u00A0coco'");
        QCOMPARE(LerParaATela(livro.banco, 1).tela.ingredientes, QStringList(Tag("1|lata|leite de coco")));
    }

    void numeroQueNaoExisteEErroDoBanco()
    {
        Livro livro;
        QVERIFY_EXCEPTION_THROWN(LerParaATela(livro.banco, 99), ErroBanco);
    }
};

QTEST_GUILESS_MAIN(TesteEditorRegras)
#include "teste_editor_regras.moc"
