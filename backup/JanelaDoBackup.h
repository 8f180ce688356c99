#pragma once

/// What a restore asks of the main window once the book has been replaced.
class JanelaDoBackup
{
public:
    virtual ~JanelaDoBackup() = default;

    /// Hides picLstReceitas, picDetReceita, picPesReceita and picTitulo; the user opens a view again.
    virtual void EsconderTelas() = 0;

    /// The book on disk is another one: whatever was read from it is stale, in other running copies too.
    virtual void LivroRestaurado() = 0;
};
