#include "browse/CabecalhoLista.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyleOptionHeader>

namespace
{
constexpr int kMargem = 6;
}

CabecalhoLista::CabecalhoLista(QWidget *parent)
    : QHeaderView(Qt::Horizontal, parent)
{
    setObjectName("cabecalhoLista");
    setSectionsClickable(true);
    setSectionsMovable(false);
    setHighlightSections(false);
    setStretchLastSection(false);
    setMinimumSectionSize(24);
    setTextElideMode(Qt::ElideRight);
}

bool CabecalhoLista::UltimaEstreita() const
{
    if (!model() || count() == 0)
        return false;
    const QString texto = model()->headerData(UltimaColuna(), Qt::Horizontal).toString();
    return fontMetrics().horizontalAdvance(texto) + 2 * kMargem > sectionSize(UltimaColuna());
}

void CabecalhoLista::initStyleOptionForIndex(QStyleOptionHeader *option, int logicalIndex) const
{
    QHeaderView::initStyleOptionForIndex(option, logicalIndex);
    if (logicalIndex == UltimaColuna() && UltimaEstreita())
        option->text.clear();
}

void CabecalhoLista::paintEvent(QPaintEvent *event)
{
    QHeaderView::paintEvent(event);
    if (!UltimaEstreita())
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::ButtonText));
    const int direita = sectionViewportPosition(UltimaColuna()) + sectionSize(UltimaColuna()) - kMargem / 2;
    painter.drawText(QRect(0, 0, direita, viewport()->height()), Qt::AlignRight | Qt::AlignVCenter,
                     model()->headerData(UltimaColuna(), Qt::Horizontal).toString());
}
