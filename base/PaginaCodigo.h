#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

/**
 * The system's 8-bit code page, Windows-1252, one character to one byte.
 *
 * The five bytes that the code page leaves undefined (81 8D 8F 90 9D) stand for U+0081 ... U+009D, so that
 * any byte sequence survives DeAnsi() followed by ParaAnsi() unchanged.
 */
namespace PaginaCodigo
{
/// Text to bytes; a character outside the code page becomes "?". A surrogate pair gives one "?".
QByteArray ParaAnsi(QStringView texto);
/// Bytes to text. Never fails.
QString DeAnsi(QByteArrayView bytes);
/// The byte of one code point, or -1 when the code page does not hold it.
int ByteDe(char32_t caractere);
} // namespace PaginaCodigo
