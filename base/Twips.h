#pragma once

#include <QtGlobal>

/**
 * Measures on screen are twips: 15 of them are one device-independent pixel, always. Qt keeps the logical
 * resolution at 96 dpi and scales by itself, so the factor holds on any display.
 * Keep the twips as the value and convert at the edge; never read a measure back from pixels.
 */
constexpr int kTwipsPorPixel = 15;

/// Nearest whole pixel.
constexpr int TwipsParaPixels(int twips)
{
    return qRound(static_cast<double>(twips) / kTwipsPorPixel);
}

/// Millimetres on screen: 96 dpi over 25.4 mm per inch.
constexpr double kPixelsPorMilimetro = 96.0 / 25.4;
