#include "store/Banco.h"

#include "base/Disco.h"
#include "base/EventosPendentes.h"
#include "base/Ponteiro.h"
#include "store/Cabecalho.h"
#include "store/Carimbo.h"
#include "store/Comandos.h"
#include "store/Consulta.h"
#include "store/CopiasDatadas.h"
#include "store/ErroBanco.h"
#include "store/Esquema.h"
#include "store/ExameArquivo.h"
#include "store/ExameEsquema.h"
#include "store/Motor.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTimer>
#include <QtEndian>

#include <algorithm>
#include <deque>
#include <string>
#include <unordered_set>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace
{
constexpr QLatin1String kInicio("DBQ=");
constexpr qint64 kLivroPequeno = 2 * 1024 * 1024; ///< bytes; its indexes are made in a few milliseconds
constexpr int kSincroniaMs = 100;
constexpr int kFatiaMs = 8; ///< of reading, between two looks at the window's events
constexpr int kEsperaPequenaMs = 200;
const auto kNaoELivro =
    QStringLiteral("O arquivo dadosr.lst não é um livro de receitas do Cozinhario 2005, ou está danificado.");
constexpr QLatin1String kFim(";user=;pwd=;Driver={Microsoft Access Driver (*.mdb)}");

QString SemBarraFinal(QString pasta)
{
    while (pasta.size() > 1 && pasta.endsWith('/'))
        pasta.chop(1);
    return pasta;
}
/// The end of a message about a file that is refused. It was not changed by the refusal; but after a restore
/// it is not what it was, and then the copy from before that helps.
QString OQueSeFaz(const QString &caminho)
{
    const QString copia = CopiasDatadas::MaisNova(caminho);
    return copia.isEmpty() ? " Ele não foi alterado.\r\n\r\n" + caminho
                           : "\r\n\r\n" + caminho + "\r\n\r\n" + CopiasDatadas::ComoVoltar(copia);
}
} // namespace

QString AppFolder(const QString &pasta)
{
    const QString semBarra = SemBarraFinal(pasta);
    return semBarra.endsWith('\\') ? semBarra : semBarra + '\\';
}

/// The last record sets that were kept, all read under one stamp.
struct Banco::Memoria {
    struct Guardado {
        QString sql;
        QStringList colunas;
        RecordSet linhas;
    };
    static constexpr std::size_t kMaisConsultas = 8;
    static constexpr int kMaisLinhas = 1'000'000;

    Carimbo carimbo;
    std::deque<Guardado> guardados; ///< the last one used first
    std::shared_ptr<std::vector<Consulta *>> emCurso = std::make_shared<std::vector<Consulta *>>();

    const RecordSet *Procurar(const Carimbo &agora, const QString &sql, const QStringList &colunas)
    {
        if (!(agora == carimbo)) {
            guardados.clear();
            return nullptr;
        }
        const auto achado = std::find_if(guardados.begin(), guardados.end(), [&](const Guardado &g) {
            return g.sql == sql && g.colunas == colunas;
        });
        if (achado == guardados.end())
            return nullptr;
        std::rotate(guardados.begin(), achado, achado + 1);
        return &guardados.front().linhas;
    }
    void Guardar(const Carimbo &agora, const QString &sql, const QStringList &colunas,
                 const RecordSet &linhas)
    {
        if (!(agora == carimbo))
            guardados.clear();
        carimbo = agora;
        guardados.push_front({sql, colunas, linhas});
        int total = 0;
        std::size_t cabem = 0;
        for (const Guardado &g : guardados)
            if ((total += g.linhas.RecordCount()) <= kMaisLinhas && cabem < kMaisConsultas)
                ++cabem;
            else
                break;
        guardados.resize(std::max<std::size_t>(cabem, 1));
    }
};

struct Banco::EmRemessa {
    std::shared_ptr<Motor> motor;
    int wal = -1;          ///< the second file, opened to force it to the disk
    QElapsedTimer gravado; ///< since that was done last
    QElapsedTimer respirado;
    /// The names in the book, in capitals, so that a package's names are not each looked for in all of it;
    /// and the engine's word for what they were read of.
    std::unordered_set<std::string> nomes;
    qint64 versao = -1;

