#pragma once

#include <QJsonValue>
#include <QString>
#include <QStringView>

#include <optional>

class QJsonObject;

/// JSON as pages and programs write it, and ways to ask it that forgive spelling.
namespace Formatos
{
/// Objects and lists within each other, at most.
constexpr int kMaiorProfundidadeJson = 64;

/**
 * The value that a text begins with. Forgives what pages do: comment and CDATA wrappers, text behind the
 * end, commas too many, raw control characters, wrong escapes.
 *
 * @return nothing when even so it is no JSON, or nested deeper than 64
 */
std::optional<QJsonValue> LerJson(const QString &texto);

/// The value of a key, its letter case and underscores aside ("org_url" is "orgURL").
QJsonValue Campo(const QJsonObject &objeto, const char *nome);
/// A text, a number as text; of a list its first; of an object its name, text, @value or url. Else "".
QString TextoDe(const QJsonValue &valor);
/// The texts of a list, or the one text; empty ones left out.
QStringList TextosDe(const QJsonValue &valor);
/// A number, also one written as a text; 0 when it is none.
double NumeroDe(const QJsonValue &valor);
} // namespace Formatos
