#pragma once

#include <QString>

/**
 * What comes along with the program: the guide and the example package. Both lie in the installation's data
 * folder (`../share/cozinhario` as seen from the program, in the build tree too) or, for a program that was
 * copied into a folder, beside it. `pastaDoPrograma` is the native path of the program's folder; so are the
 * results, which are empty where there is no such file.
 */
namespace Acompanha
{
/// First page of the cook's guide, HTML: "guia/index.html".
QString Guia(const QString &pastaDoPrograma);
/// The package of example recipes: "exemplos/PacoteReceita.lr$".
QString Exemplos(const QString &pastaDoPrograma);
} // namespace Acompanha
