#include "news/PainelNovidades.h"

#include "news/Novidades.h"
#include "news/PaineisDeTrabalho.h"
#include "news/VisorNovidades.h"

#include "base/Avisos.h"
#include "base/EventosPendentes.h"
#include "base/Protegido.h"
#include "base/Telas.h"
#include "base/Twips.h"

#include <QLabel>
#include <QPointer>

#include <utility>

namespace
{
constexpr int kEsperaDaTimer = 500;
/// How soon the automatic attempt looks again whether something else still runs.
constexpr int kNovaTentativa = 100;
constexpr int kBordaDoVisor = -30; ///< twips: the view's own edge lies outside the panel
constexpr int kFolgaDoVisor = 10;  ///< twips that the view is lower than the panel
} // namespace

PainelNovidades::PainelNovidades(std::shared_ptr<Novidades> novidades, Avisos &avisos, Abridor &abridor,
                                 Telas &telas, PaineisDeTrabalho &paineis, QWidget *parent)
    : Painel("picWeb", parent)
    , m_novidades(std::move(novidades))
    , m_avisos(avisos)
    , m_telas(telas)
    , m_paineis(paineis)
    , m_lblMsgInternet(new QLabel(this))
    , m_WbBsr1(new VisorNovidades(abridor, this))
    , m_TimerWeb(new QTimer(this))
{
    setAccessibleName("Novidades");
    m_lblMsgInternet->setObjectName("lblMsgInternet");
    m_lblMsgInternet->setText("Procurando o servidor do Cozinhario na Internet para exibir as novidades...");
    m_lblMsgInternet->setAccessibleName(m_lblMsgInternet->text());
    m_lblMsgInternet->setToolTip("A página aparece assim que o servidor responder");
    m_lblMsgInternet->setAlignment(Qt::AlignCenter);
    m_lblMsgInternet->setWordWrap(true);

    m_WbBsr1->setObjectName("WbBsr1");
    m_WbBsr1->setAccessibleName("Página de novidades");
    m_WbBsr1->setToolTip("Novidades do Cozinhario; um clique em um link abre o seu navegador");
    m_WbBsr1->hide();

    m_TimerWeb->setObjectName("TimerWeb");
    m_TimerWeb->setProperty("tag", "automatica");
    m_TimerWeb->setSingleShot(true);
    m_TimerWeb->setInterval(kEsperaDaTimer);
    connect(m_TimerWeb, &QTimer::timeout, this, Protegido(avisos, [this] { TimerWeb_Timer(); }));

    DefinirAltura(kRecolhido);
    hide();
}

PainelNovidades::~PainelNovidades()
{
    m_novidades->Abandonar();
}

void PainelNovidades::LigarTimer()
{
    if (PedidoDoUsuario())
        return;
    m_TimerWeb->start();
}

void PainelNovidades::Esconder()
{
    m_outraVez = false;
    m_novidades->Abandonar();
    hide();
    m_WbBsr1->hide();
}

void PainelNovidades::TimerWeb_Timer()
{
    const QPointer<PainelNovidades> vivo(this);
    if (m_paineis.Livre())
        DeixarEventosRodarem();
    if (!vivo || PedidoDoUsuario() || Encerrando())
        return;
    if (!m_paineis.Livre()) {
        m_TimerWeb->start(kNovaTentativa);
        return;
    }
    m_TimerWeb->setInterval(0);
    m_TimerWeb->stop();
    m_pelaTimer = true;
    imgInternet_Click();
    if (vivo)
        m_TimerWeb->setProperty("tag", QString());
}

void PainelNovidades::imgInternet_Click()
{
    if (!std::exchange(m_pelaTimer, false)) {
        // The user asks: from here on a missing connection is told, and the automatic visit is not needed.
        m_TimerWeb->stop();
        m_TimerWeb->setProperty("tag", QString());
    }
    if (m_ocupado) {
        // A visit is under way and will end with its page here; it only has to be seen. One that was
        // abandoned meanwhile is followed by another.
        if (!m_vista)
            m_vista.emplace(Operacao::Tipo::Visita);
        m_outraVez = m_novidades->Abandonada();
        m_novidades->PegarAmpulheta();
        if (isHidden())
            AbrirPainel();
        return;
    }
    const QPointer<PainelNovidades> vivo(this);
    m_ocupado = true;
    do {
        m_outraVez = false;
        Visitar();
    } while (vivo && m_outraVez && !Encerrando());
    if (vivo) {
        m_ocupado = false;
        m_vista.reset();
    }
}

