#pragma once

#include <QString>

#include <string_view>

/**
 * Looks at a statement's shape before the engine sees it. The program's own statements are few; a value that
 * reaches one unescaped (a search, a package's name, a quantity) may spoil that statement, but must not make
 * another of it. Let through is:
 *
 * - one SELECT over one of the two tables, and inside it, at most, the one question that the search for an
 *   ingredient asks of the other table;
 * - an INSERT of one row given by values, an UPDATE and a DELETE of one table; none of them with a query
 *   inside.
 *
 * What stands in quotes is content and not looked at. Comments are refused: "5--" passes for a calorie
 * figure, and the engine would take the rest of the statement, its Where included, for a comment and change
 * every recipe.
 */
namespace Porteiro
{
/// What is wrong with the statement, for the last line of a message; empty when it may pass.
QString Recusa(std::string_view sql);
} // namespace Porteiro
