#pragma once

#include <QString>

/**
 * The part of CSS that the news page may use: colours, text and spacing, within sensible sizes. What loads
 * something (url, @import), places or hides, or is larger than sensible is left out.
 */
namespace Estilo
{
/// Rules beyond this number are left out: each is compared with each element.
constexpr int kMaximoRegras = 60;

/// Cleans the value of a style attribute: "color:#b03030;font-size:14px".
QString LimparDeclaracoes(const QString &declaracoes);

/// Cleans a style sheet. The comment marks that hide it from very old browsers are taken away, because they
/// would hide it from ours.
QString LimparFolha(const QString &folha);

/// The colour as "#rrggbb", empty when it is none.
QString LimparCor(const QString &cor);

/// Of a list of font families the first that the program knows, empty when there is none. Each further family
/// costs a search among the machine's fonts.
QString LimparFonte(const QString &familias);
} // namespace Estilo
