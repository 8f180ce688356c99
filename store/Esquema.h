#pragma once

#include <QByteArray>
#include <QList>

/**
 * The book's tables, and how they grew. A book carries the number of its version (`user_version`); the first
 * ones carry 0. A book of an older version is brought up step by step and stays readable and writable at
 * every stage; one of a newer version is not touched.
 */
namespace Esquema
{
constexpr int kVersao = 1;

/// The statements that make an empty book of a version, its number included.
QByteArray Livro(int versao = kVersao);
/// Tables and triggers alone, as of the first version, and what stands in `Livro` beside them: whoever fills
/// a new book with many rows runs the second when the rows are in.
QByteArray Tabelas();
QByteArray Restante();

/// The statements that lead from a version to the next, without the number. Each may run by itself, and
/// again: what a step that was cut off has made already stays.
QList<QByteArray> Passo(int deVersao);

/// What the index of names is ordered by, as an expression of the engine: a name without its Portuguese
/// accents, hyphens and apostrophes. It comes close to the book's order of texts; whoever walks the index
/// puts the rest right.
QByteArray ChaveDoNome();

constexpr auto kIndiceDaLista = "ListaPorNome";
constexpr auto kIndiceDosIngredientes = "IngredientesPorNome";
constexpr auto kIndiceDasUnidades = "IngredientesPorUnidade";
constexpr auto kIndiceDosTipos = "ReceitasPorTipo";
constexpr auto kIndiceDasOrigens = "ReceitasPorOrigem";
} // namespace Esquema
