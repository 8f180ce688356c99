#include "store/Receita.h"

#include "base/Texto.h"

QString LinhaPorExtenso(const LinhaDaReceita &linha)
{
    QString texto;
    if (!linha.Quantidade.isNull())
        texto += Aparar(linha.Quantidade) + ' ';
    if (!linha.Unidade.isNull())
        texto += Aparar(linha.Unidade) + ' ';
    return texto + Aparar(linha.Ingrediente);
}
