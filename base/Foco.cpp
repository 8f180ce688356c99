#include "base/Foco.h"

#include <QWidget>

namespace
{
bool Cobre(const QObject *objeto, const QRect &area)
{
    const auto *irmao = qobject_cast<const QWidget *>(objeto);
    return irmao && !irmao->isWindow() && !irmao->isHidden() && irmao->geometry().contains(area);
}

bool Alcancavel(const QWidget &controle)
{
    return (controle.focusPolicy() & Qt::TabFocus) && !controle.focusProxy() && controle.isVisible() &&
           controle.isEnabled() && !Encoberto(controle);
}
} // namespace

bool Encoberto(const QWidget &controle)
{
    for (const QWidget *w = &controle; !w->isWindow() && w->parentWidget(); w = w->parentWidget()) {
        // Children are listed from the rearmost to the foremost.
        const QObjectList &irmaos = w->parentWidget()->children();
        for (qsizetype i = irmaos.indexOf(w) + 1; i < irmaos.size(); ++i)
            if (Cobre(irmaos[i], w->geometry()))
                return true;
    }
    return false;
}

bool MoverFoco(const QWidget &janela, bool next)
{
    QWidget *const topo = janela.window();
    QWidget *const inicio = topo->focusWidget() ? topo->focusWidget() : topo;
    QWidget *w = inicio;
    do {
        w = next ? w->nextInFocusChain() : w->previousInFocusChain();
    } while (w != inicio && !(w->window() == topo && Alcancavel(*w)));
    if (w == inicio)
        return false;
    w->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}
