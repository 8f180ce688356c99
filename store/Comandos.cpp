#include "store/Comandos.h"

#include "base/Texto.h"

#include <QStringList>

// Doubled blanks and the changing letter case of id_receitas and Null are part of the texts.

namespace
{
QString TipoCalorias(const QString &tipo)
{
    return tipo == "R" || tipo == "P" ? "'" + tipo + "'" : QString("NULL");
}
} // namespace

QString Comandos::Texto(const QString &valor)
{
    return "'" + Aparar(valor).replace("'", "''") + "'";
}

QString Comandos::TextoOuNulo(const QString &valor)
{
    return Aparar(valor).isEmpty() ? QString("NULL") : Texto(valor);
}

QString Comandos::Numero(const QString &valor)
{
    const QString numero = Aparar(valor);
    return numero.isEmpty() ? QString("0") : numero;
}

QString Comandos::Data(const QDate &dia)
{
    return "CDATE('" + dia.toString(Qt::ISODate) + "')";
}

QString Comandos::NomeFigura(qint64 lngReceita)
{
    return "F" + QString::number(lngReceita).rightJustified(7, '0') + ".img";
}

QString Comandos::Maiusculas(const QString &texto)
{
    // Letter by letter, so that a text never grows: the sharp s has no capital here.
    QString saida;
    saida.reserve(texto.size());
    for (const char32_t c : texto.toUcs4())
        saida += QChar::fromUcs4(QChar::toUpper(c));
    return saida;
}

QString Comandos::SqlInserirReceita(const Receita &receita, const QDate &hoje)
{
    return "Insert into "
           "Receitas(Nome,Data,Classificacao,Modo,Porcoes,Preparo,Tipo_Calorias,Calorias,Observacao,Figura)"
           " values (" +
           Texto(receita.Nome) + "," + Data(hoje) + "," + TextoOuNulo(receita.Classificacao) + "," +
           Texto(receita.Modo) + "," + Numero(receita.Porcoes) + "," + TextoOuNulo(receita.Preparo) + "," +
           TipoCalorias(receita.Tipo_Calorias) + "," + Numero(receita.Calorias) + "," +
           TextoOuNulo(receita.Observacao) + ",NULL)";
}

QString Comandos::SqlMaiorNumero()
{
    return "Select max(id_receitas) from Receitas";
}

QString Comandos::SqlGravarFigura(qint64 lngReceita)
{
    return "Update Receitas set Figura = '" + NomeFigura(lngReceita) +
           "' Where id_receitas = " + QString::number(lngReceita);
}

QString Comandos::SqlAlterarReceita(const Receita &receita, qint64 lngReceita, Figura figura)
{
    QString strSQL = "Update Receitas set  Nome = " + Texto(receita.Nome) + "," +
                     " Classificacao = " + TextoOuNulo(receita.Classificacao) + "," +
                     " Modo = " + Texto(receita.Modo) + "," + " Porcoes = " + Numero(receita.Porcoes) + "," +
                     " Preparo = " + TextoOuNulo(receita.Preparo) + "," +
                     " Calorias = " + Numero(receita.Calorias) + "," +
                     " Observacao = " + TextoOuNulo(receita.Observacao) + "," +
                     " Tipo_Calorias = " + TipoCalorias(receita.Tipo_Calorias) + ", ";
    switch (figura) {
    case Figura::Nova:
        strSQL += " Figura = '" + NomeFigura(lngReceita) + "' ";
        break;
    case Figura::Nenhuma:
        strSQL += "Figura = NULL ";
        break;
    case Figura::Mantida:
        strSQL += "Figura = Figura ";
        break;
    }
    return strSQL + " Where id_Receitas = " + QString::number(lngReceita);
}

QString Comandos::SqlExcluirIngredientes(qint64 lngReceita)
{
    return "Delete from Ingredientes Where id_receitas = " + QString::number(lngReceita);
}

