#pragma once

#include <QString>

struct LivroAccess;

/**
 * Writes a whole book of today into an empty file, in one transaction, numbers and counters as in `livro`:
 * the next number is greater than any that was ever given. Then reads back how many rows there are.
 *
 * There is no journal beside the file: after a failure it is worthless. Its bytes have been handed to the
 * system but not forced to the disk.
 * @param caminho native path of an empty file
 * Throws ErroBanco.
 */
void GravarNovoLivro(const QString &caminho, const LivroAccess &livro);
