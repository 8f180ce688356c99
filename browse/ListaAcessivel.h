#pragma once

#include <QAccessibleActionInterface>
#include <QAccessibleTableInterface>
#include <QAccessibleWidget>
#include <QHash>

class ListaReceitas;

/**
 * The list for those who listen to it: a table whose cells can be opened, selected and asked for their menu.
 *
 * The children are the columns' headers, then the cells row by row; each is made when somebody asks for it,
 * since a book may have a quarter of a million recipes.
 */
class ListaAcessivel : public QAccessibleWidget, public QAccessibleTableInterface
{
public:
    explicit ListaAcessivel(ListaReceitas *lista);
    ~ListaAcessivel() override;
    /// Whoever listens to one gets this, from the next one made on. Again and again does no harm.
    static void Instalar();

    ListaReceitas *Lista() const;

    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *filho) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *focusChild() const override;
    void *interface_cast(QAccessible::InterfaceType tipo) override;

    QAccessibleInterface *caption() const override { return nullptr; }
    QAccessibleInterface *summary() const override { return nullptr; }
    QAccessibleInterface *cellAt(int row, int column) const override;
    int selectedCellCount() const override;
    QList<QAccessibleInterface *> selectedCells() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int) const override { return {}; }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override;
    int columnCount() const override;
    int rowCount() const override;
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override;
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override;
    bool selectRow(int row) override;
    bool selectColumn(int) override { return false; }
    bool unselectRow(int row) override;
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent *event) override;

private:
    mutable QHash<int, QAccessible::Id> m_filhos;
};
