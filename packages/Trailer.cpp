#include "packages/Trailer.h"

#include <algorithm>

namespace
{
constexpr qsizetype kNulosIniciais = 5;
constexpr qint64 kMaiorDesdobramento = 1032; ///< deflate at its best: 258 bytes out of two bits
} // namespace

QByteArray Recipiente::Trailer(qint64 n)
{
    QByteArray trailer(kTrailer, '\0');
    const QByteArray digitos = QByteArray::number(n);
    std::copy(digitos.begin(), digitos.end(), trailer.begin() + kNulosIniciais);
    return trailer;
}

std::optional<qint64> Recipiente::LerTrailer(QByteArrayView trailer)
{
    if (trailer.size() != kTrailer)
        return std::nullopt;
    const QByteArrayView nulos = trailer.first(kNulosIniciais);
    if (!std::all_of(nulos.begin(), nulos.end(), [](char c) { return c == '\0'; }))
        return std::nullopt;

    qint64 n = 0;
    qsizetype i = kNulosIniciais;
    for (; i < kTrailer && trailer[i] != '\0'; ++i) {
        if (trailer[i] < '0' || trailer[i] > '9')
            return std::nullopt;
        n = n * 10 + (trailer[i] - '0'); // twelve digits at most
    }
    return i > kNulosIniciais ? std::optional(n) : std::nullopt;
}

bool Recipiente::Cabe(qint64 n, qint64 m)
{
    return n / kMaiorDesdobramento <= m;
}
