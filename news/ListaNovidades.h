#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/**
 * index.file: what the site offers, one entry per line, lines separated by CR LF. An entry is a path below
 * the site's folder; the text after its last "/" names the local file.
 *
 *     index.htm
 *     img/foto1.jpg       saved as foto1.jpg
 *     img/bnrtml1.png     a banner: fetched at every visit
 */
namespace ListaNovidades
{
/// Entries beyond this number are ignored.
constexpr int kMaximo = 200;

struct Entrada {
    QByteArray caminho; ///< as listed, to be appended to the site's folder
    QString nome;       ///< the local file's name, checked by NomeAceito()
};

/**
 * Reads the list. Entries whose name is not accepted are left out; so are blank lines.
 *
 * A text that begins with "<" is a page (what a hotel's log-in answers to every request) and lists nothing.
 * Lone CR or LF separate nothing: they are control characters, so their entry is left out.
 */
QList<Entrada> Ler(const QByteArray &bytes);

/// The text after the last "/", read as UTF-8 where it is that, else as Windows-1252.
QString NomeLocal(const QByteArray &caminho);

/**
 * Whether `nome` may become a file of the local folder, on this or any other system: no separator ("/", "\",
 * ":"), no wildcard or quote that Windows refuses, no control character, not empty, ".", ".." or ending in
 * "." or a blank, at most 100 characters and 200 bytes, no device name (CON, NUL, COM1 ...).
 */
bool NomeAceito(const QString &nome);

/// Whether the file is fetched at every visit: the page itself and the banners.
bool SempreBaixada(const QString &nome);

/// base + path, with the characters escaped that an address cannot hold; bytes above 127 go as they are
/// listed.
QString Endereco(const QString &base, const QByteArray &caminho);
} // namespace ListaNovidades
