#pragma once

#include "print/ReceitaImpressa.h"

// Recipes that several tests print.
namespace ReceitasDeTeste
{
inline const QString kSite = QStringLiteral("www.tamarel.example");

inline QImage Figura()
{
    QImage figura(110, 90, QImage::Format_RGB32);
    figura.fill(QColor(200, 60, 40));
    return figura;
}

/// A cake with everything but a picture.
inline ReceitaImpressa Bolo()
{
    ReceitaImpressa receita;
    receita.Nome = "Bolo de fubá da Vovó Cota";
    receita.Origem = "Caderno da família";
    receita.Classificacao = "Bolos";
    receita.Preparo = "1 hora e 10 minutos";
    receita.Porcoes = "12";
    receita.Calorias = "250";
    receita.Tipo_Calorias = "P";
    receita.Ingredientes = {{"2", "xícaras", "fubá mimoso"},
                            {"1", "xícara", "farinha de trigo"},
                            {"3", std::nullopt, "ovos"},
                            {"1/2", "xícara", "óleo"},
                            {std::nullopt, std::nullopt, "sal"}};
    receita.Modo =
        "Bata os ovos com o açúcar até formar um creme claro. Junte o óleo, o fubá e a farinha aos "
        "poucos, sempre mexendo, e por último o fermento.\r\n"
        "Despeje em forma untada e leve ao forno já quente por cerca de 40 minutos, até que um palito "
        "espetado no meio do bolo saia limpo.";
    receita.Observacao = "Fica ainda melhor no dia seguinte, com café coado na hora.";
    return receita;
}

/// A paragraph that fills a few lines of a page, `vezes` times.
inline QString Paragrafos(int vezes)
{
    return QStringLiteral(
               "Amasse bem até que a massa desgrude das mãos, cubra com um pano limpo e deixe crescer em "
               "lugar morno até dobrar de volume, o que leva perto de uma hora nos dias frios.\r\n")
        .repeated(vezes);
}
} // namespace ReceitasDeTeste
