#include "backup/modBackup.h"

#include "backup/EscalaDeProgresso.h"
#include "backup/JanelaDoBackup.h"
#include "backup/RestauracaoDoLivro.h"
#include "base/ArquivoDeTrabalho.h"
#include "base/ArquivoSeguro.h"
#include "base/Avisos.h"
#include "base/EventosPendentes.h"
#include "base/Operacao.h"
#include "base/OperacaoLonga.h"
#include "base/Relogio.h"
#include "base/SeletorArquivos.h"
#include "base/Telas.h"
#include "packages/Recipiente.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"
#include "store/Figuras.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <cerrno>

namespace
{
const QString kFiltro = "Arquivos de Backups|*.bck";
constexpr int kMaximoInicial = 100; ///< the bar's own, until the number of pictures is known
constexpr int kFatiasPorGravacao = 32;

/// Lets the window live; false once the program is ending.
bool Respirar()
{
    DeixarEventosRodarem();
    return !Encerrando();
}

/// Where the application folder cannot be written (a stick that is write-protected), or a link stands in the
/// work folder's place, the work file is made beside the backup, without a name.
void AbrirTrabalho(ArquivoDeTrabalho &trabalho, const QString &pasta, const QString &outra)
{
    if (!Disco::FazerPasta(pasta)) {
        trabalho.AbrirSemNome(outra);
        return;
    }
    try {
        trabalho.Abrir();
    } catch (const Disco::ErroArquivo &erro) {
        if (erro.Codigo() != EACCES && erro.Codigo() != EROFS)
            throw;
        trabalho.AbrirSemNome(outra);
    }
}

/// The dialogs answer with a path; a bare name is no answer.
bool TemPasta(const QString &caminho)
{
    return caminho.contains('/') || caminho.contains('\\');
}

Fim FimDe(int codigo)
{
    if (codigo == Recipiente::kSucesso)
        return Fim::Feito;
    return codigo == RecipienteEmFatias::kInterrompido ? Fim::Interrompido : Fim::Falhou;
}
} // namespace

modBackup::modBackup(const Banco &banco, const Figuras &figuras, Avisos &avisos, SeletorArquivos &seletor,
                     PainelMensagem &painel, Telas &telas, const Relogio &relogio, JanelaDoBackup &janela)
    : m_banco(banco)
    , m_figuras(figuras)
    , m_avisos(avisos)
    , m_seletor(seletor)
    , m_painel(painel)
    , m_telas(telas)
    , m_relogio(relogio)
    , m_janela(janela)
{
}

void modBackup::imgBackup_Click()
{
    const Operacao operacao(Operacao::Tipo::Backup);
    PedidoArquivo pedido;
    pedido.titulo = "Salvar Arquivo de Backup do Cozinhario 2005";
    pedido.filtro = kFiltro;
    pedido.pastaInicial = PastaDoDialogo();
    pedido.nome = "BackupCozinhario.bck";
    const QString destino = m_seletor.EscolherParaSalvar(pedido);
    if (!TemPasta(destino))
        return;

    switch (Salvar(destino)) {
    case Fim::Feito:
        m_avisos.Avisar("Cópia de Segurança Realizada com Sucesso!", Avisos::Icone::Nenhum);
        break;
    case Fim::Falhou:
        m_avisos.Avisar("Unidade/Diretório Indisponível no Momento!", Avisos::Icone::Parada);
        break;
    case Fim::GrandeDemais:
        m_avisos.Avisar("Arquivo Grande Demais para a Cópia de Segurança: " + m_arquivoQueFalhou + "!",
                        Avisos::Icone::Parada);
        break;
    case Fim::Interrompido:
        break;
    }
}

