#include "browse/Exclusao.h"

#include "base/Avisos.h"
#include "base/Telas.h"
#include "browse/ExcluirReceita.h"
#include "browse/PainelLista.h"

bool Exclusao::ExcluirDaTela(qint64 lngReceita)
{
    if (!m_avisos.Perguntar("Confirma Exclusão dessa Receita?"))
        return false;
    ExcluirReceita(m_banco, lngReceita);
    m_telas.FecharTela();
    m_lista.imgLstRcta_Click();
    return true;
}
