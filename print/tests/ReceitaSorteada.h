#pragma once

#include "print/ReceitaImpressa.h"

#include <QRandomGenerator>
#include <QStringList>

// Recipes by chance, the same ones for the same seed, and their words in the order of the page.
namespace ReceitaSorteada
{
inline QString Palavra(QRandomGenerator &sorte)
{
    static const QStringList palavras{"farinha", "de",        "trigo",     "açúcar",     "ovos",    "pão",
                                      "com",     "manteiga",  "a",         "colher",     "mexendo", "sempre",
                                      "até",     "engrossar", "forno",     "quente",     "1/2",     "180",
                                      "maçã",    "d'água",    "erva-doce", "(opcional)", "e",       "leve"};
    return palavras[sorte.bounded(static_cast<int>(palavras.size()))];
}

/// @param marca begins every word
inline QString Texto(QRandomGenerator &sorte, int palavras, const QString &marca = QString())
{
    QStringList texto;
    for (int i = 0; i < palavras; ++i)
        texto << marca + Palavra(sorte);
    return texto.join(u' ');
}

/// Paragraphs of up to 120 words, CR LF between them.
inline QString Paragrafos(QRandomGenerator &sorte, int palavras)
{
    QStringList paragrafos;
    while (palavras > 0) {
        const int tamanho = std::min(palavras, 1 + sorte.bounded(120));
        paragrafos << Texto(sorte, tamanho);
        palavras -= tamanho;
    }
    return paragrafos.join("\r\n");
}

/// Up to 80 ingredients of up to 80 words, a method of up to five pages; every fourth recipe has a long name,
/// origin or type, too.
inline ReceitaImpressa Sortear(quint32 semente, bool comFigura)
{
    QRandomGenerator sorte(semente);
    ReceitaImpressa receita;
    const auto comprido = [&](int normal) { return sorte.bounded(4) == 0 ? sorte.bounded(900) : normal; };
    receita.Nome = QString("Receita%1 ").arg(semente) + Texto(sorte, comprido(3), "n");
    receita.Origem = Texto(sorte, comprido(2), "o"); // no word of the body begins or goes on like a header
    receita.Classificacao = Texto(sorte, comprido(1));
    receita.Preparo = Texto(sorte, comprido(2));
    receita.Porcoes = QString::number(sorte.bounded(20));
    receita.Calorias = sorte.bounded(2) ? QString::number(sorte.bounded(900)) : QString();
    receita.Tipo_Calorias = "P";
    for (int i = sorte.bounded(81); i > 0; --i) {
        // Long lines are rare at a cook's table, yet they are what a page must not swallow.
        const int palavras = sorte.bounded(6) == 0 ? 1 + sorte.bounded(80) : 1 + sorte.bounded(6);
        receita.Ingredientes.append({QString::number(i), Palavra(sorte), Texto(sorte, palavras)});
    }
    receita.Modo = Paragrafos(sorte, sorte.bounded(5) == 0 ? sorte.bounded(2500) : sorte.bounded(400));
    if (sorte.bounded(2))
        receita.Observacao = Paragrafos(sorte, sorte.bounded(300));
    if (comFigura) {
        receita.Figura = QImage(110, 90, QImage::Format_RGB32);
        receita.Figura.fill(QColor(200, 60, 40));
    }
    return receita;
}

/// What stands on paper, without headers of later pages and footers.
inline QStringList Palavras(const ReceitaImpressa &receita)
{
    QString tudo = receita.Nome + " (" + receita.Origem + ") ";
    if (!receita.Classificacao.isEmpty())
        tudo += "Tipo : " + receita.Classificacao + ' ';
    if (!receita.Preparo.isEmpty())
        tudo += "Tempo de Preparo : " + receita.Preparo + ' ';
    tudo += "Rendimento : " + TextoRendimento(receita.Porcoes) + ' ';
    if (!receita.Calorias.isEmpty())
        tudo += "Calorias : " + receita.Calorias + SufixoCalorias(receita.Tipo_Calorias) + ' ';
    tudo += "Ingredientes : ";
    for (const IngredienteImpresso &ingrediente : receita.Ingredientes)
        tudo += LinhaIngrediente(ingrediente) + ' ';
    tudo += "Modo de Preparo : " + receita.Modo + ' ';
    if (!receita.Observacao.isEmpty())
        tudo += "Informações Adicionais : " + receita.Observacao;
    return tudo.simplified().split(u' ');
}
} // namespace ReceitaSorteada
