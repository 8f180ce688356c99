#include "browse/ListaAcessivel.h"

#include "browse/ListaReceitas.h"

#include <QHeaderView>
#include <QPointer>

namespace
{
const QString kAbrir = QStringLiteral("open");

/// A header of a column, or a cell: a place in the list, valid as long as the list has that place.
class Lugar : public QAccessibleInterface
{
public:
    Lugar(ListaReceitas *lista, int coluna)
        : m_viva(lista)
        , m_lista(lista)
        , m_coluna(coluna)
    {
    }

    bool isValid() const override { return m_viva && m_coluna < m_lista->model()->columnCount(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return m_viva ? m_lista->window()->windowHandle() : nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(m_viva); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    void setText(QAccessible::Text, const QString &) override {}

protected:
    bool Encoberta() const { return !parent() || parent()->state().invisible; }
    QRect NaTela(const QRect &noVisor) const
    {
        return QRect(m_lista->viewport()->mapToGlobal(noVisor.topLeft()), noVisor.size());
    }

    QPointer<ListaReceitas> m_viva;
    ListaReceitas *m_lista; ///< asked only while m_viva
    int m_coluna;
};

class Cabeca : public Lugar
{
public:
    using Lugar::Lugar;

    QAccessible::Role role() const override { return QAccessible::ColumnHeader; }
    QString text(QAccessible::Text qual) const override
    {
        if (qual != QAccessible::Name || !isValid())
            return {};
        return m_lista->model()->headerData(m_coluna, Qt::Horizontal, Qt::AccessibleTextRole).isValid()
                   ? m_lista->model()->headerData(m_coluna, Qt::Horizontal, Qt::AccessibleTextRole).toString()
                   : m_lista->model()->headerData(m_coluna, Qt::Horizontal, Qt::DisplayRole).toString();
    }
    QRect rect() const override
    {
        const QHeaderView *cabecalho = m_lista->header();
        const QRect lugar(cabecalho->sectionViewportPosition(m_coluna), 0, cabecalho->sectionSize(m_coluna),
                          cabecalho->height());
        return QRect(cabecalho->mapToGlobal(lugar.topLeft()), lugar.size());
    }
    QAccessible::State state() const override
    {
        QAccessible::State estado;
        estado.invisible = Encoberta();
        return estado;
    }
};

class Celula : public Lugar, public QAccessibleTableCellInterface, public QAccessibleActionInterface
{
public:
    Celula(ListaReceitas *lista, int linha, int coluna)
        : Lugar(lista, coluna)
        , m_linha(linha)
    {
    }

    bool isValid() const override { return Lugar::isValid() && m_linha < m_lista->model()->rowCount(); }
    QAccessible::Role role() const override { return QAccessible::Cell; }
    QString text(QAccessible::Text qual) const override
    {
        return qual == QAccessible::Name && isValid() ? Indice().data(Qt::DisplayRole).toString() : QString();
    }
    QRect rect() const override { return isValid() ? NaTela(m_lista->visualRect(Indice())) : QRect(); }
    QAccessible::State state() const override
    {
        QAccessible::State estado;
        if (!isValid()) {
            estado.invalid = true;
            return estado;
        }
        const QRect noVisor = m_lista->visualRect(Indice());
        estado.invisible = Encoberta();
        estado.offscreen = estado.invisible || !noVisor.intersects(m_lista->viewport()->rect());
        estado.selectable = estado.multiSelectable = estado.focusable = true;
        estado.selected = m_lista->selectionModel()->isSelected(Indice());
        estado.focused = m_lista->hasFocus() && m_lista->currentIndex() == Indice();
        return estado;
    }
    void *interface_cast(QAccessible::InterfaceType tipo) override
    {
        if (tipo == QAccessible::TableCellInterface)
            return static_cast<QAccessibleTableCellInterface *>(this);
        if (tipo == QAccessible::ActionInterface)
            return static_cast<QAccessibleActionInterface *>(this);
        return nullptr;
    }

    int columnExtent() const override { return 1; }
    QList<QAccessibleInterface *> columnHeaderCells() const override { return {parent()->child(m_coluna)}; }
    int columnIndex() const override { return m_coluna; }
    bool isSelected() const override { return isValid() && m_lista->selectionModel()->isSelected(Indice()); }
    int rowExtent() const override { return 1; }
    QList<QAccessibleInterface *> rowHeaderCells() const override { return {}; }
    int rowIndex() const override { return m_linha; }
    QAccessibleInterface *table() const override { return parent(); }

    QStringList actionNames() const override { return {kAbrir, toggleAction(), showMenuAction()}; }
    QString localizedActionName(const QString &nome) const override
    {
        if (nome == kAbrir)
            return QStringLiteral("Abrir");
        return nome == toggleAction() ? QStringLiteral("Selecionar") : QStringLiteral("Menu da receita");
    }
    QString localizedActionDescription(const QString &nome) const override
    {
        if (nome == kAbrir)
            return QStringLiteral("Mostra o cartão da receita");
        return nome == toggleAction() ? QStringLiteral("Marca ou desmarca a receita")
                                      : QStringLiteral("Abre o menu da receita");
    }
    QStringList keyBindingsForAction(const QString &nome) const override
    {
        return nome == kAbrir ? QStringList{QStringLiteral("Return")} : QStringList{};
    }
    void doAction(const QString &nome) override
    {
        // From the event loop: what opens a card or a menu does not return before it is done.
        const QPersistentModelIndex indice = Indice();
        ListaReceitas *lista = m_lista;
        QMetaObject::invokeMethod(
            lista,
            [lista, indice, nome] {
                if (!indice.isValid() || !lista->isVisible())
                    return;
                if (nome == toggleAction()) {
                    lista->selectionModel()->select(indice,
                                                    QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
                    return;
                }
                lista->selectionModel()->setCurrentIndex(indice, QItemSelectionModel::ClearAndSelect |
                                                                     QItemSelectionModel::Rows);
                lista->scrollTo(indice);
                if (nome == kAbrir)
                    emit lista->abrirPedido();
                else if (nome == showMenuAction())
                    lista->PedirMenuPeloTeclado();
            },
            Qt::QueuedConnection);
    }

private:
    QModelIndex Indice() const { return m_lista->model()->index(m_linha, m_coluna); }

    int m_linha;
};
} // namespace

void ListaAcessivel::Instalar()
{
    static const bool instalada = [] {
        QAccessible::installFactory([](const QString &classe, QObject *objeto) -> QAccessibleInterface * {
            return classe == u"ListaReceitas" ? new ListaAcessivel(static_cast<ListaReceitas *>(objeto)) : nullptr;
        });
        return true;
    }();
    Q_UNUSED(instalada);
}

ListaAcessivel::ListaAcessivel(ListaReceitas *lista)
    : QAccessibleWidget(lista, QAccessible::Table)
{
}

ListaAcessivel::~ListaAcessivel()
{
    for (const QAccessible::Id id : std::as_const(m_filhos))
        QAccessible::deleteAccessibleInterface(id);
}

ListaReceitas *ListaAcessivel::Lista() const
{
    return static_cast<ListaReceitas *>(widget());
}

int ListaAcessivel::childCount() const
{
    return (rowCount() + 1) * columnCount();
}

QAccessibleInterface *ListaAcessivel::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    if (const auto conhecido = m_filhos.constFind(index); conhecido != m_filhos.constEnd())
        return QAccessible::accessibleInterface(*conhecido);
    const int coluna = index % columnCount();
    const int linha = index / columnCount() - 1;
    QAccessibleInterface *filho = nullptr;
    if (linha < 0)
        filho = new Cabeca(Lista(), coluna);
    else
        filho = new Celula(Lista(), linha, coluna);
    m_filhos.insert(index, QAccessible::registerAccessibleInterface(filho));
    return filho;
}

int ListaAcessivel::indexOfChild(const QAccessibleInterface *filho) const
{
    return m_filhos.key(QAccessible::uniqueId(const_cast<QAccessibleInterface *>(filho)), -1);
}

QAccessibleInterface *ListaAcessivel::childAt(int x, int y) const
{
    const QModelIndex indice = Lista()->indexAt(Lista()->viewport()->mapFromGlobal(QPoint(x, y)));
    return indice.isValid() ? cellAt(indice.row(), indice.column()) : nullptr;
}

QAccessibleInterface *ListaAcessivel::focusChild() const
{
    const QModelIndex atual = Lista()->currentIndex();
    return Lista()->hasFocus() && atual.isValid() ? cellAt(atual.row(), atual.column()) : nullptr;
}

void *ListaAcessivel::interface_cast(QAccessible::InterfaceType tipo)
{
    if (tipo == QAccessible::TableInterface)
        return static_cast<QAccessibleTableInterface *>(this);
    return QAccessibleWidget::interface_cast(tipo);
}

QAccessibleInterface *ListaAcessivel::cellAt(int row, int column) const
{
    if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount())
        return nullptr;
    return child((row + 1) * columnCount() + column);
}

int ListaAcessivel::selectedCellCount() const
{
    return selectedRowCount() * columnCount();
}

QList<QAccessibleInterface *> ListaAcessivel::selectedCells() const
{
    QList<QAccessibleInterface *> celulas;
    for (const int linha : selectedRows()) {
        for (int coluna = 0; coluna < columnCount(); ++coluna)
            celulas += cellAt(linha, coluna);
    }
    return celulas;
}

QString ListaAcessivel::columnDescription(int column) const
{
    return Lista()->model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
}

int ListaAcessivel::selectedRowCount() const
{
    return static_cast<int>(Lista()->LinhasSelecionadas().size());
}

int ListaAcessivel::columnCount() const
{
    return Lista()->model()->columnCount();
}

int ListaAcessivel::rowCount() const
{
    return Lista()->model()->rowCount();
}

QList<int> ListaAcessivel::selectedRows() const
{
    return Lista()->LinhasSelecionadas();
}

bool ListaAcessivel::isRowSelected(int row) const
{
    return Lista()->selectionModel()->isRowSelected(row, {});
}

bool ListaAcessivel::selectRow(int row)
{
    if (row < 0 || row >= rowCount())
        return false;
    Lista()->selectionModel()->select(Lista()->model()->index(row, 0),
                                      QItemSelectionModel::Select | QItemSelectionModel::Rows);
    return true;
}

bool ListaAcessivel::unselectRow(int row)
{
    if (row < 0 || row >= rowCount())
        return false;
    Lista()->selectionModel()->select(Lista()->model()->index(row, 0),
                                      QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
    return true;
}

// Places are numbered anew; who asks gets them anew.
void ListaAcessivel::modelChange(QAccessibleTableModelChangeEvent *)
{
    for (const QAccessible::Id id : std::as_const(m_filhos))
        QAccessible::deleteAccessibleInterface(id);
    m_filhos.clear();
}
