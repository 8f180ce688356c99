#pragma once

#include <QHeaderView>

/**
 * The list's header. The last column is narrower than its caption, whose letters therefore reach over the
 * empty end of the column before it.
 */
class CabecalhoLista : public QHeaderView
{
    Q_OBJECT
public:
    explicit CabecalhoLista(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
    void initStyleOptionForIndex(QStyleOptionHeader *option, int logicalIndex) const override;

private:
    int UltimaColuna() const { return count() - 1; }
    bool UltimaEstreita() const;
};
