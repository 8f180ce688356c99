#include "app/Fundo.h"

#include "app/Desenho.h"
#include "base/Abridor.h"
#include "base/Fontes.h"
#include "base/Twips.h"

#include <QIcon>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>

namespace
{
// The tip's measures count from the form's old top edge, which lies this far below that of the background.
constexpr int kTopoDoRodape = 255;
constexpr int kMenorLetra = 7; // pixels
constexpr int kMaiorLetra = 11;
constexpr QSize kLogo(39, 30);
} // namespace

QString SiteDoDistribuidor()
{
    return "https://www.vilanu.example";
}

void RotuloAjustado::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QFont fonte = font();
    for (int letra = kMaiorLetra; letra >= kMenorLetra; --letra) {
        fonte.setPixelSize(letra);
        // Lines may touch: the label is two lines of its largest letter high.
        const QRect preciso = QFontMetrics(fonte).boundingRect(QRect(0, 0, width(), 1000),
                                                               Qt::AlignHCenter | Qt::TextWordWrap, text());
        if (preciso.height() <= height() + 2 && preciso.width() <= width())
            break;
    }
    painter.setFont(fonte);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect().adjusted(0, -2, 0, 2), Qt::AlignCenter | Qt::TextWordWrap, text());
}

Fundo::Fundo(Abridor &abridor, const QString &site, QWidget *janela)
    : QWidget(janela)
    , m_abridor(abridor)
{
    setObjectName("picFundo");
    setAttribute(Qt::WA_StyledBackground);

    auto *rodape = m_rodape = new QWidget(this);
    rodape->hide();
    rodape->setObjectName("picRodape");
    rodape->setGeometry(0, TwipsParaPixels(kTopoDoRodape), TwipsParaPixels(9600),
                        TwipsParaPixels(8100 - kTopoDoRodape));

    auto *emblema = new QLabel(rodape);
    emblema->setObjectName("imgEntrada");
    emblema->setPixmap(Desenho(":/cozinhario.svg", QSize(40, 40), devicePixelRatioF()));
    emblema->setGeometry(12, TwipsParaPixels(6900), 40, 40);
    m_lblEntrada = new QLabel(rodape);
    m_lblEntrada->setObjectName("lblEntrada");
    m_lblEntrada->setFont(FonteVerdana(15, true));
    m_lblEntrada->setGeometry(60, TwipsParaPixels(6900), 240, 40);

    m_area.lblDica = new RotuloAjustado(rodape);
    m_area.lblDica->setObjectName("lblDica");
    m_area.lblDica->setAccessibleName("Dica");
    m_area.lblDica->setFont(FonteVerdana(8.25));
    m_area.lblDica->setWordWrap(true);

    auto *logo = new QToolButton(rodape);
    logo->setIcon(Desenho(":/logo_tamarel.svg", kLogo, devicePixelRatioF()));
    logo->setAccessibleName("Visitar o site da Tamarel");
    m_area.picTamarel = CriarElo(logo, "picTamarel", site);

    auto *vilanu = new QToolButton(rodape);
    vilanu->setIcon(Desenho(":/logo_vilanu.svg", kLogo, devicePixelRatioF()));
    vilanu->setAccessibleName("Visitar o site da Vilanu");
    m_area.picVilanuLogo = CriarElo(vilanu, "picVilanuLogo", SiteDoDistribuidor());

    auto *url = new QPushButton(QUrl(site).host(), rodape);
    url->setStyleSheet(
        "QPushButton { background: transparent; border: 1px solid transparent; padding: 0;"
        " color: #1d4fb8; text-decoration: underline; }"
        "QPushButton:hover { color: #a3520b; } QPushButton:focus { border: 1px dotted #14214d; }");
    url->setAccessibleName("Visitar o site " + url->text());
    url->setGeometry(TwipsParaPixels(7290), TwipsParaPixels(7305), TwipsParaPixels(2130), 20);
    m_area.lblUrl = CriarElo(url, "lblUrl", site);
}

QWidget *Fundo::CriarElo(QAbstractButton *elo, const QString &nome, const QString &endereco)
{
    elo->setObjectName(nome);
    elo->setToolTip(endereco);
    elo->setCursor(Qt::PointingHandCursor);
    elo->setFocusPolicy(Qt::TabFocus);
    if (auto *logo = qobject_cast<QToolButton *>(elo)) {
        logo->setAutoRaise(true);
        logo->setIconSize(kLogo);
        logo->setStyleSheet("QToolButton { border: 0; padding: 0; background: transparent; }"
                            "QToolButton:focus { border: 1px dotted #14214d; }");
    }
    connect(elo, &QAbstractButton::clicked, this,
            [this, endereco] { m_abridor.AbrirEndereco(QUrl(endereco)); });
    return elo;
}