void modBackup::imgRestore_Click()
{
    const Operacao operacao(Operacao::Tipo::Restauracao);
    m_telas.RestaurarBotoes();
    PedidoArquivo pedido;
    pedido.titulo = "Selecione o Arquivo de Backup do Cozinhario 2005";
    pedido.filtro = kFiltro;
    pedido.pastaInicial = PastaDoDialogo();
    pedido.exigirExistente = false; // a name typed in vain gets our own answer
    const QString origem = m_seletor.EscolherParaAbrir(pedido);
    if (!TemPasta(origem))
        return;
    if (!QFileInfo::exists(origem)) {
        m_avisos.Avisar("Arquivo de Cópia de Segurança Não Localizado!", Avisos::Icone::Parada);
        return;
    }

    switch (Restaurar(origem)) {
    case Desfecho::Feito:
        m_janela.EsconderTelas();
        m_janela.LivroRestaurado();
        m_avisos.Avisar("Restauração da Cópia de Segurança Realizada com Sucesso!", Avisos::Icone::Nenhum);
        break;
    case Desfecho::Desistiu:
        break;
    case Desfecho::Invalido:
        m_avisos.Avisar("Arquivo de Cópia de Segurança Inválida!", Avisos::Icone::Parada);
        break;
    case Desfecho::NadaAlterado:
        m_avisos.Avisar("Unidade/Diretório Indisponível no Momento!\r\nNenhum Arquivo foi Alterado.",
                        Avisos::Icone::Parada);
        break;
    case Desfecho::Incompleto:
        m_janela.LivroRestaurado();
        m_avisos.Avisar("Impossível Restaurar o Arquivo " + m_arquivoQueFalhou +
                            "!\r\nOs Arquivos Seguintes não foram Restaurados.",
                        Avisos::Icone::Parada);
        break;
    }
}

void modBackup::ConcluirRestauracao()
{
    RestauracaoDoLivro restauracao(m_banco, m_figuras);
    const QString falhou = restauracao.Pendente() ? restauracao.Aplicar() : QString();
    restauracao.Descartar();
    // What else a run that was cut off leaves; folders that hold anything of the user's stay.
    for (const auto &[pasta, arquivo] :
         {std::pair("Restore", "/~temp.rst"), std::pair("Backup", "/~temp.bck")}) {
        const QString onde = m_banco.Caminho(pasta);
        if (!Disco::EPasta(onde))
            continue; // none, or a link to somebody else's
        QFile::remove(onde + arquivo);
        QDir().rmdir(onde);
    }
    if (!falhou.isEmpty())
        m_avisos.Avisar("Impossível Restaurar o Arquivo " + falhou +
                            "!\r\nOs Arquivos Seguintes não foram Restaurados.",
                        Avisos::Icone::Parada);
}

/// Where both dialogs begin: the application folder.
QString modBackup::PastaDoDialogo() const
{
    return QFileInfo(m_banco.CaminhoDoLivro()).absolutePath();
}

Fim modBackup::Salvar(const QString &destino)
{
    OperacaoLonga operacao(m_painel, "Realizando Backup do Sistema...", kMaximoInicial);
    const QString pasta = m_banco.Caminho("Backup");
    ArquivoDeTrabalho trabalho(pasta + "/~temp.bck");
    const auto limpar = qScopeGuard([&] {
        trabalho.Remover();
        if (Disco::EPasta(pasta))
            QDir().rmdir(pasta); // stays when it holds files of the user's
    });
    Fim fim = Fim::Falhou;
    try {
        AbrirTrabalho(trabalho, pasta, QFileInfo(destino).path());
        // Neither the book nor the work file can be the place of its own copy.
        if (!Disco::MesmoArquivo(destino, m_banco.CaminhoDoLivro()) &&
            !Disco::MesmoArquivo(destino, trabalho.Caminho())) {
            fim = EscreverArquivo(trabalho.Arquivo(), operacao);
            if (fim == Fim::Feito)
                fim = CompactarPara(trabalho.Arquivo(), destino);
        }
    } catch (const Disco::ErroArquivo &) {
        fim = Fim::Falhou;
    }
    operacao.DefinirValor(operacao.Maximo());
    return fim;
}

Fim modBackup::EscreverArquivo(QFile &arquivo, OperacaoLonga &operacao)
{
    operacao.DefinirValor(1);
    ArquivadorDoLivro arquivador(m_banco, m_figuras, Respirar);
    m_arquivoQueFalhou = ArquivoBackup::kNomeDoLivro;
    if (const Fim fim = arquivador.EscreverLivro(arquivo); fim != Fim::Feito)
        return fim;
    RecordSet rs = m_banco.AbrirRecordset(Comandos::SqlFigurasDoBackup());
    operacao.DefinirMaximo(rs.Eof() ? 2 : rs.RecordCount() + 1);
    for (; !rs.Eof(); rs.MoveNext()) {
        m_arquivoQueFalhou = rs.Texto(0);
        if (const Fim fim = arquivador.EscreverFigura(arquivo, rs.Texto(0)); fim != Fim::Feito)
            return fim;
        operacao.Avancar();
    }
    return Fim::Feito;
}

