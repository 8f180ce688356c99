#include "editor/PainelEditor.h"

#include "base/Acessivel.h"
#include "base/Avisos.h"
#include "base/Comando.h"
#include "base/Fontes.h"
#include "base/Ponteiro.h"
#include "base/Texto.h"
#include "base/Twips.h"
#include "editor/Colagem.h"
#include "editor/ComboCompletavel.h"
#include "editor/GravarReceita.h"
#include "editor/LerReceita.h"
#include "editor/QuadroFigura.h"
#include "editor/QuadroIngredientes.h"
#include "editor/QuadroValores.h"
#include "editor/RecusaDeGravacao.h"
#include "editor/Rotulo.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"
#include "store/EscolhasDoLivro.h"
#include "store/Figuras.h"

#include <QApplication>
#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <QScrollArea>

namespace
{
// The right column holds fields of known size; what is left goes to the texts.
constexpr int kLarguraDireita = 316;
// The panel's own border stays uncovered.
constexpr int kBorda = 1;

QGroupBox *NovoQuadro(const QString &nome, const QString &titulo, QWidget *conteudo)
{
    auto *quadro = new QGroupBox(titulo);
    quadro->setObjectName(nome);
    auto *coluna = new QVBoxLayout(quadro);
    coluna->setContentsMargins(kMargemQuadro);
    coluna->addWidget(conteudo);
    return quadro;
}
} // namespace

PainelEditor::PainelEditor(const Banco &banco, const Figuras &figuras, Avisos &avisos,
                           SeletorArquivos &seletor, const Relogio &relogio, QWidget *parent)
    : Painel("picDetReceita", parent)
    , m_banco(banco)
    , m_figuras(figuras)
    , m_avisos(avisos)
    , m_relogio(relogio)
    , m_rolagem(new QScrollArea(this))
    , m_conteudo(new QWidget)
    , m_txtNroReceita(new QLineEdit(this))
    , m_txtTipoRect(new QLineEdit(this))
    , m_txtOrigem(new QLineEdit)
    , m_lblOrigem(NovoRotulo("Origem :", m_txtOrigem))
    , m_txtNome(new CampoTexto("txtNome"))
    , m_cmbTipo(new ComboCompletavel("cmbTipo", 30, m_blnApagandoCombo))
    , m_txtModo(new CampoMemo("txtModo"))
    , m_txtObs(new CampoMemo("txtObs"))
    , m_fraValores(new QuadroValores)
    , m_optIngredientes(new QRadioButton("Ingredientes"))
    , m_optImagem(new QRadioButton("Imagem da Receita"))
    , m_fraIngredientes(new QuadroIngredientes(avisos, m_blnApagandoCombo))
    , m_fraFigura(new QuadroFigura(banco, avisos, seletor))
    , m_cmdSalvarRct(new QPushButton("&Salvar Receita"))
    , m_cmdExcluirRct(new QPushButton("&Excluir Receita"))
{
    setAccessibleName("Dados da Receita");
    setFont(FonteVerdana(8.25));
    Montar();
    DefinirOrdemDoTab();
    Ligar();
    setFocusProxy(m_txtNome);
    m_optIngredientes->setChecked(true);
    Preencher({});
    m_fraFigura->Limpar();
    DefinirLugar(0, 0, kLargura, kAltura);
    Acessivel::Nomear(*this);
    m_salvo = Rascunho();
}

PainelEditor::~PainelEditor()
{
    disconnect(qApp, nullptr, this, nullptr); // the focus wanders while the fields go
}

