#pragma once

#include "base/Erro.h"

/// The database refused a statement or could not be opened.
class ErroBanco : public Erro
{
public:
    using Erro::Erro;
};
