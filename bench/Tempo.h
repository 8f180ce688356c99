#pragma once

#include <algorithm>
#include <ctime>
#include <vector>

/// Which clock a comparison counts by: what waits for the disk needs the wall's, everything else the
/// processor's, in which other programs on the machine hardly show.
enum class Contagem { Parede, Processador };

inline double Segundos(Contagem contagem)
{
    timespec tempo = {};
    clock_gettime(contagem == Contagem::Parede ? CLOCK_MONOTONIC : CLOCK_PROCESS_CPUTIME_ID, &tempo);
    return static_cast<double>(tempo.tv_sec) + static_cast<double>(tempo.tv_nsec) / 1e9;
}

inline double Mediana(std::vector<double> valores)
{
    const auto meio = valores.begin() + static_cast<std::ptrdiff_t>(valores.size() / 2);
    std::nth_element(valores.begin(), meio, valores.end());
    return *meio;
}
