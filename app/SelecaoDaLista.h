#pragma once

#include "packages/Exportacao.h"

class QAbstractItemView;

/// The list's selected rows, in list order, as the package export wants them.
QList<ReceitaSelecionada> SelecaoDaLista(const QAbstractItemView &lstVwReceitas);
