#pragma once

#include "base/Alcance.h"
#include "base/Operacao.h"
#include "base/Protegido.h"

#include <QPointer>

/// Starts what the user has asked for when no other operation is in the way (Operacao::Pedir) and `dono`, the
/// control that was used or the panel it lies on, can be reached then; and reports what it throws.
template <typename F>
void Comandar(Avisos &avisos, QObject *dono, F f)
{
    if (!Alcance::PodeComandar(dono))
        return;
    Operacao::Pedir(dono, [&avisos, alvo = QPointer<QObject>(dono), f = std::move(f)]() mutable {
        if (alvo && Alcance::PodeComandar(alvo))
            Proteger(avisos, f);
    });
}

/// The same as an event handler; the signal's arguments are dropped.
template <typename F>
auto Comando(Avisos &avisos, QObject *dono, F f)
{
    return [&avisos, dono, f = std::move(f)] { Comandar(avisos, dono, f); };
}
