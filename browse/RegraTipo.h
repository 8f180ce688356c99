#pragma once

#include <QString>

/// Whether a recipe of this `Tipo` (as the database's text, "" for NULL) may be altered: recipes of a package
/// with 1 or more may only be viewed, printed and deleted. E-mail and packages have other thresholds.
bool PodeAlterar(const QString &tipo);
