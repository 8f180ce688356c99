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
#include "base/Ponteiro.h"
#include "base/Relogio.h"
#include "base/SeletorArquivos.h"
#include "base/Telas.h"
#include "packages/Recipiente.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/CopiasDatadas.h"
#include "store/ErroBanco.h"
#include "store/ExameArquivo.h"
#include "store/ExameEsquema.h"
#include "store/Figuras.h"
#include "store/TravaDoLivro.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>
#include <cerrno>
#include <optional>

namespace
{
const QString kFiltro = "Arquivos de Backups|*.bck";
constexpr int kMaximoInicial = 100; ///< the bar's own, until the number of pictures is known
constexpr int kFatiasPorGravacao = 32;
/// How long another copy of the program may keep us waiting.
constexpr int kEsperaMs = 10'000;
/// Of the bar, the part that packing takes; what follows is the reading back.
constexpr double kParteDeCompactar = 0.85;
const QString kOcupado =
    "O livro de receitas está sendo usado por outra cópia do programa. Tente de novo daqui a pouco.";
const QString kSeguintes = "!\r\nOs Arquivos Seguintes não foram Restaurados.";

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

/// Takes the lock, letting the window live meanwhile; false when another copy keeps it too long.
bool Esperar(TravaDoLivro &trava)
{
    const QDeadlineTimer prazo(kEsperaMs);
    return trava.Pegar([&prazo] { return Respirar() && !prazo.hasExpired(); });
}

QString ComoVoltar(const QString &copia)
{
    return copia.isEmpty() ? "Não havia livro antes da restauração." : CopiasDatadas::ComoVoltar(copia);
}

/// Work files of earlier versions of the program, which had the name of what they were to become.
void RemoverSobras(const QString &destino)
{
    const QFileInfo info(destino);
    ArquivoSeguro::RemoverSobras(info.absolutePath());
    const QFileInfo antiga(info.absolutePath() + "/~" + info.fileName() + ".tmp");
    if (antiga.isFile() && !antiga.isSymLink())
        QFile::remove(antiga.filePath());
}

/// The dialogs answer with a path; a bare name is no answer.
bool TemPasta(const QString &caminho)
{
    return caminho.contains('/') || caminho.contains('\\');
}

/// Whether the backup's book holds nothing but what the program makes: a trigger or a view in it would run
/// with every statement. A book in the old format is converted at its opening, and what is none is refused
/// there. The last entry of a name is the one that stays.
bool LivroAceito(QFile &arquivo, const QList<ArquivoBackup::Entrada> &entradas, const QString &pasta)
{
    bool aceito = true;
    for (const ArquivoBackup::Entrada &entrada : entradas) {
        if (entrada.nome.compare(ArquivoBackup::kNomeDoLivro, Qt::CaseInsensitive) != 0)
            continue;
        ArquivoDeTrabalho livro(pasta + "/~exame.lst");
        livro.Abrir();
        arquivo.seek(entrada.posicao);
        constexpr qint64 kPorVez = 1024 * 1024;
        for (qint64 falta = entrada.tamanho; falta > 0;) {
            const QByteArray bloco = arquivo.read(std::min(falta, kPorVez));
            if (bloco.isEmpty() || livro.Arquivo().write(bloco) != bloco.size())
                throw Disco::ErroArquivo(livro.Caminho(), ENOSPC);
            falta -= bloco.size();
        }
        const TipoArquivo tipo = ExaminarArquivo(livro.Caminho());
        if (tipo != TipoArquivo::Livro && tipo != TipoArquivo::LivroWal && tipo != TipoArquivo::Futuro)
            continue;
        const ExameEsquema::Origem origem = ExaminarEsquema(livro.Caminho(), true).origem;
        aceito = aceito && origem != ExameEsquema::Origem::Mexido && origem != ExameEsquema::Origem::Outro;
    }
    return aceito;
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
    m_banco.DefinirAntesDeGravar([this] { AntesDeGravar(); });
}

modBackup::~modBackup()
{
    m_banco.DefinirAntesDeGravar({});
    AntesDeGravar();
}

void modBackup::AntesDeGravar()
{
    if (m_aDescartar)
        m_aDescartar = !RestauracaoDoLivro(m_banco, m_figuras).Descartar();
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
    case Fim::Ocupado:
        m_avisos.Avisar(kOcupado, Avisos::Icone::Exclamacao);
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
        // By promise every archive whose first entry has the name is put in place; now it shows what came.
        if (const QString problema = ProblemaDoLivroRestaurado(); !problema.isEmpty())
            m_avisos.Avisar(problema, Avisos::Icone::Parada);
        break;
    case Desfecho::Desistiu:
        break;
    case Desfecho::Invalido:
        m_avisos.Avisar("Arquivo de Cópia de Segurança Inválida!", Avisos::Icone::Parada);
        break;
    case Desfecho::Ocupado:
        m_avisos.Avisar(kOcupado + "\r\nNenhum Arquivo foi Alterado.", Avisos::Icone::Exclamacao);
        break;
    case Desfecho::LivroEstranho:
        m_avisos.Avisar(
            "Arquivo de Cópia de Segurança Inválida!\r\nO Livro de Receitas dela tem Partes que não são "
            "do Cozinhario 2005. Nenhum Arquivo foi Alterado.",
            Avisos::Icone::Parada);
        break;
    case Desfecho::NadaAlterado:
        m_avisos.Avisar("Unidade/Diretório Indisponível no Momento!\r\nNenhum Arquivo foi Alterado.",
                        Avisos::Icone::Parada);
        break;
    case Desfecho::Incompleto:
        m_janela.LivroRestaurado();
        m_avisos.Avisar("Impossível Restaurar o Arquivo " + m_arquivoQueFalhou + kSeguintes,
                        Avisos::Icone::Parada);
        break;
    }
}

