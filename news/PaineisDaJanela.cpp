#include "news/PaineisDaJanela.h"

#include <QApplication>
#include <QEvent>

PaineisDaJanela::PaineisDaJanela(const QList<QWidget *> &paineis, QObject *parent)
    : QObject(parent)
    , m_paineis(paineis.begin(), paineis.end())
{
    qApp->installEventFilter(this);
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
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::InputMethod:
    case QEvent::Drop:
        m_comecou = true;
        qApp->removeEventFilter(this);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
