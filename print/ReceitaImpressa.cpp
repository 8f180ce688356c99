#include "print/ReceitaImpressa.h"

#include "base/Texto.h"

#include <cmath>

QString LinhaIngrediente(const IngredienteImpresso &ingrediente)
{
    QString linha;
    if (ingrediente.Quantidade)
        linha += Aparar(*ingrediente.Quantidade) + u' ';
    if (ingrediente.Unidade)
        linha += Aparar(*ingrediente.Unidade) + u' ';
    return linha + Aparar(ingrediente.Ingrediente);
}

QString TextoRendimento(const QString &Porcoes)
{
    const bool uma = std::floor(Val(Porcoes)) == 1;
    return Porcoes + (uma ? QStringLiteral(" porção") : QStringLiteral(" porções"));
}

QString SufixoCalorias(const QString &Tipo_Calorias)
{
    if (Tipo_Calorias == u"P")
        return QStringLiteral(" por Porção");
    if (Tipo_Calorias == u"R")
        return QStringLiteral(" por Receita");
    return QString();
}
