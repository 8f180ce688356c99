#include "editor/tests/Bancada.h"

#include "editor/GravarReceita.h"
#include "editor/ImagemFigura.h"

#include "base/Separadores.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"
#include "store/tests/GravacaoQueFalha.h"

#include <QSignalSpy>

#include <memory>

class TesteEditorReceita : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<Bancada> m_b;
    Bancada &B() { return *m_b; }

    QString TagDaFigura() { return B().Controle("imgFigura")->property("tag").toString(); }
    QString Foco()
    {
        return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
    }
    bool FiguraNaFrente()
    {
        return B().Controle("fraFigura")->isVisible() && !B().Controle("fraIngredientes")->isVisible();
    }
    bool IngredientesNaFrente()
    {
        return !B().Controle("fraFigura")->isVisible() && B().Controle("fraIngredientes")->isVisible();
    }
    QImage Mostrada() { return B().Controle<ImagemFigura>("imgFigura")->Imagem(); }
    void EscolherFigura(const QString &caminho)
    {
        B().seletor.resposta = caminho;
        if (!B().Controle("fraFigura")->isVisible())
            B().Clicar("optImagem");
        B().Clicar("cmdSalvarFig");
    }
    // A recipe saved through the panel, ready to be loaded; its number.
    qint64 Gravada(const QString &figura = QString())
    {
        B().painel->NovaReceita();
        B().EntrarMinimo();
        if (!figura.isEmpty())
            EscolherFigura(figura);
        B().Clicar("cmdSalvarRct");
        return B().painel->DadosDaTela().txtNroReceita.toLongLong();
    }

