#include "browse/Selecao.h"

QString TextoSelecao(const QList<qint64> &receitas)
{
    QString texto;
    for (const qint64 receita : receitas)
        texto += QString::number(receita) + ',';
    return texto;
}
