#pragma once

#include <QString>

class QLineEdit;

/// `texto` with every run of line breaks and tabs as one blank: what a field of one line can hold.
QString EmUmaLinha(const QString &texto);

/// Keeps pasted line breaks and tabs out of a field of one line: they turn into blanks as they arrive, so
/// that a name copied from two lines does not carry an invisible break into the book.
void ManterEmUmaLinha(QLineEdit &campo);

/// Sets a stored text that may be longer than what the user is let to type, whole: loading and saving a
/// recipe from elsewhere must not shorten it.
void DefinirTextoInteiro(QLineEdit &campo, const QString &texto, int limite);
