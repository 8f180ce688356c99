#include "browse/RegraTipo.h"

#include "base/Numero.h"

bool PodeAlterar(const QString &tipo)
{
    bool numero = false;
    const double valor = NumeroDoTexto(tipo, &numero);
    return !numero || Int(valor) < 1;
}
