#include "store/Comandos.h"

#include <QTest>

using namespace Comandos;

Q_DECLARE_METATYPE(Comandos::Pesquisa)

namespace
{
const QDate kDia(2005, 11, 21);

Receita PaoDagua()
{
    Receita r;
    r.Nome = " Pão d'água ";
    r.Classificacao = "Pães";
    r.Modo = "Misture.\r\nAsse.";
    r.Porcoes = "8";
    r.Preparo = "2 h";
    r.Calorias = " 1200 ";
    r.Observacao = "É d'ela.";
    r.Tipo_Calorias = "R";
    return r;
}

Receita SoONecessario()
{
    Receita r;
    r.Nome = "Sal";
    r.Modo = "Use.";
    r.Classificacao = "   ";
    return r;
}
} // namespace

class TesteComandos : public QObject
{
    Q_OBJECT

private slots:
    void formaValores();
    void escreveAData();
    void formaONomeDaFigura();
    void fazMaiusculas();
    void escreveOsComandos_data();
    void escreveOsComandos();
    void pesquisaSoPeloQueFoiPreenchido_data();
    void pesquisaSoPeloQueFoiPreenchido();
};

void TesteComandos::formaValores()
{
    QCOMPARE(Texto(" Pão d'água "), "'Pão d''água'");
    QCOMPARE(Texto("''"), "''''''");
    QCOMPARE(Texto("  "), "''");
    QCOMPARE(Texto("\tsal\r\n"), "'\tsal\r\n'"); // only blanks are trimmed
    QCOMPARE(TextoOuNulo("  "), "NULL");
    QCOMPARE(TextoOuNulo(" d'oeste"), "'d''oeste'");
    QCOMPARE(Numero("  "), "0");
    QCOMPARE(Numero(" 1,5 "), "1,5");
    QCOMPARE(Numero("-3"), "-3");
}

void TesteComandos::escreveAData()
{
    QCOMPARE(Data(kDia), "CDATE('2005-11-21')");
    QCOMPARE(Data(QDate(812, 1, 2)), "CDATE('0812-01-02')");
}

void TesteComandos::formaONomeDaFigura()
{
    QCOMPARE(NomeFigura(42), "F0000042.img");
    QCOMPARE(NomeFigura(1234567), "F1234567.img");
    QCOMPARE(NomeFigura(12345678), "F12345678.img");
}

void TesteComandos::fazMaiusculas()
{
    QCOMPARE(Maiusculas("Pão d'água ñ œ ß ÿ 1ª 😀"), QString("PÃO D'ÁGUA Ñ Œ ß Ÿ 1ª 😀"));
}

