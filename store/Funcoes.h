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

/// True for a function that a statement, or the book's own triggers, may call.
bool Permitida(const char *nome);
} // namespace Funcoes
