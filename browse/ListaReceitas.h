#pragma once

#include <QElapsedTimer>
#include <QTreeView>

class ModeloLista;

/**
 * The list view of the recipes: whole rows, several at once, and what the mouse and the keyboard ask of it as
 * signals. It knows no database.
 */
class ListaReceitas : public QTreeView
{
    Q_OBJECT
public:
    explicit ListaReceitas(ModeloLista &modelo, QWidget *parent = nullptr);

    /// The selected rows, from the first to the last.
    QList<int> LinhasSelecionadas() const;
    /// The row that has the focus, when it is selected; -1 otherwise.
    int LinhaAtual() const;
    /// Selects this row, which gets the focus, and brings it into view; nothing for -1.
    void Marcar(int linha);
    /// Scrolls so that the row `topo` is the first that is seen, and gives the row `atual` the focus without
    /// selecting it; where there are not as many rows any more, the last one.
    void VoltarAoLugar(int topo, int atual);
    /// A line in the middle of the list, as long as it is empty.
    void DefinirDica(const QString &dica);

    /// Asks for the current row's menu, as its key does.
    void PedirMenuPeloTeclado();

    /// Type-ahead: goes to the next recipe whose name begins with what was typed.
    void keyboardSearch(const QString &search) override;

signals:
    void abrirPedido();
    void excluirPedido();
    void menuPedido(const QPoint &global);
    void sobrevoada();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &options,
                 const QModelIndex &index) const override;

private:
    bool ComecarSelecao(const QKeyEvent &tecla);
    void MostrarTextoInteiro(class QHelpEvent *event);

    ModeloLista &m_modelo;
    QString m_dica;
    QString m_procura;
    QElapsedTimer m_ultimaLetra;
};
