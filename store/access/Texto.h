#pragma once

#include "store/access/Trecho.h"

#include <QString>

namespace Access
{
/// One byte a character in code page 1252.
QString TextoDaPagina1252(const Trecho &bytes);
/// Plain UTF-16; half a surrogate pair becomes U+FFFD.
QString TextoUtf16(const Trecho &bytes);
/// Text of Jet 4: compressed when it begins with FF FE, else UTF-16.
QString TextoJet4(const Trecho &bytes);
} // namespace Access
