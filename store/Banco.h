#pragma once

#include "store/RecordSet.h"

#include <QString>
#include <QStringList>

/**
 * The book's database, `dadosr.lst` in the application folder.
 *
 * No connection stays open: every operation opens one, does its one piece of work and closes it, so the file
 * is never held between operations and a raw copy of it is the whole book. There is no transaction around
 * several statements. Both operations show the hourglass while they work; one that fails leaves it showing
 * until the next operation, or the error report, takes it away.
 *
 * A missing file is made, empty, with both tables, at the first operation. A file that is an old Access book
 * is converted at that moment; one that is no database is left untouched and ErroBanco is thrown.
 */
class Banco
{
public:
    /// @param pasta the application folder, native path, with or without a trailing separator
    explicit Banco(const QString &pasta);

    /// The application folder with exactly one trailing backslash; paths below it are written with backslashes
    /// and become native ones in Caminho().
    QString AppFolder() const;
    /// Native path of a file named below the application folder, e.g. Caminho("Fotos\\F0000001.img").
    QString Caminho(const QString &relativo) const;
    /// "DBQ=" + folder + "\dadosr.lst" + ";user=;pwd=;Driver={Microsoft Access Driver (*.mdb)}": kept from
    /// start-up on; the engine takes the file to open from it.
    QString ConnectionString() const { return m_conexao; }

    /// Runs a query and returns its rows, detached. Throws ErroBanco.
    RecordSet AbrirRecordset(const QString &sql) const;
    /// The same statement, fetching only the named columns (the memo columns stay on disk).
    RecordSet AbrirRecordset(const QString &sql, const QStringList &colunas) const;
    /// Runs one statement that returns no rows. The result carries no meaning. Throws ErroBanco.
    int ExecutarSQL(const QString &sql) const;

private:
    QString m_pasta; ///< native, no trailing separator
    QString m_conexao;
};

/// `pasta` with exactly one trailing backslash.
QString AppFolder(const QString &pasta);
