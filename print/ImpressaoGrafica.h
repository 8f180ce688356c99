#pragma once

#include <QString>

class Superficie;

namespace ImpressaoGrafica
{
/**
 * Draws a text inside a rectangle, broken into lines at word boundaries and fully justified; the last line
 * and lines that end at a CR are left-aligned. Linear in the length of the text. Serves the paper and the
 * card.
 *
 * @param objPrint surface; its font and colour are used as they stand. On return CurrentY is the top of the
 *                 last line drawn and CurrentX lies just behind its last character
 * @param top      y of the first line's top (mm)
 * @param left     x where every line starts (mm)
 * @param right    x that no line may pass (mm)
 * @param bottom   y below which no further line may start (mm)
 * @param TextoImpressao text to draw; on return the part not yet drawn
 * @return true when the whole text was drawn, false when drawing stopped at `bottom`: the caller starts a new
 *         page and calls again with the shortened text. An empty text draws nothing and gives true
 */
bool ImprimirTexto(Superficie &objPrint, double top, double left, double right, double bottom,
                   QString &TextoImpressao);
} // namespace ImpressaoGrafica
