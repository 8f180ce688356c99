#pragma once

#include "packages/Pacote.h"

/// The recipe as every reader gives it and every writer takes it: the package's own value, so that nothing is
/// converted on the way between the book, a package and a foreign file. The one place that says so.
namespace Formatos
{
using Receita = Pacote::Receita;
using Linha = Pacote::Ingrediente;
} // namespace Formatos
