#pragma once

#include "mail/ReceitaNaTela.h"
#include "packages/Exportacao.h"

struct EstadoDaTela;
class QAbstractItemView;

/// The editor's controls as the e-mail wants them.
ReceitaNaTela ReceitaParaEmail(const EstadoDaTela &tela);

/// The list's selected rows, in list order, as the package export wants them.
QList<ReceitaSelecionada> SelecionadasPara(const QAbstractItemView &lstVwReceitas);