void TesteComandos::escreveOsComandos_data()
{
    QTest::addColumn<QString>("comando");
    QTest::addColumn<QString>("texto");
    QTest::newRow("inserir receita")
        << SqlInserirReceita(PaoDagua(), kDia)
        << "Insert into "
           "Receitas(Nome,Data,Classificacao,Modo,Porcoes,Preparo,Tipo_Calorias,Calorias,Observacao,"
           "Figura) values ('Pão d''água',CDATE('2005-11-21'),'Pães','Misture.\r\nAsse.',8,'2 h','R',1200,"
           "'É d''ela.',NULL)";
    QTest::newRow("inserir receita sem o que pode faltar")
        << SqlInserirReceita(SoONecessario(), kDia)
        << "Insert into "
           "Receitas(Nome,Data,Classificacao,Modo,Porcoes,Preparo,Tipo_Calorias,Calorias,Observacao,"
           "Figura) values ('Sal',CDATE('2005-11-21'),NULL,'Use.',0,NULL,NULL,0,NULL,NULL)";
    QTest::newRow("maior número") << SqlMaiorNumero() << "Select max(id_receitas) from Receitas";
    QTest::newRow("gravar figura") << SqlGravarFigura(57)
                                   << "Update Receitas set Figura = 'F0000057.img' Where id_receitas = 57";
    Receita porPorcao = PaoDagua();
    porPorcao.Tipo_Calorias = "P";
    QTest::newRow("alterar, figura nova")
        << SqlAlterarReceita(porPorcao, 57, Figura::Nova)
        << "Update Receitas set  Nome = 'Pão d''água', Classificacao = 'Pães', Modo = 'Misture.\r\nAsse.', "
           "Porcoes = 8, Preparo = '2 h', Calorias = 1200, Observacao = 'É d''ela.', Tipo_Calorias = 'P',  "
           "Figura = 'F0000057.img'  Where id_Receitas = 57";
    QTest::newRow("alterar, figura mantida")
        << SqlAlterarReceita(PaoDagua(), 57, Figura::Mantida)
        << "Update Receitas set  Nome = 'Pão d''água', Classificacao = 'Pães', Modo = 'Misture.\r\nAsse.', "
           "Porcoes = 8, Preparo = '2 h', Calorias = 1200, Observacao = 'É d''ela.', Tipo_Calorias = 'R', "
           "Figura = Figura  Where id_Receitas = 57";
    QTest::newRow("alterar, sem figura e sem o que pode faltar")
        << SqlAlterarReceita(SoONecessario(), 57, Figura::Nenhuma)
        << "Update Receitas set  Nome = 'Sal', Classificacao = NULL, Modo = 'Use.', Porcoes = 0, Preparo = "
           "NULL, "
           "Calorias = 0, Observacao = NULL, Tipo_Calorias = NULL, Figura = NULL  Where id_Receitas = 57";
    QTest::newRow("excluir ingredientes")
        << SqlExcluirIngredientes(57) << "Delete from Ingredientes Where id_receitas = 57";
    QTest::newRow("inserir ingrediente")
        << SqlInserirIngrediente(57, " caixa d'água ", " 1/2 ", " copo d'água ")
        << "Insert into Ingredientes(id_receitas,Ingrediente,Quantidade,Unidade) values (57,'caixa "
           "d''água','1/2',"
           "'copo d''água')";
    QTest::newRow("inserir ingrediente, só o nome")
        << SqlInserirIngrediente(57, "sal", " ", "")
        << "Insert into Ingredientes(id_receitas,Ingrediente,Quantidade,Unidade) values (57,'sal',NULL,NULL)";
    QTest::newRow("o apóstrofo da quantidade não é dobrado")
        << SqlInserirIngrediente(57, "sal", "1'2", "g")
        << "Insert into Ingredientes(id_receitas,Ingrediente,Quantidade,Unidade) values (57,'sal','1'2','g')";
    QTest::newRow("excluir receita") << SqlExcluirReceita(57)
                                     << "Delete from Receitas Where id_receitas = 57";
    QTest::newRow("receita") << SqlReceita(57) << "Select * from Receitas Where id_Receitas = 57";
    QTest::newRow("receita da figura")
        << SqlReceitaFigura(57) << "Select * from Receitas Where id_receitas = 57";
    QTest::newRow("figura") << SqlFigura(57) << "Select Figura from Receitas Where id_Receitas = 57";
    QTest::newRow("ingredientes")
        << SqlIngredientes(57)
        << "Select * from Ingredientes Where id_receitas = 57 Order By id_ingredientes";
    QTest::newRow("lista") << SqlLista() << "Select * from Receitas Order By Nome";
    QTest::newRow("tipos") << SqlTipos()
                           << "Select DISTINCT Classificacao from Receitas Where Classificacao is not null "
                              "Order By Classificacao";
    QTest::newRow("unidades")
        << SqlUnidades()
        << "Select DISTINCT Unidade from Ingredientes Where Unidade is not null Order By Unidade";
    QTest::newRow("nomes de ingredientes")
        << SqlNomesDeIngredientes() << "Select DISTINCT Ingrediente from Ingredientes Order By Ingrediente";
    QTest::newRow("tipos da pesquisa") << SqlTiposPesquisa()
                                       << "Select DISTINCT Classificacao from Receitas Where Classificacao "
                                          "is not Null Order By Classificacao";
    QTest::newRow("origens da pesquisa")
        << SqlOrigensPesquisa()
        << "Select DISTINCT Origem from Receitas Where Origem is not Null Order By Origem";
    QTest::newRow("figuras do backup")
        << SqlFigurasDoBackup()
        << "Select Distinct Figura from Receitas Where Figura is not Null and Figura <> ''";
    QTest::newRow("receitas do pacote")
        << SqlReceitasDoPacote({57, 3, 1234567})
        << "Select * from Receitas Where id_Receitas in (57,3,1234567) Order By Nome";
    QTest::newRow("receita de nome") << SqlReceitaDeNome("Pão d'água\\VG/ ")
                                     << "Select * from Receitas Where ucase(Nome) = 'PÃO D'ÁGUA\\VG/ '";
}

