#pragma once

#include "base/Operacao.h"
#include "base/Painel.h"

#include <QTimer>

#include <memory>
#include <optional>

class Abridor;
class Avisos;
class Novidades;
class PaineisDeTrabalho;
class QLabel;
class Telas;
class VisorNovidades;

/**
 * The news page (picWeb): downloads the maker's page and shows it in place of the working panels.
 *
 * The click hides the working panels, rolls this panel open and downloads under the eyes of the user. The
 * automatic attempt, half a second after the window opened or as soon as nothing else runs, asks the server
 * unseen. Once the server has given its list the same is seen as after a click; a server that cannot be
 * reached shows the page from earlier, or nothing at all: so the offline start stays on the list without a
 * flicker. A user who has begun to work meanwhile keeps her view, and the page waits for her click. When no
 * page comes of a visit, the panels come back as they were.
 *
 * While a download runs all events run, so the panel may be hidden, clicked again or even destroyed. Another
 * view abandons the download; a click during the automatic attempt turns it into the user's own.
 */
class PainelNovidades : public Painel
{
    Q_OBJECT

public:
    static constexpr int kAltura = 6930; ///< twips, rolled open

    /// The doors and panels must outlive this panel. Nothing happens before LigarTimer() or a click.
    PainelNovidades(std::shared_ptr<Novidades> novidades, Avisos &avisos, Abridor &abridor, Telas &telas,
                    PaineisDeTrabalho &paineis, QWidget *parent = nullptr);
    ~PainelNovidades() override;

    /// Starts the one-shot timer; call it once, when the window is first shown. It does nothing after a click
    /// of the user: their own visit makes the automatic one needless.
    void LigarTimer();

    /// Hides the panel and the view in it, for the working view that opens. A download is abandoned.
    void Esconder();

public slots:
    /// Shows the news page: the toolbar's button.
    void imgInternet_Click();
    /// The automatic first showing.
    void TimerWeb_Timer();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void Visitar();
    bool AbrirPainel();
    bool AbrirSemPedido();
    void Ceder();
    void MostrarPagina();
    void SemPagina();
    void PosicionarVisor();
    bool PedidoDoUsuario() const;

    std::shared_ptr<Novidades> m_novidades; ///< shared with the calls that are under way
    Avisos &m_avisos;
    Telas &m_telas;
    PaineisDeTrabalho &m_paineis;
    QLabel *m_lblMsgInternet;
    VisorNovidades *m_WbBsr1;
    QTimer *m_TimerWeb;
    bool m_pelaTimer = false; ///< imgInternet_Click() is called by the timer
    bool m_ocupado = false;   ///< a visit is under way
    /// The part of a visit that is seen is an operation; before, the program does whatever comes.
    std::optional<Operacao> m_vista;
    bool m_outraVez = false; ///< the visit under way was abandoned and the user has asked again
};