    ~EmRemessa()
    {
        if (wal >= 0)
            ::close(wal);
    }
    bool sujo = false; ///< something was written since
    QTimer vez;        ///< for the time in which nobody writes: a question that waits for its answer

    void Sincronizar()
    {
        if (wal >= 0 && std::exchange(sujo, false))
            ::fdatasync(wal);
        gravado.start();
    }
    /// Between two statements: what the window wants, and the disk, each now and then.
    void Respirar()
    {
        if (gravado.hasExpired(kSincroniaMs))
            Sincronizar();
        if (!respirado.isValid() || respirado.hasExpired(kFatiaMs)) {
            MostrarMudancas();
            respirado.start();
        }
    }
};

Banco::Banco(const QString &pasta)
    : m_pasta(SemBarraFinal(pasta))
    , m_conexao(kInicio + m_pasta + "\\dadosr.lst" + kFim)
    , m_memoria(std::make_shared<Memoria>())
{
}

QString Banco::AppFolder() const
{
    return ::AppFolder(m_pasta);
}

QString Banco::Caminho(const QString &relativo) const
{
    QString nativo = relativo;
    nativo.replace('\\', '/');
    while (nativo.startsWith('/'))
        nativo.remove(0, 1);
    return (m_pasta.endsWith('/') ? m_pasta : m_pasta + '/') + nativo;
}

QString Banco::CaminhoDoLivro() const
{
    // What stands between the two fixed pieces, so that a ";" in a folder's name is harmless; and only what
    // lies behind the application folder is written with backslashes that are separators.
    const QString dbq = m_conexao.mid(kInicio.size(), m_conexao.size() - kInicio.size() - kFim.size());
    return Caminho(dbq.mid(m_pasta.size()));
}

int Banco::PrepararLivro(const QString &caminho) const
{
    QString erro;
    int versao = Esquema::kVersao;
    TipoArquivo tipo = ExaminarArquivo(caminho, &erro, &versao);
    if (m_soLeitura) {
        if (tipo == TipoArquivo::Livro || tipo == TipoArquivo::LivroWal)
            return versao;
        if (tipo == TipoArquivo::Ausente || tipo == TipoArquivo::Vazio)
            throw ErroBanco("Não há livro de receitas aqui.\r\n\r\n" + caminho);
    }
    if (tipo == TipoArquivo::LivroWal) {
        m_existiu = true;
        ConferirEsquema(caminho, true);
        Motor(caminho, m_esperaMs).SairDoWal();
        ConferirEsquema(caminho, false);
        return versao;
    }
    if (tipo == TipoArquivo::Livro && QFile::exists(caminho + "-journal")) {
        // Rolling back may leave nothing of a book that was just being made.
        Motor(caminho, m_esperaMs).LerUmaVez();
        tipo = ExaminarArquivo(caminho, &erro, &versao);
    }
    // A book that another copy of the program is writing can look cut for a moment; reading waits for that
    // copy.
    constexpr int kVezes = 10;
    for (int vez = 0; vez < kVezes && tipo == TipoArquivo::Cortado; ++vez) {
        Motor(caminho, m_esperaMs, m_soLeitura).LerUmaVez();
        tipo = ExaminarArquivo(caminho, &erro, &versao);
    }
    if (tipo == TipoArquivo::Access && m_conversor && !m_soLeitura) {
        // A journal beside an Access file belongs to a book that is gone; it would be rolled back into the
        // new one.
        Motor::RemoverJournal(caminho);
        m_conversor(caminho);
        tipo = ExaminarArquivo(caminho, &erro, &versao);
    }
    if (tipo != TipoArquivo::Ausente && tipo != TipoArquivo::Vazio)
        m_existiu = true;
    switch (tipo) {
    case TipoArquivo::Livro:
        ConferirEsquema(caminho, false);
        if (versao < Esquema::kVersao)
            versao = EvoluirPequeno(caminho);
        return versao;
    case TipoArquivo::LivroWal:
        return versao;
    case TipoArquivo::Futuro:
        if (ExaminarEsquema(caminho, true).origem == ExameEsquema::Origem::Outro)
            break; // another program's number
        throw ErroBanco(
            "Este livro de receitas foi gravado por uma versão mais nova do Cozinhario 2005. Ele não "
            "foi alterado.\r\n\r\nInstale a versão mais nova para abri-lo.\r\n\r\n" +
            caminho);
    case TipoArquivo::Ausente:
    case TipoArquivo::Vazio:
        if (m_existiu)
            throw ErroBanco(
                "O livro de receitas sumiu da pasta enquanto o programa estava aberto.\r\n\r\n"
                "Devolva o arquivo dadosr.lst à pasta (ou religue o disco em que ele está) e tente "
                "de novo. Nada foi gravado.\r\n\r\n" +
                caminho);
        Motor::Criar(caminho, m_esperaMs);
        m_existiu = true;
        return Esquema::kVersao;
    case TipoArquivo::Access:
    case TipoArquivo::Cortado:
    case TipoArquivo::Outro:
        break;
    }
    if (!erro.isEmpty())
        throw ErroBanco("Não foi possível abrir o livro de receitas.\r\n\r\n" + caminho + ": " + erro);
    throw ErroBanco(kNaoELivro + OQueSeFaz(caminho));
}

