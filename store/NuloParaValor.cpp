#include "store/NuloParaValor.h"

QVariant NuloParaValor(const QVariant &valor)
{
    return valor.isNull() ? QVariant(QString("")) : valor;
}
