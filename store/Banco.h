#pragma once

#include "store/RecordSet.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class Consulta;

/**
 * Turns an old Access book at this native path into a book of today, in place, or throws ErroBanco with the
 * file as it was.
 */
using ConversorDeLivro = std::function<void(const QString &caminho)>;

/**
 * The book's database, `dadosr.lst` in the application folder.
 *
 * No connection stays open: every operation opens one, does its one piece of work and closes it, so the file
 * is never held between operations and a raw copy of it is the whole book. There is no transaction around
 * several statements. Both operations show the hourglass while they work; one that fails leaves it showing
 * until the next operation, or the error report, takes it away.
 *
 * A missing file is made, empty, with both tables, at the first operation, which is the program's start. From
 * the first moment that there is one, a file that is missing or empty is an error: a book that vanishes while
 * the program runs is not replaced by an empty one. A file that is an old Access book is converted when it is
 * met; one that is no database, or a book of a newer version, is left untouched and ErroBanco is thrown.
 */
class Banco
{
public:
    /// @param pasta the application folder, native path, with or without a trailing separator
    explicit Banco(const QString &pasta);

    /// The application folder with exactly one trailing backslash; paths below it are written with
    /// backslashes and become native ones in Caminho().
    QString AppFolder() const;
    /// Native path of a file named below the application folder, e.g. Caminho("Fotos\\F0000001.img").
    QString Caminho(const QString &relativo) const;
    /// "DBQ=" + folder + "\dadosr.lst" + ";user=;pwd=;Driver={Microsoft Access Driver (*.mdb)}": kept from
    /// start-up on; the engine takes the file to open from it.
    QString ConnectionString() const { return m_conexao; }
    /// Native path of the book, read from the connection string.
    QString CaminhoDoLivro() const;

    /// Runs a query and returns its rows, detached. Throws ErroBanco.
    RecordSet AbrirRecordset(const QString &sql) const;
    /// Whether what a query gave is kept, to be given again without opening the book for as long as the
    /// book's change counter proves that nothing was written since.
    enum class Guardar { Nao, Sim };
    /// The same statement, fetching only the named columns, all if there is none (the memo columns stay on
    /// disk).
    RecordSet AbrirRecordset(const QString &sql, const QStringList &colunas,
                             Guardar guardar = Guardar::Nao) const;
    /// The same, its rows to be fetched a slice at a time by the caller. Throws ErroBanco.
    std::unique_ptr<Consulta> AbrirConsulta(const QString &sql, const QStringList &colunas,
                                            Guardar guardar = Guardar::Nao) const;
    /// Runs one statement that returns no rows. The result carries no meaning. Throws ErroBanco.
    int ExecutarSQL(const QString &sql) const;

    /// The number that the engine gave to the row of the last Insert that came through here, 0 before one:
    /// what is known of a new recipe when the promised question for its number fails.
    qint64 UltimoNumero() const { return m_ultimoNumero; }

    /// Why a statement would be refused.
    struct Recusa {
        qsizetype qual = 0; ///< its place in the list
        QString motivo;     ///< as ErroBanco would say it
    };
    /// Looks at statements without running them: the first one that would be refused as it stands, or none.
    /// What only running shows (a full disk, another program's lock) stays unknown. Throws ErroBanco when the
    /// book cannot be opened.
    std::optional<Recusa> Conferir(const QStringList &comandos) const;

    /// After the last statement of a save: brings the folder itself to the disk. Until then a power cut could
    /// bring back the journal of that statement, and the engine would undo it.
    void Firmar() const;

    /// What the engine's own check of the whole file finds; empty when all is well. Throws ErroBanco.
    QStringList Integridade() const;

    /**
     * While it lives the statements of this Banco run through one connection, in write-ahead mode: each is
     * committed by itself as ever, seen by another copy at once and kept through a kill. What is gathered is
     * the forcing to the disk: every tenth of a second, and by Sincronizar(). Its end makes the book one
     * plain file again; after a kill the next who opens it does. Where the file system does not take that
     * mode, and within another of its kind, it does nothing at all.
     */
    class Remessa
    {
    public:
        explicit Remessa(const Banco &banco);
        ~Remessa();
        Remessa(const Remessa &) = delete;
        Remessa &operator=(const Remessa &) = delete;
        /// Everything is on the disk when it returns.
        void Sincronizar();

