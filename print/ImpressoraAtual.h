#pragma once

#include <QString>

/**
 * The program's current printer and its settings, in the print options dialog's own numbers.
 *
 * A plain value: it lives for the program's run, a job makes a fresh QPrinter from it, and a setting that
 * some printer rejects cannot spoil it.
 */
struct ImpressoraAtual {
    QString DeviceName;  ///< "" while no printer is known; the settings are then those the dialog starts with
    int Copies = 1;      ///< signed 16-bit
    int Orientation = 1; ///< 1 portrait, 2 landscape
    int PrintQuality = -2; ///< -1 draft, -2 low, -3 medium, -4 high; positive: dots an inch
    int ColorMode = 1;     ///< 1 monochrome, 2 colour

    bool operator==(const ImpressoraAtual &) const = default;
};
