#include "browse/PainelLista.h"

#include "base/Alcance.h"
#include "base/Comando.h"
#include "base/EventosPendentes.h"
#include "base/OperacaoLonga.h"
#include "base/PainelMensagem.h"
#include "base/Ponteiro.h"
#include "base/Telas.h"
#include "browse/DetalheReceita.h"
#include "browse/ExcluirReceita.h"
#include "browse/ListaReceitas.h"
#include "browse/ModeloLista.h"
#include "browse/PainelCartao.h"
#include "browse/RegraTipo.h"
#include "browse/Selecao.h"
#include "browse/frmMenu.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"

#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QScopeGuard>
#include <QScrollBar>

namespace
{
constexpr int kLinhasPorVez = 4096; // taken over between two looks at the window's events

constexpr auto kVazia = "Nenhuma receita para mostrar.";
constexpr auto kIlegivel = "A lista de receitas não pôde ser lida.";
constexpr auto kLivroVazio =
    "Seu livro ainda não tem receitas. Cadastre a primeira com o botão Nova Receita.";
} // namespace

PainelLista::PainelLista(const PortasLista &portas, QWidget *parent)
    : Painel("picLstReceitas", parent)
    , m_portas(portas)
    , m_modelo(new ModeloLista(this))
    , m_lstVwReceitas(new ListaReceitas(*m_modelo, this))
    , m_menu(new frmMenu(this))
{
    setAccessibleName("Lista de receitas");
    setMouseTracking(true);
    setFocusProxy(m_lstVwReceitas);
    DefinirLugar(0, 0, 9330, 6540);
    CriarImagens();
    MostrarOrdem();

    // What was selected when the key was pressed counts, even if it has to wait for the end of a roll.
    connect(m_lstVwReceitas, &ListaReceitas::abrirPedido, this, [this] {
        if (const QList<qint64> receitas = ReceitasSelecionadas(); !receitas.isEmpty())
            Comandar(m_portas.avisos, m_lstVwReceitas, [=, this] { ConsultarReceita(receitas.first()); });
    });
    connect(m_lstVwReceitas, &ListaReceitas::excluirPedido, this, [this] {
        if (const QList<qint64> receitas = ReceitasSelecionadas(); !receitas.isEmpty())
            Comandar(m_portas.avisos, m_lstVwReceitas, [=, this] { Excluir(receitas); });
    });
    connect(m_lstVwReceitas, &ListaReceitas::menuPedido, this, &PainelLista::AbrirMenu);
    connect(m_lstVwReceitas, &ListaReceitas::sobrevoada, this, [this] { m_portas.telas.RestaurarBotoes(); });
    connect(m_lstVwReceitas->header(), &QHeaderView::sectionClicked, this, &PainelLista::OrdenarPor);
    LigarMenu();
}

// The list's small icons: image 1 marks a recipe that has a picture.
void PainelLista::CriarImagens()
{
    auto *ImgLst = new QLabel(this);
    ImgLst->setObjectName("ImgLst");
    ImgLst->setPixmap(QIcon(":/marcador_foto.svg").pixmap(16, 16));
    ImgLst->hide();
}

void PainelLista::LigarMenu()
{
    const auto ligar = [this](QAction *item, auto acao) {
        connect(item, &QAction::triggered, this, [this, acao] {
            if (const qint64 receita = ReceitaAtual())
                Comandar(m_portas.avisos, m_lstVwReceitas, [=] { acao(receita); });
        });
    };
    ligar(m_menu->mnuConsultarReceita, [this](qint64 receita) { ConsultarReceita(receita); });
    ligar(m_menu->mnuAlterarReceita, [this](qint64 receita) { AlterarReceita(receita); });
    ligar(m_menu->mnuImprimirReceita, [this](qint64 receita) { emit impressaoPedida(receita); });
    ligar(m_menu->mnuExcluirReceita, [this](qint64 receita) { ExcluirPeloMenu(receita); });
}

void PainelLista::resizeEvent(QResizeEvent *event)
{
    Painel::resizeEvent(event);
    m_lstVwReceitas->setGeometry(1, 1, std::max(width() - 2, 0), std::max(height() - 2, 0));
}

void PainelLista::mouseMoveEvent(QMouseEvent *event)
{
    Painel::mouseMoveEvent(event);
    m_portas.telas.RestaurarBotoes();
}

void PainelLista::imgLstRcta_Click()
{
    if (m_blnCarregandoLista)
        return;
    const Operacao operacao(Operacao::Tipo::Preenchimento);
    const QPointer<PainelLista> vivo(this);
    m_blnCarregandoLista = true;
    const auto carregada = qScopeGuard([&vivo] {
        if (PainelLista *painel = vivo)
            painel->m_blnCarregandoLista = false;
    });
    m_portas.telas.RestaurarBotoes();
    if (!isVisibleTo(parentWidget()))
        DefinirAltura(kRecolhido);
    m_portas.telas.AbrirTela("ListaReceitas");
    Preencher();
    if (!vivo || Encerrando())
        return;
    if (Altura() == kRecolhido) {
        Rolar(m_portas.telas.AlturaDeTrabalho());
        if (!vivo || Encerrando())
            return;
    } else {
        DefinirAltura(m_portas.telas.AlturaDeTrabalho());
    }
    if (!Alcance::Encoberto(*m_lstVwReceitas))
        m_lstVwReceitas->setFocus();
}

