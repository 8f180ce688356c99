#include "packages/ImportacaoDoPacote.h"

#include "base/Avisos.h"
#include "base/EventosPendentes.h"
#include "base/Ponteiro.h"
#include "base/Relogio.h"
#include "base/Texto.h"
#include "packages/ComandosImportacao.h"
#include "packages/Pacote.h"
#include "packages/Recipiente.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"
#include "store/Figuras.h"

#include <QScopeGuard>

#include <stdexcept>

namespace
{
constexpr auto kPrograma = "Cozinhario 2005";
constexpr auto kTrabalho = "PacoteReceita.lrs"; ///< the export's is spelled "PacoteReceitas.lrs"
constexpr int kFalhasNaMensagem = 15;
/// Failures that get a box of their own; those after them are named at the end.
constexpr int kCaixasDeFalha = 5;
constexpr int kNomeNaMensagem = 100;
/// Names in the list: a damaged package may call a whole record a name, and many long ones fill the memory.
constexpr qsizetype kNomeNaLista = 1000;
constexpr qsizetype kNomeNaListaLonga = 100;
constexpr qsizetype kLetrasDaLista = 32 * 1024 * 1024;
/// With so many lines or fewer to go a stop waits for the recipe's end, so that hardly any is left half.
constexpr std::size_t kLinhasQueFaltam = 20;
constexpr int kRespiroMs = 20;
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

QString GrandeDemais()
{
    return QString("Pacote do ") + kPrograma + " Grande Demais!\r\nImpossível Continuar!";
}
} // namespace

ImportacaoDoPacote::ImportacaoDoPacote(const Banco &banco, const Figuras &figuras, Avisos &avisos,
                                       const Relogio &relogio)
    : m_banco(banco)
    , m_figuras(figuras)
    , m_avisos(avisos)
    , m_relogio(relogio)
    , m_trabalho(banco.Caminho(kTrabalho))
    , m_trava(banco)
{
}

bool ImportacaoDoPacote::Carregar(const QString &strArquivo)
{
    const QString naoGravado = "Não foi possível gravar o arquivo:\r\n" + m_banco.Caminho(kTrabalho) +
                               "\r\n\r\nVerifique o espaço em disco e a permissão de escrita na pasta.";
    try {
        m_trabalho.Abrir();
    } catch (const Erro &) {
        return Recusar(naoGravado);
    }
    const int erro =
        Recipiente::DescompactarPara(strArquivo, m_trabalho.Arquivo(), Pacote::kMaiorTexto);
    if (erro == Recipiente::kDestinoIndisponivel)
        return Recusar(naoGravado);
    if (erro == Recipiente::kGrandeDemais || erro == Recipiente::kSemMemoria)
        return Recusar(GrandeDemais());
    if (erro != Recipiente::kSucesso)
        return Recusar(QString("Pacote do ") + kPrograma + " Corrompido!\r\nImpossível Continuar!");

    switch (m_pacote.Abrir(m_trabalho.Arquivo(), [this] { Respirar(); })) {
    case Pacote::Texto::Abertura::Aberto:
        return true;
    case Pacote::Texto::Abertura::ReceitasDemais:
        return Recusar(GrandeDemais());
    case Pacote::Texto::Abertura::OutroTexto:
        break;
    }
    return Recusar(QString("Pacote do ") + kPrograma + " Inválido!");
}

bool ImportacaoDoPacote::Recusar(const QString &texto)
{
    ApagarTrabalho();
    m_avisos.Avisar(texto, Avisos::Icone::Parada);
    return false;
}

QStringList ImportacaoDoPacote::Nomes() const
{
    QStringList nomes;
    qsizetype letras = 0;
    for (qsizetype i = 0; i < Quantas(); ++i) {
        nomes += SemControles(m_pacote.Nome(i, letras < kLetrasDaLista ? kNomeNaLista : kNomeNaListaLonga));
        letras += nomes.last().size();
    }
    return nomes;
}

ImportacaoDoPacote::Fim ImportacaoDoPacote::Importar(const std::function<bool(int)> &escolhida,
                                                     const std::function<void(int)> &andamento)
{
    m_importando = true;
    const auto terminar = qScopeGuard([this] {
        m_importando = false;
        m_trava.Soltar();
    });
    if (!PegarTrava())
        return Fim::Interrompida;
    // Gathers what is forced to the disk; at its end, before anybody is told of success, all of it is.
    const Banco::Remessa remessa(m_banco);
    while (m_proxima < Quantas()) {
        if (Parar())
            return Fim::Interrompida;
        const int i = m_proxima++;
        if (escolhida(i))
            TentarImportar(i);
        andamento(i);
        Respirar();
        if (m_semResposta && !Parar() && m_proxima < Quantas()) {
            m_semResposta = false;
            return Fim::EmPausa;
        }
    }
    return Parar() ? Fim::Interrompida : Fim::Concluida;
}

/// The book to ourselves, so that no restore comes between a recipe's statements; waits for who has it.
bool ImportacaoDoPacote::PegarTrava()
{
    return m_trava.Pegar([this] {
        DeixarEventosRodarem();
        return !Parar();
    });
}

bool ImportacaoDoPacote::Parar() const
{
    return m_interromper || Encerrando();
}

