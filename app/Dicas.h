#pragma once

#include <QString>
#include <QStringList>

class QLabel;
class QWidget;
class Sorteio;

/// The thirteen tips, in order; the ninth (index 8) ends in the address of the maker's or distributor's site.
QStringList Dicas(const QString &site);

/// The tip a draw in [0, 1) gives: index = whole part of the draw times 12, so that the last tip never shows.
/// Kept on purpose.
int IndiceDaDica(double sorteio);

/// The parts of the tip area, in a container whose coordinates are the form's.
struct AreaDaDica {
    QLabel *lblDica = nullptr;
    QWidget *picTamarel = nullptr;    ///< maker's logo
    QWidget *lblUrl = nullptr;        ///< maker's address
    QWidget *picVilanuLogo = nullptr; ///< distributor's logo
};

/**
 * Lays out the tip area and shows one tip.
 *
 * @param bytTipo 0: the maker's variant, the one in use; 1: the distributor's, with its logo and address
 */
void MostrarDica(quint8 bytTipo, const AreaDaDica &area, Sorteio &sorteio, const QString &siteDoFabricante,
                 const QString &siteDoDistribuidor);
