#pragma once

#include <QImage>
#include <QPixmap>
#include <QString>

/**
 * An SVG of the program's own resources as a pixmap. What the first look of the window shows was drawn when
 * the program was built, for screens of scale 1 and 2; everything else is drawn now.
 *
 * @param lugar size in device-independent pixels; the drawing is fitted into it and keeps its proportions
 * @param escala device pixels per device-independent one
 */
QPixmap Desenho(const QString &arquivo, const QSize &lugar, qreal escala);

/// The drawing itself. Directly by the renderer: going through QIcon would load the image plugins before the
/// window is first painted.
QImage Desenhar(const QString &arquivo, const QSize &lugar, qreal escala);

/// The name under which a drawing of that size in device pixels is kept.
QString ChaveDoDesenho(const QString &arquivo, const QSize &pixels);
