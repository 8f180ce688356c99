#pragma once

#include "base/Operacao.h"
#include "base/Protegido.h"

#include <QObject>

/// Starts what the user has asked for when no other operation is in the way (Operacao::Pedir), and reports
/// what it throws. `dono` is the control that was used, or the panel it lies on.
template <typename F>
void Comandar(Avisos &avisos, QObject *dono, F f)
{
    Operacao::Pedir(dono, [&avisos, f = std::move(f)]() mutable { Proteger(avisos, f); });
}

/// The same as an event handler; the signal's arguments are dropped.
template <typename F>
auto Comando(Avisos &avisos, QObject *dono, F f)
{
    return [&avisos, dono, f = std::move(f)] { Comandar(avisos, dono, f); };
}
