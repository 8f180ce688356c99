#include "base/EventosPendentes.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>

namespace
{
bool encerrando = false;
}

void DeixarEventosRodarem()
{
    if (QCoreApplication::instance())
        QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void MostrarMudancas()
{
    if (!QCoreApplication::instance())
        return;
    // Not processEvents() with input excluded: that lets timers and queued calls in, and the platform's input
    // that it puts aside is forgotten until the next event wakes the program up.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
}

bool Encerrando()
{
    return encerrando;
}

void EncerrarPrograma(int codigo)
{
    encerrando = true;
    QCoreApplication::exit(codigo);
}
