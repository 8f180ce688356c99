#pragma once

#include <QSize>

/// The factor by which a window of that size shrinks to fit into the room; 1 when it fits as it is.
double FatorQueCabe(const QSize &janela, const QSize &lugar);

/**
 * Makes everything smaller when a window of that size would be larger than the screen leaves room for: a
 * window of fixed shape whose lower edge is out of reach is of no use. Call it once, before the first window.
 *
 * @param janela in device-independent pixels
 */
void CaberNaTela(const QSize &janela);
