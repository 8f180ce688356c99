#include "store/access/Trecho.h"

#include "store/access/ErroAccess.h"

#include <QtEndian>

#include <bit>

using Access::Trecho;

namespace
{
template <typename T>
T Ler(const Trecho &trecho, qint64 lugar)
{
    return qFromLittleEndian<T>(trecho.Parte(lugar, sizeof(T)).Bytes().data());
}
} // namespace

Trecho Trecho::Parte(qint64 lugar, qint64 tamanho) const
{
    if (lugar < 0 || tamanho < 0 || lugar > Tamanho() || tamanho > Tamanho() - lugar)
        Danificado("um registro acaba antes do que diz");
    return Trecho(m_bytes.sliced(lugar, tamanho));
}

Trecho Trecho::Desde(qint64 lugar) const
{
    return Parte(lugar, Tamanho() - lugar);
}

quint8 Trecho::U8(qint64 lugar) const
{
    return Ler<quint8>(*this, lugar);
}

quint16 Trecho::U16(qint64 lugar) const
{
    return Ler<quint16>(*this, lugar);
}

quint32 Trecho::U32(qint64 lugar) const
{
    return Ler<quint32>(*this, lugar);
}

qint64 Trecho::I64(qint64 lugar) const
{
    return Ler<qint64>(*this, lugar);
}

float Trecho::F32(qint64 lugar) const
{
    return std::bit_cast<float>(Ler<quint32>(*this, lugar));
}

double Trecho::F64(qint64 lugar) const
{
    return std::bit_cast<double>(Ler<quint64>(*this, lugar));
}
