#pragma once

#include "base/Erro.h"

/// Nothing, or not everything, came out of the printer. The text is fit for the user.
class ErroImpressao : public Erro
{
public:
    using Erro::Erro;
};
