#pragma once

#include <QRegion>

class QWidget;

/**
 * The shape of the main window: its own border and caption, if any, and the rectangles of its top-level
 * controls, shown or not. What lies between them is transparent to the mouse and the screen. Pixels, relative
 * to the client area.
 */
QRegion RegiaoDosPaineis(const QWidget &janela);

/// Cuts the window to that shape; a minimised window keeps the shape it has. Wayland does not cut windows by
/// a mask, so there the space between the panels is left transparent instead.
void AjustarRegiao(QWidget &janela);
