#include "app/frmPrincipal.h"

#include "app/AjustarRegiao.h"
#include "app/Barra.h"
#include "app/Fundo.h"
#include "app/MensagemNaJanela.h"
#include "app/SelecaoDaLista.h"
#include "app/SolturaDePacote.h"
#include "app/TelasDaJanela.h"
#include "backup/modBackup.h"
#include "base/Abridor.h"
#include "base/Acessivel.h"
#include "base/Acompanha.h"
#include "base/Alcance.h"
#include "base/BotaoImagem.h"
#include "base/Comando.h"
#include "base/EventosPendentes.h"
#include "base/Fontes.h"
#include "base/OperacaoLonga.h"
#include "base/Ponteiro.h"
#include "base/Twips.h"
#include "browse/Exclusao.h"
#include "browse/ListaReceitas.h"
#include "browse/PainelCartao.h"
#include "browse/PainelLista.h"
#include "browse/PainelPesquisa.h"
#include "editor/PainelEditor.h"
#include "mail/EnvioEmail.h"
#include "news/ClienteWeb.h"
#include "news/Novidades.h"
#include "news/PaineisDaJanela.h"
#include "news/PainelNovidades.h"
#include "packages/Lixeira.h"
#include "packages/frmImportacao.h"
#include "print/Impressao.h"
#include "store/Banco.h"
#include "store/ErroBanco.h"

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>
#include <QWindow>

namespace
{
// The window in twips: the toolbar stands on the background like the tab of a recipe card, as wide as the
// panels below it; the working panels lie between title bar and footer.
constexpr int kLargura = 9600;
constexpr int kAltura = 8970;
constexpr int kEsquerda = 135;
constexpr int kLarguraDoPainel = 9330;
constexpr int kAlturaDaBarra = 870;
constexpr int kTopoDoTitulo = 930;
constexpr int kAlturaDoTitulo = 390;
constexpr int kTopoDosPaineis = kTopoDoTitulo + kAlturaDoTitulo;
constexpr int kTopoDaPesquisa = kTopoDosPaineis + TelasDaJanela::kAlturaComPesquisa;

constexpr int kEsperaPelaAtivacaoMs = 300;

void Colocar(QWidget *controle, int left, int top, int width, int height)
{
    controle->setGeometry(TwipsParaPixels(left), TwipsParaPixels(top), TwipsParaPixels(width),
                          TwipsParaPixels(height));
}
} // namespace

frmPrincipal::frmPrincipal(const Banco &banco, const Figuras &figuras, const Portas &portas,
                           std::unique_ptr<ClienteWeb> clienteWeb)
    : m_banco(banco)
    , m_figuras(figuras)
    , m_portas(portas)
    , m_fundo(new Fundo(portas.abridor, portas.site, this))
    , m_barra(new Barra(kAlturaDaBarra, this))
    , m_paineisDasNovidades(std::make_unique<PaineisDaJanela>(
          [] { return !Operacao::EmAndamentoAlemDe(Operacao::Tipo::Visita); }))
    , m_clienteWeb(std::move(clienteWeb))
{
    setProperty("papelAcessivel", static_cast<int>(QAccessible::Window));
    Acessivel::Instalar();
    setObjectName("frmPrincipal");
    setWindowTitle("Cozinhario 2005");
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    if (QGuiApplication::platformName().startsWith("wayland"))
        setAttribute(Qt::WA_TranslucentBackground); // no mask there: what lies beside the panels is clear
    Colocar(m_barra, kEsquerda, 0, kLarguraDoPainel, kAlturaDaBarra);
    Colocar(m_fundo, 0, kAlturaDaBarra, kLargura, kAltura - kAlturaDaBarra);

    MostrarDica(0, m_fundo->Area(), portas.sorteio, portas.site, SiteDoDistribuidor());
    m_fundo->lblEntrada()->setText("Cozinhario 2005");
    CriarTitulo();
    LigarBotoes();
    const AreaDaDica area = m_fundo->Area();
    QWidget *anterior = m_barra->Botao("imgSaida");
    for (QWidget *elo : {area.picTamarel, area.picVilanuLogo, area.lblUrl}) {
        setTabOrder(anterior, elo); // the web comes after the program
        anterior = elo;
    }
    setFixedSize(Tamanho());
    setFocus(); // else the first activation would light up the first link of the footer
}

frmPrincipal::~frmPrincipal() = default;

QSize frmPrincipal::Tamanho()
{
    return QSize(TwipsParaPixels(kLargura), TwipsParaPixels(kAltura));
}

