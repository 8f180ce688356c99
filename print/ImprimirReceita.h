#pragma once

#include "print/ReceitaImpressa.h"

#include <optional>

class Banco;
class Figuras;
class Superficie;

/// Reads a recipe, its ingredient lines and its picture (a missing or unreadable one is no picture) as the
/// layout wants them; nothing when the book has no such recipe. Throws ErroBanco.
std::optional<ReceitaImpressa> CarregarReceitaImpressa(const Banco &banco, const Figuras &figuras,
                                                       qint64 lngReceita);

/**
 * The print procedure: draws one recipe from the top of the surface's current page, its pages numbered
 * from 1. It does not end the print job.
 *
 * @param site host name of the maker's site, for the footer
 * @return false when the book has no such recipe; nothing is drawn then
 * Throws ErroBanco, ErroImpressao.
 */
bool ImprimirReceita(Superficie &objPrint, qint64 lngReceita, const Banco &banco, const Figuras &figuras,
                     const QString &site);