void PainelEditor::Montar()
{
    m_txtNroReceita->setObjectName("txtNroReceita");
    m_txtNroReceita->setAccessibleName("Número da receita");
    m_txtNroReceita->hide();
    m_txtTipoRect->setObjectName("txtTipoRect");
    m_txtTipoRect->setAccessibleName("Tipo do pacote");
    m_txtTipoRect->setReadOnly(true);
    m_txtTipoRect->hide();
    m_txtOrigem->setObjectName("txtOrigem");
    m_txtOrigem->setReadOnly(true);
    m_txtOrigem->setFocusPolicy(Qt::ClickFocus);
    Descrever(*m_txtOrigem, "Origem / Pacote");
    m_txtNome->setMaxLength(kLimiteNome);
    ManterEmUmaLinha(*m_txtNome);
    Descrever(*m_txtNome, "Nome da Receita");
    Descrever(*m_cmbTipo, "Tipo da Receita (Exemplo: Doces, Massas, ...)");
    Descrever(*m_txtModo, "Modo de Preparar a Receita");
    Descrever(*m_txtObs, "Informações Adicionais da Receita");
    m_fraModo = NovoQuadro("fraModo", " Modo de Preparar : ", m_txtModo);
    m_FraInformacoes = NovoQuadro("FraInformacoes", " Informações Adicionais : ", m_txtObs);
    m_optIngredientes->setObjectName("optIngredientes");
    Descrever(*m_optIngredientes, "Visualizar Quadro de Ingredientes da Receita");
    m_optImagem->setObjectName("optImagem");
    Descrever(*m_optImagem, "Visualizar Quadro da Imagem da Receita");
    auto *quadros = new QButtonGroup(this);
    quadros->addButton(m_optIngredientes);
    quadros->addButton(m_optImagem);
    m_cmdSalvarRct->setObjectName("cmdSalvarRct");
    Descrever(*m_cmdSalvarRct, "Salva Informações da Receita");
    m_cmdExcluirRct->setObjectName("cmdExcluirRct");
    Descrever(*m_cmdExcluirRct, "Exclusão da Receita");

    for (QWidget *campo : std::initializer_list<QWidget *>{m_txtNome, m_cmbTipo, m_txtOrigem})
        campo->setFixedHeight(kAlturaCampo);
    EncherColuna(*m_cmbTipo);
    m_cmdSalvarRct->setFixedHeight(kAlturaBotao);
    m_cmdExcluirRct->setFixedHeight(kAlturaBotao);

    auto *nome = new QHBoxLayout;
    nome->setSpacing(kEspaco);
    nome->addWidget(NovoRotulo("Nome :", m_txtNome));
    nome->addWidget(m_txtNome, 1);
    auto *tipo = new QHBoxLayout;
    tipo->setSpacing(kEspaco);
    tipo->addWidget(NovoRotulo("Tipo :", m_cmbTipo));
    tipo->addWidget(m_cmbTipo, 1);

    auto *esquerda = new QVBoxLayout;
    esquerda->setSpacing(6);
    esquerda->addWidget(m_fraModo, 2);
    esquerda->addWidget(m_FraInformacoes, 1);

    auto *opcoes = new QHBoxLayout;
    opcoes->setContentsMargins(kMargemQuadro.left(), 0, 0, 0);
    opcoes->setSpacing(4 * kEspaco);
    opcoes->addWidget(m_optIngredientes);
    opcoes->addWidget(m_optImagem);
    opcoes->addStretch();
    auto *direita = new QVBoxLayout;
    direita->setSpacing(6);
    direita->addWidget(m_fraValores);
    direita->addLayout(opcoes);
    // Both frames lie in the same place; only one is ever visible.
    direita->addWidget(m_fraIngredientes, 1);
    direita->addWidget(m_fraFigura, 1);

    auto *origem = new QHBoxLayout;
    origem->setSpacing(kEspaco);
    origem->addWidget(m_lblOrigem);
    origem->addWidget(m_txtOrigem, 1);
    auto *botoes = new QHBoxLayout;
    botoes->setSpacing(kEspaco);
    botoes->addStretch();
    botoes->addWidget(m_cmdExcluirRct);
    botoes->addWidget(m_cmdSalvarRct);

    auto *grade = new QGridLayout(m_conteudo);
    grade->setContentsMargins(10, 8, 10, 8);
    grade->setHorizontalSpacing(10);
    grade->setVerticalSpacing(6);
    grade->addLayout(nome, 0, 0);
    grade->addLayout(tipo, 0, 1);
    grade->addLayout(esquerda, 1, 0);
    grade->addLayout(direita, 1, 1);
    grade->addLayout(origem, 2, 0);
    grade->addLayout(botoes, 2, 1);
    grade->setRowStretch(1, 1);
    grade->setColumnStretch(0, 1);
    grade->setColumnMinimumWidth(1, kLarguraDireita);

    // The content keeps its full height whatever the panel's: rolling open uncovers it without a new layout,
    // and under the search panel it scrolls.
    m_conteudo->setObjectName("conteudoDetReceita");
    m_conteudo->setMinimumHeight(TwipsParaPixels(kAltura) - 2 * kBorda);
    m_rolagem->setObjectName("rolagemDetReceita");
    m_rolagem->setFrameShape(QFrame::NoFrame);
    m_rolagem->setFocusPolicy(Qt::NoFocus);
    m_rolagem->setWidgetResizable(true);
    m_rolagem->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_rolagem->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_rolagem->setWidget(m_conteudo);
    // The window's colour shows through.
    m_rolagem->viewport()->setAutoFillBackground(false);
    m_conteudo->setAutoFillBackground(false);
}

