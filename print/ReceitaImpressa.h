#pragma once

#include <QImage>
#include <QList>
#include <QString>

#include <optional>

/// One ingredient line. A quantity or unit that is absent (NULL) is not the same as an empty one.
struct IngredienteImpresso {
    std::optional<QString> Quantidade;
    std::optional<QString> Unidade;
    QString Ingrediente;
};

/// The values of one recipe as the layout prints them; empty texts for the database's NULL.
struct ReceitaImpressa {
    QString Nome;
    QString Origem;
    QString Classificacao;
    QString Preparo;
    QString Porcoes;
    QString Calorias;
    QString Tipo_Calorias; ///< "P" per serving, "R" per recipe, anything else neither
    QList<IngredienteImpresso> Ingredientes;
    QImage Figura; ///< null: no picture
    QString Modo;
    QString Observacao;
};

/// "2 xícaras farinha": quantity, unit and ingredient trimmed, a blank between them. Only an absent quantity
/// or unit leaves its blank out; an empty one still contributes it.
QString LinhaIngrediente(const IngredienteImpresso &ingrediente);

/// "1 porção", "4 porções": singular when the whole-number part is exactly 1.
QString TextoRendimento(const QString &Porcoes);

/// " por Porção", " por Receita" or nothing.
QString SufixoCalorias(const QString &Tipo_Calorias);
