#pragma once

#include <QString>

namespace Disco
{
/// Puts one file or folder in the place of another. Between file systems a file is copied beside its target
/// first. A target that is a link is replaced itself, unless `seguirLink`.
bool RenomearSobre(const QString &origem, const QString &destino, bool seguirLink = false);
} // namespace Disco
