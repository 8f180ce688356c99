#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

/**
 * The 17 bytes behind the stream of a container (packages/Recipiente.h), and the codes of whoever reads or writes one.
 */
namespace Recipiente
{
/// Error codes beside zlib's own (negative) ones.
constexpr int kSucesso = 0;
constexpr int kTrailerInvalido = -1; ///< no trailer, or a length that cannot be true
constexpr int kGrandeDemais = 6;     ///< the container says it unfolds to more than the caller accepts
constexpr int kArquivoNaoEncontrado = 53;
constexpr int kArquivoJaExiste = 58;     ///< the destination exists and may not be replaced
constexpr int kArquivoIlegivel = 75;     ///< the source exists but cannot be read
constexpr int kDestinoIndisponivel = 76; ///< the destination cannot be written: no space, no permission
constexpr int kSemMemoria = 7;

/// The longest length the trailer can hold: 11 digits. What files unfold to is bounded by the disk alone.
constexpr qint64 kMaiorComprimento = 99'999'999'999;

constexpr qsizetype kTrailer = 17; ///< its bytes
/// What stands behind a stream that unfolds to n bytes.
QByteArray Trailer(qint64 n);
/// The length that a trailer states; nothing when it is no trailer.
std::optional<qint64> LerTrailer(QByteArrayView trailer);
/// Whether a stream of m bytes can unfold to n.
bool Cabe(qint64 n, qint64 m);
} // namespace Recipiente
