#pragma once

#include "packages/TextoDoPacote.h"

#include <QDate>
#include <QString>

/**
 * The statements that bring a package's recipe into the book. Their texts are promises, kept to the
 * character.
 *
 * Texts have their apostrophes doubled and their commas brought back; control characters in values of one line
 * become blanks. Kept on purpose: TIPO stands unquoted
 * and as it is in the package; PORCOES, CALORIAS and TIPO_CALORIAS stand quoted but not escaped; empty
 * numbers are 0, other empty values NULL, an empty method an empty text.
 */
namespace ComandosImportacao
{
/**
 * "" when the values that reach the statement unescaped are what they claim to be; otherwise, for the user,
 * the field that is not. Such a value could only make the statement fail or, made with intent, say something
 * else: a second recipe that nobody chose. So no statement is made of it.
 */
QString CampoInvalido(const Pacote::Registro &receita);

QString SqlInserirReceita(const Pacote::Registro &receita, const QDate &hoje);
QString SqlInserirIngrediente(qint64 lngReceita, const Pacote::Registro &item);
} // namespace ComandosImportacao
