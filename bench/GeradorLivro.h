#pragma once

#include <QString>

#include <cstdint>

/**
 * Makes a book of invented recipes: the same numbers and seed give the same book on every machine.
 *
 * Every recipe has 8 to 12 lines, about 1 kB of method and one of 20 types; 5 % have a picture file. The
 * distinct ingredients grow with the book: about 3 000 for 1 000 recipes, 190 000 for 250 000. The rows are
 * written by the bare engine in one transaction that does not wait for the disk, so nothing about this
 * program's speed is a figure of the store.
 *
 * @param pasta    native path of an existing folder; gets `dadosr.lst`, which must not be there yet, and
 * "Fotos"
 * @param receitas how many, 0 for an empty book
 * Throws std::runtime_error with the engine's or the system's message.
 */
void GerarLivro(const QString &pasta, int receitas, std::uint32_t semente = 2005);
