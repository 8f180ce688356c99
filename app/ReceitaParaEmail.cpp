#include "app/ReceitaParaEmail.h"

#include "editor/EstadoDaTela.h"

#include <QAbstractItemView>
#include <QItemSelectionModel>

#include <algorithm>

ReceitaNaTela ReceitaParaEmail(const EstadoDaTela &tela)
{
    ReceitaNaTela receita;
    receita.txtNome = tela.txtNome;
    receita.txtOrigem = tela.txtOrigem;
    receita.cmbTipo = tela.cmbTipo;
    receita.txtPreparo = tela.txtPreparo;
    receita.txtPorcoes = tela.txtPorcoes;
    receita.txtCalorias = tela.txtCalorias;
    receita.optPorcao = tela.optPorcao;
    receita.optReceita = tela.optReceita;
    receita.txtModo = tela.txtModo;
    receita.txtObs = tela.txtObs;
    receita.TrVwIngredientes = tela.ingredientes;
    receita.txtNroReceita = tela.txtNroReceita;
    receita.txtTipoRect = tela.txtTipoRect;
    receita.temFigura = tela.figuraMostrada;
    receita.tagFigura = tela.imgFigura;
    return receita;
}

QList<ReceitaSelecionada> SelecionadasPara(const QAbstractItemView &lstVwReceitas)
{
    QModelIndexList linhas = lstVwReceitas.selectionModel()->selectedRows();
    std::sort(linhas.begin(), linhas.end());
    QList<ReceitaSelecionada> selecionadas;
    for (const QModelIndex &linha : std::as_const(linhas))
        selecionadas += {linha.data(Qt::UserRole).toString().mid(1).toLongLong(),
                         linha.data(Qt::UserRole + 1).toString()};
    return selecionadas;
}
