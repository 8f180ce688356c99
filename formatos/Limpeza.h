#pragma once

#include <QString>
#include <QStringList>

/// From the texts of other programs to texts that the book can hold.
namespace Formatos
{
/// Entities ("&amp;aacute;" too: up to three times) become their characters; only those with a semicolon.
QString SemEntidades(const QString &texto);

/**
 * Entities decoded, HTML gone (br, p, li and their like begin a new line; script and style vanish with what
 * they hold; "<word>" that is no HTML stays), NFC, invisible characters gone, every kind of blank one blank,
 * control characters gone. Lines are trimmed and joined by LF; empty ones stay.
 *
 * @param texto of any origin and length
 */
QString Limpar(const QString &texto);
/// The same, line breaks as blanks: for fields of one line.
QString LimparLinha(const QString &texto);

/// Like Limpar() for text that is known to be none of HTML: the text of a parsed page.
QString LimparSemHtml(const QString &texto);

/**
 * Every character as one of Windows-1252: fractions spelled out, signs by their likes, letters without the
 * marks that the code page lacks, emoji dropped.
 *
 * @param perdidos counts the letters of which nothing was left: they are "?", a run of them one
 */
QString ParaWindows1252(const QString &texto, int &perdidos);

/// The same, and with the one-character fractions that Windows-1252 has (1/2, 1/4, 3/4) spelled out too.
QString FracoesPorExtenso(const QString &texto);

/// Markdown's marks gone from one line: emphasis, links, bullets; "# X" and "[X]" alone become "X:".
QString SemMarkdown(const QString &linha);

/// The lines of a text, trimmed, empty ones left out.
QStringList Linhas(const QString &texto);

/// A site's name up to the " - " or " | " of its slogan.
QString SemSlogan(QString texto);

/// Letters small, accents gone, blanks single: for comparing names and finding words.
QString Dobrar(QStringView texto);
} // namespace Formatos
