#include "browse/Criterios.h"

#include "base/Numero.h"
#include "base/Texto.h"

#include <algorithm>
#include <cmath>

bool SemCriterios(const Comandos::Pesquisa &criterios)
{
    return Aparar(criterios.Nome).isEmpty() && criterios.Tipo.isEmpty() && criterios.Origem.isEmpty() &&
           criterios.Ingrediente.isEmpty() && !criterios.ComFigura && Aparar(criterios.Calorias).isEmpty() &&
           Aparar(criterios.Preparo).isEmpty();
}

qint64 LimiteCalorias(const Comandos::Pesquisa &criterios)
{
    if (Aparar(criterios.Calorias).isEmpty())
        return 0;
    bool numero = false;
    const double calorias = NumeroDoTexto(criterios.Calorias, &numero);
    if (!numero || !std::isfinite(calorias))
        throw ErroCriterio(
            QString("A quantidade de calorias informada não é um número: %1").arg(criterios.Calorias));
    // Beyond what a limit can hold, every recipe is below it (or above it) anyway.
    constexpr double kMaior = 9.0e18;
    return static_cast<qint64>(std::clamp(Int(calorias), -kMaior, kMaior));
}