/// Lets the window live, but not oftener than anybody sees: an import is thousands of small steps. While the
/// package is loaded there is no window yet.
void ImportacaoDoPacote::Respirar()
{
    if (!m_importando)
        return;
    if (m_desdeORespiro.isValid() && m_desdeORespiro.elapsed() < kRespiroMs)
        return;
    DeixarEventosRodarem();
    m_desdeORespiro.start();
}

/// A recipe that fails does not take the others with it.
void ImportacaoDoPacote::TentarImportar(int i)
{
    try {
        EfetuarImportacao(i + 1);
    } catch (const std::exception &erro) {
        m_falhas += NomeParaMensagem(i);
        if (m_falhas.size() > kCaixasDeFalha || Parar())
            return;
        m_trava.Soltar(); // nobody waits for a box that is left open
        const PonteiroParaCaixa ponteiro;
        m_avisos.Avisar(
            QString(m_receitaGravada ? "Receita Importada Incompleta:" : "Receita Não Importada:") +
                kLinhaVazia + m_falhas.last() + kLinhaVazia + QString::fromUtf8(erro.what()),
            Avisos::Icone::Parada);
        PegarTrava();
    }
}

void ImportacaoDoPacote::EfetuarImportacao(int n)
{
    m_receitaGravada = false;
    const Pacote::Registro receita = m_pacote[n - 1];
    if (const QString excesso = receita.Excesso(); !excesso.isEmpty())
        throw std::runtime_error(excesso.toStdString());

    const QString nome = SemControles(receita.Valor(u"NOME").toString());
    if (NomeConhecido(nome) && !DesejaRepetir(nome))
        return;

    if (const QString campo = ComandosImportacao::CampoInvalido(receita); !campo.isEmpty())
        throw std::runtime_error(("O campo " + campo + " da receita, no pacote, é inválido.").toStdString());
    m_banco.ExecutarSQL(ComandosImportacao::SqlInserirReceita(receita, m_relogio.Hoje()));
    m_receitaGravada = m_algumaEntrou = true;
    const qint64 lngReceita = m_banco.AbrirRecordset(Comandos::SqlMaiorNumero()).Valor(0).toLongLong();

    bool figuraGravada = true;
    if (!receita.Valor(u"FIGURA").isEmpty()) {
        // The name in the package is another book's; here it is made from the new number.
        m_banco.ExecutarSQL(Comandos::SqlGravarFigura(lngReceita));
        figuraGravada = GravarFigura(receita, lngReceita);
    }
    const std::vector<Pacote::Registro> itens = receita.Itens();
    for (std::size_t i = 0; i < itens.size(); ++i) {
        m_banco.ExecutarSQL(ComandosImportacao::SqlInserirIngrediente(lngReceita, itens[i]));
        Respirar();
        if (Parar() && itens.size() - i > kLinhasQueFaltam)
            return;
    }
    if (!figuraGravada)
        throw std::runtime_error("A figura da receita não pôde ser gravada na pasta \"Fotos\".");
}

/// Kept on purpose: the name is looked for as it stands in the package, so that one with a comma never matches
/// and one with an apostrophe makes the query fail. A query that fails knows no recipe of that name; if the
/// book cannot be read at all, writing into it tells the user.
bool ImportacaoDoPacote::NomeConhecido(const QString &nome) const
{
    try {
        return !m_banco.AbrirRecordset(Comandos::SqlReceitaDeNome(nome), {"id_receitas"}).Eof();
    } catch (const ErroBanco &) {
        return false;
    }
}

bool ImportacaoDoPacote::DesejaRepetir(const QString &nome)
{
    m_trava.Soltar();
    const PonteiroParaCaixa ponteiro;
    const QString mostrado =
        nome.size() <= kNomeNaLista ? nome : nome.first(kNomeNaLista) + "..."; // a box has to fit the screen
    const Avisos::Resposta resposta = m_avisos.PerguntarComSaida(
        QString("Você já Possui uma Receita com o Título: ") + kLinhaVazia + mostrado + kLinhaVazia +
        "Cadastrada em seu " + kPrograma + "." + kLinhaVazia +
        "Deseja Cadastrar esta Nova Receita com o Mesmo Nome?");
    m_semResposta = resposta == Avisos::Resposta::Nenhuma;
    return PegarTrava() && resposta == Avisos::Resposta::Sim;
}

/// Whether every byte of the picture has arrived in its file.
bool ImportacaoDoPacote::GravarFigura(const Pacote::Registro &receita, qint64 lngReceita)
{
    Pacote::LeitorDaFigura leitor = receita.AbrirFigura();
    return m_figuras.GravarFigura([&] {
        Respirar();
        return leitor.LerBloco();
    }, lngReceita);
}

void ImportacaoDoPacote::Concluir()
{
    const PonteiroParaCaixa ponteiro;
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

QString ImportacaoDoPacote::NomeParaMensagem(int i) const
{
    const QString nome = Pacote::DesfazerVirgulas(SemControles(m_pacote.Nome(i, kNomeNaLista)));
    return nome.size() <= kNomeNaMensagem ? nome : nome.first(kNomeNaMensagem) + "...";
}
