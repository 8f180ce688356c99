#pragma once

#include <QString>

#include <libxml/tree.h>

/**
 * The address of a frameset's main frame: the view shows one document, and a page of frames would be blank.
 *
 * A frame whose name says so (main, principal, conteudo, corpo ...) is taken; else the one with the greatest
 * share of the frameset, "*" counting as all the rest. Nested framesets are entered up to a few levels.
 * @return the frame's `src`, empty when the page has no frames
 */
QString QuadroPrincipal(const xmlNode *raiz);
