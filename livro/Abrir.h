#pragma once

#include <QString>
#include <QStringList>

class QIODevice;

/// The two things that `livro abrir` does outside the terminal.
namespace Livro
{
/// Says it in a message box where a file was opened from the desktop; in a terminal it has been said already.
void AvisarNaTela(const QString &texto, const QStringList &linhas);

/**
 * Starts the program with the package and waits for its end: the package is a temporary file.
 * @param programa the executable; "" for the one beside this, or the installed one
 */
bool EntregarAoPrograma(const QString &pacote, const QString &programa, const QString &pastaDoPrograma, QIODevice &erros);
} // namespace Livro