void Banco::ConferirEsquema(const QString &caminho, bool semTocar) const
{
    constexpr std::size_t kMarcaDoEsquema = 40; // four bytes that move on with every change of it
    const Cabecalho lido = Cabecalho::De(caminho);
    if (lido.lidos < static_cast<std::ptrdiff_t>(Cabecalho::kTamanho))
        return; // the operation itself will tell
    const Conferido agora{quint64(lido.dados.st_dev), quint64(lido.dados.st_ino),
                          qFromBigEndian<quint32>(lido.bytes.data() + kMarcaDoEsquema)};
    if (agora == m_conferido)
        return;
    const ExameEsquema exame = ExaminarEsquema(caminho, semTocar);
    switch (exame.origem) {
    case ExameEsquema::Origem::Nosso:
        if (!semTocar)
            m_conferido = agora;
        return;
    case ExameEsquema::Origem::Desconhecido:
        return; // the operation itself will tell
    case ExameEsquema::Origem::Outro:
        throw ErroBanco(kNaoELivro + OQueSeFaz(caminho));
    case ExameEsquema::Origem::Mexido:
        throw ErroBanco(
            QString("O arquivo dadosr.lst tem uma parte que não é do Cozinhario 2005 (\"%1\") e por isso "
                    "não foi aberto.%2")
                .arg(exame.estranho.left(100), OQueSeFaz(caminho)));
    }
}

int Banco::EvoluirPequeno(const QString &caminho) const
{
    int versao = 0;
    if (m_naoEvolui || QFileInfo(caminho).size() > kLivroPequeno)
        return versao;
    try {
        TerminarConsultas();
        Motor(caminho, std::min(m_esperaMs, kEsperaPequenaMs)).Evoluir({});
    } catch (const ErroBanco &) {
        m_naoEvolui = true;
    }
    ExaminarArquivo(caminho, nullptr, &versao);
    return versao;
}

bool Banco::PrecisaEvoluir() const
{
    int versao = Esquema::kVersao;
    return !m_naoEvolui && ExaminarArquivo(CaminhoDoLivro(), nullptr, &versao) == TipoArquivo::Livro &&
           versao < Esquema::kVersao;
}

void Banco::Evoluir(const Andamento &andamento) const
{
    const QString caminho = CaminhoDoLivro();
    PrepararLivro(caminho);
    TerminarConsultas();
    m_naoEvolui = true; // unless it comes to its end
    Motor(caminho, m_esperaMs).Evoluir(andamento);
    m_naoEvolui = false;
}

RecordSet Banco::AbrirRecordset(const QString &sql) const
{
    return AbrirRecordset(sql, {});
}

