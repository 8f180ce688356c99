#pragma once

#include <QStyledItemDelegate>

/**
 * Draws the rows of a list in which every click takes a row in or out: the selected ones have a ticked box
 * before their text, the others an empty one. The rows themselves stay what they are.
 */
class LinhaMarcavel : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};
