#pragma once

#include "packages/Trailer.h"

#include <QtGlobal>

#include <functional>

class QIODevice;

/**
 * The container of packages/Recipiente.h, file by file: the same bytes and the same error codes, but read,
 * packed and written in slices of a quarter of a megabyte, so that memory stays flat and the window lives on
 * between two slices. Packages and backups pass here.
 */
namespace RecipienteEmFatias
{
constexpr int kInterrompido = 99; ///< beside the codes of packages/Recipiente.h

/// Called between slices; false stops the work with kInterrompido.
using Pausa = std::function<bool()>;

/// Packs `origem` from its start into `destino`, trailer included: byte for byte what one compress2 call of
/// that level gives. An empty source writes nothing and succeeds. `soma` receives the stream's Adler-32.
int Compactar(QIODevice &origem, QIODevice &destino, quint32 &soma, const Pausa &pausa, int nivel = 9);

/// Unpacks a container into `destino`: what was packed and one 0x00. An empty container writes nothing and
/// succeeds. One that says it unfolds to more than `maximo` is Recipiente::kGrandeDemais, with nothing
/// written. On another failure `destino` holds whatever had been unpacked so far.
int Descompactar(QIODevice &recipiente, QIODevice &destino, const Pausa &pausa,
                 qint64 maximo = Recipiente::kMaiorComprimento);

/// Unpacks a container again and compares it with what Compactar() packed and with the `soma` it gave,
/// without writing; Z_DATA_ERROR when they differ. All bytes being compared, their sum is not worked out
/// anew, which halves the time.
int Conferir(QIODevice &recipiente, QIODevice &original, quint32 soma, const Pausa &pausa);
} // namespace RecipienteEmFatias
