#include "editor/LerReceita.h"

#include "editor/LinhaIngrediente.h"
#include "store/Banco.h"
#include "store/Comandos.h"

namespace
{
QString VazioSeZero(const QString &valor)
{
    return valor == "0" ? QString() : valor;
}
} // namespace

ReceitaLida LerReceita(const Banco &banco, qint64 lngReceita)
{
    ReceitaLida lida;
    EstadoDaTela &tela = lida.tela;

    const RecordSet rs = banco.AbrirRecordset(Comandos::SqlReceita(lngReceita));
    tela.txtNroReceita = QString::number(lngReceita);
    tela.txtOrigem = rs.Texto(u"Origem");
    tela.txtNome = rs.Texto(u"Nome");
    tela.cmbTipo = rs.Texto(u"Classificacao");
    tela.txtModo = rs.Texto(u"modo");
    tela.txtObs = rs.Texto(u"Observacao");
    tela.txtPorcoes = VazioSeZero(rs.Texto(u"Porcoes"));
    const QVariant tipoCalorias = rs.Valor(u"Tipo_Calorias");
    tela.optPorcao = tipoCalorias.isValid() && tipoCalorias.toString() == "P";
    tela.optReceita = tipoCalorias.isValid() && !tela.optPorcao;
    tela.txtCalorias = VazioSeZero(rs.Texto(u"Calorias"));
    tela.txtPreparo = rs.Texto(u"Preparo");
    tela.txtTipoRect = rs.Texto(u"Tipo");
    lida.figura = rs.Texto(u"Figura");

    for (RecordSet linhas = banco.AbrirRecordset(Comandos::SqlIngredientes(lngReceita)); !linhas.Eof();
         linhas.MoveNext()) {
        tela.ingredientes += LinhaIngrediente::De(linhas.Texto(u"Quantidade"), linhas.Texto(u"Unidade"),
                                                  linhas.Texto(u"Ingrediente"))
                                 .Tag();
    }
    return lida;
}
