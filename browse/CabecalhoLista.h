#pragma once

#include <QHeaderView>

/**
 * The list's header. The last column is narrower than its caption, so its head is drawn wider than the
 * column, over the empty end of the head before it; the room behind the last column looks like a head too.
 */
class CabecalhoLista : public QHeaderView
{
    Q_OBJECT
public:
    explicit CabecalhoLista(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
    void paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const override;
    void initStyleOptionForIndex(QStyleOptionHeader *option, int logicalIndex) const override;

private:
    int UltimaColuna() const { return count() - 1; }
    QString TextoDaUltima() const;
    /// How far the last head reaches beyond its column.
    int Excesso() const;
    void PintarResto(QPainter *painter);
    void PintarSeta(QPainter *painter, const QRect &rect) const;
};
