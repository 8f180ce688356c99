#pragma once

#include "editor/LinhaIngrediente.h"

#include <QStringList>
#include <QTreeWidget>

/**
 * The tree of a recipe's ingredient lines: one root and a node a line, in the order of entry. The lines live
 * here until the recipe is saved.
 */
class ArvoreIngredientes : public QTreeWidget
{
    Q_OBJECT
public:
    static constexpr int kPapelChave = Qt::UserRole;   ///< "R", "C1", "C2", ...
    static constexpr int kPapelTag = Qt::UserRole + 1; ///< the line's three values (LinhaIngrediente.h)

    explicit ArvoreIngredientes(QWidget *parent = nullptr);

    /// Down to the root.
    void Esvaziar();
    /// Adds a line with the next key and scrolls it into view.
    QTreeWidgetItem *Adicionar(const LinhaIngrediente &linha);
    /// Replaces all lines, with the keys C1, C2, ...; however many there are, the tree is laid out once.
    void Definir(const QStringList &tags);
    static void Definir(QTreeWidgetItem &no, const LinhaIngrediente &linha);

    bool EhRaiz(const QTreeWidgetItem *no) const { return no == Raiz(); }
    /// Node of line `i`, from 0; null when there is none.
    QTreeWidgetItem *Linha(int i) const { return Raiz()->child(i); }
    int Linhas() const { return Raiz()->childCount(); }
    /// Tags of the lines, in tree order.
    QStringList Tags() const;

signals:
    /// A node was clicked, or Enter or the space bar pressed on it.
    void noEscolhido(QTreeWidgetItem *no);
    /// The delete key was pressed on the selected node.
    void remocaoPedida(QTreeWidgetItem *no);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QTreeWidgetItem *Raiz() const { return topLevelItem(0); }
};
