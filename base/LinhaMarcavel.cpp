#include "base/LinhaMarcavel.h"

#include <QApplication>
#include <QPainter>
#include <QWidget>

namespace
{
constexpr int kAlturaDaLinha = 20; // pixels
constexpr int kCaixa = 13;
constexpr int kEspaco = 4;
} // namespace

QSize LinhaMarcavel::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QSize texto = QStyledItemDelegate::sizeHint(option, index);
    return QSize(texto.width() + kCaixa + 2 * kEspaco, qMax(texto.height(), kAlturaDaLinha));
}

void LinhaMarcavel::paint(QPainter *painter, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const
{
    const QStyle *estilo = option.widget ? option.widget->style() : QApplication::style();
    const bool marcada = option.state.testFlag(QStyle::State_Selected);

    QStyleOptionButton caixa;
    caixa.palette = option.palette;
    caixa.rect = QRect(option.rect.left() + kEspaco, option.rect.center().y() - kCaixa / 2, kCaixa, kCaixa);
    caixa.state = (option.state & QStyle::State_Enabled) | (marcada ? QStyle::State_On : QStyle::State_Off);
    estilo->drawPrimitive(QStyle::PE_IndicatorCheckBox, &caixa, painter, option.widget);

    // The box says what is chosen; a wholly blue list would not look like one that waits for clicks.
    QStyleOptionViewItem linha(option);
    linha.state.setFlag(QStyle::State_Selected, false);
    linha.rect.setLeft(caixa.rect.right() + kEspaco);
    QStyledItemDelegate::paint(painter, linha, index);
}
