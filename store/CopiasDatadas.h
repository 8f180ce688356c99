#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

/// The copies of the book that a restore leaves beside it, "dadosr-AAAAMMDD-HHMMSS.lst".
namespace CopiasDatadas
{
QString Nome(const QDateTime &quando);
/// Those in `pasta`, in the order of their names.
QStringList Nomes(const QString &pasta);
/// Native path of the one with the latest date beside the book at this native path; "" when there is none.
QString MaisNova(const QString &livro);
/// How the cook gets the book back that lies in a copy.
QString ComoVoltar(const QString &copia);
} // namespace CopiasDatadas
