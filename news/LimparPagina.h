#pragma once

#include "news/PastaDaPagina.h"

#include <QByteArrayView>
#include <QColor>
#include <QString>
#include <QUrl>

/**
 * What a news page may hold. Beyond these numbers the page is cut, never refused: what was read until then is
 * shown. They are chosen so that the worst page within them appears in well under two seconds.
 */
namespace LimitesPagina
{
constexpr qsizetype kBytes = 512 * 1024; ///< of the file; the rest is not read
constexpr int kElementos = 4000;         ///< tags in the cleaned page
constexpr int kTexto = 60'000;           ///< characters
constexpr int kProfundidade = 40;        ///< tags within tags; deeper ones lose the tag, not the text
constexpr int kTabelas = 3;              ///< tables within tables: the layout's time doubles with each level
constexpr int kCelulas = 1000;           ///< rows times columns of all tables, spans included
constexpr int kColunas = 40;             ///< of one table
constexpr int kFiguras = 100;            ///< places where a picture stands
constexpr int kLadoDaFigura = 2000;      ///< width and height at which a picture is drawn
constexpr int kAcentos = 3;              ///< accents over one letter
constexpr int kEscritas = 2;             ///< scripts of the world besides Latin, Greek and Cyrillic
constexpr int kQuadros = 3;              ///< framesets that lead to each other
} // namespace LimitesPagina

/// A page that is safe to hand to a rich text view.
struct PaginaLimpa {
    QString html; ///< known tags and attributes only; pictures stand under PastaDaPagina's keys
    QColor fundo = Qt::white;
    QColor texto = Qt::black;
    bool vazia = true; ///< nothing to see in it
};

/**
 * Makes a page harmless and bounded.
 *
 * Known tags and attributes are copied, unknown tags vanish and their content stays; scripts, forms' fields,
 * embedded objects and inner frames vanish whole. A frameset gives the page of its main frame. Pictures come
 * from the page's own folder, by the last part of their name, or not at all (their alternative text is
 * shown); so nothing in the result leads to the network or to another folder. Links lead to http, https and
 * mailto addresses or to a place in the page; relative ones are completed with `base`.
 *
 * @param bytes the page, in UTF-8 or Windows-1252
 * @param pasta where pictures and frames are found
 * @param base  address of the folder the page came from
 */
PaginaLimpa LimparPagina(QByteArrayView bytes, PastaDaPagina &pasta, const QUrl &base);

/// The link as it may be opened: http, https or mailto (address, subject and body only), otherwise empty.
QUrl LinkSeguro(const QString &href, const QUrl &base);
