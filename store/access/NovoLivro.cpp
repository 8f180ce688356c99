#include "store/access/NovoLivro.h"

#include "base/Texto.h"
#include "store/ErroBanco.h"
#include "store/Esquema.h"
#include "store/Funcoes.h"
#include "store/access/LivroAccess.h"

#include <QFile>

#include <sqlite3.h>

#include <memory>

namespace
{
class Conexao
{
public:
    explicit Conexao(const QString &caminho)
    {
        sqlite3 *conexao = nullptr;
        const int rc = sqlite3_open_v2(QFile::encodeName(caminho).constData(), &conexao,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
        m_conexao.reset(conexao); // there is one even after a failure
        Conferir(rc);
        Conferir(Funcoes::Registrar(conexao));
    }

    sqlite3 *Motor() const { return m_conexao.get(); }

    void Executar(const char *sql) const
    {
        Conferir(sqlite3_exec(m_conexao.get(), sql, nullptr, nullptr, nullptr));
    }

    void Conferir(int rc) const
    {
        if (rc == SQLITE_OK)
            return;
        const QString detalhe =
            QString::fromUtf8(m_conexao ? sqlite3_errmsg(m_conexao.get()) : sqlite3_errstr(rc));
        throw ErroBanco(((rc & 0xFF) == SQLITE_FULL
                             ? QString("Não há espaço no disco para o novo livro de receitas (%1).")
                             : QString("O novo livro de receitas não pôde ser gravado (%1)."))
                            .arg(detalhe));
    }

private:
    struct Fechar {
        void operator()(sqlite3 *conexao) const { sqlite3_close(conexao); }
    };
    std::unique_ptr<sqlite3, Fechar> m_conexao;
};

/// One statement, run as often as its values are bound anew.
class Comando
{
public:
    Comando(const Conexao &conexao, const char *sql)
        : m_conexao(conexao)
    {
        sqlite3_stmt *comando = nullptr;
        m_conexao.Conferir(
            sqlite3_prepare_v3(conexao.Motor(), sql, -1, SQLITE_PREPARE_PERSISTENT, &comando, nullptr));
        m_comando.reset(comando);
    }

    Comando &operator<<(qint64 valor)
    {
        m_conexao.Conferir(sqlite3_bind_int64(m_comando.get(), ++m_proximo, valor));
        return *this;
    }
    Comando &operator<<(const std::optional<qint32> &valor)
    {
        return valor ? *this << qint64(*valor) : Nulo();
    }
    Comando &operator<<(const std::optional<double> &valor)
    {
        if (!valor)
            return Nulo();
        m_conexao.Conferir(sqlite3_bind_double(m_comando.get(), ++m_proximo, *valor));
        return *this;
    }
    Comando &operator<<(const std::optional<QString> &valor)
    {
        if (!valor)
            return Nulo();
        const QByteArray utf8 = valor->toUtf8();
        m_conexao.Conferir(sqlite3_bind_text64(m_comando.get(), ++m_proximo, utf8.constData(),
                                               static_cast<sqlite3_uint64>(utf8.size()), SQLITE_TRANSIENT,
                                               SQLITE_UTF8));
        return *this;
    }

    void Executar()
    {
        sqlite3_step(m_comando.get()); // the reset below tells how it went
        m_conexao.Conferir(sqlite3_reset(m_comando.get()));
        m_proximo = 0;
    }

    /// First column of the first row.
    qint64 Perguntar()
    {
        const int rc = sqlite3_step(m_comando.get());
        const qint64 valor = rc == SQLITE_ROW ? sqlite3_column_int64(m_comando.get(), 0) : -1;
        m_conexao.Conferir(sqlite3_reset(m_comando.get()));
        m_proximo = 0;
        return valor;
    }

private:
    struct Fechar {
        void operator()(sqlite3_stmt *comando) const { sqlite3_finalize(comando); }
    };
    Comando &Nulo()
    {
        m_conexao.Conferir(sqlite3_bind_null(m_comando.get(), ++m_proximo));
        return *this;
    }

