#pragma once

#include <QString>
#include <QStringList>

/// What the desktop's own database says about who opens what: the lists that its settings write
/// (mimeapps.list) and those that installed programs bring along (mimeinfo.cache).
namespace ProgramasDoDesktop
{
/// The programs that open files of this kind ("message/rfc822"), the preferred one first, as native paths of
/// their desktop entries; those that are no longer installed are left out.
QStringList Para(const QString &tipo);
/// Whether a desktop entry is a web browser's.
bool ENavegador(const QString &entrada);
} // namespace ProgramasDoDesktop
