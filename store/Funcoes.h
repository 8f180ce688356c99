#pragma once

struct sqlite3;

/**
 * What the statements need beside the bare engine: the collation PORTUGUES for =, DISTINCT and ORDER BY,
 * `like` by the book's rules, `ucase` and `CDATE`.
 */
namespace Funcoes
{
/// Registers them on an open connection; returns the engine's code, 0 for success.
int Registrar(sqlite3 *conexao);

/// Functions that a statement may call. None of them makes a text longer.
bool DosComandos(const char *nome);
/// Functions that the book's own triggers and indexes call.
bool DoLivro(const char *nome);
} // namespace Funcoes
