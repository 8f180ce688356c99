#include "packages/frmImportacao.h"

#include "base/Avisos.h"
#include "base/EventosPendentes.h"
#include "base/Fontes.h"
#include "base/Ponteiro.h"
#include "base/Protegido.h"
#include "base/Relogio.h"
#include "packages/ComandosImportacao.h"
#include "packages/Recipiente.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"
#include "store/Figuras.h"

#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QLockFile>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QVBoxLayout>

#include <stdexcept>

namespace
{
constexpr auto kPrograma = "Cozinhario 2005";
constexpr auto kTrabalho = "PacoteReceita.lrs"; ///< the export's is spelled "PacoteReceitas.lrs"
constexpr auto kTrava = ".lock";
constexpr int kEsperaPelaTrava = 10'000; ///< milliseconds
constexpr int kFalhasNaMensagem = 15;
constexpr int kNomeNaMensagem = 100;
constexpr int kNomeNaLista = 1000; ///< a damaged package may call a whole record a name
constexpr auto kLinhaVazia = "\r\n\r\n";

/// Gives the normal pointer for as long as a box is open in the middle of the import.
class PonteiroParaCaixa
{
public:
    PonteiroParaCaixa() { Ponteiro::NormalSempre(); }
    ~PonteiroParaCaixa() { Ponteiro::Ampulheta(); }
    PonteiroParaCaixa(const PonteiroParaCaixa &) = delete;
    PonteiroParaCaixa &operator=(const PonteiroParaCaixa &) = delete;
};
} // namespace

frmImportacao::frmImportacao(const Banco &banco, const Figuras &figuras, Avisos &avisos,
                             const Relogio &relogio, QWidget *parent)
    : QDialog(parent)
    , m_banco(banco)
    , m_figuras(figuras)
    , m_avisos(avisos)
    , m_relogio(relogio)
{
    setObjectName("frmImportacao");
    setWindowTitle(kPrograma);
    setFont(FonteVerdana(8.25));
    CriarControles();
    OrganizarControles();
}

frmImportacao::~frmImportacao()
{
    ApagarTrabalho();
}

void frmImportacao::CriarControles()
{
    m_lstImportacao = new QListWidget(this);
    m_lstImportacao->setObjectName("lstImportacao");
    m_lstImportacao->setAccessibleName("Receitas do pacote");
    m_lstImportacao->setToolTip("Clique em uma receita para marcá-la ou desmarcá-la");
    m_lstImportacao->setSelectionMode(QAbstractItemView::MultiSelection);
    m_lstImportacao->setUniformItemSizes(true);

    m_PrgrssBr = new QProgressBar(this);
    m_PrgrssBr->setObjectName("PrgrssBr");
    m_PrgrssBr->setAccessibleName("Andamento da importação");
    m_PrgrssBr->setToolTip("Andamento da importação");
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
    const std::optional<QString> texto = LerPacote(strArquivo);
    if (!texto)
        return false;
    m_pacote = Pacote::Texto::Dividir(*texto);
    if (!m_pacote)
        return Recusar(QString("Pacote do ") + kPrograma + " Inválido!");
    if (m_pacote->Quantas() > Pacote::kMaisReceitas)
        return Recusar(QString("Pacote do ") + kPrograma + " Grande Demais!\r\nImpossível Continuar!");

    QStringList nomes;
    for (qsizetype i = 0; i < m_pacote->Quantas(); ++i)
        nomes += (*m_pacote)[i].Valor(u"NOME").left(kNomeNaLista).toString();
    m_lstImportacao->addItems(nomes);
    m_lstImportacao->selectAll();
    return true;
}

/// The unpacked text. Several copies of the program may open packages at the same moment (a mail program
/// opens all attachments at once), and there is one work file: each has it for itself while it unpacks and
/// reads.
std::optional<QString> frmImportacao::LerPacote(const QString &strArquivo)
{
    const QString trabalho = m_banco.Caminho(kTrabalho);
    QLockFile trava(trabalho + kTrava);
    trava.tryLock(kEsperaPelaTrava); // in a folder that cannot be written the unpacking tells the user

    int erro = 0;
    QFile arquivo(trabalho);
    if (Recipiente::DescompactarArquivo(strArquivo, trabalho, erro, true, Pacote::kMaiorTexto) &&
        arquivo.open(QIODevice::ReadOnly))
        return Pacote::LerTexto(arquivo);

    trava.unlock();
    if (erro == Recipiente::kSucesso)
        Recusar("Não foi possível ler o arquivo:\r\n" + trabalho);
    else if (erro == Recipiente::kDestinoIndisponivel)
        Recusar("Não foi possível gravar o arquivo:\r\n" + trabalho +
                "\r\n\r\nVerifique o espaço em disco e a permissão de escrita na pasta.");
    else if (erro == Recipiente::kGrandeDemais || erro == Recipiente::kSemMemoria)
        Recusar(QString("Pacote do ") + kPrograma + " Grande Demais!\r\nImpossível Continuar!");
    else
        Recusar(QString("Pacote do ") + kPrograma + " Corrompido!\r\nImpossível Continuar!");
    return std::nullopt;
}

bool frmImportacao::Recusar(const QString &texto)
{
    ApagarTrabalho();
    m_desfecho = Desfecho::Recusado;
    m_avisos.Avisar(texto, Avisos::Icone::Parada);
    return false;
}

void frmImportacao::reject()
{
    if (m_importando)
        return;
    ApagarTrabalho();
    m_desfecho = Desfecho::Cancelado;
    QDialog::reject();
}