private slots:
    void init()
    {
        Separadores::Definir({u',', u'.'});
        m_b = std::make_unique<Bancada>();
    }
    void cleanup() { m_b.reset(); }

    // --- a new recipe ------------------------------------------------------------------------------------

    void novaReceitaComecaVazia()
    {
        const QString figura = B().CriarFigura("a.jpg", Qt::red, "JPG");
        const qint64 n = Gravada(figura);
        B().banco.ExecutarSQL(
            "Update Receitas set Origem = 'Festas', Tipo = 1, Classificacao = 'Doces', "
            "Tipo_Calorias = 'P', Porcoes = 3, Calorias = 9, Preparo = '1 h', Observacao = 'x'");
        B().painel->Carregar(n);
        B().Clicar("optIngredientes");
        B().ClicarNo(B().Linha(0));

        B().painel->NovaReceita();
        const ReceitaNaTela tela = B().painel->DadosDaTela();
        for (const QString &texto :
             {tela.txtNroReceita, tela.txtNome, tela.txtOrigem, tela.cmbTipo, tela.txtModo, tela.txtObs,
              tela.txtPorcoes, tela.txtPreparo, tela.txtCalorias, tela.txtTipoRect})
            QCOMPARE(texto, "");
        QVERIFY(!tela.optReceita && !tela.optPorcao && !tela.figuraMostrada);
        QCOMPARE(TagDaFigura(), "NADA");
        QVERIFY(!B().Controle("cmdLimparFig")->isVisibleTo(B().Controle("fraFigura")));
        QCOMPARE(B().TextosDaArvore(), QStringList("Ingredientes Cadastrados"));
        QVERIFY(IngredientesNaFrente());
        QVERIFY(!B().Controle("cmdLimparDados")->isVisible());
        QCOMPARE(B().Combo("cmbIngrediente")->currentText(), "");
        QCOMPARE(B().Combo("cmbTipo")->Itens(), QStringList("Doces"));
        QCOMPARE(B().Combo("cmbIngrediente")->Itens(), QStringList("fubá"));
        QCOMPARE(B().Combo("cmbMedida")->Itens(), QStringList("xícaras"));
        QCOMPARE(Foco(), "txtNome");
        QVERIFY(!B().Controle("cmdExcluirRct")->isEnabled());
    }

    void oQueNaoFoiSalvoEEntregueAntesDeDarLugar()
    {
        qRegisterMetaType<ReceitaNaTela>();
        QSignalSpy abandonados(B().painel, &PainelEditor::rascunhoAbandonado);
        B().painel->NovaReceita();
        B().painel->NovaReceita(); // nothing was typed
        QCOMPARE(abandonados.count(), 0);

        B().Campo("txtNome")->setText("Bolo pela met");
        B().Combo("cmbIngrediente")->setCurrentText("fari"); // a line that is not in the tree yet
        B().painel->NovaReceita();
        QCOMPARE(abandonados.count(), 1);
        const auto tela = abandonados[0][0].value<ReceitaNaTela>();
        QCOMPARE(tela.txtNome, "Bolo pela met");
        QCOMPARE(tela.ingredientes.size(), 1);
        QVERIFY(tela.ingredientes[0].endsWith("fari"));

        B().painel->NovaReceita();
        const qint64 n = Gravada(); // what is saved is no draft
        B().painel->Carregar(n);
        B().painel->EntregarRascunho();
        QCOMPARE(abandonados.count(), 1);
        B().Campo("txtNome")->setText("Outro nome");
        B().painel->EntregarRascunho();
        B().painel->EntregarRascunho(); // once is enough
        QCOMPARE(abandonados.count(), 2);
    }

    void quemMudaUmaReceitaAvisaAntes()
    {
        QList<qint64> avisadas;
        QStringList nomes;
        B().banco.DefinirAntesDeMudar([&](const QList<qint64> &numeros) {
            avisadas += numeros;
            nomes += B().banco.AbrirRecordset("Select * from Receitas Where id_Receitas = 1").Texto(u"Nome");
        });
        B().painel->NovaReceita();
        B().EntrarMinimo("Antes");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(avisadas, QList<qint64>()); // a new one takes nothing away
        B().Campo("txtNome")->setText("Depois");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(avisadas, QList<qint64>{1});
        QCOMPARE(nomes, {"Antes"}); // while it still is as it was
    }

    void oFocoEsperaOPainelAparecer()
    {
        B().painel->hide();
        B().painel->NovaReceita();
        B().painel->show();
        QCOMPARE(Foco(), "txtNome");
    }

    void erroAoComecarDeixaTudoComoEstava()
    {
        B().EntrarMinimo("Meio digitada");
        QFile arquivo(B().banco.Caminho("dadosr.lst"));
        QVERIFY(arquivo.open(QIODevice::WriteOnly));
        arquivo.write(QByteArray(4096, 'x'));
        arquivo.close();
        QVERIFY_EXCEPTION_THROWN(B().painel->NovaReceita(), ErroBanco);
        QCOMPARE(B().Campo("txtNome")->text(), "Meio digitada");
        QCOMPARE(B().ChavesDaArvore().size(), 2);
    }

    // --- validation --------------------------------------------------------------------------------------

    void validaNaOrdem()
    {
        QSignalSpy salva(B().painel, &PainelEditor::receitaSalva);
        B().Clicar("optImagem");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().avisos.avisos.takeLast(), "Por Favor, Informe o Nome da Receita!");
        QCOMPARE(B().avisos.ultimoIcone, Avisos::Icone::Exclamacao);
        QCOMPARE(Foco(), "txtNome");

        B().Digitar("txtNome", "   ");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().avisos.avisos.takeLast(), "Por Favor, Informe o Nome da Receita!");
        QCOMPARE(B().Campo("txtNome")->text(), "   ");

        B().Digitar("txtNome", "Bolo");
        B().Digitar("txtModo", "  ");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().avisos.avisos.takeLast(), "Por Favor, Informe o Modo de Preparo!");
        QCOMPARE(B().avisos.ultimoIcone, Avisos::Icone::Exclamacao);
        QCOMPARE(Foco(), "txtModo");

        B().Digitar("txtModo", "Asse.");
        QVERIFY(FiguraNaFrente());
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().avisos.avisos.takeLast(), "Por Favor, Adicione pelo menos um Ingrediente!");
        QCOMPARE(B().avisos.ultimoIcone, Avisos::Icone::Exclamacao);
        QVERIFY(B().Controle<QRadioButton>("optIngredientes")->isChecked());
        QVERIFY(IngredientesNaFrente());
        QCOMPARE(Foco(), "cmbIngrediente");

        QVERIFY(B().avisos.avisos.isEmpty());
        QCOMPARE(salva.size(), 0);
        QVERIFY(B().Linhas("Select * from Receitas").isEmpty());
    }

    void semLinhasDepoisDeExcluirTodasRecusa()
    {
        B().EntrarMinimo();
        B().ClicarNo(B().Arvore()->topLevelItem(0));
        B().Arvore()->setFocus();
        B().avisos.resposta = true;
        B().Tecla("TrVwIngredientes", Qt::Key_Delete);
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().avisos.avisos, QStringList("Por Favor, Adicione pelo menos um Ingrediente!"));
        QVERIFY(B().Linhas("Select * from Receitas").isEmpty());
    }

    // --- saving ------------------------------------------------------------------------------------------

    void gravaOQueFoiDigitado()
    {
        QSignalSpy salva(B().painel, &PainelEditor::receitaSalva);
        B().Digitar("txtNome", " Bolo de fubá ");
        B().Digitar("cmbTipo", "Bolos");
        B().Digitar("txtModo", "Misture e asse.");
        B().Digitar("txtObs", "Fica fofo.");
        B().Digitar("txtPorcoes", "12");
        B().Digitar("txtPreparo", "50 minutos");
        B().Digitar("txtCalorias", "2500");
        B().Clicar("optReceita");
        B().EntrarLinha("2", "xícaras", "fubá");
        B().EntrarLinha("", "", "sal");
        QCOMPARE(
            Comandos::SqlInserirReceita(ReceitaDaTela(B().painel->DadosDaTela()), B().relogio.dia),
            "Insert into Receitas(Nome,Data,Classificacao,Modo,Porcoes,Preparo,Tipo_Calorias,Calorias,"
            "Observacao,Figura) values ('Bolo de fubá',CDATE('2005-11-21'),'Bolos','Misture e asse.',12,'50 "
            "minutos','R',2500,'Fica fofo.',NULL)");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(salva.size(), 1);
        QCOMPARE(
            B().Linhas("Select id_receitas,Nome,Classificacao,Modo,Tipo,Origem,Porcoes,Preparo,Tipo_Calorias,"
                       "Calorias,Observacao,Figura from Receitas"),
            QStringList("1|Bolo de fubá|Bolos|Misture e asse.|NULL|NULL|12|50 minutos|R|2500|Fica "
                        "fofo.|NULL"));
        QCOMPARE(B().Linhas("Select id_receitas,Quantidade,Unidade,Ingrediente from Ingredientes Order By "
                            "id_ingredientes"),
                 QStringList({"1|2|xícaras|fubá", "1|NULL|NULL|sal"}));
        QVERIFY(!QFileInfo::exists(B().banco.Caminho("Fotos")));
        QVERIFY(B().avisos.avisos.isEmpty());
    }

    void gravaPelaTeclaDeAcesso()
    {
        B().EntrarMinimo();
        QTest::keyClick(B().Controle("txtNome"), Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(B().Linhas("Select Nome from Receitas"), QStringList("Bolo de fubá"));
    }

    void apostrofoColadoEGravado()
    {
        B().EntrarMinimo("");
        B().Colar("txtNome", "Pão d'água");
        B().Colar("cmbTipo", "Pães d'avó");
        B().Colar("txtObs", "d'");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().Linhas("Select Nome,Classificacao,Observacao from Receitas"),
                 QStringList("Pão d'água|Pães d'avó|d'"));
    }

    void oTipoNovoEntraNaListaAoGravar()
    {
        B().Combo("cmbTipo")->DefinirItens({"Doces"});
        B().EntrarMinimo();
        B().Digitar("cmbTipo", " Tortas ");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().Combo("cmbTipo")->Itens(), QStringList({"Doces", "Tortas"}));
        B().Combo("cmbTipo")->DefinirTexto("DOCES");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().Combo("cmbTipo")->Itens(), QStringList({"Doces", "Tortas"}));
        B().Combo("cmbTipo")->DefinirTexto("");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().Combo("cmbTipo")->Itens(), QStringList({"Doces", "Tortas"}));
    }

    void oTipoColadoECortadoAoGravar()
    {
        B().EntrarMinimo();
        B().Controle("cmbTipo")->setFocus();
        B().Colar("cmbTipo", QString(45, 't'));
        QTest::keyClick(B().Controle("cmbTipo"), Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(B().Linhas("Select Classificacao from Receitas"), QStringList(QString(30, 't')));
    }

    void salvarDeNovoAlteraEmVezDeRepetir()
    {
        B().EntrarMinimo();
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().Campo("txtNroReceita")->text(), "1");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().Linhas("Select id_receitas from Receitas"), QStringList("1"));
        QCOMPARE(B().Linhas("Select id_receitas,Ingrediente from Ingredientes"), QStringList("1|fubá"));
    }

    void alteraAReceitaCarregada()
    {
        const qint64 n = Gravada();
        B().relogio.dia = QDate(2006, 2, 3);
        B().painel->Carregar(n);
        B().Campo("txtNome")->clear();
        B().Digitar("txtNome", "Bolo de milho");
        B().EntrarLinha("1", "lata", "milho");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().Linhas("Select id_receitas,Nome,Figura from Receitas"),
                 QStringList("1|Bolo de milho|NULL"));
        QVERIFY(B().Linhas("Select Data from Receitas")[0].startsWith("2005-11-21"));
        QCOMPARE(B().Linhas("Select id_ingredientes,Ingrediente from Ingredientes Order By id_ingredientes"),
                 QStringList({"2|fubá", "3|milho"}));
    }

    void erroDoBancoApareceENadaSePerde()
    {
        QSignalSpy salva(B().painel, &PainelEditor::receitaSalva);
        B().EntrarMinimo();
        B().Digitar("txtCalorias", "1,5");
        B().Digitar("cmbTipo", "Bolos");
        const ReceitaNaTela antes = B().painel->DadosDaTela();
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().avisos.avisos.size(), 1);
        QVERIFY(!B().avisos.avisos[0].isEmpty());
        QCOMPARE(B().avisos.ultimoIcone, Avisos::Icone::Parada);
        QCOMPARE(salva.size(), 0);
        QVERIFY(B().Linhas("Select * from Receitas").isEmpty());
        const ReceitaNaTela depois = B().painel->DadosDaTela();
        QCOMPARE(depois.txtNome, antes.txtNome);
        QCOMPARE(depois.txtModo, antes.txtModo);
        QCOMPARE(depois.cmbTipo, antes.cmbTipo);
        QCOMPARE(depois.txtCalorias, "1,5");
        QCOMPARE(depois.ingredientes, antes.ingredientes);
        QCOMPARE(depois.txtNroReceita, "");
        QVERIFY(!QApplication::overrideCursor());

        B().Campo("txtCalorias")->clear();
        B().Clicar("cmdSalvarRct");
        QCOMPARE(salva.size(), 1);
        QCOMPARE(B().Linhas("Select Nome from Receitas"), QStringList("Bolo de fubá"));
    }

    void oNumeroRecusadoGanhaOFoco_data()
    {
        QTest::addColumn<QString>("campo");
        QTest::addColumn<QString>("valor");
        QTest::addColumn<QString>("nome");
        QTest::newRow("rendimento com vírgula") << "txtPorcoes"
                                                << "1,5"
                                                << "Rendimento";
        QTest::newRow("só o sinal") << "txtPorcoes"
                                    << "-"
                                    << "Rendimento";
        QTest::newRow("calorias com vírgula") << "txtCalorias"
                                              << "1,5"
                                              << "Calorias";
        QTest::newRow("calorias só com o sinal") << "txtCalorias"
                                                 << "-"
                                                 << "Calorias";
    }
    void oNumeroRecusadoGanhaOFoco()
    {
        QFETCH(QString, campo);
        QFETCH(QString, valor);
        QFETCH(QString, nome);
        B().EntrarMinimo();
        B().Digitar(campo.toLatin1().constData(), valor);
        B().Clicar("optImagem");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().avisos.avisos.size(), 1);
        QVERIFY2(B().avisos.avisos[0].section(".", 0, 0).contains(nome), qPrintable(B().avisos.avisos[0]));
        QCOMPARE(Foco(), campo);
        QVERIFY(B().Linhas("Select Nome from Receitas").isEmpty());
    }

    void umNumeroQuebradoGuardadoENomeado()
    {
        const qint64 n = Gravada();
        B().banco.ExecutarSQL("Update Receitas set Porcoes = '2,5'");
        B().painel->Carregar(n);
        QCOMPARE(B().Campo("txtPorcoes")->text(), "2,5");
        B().Clicar("cmdSalvarRct");
        QVERIFY(B().avisos.avisos.value(0).startsWith("O campo Rendimento"));
        QCOMPARE(Foco(), "txtPorcoes");
        QCOMPARE(B().Linhas("Select Porcoes from Receitas"), QStringList("2,5"));
    }

    void aLinhaRecusadaVemParaSerMudada()
    {
        B().EntrarMinimo();
        B().Colar("txtQtde", "1 copo d'água");
        B().Digitar("cmbIngrediente", "gelo");
        B().Clicar("cmdSalvarIngredientes");
        B().Clicar("optImagem");
        B().Clicar("cmdSalvarRct");
        QVERIFY(B().avisos.avisos.value(0).startsWith("O ingrediente 2, \"1 copo d'água gelo\""));
        QVERIFY(IngredientesNaFrente());
        QCOMPARE(Foco(), "txtQtde");
        QCOMPARE(B().Campo("txtQtde")->text(), "1 copo d'água");
        QVERIFY(B().Linhas("Select Nome from Receitas").isEmpty());
        // Mended there and then.
        B().Campo("txtQtde")->clear();
        B().Digitar("txtQtde", "1 copo");
        B().Clicar("cmdSalvarIngredientes");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().Linhas("Select Quantidade from Ingredientes Order By id_ingredientes"),
                 QStringList({"2", "1 copo"}));
    }

    void aLinhaRecusadaNaoTomaOQueEstaMeioDigitado()
    {
        B().EntrarMinimo();
        B().Colar("txtQtde", "d'água");
        B().Digitar("cmbIngrediente", "gelo");
        B().Clicar("cmdSalvarIngredientes");
        B().Digitar("cmbIngrediente", "lim");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().Combo("cmbIngrediente")->currentText(), "lim");
        QCOMPARE(Foco(), "TrVwIngredientes");
        QVERIFY(B().Linha(1)->isSelected());
    }

    void oTipoEAUnidadeLongosQueNinguemTocouFicamInteiros()
    {
        const qint64 n = Gravada();
        const QString tipo(45, 't');
        const QString unidade(33, 'u');
        B().banco.ExecutarSQL("Update Receitas set Classificacao = '" + tipo + "'");
        B().banco.ExecutarSQL("Update Ingredientes set Unidade = '" + unidade + "'");
        B().painel->Carregar(n);
        B().Controle("txtModo")->setFocus();
        QTest::keyClick(B().Controle("txtModo"), Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(B().Linhas("Select Classificacao from Receitas"), QStringList(tipo));
        QCOMPARE(B().Linhas("Select Unidade from Ingredientes"), QStringList(unidade));
        // A line that is changed in another part.
        B().painel->Carregar(n);
        B().ClicarNo(B().Linha(0));
        B().Digitar("cmbIngrediente", "x");
        B().Clicar("cmdSalvarIngredientes");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().Linhas("Select Unidade from Ingredientes"), QStringList(unidade));
    }

    void salvarOQueFoiExcluidoNesseMeioTempoGravaDeNovo()
    {
        const QString figura = B().CriarFigura("um.bmp", Qt::red, "BMP");
        const qint64 n = Gravada(figura);
        QSignalSpy salva(B().painel, &PainelEditor::receitaSalva);
        B().painel->Carregar(n);
        B().figuras.ApagarFigura(n);
        B().banco.ExecutarSQL(Comandos::SqlExcluirReceita(n));
        B().banco.ExecutarSQL(Comandos::SqlExcluirIngredientes(n));
        B().Clicar("cmdSalvarRct");
        QCOMPARE(salva.size(), 1);
        QVERIFY(B().avisos.avisos.isEmpty());
        QCOMPARE(B().Linhas("Select id_receitas,Nome,Figura from Receitas"),
                 QStringList("2|Bolo de fubá|F0000002.img"));
        QCOMPARE(B().Linhas("Select id_receitas,Ingrediente from Ingredientes"), QStringList("2|fubá"));
        QCOMPARE(B().FiguraGravada(2), Bancada::Bytes(figura));
        QCOMPARE(B().Campo("txtNroReceita")->text(), "2");
    }

    void repetirUmaGravacaoQueFalhouNaoDobraAReceita()
    {
        QSignalSpy salva(B().painel, &PainelEditor::receitaSalva);
        B().EntrarMinimo();
        B().Linhas("Select Nome from Receitas"); // the book is made
        for (int n = 0; B().Campo("txtNroReceita")->text().isEmpty(); ++n) {
            const GravacaoQueFalha falha(n);
            B().Clicar("cmdSalvarRct");
        }
        // The recipe's row was written; its line was not.
        QVERIFY(B().Linhas("Select Ingrediente from Ingredientes").isEmpty());
        QVERIFY(!B().avisos.avisos.isEmpty());
        QCOMPARE(salva.size(), 0);
        B().Clicar("cmdSalvarRct");
        QCOMPARE(salva.size(), 1);
        QCOMPARE(B().Linhas("Select id_receitas,Nome from Receitas"), QStringList("1|Bolo de fubá"));
        QCOMPARE(B().Linhas("Select id_receitas,Ingrediente from Ingredientes"), QStringList("1|fubá"));
    }

    /// A picture that is too large to be shown is still the recipe's picture.
    void abrirESalvarNuncaTiraAFigura_data()
    {
        QTest::addColumn<int>("largura");
        QTest::addColumn<int>("altura");
        QTest::addColumn<bool>("mostrada");
        QTest::newRow("48 megapixels") << 8000 << 6000 << true;
        QTest::newRow("108 megapixels") << 12000 << 9000 << true;
        QTest::newRow("4 gigapixels") << 65500 << 65500 << false;
    }
    void abrirESalvarNuncaTiraAFigura()
    {
        QFETCH(int, largura);
        QFETCH(int, altura);
        QFETCH(bool, mostrada);
        const qint64 n = Gravada(B().CriarFigura("um.jpg", Qt::red, "JPG"));
        // The header tells the size; what is missing behind it is filled by the decoder.
        QByteArray foto = B().FiguraGravada(1);
        const qsizetype quadro = foto.indexOf("\xFF\xC0");
        QVERIFY(quadro > 0);
        for (const auto &[onde, valor] : {std::pair{5, altura}, {7, largura}}) {
            foto[quadro + onde] = static_cast<char>(valor >> 8);
            foto[quadro + onde + 1] = static_cast<char>(valor & 0xFF);
        }
        QFile arquivo(B().banco.Caminho("Fotos\\F0000001.img"));
        QVERIFY(arquivo.open(QIODevice::WriteOnly));
        arquivo.write(foto);
        arquivo.close();
        B().painel->Carregar(n);
        QCOMPARE(TagDaFigura(), "OLD");
        QCOMPARE(FiguraNaFrente(), mostrada);
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().Linhas("Select Figura from Receitas"), QStringList("F0000001.img"));
        QCOMPARE(B().FiguraGravada(1), foto);
    }

    void comentarioNoNumeroNaoMudaOutrasReceitas()
    {
        const qint64 n = Gravada();
        const qint64 m = Gravada();
        B().painel->Carregar(m);
        B().Campo("txtNome")->clear();
        B().Digitar("txtNome", "Outro");
        B().Digitar("txtCalorias", "5--");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().avisos.avisos.size(), 1);
        QCOMPARE(B().Linhas("Select id_receitas,Nome from Receitas Order By id_receitas"),
                 QStringList({QString("%1|Bolo de fubá").arg(n), QString("%1|Bolo de fubá").arg(m)}));
    }

    void textoForaDaPaginaDeCodigoFicaComoFoiDigitado()
    {
        B().EntrarMinimo("");
        B().Colar("txtNome", "Борщ 饺子 😋");
        B().Colar("txtObs", "10 °C ≈ 50 °F → ok");
        B().Clicar("cmdSalvarRct");
        B().painel->NovaReceita();
        B().painel->Carregar(1);
        QCOMPARE(B().painel->DadosDaTela().txtNome, "Борщ 饺子 😋");
        QCOMPARE(B().painel->DadosDaTela().txtObs, "10 °C ≈ 50 °F → ok");
    }

    void paragrafosColadosVoltamIguais_data()
    {
        QTest::addColumn<QString>("colado");
        QTest::newRow("LF") << "Um.\n\nDois.\nTrês.";
        QTest::newRow("CR LF") << "Um.\r\n\r\nDois.\r\nTrês.";
    }
    void paragrafosColadosVoltamIguais()
    {
        QFETCH(QString, colado);
        const QString esperado = "Um.\r\n\r\nDois.\r\nTrês.";
        B().Digitar("txtNome", "Bolo");
        B().Colar("txtModo", colado);
        B().Colar("txtObs", colado);
        B().EntrarLinha("", "", "sal");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().banco.AbrirRecordset("Select Modo from Receitas").Texto(0), esperado);
        QCOMPARE(B().banco.AbrirRecordset("Select Observacao from Receitas").Texto(0), esperado);
        B().painel->NovaReceita();
        B().painel->Carregar(1);
        QCOMPARE(B().painel->DadosDaTela().txtModo, esperado);
        QCOMPARE(B().Memo("txtModo")->toPlainText(), "Um.\n\nDois.\nTrês.");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().banco.AbrirRecordset("Select Modo from Receitas").Texto(0), esperado);
    }

    void excluirSoPedeENaoExclui()
    {
        const qint64 n = Gravada();
        B().painel->Carregar(n);
        QSignalSpy pedida(B().painel, &PainelEditor::exclusaoPedida);
        B().Clicar("cmdExcluirRct");
        QCOMPARE(pedida.size(), 1);
        QCOMPARE(pedida[0][0].toLongLong(), n);
        QCOMPARE(B().Linhas("Select Nome from Receitas").size(), 1);
        QVERIFY(B().avisos.perguntas.isEmpty());
    }

    // --- loading -----------------------------------------------------------------------------------------

    void carregaTodosOsCampos()
    {
        B().banco.ExecutarSQL(
            "Insert into "
            "Receitas(Nome,Data,Classificacao,Modo,Tipo,Origem,Porcoes,Preparo,Tipo_Calorias,Calorias,"
            "Observacao,Figura) values ('Cuca',CDATE('2005-01-02'),'Bolos','Asse.',2,'Festas',8,'1 "
            "h','P',250,"
            "'Boa.',NULL)");
        for (const char *linha : {"'farinha','1','kg'", "'sal',NULL,NULL", "'ovos','3',NULL"})
            B().banco.ExecutarSQL(
                QString("Insert into Ingredientes(id_receitas,Ingrediente,Quantidade,Unidade) values (1,%1)")
                    .arg(linha));
        B().painel->Carregar(1);
        const ReceitaNaTela tela = B().painel->DadosDaTela();
        QCOMPARE(tela.txtNroReceita, "1");
        QCOMPARE(tela.txtNome, "Cuca");
        QCOMPARE(tela.cmbTipo, "Bolos");
        QCOMPARE(tela.txtModo, "Asse.");
        QCOMPARE(tela.txtObs, "Boa.");
        QCOMPARE(tela.txtOrigem, "Festas");
        QVERIFY(B().Campo("txtOrigem")->isVisible());
        QCOMPARE(tela.txtTipoRect, "2");
        QCOMPARE(tela.txtPorcoes, "8");
        QCOMPARE(tela.txtPreparo, "1 h");
        QCOMPARE(tela.txtCalorias, "250");
        QVERIFY(tela.optPorcao && !tela.optReceita);
        QCOMPARE(B().ChavesDaArvore(), QStringList({"R", "C1", "C2", "C3"}));
        QCOMPARE(B().TextosDaArvore(),
                 QStringList({"Ingredientes Cadastrados", "1 kg farinha", "sal", "3 ovos"}));
        QCOMPARE(tela.ingredientes, QStringList({Tag("1|kg|farinha"), Tag("||sal"), Tag("3||ovos")}));
        QCOMPARE(TagDaFigura(), "NADA");
        QVERIFY(!tela.figuraMostrada);
        QVERIFY(IngredientesNaFrente());
        QVERIFY(B().Controle("cmdExcluirRct")->isEnabled());
        // Display only: saving leaves them alone.
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().Linhas("Select Tipo,Origem from Receitas"), QStringList("2|Festas"));
    }

    void zeroApareceVazioEVoltaZero()
    {
        const qint64 n = Gravada();
        B().painel->Carregar(n);
        QCOMPARE(B().Campo("txtPorcoes")->text(), "");
        QCOMPARE(B().Campo("txtCalorias")->text(), "");
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().Linhas("Select Porcoes,Calorias from Receitas"), QStringList("0|0"));
    }

    void semBaseDeCaloriasNenhumaOpcaoFicaMarcada()
    {
        const qint64 n = Gravada();
        B().Clicar("optPorcao");
        B().painel->Carregar(n);
        QVERIFY(!B().Controle<QRadioButton>("optPorcao")->isChecked());
        QVERIFY(!B().Controle<QRadioButton>("optReceita")->isChecked());
        B().Clicar("optReceita");
        B().Clicar("optPorcao");
        QVERIFY(!B().Controle<QRadioButton>("optReceita")->isChecked());
    }

    void carregarEsqueceALinhaEmAlteracao()
    {
        const qint64 n = Gravada();
        B().painel->Carregar(n);
        B().ClicarNo(B().Linha(0));
        B().painel->Carregar(n);
        QVERIFY(!B().Controle("cmdLimparDados")->isVisible());
        QCOMPARE(B().Combo("cmbIngrediente")->currentText(), "");
        B().EntrarLinha("", "", "sal");
        QCOMPARE(B().TextosDaArvore().mid(1), QStringList({"2 xícaras fubá", "sal"}));
    }

    void carregarNaoMexeNaAlturaNemNaVista()
    {
        const qint64 n = Gravada();
        B().painel->hide();
        B().painel->DefinirAltura(20);
        B().painel->Carregar(n);
        QCOMPARE(B().painel->Altura(), 20);
        QVERIFY(!B().painel->isVisible());
    }

    void numeroQueNaoExisteDeixaTudoComoEstava()
    {
        B().EntrarMinimo("Meio digitada");
        QVERIFY_EXCEPTION_THROWN(B().painel->Carregar(77), ErroBanco);
        QCOMPARE(B().Campo("txtNome")->text(), "Meio digitada");
        QCOMPARE(B().Campo("txtNroReceita")->text(), "");
        QCOMPARE(B().ChavesDaArvore().size(), 2);
    }

    void nomeLongoDeForaNaoEncurta()
    {
        const QString longo = QString("palavra ").repeated(30).trimmed();
        const qint64 n = Gravada();
        B().banco.ExecutarSQL("Update Receitas set Nome = '" + longo + "', Preparo = '" + longo + "'");
        B().painel->Carregar(n);
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().Linhas("Select Nome,Preparo from Receitas"), QStringList(longo + "|" + longo));
        B().painel->NovaReceita();
        B().Digitar("txtNome", QString(150, 'x'));
        QCOMPARE(B().Campo("txtNome")->text().size(), 100);
    }

    // --- the picture -------------------------------------------------------------------------------------

    void pedeAFiguraComOsTextosCertos()
    {
        B().Clicar("optImagem");
        B().Clicar("cmdSalvarFig"); // cancelled
        QCOMPARE(B().seletor.pedidos.size(), 1);
        const PedidoArquivo &pedido = B().seletor.pedidos[0];
        QCOMPARE(pedido.titulo, "Selecione a Imagem ");
        QCOMPARE(pedido.filtro, "Arquivos de Imagens|*.bmp;*.jpg;*.gif;*.img");
        QCOMPARE(QDir(pedido.pastaInicial), QDir(B().pasta.path()));
        QCOMPARE(pedido.nome, "");
        QCOMPARE(TagDaFigura(), "NADA");
        QVERIFY(!B().Controle("cmdLimparFig")->isVisible());
        QVERIFY(B().avisos.avisos.isEmpty());
    }

    void lembraAPastaDaFigura()
    {
        QVERIFY(QDir(B().pasta.path()).mkdir("minhas fotos"));
        const QString figura = B().CriarFigura("minhas fotos/a.bmp", Qt::red, "BMP");
        EscolherFigura(figura);
        QCOMPARE(TagDaFigura(), figura);
        B().Clicar("cmdSalvarFig");
        QCOMPARE(B().seletor.pedidos[1].pastaInicial, B().pasta.filePath("minhas fotos/"));

        // A file that is no picture is not remembered.
        EscolherFigura(PASTA_FONTES "/CMakeLists.txt");
        B().Clicar("cmdSalvarFig");
        QCOMPARE(B().seletor.pedidos[3].pastaInicial, B().pasta.filePath("minhas fotos/"));
    }

    void mostraAFiguraEscolhida_data()
    {
        QTest::addColumn<QString>("formato");
        QTest::newRow("BMP") << "BMP";
        QTest::newRow("JPEG") << "JPG";
        QTest::newRow("PNG") << "PNG";
    }
    void mostraAFiguraEscolhida()
    {
        QFETCH(QString, formato);
        const QString figura = B().CriarFigura("a.img", Qt::red, formato.toUtf8().constData());
        EscolherFigura(figura);
        QCOMPARE(TagDaFigura(), figura);
        QVERIFY(B().Controle("cmdLimparFig")->isVisible());
        QVERIFY(B().painel->DadosDaTela().figuraMostrada);
        QCOMPARE(Mostrada().size(), QSize(24, 16));
        QVERIFY(qRed(Mostrada().pixel(5, 5)) > 200 && qBlue(Mostrada().pixel(5, 5)) < 60);
        QVERIFY(!QFileInfo::exists(B().banco.Caminho("Fotos")));
    }

    void gifEGravadoByteAByte()
    {
        // 1 x 1, one red pixel.
        const QByteArray gif =
            QByteArray::fromHex("47494638396101000100800100ff0000ffffff2c000000000100010000020244"
                                "01003b");
        QFile arquivo(B().pasta.filePath("ponto.gif"));
        QVERIFY(arquivo.open(QIODevice::WriteOnly));
        arquivo.write(gif);
        arquivo.close();
        const qint64 n = Gravada(arquivo.fileName());
        QCOMPARE(B().Linhas("Select Figura from Receitas"), QStringList("F0000001.img"));
        QCOMPARE(B().FiguraGravada(static_cast<int>(n)), gif);
        B().painel->Carregar(n);
        QCOMPARE(TagDaFigura(), "OLD");
    }

    void recusaOQueNaoEFigura()
    {
        const QString boa = B().CriarFigura("boa.bmp", Qt::blue, "BMP");
        EscolherFigura(boa);
        QFile ruim(B().pasta.filePath("ruim.img"));
        QVERIFY(ruim.open(QIODevice::WriteOnly));
        ruim.write("no picture");
        ruim.close();
        EscolherFigura(ruim.fileName());
        QCOMPARE(B().avisos.avisos, QStringList("Imagem de Formato Inválido"));
        QCOMPARE(B().avisos.ultimoIcone, Avisos::Icone::Parada);
        QCOMPARE(TagDaFigura(), boa);
        QVERIFY(B().Controle("cmdLimparFig")->isVisible());
        QCOMPARE(Mostrada().size(), QSize(24, 16));
    }

    void figuraNovaSubstituiAAnterior()
    {
        const QString um = B().CriarFigura("um.bmp", Qt::red, "BMP");
        const QString dois = B().CriarFigura("dois.bmp", Qt::green, "BMP");
        const qint64 n = Gravada(um);
        QCOMPARE(B().FiguraGravada(1), Bancada::Bytes(um));
        B().painel->Carregar(n);
        EscolherFigura(dois);
        QCOMPARE(B().FiguraGravada(1), Bancada::Bytes(um)); // not before the recipe is saved
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().FiguraGravada(1), Bancada::Bytes(dois));
        QCOMPARE(B().Linhas("Select Figura from Receitas"), QStringList("F0000001.img"));
        QCOMPARE(TagDaFigura(), "OLD");
    }

    void limparSoValeDepoisDeGravar()
    {
        const QString um = B().CriarFigura("um.bmp", Qt::red, "BMP");
        const qint64 n = Gravada(um);
        B().painel->Carregar(n);
        QVERIFY(FiguraNaFrente());
        B().Clicar("cmdLimparFig");
        QCOMPARE(TagDaFigura(), "NADA");
        QVERIFY(!B().Controle("cmdLimparFig")->isVisible());
        QVERIFY(!B().painel->DadosDaTela().figuraMostrada);

        // Leaving without saving changes nothing.
        B().painel->NovaReceita();
        QCOMPARE(B().FiguraGravada(1), Bancada::Bytes(um));
        QCOMPARE(B().Linhas("Select Figura from Receitas"), QStringList("F0000001.img"));

        B().painel->Carregar(n);
        B().Clicar("cmdLimparFig");
        B().Clicar("cmdSalvarRct");
        QVERIFY(!QFileInfo::exists(B().banco.Caminho("Fotos\\F0000001.img")));
        QCOMPARE(B().Linhas("Select Figura from Receitas"), QStringList("NULL"));
    }

    void figuraMantidaFicaComoEsta()
    {
        const QString um = B().CriarFigura("um.bmp", Qt::red, "BMP");
        const qint64 n = Gravada(um);
        B().painel->Carregar(n);
        QCOMPARE(TagDaFigura(), "OLD");
        QVERIFY(B().painel->DadosDaTela().figuraMostrada);
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().FiguraGravada(1), Bancada::Bytes(um));
        QCOMPARE(B().Linhas("Select Figura from Receitas"), QStringList("F0000001.img"));
    }

    void escolherOProprioArquivoNaoODestroi()
    {
        const QString um = B().CriarFigura("um.bmp", Qt::red, "BMP");
        const qint64 n = Gravada(um);
        B().painel->Carregar(n);
        EscolherFigura(B().banco.Caminho("Fotos\\F0000001.img"));
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().FiguraGravada(1), Bancada::Bytes(um));
        QCOMPARE(B().Linhas("Select Figura from Receitas"), QStringList("F0000001.img"));
    }

    void figuraSumidaOuIlegivelVoltaAoMarcador_data()
    {
        QTest::addColumn<bool>("sumida");
        QTest::newRow("sumida") << true;
        QTest::newRow("ilegível") << false;
    }
    void figuraSumidaOuIlegivelVoltaAoMarcador()
    {
        QFETCH(bool, sumida);
        const qint64 n = Gravada(B().CriarFigura("um.bmp", Qt::red, "BMP"));
        QFile arquivo(B().banco.Caminho("Fotos\\F0000001.img"));
        if (sumida) {
            QVERIFY(arquivo.remove());
        } else {
            QVERIFY(arquivo.open(QIODevice::WriteOnly));
            arquivo.write("broken");
            arquivo.close();
        }
        B().painel->Carregar(n);
        QCOMPARE(TagDaFigura(), "NADA");
        QVERIFY(IngredientesNaFrente());
        QVERIFY(B().Controle<QRadioButton>("optIngredientes")->isChecked());
        QVERIFY(B().avisos.avisos.isEmpty());
        B().Clicar("cmdSalvarRct");
        QCOMPARE(B().Linhas("Select Figura from Receitas"), QStringList("NULL"));
    }

    void figuraLegivelFicaNaFrente()
    {
        const qint64 com = Gravada(B().CriarFigura("um.bmp", Qt::red, "BMP"));
        const qint64 sem = Gravada();
        B().painel->Carregar(com);
        QVERIFY(FiguraNaFrente());
        QVERIFY(B().Controle<QRadioButton>("optImagem")->isChecked());
        QVERIFY(B().Controle("cmdLimparFig")->isVisible());
        B().painel->Carregar(sem);
        QVERIFY(IngredientesNaFrente());
        B().Clicar("optImagem");
        QVERIFY(!B().Controle("cmdLimparFig")->isVisible());
    }

    void aFiguraCabeInteiraESemDistorcer()
    {
        QImage larga(900, 300, QImage::Format_RGB32);
        larga.fill(Qt::red);
        const QString caminho = B().pasta.filePath("larga.png");
        QVERIFY(larga.save(caminho));
        EscolherFigura(caminho);
        const QWidget *figura = B().Controle("imgFigura");
        const QImage tela = const_cast<QWidget *>(figura)->grab().toImage();
        QRect vermelho;
        for (int y = 0; y < tela.height(); ++y) {
            for (int x = 0; x < tela.width(); ++x) {
                if (tela.pixelColor(x, y) == QColor(Qt::red))
                    vermelho |= QRect(x, y, 1, 1);
            }
        }
        QVERIFY(vermelho.width() > figura->width() - 12 && vermelho.width() < figura->width());
        QVERIFY(qAbs(vermelho.width() - 3 * vermelho.height()) <= 3);
        QVERIFY(qAbs(vermelho.center().x() - tela.width() / 2) <= 2);
    }

    void aFiguraPequenaNaoEAumentada()
    {
        EscolherFigura(B().CriarFigura("a.bmp", Qt::red, "BMP"));
        const QImage tela = B().Controle("imgFigura")->grab().toImage();
        int vermelhos = 0;
        for (int y = 0; y < tela.height(); ++y) {
            for (int x = 0; x < tela.width(); ++x)
                vermelhos += tela.pixelColor(x, y) == QColor(Qt::red);
        }
        QCOMPARE(vermelhos, 24 * 16);
    }
};

QTEST_MAIN(TesteEditorReceita)
#include "teste_editor_receita.moc"
