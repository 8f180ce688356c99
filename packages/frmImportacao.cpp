#include "packages/frmImportacao.h"

#include "base/Avisos.h"
#include "base/EventosPendentes.h"
#include "base/Fontes.h"
#include "base/LinhaMarcavel.h"
#include "base/Operacao.h"
#include "base/Ponteiro.h"
#include "base/Protegido.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QVBoxLayout>

namespace
{
constexpr auto kPrograma = "Cozinhario 2005";
} // namespace

frmImportacao::frmImportacao(const Banco &banco, const Figuras &figuras, Avisos &avisos,
                             const Relogio &relogio, QWidget *parent)
    : QDialog(parent)
    , m_avisos(avisos)
    , m_importacao(banco, figuras, avisos, relogio)
{
    setObjectName("frmImportacao");
    setWindowTitle(kPrograma);
    setFont(FonteVerdana(8.25));
    CriarControles();
    OrganizarControles();
}

frmImportacao::~frmImportacao() = default;

void frmImportacao::CriarControles()
{
    m_lstImportacao = new QListWidget(this);
    m_lstImportacao->setObjectName("lstImportacao");
    m_lstImportacao->setAccessibleName("Receitas do pacote");
    m_lstImportacao->setToolTip("Clique em uma receita para marcá-la ou desmarcá-la");
    m_lstImportacao->setSelectionMode(QAbstractItemView::MultiSelection);
    m_lstImportacao->setUniformItemSizes(true);
    m_lstImportacao->setItemDelegate(new LinhaMarcavel(m_lstImportacao));

    m_PrgrssBr = new QProgressBar(this);
    m_PrgrssBr->setObjectName("PrgrssBr");
    m_PrgrssBr->setAccessibleName("Andamento da importação");
    m_PrgrssBr->setToolTip("Andamento da importação");
    m_PrgrssBr->setAccessibleDescription("Quantas receitas já entraram");
    m_PrgrssBr->setTextVisible(false); // like the main window's; a percentage would lie on the bar's end
    m_PrgrssBr->hide();

    m_cmdSalvarIngredientes = new QPushButton("&Importar", this);
    m_cmdSalvarIngredientes->setObjectName("cmdSalvarIngredientes");
    m_cmdSalvarIngredientes->setAccessibleName("Importar");
    m_cmdSalvarIngredientes->setToolTip("Cadastra as receitas marcadas");
    m_cmdSalvarIngredientes->setDefault(true);

    m_cmdCancelar = new QPushButton("&Cancelar", this);
    m_cmdCancelar->setObjectName("cmdCancelar");
    m_cmdCancelar->setAccessibleName("Cancelar");
    m_cmdCancelar->setToolTip("Abandona o pacote sem importar nada");
    m_cmdCancelar->setAutoDefault(false);

    connect(m_cmdSalvarIngredientes, &QPushButton::clicked, this,
            Protegido(m_avisos, [this] { Importar(); }));
    connect(m_cmdCancelar, &QPushButton::clicked, this, &frmImportacao::reject);
}

void frmImportacao::OrganizarControles()
{
    auto *lblGeral = new QLabel("Listagem das Receitas Existentes no Pacote :", this);
    lblGeral->setObjectName("lblGeral");
    lblGeral->setAccessibleName("Listagem das Receitas Existentes no Pacote");
    lblGeral->setToolTip("Receitas que o pacote traz");

    auto *botoes = new QHBoxLayout;
    botoes->addStretch();
    botoes->addWidget(m_cmdSalvarIngredientes);
    botoes->addWidget(m_cmdCancelar);

    auto *tudo = new QVBoxLayout(this);
    tudo->addWidget(lblGeral);
    tudo->addWidget(m_lstImportacao, 1);
    tudo->addWidget(m_PrgrssBr);
    tudo->addLayout(botoes);
    resize(440, 360);

    setTabOrder(m_lstImportacao, m_cmdSalvarIngredientes);
    setTabOrder(m_cmdSalvarIngredientes, m_cmdCancelar);
    m_lstImportacao->setFocus();
}

frmImportacao::Desfecho frmImportacao::Executar(const QString &strArquivo)
{
    const Operacao operacao(Operacao::Tipo::Importacao);
    const bool inteiro = Proteger(m_avisos, [&] {
        if (CarregarReceitas(strArquivo))
            exec();
    });
    if (!inteiro)
        m_desfecho = Desfecho::Recusado;
    return m_desfecho;
}

bool frmImportacao::CarregarReceitas(const QString &strArquivo)
{
    m_desfecho = Desfecho::Recusado;
    if (!m_importacao.Carregar(strArquivo))
        return false;
    m_lstImportacao->addItems(m_importacao.Nomes());
    m_lstImportacao->selectAll();
    m_desfecho = Desfecho::Cancelado;
    return true;
}

void frmImportacao::reject()
{
    if (m_estado == Estado::Importando)
        m_importacao.Interromper(); // Importar() ends the dialog
    if (m_estado == Estado::Importando || m_estado == Estado::Terminado)
        return;
    m_importacao.ApagarTrabalho();
    m_desfecho = Desfecho::Cancelado;
    QDialog::reject();
}

void frmImportacao::Importar()
{
    if (m_estado == Estado::Importando || m_estado == Estado::Terminado)
        return;
    const bool comeca = m_estado == Estado::Escolhendo;
    m_estado = Estado::Importando;
    // Whatever is thrown on the way, the dialog can be left.
    auto soltar = qScopeGuard([this] { m_estado = Estado::EmPausa; });

    EsperaLonga espera;
    m_lstImportacao->setEnabled(false);
    m_PrgrssBr->show();
    DeixarEventosRodarem();
    if (comeca) {
        m_cmdCancelar->setToolTip("Para a importação; o que já entrou fica no livro");
        m_PrgrssBr->setMaximum(m_lstImportacao->count());
        m_PrgrssBr->setValue(0);
    }
    const ImportacaoDoPacote::Fim fim =
        m_importacao.Importar([this](int i) { return m_lstImportacao->item(i)->isSelected(); },
                              [this](int i) { m_PrgrssBr->setValue(i); });
    if (fim == ImportacaoDoPacote::Fim::EmPausa)
        return;

    soltar.dismiss();
    m_estado = Estado::Terminado;
    m_importacao.ApagarTrabalho();
    if (fim == ImportacaoDoPacote::Fim::Interrompida) {
        m_desfecho = Desfecho::Cancelado;
        QDialog::reject();
        return;
    }
    m_PrgrssBr->setValue(m_PrgrssBr->maximum());
    m_desfecho = Desfecho::Importado;
    m_importacao.Concluir();
    espera.Encerrar();
    accept();
}
