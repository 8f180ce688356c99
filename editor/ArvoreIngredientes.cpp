#include "editor/ArvoreIngredientes.h"

#include <QKeyEvent>

ArvoreIngredientes::ArvoreIngredientes(QWidget *parent)
    : QTreeWidget(parent)
{
    setObjectName("TrVwIngredientes");
    setToolTip(
        "Clique uma vez no ingrediente para alterar ou selecione o ingrediente e tecle [DEL] para excluir.");
    setAccessibleName("Ingredientes da Receita");
    setHeaderHidden(true);
    setColumnCount(1);
    setIndentation(14);
    setUniformRowHeights(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // a long line ends in "..." and shows whole below
    setExpandsOnDoubleClick(false);
    setTabKeyNavigation(false);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    connect(this, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem *no) { emit noEscolhido(no); });
    Esvaziar();
}

void ArvoreIngredientes::Esvaziar()
{
    clear();
    auto *raiz = new QTreeWidgetItem(this, {kTextoRaiz});
    raiz->setData(0, kPapelChave, kChaveRaiz);
    QFont fonte = font();
    fonte.setBold(true);
    raiz->setFont(0, fonte);
    raiz->setExpanded(true);
}

QTreeWidgetItem *ArvoreIngredientes::Adicionar(const LinhaIngrediente &linha)
{
    const QTreeWidgetItem *ultimo = Linhas() > 0 ? Raiz()->child(Linhas() - 1) : Raiz();
    const QString chave = ProximaChave(ultimo->data(0, kPapelChave).toString());
    auto *no = new QTreeWidgetItem;
    no->setData(0, kPapelChave, chave);
    Definir(*no, linha);
    Raiz()->addChild(no);
    scrollToItem(no);
    return no;
}

void ArvoreIngredientes::Definir(const QStringList &tags)
{
    Esvaziar();
    QString chave = kChaveRaiz;
    QList<QTreeWidgetItem *> nos;
    nos.reserve(tags.size());
    for (const QString &tag : tags) {
        chave = ProximaChave(chave);
        auto *no = new QTreeWidgetItem;
        no->setData(0, kPapelChave, chave);
        Definir(*no, LinhaIngrediente::DoTag(tag));
        nos += no;
    }
    Raiz()->addChildren(nos);
    scrollToTop();
}

void ArvoreIngredientes::Definir(QTreeWidgetItem &no, const LinhaIngrediente &linha)
{
    no.setText(0, linha.Texto());
    no.setData(0, kPapelTag, linha.Tag());
}

QStringList ArvoreIngredientes::Tags() const
{
    QStringList tags;
    for (int i = 0; i < Linhas(); ++i)
        tags += Raiz()->child(i)->data(0, kPapelTag).toString();
    return tags;
}

void ArvoreIngredientes::keyPressEvent(QKeyEvent *event)
{
    QTreeWidgetItem *no = selectedItems().value(0);
    switch (event->key()) {
    case Qt::Key_Delete:
        if (no)
            emit remocaoPedida(no);
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (no)
            emit noEscolhido(no);
        return;
    default:
        QTreeWidget::keyPressEvent(event);
    }
}
