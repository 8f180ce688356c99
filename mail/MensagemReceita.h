#pragma once

#include "store/ReceitaNaTela.h"

#include <QByteArray>

#include <optional>

/**
 * One recipe as a complete MIME message: an HTML body and, with a picture, the picture as an inline JPEG.
 *
 * The message is a fixed form, kept to the byte. The body is declared quoted-printable, but only the fixed
 * texts carry escapes: values reach it as they stand, neither quoted-printable nor HTML escaped, accented
 * letters as single Windows-1252 bytes and any character outside that code page as "?". Only control
 * characters become blanks: none can begin a line of the message.
 */
namespace MensagemReceita
{
/**
 * @param receita values of the controls; blanks around them are dropped here
 * @param figura  the picture file's bytes; no value when the recipe has no picture. Empty bytes (a file that
 *                is missing or empty) still make a picture part, with no base64 lines in it
 * @param site    the maker's site, scheme and host, no trailing slash
 * @return the message, its rows ending in CR LF, and the one CR LF more that ends the file
 */
QByteArray Montar(const ReceitaNaTela &receita, const std::optional<QByteArray> &figura, const QString &site);
} // namespace MensagemReceita
