#pragma once

#include <QString>
#include <QStringList>

/// One line of a script: a verb and its arguments. Words are separated by blanks; "quoted words" may hold
/// blanks, \n, \" and \\; what follows a # at the start of a line is a comment.
struct Comando {
    int linha = 0;
    QString verbo;
    QStringList argumentos;

    QString Argumento(int i) const { return argumentos.value(i); }
};

/// Splits a script into its commands, blank lines and comments left out.
QList<Comando> LerRoteiro(const QString &texto);
