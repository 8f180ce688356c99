#include "base/BotaoImagem.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>

namespace
{
constexpr int kMargem = 3; // room for the focus ring around the image
}

BotaoImagem::BotaoImagem(const QString &nome, const QString &dica, const QLabel *normal, const QLabel *sobre,
                         QWidget *parent)
    : QAbstractButton(parent)
    , m_normal(normal)
    , m_sobre(sobre)
{
    setObjectName(nome);
    setToolTip(dica);
    setAccessibleName(dica);
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
    setCursor(Qt::PointingHandCursor);
    resize(sizeHint());
}

QSize BotaoImagem::sizeHint() const
{
    const QSize figura = m_normal->pixmap().deviceIndependentSize().toSize();
    return figura + QSize(2 * kMargem, 2 * kMargem);
}

void BotaoImagem::Acender(bool aceso)
{
    if (aceso == m_aceso)
        return;
    m_aceso = aceso;
    update();
}

QPixmap BotaoImagem::Figura() const
{
    return (m_aceso && isEnabled() ? m_sobre : m_normal)->pixmap();
}

void BotaoImagem::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(0.35);
    const QPixmap figura = Figura();
    const QSize tamanho = figura.deviceIndependentSize().toSize();
    QPoint canto((width() - tamanho.width()) / 2, (height() - tamanho.height()) / 2);
    if (isDown())
        canto += QPoint(1, 1); // a pressed button sinks by a pixel
    painter.drawPixmap(canto, figura);
    if (hasFocus()) {
        const QRectF anel = QRectF(rect()).adjusted(1, 1, -1, -1);
        painter.setPen(QPen(Qt::white, 2));
        painter.drawRoundedRect(anel, 6, 6);
        painter.setPen(QPen(QColor(0x12, 0x24, 0x5c), 1, Qt::DotLine));
        painter.drawRoundedRect(anel, 6, 6);
    }
}

void BotaoImagem::mouseMoveEvent(QMouseEvent *event)
{
    QAbstractButton::mouseMoveEvent(event);
    event->accept(); // the toolbar below takes a move that reaches it as one beside the buttons
    emit apontado();
}

void BotaoImagem::enterEvent(QEnterEvent *event)
{
    QAbstractButton::enterEvent(event);
    emit apontado();
}

void BotaoImagem::leaveEvent(QEvent *event)
{
    QAbstractButton::leaveEvent(event);
    emit deixado();
}

void BotaoImagem::focusInEvent(QFocusEvent *event)
{
    QAbstractButton::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        emit apontado();
}

void BotaoImagem::focusOutEvent(QFocusEvent *event)
{
    QAbstractButton::focusOutEvent(event);
    if (m_aceso && !underMouse())
        emit deixado();
}

void BotaoImagem::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}
