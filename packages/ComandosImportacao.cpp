#include "packages/ComandosImportacao.h"

#include "base/Texto.h"
#include "packages/Pacote.h"
#include "store/Comandos.h"

#include <algorithm>
#include <initializer_list>

namespace
{
QString Esc(const QString &valor)
{
    return Pacote::DesfazerVirgulas(QString(valor).replace("'", "''"));
}

QString EntreApostrofos(const QString &valor)
{
    return "'" + valor + "'";
}

QString OuNulo(const QString &valor)
{
    return valor.isEmpty() ? QString("NULL") : EntreApostrofos(Esc(valor));
}

/// A value of one line: nothing in it may begin another, here or where the recipe is sent on.
QString Simples(QStringView valor)
{
    return SemControles(valor.toString());
}

/// As it stands in the package, quoted; `vazio` when there is nothing.
QString SemEscape(QStringView valor, const QString &vazio)
{
    return valor.isEmpty() ? vazio : EntreApostrofos(Simples(valor));
}
bool EApostrofo(QChar c)
{
    return c == u'\'';
}

bool ForaDeNumero(QChar c)
{
    return !(c >= u'0' && c <= u'9') && !QStringView(u"+-., ").contains(c);
}
} // namespace

QString ComandosImportacao::CampoInvalido(const Pacote::Registro &receita)
{
    const QStringView tipo = receita.Valor(u"TIPO");
    if (std::any_of(tipo.begin(), tipo.end(), ForaDeNumero))
        return "TIPO";
    for (const QStringView campo :
         std::initializer_list<QStringView>{u"PORCOES", u"TIPO_CALORIAS", u"CALORIAS"}) {
        const QStringView valor = receita.Valor(campo);
        if (std::any_of(valor.begin(), valor.end(), EApostrofo))
            return campo.toString();
    }
    return {};
}

QString ComandosImportacao::SqlInserirReceita(const Pacote::Registro &receita, const QDate &hoje)
{
    const auto valor = [&](QStringView tag) { return Simples(receita.Valor(tag)); };
    const QString tipo = valor(u"TIPO");
    return "Insert into Receitas(Nome,Data,Classificacao,Modo,Tipo,Origem,Porcoes,Preparo,Tipo_Calorias,"
           "Calorias,Observacao,Figura) values (" +
           EntreApostrofos(Esc(valor(u"NOME"))) + "," + Comandos::Data(hoje) + "," +
           OuNulo(valor(u"CLASSIFICACAO")) + "," +
           EntreApostrofos(Esc(Pacote::DesfazerQuebras(receita.Valor(u"MODO")))) + "," +
           (tipo.isEmpty() ? QString("NULL") : tipo) + "," + OuNulo(valor(u"ORIGEM")) + "," +
           SemEscape(receita.Valor(u"PORCOES"), "0") + "," + OuNulo(valor(u"PREPARO")) + "," +
           SemEscape(receita.Valor(u"TIPO_CALORIAS"), "NULL") + "," +
           SemEscape(receita.Valor(u"CALORIAS"), "0") + "," +
           OuNulo(Pacote::DesfazerQuebras(receita.Valor(u"OBSERVACAO"))) + ",NULL)";
}

QString ComandosImportacao::SqlInserirIngrediente(qint64 lngReceita, const Pacote::Registro &item)
{
    return "Insert into Ingredientes(id_receitas,Ingrediente,Quantidade,Unidade) values (" +
           QString::number(lngReceita) + "," + EntreApostrofos(Esc(Simples(item.Valor(u"INGREDIENTE")))) +
           "," + OuNulo(Simples(item.Valor(u"QUANTIDADE"))) + "," +
           OuNulo(Simples(item.Valor(u"UNIDADE"))) + ")";
}
