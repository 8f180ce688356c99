#include "base/Alcance.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QShortcutEvent>

namespace
{
// The place that a widget takes, or will take when it has rolled open.
QRect Lugar(const QWidget &controle)
{
    const QVariant aberto = controle.property("tamanhoAberto");
    return aberto.isValid() ? QRect(controle.pos(), aberto.toSize()) : controle.geometry();
}

// Where nothing is drawn nothing is covered: a panel may still be collapsed, or not laid out.
bool Cobre(const QObject *objeto, const QRect &area)
{
    const auto *irmao = qobject_cast<const QWidget *>(objeto);
    return irmao && !irmao->isWindow() && !irmao->isHidden() && Lugar(*irmao).contains(area);
}

// The frontmost widget that covers `controle` or a panel it lies on; the outermost such panel decides, for
// what lies in front of it is what is seen.
const QWidget *Cobertura(const QWidget &controle)
{
    const QWidget *cobertura = nullptr;
    if (!controle.isVisible())
        return nullptr; // not laid out perhaps, and reached by nobody anyway
    for (const QWidget *w = &controle; !w->isWindow() && w->parentWidget(); w = w->parentWidget()) {
        // Children are listed from the rearmost to the foremost.
        const QObjectList &irmaos = w->parentWidget()->children();
        const QRect area = Lugar(*w);
        for (qsizetype i = irmaos.size() - 1; irmaos[i] != w; --i) {
            if (Cobre(irmaos[i], area)) {
                cobertura = static_cast<const QWidget *>(irmaos[i]);
                break;
            }
        }
    }
    return cobertura;
}

bool AtrasDeDialogo(const QWidget &controle)
{
    const QWidget *dialogo = QApplication::activeModalWidget();
    return dialogo && dialogo != controle.window() && !dialogo->isAncestorOf(&controle);
}

bool ParaDeTab(const QWidget &controle)
{
    return (controle.focusPolicy() & Qt::TabFocus) && !controle.focusProxy() && Alcance::Alcanca(controle);
}

// The control after `inicio` in the order of the Tab key for which `serve` holds; nullptr for none.
template <typename F>
QWidget *Procurar(QWidget *inicio, bool next, F serve)
{
    QWidget *w = inicio;
    do {
        w = next ? w->nextInFocusChain() : w->previousInFocusChain();
    } while (w != inicio && !serve(*w));
    return w == inicio ? nullptr : w;
}

void Acionar(QAbstractButton &botao)
{
    // Option buttons and check boxes take the focus with their key, as they do with the mouse.
    if (botao.isCheckable() && (botao.focusPolicy() & Qt::ClickFocus))
        botao.setFocus(Qt::ShortcutFocusReason);
    botao.click();
}
} // namespace

Alcance::Alcance(QObject *parent)
    : QObject(parent)
{
    connect(qApp, &QApplication::focusChanged, this, [](const QWidget *, const QWidget *agora) {
        if (agora)
            ReverFoco(agora);
    });
    qApp->installEventFilter(this);
}

bool Alcance::Alcanca(const QWidget &controle)
{
    return controle.isVisible() && controle.isEnabled() && !Encoberto(controle) && !AtrasDeDialogo(controle);
}

bool Alcance::Encoberto(const QWidget &controle)
{
    return Cobertura(controle) != nullptr;
}

bool Alcance::PodeComandar(const QObject *dono)
{
    const auto *controle = qobject_cast<const QWidget *>(dono);
    return !controle || (controle->isVisibleTo(controle->window()) && !Encoberto(*controle));
}

bool Alcance::Focar(const QWidget &painel)
{
    QWidget *foco = painel.focusProxy();
    while (foco && foco->focusProxy())
        foco = foco->focusProxy();
    if (const QWidget *cobertura = Cobertura(painel))
        return Focar(*cobertura);
    if (!foco || !Alcanca(*foco))
        foco = Procurar(const_cast<QWidget *>(&painel), true,
                        [&painel](const QWidget &w) { return painel.isAncestorOf(&w) && ParaDeTab(w); });
    if (!foco)
        return false;
    foco->setFocus(Qt::OtherFocusReason);
    return true;
}

bool Alcance::MoverFoco(const QWidget &janela, bool next)
{
    QWidget *const topo = janela.window();
    QWidget *const inicio = topo->focusWidget() ? topo->focusWidget() : topo;
    QWidget *foco =
        Procurar(inicio, next, [topo](const QWidget &w) { return w.window() == topo && ParaDeTab(w); });
    if (!foco)
        return false;
    foco->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

// Something was shown, sized or moved, or got the focus: where the focus lies covered now, it goes on.
void Alcance::ReverFoco(const QWidget *mudou)
{
    const QWidget *foco = mudou->window()->focusWidget();
    if (!foco)
        return;
    if (const QWidget *cobertura = Cobertura(*foco))
        Focar(*cobertura);
}

bool Alcance::Atalho(QObject *objeto, const QShortcutEvent &atalho)
{
    const auto *controle = qobject_cast<QWidget *>(objeto->isWidgetType() ? objeto : objeto->parent());
    if (!controle)
        return false;
    QAbstractButton *unico = nullptr;
    for (QAbstractButton *botao : controle->window()->findChildren<QAbstractButton *>()) {
        if (botao->shortcut() != atalho.key() || !Alcanca(*botao))
            continue;
        if (unico)
            return false; // two of the same letter: the toolkit goes round them
        unico = botao;
    }
    if (unico) {
        Acionar(*unico);
        return true;
    }
    if (qobject_cast<const QAction *>(objeto))
        return false;
    return qobject_cast<const QAbstractButton *>(controle) || !Alcanca(*controle);
}

bool Alcance::Tecla(QWidget &controle, const QKeyEvent &tecla)
{
    if (const QWidget *cobertura = Cobertura(controle)) {
        Focar(*cobertura);
        return true;
    }
    const bool letra = !tecla.text().isEmpty() && tecla.text().at(0).isPrint();
    return tecla.type() == QEvent::KeyPress && letra && tecla.modifiers() == Qt::AltModifier &&
           controle.window()->windowType() != Qt::Popup;
}

bool Alcance::eventFilter(QObject *objeto, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Shortcut:
        return Atalho(objeto, *static_cast<QShortcutEvent *>(event));
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return objeto->isWidgetType() &&
               Tecla(*static_cast<QWidget *>(objeto), *static_cast<QKeyEvent *>(event));
    case QEvent::InputMethod:
        return objeto->isWidgetType() && Encoberto(*static_cast<QWidget *>(objeto));
    case QEvent::Show:
    case QEvent::Resize:
    case QEvent::Move:
    case QEvent::ZOrderChange:
        if (objeto->isWidgetType()) {
            const auto *mudou = static_cast<QWidget *>(objeto);
            const QWidget *foco = mudou->window()->focusWidget();
            // Only what stands beside the focus, or beside a panel around it, can come to cover it.
            if (foco && mudou->parentWidget() && mudou != foco && !mudou->isAncestorOf(foco) &&
                mudou->parentWidget()->isAncestorOf(foco))
                ReverFoco(mudou);
        }
        return false;
    default:
        return false;
    }
}
