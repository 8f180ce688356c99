#include "browse/PainelPesquisa.h"

#include "base/Avisos.h"
#include "base/CampoTexto.h"
#include "base/Comando.h"
#include "base/Fontes.h"
#include "base/Telas.h"
#include "base/Twips.h"
#include "browse/Criterios.h"
#include "browse/LinhasLista.h"
#include "browse/PainelLista.h"
#include "store/Banco.h"
#include "store/ErroBanco.h"
#include "store/EscolhasDoLivro.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace
{
constexpr int kLargura = 9330;
constexpr int kAltura = 3780;

void Apresentar(QWidget *controle, const QString &nome, const QString &dica, const QString &lido)
{
    controle->setObjectName(nome);
    controle->setToolTip(dica);
    controle->setAccessibleName(lido);
    controle->setAccessibleDescription(dica);
}
} // namespace

PainelPesquisa::PainelPesquisa(const Banco &banco, Avisos &avisos, Telas &telas, PainelLista &lista,
                               QWidget *parent)
    : Painel("picPesReceita", parent)
    , m_banco(banco)
    , m_avisos(avisos)
    , m_telas(telas)
    , m_lista(lista)
    , m_conteudo(new QWidget(this))
{
    setAccessibleName("Pesquisa de receitas");
    setMouseTracking(true);
    m_conteudo->setMouseTracking(true);
    m_conteudo->setFont(FonteVerdana(8.25));
    m_conteudo->setGeometry(0, 0, TwipsParaPixels(kLargura), TwipsParaPixels(kAltura));
    CriarCampos();
    Dispor();
    DefinirLugar(0, 0, kLargura, kAltura);
    setFocusProxy(m_txtPesNome);
    connect(m_cmdPesquisa, &QPushButton::clicked, this,
            Comando(m_avisos, m_cmdPesquisa, [this] { cmdPesquisa_Click(); }));
}

void PainelPesquisa::CriarCampos()
{
    m_txtPesNome = new CampoTexto("txtPesNome", m_conteudo);
    Apresentar(m_txtPesNome, "txtPesNome", "Nome da Receita para Pesquisa", "Nome da Receita");
    m_txtPesNome->setMouseTracking(true);
    m_txtPesNome->installEventFilter(this);
    m_cmbPesTipo = new ComboTexto("cmbPesTipo", m_conteudo);
    Apresentar(m_cmbPesTipo, "cmbPesTipo", "Seleção por Tipo de Receita", "Tipo");
    m_cmbPesOrigem = new ComboTexto("cmbPesOrigem", m_conteudo);
    Apresentar(m_cmbPesOrigem, "cmbPesOrigem", "Seleção de Origem ou Pacote da Receita", "Origem / Pacote");
    m_cmbPesIngrediente = new ComboTexto("cmbPesIngrediente", m_conteudo);
    Apresentar(m_cmbPesIngrediente, "cmbPesIngrediente", "Seleção por Ingrediente da Receita", "Ingrediente");
    m_txtPesPreparo = new CampoTexto("txtPesPreparo", m_conteudo);
    Apresentar(m_txtPesPreparo, "txtPesPreparo", "Filtro pelo Tempo de Preparo da Receita", "Tempo Preparo");
    m_txtPesCalorias = new CampoTexto("txtPesCalorias", m_conteudo, true);
    Apresentar(m_txtPesCalorias, "txtPesCalorias", "Filtro pela Quantidade de Calorias da Receita",
               "Até quantas calorias");
    m_chkPesFoto = new QCheckBox("Somente com Imagem", m_conteudo);
    Apresentar(m_chkPesFoto, "chkPesFoto", "Filtro de Receita só com Imagens", "Somente com Imagem");
    m_cmdPesquisa = new QPushButton("Efetuar &Pesquisa", m_conteudo);
    Apresentar(m_cmdPesquisa, "cmdPesquisa", "Executar Pesquisa", "Efetuar Pesquisa");
    for (QWidget *campo :
         std::initializer_list<QWidget *>{m_txtPesNome, m_cmbPesTipo, m_cmbPesOrigem, m_cmbPesIngrediente,
                                          m_txtPesPreparo, m_txtPesCalorias})
        campo->setFixedHeight(24);
    m_cmdPesquisa->setAutoDefault(true); // Enter presses it where it has the focus; fields swallow Enter
}

QLabel *PainelPesquisa::Rotulo(const QString &texto, QWidget *campo)
{
    auto *rotulo = new QLabel(texto, m_conteudo);
    rotulo->setObjectName("lblgeral");
    rotulo->setTextFormat(Qt::PlainText);
    rotulo->setBuddy(campo);
    rotulo->setMouseTracking(true);
    return rotulo;
}

