#include "packages/Pacote.h"

#include "base/PaginaCodigo.h"
#include "base/Texto.h"
#include "packages/Base64Class.h"

namespace
{
constexpr auto kVirgula = "\\VG/";
constexpr auto kQuebra = "</BR\\>";
constexpr auto kFimDeLinha = "\r\n";

QString SemVirgulas(QString valor)
{
    return valor.replace(",", kVirgula);
}

/// A value of one line, without the blanks around it.
QString Simples(const QString &valor)
{
    return Aparar(SemControles(valor));
}

// Line breaks first: their escape holds no comma, the commas' escape no line break.
QString SemQuebrasNemVirgulas(QString valor)
{
    return SemVirgulas(valor.replace(kFimDeLinha, kQuebra));
}

QString Linha(const QString &tag, const QString &valor)
{
    return "<" + tag + ">" + valor + "</" + tag + ">" + kFimDeLinha;
}
} // namespace

QString Pacote::Cabecalho()
{
    return "Exportação do Cozinhario 2005 por Tamarel";
}

QByteArray Pacote::EscreverCabecalho()
{
    return PaginaCodigo::ParaAnsi(Cabecalho() + kFimDeLinha);
}

QByteArray Pacote::EscreverReceita(const Receita &receita)
{
    const bool comFigura = !receita.DadosFigura.isEmpty();
    return EscreverAntesDaFigura(receita, comFigura) +
           (comFigura ? Base64Class().Codificar(receita.DadosFigura) : QByteArray()) +
           EscreverDepoisDaFigura(receita, comFigura);
}

QByteArray Pacote::EscreverAntesDaFigura(const Receita &receita, bool comFigura)
{
    QString texto = "<RECEITA>\r\n";
    texto += Linha("NOME", SemVirgulas(Simples(receita.Nome)));
    texto += Linha("CLASSIFICACAO", SemVirgulas(Simples(receita.Classificacao)));
    texto += Linha("MODO", SemQuebrasNemVirgulas(Aparar(receita.Modo)));
    // Kept on purpose: servings, calories and kind keep their commas.
    texto += Linha("PORCOES", Simples(receita.Porcoes));
    texto += Linha("PREPARO", SemVirgulas(Simples(receita.Preparo)));
    texto += Linha("TIPO_CALORIAS", Simples(receita.Tipo_Calorias));
    texto += Linha("CALORIAS", Simples(receita.Calorias));
    texto += Linha("TIPO", Simples(receita.Tipo));
    texto += Linha("ORIGEM", SemVirgulas(Simples(receita.Origem)));
    texto += Linha("OBSERVACAO", SemQuebrasNemVirgulas(Aparar(receita.Observacao)));
    if (comFigura)
        texto += Linha("FIGURA", Simples(receita.Figura)) + "<DADOS_FIGURA>";
    return PaginaCodigo::ParaAnsi(texto);
}

QByteArray Pacote::EscreverDepoisDaFigura(const Receita &receita, bool comFigura)
{
    QString texto = comFigura ? "</DADOS_FIGURA>\r\n<INGREDIENTES>\r\n" : "<INGREDIENTES>\r\n";
    for (const Ingrediente &linha : receita.Ingredientes) {
        texto += "<ITEM>\r\n";
        texto += Linha("INGREDIENTE", SemVirgulas(Simples(linha.Ingrediente)));
        texto += Linha("QUANTIDADE", SemVirgulas(Simples(linha.Quantidade)));
        texto += Linha("UNIDADE", SemVirgulas(Simples(linha.Unidade)));
    }
    texto += "</INGREDIENTES>\r\n";
    return PaginaCodigo::ParaAnsi(texto);
}

QString Pacote::DesfazerVirgulas(QStringView valor)
{
    return valor.toString().replace(kVirgula, ",");
}

QString Pacote::DesfazerQuebras(QStringView valor)
{
    return valor.toString().replace(kQuebra, kFimDeLinha);
}
