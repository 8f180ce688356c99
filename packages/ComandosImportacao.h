#pragma once

#include "packages/Pacote.h"

#include <QDate>
#include <QString>

/**
 * The statements that bring a package's recipe into the book. Their texts are promises, kept to the
 * character.
 *
 * Texts have their apostrophes doubled and their commas brought back. Kept on purpose: TIPO stands unquoted
 * and as it is in the package; PORCOES, CALORIAS and TIPO_CALORIAS stand quoted but not escaped; empty
 * numbers are 0, other empty values NULL, an empty method an empty text.
 */
namespace ComandosImportacao
{
QString SqlInserirReceita(const Pacote::Registro &receita, const QDate &hoje);
QString SqlInserirIngrediente(qint64 lngReceita, const Pacote::Registro &item);
} // namespace ComandosImportacao