void frmPrincipal::Completar()
{
    if (m_montagem != Montagem::Moldura)
        return;
    m_montagem = Montagem::EmAndamento;
    InstalarFontes();
    m_fundo->MostrarRodape();
    QApplication::setWindowIcon(QIcon(":/cozinhario.svg")); // of every window: dialogs, too
    m_barra->DesenharAcesos();
    CriarPaineis();
    CriarOperacoes();
    LigarPaineis();
    Vigiar();
    new SolturaDePacote(*this, [this](const QString &caminho) {
        Comandar(m_portas.avisos, this, [=, this] { ImportarPacote(caminho); });
    });
    connect(new QShortcut(QKeySequence::HelpContents, this), &QShortcut::activated, this,
            &frmPrincipal::AbrirGuia);
    Acessivel::Nomear(*this);
    ConcluirRestauracao(); // before anything reads the book
    m_montagem = Montagem::Completa;
    m_partida.reset();
    if (isVisible())
        m_novidades->LigarTimer();
    // Where nothing activates windows (no window manager), being shown is activation enough.
    QTimer::singleShot(isActiveWindow() ? 0 : kEsperaPelaAtivacaoMs, this, &frmPrincipal::PrimeiraAtivacao);
}

void frmPrincipal::CriarTitulo()
{
    m_picTitulo = new Faixa("picTitulo", Faixa::Tipo::Titulo, kAlturaDoTitulo, this);
    m_lblTitulo = new QLabel(m_picTitulo);
    m_lblTitulo->setObjectName("lblTitulo");
    m_lblTitulo->setFont(FonteVerdana(9.75, true));
    m_lblFechar = new QPushButton("&Voltar", m_picTitulo);
    m_lblFechar->setObjectName("lblFechar");
    m_lblFechar->setToolTip("Voltar");
    m_lblFechar->setAccessibleDescription("Fecha esta tela e mostra a anterior");
    m_lblFechar->setCursor(Qt::PointingHandCursor);
    auto *linha = new QHBoxLayout(m_picTitulo);
    linha->setContentsMargins(6, 2, 4, 2);
    linha->addWidget(m_lblTitulo, 1);
    linha->addWidget(m_lblFechar);
    Colocar(m_picTitulo, kEsquerda, kTopoDoTitulo, kLarguraDoPainel, kAlturaDoTitulo);
    m_picTitulo->hide();
}

void frmPrincipal::CriarPaineis()
{
    m_picMsg = new MensagemNaJanela(this);
    m_picMsg->setGeometry((TwipsParaPixels(kLargura) - 400) / 2, TwipsParaPixels(4000), 400, 90);

    m_editor =
        new PainelEditor(m_banco, m_figuras, m_portas.avisos, m_portas.seletor, m_portas.relogio, this);
    m_telas = std::make_unique<TelasDaJanela>(m_picTitulo, m_lblTitulo, [this] { AtualizarBotoes(nullptr); });

    m_cartao = new PainelCartao(m_banco, m_portas.avisos, *m_telas, *this, *m_editor);
    m_cartao->hide();
    m_lista = new PainelLista({m_banco, m_portas.avisos, *m_telas, *m_picMsg, *this, *m_cartao}, this);
    m_pesquisa = new PainelPesquisa(m_banco, m_portas.avisos, *m_telas, *m_lista, this);
    m_paineisDasNovidades->DefinirPaineis({m_editor, m_lista, m_pesquisa});
    auto novidades =
        std::make_shared<Novidades>(std::move(m_clienteWeb), m_portas.site, m_banco.Caminho("temporario"));
    m_novidades = new PainelNovidades(novidades, m_portas.avisos, m_portas.abridor, *m_telas,
                                      *m_paineisDasNovidades, this);
    m_telas->DefinirPaineis({m_lista, m_editor, m_pesquisa, [this] { m_novidades->Esconder(); }});

    m_lista->DefinirLugar(kEsquerda, kTopoDosPaineis, kLarguraDoPainel, TelasDaJanela::kAlturaInteira);
    m_editor->DefinirLugar(kEsquerda, kTopoDosPaineis, kLarguraDoPainel, TelasDaJanela::kAlturaInteira);
    m_pesquisa->DefinirLugar(kEsquerda, kTopoDaPesquisa, kLarguraDoPainel, TelasDaJanela::kAlturaComPesquisa);
    m_novidades->DefinirLugar(kEsquerda, kTopoDoTitulo, kLarguraDoPainel, PainelNovidades::kAltura);
    for (QWidget *painel : std::initializer_list<QWidget *>{m_lista, m_editor, m_pesquisa, m_novidades})
        painel->hide();
}

