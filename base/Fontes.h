#pragma once

#include <QFont>

/// Loads the bundled font and lets "Verdana" mean it, so that line breaks do not depend on what a machine has
/// installed (the two differ by less than one percent in width). Call once, after the application object
/// exists.
void InstalarFontes();

/// "Verdana" at the size in points.
QFont FonteVerdana(double pontos, bool negrito = false);
