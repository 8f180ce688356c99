#pragma once

#include "store/ReceitaNaTela.h"

class Banco;

/// A stored recipe as the editor's controls show it. The picture's tag is left to whoever loads the file.
struct ReceitaLida {
    ReceitaNaTela tela;
    QString figura; ///< name of the picture file in the row, "" for none
};

/**
 * Reads a recipe and its lines. Servings and calories stored as 0 show empty; of the calorie options none is
 * chosen for NULL, the serving's for "P", the recipe's for anything else.
 *
 * Everything is read before anything is returned, so a caller's controls change as a whole or not at all.
 * Throws ErroBanco, also for a number that does not exist.
 */
ReceitaLida LerParaATela(const Banco &banco, qint64 lngReceita);
