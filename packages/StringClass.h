#pragma once

#include <QString>
#include <QStringView>

/**
 * An append-only text builder: a buffer that grows by BufferSize() characters at a time, so that putting a
 * large text together costs one block copy per piece and few reallocations.
 */
class StringClass
{
public:
    /// Growth step in characters, 10000 at first.
    qint32 BufferSize() const { return m_BufferSize; }
    /// Takes effect at the next growth. A step below 1 would never grow: std::invalid_argument.
    void SetBufferSize(qint32 caracteres);

    QString Value() const & { return m_buffer.first(m_usado); }
    /// The content without a copy: `std::move(builder).Value()`; leaves the builder empty.
    QString Value() &&;
    /// Discards the content, then appends `texto`.
    void SetValue(QStringView texto);

    /// Throws std::overflow_error when the content would pass 2147483647 characters; it stays as it was.
    void Append(QStringView texto);

    /// Characters of content.
    qint32 Length() const { return m_usado; }
    /// Characters the buffer holds now, blanks behind the content included.
    qint32 Capacity() const { return static_cast<qint32>(m_buffer.size()); }

private:
    QString m_buffer; ///< characters past m_usado are blanks
    qint32 m_usado = 0;
    qint32 m_BufferSize = 10000;
};
