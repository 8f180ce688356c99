#pragma once

#include <QString>

/// How the old book is kept beside the new one. Paths are native. Failures throw Erro and leave the files of
/// before.
namespace TrocaDeArquivo
{
/// Removes what conversions that were cut off left, of this version and of earlier ones. Only while no other
/// process can be at it.
void RemoverSobras(const QString &caminho);

/**
 * Gives the file a second name beside it: "dadosr-access-original.lst" for "dadosr.lst", with a number when
 * that is taken by another file. The bytes are not copied where the file system can do without.
 * @param novo set to whether the name was made now; false when a crash had left it there
 * @return the name's path
 */
QString Guardar(const QString &caminho, bool &novo);
/// The same by copying, for file systems without links.
QString GuardarPorCopia(const QString &caminho);
} // namespace TrocaDeArquivo
