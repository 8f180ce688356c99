#include "app/SelecaoDaLista.h"

#include <QAbstractItemView>
#include <QItemSelectionModel>

#include <algorithm>

QList<ReceitaSelecionada> SelecaoDaLista(const QAbstractItemView &lstVwReceitas)
{
    QModelIndexList linhas = lstVwReceitas.selectionModel()->selectedRows();
    std::sort(linhas.begin(), linhas.end());
    QList<ReceitaSelecionada> selecionadas;
    for (const QModelIndex &linha : std::as_const(linhas))
        selecionadas += {linha.data(Qt::UserRole).toString().mid(1).toLongLong(),
                         linha.data(Qt::UserRole + 1).toString()};
    return selecionadas;
}