void PainelEditor::DefinirOrdemDoTab()
{
    // Down the left column, then down the right one.
    const QStringList ordem = {
        "txtNome",        "cmbTipo",          "txtModo",      "txtObs",         "txtPorcoes",
        "txtPreparo",     "optReceita",       "optPorcao",    "txtCalorias",    "optIngredientes",
        "optImagem",      "txtQtde",          "cmbMedida",    "cmbIngrediente", "cmdSalvarIngredientes",
        "cmdLimparDados", "TrVwIngredientes", "cmdSalvarFig", "cmdLimparFig",   "cmdSalvarRct",
        "cmdExcluirRct"};
    QWidget *anterior = nullptr;
    for (const QString &nome : ordem) {
        auto *controle = findChild<QWidget *>(nome);
        if (anterior)
            setTabOrder(anterior, controle);
        anterior = controle;
    }
}

void PainelEditor::Ligar()
{
    connect(m_optIngredientes, &QRadioButton::toggled, this, &PainelEditor::MostrarQuadro);
    connect(m_optImagem, &QRadioButton::toggled, this, &PainelEditor::MostrarQuadro);
    connect(m_cmdSalvarRct, &QPushButton::clicked, this,
            Comando(m_avisos, m_cmdSalvarRct, [this] { Salvar(); }));
    connect(m_cmdExcluirRct, &QPushButton::clicked, this, Comando(m_avisos, m_cmdExcluirRct, [this] {
                emit exclusaoPedida(m_txtNroReceita->text().toLongLong());
            }));
    // While the panel scrolls, the control that takes the focus comes into view, however it got it.
    connect(qApp, &QApplication::focusChanged, this, &PainelEditor::MostrarFoco);
}

void PainelEditor::MostrarFoco()
{
    QWidget *foco = QApplication::focusWidget();
    if (foco && m_conteudo->isAncestorOf(foco))
        m_rolagem->ensureWidgetVisible(foco, 0, 2 * kEspaco);
}

void PainelEditor::MostrarQuadro()
{
    const bool imagem = m_optImagem->isChecked();
    m_fraIngredientes->setVisible(!imagem);
    m_fraFigura->setVisible(imagem);
}

void PainelEditor::CarregarValoresDetalheReceita(quint8 bytTipo)
{
    if (bytTipo > 1)
        return;
    const auto escolhas = [this](const QString &sql) {
        return std::make_shared<EscolhasDoLivro>(m_banco, sql, [this](const ErroBanco &erro) {
            m_avisos.Avisar(erro.Mensagem(), Avisos::Icone::Parada);
        });
    };
    // All queries are open before the first list changes; the long one comes last, and goes on behind the
    // panel.
    const auto tipos = bytTipo == 0 ? escolhas(Comandos::SqlTipos()) : nullptr;
    const auto unidades = escolhas(Comandos::SqlUnidades());
    const auto ingredientes = escolhas(Comandos::SqlNomesDeIngredientes());
    if (tipos)
        m_cmbTipo->DefinirFonte(tipos);
    m_fraIngredientes->DefinirValores(ingredientes, unidades);
}

