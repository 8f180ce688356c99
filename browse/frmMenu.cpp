#include "browse/frmMenu.h"

#include <QMenu>

namespace
{
QAction *Item(QMenu *menu, const QString &nome, const QString &texto, const QString &dica)
{
    QAction *acao = menu->addAction(texto);
    acao->setObjectName(nome);
    acao->setToolTip(dica);
    return acao;
}

void Separador(QMenu *menu, const QString &nome)
{
    menu->addSeparator()->setObjectName(nome);
}
} // namespace

frmMenu::frmMenu(QWidget *parent)
    : QWidget(parent)
    , mnuPopUp(new QMenu(this))
{
    setObjectName("frmMenu");
    hide();
    mnuPopUp->setObjectName("mnuPopUp");
    mnuPopUp->setAccessibleName("Menu da receita");
    mnuConsultarReceita =
        Item(mnuPopUp, "mnuConsultarReceita", "&Consultar Receita", "Abrir o cartão da receita");
    mnuAlterarReceita =
        Item(mnuPopUp, "mnuAlterarReceita", "&Alterar Receita", "Abrir a receita para alteração");
    Separador(mnuPopUp, "mnuNada2");
    mnuImprimirReceita = Item(mnuPopUp, "mnuImprimirReceita", "&Imprimir Receita", "Imprimir a receita");
    Separador(mnuPopUp, "mnuNada");
    mnuExcluirReceita = Item(mnuPopUp, "mnuExcluirReceita", "&Excluir Receita", "Excluir a receita");
    connect(mnuPopUp, &QMenu::aboutToShow, this, [this] { m_aberto.emplace(Operacao::Tipo::Menu); });
    connect(mnuPopUp, &QMenu::aboutToHide, this, [this] { m_aberto.reset(); });
}