    private:
        const Banco &m_banco;
        bool m_minha = false;
    };

    /// Opens the book and reads once, so that what a crash left half done is rolled back and the file alone
    /// is the whole book: before a raw copy of it. Throws ErroBanco.
    void LerUmaVez() const;
    /// Removes the journal that a crash may have left: before other bytes take the book's place, into which
    /// it would be rolled back. A journal that is not there is no failure.
    void RemoverJournal() const;

    /// Told every few milliseconds how far a long piece of work has come; false asks it to stop.
    using Andamento = std::function<bool(int feito, int total)>;
    /// Whether the book is of an older version and so large that bringing it up is worth telling about. Small
    /// ones are brought up when they are met. Never throws.
    bool PrecisaEvoluir() const;
    /// Brings the book's schema up to today's version, a piece at a time, each safe by itself. A book that
    /// cannot be written, or a stop, leaves it usable as it is. Throws ErroBanco.
    void Evoluir(const Andamento &andamento) const;

    /// Told, by who is about to change or delete recipes, which ones: while they are still as they were. It
    /// must not throw.
    using AntesDaMudanca = std::function<void(const QList<qint64> &numeros)>;
    void DefinirAntesDeMudar(AntesDaMudanca antes) { m_antesDeMudar = std::move(antes); }
    void AntesDeMudar(const QList<qint64> &numeros) const
    {
        if (m_antesDeMudar)
            m_antesDeMudar(numeros);
    }

    /// What to do with an old Access book; without one such a file is refused.
    void DefinirConversor(ConversorDeLivro conversor) { m_conversor = std::move(conversor); }
    /// For programs that only look: from now on no file is made, converted, repaired or brought up to date. A
    /// missing book, and one that a crash left half written, is an error.
    void DefinirSoLeitura() { m_soLeitura = true; }
    /// What has to be done before a statement writes; it must not throw. One at a time, nothing for none.
    void DefinirAntesDeGravar(std::function<void()> antes) const { m_antesDeGravar = std::move(antes); }
    /// How long an operation waits for another program that is writing; ten seconds unless set.
    void DefinirEspera(int milissegundos) { m_esperaMs = milissegundos; }

private:
    /// Makes sure that the file to open is a book; gives its version.
    int PrepararLivro(const QString &caminho) const;

    /// Throws ErroBanco when the book's schema is not one that the program makes; nothing is changed then.
    void ConferirEsquema(const QString &caminho, bool semTocar) const;

    /// Brings a small book of an older version up; one that cannot be written is read as it is. Gives the
    /// version that it then has.
    int EvoluirPequeno(const QString &caminho) const;

    std::unique_ptr<Consulta> NovaConsulta(const QString &sql, const QStringList &colunas, Guardar guardar,
                                           std::function<void()> respirar) const;
    /// Before a statement writes: what is being read a slice at a time is read to its end.
    void TerminarConsultas() const;

    struct Memoria;
    struct EmRemessa;
    bool NomeDesconhecido(const QString &sql) const;
    QString m_pasta; ///< native, no trailing separator
    QString m_conexao;
    ConversorDeLivro m_conversor;
    mutable std::function<void()> m_antesDeGravar;
    AntesDaMudanca m_antesDeMudar;
    int m_esperaMs = 10000;
    bool m_soLeitura = false;
    std::shared_ptr<Memoria> m_memoria;           ///< what queries gave, and those under way
    mutable std::shared_ptr<EmRemessa> m_remessa; ///< while one lives
    mutable bool m_naoEvolui = false;             ///< tried once and could not
    mutable qint64 m_ultimoNumero = 0;
    /// The schema that was found to be the program's own, as the file's header names it.
    struct Conferido {
        quint64 disco = 0;
        quint64 arquivo = 0;
        quint32 marca = 0;
        bool operator==(const Conferido &) const = default;
    };
    mutable Conferido m_conferido;
    mutable bool m_existiu = false; ///< a file lay there once
};

/// `pasta` with exactly one trailing backslash.
QString AppFolder(const QString &pasta);
