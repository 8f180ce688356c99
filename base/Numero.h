#pragma once

#include <QString>

class QVariant;

/// A number as the program writes it: up to 15 significant digits, no grouping, the user's decimal separator.
QString TextoDoNumero(double numero);
QString TextoDoNumero(qint64 numero);

/// Any database value as text: NULL gives "", numbers as TextoDoNumero() writes them, text unchanged.
QString TextoDoValor(const QVariant &valor);

/// Greatest whole number not above `numero` (truncates towards minus infinity).
double Int(double numero);

/// Reads a number as the user types it (decimal separator of the locale, no grouping); `ok` tells whether it
/// is one.
double NumeroDoTexto(const QString &texto, bool *ok);
