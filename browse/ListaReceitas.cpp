#include "browse/ListaReceitas.h"

#include "base/Fontes.h"
#include "base/Twips.h"
#include "browse/CabecalhoLista.h"
#include "browse/ModeloLista.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <algorithm>

namespace
{
constexpr int kLarguras[] = {4170, 1551, 1651, 1000, 601}; // twips
constexpr int kIcone = 14;

/// Keeps the icon's place in rows without one, so that the names stand in one column.
class DelegadoLista : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return QStyledItemDelegate::sizeHint(option, index).expandedTo(QSize(0, 20));
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (index.column() != LinhasLista::Nome)
            return;
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->decorationSize = QSize(kIcone, kIcone);
    }
};
} // namespace

ListaReceitas::ListaReceitas(ModeloLista &modelo, QWidget *parent)
    : QTreeView(parent)
    , m_modelo(modelo)
{
    setObjectName("lstVwReceitas");
    setToolTip("Listagem das Receitas Cadastradas");
    setAccessibleName("Receitas");
    setFont(FonteVerdana(8.25));
    auto *cabecalho = new CabecalhoLista(this);
    setHeader(cabecalho);
    setModel(&modelo);
    cabecalho->setSectionsClickable(true); // the view has taken it for granted that it does not sort
    setItemDelegate(new DelegadoLista(this));

    setRootIsDecorated(false);
    setItemsExpandable(false);
    setExpandsOnDoubleClick(false);
    setIndentation(0);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setIconSize(QSize(kIcone, kIcone));
    setTextElideMode(Qt::ElideRight);
    setMouseTracking(true);
    for (int coluna = 0; coluna < LinhasLista::kColunas; ++coluna)
        cabecalho->resizeSection(coluna, TwipsParaPixels(kLarguras[coluna]));
}

QList<int> ListaReceitas::LinhasSelecionadas() const
{
    QList<int> linhas;
    for (const QItemSelectionRange &faixa : selectionModel()->selection()) {
        for (int linha = faixa.top(); linha <= faixa.bottom(); ++linha)
            linhas.append(linha);
    }
    std::sort(linhas.begin(), linhas.end());
    linhas.erase(std::unique(linhas.begin(), linhas.end()), linhas.end());
    return linhas;
}

int ListaReceitas::LinhaAtual() const
{
    const QModelIndex atual = currentIndex();
    return atual.isValid() && selectionModel()->isRowSelected(atual.row()) ? atual.row() : -1;
}

void ListaReceitas::Marcar(int linha)
{
    if (linha < 0)
        return;
    const QModelIndex indice = m_modelo.index(linha, LinhasLista::Nome);
    setCurrentIndex(indice);
    scrollTo(indice);
}

void ListaReceitas::VoltarAoLugar(int topo, int atual)
{
    const int ultima = m_modelo.rowCount() - 1;
    if (ultima < 0)
        return;
    if (atual >= 0)
        selectionModel()->setCurrentIndex(m_modelo.index(std::min(atual, ultima), LinhasLista::Nome),
                                          QItemSelectionModel::NoUpdate);
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(topo);
}

void ListaReceitas::DefinirDica(const QString &dica)
{
    m_dica = m_modelo.rowCount() == 0 ? dica : QString();
    setAccessibleDescription(m_dica);
    viewport()->update();
}

void ListaReceitas::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Delete:
        event->accept();
        emit excluirPedido();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        event->accept();
        if (!event->isAutoRepeat())
            emit abrirPedido();
        return;
    case Qt::Key_Menu:
        event->accept();
        PedirMenuPeloTeclado();
        return;
    case Qt::Key_F10:
        if (event->modifiers() == Qt::ShiftModifier) {
            event->accept();
            PedirMenuPeloTeclado();
            return;
        }
        break;
    default:
        break;
    }
    if (ComecarSelecao(*event)) {
        event->accept();
        return;
    }
    QTreeView::keyPressEvent(event);
}

// A fresh list has a row with the focus that is not selected yet. The key that would leave it selects it
// first: the only result of a search is opened with Down and Enter.
bool ListaReceitas::ComecarSelecao(const QKeyEvent &tecla)
{
    if (tecla.modifiers() & (Qt::ControlModifier | Qt::AltModifier) || m_modelo.rowCount() == 0 ||
        selectionModel()->hasSelection())
        return false;
    const int atual = std::max(currentIndex().row(), 0);
    switch (tecla.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        Marcar(atual);
        return true;
    case Qt::Key_Home:
        Marcar(0);
        return true;
    case Qt::Key_End:
        Marcar(m_modelo.rowCount() - 1);
        return true;
    default:
        return false;
    }
}

