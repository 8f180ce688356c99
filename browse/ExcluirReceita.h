#pragma once

#include <QtGlobal>

class Banco;

/// Deletes a recipe: its picture file, then its lines, then its row, as three operations of their own.
/// A picture that is gone already is no failure. Throws ErroBanco.
void ExcluirReceita(const Banco &banco, qint64 lngReceita);
