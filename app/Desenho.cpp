#include "app/Desenho.h"

#include <QPainter>
#include <QSvgRenderer>

QPixmap Desenho(const QString &arquivo, const QSize &lugar, qreal escala)
{
    QPixmap figura(lugar * escala);
    figura.setDevicePixelRatio(escala);
    figura.fill(Qt::transparent);
    QPainter painter(&figura);
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer desenho(arquivo);
    desenho.setAspectRatioMode(Qt::KeepAspectRatio);
    desenho.render(&painter, QRectF(QPointF(0, 0), QSizeF(lugar)));
    return figura;
}
