#pragma once

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
/// level 9 gives. An empty source writes nothing and succeeds.
int Compactar(QIODevice &origem, QIODevice &destino, const Pausa &pausa);

/// Unpacks a container into `destino`: what was packed and one 0x00. An empty container writes nothing and
/// succeeds. On failure `destino` holds whatever had been unpacked so far.
int Descompactar(QIODevice &recipiente, QIODevice &destino, const Pausa &pausa);

/// Unpacks a container and compares it with what was packed, without writing; Z_DATA_ERROR when they differ.
int Conferir(QIODevice &recipiente, QIODevice &original, const Pausa &pausa);
} // namespace RecipienteEmFatias
