#pragma once

#include "base/Avisos.h"

#include <utility>

/// Reports the exception being handled: the pointer goes back to normal and the user sees a stop box with the
/// error's text. Call it from a catch block only.
void RelatarErro(Avisos &avisos);

/// Runs `f` and reports what it throws; true when it came to its end.
template <typename F>
bool Proteger(Avisos &avisos, F &&f)
{
    try {
        std::forward<F>(f)();
        return true;
    } catch (...) {
        RelatarErro(avisos);
        return false;
    }
}

/// An event handler that no exception leaves (Qt does not allow one to). The signal's arguments are dropped.
template <typename F>
auto Protegido(Avisos &avisos, F f)
{
    return [&avisos, f = std::move(f)]() mutable { Proteger(avisos, f); };
}
