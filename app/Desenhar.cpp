#include "app/Desenho.h"

#include <QFileInfo>
#include <QPainter>
#include <QSvgRenderer>

QImage Desenhar(const QString &arquivo, const QSize &lugar, qreal escala)
{
    QImage figura(lugar * escala, QImage::Format_ARGB32_Premultiplied);
    figura.setDevicePixelRatio(escala);
    figura.fill(Qt::transparent);
    QPainter painter(&figura);
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer desenho(arquivo);
    desenho.setAspectRatioMode(Qt::KeepAspectRatio);
    desenho.render(&painter, QRectF(QPointF(0, 0), QSizeF(lugar)));
    return figura;
}

QString ChaveDoDesenho(const QString &arquivo, const QSize &pixels)
{
    return QString("%1 %2x%3").arg(QFileInfo(arquivo).fileName()).arg(pixels.width()).arg(pixels.height());
}
