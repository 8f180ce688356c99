#pragma once

#include <QByteArray>
#include <QString>

#include <array>

/**
 * Base64 after RFC 2045: the standard alphabet, lines of exactly 76 characters separated by CR LF, no line
 * break before the first or after the last line. Text and bytes are converted one character to one byte in
 * Windows-1252 (base/PaginaCodigo.h).
 *
 * The decoder is lenient on purpose: CR LF pairs and "=" are removed wherever they stand, and any other
 * character outside the alphabet counts as one of value 0, so that a damaged picture still decodes to some
 * bytes. Empty input is not supported by either direction: std::invalid_argument; callers test first.
 */
class Base64Class
{
public:
    Base64Class();

    QString EncodeString(const QString &Text) const;
    QString EncodeByteArray(const QByteArray &Data) const;
    QString DecodeToString(const QString &EncodedText) const;
    QByteArray DecodeToByteArray(const QString &EncodedText) const;

    /// The same bytes as EncodeByteArray(), without a detour over 16-bit text: for files of many megabytes.
    QByteArray Codificar(QByteArrayView bytes) const;
    /// The same bytes as DecodeToByteArray().
    QByteArray Decodificar(QByteArrayView texto) const;

private:
    std::array<unsigned char, 64> m_ida;
};

/// Base64Class::Decodificar() for a text that comes in pieces, of any size and cut anywhere.
class DecodificadorBase64
{
public:
    /// The bytes that the text so far completes.
    QByteArray Passar(QByteArrayView texto);
    /// The last bytes, one or two, that no full group of four holds.
    QByteArray Terminar();

private:
    quint32 m_grupo = 0; ///< values of a group that has begun
    int m_noGrupo = 0;
    bool m_cr = false; ///< a CR that is part of the text only if no LF follows
};

/// Base64Class::Codificar() for bytes that come in pieces, of any size.
class CodificadorBase64
{
public:
    /// Whole lines; the last one begun comes later. A line break stands before every line but the first.
    QByteArray Passar(QByteArrayView bytes);
    QByteArray Terminar();

private:
    QByteArray m_resto;
    bool m_comecou = false;
};
