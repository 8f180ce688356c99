#pragma once

#include <QByteArray>
#include <QString>

/**
 * The e-mail message that carries a package: a ready MIME file (RFC 2045, multipart/mixed) for the user's
 * mail program, with an HTML part that names the recipes and the package as its attachment.
 *
 * Its bytes are fixed, quirks included: boundaries are constants, the date is empty, "</TBODY></TABLE>" has
 * no opening table, and raw Windows-1252 letters stand beside quoted-printable escapes. Mail programs read it
 * so.
 *
 * @param nomes  "<LI>" and the name of each recipe, one after another, written as they are
 * @param pacote the package file's bytes; empty gives an empty attachment
 * @param site   the maker's site, scheme and host with no trailing slash: "https://www.tamarel.example"
 */
QByteArray MensagemPacote(const QString &nomes, const QByteArray &pacote, const QString &site);

/// The same around an attachment that is not held in memory: what comes before its base64 and behind it.
QByteArray InicioDaMensagemPacote(const QString &nomes, const QString &site);
QByteArray FimDaMensagemPacote();
