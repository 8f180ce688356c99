#include "app/MensagemNaJanela.h"

#include "base/Acessivel.h"
#include "base/Fontes.h"

#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

MensagemNaJanela::MensagemNaJanela(QWidget *janela)
    : QWidget(janela)
    , m_janela(janela)
    , m_lblMensagem(new QLabel("Efetuando Backup do Sistema", this))
    , m_prgrssBrMsg(new QProgressBar(this))
{
    setProperty("papelAcessivel", static_cast<int>(QAccessible::AlertMessage));
    setObjectName("picMsg");
    setAttribute(Qt::WA_StyledBackground);
    setAccessibleName("Operação em andamento");
    m_lblMensagem->setObjectName("lblMensagem");
    m_lblMensagem->setAlignment(Qt::AlignCenter);
    m_lblMensagem->setFont(FonteVerdana(9, true));
    m_prgrssBrMsg->setObjectName("PrgrssBrMsg");
    m_prgrssBrMsg->setAccessibleName("Andamento da operação");
    m_prgrssBrMsg->setTextVisible(false);
    auto *coluna = new QVBoxLayout(this);
    coluna->setContentsMargins(24, 18, 24, 20);
    coluna->setSpacing(12);
    coluna->addWidget(m_lblMensagem);
    coluna->addWidget(m_prgrssBrMsg);
    hide();
}

void MensagemNaJanela::Mostrar(const QString &texto, int maximo)
{
    m_lblMensagem->setText(texto);
    m_prgrssBrMsg->setRange(0, maximo);
    m_prgrssBrMsg->setValue(0);
    raise();
    show();
    if (!m_emOperacao)
        qApp->installEventFilter(this);
    m_emOperacao = true;
    setAccessibleName(texto); // what is read out when it appears
    Acessivel::Anunciar(*this);
}

void MensagemNaJanela::DefinirMaximo(int maximo)
{
    m_prgrssBrMsg->setMaximum(maximo);
}

void MensagemNaJanela::DefinirValor(int valor)
{
    m_prgrssBrMsg->setValue(valor);
}

void MensagemNaJanela::Esconder()
{
    hide();
    if (!m_emOperacao)
        return;
    m_emOperacao = false;
    qApp->removeEventFilter(this);
    emit operacaoTerminada();
}

bool MensagemNaJanela::eventFilter(QObject *objeto, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
        break;
    default:
        return false;
    }
    auto *controle = qobject_cast<QWidget *>(objeto);
    // Dialogs that the operation itself opened are no part of the window and keep working.
    if (!controle || controle->window() != m_janela || m_livres.contains(controle))
        return false;
    return true;
}
