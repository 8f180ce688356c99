#include "browse/CanvasCartao.h"

#include "base/Twips.h"

#include <QPaintEvent>
#include <QPainter>

CanvasCartao::CanvasCartao(QWidget *parent)
    : QWidget(parent)
{
    setObjectName("picViewDados");
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
}

void CanvasCartao::DefinirDesenho(ListaDesenho desenho)
{
    m_desenho = std::move(desenho);
    m_linhas = m_desenho.Linhas();
    QStringList textos;
    for (const ListaDesenho::Linha &linha : m_linhas)
        textos += linha.texto;
    m_texto = textos.join(u'\n');
    update();
}

void CanvasCartao::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), Qt::white); // paper, whatever the desktop's colours
    const QRectF visivel(QPointF(event->rect().topLeft()) / kPixelsPorMilimetro,
                         QSizeF(event->rect().size()) / kPixelsPorMilimetro);
    m_desenho.Pintar(painter, visivel, kPixelsPorMilimetro);
}
