#include "browse/Exclusao.h"

#include "base/Avisos.h"
#include "base/Operacao.h"
#include "base/Telas.h"
#include "browse/ExcluirReceita.h"
#include "browse/PainelLista.h"
#include "store/Banco.h"

bool Exclusao::ExcluirDaTela(qint64 lngReceita)
{
    const Operacao operacao(Operacao::Tipo::Exclusao);
    if (!m_avisos.Perguntar("Confirma Exclusão dessa Receita?"))
        return false;
    m_banco.AntesDeMudar({lngReceita});
    ExcluirReceita(m_banco, lngReceita);
    m_telas.FecharDetalhe();
    m_lista.ManterLugar();
    m_lista.imgLstRcta_Click();
    return true;
}
