#pragma once

#include "store/access/Linha.h"

#include <functional>

namespace Access
{
/**
 * Visits the rows of a table as the engine means them: deleted rows and left-over copies are passed by, rows
 * that moved are found where they live now. They come in the file's order, which is no order.
 *
 * @return how many rows there were; the caller compares with the definition's number, which holds for the
 *         user's tables but not for the engine's own
 */
quint32 VisitarLinhas(const ArquivoJet &arquivo, const DefinicaoTabela &tabela,
                      const std::function<void(const Linha &)> &visita);

/// The pages that hold the table's rows.
std::vector<qint64> PaginasDaTabela(const ArquivoJet &arquivo, const DefinicaoTabela &tabela);
} // namespace Access
