#include "browse/PainelCartao.h"

#include "base/Alcance.h"
#include "base/Comando.h"
#include "base/EventosPendentes.h"
#include "base/Fontes.h"
#include "base/Painel.h"
#include "base/Telas.h"
#include "base/Twips.h"
#include "browse/CanvasAcessivel.h"
#include "browse/CanvasCartao.h"
#include "browse/Cartao.h"
#include "browse/DetalheReceita.h"
#include "print/ListaDesenho.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace
{
// Twips.
constexpr int kLargura = 9330;
constexpr int kBarra = 255;
constexpr int kBorda = 15;
constexpr int kEsquerdaDoBotao = 5800;
constexpr int kBotaoAbaixo = 100;
constexpr int kAlturaDoBotao = 375;
constexpr int kSobraComBotao = 550;
constexpr int kSobra = 150;
constexpr int kLinhaDaRoda = 255; // a line of the card, 4.5 mm

constexpr double kTwipsPorMilimetro = 1440 / 25.4;

CanvasCartao *NovoCanvas(QWidget *parent)
{
    CanvasAcessivel::Instalar();
    return new CanvasCartao(parent);
}
} // namespace

PainelCartao::PainelCartao(const Banco &banco, Avisos &avisos, Telas &telas, DetalheReceita &detalhe,
                           Painel &picDetReceita)
    : QWidget(&picDetReceita)
    , m_banco(banco)
    , m_avisos(avisos)
    , m_telas(telas)
    , m_detalhe(detalhe)
    , m_picDetReceita(picDetReceita)
    , m_janela(new QWidget(this))
    , m_picViewDados(NovoCanvas(m_janela))
    , m_vScrlPic(new QScrollBar(Qt::Vertical, this))
    , m_imgPrint(new QLabel(this))
    , m_cmdAlterarReceita(new QPushButton("&Alterar Receita", m_picViewDados))
{
    setObjectName("picView");
    setAccessibleName("Cartão da receita");
    QPalette papel = palette();
    papel.setColor(QPalette::Window, Qt::white);
    setPalette(papel);
    setAutoFillBackground(true);
    setMouseTracking(true);
    setFocusPolicy(Qt::NoFocus);
    m_janela->setMouseTracking(true);

    m_vScrlPic->setObjectName("vScrlPic");
    m_vScrlPic->setFocusPolicy(Qt::StrongFocus);
    m_vScrlPic->setAccessibleName("Rolagem do cartão");
    m_vScrlPic->setToolTip("Rolar o cartão da receita");
    m_imgPrint->setObjectName("imgPrint");
    m_imgPrint->hide();
    m_cmdAlterarReceita->setObjectName("cmdAlterarReceita");
    m_cmdAlterarReceita->setFont(FonteVerdana(8.25));
    m_cmdAlterarReceita->setAccessibleName("Alterar Receita");
    m_cmdAlterarReceita->setToolTip("Abrir a receita para alteração");
    m_cmdAlterarReceita->setAutoDefault(true);
    m_picViewDados->setToolTip("");
    setTabOrder(m_vScrlPic, m_picViewDados);
    setTabOrder(m_picViewDados, m_cmdAlterarReceita);

    connect(m_picViewDados, &CanvasCartao::lugarPedido, this, [this](int y) {
        const int twips = y * kTwipsPorPixel;
        const int visivel = TwipsParaPixels(m_picDetReceita.Altura() - kMoldura) * kTwipsPorPixel;
        if (twips < m_vScrlPic->value() || twips + kLinhaDaRoda > m_vScrlPic->value() + visivel)
            m_vScrlPic->setValue(twips);
    });
    connect(m_vScrlPic, &QScrollBar::valueChanged, this, &PainelCartao::MoverCanvas);
    connect(m_cmdAlterarReceita, &QPushButton::clicked, this,
            Comando(m_avisos, m_cmdAlterarReceita, [this] { cmdAlterarReceita_Click(); }));
    m_picDetReceita.installEventFilter(this);
    Dispor(6540);
    hide();
}

// What the bar counts as visible has a margin above and below, so that the page does not touch the frame.
// Below, lines that go on are seen in the margin too.
void PainelCartao::Dispor(int alturaDoPainel)
{
    const int largura = kLargura - 2 * kBorda;
    const int altura = alturaDoPainel - 2 * kBorda;
    setGeometry(TwipsParaPixels(kBorda), TwipsParaPixels(kBorda), TwipsParaPixels(largura),
                TwipsParaPixels(altura));
    const int barra = TwipsParaPixels(kBarra);
    const int visivel = std::max(alturaDoPainel - kMoldura, 0);
    m_vScrlPic->setGeometry(width() - barra, 0, barra, height());
    const int topo = TwipsParaPixels((altura - visivel) / 2);
    m_janela->setGeometry(0, topo, width() - barra, height() - topo);
}

bool PainelCartao::eventFilter(QObject *objeto, QEvent *event)
{
    // While the panel rolls open the card keeps its place and is only uncovered.
    if (event->type() == QEvent::Resize && !m_rolando && !isHidden() &&
        m_picDetReceita.Altura() != Painel::kRecolhido) {
        Dispor(m_picDetReceita.Altura());
        AjustarBarra(m_picDetReceita.Altura());
    }
    return QWidget::eventFilter(objeto, event);
}

