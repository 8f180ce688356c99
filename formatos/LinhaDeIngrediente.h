#pragma once

#include "formatos/Receita.h"

#include <QString>

/// One ingredient text and its three parts, both ways.
namespace Formatos
{
/**
 * Splits "2 xícaras (chá) de farinha" into quantity, unit and ingredient, by the words of palavras.txt.
 *
 * @param texto one line, clean (Limpar) and of Windows-1252
 * @return a text that fits no rule is the ingredient as a whole; a heading ends with ":" and is only an
 * ingredient. An empty line gives an empty ingredient.
 */
Linha SepararLinha(const QString &texto);

/// A quantity that a program gives as a part of its own, in the house's way ("2-3" is "2 a 3"); what is no
/// number stays as it is.
QString QuantidadeDada(const QString &texto);

/// 0.5 as "1/2", 1.33 as "1 1/3", 0.4 as "0,4", 0 as "".
QString QuantidadeDoNumero(double numero);

/// The number by which singular or plural is chosen: the last one of a quantity; 0 when there is none.
double UltimoNumero(const QString &quantidade);
/// The first number of a quantity, and 0 when there is none.
double PrimeiroNumero(const QString &quantidade);

/// The bullet, check mark, trailing ";" or "," and final "." of a line gone.
QString LimparItem(const QString &texto);
/// "## X" and "[X]" as "X:"; nothing changed when it is no heading.
QString TituloDaLinha(const QString &texto);
/// Whether a line is a heading: neither quantity nor unit, the ingredient ending in ":".
bool ETitulo(const Linha &linha);

/// The line as people write it: "2 xícaras de farinha", "sal a gosto".
QString TextoDaLinha(const Linha &linha);
/// Whether a quantity is one of the words that stand behind the ingredient ("a gosto").
bool EQuantidadeLivre(const QString &quantidade);
} // namespace Formatos
