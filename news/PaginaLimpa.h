#pragma once

#include <QColor>
#include <QString>

/// A page that is safe to hand to a rich text view.
struct PaginaLimpa {
    QString html; ///< known tags and attributes only; pictures stand under PastaDaPagina's keys
    QColor fundo = Qt::white;
    QColor texto = Qt::black;
    bool vazia = true; ///< nothing to see in it
};
