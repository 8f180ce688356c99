#pragma once

#include <QtGlobal>

/**
 * The recipe editor, as browsing sees it. Implemented by the main window; tests hand in a recorder.
 */
class DetalheReceita
{
public:
    virtual ~DetalheReceita() = default;

    /// Fills the editor with a stored recipe. `BlnAbrir` true only fills it, for the card that is about to be
    /// shown; false then opens it for change.
    virtual void CarregarDetalheReceita(qint64 lngReceita, bool BlnAbrir) = 0;

    /// Fills the editor's combo boxes from the book: 0 all of them, 1 all but the recipe's type.
    virtual void CarregarValoresDetalheReceita(quint8 bytTipo) = 0;

    /// Clears the ingredient entry fields and forgets which line was being changed.
    virtual void EsquecerLinhaEmEdicao() = 0;
};
