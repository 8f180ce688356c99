#include "store/Motor.h"

#include "base/ArquivoSeguro.h"
#include "store/ErroBanco.h"
#include "store/Esquema.h"
#include "store/Funcoes.h"
#include "store/Porteiro.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QThread>

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <string_view>

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
// A field of a package has at most five million letters.
constexpr int kMaiorTexto = 64 * 1024 * 1024;
// The engine's steps in one statement: the largest book's list takes a few thousand a page.
constexpr int kPassosPorVez = 2000;
constexpr qint64 kPagina = 4096;
constexpr qint64 kPassosPorPagina = 20'000;
constexpr qint64 kPassosSempre = 20'000'000;

/// What the user reads above the engine's own words.
QString Sentenca(int codigo)
{
    if (codigo == SQLITE_READONLY_DIRECTORY)
        return "Não é possível gravar na pasta do livro de receitas.";
    switch (codigo & 0xFF) {
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        return "O arquivo dadosr.lst não é um livro de receitas ou está danificado.";
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return "O livro de receitas está sendo usado por outro programa. Tente de novo daqui a pouco.";
    case SQLITE_INTERRUPT:
        return "A operação demoraria demais e foi interrompida.";
    case SQLITE_TOOBIG:
        return "O texto é grande demais para o livro de receitas.";
    case SQLITE_FULL:
        return "Não há espaço no disco para gravar no livro de receitas.";
    case SQLITE_READONLY:
        return "O livro de receitas não pode ser gravado.";
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
        return "Não foi possível abrir o livro de receitas ou gravar na pasta dele.";
    case SQLITE_IOERR:
        return "Não foi possível ler ou gravar o livro de receitas.";
    default:
        return "Não foi possível executar a operação no banco de dados.";
    }
}

QString Mensagem(int codigo, const QString &detalhe)
{
    return Sentenca(codigo) + "\r\n\r\n" + detalhe;
}

bool MesmoNome(const char *a, const char *b)
{
    return a && b && sqlite3_stricmp(a, b) == 0;
}

/// Reading and changing the rows of the two tables, with the named functions, and nothing else. Without this
/// gate a text that reaches a statement unquoted could reach other files, settings and tables.
/// @param plano a bool: whether the store itself asks, in place of a statement
int Autorizar(void *plano, int acao, const char *primeiro, const char *segundo, const char *,
              const char *gatilho)
{
    switch (acao) {
    case SQLITE_SELECT:
        return SQLITE_OK;
    case SQLITE_READ:
    case SQLITE_INSERT:
    case SQLITE_UPDATE:
    case SQLITE_DELETE:
        return MesmoNome(primeiro, "Receitas") || MesmoNome(primeiro, "Ingredientes") ? SQLITE_OK
                                                                                      : SQLITE_DENY;
    case SQLITE_FUNCTION:
        if (!segundo)
            return SQLITE_DENY;
        return (gatilho || *static_cast<bool *>(plano) ? Funcoes::DoLivro(segundo)
                                                       : Funcoes::DosComandos(segundo))
                   ? SQLITE_OK
                   : SQLITE_DENY;
    default:
        return SQLITE_DENY;
    }
}

bool SoBrancos(const char *texto)
{
    for (; *texto; ++texto)
        if (std::string_view(" \t\r\n\f;").find(*texto) == std::string_view::npos)
            return false;
    return true;
}

/// The engine takes names that begin with "file:" or ":" for something else than a file.
QByteArray NomeParaMotor(const QString &caminho)
{
    const QByteArray nome = QFile::encodeName(caminho);
    return nome.startsWith('/') ? nome : "./" + nome;
}

[[noreturn]] void FalharAoCriar(const QString &caminho, int erro)
{
    throw ErroBanco(QString("Não foi possível criar o livro de receitas em %1.\r\n\r\n%2")
                        .arg(QFileInfo(caminho).absolutePath(), qt_error_string(erro)));
}