void PainelCartao::CarregarPreviewReceita(qint64 lngReceita)
{
    const Cartao cartao = Cartao::Ler(m_banco, lngReceita);
    if (!m_picDetReceita.isVisibleTo(m_picDetReceita.parentWidget()))
        m_picDetReceita.DefinirAltura(Painel::kRecolhido);
    m_receita = lngReceita;
    Desenhar(cartao);

    const QPointer<PainelCartao> vivo(this);
    const QScopedValueRollback rolando(m_rolando, true);
    m_telas.AbrirTela("NovaReceita");
    const int altura = m_telas.AlturaDeTrabalho();
    Dispor(altura);
    m_vScrlPic->setValue(0);
    AjustarBarra(altura);
    MoverCanvas(0);
    show();
    raise();
    if (m_picDetReceita.Altura() == Painel::kRecolhido) {
        m_picDetReceita.Rolar(altura);
        if (!vivo || Encerrando())
            return;
    } else {
        m_picDetReceita.DefinirAltura(altura);
    }
    // The user may have gone on to something else while the panel was rolling.
    if (isVisible() && m_receita == lngReceita && m_telas.TelaAtual() == "Detalhe")
        m_vScrlPic->isEnabled() ? m_vScrlPic->setFocus() : m_picViewDados->setFocus();
}

void PainelCartao::Desenhar(const Cartao &cartao)
{
    const int largura = TwipsParaPixels(kLargura - 2 * kBorda - kBarra);
    ListaDesenho desenho;
    SuperficieLista superficie(desenho, largura / kPixelsPorMilimetro,
                               Cartao::kAlturaDesenho / kTwipsPorMilimetro);
    const int fim = static_cast<int>(std::lround(cartao.Desenhar(superficie) * kTwipsPorMilimetro));
    m_imgPrint->setPixmap(QPixmap::fromImage(cartao.figura));

    m_alturaCanvas = fim + (cartao.podeAlterar ? kSobraComBotao : kSobra);
    m_picViewDados->resize(largura, TwipsParaPixels(m_alturaCanvas));
    m_picViewDados->DefinirDesenho(std::move(desenho));
    m_picViewDados->setAccessibleName("Receita " + cartao.nome);

    // As wide as leaves it flush with the rules' right end.
    const int direita = static_cast<int>(
        std::lround(std::round(superficie.ScaleWidth() - Cartao::kMargem) * kPixelsPorMilimetro));
    const int esquerda = TwipsParaPixels(kEsquerdaDoBotao);
    m_cmdAlterarReceita->setGeometry(esquerda, TwipsParaPixels(fim + kBotaoAbaixo), direita - esquerda,
                                     TwipsParaPixels(kAlturaDoBotao));
    m_cmdAlterarReceita->setVisible(cartao.podeAlterar);
}

void PainelCartao::AjustarBarra(int alturaDoPainel)
{
    const int excesso = std::max(m_alturaCanvas - (alturaDoPainel - kMoldura), 0);
    m_vScrlPic->setEnabled(excesso > 0);
    m_vScrlPic->setPageStep(excesso / 2);
    m_vScrlPic->setSingleStep(std::max(excesso / 20, 1));
    m_vScrlPic->setRange(0, excesso);
}

void PainelCartao::MoverCanvas(int valor)
{
    if ((m_picViewDados->y() == 0) != (valor == 0))
        update();
    m_picViewDados->move(0, TwipsParaPixels(-valor));
    if (isVisible() && m_vScrlPic->isEnabled())
        m_picViewDados->setFocus();
}

// Once lines have gone out at the top, an edge shows that there are more.
void PainelCartao::paintEvent(QPaintEvent *)
{
    if (m_vScrlPic->value() == 0)
        return;
    QPainter painter(this);
    painter.setPen(QColor(0xcf, 0xda, 0xef));
    painter.drawLine(0, m_janela->y() - 1, m_janela->width(), m_janela->y() - 1);
}

// The Tab key leaves the editor's controls out, which lie covered by the card.
bool PainelCartao::focusNextPrevChild(bool next)
{
    return Alcance::MoverFoco(*this, next);
}

// The canvas has the focus once the card has moved: the keys that move the bar move the card from there too.
void PainelCartao::keyPressEvent(QKeyEvent *event)
{
    const auto acao = [event] {
        switch (event->key()) {
        case Qt::Key_Up:
            return QAbstractSlider::SliderSingleStepSub;
        case Qt::Key_Down:
            return QAbstractSlider::SliderSingleStepAdd;
        case Qt::Key_PageUp:
            return QAbstractSlider::SliderPageStepSub;
        case Qt::Key_PageDown:
            return QAbstractSlider::SliderPageStepAdd;
        case Qt::Key_Home:
            return QAbstractSlider::SliderToMinimum;
        case Qt::Key_End:
            return QAbstractSlider::SliderToMaximum;
        default:
            return QAbstractSlider::SliderNoAction;
        }
    }();
    if (acao == QAbstractSlider::SliderNoAction) {
        QWidget::keyPressEvent(event);
        return;
    }
    m_vScrlPic->triggerAction(acao);
    event->accept();
}

// The wheel goes by lines of the card: the bar's own steps grow with the recipe.
void PainelCartao::wheelEvent(QWheelEvent *event)
{
    event->accept();
    if (!event->pixelDelta().isNull()) {
        m_vScrlPic->setValue(m_vScrlPic->value() - event->pixelDelta().y() * kTwipsPorPixel);
        return;
    }
    m_restoDaRoda += event->angleDelta().y() * 3 * kLinhaDaRoda;
    const int twips = m_restoDaRoda / QWheelEvent::DefaultDeltasPerStep;
    m_restoDaRoda -= twips * QWheelEvent::DefaultDeltasPerStep;
    m_vScrlPic->setValue(m_vScrlPic->value() - twips);
}

void PainelCartao::mouseMoveEvent(QMouseEvent *event)
{
    QWidget::mouseMoveEvent(event);
    m_telas.RestaurarBotoes();
}

void PainelCartao::cmdAlterarReceita_Click()
{
    hide();
    m_detalhe.CarregarValoresDetalheReceita(0);
    m_detalhe.CarregarDetalheReceita(m_receita, false);
}
