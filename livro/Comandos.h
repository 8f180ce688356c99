#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

class QIODevice;

/// The commands of the program `livro`, free of the process: arguments in, text out, a status back.
namespace Livro
{
/// Exit status: done, with or without warnings; nothing could be done, or the check found something; a wrong
/// command line.
constexpr int kFeito = 0;
constexpr int kFalhou = 1;
constexpr int kMauUso = 2;

/// What a command writes to and where it finds the rest of the house.
struct Ambiente {
    QIODevice &saida;
    QIODevice &erros;
    QString pastaDoPrograma; ///< of the executable
};

/**
 * Runs one command.
 * @param argumentos without the program's own name
 */
int Executar(const QStringList &argumentos, const Ambiente &ambiente);

/// The help as a whole, or of one command; "" when there is no such command.
QString Ajuda(const QString &comando = {});
} // namespace Livro
