#pragma once

#include <QString>
#include <QStringView>

/// Without leading and trailing blanks (U+0020 only: tabs and line breaks are content).
QString Aparar(QStringView texto);

/// The number a text begins with ("3 colheres" is 3, "abc" is 0), read with "." as the decimal separator,
/// blanks skipped; never fails.
double Val(QStringView texto);

/// Removes every trailing CR LF pair, so that a text ending in empty lines ends with its last visible
/// character.
QString RemoveEnter(const QString &texto);

/// The text as it can be shown at once, however long it is: at most `maximo` characters, "..." behind what was
/// cut, and not more than a few marks on any letter (a font lays thousands of them out one upon the other).
QString ParaMostrar(const QString &texto, qsizetype maximo);

/// How often `procurado` occurs in `texto`, counted without overlap; 0 for an empty `procurado`.
int ContarOcorrencias(QStringView texto, QStringView procurado);

/// Line ends as the files and the database hold them: every lone CR or LF becomes CR LF.
QString ComCrLf(const QString &texto);
/// Line ends as Qt's editors hold them: CR LF and lone CR become LF.
QString ComLf(const QString &texto);

/// A value of one line: every control character (line breaks, tabs, 0x00 ... 0x1F and 0x7F) as one blank, so
/// that it can neither begin a new line where it is written nor hide anything.
QString SemControles(QString texto);
