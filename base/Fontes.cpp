#include "base/Fontes.h"

#include <QFontDatabase>

#include <utility>

void InstalarFontes()
{
    static bool instaladas = false;
    if (std::exchange(instaladas, true))
        return;
    // In a build without the resources (tests of single controls) the machine's own font of that name serves.
    QFontDatabase::addApplicationFont(":/fontes/DejaVuSans.ttf");
    QFontDatabase::addApplicationFont(":/fontes/DejaVuSans-Bold.ttf");
    QFont::insertSubstitution("Verdana", "DejaVu Sans");
}

QFont FonteVerdana(double pontos, bool negrito)
{
    QFont fonte("Verdana");
    fonte.setPointSizeF(pontos);
    fonte.setBold(negrito);
    return fonte;
}
