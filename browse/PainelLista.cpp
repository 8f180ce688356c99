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
#include "browse/ListaAcessivel.h"
#include "browse/ListaReceitas.h"
#include "browse/ModeloLista.h"
#include "browse/PainelCartao.h"
#include "browse/RegraTipo.h"
#include "browse/Selecao.h"
#include "browse/frmMenu.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/Consulta.h"
#include "store/ErroBanco.h"

#include <QElapsedTimer>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QScopeGuard>
#include <QScrollBar>
#include <QTimer>

namespace
{
constexpr int kLinhasPorVez = 65536;  // taken over between two looks at the window's events
constexpr int kFatiaMs = 8;           // of reading, likewise
constexpr int kFatiaNaRolagemMs = 3;  // a step of the roll has eight
constexpr int kAntesDaRolagemMs = 25; // an ordinary book's list is complete before its panel rolls

constexpr auto kVazia = "Nenhuma receita para mostrar.";
constexpr auto kIlegivel = "A lista de receitas não pôde ser lida.";
constexpr auto kLivroVazio =
    "Seu livro ainda não tem receitas. Cadastre a primeira com o botão Nova Receita.";

ListaReceitas *NovaLista(ModeloLista &modelo, QWidget *parent)
{
    ListaAcessivel::Instalar();
    return new ListaReceitas(modelo, parent);
}
} // namespace

PainelLista::PainelLista(const PortasLista &portas, QWidget *parent)
    : Painel("picLstReceitas", parent)
    , m_portas(portas)
    , m_modelo(new ModeloLista(this))
    , m_lstVwReceitas(NovaLista(*m_modelo, this))
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

PainelLista::~PainelLista() = default;

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
    // A large book goes on filling the list while the panel rolls, in the time that the roll's rhythm leaves.
    const bool vaiRolar = Altura() == kRecolhido;
    ComecarPreenchimento();
    QElapsedTimer relogio;
    relogio.start();
    while (vivo && m_consulta && !(vaiRolar && relogio.hasExpired(kAntesDaRolagemMs)) &&
           !TomarFatia(kFatiaMs))
        DeixarEventosRodarem();
    if (!vivo || Encerrando())
        return;
    if (vaiRolar) {
        QTimer vez;
        connect(&vez, &QTimer::timeout, this, [this] { TomarFatia(kFatiaNaRolagemMs); });
        if (m_consulta)
            vez.start(0);
        Rolar(m_portas.telas.AlturaDeTrabalho());
        vez.stop();
        while (vivo && !Encerrando() && m_consulta && !TomarFatia(kFatiaMs))
            DeixarEventosRodarem();
        if (!vivo || Encerrando())
            return;
    } else {
        DefinirAltura(m_portas.telas.AlturaDeTrabalho());
    }
    if (!Alcance::Encoberto(*m_lstVwReceitas))
        m_lstVwReceitas->setFocus();
}

void PainelLista::ComecarPreenchimento()
{
    // Taken at once: a search that runs in between two steps of this fill sets them for the next one.
    const QString pedida = std::exchange(m_strSQLLista, QString());
    m_limite = std::exchange(m_lngLimiteCalorias, 0);
    m_livroInteiro = pedida.isEmpty();
    try {
        m_consulta = m_portas.banco.AbrirConsulta(m_livroInteiro ? Comandos::SqlLista() : pedida,
                                                  LinhasLista::CamposLidos(), Banco::Guardar::Sim);
        m_consulta->Avancar(kFatiaMs);
    } catch (const ErroBanco &) {
        m_consulta.reset();
        Ponteiro::Normal();
    }
    m_depois = {m_lstVwReceitas->verticalScrollBar()->value(), m_lstVwReceitas->currentIndex().row(),
                std::exchange(m_marcada, 0), std::exchange(m_manterLugar, false)};
    if (m_consulta && m_consulta->Completa() && m_comoPreenchida && m_chaveDoPreenchimento == m_chave &&
        m_modelo->Linhas().Mostra(m_consulta->Linhas(), m_limite)) {
        // The very rows that stand there already: measuring a quarter of a million anew would show the same.
        m_consulta.reset();
        m_lstVwReceitas->selectionModel()->clear();
        m_lstVwReceitas->scrollToTop();
        VoltarAoLugar();
        return;
    }
    m_comoPreenchida = false;
    m_lstVwReceitas->DefinirDica("");
    m_modelo->Limpar();
    if (!m_consulta) {
        m_lstVwReceitas->DefinirDica(kIlegivel); // no message, by promise: the list stays empty
        return;
    }
    // By another column nobody knows which row is the first before the last has come.
    if (m_chave > LinhasLista::Nome)
        return;
    m_modelo->Preencher(LinhasLista(m_consulta->Linhas(), m_limite));
    if (!m_consulta->Completa())
        m_modelo->Tomar(false);
}

/// True when the list is complete.
bool PainelLista::TomarFatia(int ms)
{
    if (!m_consulta)
        return true;
    try {
        if (m_consulta->Avancar(ms)) {
            ConcluirPreenchimento();
            return true;
        }
    } catch (const ErroBanco &) {
        FalharPreenchimento();
        return true;
    }
    if (m_chave <= LinhasLista::Nome)
        m_modelo->Tomar(false);
    return false;
}

void PainelLista::ConcluirPreenchimento()
{
    const RecordSet rs = m_consulta->Linhas();
    m_consulta.reset();
    m_comoPreenchida = true;
    m_chaveDoPreenchimento = m_chave;
    m_livroVazio = m_livroInteiro && rs.RecordCount() == 0;
    const bool mostradas = m_modelo->rowCount() > 0;
    if (m_chave <= LinhasLista::Nome && !rs.Reordenado() && mostradas) {
        m_modelo->Tomar(true);
        VoltarAoLugar();
        return;
    }
    LinhasLista linhas(rs, m_limite);
    while (linhas.Tomar(kLinhasPorVez)) {
        MostrarMudancas();
        if (Encerrando())
            return;
    }
    if (m_chave > LinhasLista::Nome)
        linhas.Ordenar(static_cast<LinhasLista::Coluna>(m_chave));
    if (mostradas)
        m_modelo->Substituir(std::move(linhas));
    else
        m_modelo->Preencher(std::move(linhas));
    VoltarAoLugar();
}

void PainelLista::VoltarAoLugar()
{
    m_lstVwReceitas->DefinirDica(m_livroVazio ? kLivroVazio : kVazia); // it stands in an empty list only
    if (m_depois.manterLugar)
        m_lstVwReceitas->VoltarAoLugar(m_depois.topo, m_depois.atual);
    if (m_depois.procurada > 0)
        m_lstVwReceitas->Marcar(m_modelo->Linhas().Linha(m_depois.procurada));
}

void PainelLista::FalharPreenchimento()
{
    m_consulta.reset();
    m_modelo->Limpar();
    m_lstVwReceitas->DefinirDica(kIlegivel);
    Ponteiro::Normal();
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
    if (coluna <= LinhasLista::Origem) {                        // the other two columns do not sort
        const Operacao operacao(Operacao::Tipo::Preenchimento); // a long list lets the window paint meanwhile
        m_comoPreenchida = false;
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
    m_portas.banco.AntesDeMudar(receitas);
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
    m_portas.banco.AntesDeMudar({lngReceita});
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