void PainelLista::Preencher()
{
    // Taken at once: a search that runs in between two steps of this fill sets them for the next one.
    const QString pedida = std::exchange(m_strSQLLista, QString());
    const qint64 limite = std::exchange(m_lngLimiteCalorias, 0);
    RecordSet rs;
    bool aberta = true;
    try {
        rs = m_portas.banco.AbrirRecordset(pedida.isEmpty() ? Comandos::SqlLista() : pedida,
                                           LinhasLista::CamposLidos());
    } catch (const ErroBanco &) {
        // Ignored by promise: the list stays empty.
        aberta = false;
        Ponteiro::Normal();
    }
    const int topo = m_lstVwReceitas->verticalScrollBar()->value();
    const int atual = m_lstVwReceitas->currentIndex().row();
    const qint64 procurada = std::exchange(m_marcada, 0);
    const bool manterLugar = std::exchange(m_manterLugar, false);
    m_lstVwReceitas->DefinirDica("");
    m_modelo->Limpar();

    LinhasLista linhas(rs, limite);
    while (linhas.Tomar(kLinhasPorVez)) {
        DeixarEventosRodarem();
        if (Encerrando())
            return;
    }
    if (m_chave >= 0)
        linhas.Ordenar(static_cast<LinhasLista::Coluna>(m_chave));
    m_modelo->Preencher(std::move(linhas));
    if (!aberta)
        m_lstVwReceitas->DefinirDica(kIlegivel);
    else
        m_lstVwReceitas->DefinirDica(pedida.isEmpty() && rs.RecordCount() == 0 ? kLivroVazio : kVazia);
    if (manterLugar)
        m_lstVwReceitas->VoltarAoLugar(topo, atual);
    if (procurada > 0)
        m_lstVwReceitas->Marcar(m_modelo->Linhas().Linha(procurada));
}

QList<qint64> PainelLista::ReceitasSelecionadas() const
{
    QList<qint64> receitas;
    for (const int linha : m_lstVwReceitas->LinhasSelecionadas())
        receitas.append(m_modelo->Linhas().Receita(linha));
    return receitas;
}

QString PainelLista::NomeDaReceita(qint64 lngReceita) const
{
    const int linha = m_modelo->Linhas().Linha(lngReceita);
    return linha < 0 ? QString() : m_modelo->Linhas().Texto(linha, LinhasLista::Nome);
}

QString PainelLista::SelecaoComoTexto() const
{
    return TextoSelecao(ReceitasSelecionadas());
}

qint64 PainelLista::ReceitaAtual() const
{
    const int linha = m_lstVwReceitas->LinhaAtual();
    return linha < 0 ? 0 : m_modelo->Linhas().Receita(linha);
}

void PainelLista::OrdenarPor(int coluna)
{
    if (coluna <= LinhasLista::Origem) { // the other two columns do not sort
        m_chave = coluna;
        m_modelo->Ordenar(static_cast<LinhasLista::Coluna>(coluna));
    }
    MostrarOrdem();
}

void PainelLista::MostrarOrdem()
{
    QHeaderView *cabecalho = m_lstVwReceitas->header();
    cabecalho->setSortIndicatorShown(m_chave >= 0);
    cabecalho->setSortIndicator(m_chave, Qt::AscendingOrder);
}

void PainelLista::ConsultarReceita(qint64 lngReceita)
{
    m_portas.detalhe.EsquecerLinhaEmEdicao();
    m_portas.detalhe.CarregarDetalheReceita(lngReceita, true);
    m_portas.cartao.CarregarPreviewReceita(lngReceita);
}

void PainelLista::AlterarReceita(qint64 lngReceita)
{
    m_portas.detalhe.CarregarValoresDetalheReceita(0);
    m_portas.detalhe.CarregarDetalheReceita(lngReceita, false);
}

void PainelLista::Excluir(const QList<qint64> &receitas)
{
    const Operacao operacao(Operacao::Tipo::Exclusao);
    if (!m_portas.avisos.Perguntar(receitas.size() == 1 ? "Confirma Exclusão da Receita?"
                                                        : "Confirma Exclusão das Receitas?"))
        return;
    m_manterLugar = true;
    try {
        if (receitas.size() == 1) {
            ExcluirReceita(m_portas.banco, receitas.first());
            m_portas.mensagem.Esconder();
        } else {
            ExcluirVarias(receitas);
        }
    } catch (...) {
        imgLstRcta_Click(); // what was deleted before the failure must not stay on the screen
        throw;
    }
    if (!Encerrando())
        imgLstRcta_Click();
}

void PainelLista::ExcluirVarias(const QList<qint64> &receitas)
{
    OperacaoLonga operacao(m_portas.mensagem, "Efetuando Exclusão das Receitas...",
                           static_cast<int>(receitas.size()));
    for (const qint64 receita : receitas) {
        operacao.Avancar();
        if (Encerrando())
            return;
        ExcluirReceita(m_portas.banco, receita);
    }
    operacao.DefinirValor(operacao.Maximo());
}

void PainelLista::ExcluirPeloMenu(qint64 lngReceita)
{
    const Operacao operacao(Operacao::Tipo::Exclusao);
    if (!m_portas.avisos.Perguntar("Confirma Exclusão da Receita?"))
        return;
    ExcluirReceita(m_portas.banco, lngReceita);
    if (const int linha = m_modelo->Linhas().Linha(lngReceita); linha >= 0)
        m_modelo->Remover(linha);
}

void PainelLista::AbrirMenu(const QPoint &global)
{
    const int linha = m_lstVwReceitas->LinhaAtual();
    if (linha < 0 || m_menu->mnuPopUp->isVisible())
        return;
    m_menu->mnuAlterarReceita->setEnabled(PodeAlterar(m_modelo->Linhas().Tag(linha)));
    m_menu->mnuImprimirReceita->setEnabled(true);
    m_menu->mnuPopUp->popup(global);
}
