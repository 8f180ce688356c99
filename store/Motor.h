#pragma once

#include "store/Cabecalho.h"
#include "store/PrazoDoProcessador.h"

#include <QElapsedTimer>
#include <QString>

#include <functional>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

/**
 * One connection to the book, for one piece of work: opened by the constructor, closed by the destructor.
 *
 * A statement is looked at before it runs. Its shape must be one of the program's own (store/Porteiro.h), it
 * must touch nothing but the two tables and may call the named functions only; anything else is refused with
 * nothing done. One that runs too long for a book of this size is ended. Every failure throws ErroBanco with
 * a sentence for the user and the engine's own message below it.
 */
class Motor
{
public:
    /**
     * Opens an existing book.
     * @param caminho  native path of the file
     * @param esperaMs how long to wait for another program's lock, in milliseconds
     * @param soLeitura nothing is written, not even what a crash left half done is rolled back: a book in
     * that state is refused
     */
    Motor(const QString &caminho, int esperaMs, bool soLeitura = false);
    ~Motor();
    Motor(const Motor &) = delete;
    Motor &operator=(const Motor &) = delete;

    struct FecharComando {
        void operator()(sqlite3_stmt *comando) const;
    };
    using Comando = std::unique_ptr<sqlite3_stmt, FecharComando>;

    /// A statement that only reads, looked at and ready; it must go before this connection does.
    Comando PrepararConsulta(const QString &sql);
    /// What the store itself asks in place of a statement that was let through.
    Comando PrepararPlano(const QString &sql);
    /// Whether the engine would take it.
    bool Serve(const QString &sql);
    /// Called every few milliseconds while the engine works.
    void Respirar(std::function<void()> respirar);
    /// What a failure of a prepared statement means.
    [[noreturn]] void Falhar(int codigo) const;
    /// Runs a statement to its end and returns the number of rows it changed.
    int Executar(const QString &sql);
    /// The number of the row that this connection inserted last, 0 for none.
    qint64 UltimoNumero() const;
    /// Throws what Consultar() or Executar() would throw before running the statement; runs nothing.
    void Conferir(const QString &sql);
    /// What the engine's own check of the whole file finds; empty when all is well.
    QStringList Integridade();
    /// Reads a little, which rolls back what a crash left half done.
    void LerUmaVez();
    /// Told every few milliseconds how much of a long piece of work is done; false asks it to stop.
    using Andamento = std::function<bool(int feito, int total)>;
    /// Brings the schema up to today's version, index by index, each committed by itself: what ends it (a
    /// false from `andamento`, a failure, a kill) leaves a book that works, and the next call goes on.
    void Evoluir(const Andamento &andamento);
    /// Write-ahead mode, in which a commit does not wait for the disk; false where the book cannot have it.
    bool EntrarNoWal();
    /// Changes when another connection has written.
    qint64 VersaoDosDados();
    /// Brings a book that another tool left in write-ahead mode back into one file; does nothing while that
    /// tool still has it open.
    void SairDoWal();

    /**
     * Makes an empty book in `caminho`, where no file or an empty one stands, in one step: whatever happens
     * meanwhile there is either no book or a whole one, and a book that another copy made first stays.
     */
    static void Criar(const QString &caminho, int esperaMs);
    /// Removes what a crash may have left beside the book for the engine to play back.
    static void RemoverJournal(const QString &caminho);

private:
    Comando Preparar(const QString &sql);
    Comando PrepararJulgado(const QByteArray &utf8);
    /// Called every few thousand steps of the engine: not 0 ends a statement that runs too long.
    static int Vigiar(void *motor);
    /// Called while another program holds the book. The engine's own waiting sleeps ever longer, up to a
    /// tenth of a second, and then hardly ever meets the moments in which a copy that saves without pause
    /// lets go.
    static int EsperarVez(void *motor, int vezes);
    void CriarNoVazio();
    bool TemTabela(const char *nome) const;

    Cabecalho::Prendedor m_prendedor; ///< goes last, after the connection
    sqlite3 *m_conexao = nullptr;
    int m_esperaMs;
    bool m_plano = false; ///< the store asks, not a statement
    qint64 m_passos = 0;  ///< of the present statement
    qint64 m_maisPassos = 0;
    PrazoDoProcessador m_processador;
    std::function<void()> m_respirar;
    QElapsedTimer m_folego; ///< since the last breath
    QElapsedTimer m_espera; ///< since the present wait began
};
