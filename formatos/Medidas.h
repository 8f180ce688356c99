#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// Times, servings and calories as other programs write them.
namespace Formatos
{
/// Minutes of a text: ISO 8601 read leniently, a bare number, "1h30", "1 hora e meia". Nothing when it is not
/// understood; 0 for an empty text.
std::optional<double> MinutosDoTexto(const QString &texto);
/// "45 minutos", "1 hora e 30 minutos", "10 h 45 min" when that would pass 20 characters; "" for 0.
QString TextoDosMinutos(double minutos);
/// A time as the house writes it; a text that is not understood stays as it is, zero is "".
QString TempoDaCasa(const QString &texto);

/// Servings and what the text says beyond the number.
struct Rendimento {
    QString porcoes; ///< a number with comma, or "" when unknown
    QString texto;   ///< for the remarks; "" when the number says it all
};
/// @param elementos the one text, or the list a page gives
Rendimento RendimentoDe(const QStringList &elementos);

struct Calorias {
    QString numero; ///< with comma, at most two decimals; "" when the text has none
    QString tipo;   ///< "R" or "P"
    bool soNumero = true; ///< the text says nothing more
};
/// @param tipo the basis when the text does not say it
Calorias CaloriasDe(const QString &texto, const QString &tipo = "P");

/// A number with comma and at most two decimals, "" for 0 and for what is none.
QString NumeroDaCasa(double numero);
} // namespace Formatos