void ListaReceitas::PedirMenuPeloTeclado()
{
    QPoint lugar(0, 0);
    if (const QModelIndex atual = currentIndex(); atual.isValid()) {
        scrollTo(atual);
        lugar = visualRect(atual.siblingAtColumn(LinhasLista::Nome)).bottomLeft() + QPoint(2 * kIcone, 0);
    }
    emit menuPedido(viewport()->mapToGlobal(lugar));
}

void ListaReceitas::mouseDoubleClickEvent(QMouseEvent *event)
{
    QTreeView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton)
        emit abrirPedido();
}

void ListaReceitas::mouseReleaseEvent(QMouseEvent *event)
{
    QTreeView::mouseReleaseEvent(event);
    if (event->button() == Qt::RightButton)
        emit menuPedido(event->globalPosition().toPoint());
}

void ListaReceitas::mouseMoveEvent(QMouseEvent *event)
{
    QTreeView::mouseMoveEvent(event);
    emit sobrevoada();
}

void ListaReceitas::contextMenuEvent(QContextMenuEvent *event)
{
    event->accept();
    if (event->reason() ==
        QContextMenuEvent::Keyboard) // the mouse opens the menu when its button is released
        PedirMenuPeloTeclado();
}

void ListaReceitas::keyboardSearch(const QString &search)
{
    if (m_modelo.rowCount() == 0)
        return;
    const bool continua =
        m_ultimaLetra.isValid() && !m_ultimaLetra.hasExpired(QApplication::keyboardInputInterval());
    m_ultimaLetra.start();
    // The same letter again goes on to the next name that begins with it.
    const bool repetida = continua && m_procura == search;
    m_procura = continua && !repetida ? m_procura + search : search;

    const bool daSeguinte = m_procura.size() == search.size();
    const int atual = std::max(currentIndex().row(), 0);
    const bool temAtual = LinhaAtual() >= 0;
    const int linha = m_modelo.Linhas().ProcurarNome(m_procura, atual + (daSeguinte && temAtual ? 1 : 0));
    if (linha >= 0)
        setCurrentIndex(m_modelo.index(linha, LinhasLista::Nome));
}

bool ListaReceitas::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        MostrarTextoInteiro(static_cast<QHelpEvent *>(event));
        return true;
    }
    return QTreeView::viewportEvent(event);
}

// A text that does not fit its column is shown whole; elsewhere the list tells what it is.
void ListaReceitas::MostrarTextoInteiro(QHelpEvent *event)
{
    const QModelIndex indice = indexAt(event->pos());
    const QRect lugar = visualRect(indice);
    if (indice.isValid() && sizeHintForIndex(indice).width() > lugar.width())
        QToolTip::showText(event->globalPos(), "<p>" + indice.data().toString().toHtmlEscaped() + "</p>",
                           viewport(), lugar);
    else
        QToolTip::showText(event->globalPos(), toolTip(), viewport(), lugar);
}

void ListaReceitas::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    if (m_dica.isEmpty() || m_modelo.rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    painter.setFont(FonteVerdana(9));
    painter.drawText(viewport()->rect().adjusted(24, 0, -24, 0), Qt::AlignCenter | Qt::TextWordWrap, m_dica);
}

// A row goes on to the view's edge, behind the last column.
void ListaReceitas::drawRow(QPainter *painter, const QStyleOptionViewItem &options,
                            const QModelIndex &index) const
{
    const auto grupo = hasFocus() ? QPalette::Active : QPalette::Inactive;
    QPalette::ColorRole cor = index.row() % 2 ? QPalette::AlternateBase : QPalette::Base;
    if (selectionModel()->isRowSelected(index.row()))
        cor = QPalette::Highlight;
    const int inicio = header()->length() - header()->offset();
    painter->fillRect(QRect(inicio, options.rect.y(), viewport()->width() - inicio, options.rect.height()),
                      options.palette.color(grupo, cor));
    QTreeView::drawRow(painter, options, index);
}
