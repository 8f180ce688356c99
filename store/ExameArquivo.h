#pragma once

#include <QString>

/// What the first bytes of a file say about it.
enum class TipoArquivo {
    Ausente,  ///< there is none
    Vazio,    ///< no byte in it
    Livro,    ///< a book of this program
    LivroWal, ///< the same, left by another tool in the journal mode that keeps part of it in a second file
    Access,   ///< an Access database, as older copies of the program kept
    Cortado,  ///< a book of this program that has lost its end
    Futuro,   ///< a book of a newer version of this program
    Outro     ///< anything else, folders included
};

/**
 * Looks at the file's first bytes, in a few microseconds.
 *
 * @param caminho native path
 * @param erro    the system's message when the file exists but cannot be read (the answer is then Outro)
 * @param versao  the version of a book's schema
 */
TipoArquivo ExaminarArquivo(const QString &caminho, QString *erro = nullptr, int *versao = nullptr);
