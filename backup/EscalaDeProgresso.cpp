#include "backup/EscalaDeProgresso.h"

#include <cmath>

namespace
{
constexpr double kLimite = 32001;
}

EscalaDeProgresso::EscalaDeProgresso(qint64 tamanho)
{
    auto resto = static_cast<double>(tamanho);
    while (resto >= kLimite) {
        divisor *= 10;
        resto = std::nearbyint(resto / static_cast<double>(divisor));
    }
    total = static_cast<int>(resto);
}
