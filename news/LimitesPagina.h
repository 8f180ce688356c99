#pragma once

#include <QtGlobal>

/**
 * What a news page may hold. Beyond these numbers the page is cut, never refused: what was read until then is
 * shown. They are chosen so that the worst page within them appears in well under two seconds.
 */
namespace LimitesPagina
{
constexpr qsizetype kBytes = 512 * 1024; ///< of the file; the rest is not read
constexpr int kElementos = 4000;         ///< tags in the cleaned page
constexpr int kTexto = 60'000;           ///< characters
constexpr int kProfundidade = 40;        ///< tags within tags; deeper ones lose the tag, not the text
constexpr int kTabelas = 3;              ///< tables within tables: the layout's time doubles with each level
constexpr int kCelulas = 1000;           ///< rows times columns of all tables, spans included
constexpr int kColunas = 40;             ///< of one table
constexpr int kFiguras = 100;            ///< places where a picture stands
constexpr int kLadoDaFigura = 2000;      ///< width and height at which a picture is drawn
constexpr int kAcentos = 3;              ///< accents over one letter
constexpr int kEscritas = 2;             ///< scripts of the world besides Latin, Greek and Cyrillic
constexpr int kQuadros = 3;              ///< framesets that lead to each other
} // namespace LimitesPagina
