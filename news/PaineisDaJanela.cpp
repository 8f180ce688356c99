#include "news/PaineisDaJanela.h"

#include <QAbstractButton>
#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>

#include <utility>

namespace
{
/// Keys that do nothing by themselves: they come with Alt+Tab, too.
bool SoModifica(int tecla)
{
    switch (tecla) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
        return true;
    default:
        return false;
    }
}
} // namespace

PaineisDaJanela::PaineisDaJanela(std::function<bool()> livre, QObject *parent)
    : QObject(parent)
    , m_livre(std::move(livre))
{
    qApp->installEventFilter(this);
}

void PaineisDaJanela::DefinirPaineis(const QList<QWidget *> &paineis)
{
    m_paineis = QList<QPointer<QWidget>>(paineis.begin(), paineis.end());
}

void PaineisDaJanela::AoComecar(std::function<void()> tarefa)
{
    m_aoComecar = std::move(tarefa);
}

void PaineisDaJanela::Esconder()
{
    m_escondidos.clear();
    m_foco = nullptr;
    for (const QPointer<QWidget> &ponteiro : m_paineis) {
        QWidget *painel = ponteiro.data();
        if (!painel || painel->isHidden())
            continue;
        // The window's wish counts, not only the widget that has it while the window is active.
        QWidget *foco = painel->window()->focusWidget();
        if (foco && painel->isAncestorOf(foco))
            m_foco = foco;
        m_escondidos.append(painel);
    }
    for (const QPointer<QWidget> &ponteiro : m_escondidos) {
        if (QWidget *painel = ponteiro.data())
            painel->hide();
    }
}

void PaineisDaJanela::Restaurar()
{
    for (const QPointer<QWidget> &ponteiro : m_escondidos) {
        if (QWidget *painel = ponteiro.data())
            painel->show();
    }
    m_escondidos.clear();
    if (QWidget *foco = m_foco.data())
        foco->setFocus();
    m_foco = nullptr;
}

bool PaineisDaJanela::eventFilter(QObject *watched, QEvent *event)
{
    if (EhTrabalho(watched, event)) {
        m_comecou = true;
        qApp->removeEventFilter(this);
        if (m_aoComecar)
            QMetaObject::invokeMethod(this, std::exchange(m_aoComecar, {}), Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

bool PaineisDaJanela::EhTrabalho(const QObject *watched, const QEvent *event) const
{
    switch (event->type()) {
    case QEvent::KeyPress:
        return !SoModifica(static_cast<const QKeyEvent *>(event)->key());
    case QEvent::InputMethod: {
        const auto *entrada = static_cast<const QInputMethodEvent *>(event);
        return !entrada->commitString().isEmpty() || !entrada->preeditString().isEmpty();
    }
    case QEvent::Drop:
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::TouchBegin: {
        const auto *controle = qobject_cast<const QWidget *>(watched);
        return controle && ServeAoTrabalho(controle);
    }
    default:
        return false;
    }
}

bool PaineisDaJanela::ServeAoTrabalho(const QWidget *controle) const
{
    for (const QWidget *w = controle;; w = w->parentWidget()) {
        if (qobject_cast<const QAbstractButton *>(w) || m_paineis.contains(w))
            return true;
        if (w->isWindow()) // a dialog or a menu, where every place is work
            return !m_paineis.isEmpty() && m_paineis.first() && w != m_paineis.first()->window();
    }
}