Banco::Remessa::Remessa(const Banco &banco)
    : m_banco(banco)
{
    if (banco.m_remessa)
        return;
    if (banco.m_antesDeGravar)
        banco.m_antesDeGravar();
    banco.LerUmaVez();
    auto remessa = std::make_shared<EmRemessa>();
    const QString caminho = banco.CaminhoDoLivro();
    remessa->motor = std::make_shared<Motor>(caminho, banco.m_esperaMs);
    if (!remessa->motor->EntrarNoWal())
        return;
    remessa->motor->LerUmaVez(); // makes the second file
    remessa->wal = ::open(QFile::encodeName(caminho + "-wal").constData(), O_RDONLY | O_CLOEXEC);
    remessa->gravado.start();
    QObject::connect(&remessa->vez, &QTimer::timeout, &remessa->vez,
                     [r = remessa.get()] { r->Sincronizar(); });
    remessa->vez.start(kSincroniaMs);
    banco.m_remessa = std::move(remessa);
    m_minha = true;
}

Banco::Remessa::~Remessa()
{
    if (!m_minha)
        return;
    const std::shared_ptr<EmRemessa> remessa = std::exchange(m_banco.m_remessa, nullptr);
    remessa->motor->SairDoWal(); // writes everything into the book, and forces it to the disk
}

void Banco::Remessa::Sincronizar()
{
    if (m_minha)
        m_banco.m_remessa->Sincronizar();
}

/// Whether the statement asks for a recipe of a name that the book does not have. It asks so for each recipe
/// of a package; looking through all names of a large book each time would take longer than all the rest.
bool Banco::NomeDesconhecido(const QString &sql) const
{
    static const QString inicio = Comandos::SqlReceitaDeNome({}).chopped(1);
    if (!sql.startsWith(inicio) || sql.indexOf('\'', inicio.size()) != sql.size() - 1)
        return false;
    EmRemessa &remessa = *m_remessa;
    if (const qint64 versao = remessa.motor->VersaoDosDados(); versao != remessa.versao) {
        remessa.nomes.clear();
        Consulta todos({{}, 0, Comandos::SqlLista(), {"Nome"}, Esquema::kVersao, remessa.motor});
        while (!todos.Avancar(kFatiaMs))
            MostrarMudancas();
        const RecordSet rs = todos.Linhas();
        for (int i = 0; i < rs.RecordCount(); ++i)
            remessa.nomes.insert(Comandos::Maiusculas(rs.TextoEm(i, 0)).toStdString());
        remessa.versao = versao;
    }
    return !remessa.nomes.contains(sql.sliced(inicio.size()).chopped(1).toStdString());
}

RecordSet Banco::AbrirRecordset(const QString &sql, const QStringList &colunas, Guardar guardar) const
{
    if (m_remessa) {
        m_remessa->Respirar();
        Consulta consulta({{}, m_esperaMs, sql, colunas, Esquema::kVersao, m_remessa->motor});
        if (!NomeDesconhecido(sql))
            consulta.Avancar(-1);
        return consulta.Linhas();
    }
    Ponteiro::Ampulheta();
    MostrarMudancas();
    const std::unique_ptr<Consulta> consulta = NovaConsulta(sql, colunas, guardar, [] { MostrarMudancas(); });
    while (!consulta->Avancar(kFatiaMs))
        MostrarMudancas();
    Ponteiro::Normal();
    MostrarMudancas();
    return consulta->Linhas();
}

std::unique_ptr<Consulta> Banco::AbrirConsulta(const QString &sql, const QStringList &colunas,
                                               Guardar guardar) const
{
    Ponteiro::Ampulheta();
    MostrarMudancas();
    std::unique_ptr<Consulta> consulta = NovaConsulta(sql, colunas, guardar, [] { MostrarMudancas(); });
    consulta->Anotar(m_memoria->emCurso);
    Ponteiro::Normal();
    MostrarMudancas();
    return consulta;
}

