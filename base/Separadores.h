#pragma once

#include <QChar>

class QLocale;

/// The user's decimal and thousands separators, worked out once at start-up and the same program-wide.
struct Separadores {
    QChar decimal = u',';
    QChar milhar = u'.';

    /// The second character of one half written in `localidade`, and of 1000 written with grouping.
    static Separadores De(const QLocale &localidade);
    static const Separadores &Atuais();
    static void Definir(const Separadores &separadores);
};