void modBackup::ConcluirRestauracao()
{
    QString recado;
    Avisos::Icone icone = Avisos::Icone::Parada;
    {
        RestauracaoDoLivro restauracao(m_banco, m_figuras);
        TravaDoLivro trava(m_banco);
        bool pendente = restauracao.Pendente();
        if (pendente && !Esperar(trava)) {
            m_avisos.Avisar(kOcupado, Avisos::Icone::Exclamacao); // it is finished at the next start
            return;
        }
        if (pendente && restauracao.LivroMudouDesdeADecisao()) {
            const std::optional<QString> copia = restauracao.GuardarLivroAtual(m_relogio.Agora());
            pendente = copia.has_value();
            icone = pendente ? Avisos::Icone::Informacao : Avisos::Icone::Parada;
            recado =
                pendente
                    ? "Uma restauração que tinha ficado pela metade foi concluída agora.\r\n\r\n" +
                          ComoVoltar(*copia)
                    : QString(
                          "Uma restauração ficou pela metade, e não foi possível guardar o livro de agora "
                          "para concluí-la. Ela foi abandonada, e o livro está como estava.");
        }
        const QString falhou = pendente ? restauracao.Aplicar() : QString();
        m_aDescartar = !restauracao.Descartar();
        if (!falhou.isEmpty()) {
            recado = "Impossível Restaurar o Arquivo " + falhou + kSeguintes;
            icone = Avisos::Icone::Parada;
        }
    }
    // What else a run that was cut off leaves; folders that hold anything of the user's stay.
    for (const auto &[pasta, arquivo] :
         {std::pair("Restore", "/~exame.lst"), std::pair("Restore", "/~temp.rst"),
          std::pair("Backup", "/~temp.bck")}) {
        const QString onde = m_banco.Caminho(pasta);
        if (!Disco::EPasta(onde))
            continue; // none, or a link to somebody else's
        QFile::remove(onde + arquivo);
        ArquivoSeguro::RemoverSobras(onde);
        QDir().rmdir(onde);
    }
    if (!recado.isEmpty())
        m_avisos.Avisar(recado, icone);
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
        operacao.DefinirValor(1);
        // Neither the book nor the work file can be the place of its own copy.
        if (!Disco::MesmoArquivo(destino, m_banco.CaminhoDoLivro()) &&
            !Disco::MesmoArquivo(destino, trabalho.Caminho())) {
            fim = EscreverArquivo(trabalho.Arquivo());
            if (fim == Fim::Feito) {
                operacao.DefinirMaximo(m_quantasFiguras == 0 ? 2 : m_quantasFiguras + 1);
                fim = CompactarPara(trabalho.Arquivo(), destino, operacao);
            }
        }
    } catch (const Disco::ErroArquivo &) {
        fim = Fim::Falhou;
    }
    operacao.DefinirValor(operacao.Maximo());
    return fim;
}

Fim modBackup::EscreverArquivo(QFile &arquivo)
{
    ArquivadorDoLivro arquivador(m_banco, m_figuras, Respirar);
    TravaDoLivro trava(m_banco);
    if (!Esperar(trava))
        return Encerrando() ? Fim::Interrompido : Fim::Ocupado;
    m_arquivoQueFalhou = ArquivoBackup::kNomeDoLivro;
    if (const Fim fim = arquivador.EscreverLivro(arquivo); fim != Fim::Feito)
        return fim;
    RecordSet rs = m_banco.AbrirRecordset(Comandos::SqlFigurasDoBackup());
    m_quantasFiguras = rs.RecordCount();
    for (; !rs.Eof(); rs.MoveNext()) {
        m_arquivoQueFalhou = rs.Texto(0);
        if (const Fim fim = arquivador.EscreverFigura(arquivo, rs.Texto(0)); fim != Fim::Feito)
            return fim;
    }
    return Fim::Feito;
}

