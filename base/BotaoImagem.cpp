#include "base/BotaoImagem.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>

BotaoImagem::BotaoImagem(const QString &nome, const QString &dica, QWidget *parent)
    : QAbstractButton(parent)
    , m_normal(":/botoes/" + nome + "Norm.svg")
    , m_sobre(":/botoes/" + nome + "Over.svg")
{
    setObjectName(nome);
    setToolTip(dica);
    setAccessibleName(dica);
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
    setCursor(Qt::PointingHandCursor);
}

void BotaoImagem::Acender(bool aceso)
{
    if (aceso == m_aceso)
        return;
    m_aceso = aceso;
    update();
}

void BotaoImagem::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(0.35);
    const QRect area = rect().adjusted(2, 2, -2, -2);
    // A pressed button sinks by a pixel.
    const QRect onde = isDown() ? area.translated(1, 1) : area;
    (m_aceso && isEnabled() ? m_sobre : m_normal).paint(&painter, onde);
    if (hasFocus()) {
        painter.setOpacity(1);
        painter.setPen(QPen(QColor(0xff, 0xff, 0xff), 1.5));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 6, 6);
        painter.setPen(QPen(QColor(0x12, 0x24, 0x5c), 1, Qt::DotLine));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 6, 6);
    }
}

void BotaoImagem::mouseMoveEvent(QMouseEvent *event)
{
    QAbstractButton::mouseMoveEvent(event);
    emit apontado();
}

void BotaoImagem::enterEvent(QEnterEvent *event)
{
    QAbstractButton::enterEvent(event);
    emit apontado();
}

void BotaoImagem::focusInEvent(QFocusEvent *event)
{
    QAbstractButton::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        emit apontado();
}

void BotaoImagem::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}
