#include "editor/QuadroValores.h"

#include "base/CampoTexto.h"
#include "editor/Colagem.h"
#include "store/ReceitaNaTela.h"
#include "editor/Rotulo.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QRadioButton>

QuadroValores::QuadroValores(QWidget *parent)
    : QGroupBox(" Valores de Referência :", parent)
    , m_txtPorcoes(new CampoTexto("txtPorcoes", nullptr, true))
    , m_txtPreparo(new CampoTexto("txtPreparo"))
    , m_txtCalorias(new CampoTexto("txtCalorias", nullptr, true))
    , m_optReceita(new QRadioButton("Receita"))
    , m_optPorcao(new QRadioButton("Porção"))
    , m_base(new QButtonGroup(this))
{
    setObjectName("fraValores");
    Descrever(*m_txtPorcoes, "Número de Rendimentos da Receita");
    Descrever(*m_txtPreparo, "Tempo de Preparo da Receita");
    Descrever(*m_txtCalorias, "Número de Calorias");
    m_txtPorcoes->setMaxLength(kLimitePorcoes);
    m_txtPreparo->setMaxLength(kLimitePreparo);
    m_txtCalorias->setMaxLength(kLimiteCalorias);
    for (CampoTexto *campo : {m_txtPorcoes, m_txtPreparo, m_txtCalorias}) {
        ManterEmUmaLinha(*campo);
        campo->setFixedHeight(kAlturaCampo);
    }
    m_txtPorcoes->setFixedWidth(56);
    // The fields take what the captions leave; their own wishes would push the texts' column aside.
    EncherColuna(*m_txtPreparo);
    EncherColuna(*m_txtCalorias);
    m_optReceita->setObjectName("optReceita");
    Descrever(*m_optReceita, "Total de Calorias por Receita");
    m_optPorcao->setObjectName("optPorcao");
    Descrever(*m_optPorcao, "Total de Calorias por Porção da Receita");
    m_base->addButton(m_optReceita);
    m_base->addButton(m_optPorcao);

    auto *rendimento = new QHBoxLayout;
    rendimento->setSpacing(kEspaco);
    rendimento->addWidget(m_txtPorcoes);
    rendimento->addWidget(NovoRotulo("porção(ões)"));
    rendimento->addStretch();
    auto *calorias = new QHBoxLayout;
    calorias->setSpacing(2 * kEspaco);
    calorias->addWidget(m_optReceita);
    calorias->addWidget(m_optPorcao);
    calorias->addWidget(m_txtCalorias, 1);

    auto *grade = new QGridLayout(this);
    grade->setContentsMargins(kMargemQuadro);
    grade->setHorizontalSpacing(kEspaco);
    grade->setVerticalSpacing(kEspaco);
    grade->addWidget(NovoRotulo("Rendimento :", m_txtPorcoes), 0, 0);
    grade->addLayout(rendimento, 0, 1);
    grade->addWidget(NovoRotulo("Tempo Preparo :", m_txtPreparo), 1, 0);
    grade->addWidget(m_txtPreparo, 1, 1);
    grade->addWidget(NovoRotulo("Calorias da", m_txtCalorias), 2, 0);
    grade->addLayout(calorias, 2, 1);
    grade->setColumnStretch(1, 1);
}

void QuadroValores::Definir(const ReceitaNaTela &tela)
{
    DefinirTextoInteiro(*m_txtPorcoes, tela.txtPorcoes, kLimitePorcoes);
    DefinirTextoInteiro(*m_txtPreparo, tela.txtPreparo, kLimitePreparo);
    DefinirTextoInteiro(*m_txtCalorias, tela.txtCalorias, kLimiteCalorias);
    m_base->setExclusive(false); // an exclusive group does not let go of its last choice
    m_optReceita->setChecked(tela.optReceita);
    m_optPorcao->setChecked(tela.optPorcao);
    m_base->setExclusive(true);
}

void QuadroValores::Ler(ReceitaNaTela &tela) const
{
    tela.txtPorcoes = m_txtPorcoes->text();
    tela.txtPreparo = m_txtPreparo->text();
    tela.txtCalorias = m_txtCalorias->text();
    tela.optReceita = m_optReceita->isChecked();
    tela.optPorcao = m_optPorcao->isChecked();
}

void QuadroValores::FocarPorcoes()
{
    m_txtPorcoes->setFocus();
    m_txtPorcoes->selectAll();
}

void QuadroValores::FocarCalorias()
{
    m_txtCalorias->setFocus();
    m_txtCalorias->selectAll();
}