void PainelEditor::Preencher(const ReceitaNaTela &tela)
{
    MostrarNumero(tela.txtNroReceita);
    m_txtOrigem->setText(tela.txtOrigem);
    m_txtOrigem->setCursorPosition(0);
    m_txtOrigem->setVisible(!tela.txtOrigem.isEmpty());
    m_lblOrigem->setVisible(!tela.txtOrigem.isEmpty());
    m_txtTipoRect->setText(tela.txtTipoRect);
    DefinirTextoInteiro(*m_txtNome, tela.txtNome, kLimiteNome);
    m_cmbTipo->DefinirTexto(tela.cmbTipo);
    m_txtModo->DefinirTexto(tela.txtModo);
    m_txtObs->DefinirTexto(tela.txtObs);
    m_fraValores->Definir(tela);
    m_fraIngredientes->DefinirLinhas(tela.ingredientes);
}

void PainelEditor::MostrarNumero(const QString &numero)
{
    m_txtNroReceita->setText(numero);
    // What has no number yet is not in the book and cannot be deleted from it.
    m_cmdExcluirRct->setEnabled(!numero.isEmpty());
}

void PainelEditor::NovaReceita()
{
    CarregarValoresDetalheReceita(0);
    EntregarRascunho();
    Preencher({});
    m_fraFigura->Limpar();
    m_optIngredientes->setChecked(true);
    m_salvo = Rascunho();
    m_rolagem->ensureVisible(0, 0);
    m_focarAoMostrar = !isVisible();
    m_txtNome->setFocus();
}

void PainelEditor::Carregar(qint64 lngReceita)
{
    const ReceitaLida lida = LerParaATela(m_banco, lngReceita);
    m_focarAoMostrar = false;
    EntregarRascunho();
    Preencher(lida.tela);
    const bool temFigura =
        m_fraFigura->MostrarAntiga(lida.figura.isEmpty() ? QString() : m_figuras.Caminho(lida.figura));
    (temFigura ? m_optImagem : m_optIngredientes)->setChecked(true);
    m_rolagem->ensureVisible(0, 0);
    m_salvo = Rascunho();
}

/// What is on the screen, typed lines that are not in the tree yet included.
ReceitaNaTela PainelEditor::Rascunho() const
{
    ReceitaNaTela tela = DadosDaTela();
    tela.ingredientes = m_fraIngredientes->LinhasComADigitada();
    return tela;
}

void PainelEditor::EntregarRascunho()
{
    const ReceitaNaTela tela = Rascunho();
    if (tela == m_salvo)
        return;
    m_salvo = tela;
    emit rascunhoAbandonado(tela);
}

void PainelEditor::EsquecerLinhaEmEdicao()
{
    m_fraIngredientes->EsquecerLinhaEmEdicao();
}

bool PainelEditor::Recusar(const QString &texto, QWidget &campo)
{
    m_avisos.Avisar(texto, Avisos::Icone::Exclamacao);
    campo.setFocus();
    return false;
}

bool PainelEditor::Validar()
{
    if (Aparar(m_txtNome->text()).isEmpty())
        return Recusar("Por Favor, Informe o Nome da Receita!", *m_txtNome);
    if (Aparar(m_txtModo->Texto()).isEmpty())
        return Recusar("Por Favor, Informe o Modo de Preparo!", *m_txtModo);
    if (m_fraIngredientes->Linhas().isEmpty()) {
        m_avisos.Avisar("Por Favor, Adicione pelo menos um Ingrediente!", Avisos::Icone::Exclamacao);
        m_optIngredientes->setChecked(true);
        m_fraIngredientes->FocarIngrediente();
        return false;
    }
    return true;
}