std::unique_ptr<Consulta> Banco::NovaConsulta(const QString &sql, const QStringList &colunas, Guardar guardar,
                                              std::function<void()> respirar) const
{
    const QString caminho = CaminhoDoLivro();
    const int versao = PrepararLivro(caminho);
    Consulta::AoTerminar aoTerminar;
    if (guardar == Guardar::Sim) {
        const Carimbo antes = Carimbo::De(caminho);
        if (antes.Valido()) {
            if (const RecordSet *linhas = m_memoria->Procurar(antes, sql, colunas))
                return std::make_unique<Consulta>(*linhas);
            // The book is still held when the last row has come: the same stamp then is that of every row.
            aoTerminar = [memoria = std::weak_ptr(m_memoria), caminho, antes, sql,
                          colunas](const RecordSet &linhas) {
                const std::shared_ptr<Memoria> viva = memoria.lock();
                if (viva && Carimbo::De(caminho) == antes)
                    viva->Guardar(antes, sql, colunas, linhas);
            };
        }
    }
    return std::make_unique<Consulta>(
        Consulta::Pedido{caminho, m_esperaMs, sql, colunas, versao, {}, m_soLeitura}, std::move(aoTerminar),
        std::move(respirar));
}

void Banco::TerminarConsultas() const
{
    const std::vector<Consulta *> emCurso = *m_memoria->emCurso;
    for (Consulta *consulta : emCurso) {
        try {
            consulta->Avancar(-1);
        } catch (const ErroBanco &) {
            // Whoever asked for the rows finds them ended.
        }
    }
}

int Banco::ExecutarSQL(const QString &sql) const
{
    if (m_remessa) {
        m_remessa->Respirar();
        TerminarConsultas();
        m_remessa->sujo = true;
        const int alteradas = m_remessa->motor->Executar(sql);
        m_ultimoNumero = m_remessa->motor->UltimoNumero();
        if (sql.startsWith(QLatin1String("Insert into Receitas("), Qt::CaseInsensitive) &&
            m_remessa->versao >= 0) {
            const QString qual =
                "Select * from Receitas Where id_receitas = " + QString::number(m_ultimoNumero);
            Consulta nova({{}, 0, qual, {"Nome"}, Esquema::kVersao, m_remessa->motor});
            nova.Avancar(-1);
            for (int i = 0; i < nova.Linhas().RecordCount(); ++i)
                m_remessa->nomes.insert(Comandos::Maiusculas(nova.Linhas().TextoEm(i, 0)).toStdString());
        } else if (!sql.startsWith(QLatin1String("Insert into "), Qt::CaseInsensitive)) {
            m_remessa->versao = sql.contains("Nome", Qt::CaseInsensitive) ? -1 : m_remessa->versao;
        }
        return alteradas;
    }
    Ponteiro::Ampulheta();
    MostrarMudancas();
    if (m_antesDeGravar)
        m_antesDeGravar();
    const QString caminho = CaminhoDoLivro();
    PrepararLivro(caminho);
    TerminarConsultas();
    Motor motor(caminho, m_esperaMs);
    const int alteradas = motor.Executar(sql);
    if (const qint64 numero = motor.UltimoNumero(); numero != 0)
        m_ultimoNumero = numero;
    Ponteiro::Normal();
    MostrarMudancas();
    return alteradas;
}

std::optional<Banco::Recusa> Banco::Conferir(const QStringList &comandos) const
{
    const QString caminho = CaminhoDoLivro();
    PrepararLivro(caminho);
    Motor motor(caminho, m_esperaMs);
    for (qsizetype i = 0; i < comandos.size(); ++i) {
        try {
            motor.Conferir(comandos[i]);
        } catch (const ErroBanco &erro) {
            return Recusa{i, erro.Mensagem()};
        }
    }
    return std::nullopt;
}

QStringList Banco::Integridade() const
{
    const QString caminho = CaminhoDoLivro();
    PrepararLivro(caminho);
    return Motor(caminho, m_esperaMs, m_soLeitura).Integridade();
}

void Banco::LerUmaVez() const
{
    const QString caminho = CaminhoDoLivro();
    TerminarConsultas();
    PrepararLivro(caminho);
    Motor(caminho, m_esperaMs).LerUmaVez();
}

void Banco::Firmar() const
{
    Disco::SincronizarPasta(QFileInfo(CaminhoDoLivro()).absolutePath());
}

void Banco::RemoverJournal() const
{
    TerminarConsultas();
    Motor::RemoverJournal(CaminhoDoLivro());
}
