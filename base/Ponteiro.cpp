#include "base/Ponteiro.h"

#include <QCursor>
#include <QGuiApplication>

namespace
{
bool ampulheta = false;
int esperasLongas = 0;

void Aplicar(bool mostrar)
{
    if (mostrar == ampulheta)
        return;
    ampulheta = mostrar;
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        return; // programs without a window (tests, tools) keep the state only
    if (mostrar)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}
} // namespace

void Ponteiro::Ampulheta()
{
    Aplicar(true);
}

void Ponteiro::Normal()
{
    if (esperasLongas == 0)
        Aplicar(false);
}

void Ponteiro::NormalSempre()
{
    Aplicar(false);
}

bool Ponteiro::EmEspera()
{
    return ampulheta;
}

EsperaLonga::EsperaLonga()
{
    ++esperasLongas;
    Ponteiro::Ampulheta();
}

EsperaLonga::~EsperaLonga()
{
    Encerrar();
}

void EsperaLonga::Encerrar()
{
    if (!m_ativa)
        return;
    m_ativa = false;
    --esperasLongas;
    Ponteiro::Normal();
}