/// A backup that restores: unpacked again and compared before it takes an earlier one's place. Throws
/// ErroArquivo.
Fim modBackup::CompactarPara(QFile &arquivo, const QString &destino)
{
    // What a killed backup left there, under this name and under that of earlier versions.
    const QFileInfo lugar(destino);
    ArquivoSeguro::RemoverSobras(lugar.path());
    QFile::remove(lugar.path() + "/~" + lugar.fileName() + ".tmp");
    ArquivoSeguro copia(destino, {.modelo = m_banco.CaminhoDoLivro(), .seguirLink = true});
    copia.Abrir();
    int fatias = 0;
    const auto respirarGravando = [&] {
        if (++fatias % kFatiasPorGravacao == 0)
            Disco::IniciarGravacao(copia.Arquivo());
        return Respirar();
    };
    quint32 soma = 0;
    if (const Fim fim =
            FimDe(RecipienteEmFatias::Compactar(arquivo, copia.Arquivo(), soma, respirarGravando));
        fim != Fim::Feito)
        return fim;
    if (const Fim fim = FimDe(RecipienteEmFatias::Conferir(copia.Arquivo(), arquivo, soma, Respirar));
        fim != Fim::Feito)
        return fim;
    copia.Confirmar();
    return Fim::Feito;
}

modBackup::Desfecho modBackup::Restaurar(const QString &origem)
{
    const QString pasta = m_banco.Caminho("Restore");
    if (!Disco::FazerPasta(pasta)) // a link in its place leads to somebody else's
        return Desfecho::NadaAlterado;
    QDir().mkdir(m_banco.Caminho("Fotos")); // it may exist
    ArquivoDeTrabalho trabalho(pasta + "/~temp.rst");
    QFile &arquivo = trabalho.Arquivo();
    const auto limpar = qScopeGuard([&] {
        RestauracaoDoLivro(m_banco, m_figuras).Descartar();
        trabalho.Remover();
        QDir().rmdir(pasta); // stays when it holds files of the user's
    });

    QList<ArquivoBackup::Entrada> entradas;
    {
        const EsperaLonga espera;
        QFile recipiente(origem);
        if (!QFileInfo(origem).isFile() || Disco::MesmoArquivo(origem, trabalho.Caminho()) ||
            !recipiente.open(QIODevice::ReadOnly))
            return Desfecho::Invalido;
        try {
            trabalho.Abrir();
        } catch (const Disco::ErroArquivo &) {
            return Desfecho::NadaAlterado;
        }
        switch (RecipienteEmFatias::Descompactar(recipiente, arquivo, Respirar)) {
        case Recipiente::kSucesso:
            break;
        case RecipienteEmFatias::kInterrompido:
            return Desfecho::Desistiu;
        case Recipiente::kDestinoIndisponivel:
            return Desfecho::NadaAlterado; // the disk is full: the backup may well be sound
        default:
            return Desfecho::Invalido;
        }
        if (!ArquivoBackup::Ler(arquivo, entradas))
            return Desfecho::Invalido;
    }
    if (!m_avisos.Perguntar("Você Confirma Restauração da Cópia de Segurança?"))
        return Desfecho::Desistiu;
    return Substituir(arquivo, entradas);
}

modBackup::Desfecho modBackup::Substituir(QFile &arquivo, const QList<ArquivoBackup::Entrada> &entradas)
{
    const EscalaDeProgresso escala(arquivo.size());
    OperacaoLonga operacao(m_painel, "Realizando Restauração do Sistema...", escala.total);
    double valor = 0;
    const auto andar = [&](const ArquivoBackup::Entrada &entrada) {
        valor += static_cast<double>(entrada.tamanho) / static_cast<double>(escala.divisor);
        operacao.DefinirValor(valor >= escala.total ? escala.total : static_cast<int>(valor));
    };

    RestauracaoDoLivro restauracao(m_banco, m_figuras);
    try {
        if (QFile::exists(m_banco.CaminhoDoLivro()))
            m_banco.LerUmaVez(); // its tail and its copy are taken from a book with nothing pending
    } catch (const ErroBanco &) {
        // What lies there is no book: it is replaced, and copied first, as it is.
    }
    switch (restauracao.Preparar(arquivo, entradas, andar, Respirar)) {
    case Fim::Feito:
        break;
    case Fim::Interrompido:
        return Desfecho::Desistiu;
    default:
        return Desfecho::NadaAlterado;
    }
    if (!restauracao.GuardarLivroAtual(m_relogio.Agora()) || !restauracao.Decidir())
        return Desfecho::NadaAlterado;
    m_arquivoQueFalhou = restauracao.Aplicar();
    operacao.DefinirValor(operacao.Maximo());
    return m_arquivoQueFalhou.isEmpty() ? Desfecho::Feito : Desfecho::Incompleto;
}
