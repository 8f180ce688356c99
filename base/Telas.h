#pragma once

#include <QString>

/**
 * The main window's view switch, as the panels see it: they ask for views by name and never reach into the
 * window. Implemented by frmPrincipal; tests hand in a recorder.
 */
class Telas
{
public:
    virtual ~Telas() = default;

    /// Opens a view: "ListaReceitas", "DetalheReceitas" (new recipe), "NovaReceita" (change of a recipe, the
    /// card included) or "PesquisaReceitas". Any other request does nothing.
    virtual void AbrirTela(const QString &request) = 0;

    /// Closes the view on top of the history.
    virtual void FecharTela() = 0;

    /// Closes the editor's view, on top or not: its recipe was saved or deleted, and no "Voltar" leads back
    /// to it.
    virtual void FecharDetalhe() { FecharTela(); }

    /// The key of the view on screen: "Listagem", "Detalhe", "Pesquisa", or "" when none is open.
    virtual QString TelaAtual() const = 0;

    /// Gives every toolbar button its normal look.
    virtual void RestaurarBotoes() = 0;

    /// Full height of the list and the editor in twips: 6540, or 3780 while the search view is open.
    virtual int AlturaDeTrabalho() const = 0;
};
