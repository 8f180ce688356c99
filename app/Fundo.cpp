#include "app/Fundo.h"

#include "app/Desenho.h"
#include "base/Abridor.h"
#include "base/Fontes.h"
#include "base/Twips.h"

#include <QIcon>
#include <QPainter>
#include <QPushButton>
#include <QTextLayout>
#include <QToolButton>

namespace
{
// The tip's measures count from the form's old top edge, which lies this far below that of the background.
constexpr int kTopoDoRodape = 255;
constexpr double kMenorLetra = 6; // pixels
constexpr double kMaiorLetra = 11;
constexpr double kPasso = 0.25;
constexpr double kPontosPorPixel = 0.75; // at the 96 dots an inch that Qt counts with
constexpr QSize kLogo(39, 30);

/// Breaks the text into lines of that width; gives their height together. Lines may touch.
double Dispor(QTextLayout &linhas, double largura)
{
    double altura = 0;
    linhas.beginLayout();
    for (QTextLine linha = linhas.createLine(); linha.isValid(); linha = linhas.createLine()) {
        linha.setLineWidth(largura);
        linha.setPosition(QPointF(0, altura));
        altura += linha.ascent() + linha.descent();
    }
    linhas.endLayout();
    return altura;
}
} // namespace

double RotuloAjustado::Ajustar(QTextLayout &linhas) const
{
    linhas.setText(text());
    linhas.setTextOption(QTextOption(Qt::AlignHCenter));
    QFont fonte = font();
    double altura = 0;
    for (double letra = kMaiorLetra; letra >= kMenorLetra; letra -= kPasso) {
        fonte.setPointSizeF(letra * kPontosPorPixel);
        linhas.setFont(fonte);
        altura = Dispor(linhas, width());
        if (altura <= height())
            break;
    }
    return altura;
}

void RotuloAjustado::paintEvent(QPaintEvent *)
{
    QTextLayout linhas;
    const double altura = Ajustar(linhas);
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    linhas.draw(&painter, QPointF(0, (height() - altura) / 2));
}

QString SiteDoDistribuidor()
{
    return "https://www.vilanu.example";
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
        " color: #1a48a8; text-decoration: underline; }"
        "QPushButton:hover { color: #853f06; } QPushButton:focus { border: 1px dotted #14214d; }");
    url->setAccessibleName("Visitar o site " + url->text());
    m_lblConvite =
        new QLabel("Clique no segundo botão da barra, Lista de Receitas, para ver as suas receitas.", this);
    m_lblConvite->setObjectName("lblConvite");
    m_lblConvite->setAccessibleName(m_lblConvite->text());
    m_lblConvite->setFont(FonteVerdana(8.25));
    m_lblConvite->setAlignment(Qt::AlignCenter);
    m_lblConvite->setGeometry(0, TwipsParaPixels(3300), TwipsParaPixels(9600), 24);
    m_lblConvite->hide();

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
