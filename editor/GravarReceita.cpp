#include "editor/GravarReceita.h"

#include "base/Relogio.h"
#include "editor/EstadoFigura.h"
#include "editor/LinhaIngrediente.h"
#include "store/Banco.h"
#include "store/Figuras.h"

Comandos::Receita ReceitaDaTela(const EstadoDaTela &tela)
{
    Comandos::Receita receita;
    receita.Nome = tela.txtNome;
    receita.Classificacao = tela.cmbTipo;
    receita.Modo = tela.txtModo;
    receita.Porcoes = tela.txtPorcoes;
    receita.Preparo = tela.txtPreparo;
    receita.Calorias = tela.txtCalorias;
    receita.Observacao = tela.txtObs;
    receita.TipoCalorias = tela.optReceita ? 'R' : tela.optPorcao ? 'P' : 0;
    return receita;
}

namespace
{
qint64 Incluir(const Banco &banco, const Figuras &figuras, const Relogio &relogio, const EstadoDaTela &tela)
{
    banco.ExecutarSQL(Comandos::SqlInserirReceita(ReceitaDaTela(tela), relogio.Hoje()));
    const qint64 lngReceita = banco.AbrirRecordset(Comandos::SqlMaiorNumero()).Valor(0).toLongLong();
    if (tela.imgFigura != EstadoFigura::kNada) {
        banco.ExecutarSQL(Comandos::SqlGravarFigura(lngReceita));
        figuras.CopiarFigura(tela.imgFigura, lngReceita);
    }
    return lngReceita;
}

qint64 Alterar(const Banco &banco, const Figuras &figuras, const EstadoDaTela &tela)
{
    const qint64 lngReceita = tela.txtNroReceita.toLongLong();
    Comandos::Figura figura = Comandos::Figura::Mantida;
    if (EstadoFigura::Nova(tela.imgFigura)) {
        figura = Comandos::Figura::Nova;
        figuras.CopiarFigura(tela.imgFigura, lngReceita);
    } else if (tela.imgFigura == EstadoFigura::kNada) {
        // While the row still names the file: afterwards nobody would know which one to remove.
        figura = Comandos::Figura::Nenhuma;
        figuras.ApagarFigura(lngReceita);
    }
    banco.ExecutarSQL(Comandos::SqlAlterarReceita(ReceitaDaTela(tela), lngReceita, figura));
    banco.ExecutarSQL(Comandos::SqlExcluirIngredientes(lngReceita));
    return lngReceita;
}
} // namespace

qint64 GravarReceita(const Banco &banco, const Figuras &figuras, const Relogio &relogio,
                     const EstadoDaTela &tela)
{
    const qint64 lngReceita =
        tela.txtNroReceita.isEmpty() ? Incluir(banco, figuras, relogio, tela) : Alterar(banco, figuras, tela);
    for (const QString &tag : tela.ingredientes) {
        const LinhaIngrediente linha = LinhaIngrediente::DoTag(tag);
        banco.ExecutarSQL(
            Comandos::SqlInserirIngrediente(lngReceita, linha.ingrediente, linha.quantidade, linha.unidade));
    }
    return lngReceita;
}
