#pragma once

#include "store/ReceitaNaTela.h"
#include "store/Comandos.h"

class Banco;
class Figuras;
class Relogio;

/// What a save writes of the controls; trimming and quoting are the statements' business.
Comandos::Receita ReceitaDaTela(const ReceitaNaTela &tela);

/**
 * Writes the recipe on screen to the book: a new one when `txtNroReceita` is empty, else a change of that
 * one. A recipe that was deleted meanwhile is written anew, with a new number.
 *
 * Before anything is written the numbers are looked at and every statement is prepared: what is wrong with
 * the values is a RecusaDeGravacao, and book and pictures are as they were.
 *
 * A save is a series of separate statements without a transaction: the recipe's row, the picture, the removal
 * of the old lines, one insert a line. One that fails (the disk is full) ends the save with ErroBanco, and
 * what ran before it stays in the book. The same save repeated then finishes it. Picture files are copied and
 * removed with every error ignored, and only once the recipe's row is written. The registration date is set
 * once, for a new recipe.
 *
 * @param tela  already validated: name, method and at least one line. `txtNroReceita` becomes the recipe's
 *              number as soon as it has one, also when the save fails later
 * @return the recipe's number
 */
qint64 GravarReceita(const Banco &banco, const Figuras &figuras, const Relogio &relogio, ReceitaNaTela &tela);