void PainelEditor::Salvar()
{
    const Operacao operacao(Operacao::Tipo::Gravacao);
    // An access key leaves the focus where it is. A type that nobody touched stays as it was stored.
    if (m_cmbTipo->TemFoco())
        m_cmbTipo->CortarNoLimite();
    if (!Validar())
        return;
    m_cmbTipo->LembrarValor(m_cmbTipo->currentText());
    ReceitaNaTela tela = DadosDaTela();
    // As soon as the recipe is in the book the screen says so, even if the save fails after that: saving it
    // once more changes it, and does not enter it twice.
    const auto numerar = qScopeGuard([&] { MostrarNumero(tela.txtNroReceita); });
    try {
        GravarReceita(m_banco, m_figuras, m_relogio, tela);
    } catch (const RecusaDeGravacao &recusa) {
        MostrarRecusa(recusa);
        return;
    }
    MostrarNumero(tela.txtNroReceita);
    m_fraFigura->DarPorGravada(tela.txtNroReceita.toLongLong());
    m_salvo = Rascunho();
    emit receitaSalva();
}

void PainelEditor::MostrarRecusa(const RecusaDeGravacao &recusa)
{
    Ponteiro::NormalSempre();
    m_avisos.Avisar(recusa.Mensagem(), Avisos::Icone::Parada);
    switch (recusa.OndeFoi()) {
    case RecusaDeGravacao::Onde::Porcoes:
        m_fraValores->FocarPorcoes();
        break;
    case RecusaDeGravacao::Onde::Calorias:
        m_fraValores->FocarCalorias();
        break;
    case RecusaDeGravacao::Onde::Linha:
        m_optIngredientes->setChecked(true);
        m_fraIngredientes->Apontar(recusa.Linha());
        break;
    case RecusaDeGravacao::Onde::Receita:
        m_txtNome->setFocus();
        break;
    }
}

ReceitaNaTela PainelEditor::DadosDaTela() const
{
    ReceitaNaTela tela;
    tela.txtNroReceita = m_txtNroReceita->text();
    tela.txtNome = m_txtNome->text();
    tela.txtOrigem = m_txtOrigem->text();
    tela.cmbTipo = m_cmbTipo->currentText();
    tela.txtModo = m_txtModo->Texto();
    tela.txtObs = m_txtObs->Texto();
    m_fraValores->Ler(tela);
    tela.txtTipoRect = m_txtTipoRect->text();
    tela.ingredientes = m_fraIngredientes->Linhas();
    tela.imgFigura = m_fraFigura->Tag();
    tela.figuraAntiga = m_fraFigura->BytesAntigos();
    tela.figuraMostrada = m_fraFigura->FiguraMostrada();
    return tela;
}

void PainelEditor::MostrarCampos(bool mostrar)
{
    m_rolagem->setVisible(mostrar);
}

QSize PainelEditor::sizeHint() const
{
    return {TwipsParaPixels(kLargura), TwipsParaPixels(kAltura)};
}

void PainelEditor::resizeEvent(QResizeEvent *event)
{
    Painel::resizeEvent(event);
    AtualizarRolagem();
}

void PainelEditor::AtualizarRolagem()
{
    m_rolagem->setVerticalScrollBarPolicy(Altura() == kAlturaComPesquisa ? Qt::ScrollBarAsNeeded
                                                                         : Qt::ScrollBarAlwaysOff);
    m_rolagem->setGeometry(rect().adjusted(kBorda, kBorda, -kBorda, -kBorda));
    if (Altura() == kAlturaComPesquisa)
        MostrarFoco();
}

void PainelEditor::showEvent(QShowEvent *event)
{
    Painel::showEvent(event);
    if (m_focarAoMostrar) {
        m_focarAoMostrar = false;
        m_txtNome->setFocus();
    }
}
