#pragma once

#include "store/access/ArquivoJet.h"

#include <vector>

namespace Access
{
/// The definition pages of the book's two tables.
struct Catalogo {
    qint64 receitas = 0;
    qint64 ingredientes = 0;
};

/// Finds the two tables by name without regard to case. One that is missing, that is there twice, or whose
/// rows lie in another file throws ErroAccess.
Catalogo LerCatalogo(const ArquivoJet &arquivo);
} // namespace Access
