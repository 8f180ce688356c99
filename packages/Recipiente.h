#pragma once

#include "packages/Trailer.h"

#include <QByteArray>
#include <QString>

#include <functional>

class QIODevice;

/**
 * The compressed container of packages and backups: a zlib stream (RFC 1950, level 9) and a trailer of 17
 * bytes: five 0x00, the uncompressed length in decimal ASCII padded with 0x00 to 11 characters, one more
 * 0x00.
 *
 * Reading is bounded: a length field that lies never makes more memory or disk be asked for than the stream
 * can fill (deflate unfolds at most 1032 times), nor more than the caller's `maximo`. Within that bound the
 * length field is only the room for the output, as for zlib's uncompress: too small a room is an error, a
 * larger one is filled up with 0x00, and bytes between the stream's end and the trailer are ignored.
 */
namespace Recipiente
{
/// What Descompactar() unfolds in memory at most, unless told otherwise.
constexpr qint64 kMaiorEmMemoria = qint64(1) << 30;

/// Room reserved for the stream of n bytes: n + n / 1000 + 15, rounded to the nearest (ties to even).
qint64 Capacidade(qint64 n);

/// Packs `bytes`; empty input leaves `saida` as it is and succeeds. The bytes are those of one compress2
/// call.
int Compactar(const QByteArray &bytes, QByteArray &saida, int nivel = 9);

/// Unpacks a whole container, trailer included. The result is one byte longer than what was packed: a 0x00
/// that readers ignore and unpacked files keep. Empty input succeeds with no output; so does a failure.
int Descompactar(const QByteArray &recipiente, QByteArray &saida, qint64 maximo = kMaiorEmMemoria);

/// File into file, in slices and with little memory. The destination is written beside itself and renamed, so
/// that a failure leaves an earlier file of that name as it was; with `sobrescrever` false an existing
/// destination is a failure. `erro` receives the code; the result is whether it was 0. An empty source gives
/// an empty destination. `pausa` is called between slices; false stops the work
/// (RecipienteEmFatias::kInterrompido). The destination never allows more than the file `modelo` does.
bool CompactarArquivo(const QString &origem, const QString &destino, int nivel, int &erro, bool sobrescrever,
                      const std::function<bool()> &pausa = {}, const QString &modelo = {});
bool DescompactarArquivo(const QString &origem, const QString &destino, int &erro, bool sobrescrever,
                         qint64 maximo = kMaiorComprimento);
/// The same into a device that is open for writing, whose content is anything after a failure; the result is
/// the code.
int DescompactarPara(const QString &origem, QIODevice &destino, qint64 maximo,
                     const std::function<bool()> &pausa = {});
} // namespace Recipiente
