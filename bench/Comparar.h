#pragma once

#include "bench/Tempo.h"

#include <benchmark/benchmark.h>

#include <vector>

/**
 * Runs our work and the bare one in turns, each once per iteration, and reports medians in milliseconds: the
 * counters `nosso_ms`, `nu_ms` and `razao`, ours divided by the bare one.
 */
template <class Nosso, class Nu>
void Comparar(benchmark::State &estado, Contagem contagem, Nosso nosso, Nu nu)
{
    std::vector<double> nossos;
    std::vector<double> nus;
    nu(); // both find the file in the cache
    nosso();
    for ([[maybe_unused]] auto _ : estado) {
        const double t0 = Segundos(contagem);
        nosso();
        const double t1 = Segundos(contagem);
        nu();
        const double t2 = Segundos(contagem);
        nossos.push_back(t1 - t0);
        nus.push_back(t2 - t1);
        estado.SetIterationTime(t1 - t0);
    }
    estado.counters["nosso_ms"] = 1000 * Mediana(nossos);
    estado.counters["nu_ms"] = 1000 * Mediana(nus);
    estado.counters["razao"] = Mediana(nossos) / Mediana(nus);
}
