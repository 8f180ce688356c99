#pragma once

#include <QtGlobal>

#include <functional>

class QIODevice;

/**
 * The container of packages/Recipiente.h for files too large to hold in memory: the same bytes and the same
 * error codes, but read, packed and written in slices of a quarter of a megabyte, so that memory stays flat
 * and the window lives on between two slices.
 */
namespace RecipienteEmFatias
{
constexpr int kInterrompido = 99; ///< beside the codes of packages/Recipiente.h

/// Called between slices; false stops the work with kInterrompido.
using Pausa = std::function<bool()>;

/// Packs `origem` from its start into `destino`, trailer included: byte for byte what one compress2 call at
/// level 9 gives. An empty source writes nothing and succeeds. `soma` receives the stream's Adler-32.
int Compactar(QIODevice &origem, QIODevice &destino, quint32 &soma, const Pausa &pausa);

/// Unpacks a container into `destino`: what was packed and one 0x00. An empty container writes nothing and
/// succeeds. On failure `destino` holds whatever had been unpacked so far.
int Descompactar(QIODevice &recipiente, QIODevice &destino, const Pausa &pausa);

/// Unpacks a container again and compares it with what Compactar() packed and with the `soma` it gave,
/// without writing; Z_DATA_ERROR when they differ. All bytes being compared, their sum is not worked out
/// anew, which halves the time.
int Conferir(QIODevice &recipiente, QIODevice &original, quint32 soma, const Pausa &pausa);
} // namespace RecipienteEmFatias