QString Comandos::SqlInserirIngrediente(qint64 lngReceita, const QString &ingrediente,
                                        const QString &quantidade, const QString &unidade)
{
    const QString qtde = Aparar(quantidade);
    return "Insert into Ingredientes(id_receitas,Ingrediente,Quantidade,Unidade) values (" +
           QString::number(lngReceita) + "," + Texto(ingrediente) + "," +
           (qtde.isEmpty() ? QString("NULL") : "'" + qtde + "'") + "," + TextoOuNulo(unidade) + ")";
}

QString Comandos::SqlExcluirReceita(qint64 lngReceita)
{
    return "Delete from Receitas Where id_receitas = " + QString::number(lngReceita);
}

QString Comandos::SqlReceita(qint64 lngReceita)
{
    return "Select * from Receitas Where id_Receitas = " + QString::number(lngReceita);
}

QString Comandos::SqlReceitaFigura(qint64 lngReceita)
{
    return "Select * from Receitas Where id_receitas = " + QString::number(lngReceita);
}

QString Comandos::SqlFigura(qint64 lngReceita)
{
    return "Select Figura from Receitas Where id_Receitas = " + QString::number(lngReceita);
}

QString Comandos::SqlIngredientes(qint64 lngReceita)
{
    return "Select * from Ingredientes Where id_receitas = " + QString::number(lngReceita) +
           " Order By id_ingredientes";
}

QString Comandos::SqlLista()
{
    return "Select * from Receitas Order By Nome";
}

QString Comandos::SqlTipos()
{
    return "Select DISTINCT Classificacao from Receitas Where Classificacao is not null Order By "
           "Classificacao";
}

QString Comandos::SqlUnidades()
{
    return "Select DISTINCT Unidade from Ingredientes Where Unidade is not null Order By Unidade";
}

QString Comandos::SqlNomesDeIngredientes()
{
    return "Select DISTINCT Ingrediente from Ingredientes Order By Ingrediente";
}

QString Comandos::SqlTiposPesquisa()
{
    return "Select DISTINCT Classificacao from Receitas Where Classificacao is not Null Order By "
           "Classificacao";
}

QString Comandos::SqlOrigensPesquisa()
{
    return "Select DISTINCT Origem from Receitas Where Origem is not Null Order By Origem";
}

QString Comandos::SqlPesquisa(const Pesquisa &pesquisa)
{
    QString strSQL = "Select * from Receitas Where 1=1 ";
    if (const QString nome = Aparar(pesquisa.Nome); !nome.isEmpty())
        strSQL += " and Nome like '%" + nome + "%'";
    // A combo that holds nothing but blanks counts as filled, and looks for an empty text.
    if (!pesquisa.Tipo.isEmpty())
        strSQL += " and Classificacao = '" + Aparar(pesquisa.Tipo) + "'";
    if (!pesquisa.Origem.isEmpty())
        strSQL += " and Origem = '" + Aparar(pesquisa.Origem) + "'";
    if (!pesquisa.Ingrediente.isEmpty())
        strSQL += " and id_receitas in (Select id_receitas from Ingredientes Where Ingrediente = '" +
                  Aparar(pesquisa.Ingrediente) + "')";
    if (pesquisa.ComFigura)
        strSQL += " and Figura is not Null ";
    if (!Aparar(pesquisa.Calorias).isEmpty())
        strSQL += " and Calorias <= " + pesquisa.Calorias;
    if (const QString preparo = Aparar(pesquisa.Preparo); !preparo.isEmpty())
        strSQL += " and Preparo like '%" + preparo + "%'";
    return strSQL + " Order By Nome ";
}

QString Comandos::SqlFigurasDoBackup()
{
    return "Select Distinct Figura from Receitas Where Figura is not Null and Figura <> ''";
}

QString Comandos::SqlReceitasDoPacote(const QList<qint64> &numeros)
{
    QStringList textos;
    for (const qint64 numero : numeros)
        textos += QString::number(numero);
    return "Select * from Receitas Where id_Receitas in (" + textos.join(",") + ") Order By Nome";
}

QString Comandos::SqlReceitaDeNome(const QString &nome)
{
    return "Select * from Receitas Where ucase(Nome) = '" + Maiusculas(nome) + "'";
}