/// The bytes of an empty book.
QByteArray BytesDoLivroVazio()
{
    struct Memoria {
        sqlite3 *conexao = nullptr;
        unsigned char *bytes = nullptr;
        ~Memoria()
        {
            sqlite3_free(bytes);
            sqlite3_close(conexao);
        }
    } memoria;
    sqlite3_int64 tamanho = 0;
    if (sqlite3_open_v2(":memory:", &memoria.conexao, SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY, nullptr) ==
            SQLITE_OK &&
        Funcoes::Registrar(memoria.conexao) == SQLITE_OK &&
        sqlite3_exec(memoria.conexao, Esquema::Livro().constData(), nullptr, nullptr, nullptr) == SQLITE_OK)
        memoria.bytes = sqlite3_serialize(memoria.conexao, "main", &tamanho, 0);
    if (!memoria.bytes)
        throw ErroBanco(Mensagem(SQLITE_ERROR, QString::fromUtf8(sqlite3_errmsg(memoria.conexao))));
    return {reinterpret_cast<const char *>(memoria.bytes), static_cast<qsizetype>(tamanho)};
}

void CriarArquivo(const QString &caminho)
{
    try {
        ArquivoSeguro novo(caminho);
        novo.Abrir();
        novo.Escrever(BytesDoLivroVazio());
        novo.ConfirmarSeNovo(); // false: another copy of the program was quicker, its book is as good
    } catch (const Disco::ErroArquivo &erro) {
        FalharAoCriar(caminho, erro.Codigo());
    }
}
} // namespace

void Motor::FecharComando::operator()(sqlite3_stmt *comando) const
{
    sqlite3_finalize(comando);
}

int Motor::EsperarVez(void *motor, int vezes)
{
    auto *eu = static_cast<Motor *>(motor);
    if (vezes == 0)
        eu->m_espera.start();
    if (eu->m_espera.hasExpired(eu->m_esperaMs))
        return 0;
    QThread::usleep(QRandomGenerator::global()->bounded(500U, 3000U));
    return 1;
}

