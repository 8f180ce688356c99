#pragma once

#include <QString>

/// Where the book lies: the folder of the program (a portable book: the program copied into any folder); the
/// user's data folder for the program where it is installed for everybody or the folder cannot be written.
/// The folder exists afterwards, when it could be made. Native path, no trailing separator.
QString PastaDoLivro(const QString &pastaDoPrograma);
