#pragma once

#include <functional>

/**
 * The main window's working panels (picDetReceita, picLstReceitas, picPesReceita), as the news see them:
 * something that makes room and comes back.
 */
class PaineisDeTrabalho
{
public:
    virtual ~PaineisDeTrabalho() = default;

    /// Remembers which panels are visible and where the keyboard's focus is, and hides them.
    virtual void Esconder() = 0;

    /// Shows again what the last Esconder() hid, and only that, exactly as it was. Once: a second call does
    /// nothing.
    virtual void Restaurar() = 0;

    /// Whether the user has begun to work since the window opened: a key, a button, a row, a turn of the
    /// wheel. A click on what only carries the window (title, background, tip) is none.
    virtual bool UsuarioComecou() const = 0;

    /// Calls `tarefa` from the event loop as soon as the user begins; not at all when she has begun already.
    virtual void AoComecar(std::function<void()> tarefa) = 0;

    /// Whether nothing else runs that the news would disturb: no operation, no dialog.
    virtual bool Livre() const = 0;
};