void frmPrincipal::CriarOperacoes()
{
    ListaParaExportar &listaParaExportar = *this;
    JanelaDoBackup &janelaDoBackup = *this;
    m_exclusao = std::make_unique<Exclusao>(m_banco, m_portas.avisos, *m_telas, *m_lista);
    m_impressao = std::make_unique<Impressao>(
        m_banco, m_figuras, m_portas.avisos, *m_picMsg, m_portas.impressoras, m_portas.site,
        [this](qint64 lngReceita) { return m_lista->NomeDaReceita(lngReceita); }, this);
    m_email = std::make_unique<EnvioEmail>(m_banco, m_figuras, m_portas.avisos, *m_telas, m_portas.abridor,
                                           m_portas.site);
    m_exportacao = std::make_unique<Exportacao>(m_banco, m_figuras, m_portas.avisos, *m_picMsg, *m_telas,
                                                listaParaExportar, m_portas.abridor, m_portas.site);
    m_backup = std::make_unique<modBackup>(m_banco, m_figuras, m_portas.avisos, m_portas.seletor, *m_picMsg,
                                           *m_telas, m_portas.relogio, janelaDoBackup);
}

void frmPrincipal::LigarBotoes()
{
    const auto ligar = [this](const char *nome, auto operacao) {
        BotaoImagem *botao = m_barra->Botao(nome);
        // A click that comes before the panels are made has them made first.
        connect(botao, &QAbstractButton::clicked, this, Comando(m_portas.avisos, botao, [this, operacao] {
                    Completar();
                    operacao();
                }));
    };
    ligar("imgLstRcta", [this] { m_lista->imgLstRcta_Click(); });
    ligar("imgDetRcta", [this] { NovaReceita(); });
    ligar("imgPesRcta", [this] { m_pesquisa->imgPesRcta_Click(); });
    ligar("imgImpressao", [this] { Imprimir(); });
    ligar("imgEmail", [this] { m_email->imgEmail_Click(m_editor->DadosDaTela()); });
    ligar("imgTransmit",
          [this] { m_exportacao->imgTransmit_Click(SelecaoDaLista(*m_lista->lstVwReceitas())); });
    ligar("imgInternet", [this] { m_novidades->imgInternet_Click(); });
    ligar("imgBackup", [this] { m_backup->imgBackup_Click(); });
    ligar("imgRestore", [this] { m_backup->imgRestore_Click(); });
    // Whatever runs, these two are no operation.
    connect(m_barra->Botao("imgMinimize"), &QAbstractButton::clicked, this, &frmPrincipal::Minimizar);
    connect(m_barra->Botao("imgSaida"), &QAbstractButton::clicked, this, &frmPrincipal::Sair);
}

void frmPrincipal::LigarPaineis()
{
    connect(m_lblFechar, &QPushButton::clicked, this,
            Comando(m_portas.avisos, m_lblFechar, [this] { FecharTela(); }));
    connect(m_lista, &PainelLista::impressaoPedida, this, [this](qint64 lngReceita) {
        Proteger(m_portas.avisos, [=, this] { m_impressao->ImprimirDoMenu(lngReceita); });
    });
    connect(m_editor, &PainelEditor::receitaSalva, this, Protegido(m_portas.avisos, [this] {
                m_lista->MarcarDepois(m_editor->DadosDaTela().txtNroReceita.toLongLong());
                m_telas->FecharDetalhe();
                m_lista->imgLstRcta_Click();
            }));
    connect(m_editor, &PainelEditor::rascunhoAbandonado, this, [this](const ReceitaNaTela &tela) {
        Lixeira(m_banco, m_figuras, m_portas.relogio).Guardar(tela);
    });
    connect(qApp, &QCoreApplication::aboutToQuit, m_editor, &PainelEditor::EntregarRascunho);
    connect(m_editor, &PainelEditor::exclusaoPedida, this, [this](qint64 lngReceita) {
        Proteger(m_portas.avisos, [=, this] { m_exclusao->ExcluirDaTela(lngReceita); });
    });
}

// Events that no single control owns: dragging, and the card that covers the editor's fields.
void frmPrincipal::Vigiar()
{
    m_cartao->installEventFilter(this);
    m_picTitulo->installEventFilter(this);
    const std::initializer_list<QWidget *> arrastam{m_fundo, m_barra, m_fundo->lblEntrada()};
    for (QWidget *area : arrastam) {
        area->installEventFilter(this);
        m_picMsg->DeixarPassar(area);
    }
    m_picMsg->DeixarPassar(m_barra->Botao("imgMinimize"));
    m_picMsg->DeixarPassar(m_barra->Botao("imgSaida"));
}

