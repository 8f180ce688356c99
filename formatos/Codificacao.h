#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace Formatos
{
/**
 * The text in the bytes of a file from elsewhere. A byte order mark decides; else valid UTF-8 is UTF-8,
 * whatever the file claims (pages and XML lie); else the declared set, ISO-8859-1 read as Windows-1252; else
 * the one of Windows-1252 and the DOS pages 850 and 860 in which the text looks most like Portuguese.
 *
 * @param declarado the set that the file or its page names, "" when none
 * @param forcado   a set that the user insists on; it goes before everything
 */
QString TextoDosBytes(QByteArrayView bytes, const QByteArray &declarado = {}, const QByteArray &forcado = {});

/// The bytes of a text in one of these sets; what it lacks is "?" and counted in `perdidos`.
QByteArray BytesDoTexto(const QString &texto, const QByteArray &conjunto, int &perdidos);

/// Whether TextoDosBytes() knows a set of characters of this name.
bool PaginaConhecida(const QByteArray &nome);
} // namespace Formatos