Motor::Motor(const QString &caminho, int esperaMs, bool soLeitura)
    : m_esperaMs(esperaMs)
{
    int rc = sqlite3_open_v2(NomeParaMotor(caminho).constData(), &m_conexao,
                             (soLeitura ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE) |
                                 SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE,
                             nullptr);
    if (rc == SQLITE_OK)
        rc = sqlite3_busy_handler(m_conexao, EsperarVez, this);
    if (rc == SQLITE_OK)
        rc = Funcoes::Registrar(m_conexao);
    if (rc == SQLITE_OK)
        rc = sqlite3_db_config(m_conexao, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    if (rc == SQLITE_OK)
        rc = sqlite3_set_authorizer(m_conexao, Autorizar, &m_plano);
    if (rc == SQLITE_OK) {
        sqlite3_limit(m_conexao, SQLITE_LIMIT_LENGTH, kMaiorTexto);
        m_maisPassos = kPassosSempre + QFileInfo(caminho).size() / kPagina * kPassosPorPagina;
        sqlite3_progress_handler(m_conexao, kPassosPorVez, Vigiar, this);
        return;
    }
    const QString mensagem =
        Mensagem(rc, QString::fromUtf8(m_conexao ? sqlite3_errmsg(m_conexao) : sqlite3_errstr(rc)));
    sqlite3_close(m_conexao);
    throw ErroBanco(mensagem);
}

Motor::~Motor()
{
    sqlite3_close(m_conexao);
}

void Motor::Falhar(int codigo) const
{
    const QString detalhe = QString::fromUtf8(sqlite3_errmsg(m_conexao));
    // A database of another program opens well, and then lacks what is asked for.
    if ((codigo & 0xFF) == SQLITE_ERROR && !(TemTabela("Receitas") && TemTabela("Ingredientes")))
        codigo = SQLITE_NOTADB;
    if ((codigo & 0xFF) == SQLITE_BUSY || (codigo & 0xFF) == SQLITE_LOCKED)
        throw ErroOcupado(Mensagem(codigo, detalhe));
    throw ErroBanco(Mensagem(codigo, detalhe));
}

bool Motor::TemTabela(const char *nome) const
{
    return sqlite3_table_column_metadata(m_conexao, nullptr, nome, nullptr, nullptr, nullptr, nullptr,
                                         nullptr, nullptr) == SQLITE_OK;
}

int Motor::Vigiar(void *motor)
{
    constexpr int kMs = 8;
    auto *eu = static_cast<Motor *>(motor);
    eu->m_passos += kPassosPorVez;
    if (eu->m_passos > eu->m_maisPassos || eu->m_processador.Passou())
        return 1;
    if (eu->m_respirar && eu->m_folego.hasExpired(kMs)) {
        eu->m_respirar();
        eu->m_folego.start();
    }
    return 0;
}

Motor::Comando Motor::Preparar(const QString &sql)
{
    const QByteArray utf8 = sql.toUtf8();
    // The engine would stop reading there, and run half a statement.
    if (utf8.contains('\0'))
        throw ErroBanco(Mensagem(SQLITE_ERROR, "O comando contém um caractere nulo."));
    if (const QString recusa = Porteiro::Recusa({utf8.constData(), static_cast<std::size_t>(utf8.size())});
        !recusa.isEmpty())
        throw ErroBanco(Mensagem(SQLITE_ERROR, recusa));
    m_plano = false;
    return PrepararJulgado(utf8);
}

Motor::Comando Motor::PrepararJulgado(const QByteArray &utf8)
{
    m_passos = 0;
    m_processador.Comecar();
    sqlite3_stmt *preparado = nullptr;
    const char *resto = nullptr;
    const int rc = sqlite3_prepare_v2(m_conexao, utf8.constData(), static_cast<int>(utf8.size() + 1),
                                      &preparado, &resto);
    Comando comando(preparado);
    if (rc != SQLITE_OK)
        Falhar(rc);
    if (!comando)
        throw ErroBanco(Mensagem(SQLITE_ERROR, "O comando está vazio."));
    if (!SoBrancos(resto))
        throw ErroBanco(Mensagem(SQLITE_ERROR, "Só é aceito um comando de cada vez."));
    return comando;
}

Motor::Comando Motor::PrepararConsulta(const QString &sql)
{
    Comando comando = Preparar(sql);
    if (!sqlite3_stmt_readonly(comando.get()))
        throw ErroBanco(Mensagem(SQLITE_ERROR, "Uma consulta não pode alterar o livro."));
    return comando;
}

Motor::Comando Motor::PrepararPlano(const QString &sql)
{
    // It stays so for this connection's next statements of its own: the engine may prepare this one once
    // more.
    m_plano = true;
    return PrepararJulgado(sql.toUtf8());
}

bool Motor::Serve(const QString &sql)
{
    const QByteArray utf8 = sql.toUtf8();
    sqlite3_stmt *comando = nullptr;
    m_plano = true;
    const int rc = sqlite3_prepare_v2(m_conexao, utf8.constData(), -1, &comando, nullptr);
    sqlite3_finalize(comando);
    return rc == SQLITE_OK;
}

void Motor::Respirar(std::function<void()> respirar)
{
    m_respirar = std::move(respirar);
    m_folego.start();
}

int Motor::Executar(const QString &sql)
{
    const Comando comando = Preparar(sql);
    int rc = SQLITE_ROW;
    while (rc == SQLITE_ROW)
        rc = sqlite3_step(comando.get());
    if (rc != SQLITE_DONE)
        Falhar(rc);
    return sqlite3_changes(m_conexao);
}

qint64 Motor::UltimoNumero() const
{
    return sqlite3_last_insert_rowid(m_conexao);
}

void Motor::Conferir(const QString &sql)
{
    Preparar(sql);
}

QStringList Motor::Integridade()
{
    QStringList achados;
    const auto recolher = [](void *lista, int colunas, char **valores, char **) {
        if (colunas > 0 && valores[0] && std::string_view(valores[0]) != "ok")
            *static_cast<QStringList *>(lista) += QString::fromUtf8(valores[0]);
        return 0;
    };
    sqlite3_set_authorizer(m_conexao, nullptr, nullptr);
    const int rc = sqlite3_exec(m_conexao, "PRAGMA integrity_check(100)", recolher, &achados, nullptr);
    sqlite3_set_authorizer(m_conexao, Autorizar, nullptr);
    if (rc != SQLITE_OK)
        Falhar(rc);
    return achados;
}

void Motor::LerUmaVez()
{
    // Any read makes the engine play back a journal that a crash left behind.
    sqlite3_set_authorizer(m_conexao, nullptr, nullptr);
    const int rc = sqlite3_exec(m_conexao, "SELECT 1 FROM sqlite_master LIMIT 1", nullptr, nullptr, nullptr);
    sqlite3_set_authorizer(m_conexao, Autorizar, &m_plano);
    if (rc != SQLITE_OK)
        Falhar(rc);
}

namespace
{
/// Tells how far a statement has come, by the engine's own steps.
struct Passada {
    const Motor::Andamento &andamento;
    int feito = 0; ///< by the pieces before
    int peso = 0;  ///< of this piece
    int total = 0;
    double passos = 1; ///< that this piece will take, about
    double dados = 0;
    QElapsedTimer desde;

    static constexpr int kPassosPorVez = 2000;
    static constexpr int kMs = 10;

    static int Contar(void *p)
    {
        auto *eu = static_cast<Passada *>(p);
        eu->dados += kPassosPorVez;
        if (!eu->desde.hasExpired(kMs))
            return 0;
        const double parte = std::min(eu->dados / eu->passos, 0.99);
        const bool segue = eu->andamento(eu->feito + static_cast<int>(parte * eu->peso), eu->total);
        eu->desde.start();
        return segue ? 0 : 1;
    }
};
} // namespace

void Motor::Evoluir(const Andamento &andamento)
{
    sqlite3_set_authorizer(m_conexao, nullptr, nullptr);
    const auto conferir = [this](int rc) {
        if (rc != SQLITE_OK)
            Falhar(rc);
    };
    const auto numero = [this, &conferir](const char *sql) {
        qint64 valor = 0;
        const auto guardar = [](void *onde, int, char **valores, char **) {
            *static_cast<qint64 *>(onde) = valores[0] ? atoll(valores[0]) : 0;
            return 0;
        };
        conferir(sqlite3_exec(m_conexao, sql, guardar, &valor, nullptr));
        return valor;
    };
    constexpr int kPeso = 200;
    constexpr double kPassosPorLinha = 20;
    for (auto versao = static_cast<int>(numero("PRAGMA user_version")); versao < Esquema::kVersao; ++versao) {
        const QList<QByteArray> pecas = Esquema::Passo(versao);
        Passada passada{andamento, 0, kPeso, static_cast<int>(pecas.size()) * kPeso, 1, 0, {}};
        passada.desde.start();
        sqlite3_progress_handler(m_conexao, 0, nullptr, nullptr); // a large book's indexes take their time
        const QScopeGuard semPassada([this] { sqlite3_progress_handler(m_conexao, 0, nullptr, nullptr); });
        if (andamento)
            sqlite3_progress_handler(m_conexao, Passada::kPassosPorVez, Passada::Contar, &passada);
        for (const QByteArray &peca : pecas) {
            passada.passos =
                kPassosPorLinha *
                static_cast<double>(numero(peca.contains(" ON Receitas")
                                               ? "SELECT max(id_receitas) FROM Receitas"
                                               : "SELECT max(id_ingredientes) FROM Ingredientes"));
            passada.dados = 0;
            conferir(sqlite3_exec(m_conexao, peca.constData(), nullptr, nullptr, nullptr));
            passada.feito += kPeso;
        }
        // Another copy may have gone on from here meanwhile.
        conferir(sqlite3_exec(m_conexao, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr));
        if (numero("PRAGMA user_version") == versao)
            conferir(sqlite3_exec(m_conexao,
                                  ("PRAGMA user_version=" + QByteArray::number(versao + 1)).constData(),
                                  nullptr, nullptr, nullptr));
        conferir(sqlite3_exec(m_conexao, "COMMIT", nullptr, nullptr, nullptr));
    }
    sqlite3_set_authorizer(m_conexao, Autorizar, &m_plano);
}

bool Motor::EntrarNoWal()
{
    // Pages that gather in the second file before they are written into the book: 64 MB.
    constexpr auto kModo =
        "PRAGMA wal_autocheckpoint=16384;PRAGMA synchronous=NORMAL;PRAGMA cache_size=-16384";
    QByteArray modo;
    const auto guardar = [](void *onde, int, char **valores, char **) {
        *static_cast<QByteArray *>(onde) = valores[0];
        return 0;
    };
    sqlite3_set_authorizer(m_conexao, nullptr, nullptr);
    const bool entrou =
        sqlite3_exec(m_conexao, "PRAGMA journal_mode=WAL", guardar, &modo, nullptr) == SQLITE_OK &&
        modo == "wal" && sqlite3_exec(m_conexao, kModo, nullptr, nullptr, nullptr) == SQLITE_OK;
    sqlite3_set_authorizer(m_conexao, Autorizar, &m_plano);
    return entrou;
}

qint64 Motor::VersaoDosDados()
{
    qint64 versao = -1;
    const auto guardar = [](void *onde, int, char **valores, char **) {
        *static_cast<qint64 *>(onde) = atoll(valores[0]);
        return 0;
    };
    sqlite3_set_authorizer(m_conexao, nullptr, nullptr);
    sqlite3_exec(m_conexao, "PRAGMA data_version", guardar, &versao, nullptr);
    sqlite3_set_authorizer(m_conexao, Autorizar, &m_plano);
    return versao;
}

void Motor::SairDoWal()
{
    sqlite3_set_authorizer(m_conexao, nullptr, nullptr);
    // Refused while the other tool holds the book; it can be read all the same.
    sqlite3_exec(m_conexao, "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr);
    sqlite3_set_authorizer(m_conexao, Autorizar, &m_plano);
}

void Motor::CriarNoVazio()
{
    sqlite3_set_authorizer(m_conexao, nullptr, nullptr);
    int rc = sqlite3_exec(m_conexao, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
    if (rc == SQLITE_OK && TemTabela("Receitas"))
        return; // another copy of the program was quicker; closing ends the transaction
    if (rc == SQLITE_OK)
        rc = sqlite3_exec(m_conexao, Esquema::Livro().constData(), nullptr, nullptr, nullptr);
    if (rc == SQLITE_OK)
        rc = sqlite3_exec(m_conexao, "COMMIT", nullptr, nullptr, nullptr);
    if (rc != SQLITE_OK)
        throw ErroBanco(Mensagem(rc, QString::fromUtf8(sqlite3_errmsg(m_conexao))));
}

void Motor::Criar(const QString &caminho, int esperaMs)
{
    if (QFileInfo::exists(caminho)) {
        // An empty file keeps its place and rights; the engine's own journal makes this one step as well.
        Motor(caminho, esperaMs).CriarNoVazio();
        return;
    }
    // A journal whose book is gone would be played back into the new one.
    RemoverJournal(caminho);
    CriarArquivo(caminho);
}

void Motor::RemoverJournal(const QString &caminho)
{
    // The engine keeps them beside the file itself, wherever a link to it lies.
    const QString real = QFileInfo(caminho).canonicalFilePath();
    for (const QString &livro : {caminho, real.isEmpty() ? caminho : real})
        for (const char *cauda : {"-journal", "-wal", "-shm"})
            QFile::remove(livro + cauda); // usually there is none
}