/// A backup that restores: unpacked again and compared before it takes an earlier one's place. Here the time
/// goes, so the bar goes on here: one step for each picture, as their bytes pass and not as they are counted.
Fim modBackup::CompactarPara(QFile &arquivo, const QString &destino, OperacaoLonga &operacao)
{
    RemoverSobras(destino);
    ArquivoSeguro copia(destino, {.modelo = m_banco.CaminhoDoLivro(), .seguirLink = true});
    copia.Abrir();
    const auto total = static_cast<double>(std::max<qint64>(arquivo.size(), 1));
    const auto andar = [&](double parte) {
        while (operacao.Valor() <= m_quantasFiguras * parte && operacao.Valor() <= m_quantasFiguras)
            operacao.Avancar();
        return Respirar();
    };
    int fatias = 0;
    const auto compactando = [&] {
        if (++fatias % kFatiasPorGravacao == 0)
            Disco::IniciarGravacao(copia.Arquivo());
        return andar(kParteDeCompactar * static_cast<double>(arquivo.pos()) / total);
    };
    const auto conferindo = [&] {
        return andar(kParteDeCompactar +
                     (1 - kParteDeCompactar) * static_cast<double>(arquivo.pos()) / total);
    };
    quint32 soma = 0;
    if (const Fim fim = FimDe(RecipienteEmFatias::Compactar(arquivo, copia.Arquivo(), soma, compactando));
        fim != Fim::Feito)
        return fim;
    if (const Fim fim = FimDe(RecipienteEmFatias::Conferir(copia.Arquivo(), arquivo, soma, conferindo));
        fim != Fim::Feito)
        return fim;
    copia.Confirmar();
    andar(1);
    return Fim::Feito;
}

modBackup::Desfecho modBackup::Restaurar(const QString &origem)
{
    const QString pasta = m_banco.Caminho("Restore");
    const bool temPasta = Disco::FazerPasta(pasta); // it may exist
    QDir().mkdir(m_banco.Caminho("Fotos"));         // the same
    ArquivoDeTrabalho trabalho(pasta + "/~temp.rst");
    const auto limpar = qScopeGuard([&] {
        m_aDescartar = !RestauracaoDoLivro(m_banco, m_figuras).Descartar();
        trabalho.Remover();
        if (temPasta)
            QDir().rmdir(pasta); // stays when it holds files of the user's
    });
    QFile &arquivo = trabalho.Arquivo();

    QList<ArquivoBackup::Entrada> entradas;
    {
        const EsperaLonga espera;
        QFile recipiente(origem);
        if (!QFileInfo(origem).isFile() || Disco::MesmoArquivo(origem, trabalho.Caminho()) ||
            !recipiente.open(QIODevice::ReadOnly))
            return Desfecho::Invalido;
        try {
            if (!temPasta)
                return Desfecho::NadaAlterado;
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
        try {
            if (!LivroAceito(arquivo, entradas, pasta))
                return Desfecho::LivroEstranho;
        } catch (const Disco::ErroArquivo &) {
            return Desfecho::NadaAlterado;
        }
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
    // From here to the end no other copy adds a recipe: it would be added to two books, or to none.
    TravaDoLivro trava(m_banco);
    if (!Esperar(trava))
        return Encerrando() ? Desfecho::Desistiu : Desfecho::Ocupado;
    try {
        if (QFile::exists(m_banco.CaminhoDoLivro()))
            m_banco.LerUmaVez(); // its tail and its copy are taken from a book with nothing pending
    } catch (const ErroOcupado &) {
        return Desfecho::Ocupado;
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
    const std::optional<QString> copia = restauracao.GuardarLivroAtual(m_relogio.Agora());
    if (!copia || !restauracao.Decidir(*copia))
        return Desfecho::NadaAlterado;
    m_copiaGuardada = *copia;
    m_arquivoQueFalhou = restauracao.Aplicar();
    operacao.DefinirValor(operacao.Maximo());
    return m_arquivoQueFalhou.isEmpty() ? Desfecho::Feito : Desfecho::Incompleto;
}

/// What the user has to know of the book that a restore has brought; "" when it is one.
QString modBackup::ProblemaDoLivroRestaurado() const
{
    if (ExaminarArquivo(m_banco.CaminhoDoLivro()) == TipoArquivo::Access)
        return {}; // an old book: its next opening converts it, or says why not
    try {
        m_banco.AbrirRecordset(Comandos::SqlMaiorNumero());
        m_banco.AbrirRecordset(Comandos::SqlIngredientes(0));
        return {};
    } catch (const ErroBanco &) {
        Ponteiro::NormalSempre();
        return "O arquivo que a cópia de segurança trouxe não é um livro de receitas, ou está "
               "danificado.\r\n\r\n" +
               ComoVoltar(m_copiaGuardada);
    }
}
