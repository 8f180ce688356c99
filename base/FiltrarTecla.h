#pragma once

#include <QString>

/**
 * The keystroke filter of every text field and combo box.
 *
 * @param keyAscii the typed character's code, 16 bits; becomes the result
 * @param numeric  numeric fields keep digits, "-" and the user's decimal separator; text fields drop the
 *                 apostrophe and every code below 30, Enter included
 * @return the code to keep, or 0 to drop the keystroke; copy, backspace, paste and cut (3, 8, 22, 24) always
 * pass
 */
quint16 FiltrarTecla(quint16 &keyAscii, bool numeric);

/// What is left of a text that arrives at once (an input method's composition) after each character is
/// filtered.
QString FiltrarTexto(const QString &texto, bool numeric);
