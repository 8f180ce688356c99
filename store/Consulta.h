#pragma once

#include "store/RecordSet.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

class Motor;
struct sqlite3_stmt;

/**
 * A query whose rows are fetched a slice at a time, so that the window stays alive meanwhile. It sees the
 * book as it was when it began. Whoever wants to write has it fetch the rest first (Banco does so): nobody
 * waits for rows that nobody asks for.
 */
class Consulta
{
public:
    struct Pedido {
        QString caminho;
        int esperaMs;
        QString sql;
        QStringList colunas;
        int versao;                        ///< of the book's schema
        std::shared_ptr<Motor> motor = {}; ///< an open connection to take; without one an own is opened
        bool soLeitura = false;            ///< nothing is written, not even repaired
    };
    /// Called when the last row is there, the book still being held.
    using AoTerminar = std::function<void(const RecordSet &)>;
    /// Called every few milliseconds while the engine works on without giving a row.
    using Respirar = std::function<void()>;

    /// Opens the book and judges the statement; no row is fetched yet. Throws ErroBanco.
    explicit Consulta(const Pedido &pedido, AoTerminar aoTerminar = {}, Respirar respirar = {});
    /// Enters the query in a list for as long as it is under way.
    void Anotar(std::shared_ptr<std::vector<Consulta *>> lista);
    /// One that is complete already.
    explicit Consulta(RecordSet pronta);
    ~Consulta();
    Consulta(const Consulta &) = delete;
    Consulta &operator=(const Consulta &) = delete;

    /// Fetches rows for about so many milliseconds, less than 0: to the end. True when all are there. Throws
    /// ErroBanco; the query is then over, with the rows that came before.
    bool Avancar(int ms);
    bool Completa() const { return m_completa; }
    /// The rows that are there. Until the query is complete they stand as they came, which is nearly the
    /// order that was asked for, and this record set grows with what comes; it is an own one when the order
    /// changed.
    RecordSet Linhas() const { return m_linhas; }

private:
    struct Andamento;
    bool BuscarLinhas(int ms);
    bool BuscarDistintas(int ms);
    void AcrescentarLinha(sqlite3_stmt *comando);
    void Encerrar();
    void Desanotar();

    std::unique_ptr<Andamento> m_andamento; ///< while it is under way
    RecordSet m_linhas;
    AoTerminar m_aoTerminar;
    std::shared_ptr<std::vector<Consulta *>> m_lista;
    bool m_completa = false;
    bool m_andando = false;
};
