#include "editor/QuadroIngredientes.h"

#include "base/Avisos.h"
#include "base/Protegido.h"
#include "editor/ArvoreIngredientes.h"
#include "editor/Colagem.h"
#include "editor/ComboCompletavel.h"
#include "editor/Rotulo.h"

#include <QGridLayout>
#include <QPushButton>

QuadroIngredientes::QuadroIngredientes(Avisos &avisos, bool &blnApagandoCombo, QWidget *parent)
    : QGroupBox(" Ingredientes : ", parent)
    , m_avisos(avisos)
    , m_txtQtde(new CampoTexto("txtQtde"))
    , m_cmbMedida(new ComboCompletavel("cmbMedida", 20, blnApagandoCombo))
    , m_cmbIngrediente(new ComboCompletavel("cmbIngrediente", 40, blnApagandoCombo))
    , m_cmdSalvarIngredientes(new QPushButton("Salvar &Dados"))
    , m_cmdLimparDados(new QPushButton("&Limpar"))
    , m_arvore(new ArvoreIngredientes)
{
    setObjectName("fraIngredientes");

    m_txtQtde->setMaxLength(kLimiteQtde);
    ManterEmUmaLinha(*m_txtQtde);
    Descrever(*m_txtQtde, "Quantidade do Ingrediente");
    Descrever(*m_cmbMedida, "Medida da Quantidade do Ingrediente");
    Descrever(*m_cmbIngrediente, "Nome do Ingrediente");
    m_cmdSalvarIngredientes->setObjectName("cmdSalvarIngredientes");
    Descrever(*m_cmdSalvarIngredientes, "Salva Informações do Ingrediente");
    m_cmdLimparDados->setObjectName("cmdLimparDados");
    Descrever(*m_cmdLimparDados, "Limpar Campos do Ingrediente");

    for (QWidget *campo : std::initializer_list<QWidget *>{m_txtQtde, m_cmbMedida, m_cmbIngrediente}) {
        campo->setFixedHeight(kAlturaCampo);
        EncherColuna(*campo);
    }
    EncherColuna(*m_arvore);
    m_cmdSalvarIngredientes->setFixedHeight(kAlturaBotao);
    m_cmdLimparDados->setFixedHeight(kAlturaBotao);

    auto *grade = new QGridLayout(this);
    grade->setContentsMargins(kMargemQuadro);
    grade->setHorizontalSpacing(kEspaco);
    grade->setVerticalSpacing(kEspaco);
    grade->addWidget(NovoRotulo("Qtde.:", m_txtQtde), 0, 0);
    grade->addWidget(m_txtQtde, 0, 1);
    grade->addWidget(NovoRotulo("Medida :", m_cmbMedida), 0, 2);
    grade->addWidget(m_cmbMedida, 0, 3);
    grade->addWidget(NovoRotulo("Ingrediente :", m_cmbIngrediente), 1, 0);
    grade->addWidget(m_cmbIngrediente, 1, 1, 1, 3);
    auto *botoes = new QHBoxLayout;
    botoes->setSpacing(kEspaco);
    botoes->addStretch();
    botoes->addWidget(m_cmdLimparDados);
    botoes->addWidget(m_cmdSalvarIngredientes);
    grade->addLayout(botoes, 2, 0, 1, 4);
    grade->addWidget(m_arvore, 3, 0, 1, 4);
    grade->setRowStretch(3, 1);
    grade->setColumnStretch(1, 1);
    grade->setColumnStretch(3, 3);

    connect(m_cmdSalvarIngredientes, &QPushButton::clicked, this, Protegido(m_avisos, [this] { Salvar(); }));
    connect(m_cmdLimparDados, &QPushButton::clicked, this, Protegido(m_avisos, [this] { Abandonar(); }));
    connect(m_arvore, &ArvoreIngredientes::noEscolhido, this, &QuadroIngredientes::Escolher);
    connect(m_arvore, &ArvoreIngredientes::remocaoPedida, this, &QuadroIngredientes::Remover);

    EsquecerLinhaEmEdicao();
}

void QuadroIngredientes::DefinirValores(std::shared_ptr<FonteDeItens> ingredientes,
                                        std::shared_ptr<FonteDeItens> unidades)
{
    m_cmbIngrediente->DefinirFonte(std::move(ingredientes));
    m_cmbMedida->DefinirFonte(std::move(unidades));
}