bool frmPrincipal::eventFilter(QObject *objeto, QEvent *event)
{
    if (objeto == m_cartao) {
        if (event->type() == QEvent::Show)
            m_editor->MostrarCampos(false);
        else if (event->type() == QEvent::Hide)
            m_editor->MostrarCampos(true);
        return false;
    }
    if (objeto == m_picTitulo) { // the title stands over every view: without it, there is none
        if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent)
            m_fundo->MostrarConvite(m_picTitulo->isHidden());
        return false;
    }
    if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseMove)
        return false;
    const auto *mouse = static_cast<QMouseEvent *>(event);
    if (!mouse->buttons().testFlag(Qt::LeftButton))
        return false;
    if (event->type() == QEvent::MouseButtonPress) {
        m_arrastadaEm = mouse->globalPosition().toPoint() - pos();
        m_arrastaSozinha = !windowHandle() || !windowHandle()->startSystemMove();
        return true;
    }
    // Without a window manager that moves windows, the window follows the mouse by itself.
    if (m_arrastaSozinha)
        move(mouse->globalPosition().toPoint() - m_arrastadaEm);
    return true;
}

void frmPrincipal::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    AjustarRegiao(*this);
}

void frmPrincipal::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_ativada)
        return;
    if (m_montagem == Montagem::Completa) {
        m_novidades->LigarTimer();
        QTimer::singleShot(kEsperaPelaAtivacaoMs, this, &frmPrincipal::PrimeiraAtivacao);
    } else {
        // A window that is shown minimized is not painted.
        QTimer::singleShot(kEsperaPelaAtivacaoMs, this, &frmPrincipal::Completar);
    }
}

void frmPrincipal::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    // The cook sees the window first; what is still hidden comes as soon as this paint is on the screen.
    if (m_montagem == Montagem::Moldura)
        QTimer::singleShot(0, this, &frmPrincipal::Completar);
}

void frmPrincipal::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange) {
        AtualizarBotoes(nullptr);
        if (!isActiveWindow())
            return;
        m_barra->update();
        m_picTitulo->update();
        // The list rolls open in its own time, not from within the window system's event.
        QTimer::singleShot(0, this, &frmPrincipal::PrimeiraAtivacao);
    }
}

// Only the first activation opens the list: a cook who comes back from another window finds her half-entered
// recipe as she left it.
void frmPrincipal::PrimeiraAtivacao()
{
    if (m_ativada || !isVisible() || m_montagem != Montagem::Completa)
        return;
    m_ativada = true;
    QuandoLivre([this] {
        // The list says nothing when the book cannot be read; this does, once.
        Proteger(m_portas.avisos, [this] { m_banco.LerUmaVez(); });
        {
            const Operacao partida(Operacao::Tipo::Partida);
            m_lista->imgLstRcta_Click();
        }
        AtualizarBotoes(nullptr);
        EvoluirLivro();
    });
}

// List, editor, card and news share one place: the Tab key goes by what is seen.
bool frmPrincipal::focusNextPrevChild(bool next)
{
    return Alcance::MoverFoco(*this, next);
}

void frmPrincipal::closeEvent(QCloseEvent *event)
{
    event->ignore();
    Sair();
}

void frmPrincipal::Minimizar()
{
    AtualizarBotoes(nullptr);
    showMinimized();
}

void frmPrincipal::Sair()
{
    hide();
    EncerrarPrograma();
}

void frmPrincipal::AbrirTela(const QString &request)
{
    Completar();
    m_telas->AbrirTela(request);
}

void frmPrincipal::FecharTela()
{
    Completar();
    m_telas->FecharTela();
    if (m_picTitulo->isHidden())
        setFocus(); // else the space bar would press what comes next in line: a link to the web
}

void frmPrincipal::AtualizarBotoes(const BotaoImagem *controle)
{
    m_barra->Atualizar(controle);
}

void frmPrincipal::ImportarPacote(const QString &caminho)
{
    frmImportacao dialogo(m_banco, m_figuras, m_portas.avisos, m_portas.relogio, this);
    dialogo.Executar(caminho);
    if (dialogo.AlgumaEntrou() && !Encerrando())
        m_lista->imgLstRcta_Click();
}

