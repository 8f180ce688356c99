#pragma once

#include <QString>

/// What a database's schema says of where it comes from.
struct ExameEsquema {
    enum class Origem {
        Nosso,       ///< all of it is what some version of this program makes
        Mexido,      ///< a book of this program with something more in it: a trigger, a view, a table
        Outro,       ///< a database of another program, or one that cannot be read
        Desconhecido ///< it cannot be looked at now: another program is at it, or the disk fails
    };
    Origem origem = Origem::Desconhecido;
    QString estranho; ///< Mexido: the name of what does not belong there
};

/**
 * Compares what a database holds with what the program makes, in every version of its schema and at every
 * stage between two. A book from elsewhere with a trigger of its own eats what is saved, one with a view
 * under a table's name never comes to an end.
 *
 * The file is opened for reading only and nothing in its schema runs.
 * @param caminho  native path of a file whose first bytes are a book's (store/ExameArquivo.h)
 * @param semTocar read the file alone, without the second file of write-ahead mode: nothing is made or
 * changed beside it
 */
ExameEsquema ExaminarEsquema(const QString &caminho, bool semTocar);
