#pragma once

#include "base/Erro.h"

/// The database refused a statement or could not be opened.
class ErroBanco : public Erro
{
public:
    using Erro::Erro;
};

/// Another program was writing into the book for longer than could be waited.
class ErroOcupado : public ErroBanco
{
public:
    using ErroBanco::ErroBanco;
};
