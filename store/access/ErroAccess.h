#pragma once

#include "base/Erro.h"

namespace Access
{
/**
 * An Access file cannot be read, or not completely. The text is a whole sentence in Portuguese that says why,
 * without naming the file.
 */
class ErroAccess : public Erro
{
public:
    using Erro::Erro;
};

/// Throws ErroAccess: the file is damaged or was cut. `detalhe` says what was found, e.g. "página 12 sem
/// dono".
[[noreturn]] void Danificado(const QString &detalhe);
} // namespace Access
