#pragma once

#include <QString>
#include <QStringList>

/**
 * The package path that the program was started with: the command line's arguments (the program's own name
 * left out) as one text, without any double quote. "" when there are none.
 */
QString CaminhoDaLinhaDeComando(const QStringList &argumentos);
