#pragma once

#include <QByteArrayView>
#include <QtGlobal>

namespace Access
{
/**
 * Some bytes of the file, read only within their bounds: every access outside throws ErroAccess. All numbers are
 * little-endian and unaligned. Does not own the bytes; whoever hands a Trecho out says what keeps them alive.
 */
class Trecho
{
public:
    Trecho() = default;
    explicit Trecho(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }

    qint64 Tamanho() const { return m_bytes.size(); }
    QByteArrayView Bytes() const { return m_bytes; }
    /// The `tamanho` bytes from `lugar` on.
    Trecho Parte(qint64 lugar, qint64 tamanho) const;
    /// From `lugar` to the end.
    Trecho Desde(qint64 lugar) const;

    quint8 U8(qint64 lugar) const;
    quint16 U16(qint64 lugar) const;
    qint16 I16(qint64 lugar) const { return static_cast<qint16>(U16(lugar)); }
    quint32 U32(qint64 lugar) const;
    qint32 I32(qint64 lugar) const { return static_cast<qint32>(U32(lugar)); }
    qint64 I64(qint64 lugar) const;
    float F32(qint64 lugar) const;
    double F64(qint64 lugar) const;

private:
    QByteArrayView m_bytes;
};
} // namespace Access
