#pragma once

#include "store/Receita.h"

/// The recipe as every reader gives it and every writer takes it: the house's own value, so that nothing is converted
/// on the way between the book, a package and a foreign file. The one place that says so.
namespace Formatos
{
using Receita = ::Receita;
using Linha = ::LinhaDaReceita;
} // namespace Formatos