void frmImportacao::Importar()
{
    if (m_importacaoIniciada)
        return;
    m_importacaoIniciada = true;
    m_importando = true;
    const auto terminar = qScopeGuard([this] { m_importando = false; });

    EsperaLonga espera;
    m_cmdCancelar->setEnabled(false);
    m_lstImportacao->setEnabled(false);
    m_PrgrssBr->show();
    DeixarEventosRodarem();
    const int quantas = m_lstImportacao->count();
    m_PrgrssBr->setMaximum(quantas);
    m_PrgrssBr->setValue(0);
    for (int i = 0; i < quantas && !Encerrando(); ++i) {
        if (m_lstImportacao->item(i)->isSelected())
            TentarImportar(i);
        m_PrgrssBr->setValue(i);
    }
    m_PrgrssBr->setValue(quantas);
    ApagarTrabalho();
    m_desfecho = Desfecho::Importado;
    if (!Encerrando()) {
        const PonteiroParaCaixa ponteiro;
        Concluir();
    }
    espera.Encerrar();
    accept();
}

/// A recipe that fails does not take the others with it.
void frmImportacao::TentarImportar(int linha)
{
    try {
        EfetuarImportacao(linha + 1);
    } catch (const std::exception &erro) {
        m_falhas += NomeParaMensagem(linha);
        const PonteiroParaCaixa ponteiro;
        m_avisos.Avisar(
            QString(m_receitaGravada ? "Receita Importada Incompleta:" : "Receita Não Importada:") +
                kLinhaVazia + m_falhas.last() + kLinhaVazia + QString::fromUtf8(erro.what()),
            Avisos::Icone::Parada);
    }
}

void frmImportacao::Concluir()
{
    if (m_falhas.isEmpty()) {
        m_avisos.Avisar(QString("Importação de Pacote do ") + kPrograma + " Realizada com Sucesso!",
                        Avisos::Icone::Nenhum);
        return;
    }
    QString texto = QString("Importação de Pacote do ") + kPrograma + " Concluída com Falhas!" + kLinhaVazia +
                    "Receitas que não foram importadas, ou não por inteiro:" + kLinhaVazia +
                    QStringList(m_falhas.first(qMin(m_falhas.size(), kFalhasNaMensagem))).join("\r\n");
    if (m_falhas.size() > kFalhasNaMensagem)
        texto += "\r\n... e mais " + QString::number(m_falhas.size() - kFalhasNaMensagem);
    m_avisos.Avisar(texto, Avisos::Icone::Exclamacao);
}

void frmImportacao::EfetuarImportacao(int n)
{
    const Pacote::Registro &receita = (*m_pacote)[n - 1];
    m_receitaGravada = false;

    const QString nome = receita.Valor(u"NOME").toString();
    if (NomeConhecido(nome) && !DesejaRepetir(nome))
        return;

    if (const QString campo = ComandosImportacao::CampoInvalido(receita); !campo.isEmpty())
        throw std::runtime_error(("O campo " + campo + " da receita, no pacote, é inválido.").toStdString());
    m_banco.ExecutarSQL(ComandosImportacao::SqlInserirReceita(receita, m_relogio.Hoje()));
    m_receitaGravada = true;
    const qint64 lngReceita = m_banco.AbrirRecordset(Comandos::SqlMaiorNumero()).Valor(0).toLongLong();

    bool figuraGravada = true;
    if (!receita.Valor(u"FIGURA").isEmpty()) {
        // The name in the package is another book's; here it is made from the new number.
        const QByteArray figura = receita.DadosFigura();
        m_banco.ExecutarSQL(Comandos::SqlGravarFigura(lngReceita));
        m_figuras.GravarFigura(figura, lngReceita);
        const QFileInfo gravada(m_figuras.Caminho(Comandos::NomeFigura(lngReceita)));
        figuraGravada = gravada.isFile() && gravada.size() == figura.size();
    }
    for (const Pacote::Registro &item : receita.Itens())
        m_banco.ExecutarSQL(ComandosImportacao::SqlInserirIngrediente(lngReceita, item));
    if (!figuraGravada)
        throw std::runtime_error("A figura da receita não pôde ser gravada na pasta \"Fotos\".");
}

/// Kept on purpose: the name is looked for as it stands in the package, so that one with a comma never matches
/// and one with an apostrophe makes the query fail. A query that fails knows no recipe of that name; if the
/// book cannot be read at all, writing into it tells the user.
bool frmImportacao::NomeConhecido(const QString &nome) const
{
    try {
        return !m_banco.AbrirRecordset(Comandos::SqlReceitaDeNome(nome), {"id_receitas"}).Eof();
    } catch (const ErroBanco &) {
        return false;
    }
}

bool frmImportacao::DesejaRepetir(const QString &nome)
{
    const PonteiroParaCaixa ponteiro;
    return m_avisos.Perguntar(QString("Você já Possui uma Receita com o Título: ") + kLinhaVazia + nome +
                              kLinhaVazia + "Cadastrada em seu " + kPrograma + "." + kLinhaVazia +
                              "Deseja Cadastrar esta Nova Receita com o Mesmo Nome?");
}

QString frmImportacao::NomeParaMensagem(int linha) const
{
    const QString nome = Pacote::DesfazerVirgulas(m_lstImportacao->item(linha)->text());
    return nome.size() <= kNomeNaMensagem ? nome : nome.first(kNomeNaMensagem) + "...";
}

void frmImportacao::ApagarTrabalho()
{
    const QString trabalho = m_banco.Caminho(kTrabalho);
    if (!QFileInfo::exists(trabalho))
        return;
    QLockFile trava(trabalho + kTrava);
    trava.tryLock(kEsperaPelaTrava);
    QFile::remove(trabalho);
}
