#pragma once

#include "print/ErroImpressao.h"
#include "print/ImpressoraAtual.h"

#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <optional>

class Avisos;
class Banco;
class Figuras;
class Impressoras;
class PainelMensagem;

/**
 * The three ways to the printer. Each asks for the print options first, prints its recipes as one job and
 * reports success; a job that the print system refuses, or whose recipe is no longer in the book, ends in a
 * stop message instead.
 *
 * The printer chosen and its settings stay in force for the later jobs of the program's run. The routes throw
 * ErroBanco (nothing is printed then); call them under Protegido.
 */
class Impressao
{
public:
    /// All references outlive the object.
    /// @param site   the maker's site, scheme and host; the footer shows the host
    /// @param nomeDaReceita name of a recipe that was there when it was chosen; "" when nobody knows it
    /// @param janela the window that the options dialog belongs to
    Impressao(const Banco &banco, const Figuras &figuras, Avisos &avisos, PainelMensagem &painel,
              const Impressoras &impressoras, const QString &site,
              std::function<QString(qint64 lngReceita)> nomeDaReceita = {}, QWidget *janela = nullptr);

    /// Toolbar, on the list: the selected recipes in list order, one job. None: asks for a selection.
    void ImprimirSelecionadas(const QList<qint64> &receitas);
    /// Toolbar, on the card: the recipe on screen. 0 (nothing on screen, or not saved yet) is refused as on
    /// the search view.
    void ImprimirDaTela(qint64 lngReceita);
    /// Pop-up menu "&Imprimir Receita": the list's current item.
    void ImprimirDoMenu(qint64 lngReceita);
    /// Toolbar, on the search view: a refusal, no dialog.
    void RecusarNaPesquisa();

    /// List position of the printer chosen last; -1: the dialog was cancelled, or not opened yet.
    qint16 IndiceImpressora() const { return m_indice; }
    const std::optional<ImpressoraAtual> &Atual() const { return m_atual; }

private:
    /// Shows the options dialog; true when the user confirmed with a printer.
    bool EscolherImpressora();
    /// While the user has chosen no printer, or the chosen one is gone: the system's default as it stands
    /// now.
    void AtualizarAtual();
    ErroImpressao ReceitaSumida(qint64 lngReceita) const;
    /// Prints the recipes as one job and says how it went.
    /// @param textoDoPainel what the message panel shows meanwhile; empty: no panel
    void ImprimirTrabalho(const QList<qint64> &receitas, const QString &textoDoPainel);

    const Banco &m_banco;
    const Figuras &m_figuras;
    Avisos &m_avisos;
    PainelMensagem &m_painel;
    const Impressoras &m_impressoras;
    QString m_site;
    std::function<QString(qint64)> m_nomeDaReceita;
    QPointer<QWidget> m_janela;
    std::optional<ImpressoraAtual> m_atual;
    qint16 m_indice = -1;
    bool m_confirmada = false; ///< the user has chosen it; before, it is the system's default
};

/// "www.tamarel.example" of "https://www.tamarel.example".
QString HostDoSite(const QString &site);
