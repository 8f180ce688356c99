#pragma once

#include "news/PaginaLimpa.h"

#include <QByteArrayView>
#include <QUrl>

class PastaDaPagina;

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