void frmPrincipal::AbrirGuia()
{
    const QString guia = Acompanha::Guia(QCoreApplication::applicationDirPath());
    if (!guia.isEmpty())
        m_portas.abridor.AbrirArquivo(guia);
}

void frmPrincipal::NovaReceita()
{
    AtualizarBotoes(nullptr);
    m_cartao->hide();
    if (m_editor->isHidden())
        m_editor->DefinirAltura(Painel::kRecolhido);
    m_editor->NovaReceita();
    AbrirTela("DetalheReceitas");
    if (m_editor->Altura() == Painel::kRecolhido)
        m_editor->Rolar(m_telas->AlturaDeTrabalho());
}

void frmPrincipal::CarregarDetalheReceita(qint64 lngReceita, bool BlnAbrir)
{
    Completar();
    m_editor->Carregar(lngReceita); // first, so that a recipe that cannot be read changes nothing on screen
    if (BlnAbrir)
        return;
    m_cartao->hide();
    if (m_editor->isHidden())
        m_editor->DefinirAltura(Painel::kRecolhido);
    AbrirTela("NovaReceita");
    Alcance::Focar(*m_editor);
    if (m_editor->Altura() == Painel::kRecolhido)
        m_editor->Rolar(m_telas->AlturaDeTrabalho());
}

void frmPrincipal::CarregarValoresDetalheReceita(quint8 bytTipo)
{
    Completar();
    m_editor->CarregarValoresDetalheReceita(bytTipo);
}

void frmPrincipal::EsquecerLinhaEmEdicao()
{
    m_editor->EsquecerLinhaEmEdicao();
}

void frmPrincipal::Imprimir()
{
    const QString tela = m_telas->TelaAtual();
    if (tela == "Pesquisa")
        m_impressao->RecusarNaPesquisa();
    else if (tela == "Listagem")
        m_impressao->ImprimirSelecionadas(m_lista->ReceitasSelecionadas());
    else
        m_impressao->ImprimirDaTela(tela.isEmpty() ? 0 : m_editor->DadosDaTela().txtNroReceita.toLongLong());
}

void frmPrincipal::ConcluirRestauracao()
{
    Proteger(m_portas.avisos, [this] { m_backup->ConcluirRestauracao(); });
}

// A large book of an older version gets its indexes at the first quiet moment; small ones have them already.
void frmPrincipal::EvoluirLivro()
{
    QuandoLivre([this] {
        if (!m_banco.PrecisaEvoluir())
            return;
        try {
            OperacaoLonga operacao(*m_picMsg, "Preparando o Livro de Receitas...", 1);
            m_banco.Evoluir([&operacao](int feito, int total) {
                operacao.DefinirMaximo(total);
                operacao.DefinirValor(feito);
                return !Encerrando();
            });
        } catch (const ErroBanco &) {
            // A book that cannot be written, or an end that came first: it goes on as it is.
            Ponteiro::Normal();
        }
    });
}

void frmPrincipal::QuandoLivre(std::function<void()> tarefa)
{
    Operacao::QuandoLivre(this, [this, tarefa = std::move(tarefa)] { Proteger(m_portas.avisos, tarefa); });
}

// However many copies ask while something runs, one look at the book shows it all.
void frmPrincipal::RecarregarLista()
{
    if (std::exchange(m_recargaPedida, true))
        return;
    QuandoLivre([this] {
        m_recargaPedida = false;
        m_lista->imgLstRcta_Click();
    });
}

void frmPrincipal::AvisarDepois(const QString &texto)
{
    QuandoLivre([this, texto] { m_portas.avisos.Avisar(texto, Avisos::Icone::Informacao); });
}

void frmPrincipal::TrazerParaFrente()
{
    if (isMinimized())
        showNormal();
    raise();
    activateWindow();
}

bool frmPrincipal::ListaVisivel() const
{
    return !m_lista->isHidden();
}

void frmPrincipal::MostrarLista()
{
    m_lista->imgLstRcta_Click();
}

void frmPrincipal::DefinirAlturaDaLista(int twips)
{
    m_lista->DefinirAltura(twips);
}

void frmPrincipal::EsconderTelas()
{
    m_telas->EsconderTudo();
}

void frmPrincipal::LivroRestaurado()
{
    // Every view reads the book afresh when it opens; what still stands in the hidden editor is forgotten.
    // That is also the first reading of the restored book: an old one is converted now, a bad one reported.
    QuandoLivre([this] { m_editor->NovaReceita(); });
    EvoluirLivro();
}
