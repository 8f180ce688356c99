#include "base/Painel.h"

#include "base/Acessivel.h"
#include "base/EventosPendentes.h"
#include "base/Alcance.h"
#include "base/Operacao.h"
#include "base/Twips.h"

#include <QAccessible>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QPainter>
#include <QPointer>
#include <QStyleOption>
#include <QThread>

#include <algorithm>
#include <utility>

namespace
{
constexpr int kPasso = 200;
int ritmo = 8;

void Redimensionar(QWidget *painel, int twips)
{
    painel->resize(painel->width(), TwipsParaPixels(twips));
}
} // namespace

Painel::Painel(const QString &nome, QWidget *parent)
    : QWidget(parent)
{
    Acessivel::Instalar();
    setObjectName(nome);
    setAttribute(Qt::WA_StyledBackground);
}

// Whoever listens to the window is told when a panel comes to lie under another one or is uncovered.
bool Painel::event(QEvent *event)
{
    const bool mudou = event->type() == QEvent::Show || event->type() == QEvent::Hide ||
                       event->type() == QEvent::ZOrderChange || event->type() == QEvent::Resize;
    const bool tratado = QWidget::event(event);
    if (mudou && QAccessible::isActive() && parentWidget()) {
        for (Painel *painel : parentWidget()->findChildren<Painel *>(Qt::FindDirectChildrenOnly)) {
            if (std::exchange(painel->m_encoberto, Alcance::Encoberto(*painel)) == painel->m_encoberto ||
                painel->isHidden())
                continue;
            QAccessibleEvent aviso(painel,
                                   painel->m_encoberto ? QAccessible::ObjectHide : QAccessible::ObjectShow);
            QAccessible::updateAccessibility(&aviso);
        }
    }
    return tratado;
}

void Painel::DefinirRitmo(int milissegundos)
{
    ritmo = milissegundos;
}

void Painel::DefinirAltura(int twips)
{
    ++m_rolagem;
    m_alvo = 0;
    m_altura = twips;
    Redimensionar(this, twips);
}

void Painel::DefinirLugar(int left, int top, int width, int height)
{
    setGeometry(TwipsParaPixels(left), TwipsParaPixels(top), TwipsParaPixels(width), TwipsParaPixels(height));
    DefinirAltura(height);
}

QSize Painel::TamanhoAberto() const
{
    return {width(), TwipsParaPixels(std::max(m_altura, m_alvo))};
}

bool Painel::Rolar(int alturaFinal)
{
    const Operacao operacao(Operacao::Tipo::Rolagem);
    const QPointer<Painel> vivo(this);
    const int minha = ++m_rolagem;
    m_alvo = alturaFinal;
    QElapsedTimer relogio;
    relogio.start();
    int passos = 0;
    for (int altura = kRecolhido; altura <= alturaFinal; altura += kPasso) {
        m_altura = altura;
        Redimensionar(this, altura);
        repaint();
        // The deadlines are absolute, so that a slow paint shortens the next wait and not the roll's rhythm.
        // Events keep running while the step waits for its time.
        // A late step waits no more (a negative time would mean for ever).
        const QDeadlineTimer prazo(std::max<qint64>(0, ritmo * ++passos - relogio.elapsed()));
        do {
            DeixarEventosRodarem();
            if (!vivo || Encerrando() || m_rolagem != minha)
                return false;
            if (ritmo > 0 && !prazo.hasExpired())
                QThread::msleep(1);
        } while (ritmo > 0 && !prazo.hasExpired());
    }
    DefinirAltura(alturaFinal);
    return true;
}

void Painel::paintEvent(QPaintEvent *)
{
    QStyleOption opcao;
    opcao.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &opcao, &painter, this);
}
