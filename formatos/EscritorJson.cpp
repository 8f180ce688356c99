#include "formatos/EscritorJson.h"

#include "formatos/LinhaDeIngrediente.h"
#include "formatos/Medidas.h"

#include <QJsonArray>

#include <array>
#include <cmath>

namespace
{
using namespace Formatos;

constexpr int kVersao = 1;

double Numero(QString texto)
{
    return texto.replace(u',', u'.').toDouble();
}

QJsonArray Paragrafos(const QString &texto)
{
    QJsonArray lista;
    for (const QString &linha : QString(texto).replace("\r\n", "\n").split(u'\n'))
        if (const QString limpa = linha.trimmed(); !limpa.isEmpty())
            lista.append(limpa);
    return lista;
}

QString Iso8601(const QString &tempo)
{
    const std::optional<double> minutos = MinutosDoTexto(tempo);
    if (!minutos || *minutos <= 0)
        return {};
    const qint64 total = std::llround(*minutos);
    return "PT" + QString::number(total / 60) + "H" + QString::number(total % 60) + "M";
}

struct CampoDeTexto {
    const char *chave;
    QString Receita::*campo;
};
const std::array<CampoDeTexto, 11> kCampos = {{{"nome", &Receita::Nome},
                                               {"tipo", &Receita::Classificacao},
                                               {"porcoes", &Receita::Porcoes},
                                               {"preparo", &Receita::Preparo},
                                               {"calorias", &Receita::Calorias},
                                               {"tipoCalorias", &Receita::Tipo_Calorias},
                                               {"origem", &Receita::Origem},
                                               {"modo", &Receita::Modo},
                                               {"observacao", &Receita::Observacao},
                                               {"especie", &Receita::Tipo},
                                               {"figuraNome", &Receita::Figura}}};
} // namespace

QJsonObject Formatos::ParaSchema(const Receita &receita)
{
    QJsonObject objeto;
    objeto["@context"] = "https://schema.org";
    objeto["@type"] = "Recipe";
    objeto["name"] = receita.Nome;
    if (!receita.Classificacao.isEmpty())
        objeto["recipeCategory"] = receita.Classificacao;
    const double porcoes = Numero(receita.Porcoes);
    if (porcoes > 0) {
        if (porcoes == std::floor(porcoes) && porcoes < 1e9)
            objeto["recipeYield"] = static_cast<qint64>(porcoes);
        else
            objeto["recipeYield"] = receita.Porcoes;
    }
    if (const QString tempo = Iso8601(receita.Preparo); !tempo.isEmpty())
        objeto["totalTime"] = tempo;
    QJsonArray linhas;
    for (const Linha &linha : receita.Ingredientes) {
        QString texto = TextoDaLinha(linha);
        if (ETitulo(linha))
            texto = "## " + texto.chopped(1).trimmed();
        linhas.append(texto);
    }
    objeto["recipeIngredient"] = linhas;
    objeto["recipeInstructions"] = Paragrafos(receita.Modo);
    if (!receita.Observacao.isEmpty())
        objeto["description"] = QString(receita.Observacao).replace("\r\n", "\n");
    if (!receita.Origem.isEmpty())
        objeto["publisher"] = QJsonObject{{"@type", "Organization"}, {"name", receita.Origem}};
    double calorias = Numero(receita.Calorias);
    if (receita.Tipo_Calorias == "R")
        calorias = porcoes > 0 ? calorias / porcoes : 0;
    if (const QString texto = NumeroDaCasa(calorias); !texto.isEmpty())
        objeto["nutrition"] = QJsonObject{{"@type", "NutritionInformation"},
                                          {"calories", QString(texto).replace(u',', u'.') + " kcal"}};
    return objeto;
}

QJsonObject Formatos::ChaveNossa(const Receita &receita, const QString &figura, const QByteArray &sha256DaCopia)
{
    QJsonObject chave;
    chave["versao"] = kVersao;
    for (const CampoDeTexto &campo : kCampos)
        if (!(receita.*campo.campo).isEmpty())
            chave[QLatin1String(campo.chave)] = receita.*campo.campo;
    QJsonArray linhas;
    for (const Linha &linha : receita.Ingredientes)
        linhas.append(QJsonArray{linha.Quantidade, linha.Unidade, linha.Ingrediente});
    chave["linhas"] = linhas;
    if (!figura.isEmpty()) {
        chave["figura"] = figura;
        chave["sha256DaCopia"] = QString::fromLatin1(sha256DaCopia);
    }
    return chave;
}

std::optional<Receita> Formatos::ReceitaExata(const QJsonObject &objeto)
{
    const QJsonObject chave = objeto.value(kChaveNossa).toObject();
    if (chave.value("versao").toInt() != kVersao)
        return std::nullopt;
    Receita receita;
    for (const CampoDeTexto &campo : kCampos)
        receita.*campo.campo = chave.value(QLatin1String(campo.chave)).toString();
    for (const QJsonValue linha : chave.value("linhas").toArray())
        receita.Ingredientes.append({linha[2].toString(), linha[0].toString(), linha[1].toString()});
    // Others may have written the key as well: nothing in it may pass for what a book never holds.
    for (const CampoDeTexto &campo : kCampos)
        for (QChar &c : receita.*campo.campo)
            if (c.unicode() < 0x20 && c != u'\r' && c != u'\n' && c != u'\t')
                c = u' ';
    if (receita.Nome.trimmed().isEmpty())
        return std::nullopt;
    return receita;
}

QStringList Formatos::CamposTocados(const Receita &exata, const QJsonObject &objeto)
{
    const QJsonObject escrito = ParaSchema(exata);
    QStringList tocados;
    for (const char *chave : {"name", "recipeCategory", "recipeYield", "totalTime", "recipeIngredient",
                              "recipeInstructions", "description", "publisher", "nutrition"}) {
        QJsonValue aqui = objeto.value(QLatin1String(chave));
        const QJsonValue nosso = escrito.value(QLatin1String(chave));
        const bool vazio = (aqui.isString() && aqui.toString().isEmpty()) || aqui.isNull() ||
                           (aqui.isObject() && aqui.toObject().isEmpty());
        if (vazio)
            aqui = QJsonValue(QJsonValue::Undefined);
        if (aqui != nosso)
            tocados += QString::fromLatin1(chave);
    }
    return tocados;
}

void Formatos::DevolverExatos(const Receita &exata, const QStringList &tocados, Receita &receita)
{
    const auto devolver = [&](const char *chave, QString Receita::*campo) {
        if (!tocados.contains(QLatin1String(chave)))
            receita.*campo = exata.*campo;
    };
    devolver("name", &Receita::Nome);
    devolver("recipeCategory", &Receita::Classificacao);
    devolver("recipeYield", &Receita::Porcoes);
    devolver("totalTime", &Receita::Preparo);
    devolver("recipeInstructions", &Receita::Modo);
    devolver("description", &Receita::Observacao);
    devolver("publisher", &Receita::Origem);
    // Calories of the whole recipe are shown divided by the servings: both must be as they were.
    if (!tocados.contains("nutrition") && !tocados.contains("recipeYield")) {
        receita.Calorias = exata.Calorias;
        receita.Tipo_Calorias = exata.Tipo_Calorias;
    }
    if (!tocados.contains("recipeIngredient"))
        receita.Ingredientes = exata.Ingredientes;
    receita.Tipo = exata.Tipo;
}

FiguraExata Formatos::FiguraNossa(const QJsonObject &objeto)
{
    const QJsonObject chave = objeto.value(kChaveNossa).toObject();
    return {chave.value("figura").toString(), chave.value("sha256DaCopia").toString().toLatin1()};
}
