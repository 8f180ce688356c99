#include "app/Gradiente.h"

#include "base/Twips.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace
{
QColor Azul(double c)
{
    const int claro = std::min(qRound(c), 255);
    return {claro, claro, 255};
}
} // namespace

// A pixel row is fifteen twip rows drawn over each other: the one drawn last shows. The toolbar is drawn
// upwards, so that is the topmost of the fifteen; the title bar downwards, so there it is the lowest.
QColor CorDaBarra(int linha, int altura)
{
    const int y = linha * kTwipsPorPixel;
    return Azul(80 + 0.2 * (altura - y + 1));
}

QColor CorDoTitulo(int linha)
{
    const int y = linha * kTwipsPorPixel + kTwipsPorPixel - 1;
    return Azul(125 + 0.5 * (y + 1));
}

Faixa::Faixa(const QString &nome, Tipo tipo, int alturaTwips, QWidget *parent)
    : QWidget(parent)
    , m_tipo(tipo)
    , m_altura(alturaTwips)
{
    setObjectName(nome);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void Faixa::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    for (int linha = event->rect().top(); linha <= event->rect().bottom(); ++linha)
        painter.fillRect(0, linha, width(), 1,
                         m_tipo == Tipo::Barra ? CorDaBarra(linha, m_altura) : CorDoTitulo(linha));
}
