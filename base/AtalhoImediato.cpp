#include "base/AtalhoImediato.h"

#include <QAbstractButton>
#include <QShortcutEvent>

bool AtalhoImediato::eventFilter(QObject *objeto, QEvent *event)
{
    if (event->type() != QEvent::Shortcut)
        return false;
    auto *botao = qobject_cast<QAbstractButton *>(objeto);
    if (!botao || !botao->isEnabled() || static_cast<QShortcutEvent *>(event)->isAmbiguous())
        return false;
    // Option buttons and check boxes take the focus with their key, as they do with the mouse.
    if (botao->isCheckable() && (botao->focusPolicy() & Qt::ClickFocus))
        botao->setFocus(Qt::ShortcutFocusReason);
    botao->click();
    return true;
}
