#pragma once

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

    /// Whether the user has typed, clicked or scrolled anything since the window opened.
    virtual bool UsuarioComecou() const = 0;
};
