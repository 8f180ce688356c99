#pragma once

#include <QStringView>

#include <string>
#include <string_view>

/**
 * The book's order of texts: case ignored, accents kept but weighed after the letters, hyphen and apostrophe
 * nearly ignored ("Pão da casa" before "Pão d'água", "Carnes" before "Carne-seca"), as old books sort
 * Portuguese names. A fixed table over the Windows-1252 letters; other characters follow by code point.
 * The same on every machine and for ever, so that an index may be built on it.
 */
namespace Ordem
{
/// Less than, equal to or greater than 0. Texts that differ only in case are equal; accents make a
/// difference.
int Comparar(std::string_view utf8a, std::string_view utf8b);
int Comparar(QStringView a, QStringView b);
/// A key for sorting many texts: keys compare byte by byte as Comparar() compares their texts.
std::string Chave(std::string_view utf8);
} // namespace Ordem
