#pragma once

#include "store/Receita.h"

#include <optional>

class Banco;
class RecordSet;

/// The recipe of a record set's current row, its lines left out. Columns that were not asked for stay null.
Receita ReceitaDaLinha(const RecordSet &rs);
/// A recipe's lines, in their order. Throws ErroBanco.
QList<LinhaDaReceita> LerLinhas(const Banco &banco, qint64 lngReceita);
/// A recipe and its lines; none when the book has no such number. Throws ErroBanco.
std::optional<Receita> BuscarReceita(const Banco &banco, qint64 lngReceita);
/// The same, but a number that is not in the book is an ErroBanco.
Receita LerReceita(const Banco &banco, qint64 lngReceita);
