#include "base/EventosPendentes.h"

#include <QCoreApplication>
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
    if (QCoreApplication::instance())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                        QEventLoop::ExcludeSocketNotifiers);
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
