#pragma once

#include <QList>
#include <QString>

/// The numbers of chosen recipes in list order, each followed by a comma: "12,7,30,". Empty for none.
QString TextoSelecao(const QList<qint64> &receitas);
