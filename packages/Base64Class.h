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
    std::array<unsigned char, 256> m_volta;
};
