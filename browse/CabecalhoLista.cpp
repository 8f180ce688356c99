#include "browse/CabecalhoLista.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyleOptionHeader>

#include <algorithm>

namespace
{
constexpr int kMargem = 2;
constexpr int kLarguraDaSeta = 8;
} // namespace

CabecalhoLista::CabecalhoLista(QWidget *parent)
    : QHeaderView(Qt::Horizontal, parent)
{
    setObjectName("cabecalhoLista");
    setSectionsMovable(false);
    setHighlightSections(false);
    setStretchLastSection(false);
    setMinimumSectionSize(24);
    setTextElideMode(Qt::ElideRight);
}

QString CabecalhoLista::TextoDaUltima() const
{
    return model() ? model()->headerData(UltimaColuna(), Qt::Horizontal).toString() : QString();
}

int CabecalhoLista::Excesso() const
{
    const int largura = fontMetrics().horizontalAdvance(TextoDaUltima()) + 2 * kMargem + 1;
    return std::max(largura - sectionSize(UltimaColuna()), 0);
}

void CabecalhoLista::initStyleOptionForIndex(QStyleOptionHeader *option, int logicalIndex) const
{
    QHeaderView::initStyleOptionForIndex(option, logicalIndex);
    option->sortIndicator = QStyleOptionHeader::None; // drawn below, whatever the style
    if (logicalIndex == UltimaColuna())
        option->text.clear();
}

void CabecalhoLista::paintEvent(QPaintEvent *event)
{
    QHeaderView::paintEvent(event);
    if (count() == 0)
        return;
    QPainter painter(viewport());
    const int ultima = UltimaColuna();
    // Once more: where only its neighbour was painted, that has taken what the last head reaches over.
    paintSection(&painter,
                 QRect(sectionViewportPosition(ultima), 0, sectionSize(ultima), viewport()->height()),
                 ultima);
    PintarResto(&painter);
}

void CabecalhoLista::paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const
{
    const int ultima = UltimaColuna();
    QRect lugar = rect;
    if (logicalIndex == ultima)
        lugar.setLeft(lugar.left() - Excesso());
    else if (logicalIndex == ultima - 1)
        lugar.setRight(lugar.right() - Excesso());
    painter->save();
    QHeaderView::paintSection(painter, lugar, logicalIndex);
    painter->restore();
    if (logicalIndex == ultima) {
        painter->setPen(palette().color(QPalette::ButtonText));
        painter->drawText(lugar.adjusted(0, 0, -kMargem, -1), Qt::AlignRight | Qt::AlignVCenter,
                          TextoDaUltima());
    }
    if (isSortIndicatorShown() && sortIndicatorSection() == logicalIndex)
        PintarSeta(painter, lugar);
}

void CabecalhoLista::PintarResto(QPainter *painter)
{
    const int inicio = sectionViewportPosition(UltimaColuna()) + sectionSize(UltimaColuna());
    if (inicio >= viewport()->width())
        return;
    QStyleOptionHeader opcao;
    initStyleOption(&opcao);
    opcao.rect = QRect(inicio, 0, viewport()->width() - inicio + 1, viewport()->height());
    opcao.section = -1;
    opcao.position = QStyleOptionHeader::End;
    style()->drawControl(QStyle::CE_HeaderSection, &opcao, painter, this);
}

void CabecalhoLista::PintarSeta(QPainter *painter, const QRect &rect) const
{
    const QPointF topo(rect.right() - kLarguraDaSeta - 0.5, rect.center().y() - 1.5);
    const QPolygonF seta{topo, topo + QPointF(kLarguraDaSeta / 2.0, kLarguraDaSeta / 2.0),
                         topo + QPointF(-kLarguraDaSeta / 2.0, kLarguraDaSeta / 2.0)};
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(palette().color(QPalette::ButtonText));
    painter->drawPolygon(seta);
    painter->restore();
}
