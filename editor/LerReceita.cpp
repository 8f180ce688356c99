#include "editor/LerReceita.h"

#include "editor/LinhaIngrediente.h"
#include "store/LeitorDeReceitas.h"

namespace
{
QString VazioSeZero(const QString &valor)
{
    return valor == "0" ? QString() : valor;
}
} // namespace

ReceitaLida LerParaATela(const Banco &banco, qint64 lngReceita)
{
    const Receita receita = LerReceita(banco, lngReceita);
    ReceitaLida lida;
    ReceitaNaTela &tela = lida.tela;
    tela.txtNroReceita = QString::number(lngReceita);
    tela.txtOrigem = receita.Origem;
    tela.txtNome = receita.Nome;
    tela.cmbTipo = receita.Classificacao;
    tela.txtModo = receita.Modo;
    tela.txtObs = receita.Observacao;
    tela.txtPorcoes = VazioSeZero(receita.Porcoes);
    tela.optPorcao = receita.Tipo_Calorias == "P";
    tela.optReceita = !receita.Tipo_Calorias.isNull() && !tela.optPorcao;
    tela.txtCalorias = VazioSeZero(receita.Calorias);
    tela.txtPreparo = receita.Preparo;
    tela.txtTipoRect = receita.Tipo;
    lida.figura = receita.Figura;
    for (const LinhaDaReceita &linha : receita.Ingredientes)
        tela.ingredientes += LinhaIngrediente::De(linha.Quantidade, linha.Unidade, linha.Ingrediente).Tag();
    return lida;
}