/// One visit from beginning to end. This object may be gone when it returns.
void PainelNovidades::Visitar()
{
    const QPointer<PainelNovidades> vivo(this);
    const std::shared_ptr<Novidades> novidades = m_novidades;
    if (PedidoDoUsuario()) {
        if (!m_vista)
            m_vista.emplace(Operacao::Tipo::Visita);
        if (!AbrirPainel())
            return;
        m_outraVez = false; // asked again while it rolled: this is the visit
        novidades->BaixarNovidades();
    } else {
        novidades->BaixarNovidades([vivo] { return vivo && vivo->AbrirSemPedido(); });
    }
    if (!vivo || Encerrando() || novidades->Abandonada())
        return;
    if (!novidades->TemPagina())
        SemPagina();
    else if (!isHidden() || (!PedidoDoUsuario() && AbrirSemPedido()))
        MostrarPagina();
}

/// Makes room and rolls the panel open. False when that was abandoned for good; the object may be gone then.
bool PainelNovidades::AbrirPainel()
{
    // While this panel is on screen the working panels are hidden already, and which ones is not forgotten.
    if (isHidden()) {
        m_paineis.Esconder();
        m_telas.RestaurarBotoes();
        DefinirAltura(kRecolhido);
    }
    raise();
    show();
    if (Altura() != kRecolhido)
        return true;
    const QPointer<PainelNovidades> vivo(this);
    // A roll is also abandoned for a newer one: the panel was hidden and asked for again meanwhile.
    return Rolar(kAltura) || (vivo && !Encerrando() && !isHidden());
}

/// Opens the panel for a visit that nobody asked for, where that disturbs nobody. True when it is open.
bool PainelNovidades::AbrirSemPedido()
{
    if (!isHidden()) // the user has asked meanwhile
        return true;
    if (m_paineis.UsuarioComecou() || !m_paineis.Livre())
        return false;
    m_vista.emplace(Operacao::Tipo::Visita);
    m_paineis.AoComecar([vivo = QPointer<PainelNovidades>(this)] {
        if (vivo)
            vivo->Ceder();
    });
    return AbrirPainel();
}

/// The user begins to work while a page that she did not ask for is still on its way: her view comes back.
void PainelNovidades::Ceder()
{
    if (!m_ocupado || PedidoDoUsuario() || isHidden())
        return;
    Esconder();
    m_paineis.Restaurar();
}

void PainelNovidades::MostrarPagina()
{
    if (isHidden()) // another view was opened meanwhile
        return;
    PosicionarVisor();
    m_WbBsr1->raise();
    m_WbBsr1->show();
    m_WbBsr1->Navegar(m_novidades->Pagina(), QUrl(m_novidades->Base()));
    m_WbBsr1->setFocus();
}

void PainelNovidades::SemPagina()
{
    const QPointer<PainelNovidades> vivo(this);
    if (PedidoDoUsuario())
        m_avisos.Avisar("Sem Conexão com a Internet", Avisos::Icone::Informacao);
    if (!vivo || isHidden()) // whoever hid the panel has shown another one
        return;
    Esconder();
    m_paineis.Restaurar();
}

bool PainelNovidades::PedidoDoUsuario() const
{
    return m_TimerWeb->property("tag").toString().isEmpty();
}

void PainelNovidades::resizeEvent(QResizeEvent *event)
{
    Painel::resizeEvent(event);
    // The text stands where it will stand when the panel is open: it is uncovered, it does not wander.
    const int altura = TwipsParaPixels(kAltura);
    m_lblMsgInternet->setGeometry(0, 0, width(), altura);
    if (!m_WbBsr1->isHidden())
        PosicionarVisor();
}

void PainelNovidades::PosicionarVisor()
{
    const int borda = TwipsParaPixels(kBordaDoVisor);
    m_WbBsr1->setGeometry(borda, borda, width(), height() - TwipsParaPixels(kFolgaDoVisor));
    // The page stops at the panel's own edge, which stays whole all around.
    const QRect dentro = rect().adjusted(1, 1, -1, -1).translated(-borda, -borda);
    m_WbBsr1->setMask(QRegion(m_WbBsr1->rect() & dentro));
}