void PainelPesquisa::Dispor()
{
    auto *grade = new QGridLayout(m_conteudo);
    grade->setContentsMargins(22, 22, 22, 20);
    grade->setHorizontalSpacing(10);
    grade->setVerticalSpacing(12);
    grade->setColumnStretch(1, 1);
    grade->setColumnStretch(3, 1);
    constexpr auto kDireita = Qt::AlignRight | Qt::AlignVCenter;

    grade->addWidget(Rotulo("Nome da Receita :", m_txtPesNome), 0, 0, kDireita);
    grade->addWidget(m_txtPesNome, 0, 1, 1, 3);
    grade->addWidget(Rotulo("Tipo :", m_cmbPesTipo), 1, 0, kDireita);
    grade->addWidget(m_cmbPesTipo, 1, 1);
    grade->addWidget(Rotulo("Origem / Pacote :", m_cmbPesOrigem), 1, 2, kDireita);
    grade->addWidget(m_cmbPesOrigem, 1, 3);
    grade->addWidget(Rotulo("Ingrediente :", m_cmbPesIngrediente), 2, 0, kDireita);
    grade->addWidget(m_cmbPesIngrediente, 2, 1, 1, 3);
    grade->addWidget(Rotulo("Tempo Preparo :", m_txtPesPreparo), 3, 0, kDireita);
    grade->addWidget(m_txtPesPreparo, 3, 1);
    grade->addWidget(Rotulo("Até :", m_txtPesCalorias), 3, 2, kDireita);
    auto *calorias = new QHBoxLayout;
    calorias->setSpacing(8);
    calorias->addWidget(m_txtPesCalorias);
    calorias->addWidget(Rotulo("calorias", m_txtPesCalorias));
    grade->addLayout(calorias, 3, 3);
    grade->addWidget(m_chkPesFoto, 4, 1);
    grade->addWidget(m_cmdPesquisa, 4, 3, Qt::AlignRight | Qt::AlignVCenter);
    for (int linha = 0; linha < 5; ++linha)
        grade->setRowStretch(linha, 1);

    const QList<QWidget *> ordem{m_txtPesNome,    m_cmbPesTipo,     m_cmbPesOrigem, m_cmbPesIngrediente,
                                 m_txtPesPreparo, m_txtPesCalorias, m_chkPesFoto,   m_cmdPesquisa};
    for (qsizetype i = 1; i < ordem.size(); ++i)
        setTabOrder(ordem[i - 1], ordem[i]);
}

void PainelPesquisa::mouseMoveEvent(QMouseEvent *event)
{
    Painel::mouseMoveEvent(event);
    m_telas.RestaurarBotoes();
}

bool PainelPesquisa::eventFilter(QObject *objeto, QEvent *event)
{
    if (event->type() == QEvent::MouseMove)
        m_telas.RestaurarBotoes();
    return Painel::eventFilter(objeto, event);
}

void PainelPesquisa::imgPesRcta_Click()
{
    m_telas.RestaurarBotoes();
    DefinirAltura(kRecolhido);
    try {
        PreencherListas();
    } catch (...) {
        DefinirAltura(kAltura); // an open panel must not stay collapsed behind the error's message
        throw;
    }
    m_telas.AbrirTela("PesquisaReceitas");
    if (Rolar(kAltura))
        m_txtPesNome->setFocus();
}

void PainelPesquisa::PreencherListas()
{
    RecarregarCombo(m_cmbPesTipo, Comandos::SqlTiposPesquisa());
    RecarregarCombo(m_cmbPesOrigem, Comandos::SqlOrigensPesquisa());
    RecarregarCombo(m_cmbPesIngrediente, Comandos::SqlNomesDeIngredientes());
}

void PainelPesquisa::RecarregarCombo(ComboTexto *combo, const QString &sql)
{
    const auto aoFalhar = [this](const ErroBanco &erro) {
        m_avisos.Avisar(erro.Mensagem(), Avisos::Icone::Parada);
    };
    combo->DefinirFonte(std::make_shared<EscolhasDoLivro>(m_banco, sql, aoFalhar), true);
}

Comandos::Pesquisa PainelPesquisa::Criterios() const
{
    Comandos::Pesquisa criterios;
    criterios.Nome = m_txtPesNome->text();
    criterios.Tipo = m_cmbPesTipo->currentText();
    criterios.Origem = m_cmbPesOrigem->currentText();
    criterios.Ingrediente = m_cmbPesIngrediente->currentText();
    criterios.ComFigura = m_chkPesFoto->isChecked();
    criterios.Calorias = m_txtPesCalorias->text();
    criterios.Preparo = m_txtPesPreparo->text();
    return criterios;
}

void PainelPesquisa::cmdPesquisa_Click()
{
    const Comandos::Pesquisa criterios = Criterios();
    if (SemCriterios(criterios)) {
        m_avisos.Avisar("Por Favor, Informe no Mínimo uma Informação para Efetuar a Pesquisa!",
                        Avisos::Icone::Informacao);
        return;
    }
    m_lista.DefinirLimite(0);
    m_lista.DefinirLimite(LimiteCalorias(criterios));
    const QString strSQL = Comandos::SqlPesquisa(criterios);
    // The list runs the same statement again: this run only counts, before the list's own check of calories.
    // Its rows are kept for that.
    const RecordSet rs = m_banco.AbrirRecordset(strSQL, LinhasLista::CamposLidos(), Banco::Guardar::Sim);
    if (rs.RecordCount() == 0) {
        // The limit stays set, on purpose: the next fill of the list applies it.
        m_avisos.Avisar("Nenhuma Receita Encontrada com esse(s) Valore(s)!", Avisos::Icone::Parada);
        return;
    }
    m_lista.DefinirConsulta(strSQL);
    m_lista.imgLstRcta_Click();
}
