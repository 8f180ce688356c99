#pragma once

#include <QPixmap>
#include <QString>

/**
 * An SVG of the program's own resources as a pixmap. Directly by the renderer: going through QIcon would load
 * the image plugins before the window is first painted.
 *
 * @param lugar size in device-independent pixels; the drawing is fitted into it and keeps its proportions
 * @param escala device pixels per device-independent one
 */
QPixmap Desenho(const QString &arquivo, const QSize &lugar, qreal escala);