void QuadroIngredientes::DefinirLinhas(const QStringList &tags)
{
    EsquecerLinhaEmEdicao();
    m_arvore->Definir(tags);
}

QStringList QuadroIngredientes::Linhas() const
{
    return m_arvore->Tags();
}

QStringList QuadroIngredientes::LinhasComADigitada() const
{
    QStringList linhas = Linhas();
    const LinhaIngrediente digitada =
        LinhaIngrediente::De(m_txtQtde->text(), m_cmbMedida->currentText(), m_cmbIngrediente->currentText());
    // A line that is shown for mending stands among the others as it was.
    if (!digitada.Texto().trimmed().isEmpty() && !linhas.contains(digitada.Tag()))
        linhas += digitada.Tag();
    return linhas;
}

void QuadroIngredientes::EsquecerLinhaEmEdicao()
{
    m_linhaEmEdicao = nullptr;
    m_cmbIngrediente->DefinirTexto(QString());
    DefinirTextoInteiro(*m_txtQtde, QString(), kLimiteQtde);
    m_cmbMedida->DefinirTexto(QString());
    m_cmdLimparDados->hide();
}

void QuadroIngredientes::FocarIngrediente()
{
    m_cmbIngrediente->setFocus();
}

void QuadroIngredientes::Apontar(qsizetype i)
{
    QTreeWidgetItem *no = m_arvore->Linha(static_cast<int>(i));
    if (!no)
        return;
    m_arvore->setCurrentItem(no);
    m_arvore->scrollToItem(no);
    const bool vazio = m_txtQtde->text().isEmpty() && m_cmbMedida->currentText().isEmpty() &&
                       m_cmbIngrediente->currentText().isEmpty();
    if (!vazio) {
        m_arvore->setFocus();
        return;
    }
    Escolher(no);
    m_txtQtde->setFocus();
}

void QuadroIngredientes::Salvar()
{
    // An access key leaves the focus where it is. A box that has lost it was cut then, and one that never had
    // it holds what an older book stored, whole.
    for (ComboCompletavel *combo : {m_cmbIngrediente, m_cmbMedida})
        if (combo->TemFoco())
            combo->CortarNoLimite();
    const LinhaIngrediente linha =
        LinhaIngrediente::De(m_txtQtde->text(), m_cmbMedida->currentText(), m_cmbIngrediente->currentText());
    if (linha.ingrediente.isEmpty()) {
        m_avisos.Avisar("Por Favor, Informe o Ingrediente!", Avisos::Icone::Exclamacao);
        FocarIngrediente();
        return;
    }
    if (m_linhaEmEdicao)
        ArvoreIngredientes::Definir(*m_linhaEmEdicao, linha);
    else
        m_arvore->Adicionar(linha);
    m_cmbIngrediente->LembrarValor(linha.ingrediente);
    m_cmbMedida->LembrarValor(linha.unidade);
    Abandonar();
}

void QuadroIngredientes::Abandonar()
{
    EsquecerLinhaEmEdicao();
    FocarIngrediente();
}

void QuadroIngredientes::Escolher(QTreeWidgetItem *no)
{
    EsquecerLinhaEmEdicao();
    if (!m_arvore->EhRaiz(no)) {
        const LinhaIngrediente linha =
            LinhaIngrediente::DoTag(no->data(0, ArvoreIngredientes::kPapelTag).toString());
        m_cmbIngrediente->DefinirTexto(linha.ingrediente);
        DefinirTextoInteiro(*m_txtQtde, linha.quantidade, kLimiteQtde);
        m_cmbMedida->DefinirTexto(linha.unidade);
        m_linhaEmEdicao = no;
        m_cmdLimparDados->show();
    }
    FocarIngrediente();
}

void QuadroIngredientes::Remover(QTreeWidgetItem *no)
{
    if (m_arvore->EhRaiz(no)) {
        if (!m_avisos.Perguntar("Confirma Exclusão de Todos os Ingredientes?"))
            return;
        EsquecerLinhaEmEdicao();
        m_arvore->Esvaziar();
    } else {
        if (!m_avisos.Perguntar("Confirma Exclusão desse Ingrediente?"))
            return;
        EsquecerLinhaEmEdicao();
        delete no;
    }
    FocarIngrediente();
}
