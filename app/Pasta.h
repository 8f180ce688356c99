#pragma once

#include <QString>

/// What PastaDoLivro() decides.
struct LugarDoLivro {
    QString pasta;  ///< native path, no trailing separator; it exists, when it could be made
    QString recado; ///< what the cook is to be told, once; usually nothing
};

/**
 * Where the book lies.
 *
 * A book beside the program is the book, also where nothing can be written. An installed program (told by its
 * entry in the desktop's menus, "../share/applications" seen from it, under whatever prefix) keeps each
 * user's book in the user's data folder; a book that an earlier version made beside it is taken there, with
 * its pictures. Otherwise the book is made beside the program, and in the data folder only where that cannot
 * be done.
 */
LugarDoLivro PastaDoLivro(const QString &pastaDoPrograma);
