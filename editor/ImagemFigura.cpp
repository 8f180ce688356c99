#include "editor/ImagemFigura.h"

#include <QPainter>

namespace
{
// Twice the frame's width at scale 2: sharp on every screen, and a camera's picture does not stay in memory.
constexpr int kMaiorLado = 1280;
} // namespace

ImagemFigura::ImagemFigura(QWidget *parent)
    : QLabel(parent)
{
    setObjectName("imgFigura");
    setAccessibleName("Imagem da Receita");
    setFrameShape(QFrame::StyledPanel);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
}

void ImagemFigura::Mostrar(const QImage &imagem)
{
    m_imagem = imagem;
    if (qMax(imagem.width(), imagem.height()) > kMaiorLado)
        m_imagem = imagem.scaled(kMaiorLado, kMaiorLado, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    m_ajustada = QPixmap();
    update();
}

void ImagemFigura::paintEvent(QPaintEvent *event)
{
    QLabel::paintEvent(event);
    if (m_imagem.isNull())
        return;
    const QRect area = contentsRect().adjusted(2, 2, -2, -2);
    const double escala = devicePixelRatioF();
    QSize tamanho = m_imagem.size() * escala;
    if (tamanho.width() > area.width() * escala || tamanho.height() > area.height() * escala)
        tamanho.scale(area.size() * escala, Qt::KeepAspectRatio);
    tamanho = tamanho.expandedTo({1, 1});
    if (m_ajustada.size() != tamanho) {
        m_ajustada =
            QPixmap::fromImage(m_imagem.scaled(tamanho, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    m_ajustada.setDevicePixelRatio(escala);
    const QSizeF mostrado = m_ajustada.deviceIndependentSize();
    QPainter painter(this);
    painter.drawPixmap(QPointF(area.x() + (area.width() - mostrado.width()) / 2,
                               area.y() + (area.height() - mostrado.height()) / 2),
                       m_ajustada);
}