    const Conexao &m_conexao;
    std::unique_ptr<sqlite3_stmt, Fechar> m_comando;
    int m_proximo = 0;
};

/// A value of one line; a line break in one would begin a new line wherever it is written.
std::optional<QString> UmaLinha(const std::optional<QString> &valor)
{
    return valor ? std::optional(SemControles(*valor)) : valor;
}

void GravarReceitas(const Conexao &conexao, const LivroAccess &livro)
{
    Comando inserir(conexao, "INSERT INTO Receitas(id_receitas,Nome,Data,Classificacao,Tipo,Origem,Porcoes,"
                             "Preparo,Tipo_Calorias,Calorias,Figura,Modo,Observacao) "
                             "VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?)");
    for (const LivroAccess::Receita &r : livro.receitas) {
        inserir << qint64(r.id_receitas) << UmaLinha(r.Nome) << r.Data << UmaLinha(r.Classificacao) << r.Tipo
                << UmaLinha(r.Origem) << r.Porcoes << UmaLinha(r.Preparo) << UmaLinha(r.Tipo_Calorias)
                << r.Calorias << UmaLinha(r.Figura) << r.Modo << r.Observacao;
        inserir.Executar();
    }
}

void GravarIngredientes(const Conexao &conexao, const LivroAccess &livro)
{
    Comando inserir(conexao, "INSERT INTO Ingredientes(id_ingredientes,id_receitas,Ingrediente,Quantidade,"
                             "Unidade) VALUES(?,?,?,?,?)");
    for (const LivroAccess::Ingrediente &i : livro.ingredientes) {
        inserir << qint64(i.id_ingredientes) << i.id_receitas << UmaLinha(i.Nome)
                << UmaLinha(i.Quantidade) << UmaLinha(i.Unidade);
        inserir.Executar();
    }
}

void GravarContadores(const Conexao &conexao, const LivroAccess &livro)
{
    conexao.Executar("DELETE FROM sqlite_sequence");
    Comando inserir(conexao, "INSERT INTO sqlite_sequence(name,seq) VALUES(?,?)");
    inserir << std::optional<QString>("Receitas") << qint64(livro.ultimaReceita);
    inserir.Executar();
    inserir << std::optional<QString>("Ingredientes") << qint64(livro.ultimoIngrediente);
    inserir.Executar();
}

void Conferir(const Conexao &conexao, const LivroAccess &livro)
{
    const auto igual = [&conexao](const char *sql, qint64 esperado) {
        return Comando(conexao, sql).Perguntar() == esperado;
    };
    // The tables themselves and not an index of theirs.
    if (!igual("SELECT count(*) FROM Receitas NOT INDEXED", qint64(livro.receitas.size())) ||
        !igual("SELECT count(*) FROM Ingredientes NOT INDEXED", qint64(livro.ingredientes.size())) ||
        !igual("SELECT seq FROM sqlite_sequence WHERE name='Receitas'", livro.ultimaReceita) ||
        !igual("SELECT seq FROM sqlite_sequence WHERE name='Ingredientes'", livro.ultimoIngrediente))
        throw ErroBanco("O novo livro de receitas não ficou completo.");
}
} // namespace

void GravarNovoLivro(const QString &caminho, const LivroAccess &livro)
{
    {
        const Conexao conexao(caminho);
        // The file is thrown away after any failure, and forced to the disk once, by the caller.
        conexao.Executar(
            "PRAGMA journal_mode=OFF;PRAGMA synchronous=OFF;PRAGMA locking_mode=EXCLUSIVE;BEGIN");
        conexao.Executar(Esquema::Tabelas().constData());
        GravarReceitas(conexao, livro);
        GravarIngredientes(conexao, livro);
        GravarContadores(conexao, livro);
        conexao.Executar(Esquema::Restante().constData());
        conexao.Executar("COMMIT");
    }
    // A new connection sees the file and nothing else.
    Conferir(Conexao(caminho), livro);
}
