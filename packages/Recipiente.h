#pragma once

#include <QByteArray>
#include <QString>

/**
 * The compressed container of packages and backups: a zlib stream (RFC 1950, level 9) and a trailer of 17
 * bytes: five 0x00, the uncompressed length in decimal ASCII padded with 0x00 to 11 characters, one more 0x00.
 *
 * Reading is bounded: a length field that lies never makes more memory be asked for than the stream can fill
 * (deflate unfolds at most about 1032 times).
 */
namespace Recipiente
{
/// Error codes beside zlib's own (negative) ones.
constexpr int kSucesso = 0;
constexpr int kTrailerInvalido = -1;
constexpr int kArquivoNaoEncontrado = 53;
constexpr int kArquivoIlegivel = 75;     ///< the source exists but cannot be read
constexpr int kDestinoIndisponivel = 76; ///< the destination cannot be written: no space, no permission
constexpr int kSemMemoria = 7;

/// Packs `bytes`; empty input leaves `saida` as it is and succeeds. The bytes are those of one compress2 call.
int Compactar(const QByteArray &bytes, QByteArray &saida, int nivel = 9);

/// Unpacks a whole container, trailer included. The result is one byte longer than what was packed: a 0x00
/// that readers ignore and unpacked files keep. Empty input succeeds with no output.
int Descompactar(const QByteArray &recipiente, QByteArray &saida);

/// File into file. The destination is written beside itself and renamed, so that a failure leaves an earlier
/// file of that name as it was; with `sobrescrever` false an existing destination is a failure.
/// `erro` receives the code; the result is whether it was 0.
bool CompactarArquivo(const QString &origem, const QString &destino, int nivel, int &erro, bool sobrescrever);
bool DescompactarArquivo(const QString &origem, const QString &destino, int &erro, bool sobrescrever);
} // namespace Recipiente
