#pragma once

#include "store/access/ArquivoJet.h"

#include <vector>

namespace Access
{
/**
 * A usage map: a set of pages, kept as bits in a record or on pages of their own.
 * @param ponteiro where the map's record lies
 * @return the pages of the set, ascending. One behind the file's end is an error, because the file was cut.
 */
std::vector<qint64> LerMapaDePaginas(const ArquivoJet &arquivo, quint32 ponteiro);

/// The file's free pages that lie inside the file, ascending.
std::vector<qint64> LerPaginasLivres(const ArquivoJet &arquivo);
} // namespace Access
