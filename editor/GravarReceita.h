#pragma once

#include "editor/EstadoDaTela.h"
#include "store/Comandos.h"

class Banco;
class Figuras;
class Relogio;

/// What a save writes of the controls; trimming and quoting are the statements' business.
Comandos::Receita ReceitaDaTela(const EstadoDaTela &tela);

/**
 * Writes the recipe on screen to the book: a new one when `txtNroReceita` is empty, else a change of that
 * one.
 *
 * A save is a series of separate statements without a transaction: the recipe's row, the picture, the removal
 * of the old lines, one insert a line. One that fails ends the save with ErroBanco, and what ran before it
 * stays in the book. Picture files are copied and removed with every error ignored. The registration date is
 * set once, for a new recipe.
 *
 * @param tela  already validated: name, method and at least one line
 * @return the recipe's number
 */
qint64 GravarReceita(const Banco &banco, const Figuras &figuras, const Relogio &relogio,
                     const EstadoDaTela &tela);
