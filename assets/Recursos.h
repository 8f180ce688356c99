#pragma once

/**
 * Makes the pictures, the fonts and Qt's Brazilian Portuguese texts readable under ":/".
 *
 * Call it once at the start of every program that shows them: without the call the linker leaves the
 * resources of a static library out. Calling it again does no harm. It registers neither the fonts nor the
 * translation.
 *
 * What it offers: :/botoes/<button>Norm.svg and <button>Over.svg for the eleven toolbar buttons (drawn for
 * 48 x 48), :/marcador_foto.svg (16 x 16), :/sem_figura.jpg (440 x 360), :/logo_tamarel.svg and
 * :/logo_vilanu.svg (39 x 30), :/cozinhario.svg (the program's icon, square), :/fontes/DejaVuSans.ttf and
 * DejaVuSans-Bold.ttf with their licence, and :/traducoes/qtbase_pt_BR.qm.
 */
void IniciarRecursos();