void TesteComandos::escreveOsComandos()
{
    QFETCH(QString, comando);
    QFETCH(QString, texto);
    QCOMPARE(comando, texto);
}

void TesteComandos::pesquisaSoPeloQueFoiPreenchido_data()
{
    QTest::addColumn<Pesquisa>("pesquisa");
    QTest::addColumn<QString>("criterios");
    QTest::newRow("nada") << Pesquisa() << "";
    QTest::newRow("nome") << Pesquisa{.Nome = " bolo "} << " and Nome like '%bolo%'";
    QTest::newRow("tipo") << Pesquisa{.Tipo = " Doces "} << " and Classificacao = 'Doces'";
    QTest::newRow("origem") << Pesquisa{.Origem = "Pacote 1"} << " and Origem = 'Pacote 1'";
    QTest::newRow("ingrediente")
        << Pesquisa{.Ingrediente = "fubá "}
        << " and id_receitas in (Select id_receitas from Ingredientes Where Ingrediente = "
           "'fubá')";
    QTest::newRow("figura") << Pesquisa{.ComFigura = true} << " and Figura is not Null ";
    QTest::newRow("calorias") << Pesquisa{.Calorias = "800"} << " and Calorias <= 800";
    QTest::newRow("preparo") << Pesquisa{.Preparo = " 30 min"} << " and Preparo like '%30 min%'";
    QTest::newRow("exemplo") << Pesquisa{.Nome = "bolo", .Tipo = "Doces", .ComFigura = true}
                             << " and Nome like '%bolo%' and Classificacao = 'Doces' and Figura is not Null ";
    QTest::newRow("tudo")
        << Pesquisa{"bolo", "Doces", "Pacote", "ovo", "800", "1 h", true}
        << " and Nome like '%bolo%' and Classificacao = 'Doces' and Origem = 'Pacote' and "
           "id_receitas in (Select id_receitas from Ingredientes Where Ingrediente = 'ovo') and "
           "Figura is not Null  and Calorias <= 800 and Preparo like '%1 h%'";
    QTest::newRow("o apóstrofo fica como está") << Pesquisa{.Nome = "d'água"} << " and Nome like '%d'água%'";
    QTest::newRow("só brancos") << Pesquisa{.Nome = "  ", .Calorias = " ", .Preparo = " "} << "";
    QTest::newRow("a caixa de escolha só com brancos vale")
        << Pesquisa{.Tipo = " "} << " and Classificacao = ''";
}

void TesteComandos::pesquisaSoPeloQueFoiPreenchido()
{
    QFETCH(Pesquisa, pesquisa);
    QFETCH(QString, criterios);
    QCOMPARE(SqlPesquisa(pesquisa), "Select * from Receitas Where 1=1 " + criterios + " Order By Nome ");
}

QTEST_GUILESS_MAIN(TesteComandos)
#include "teste_comandos.moc"
