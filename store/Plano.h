#pragma once

#include <QString>
#include <QStringList>

/**
 * How the engine is asked for what a statement means. The statement itself stays as it is and is judged as it
 * is; for the few whose answer an index holds ready, the engine gets another one with the same rows.
 */
struct Plano {
    enum class Tipo {
        Direto,   ///< the rows as the engine gives them
        EmOrdem,  ///< they come nearly in the book's order of `campoDaOrdem`
        Distintos ///< the same, one column, each value at least once
    };
    Tipo tipo = Tipo::Direto;
    QString sql;
    int campoDaOrdem = -1;
    /// Distintos: the same rows behind the value that is bound to it, and whether there is a NULL.
    QString seguinte = {};
    QString comNulo = {};
};

/**
 * @param colunas the columns to fetch; empty for all
 * @param versao  of the book's schema
 */
Plano PlanoDe(const QString &sql, const QStringList &colunas, int versao);

/// The statement as the source of a narrower one, its order kept.
QString Estreitar(const QString &sql, const QStringList &colunas);
