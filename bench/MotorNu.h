#pragma once

#include <QString>

#include <string>

struct sqlite3;
struct sqlite3_stmt;

/**
 * The bare engine, the limit that the store is measured against: one connection without guards, hourglass or
 * record set. It knows the book's collation, without which the tables cannot be ordered, and nothing else of
 * the house. Failures throw std::runtime_error.
 */
class MotorNu
{
public:
    enum class Modo { Ler, Gravar, Criar };

    /// @param caminho native path of the file
    MotorNu(const QString &caminho, Modo modo);
    ~MotorNu();
    MotorNu(const MotorNu &) = delete;
    MotorNu &operator=(const MotorNu &) = delete;

    /// Runs statements that return nothing of interest.
    void Executar(const std::string &sql);
    /// Runs a query, asks for every value as text and returns the number of rows.
    int Percorrer(const std::string &sql);
    /// The number in the first row and column.
    qint64 Numero(const std::string &sql);

private:
    friend class ComandoNu;
    sqlite3 *m_conexao = nullptr;
};

/// A prepared statement that runs many times; what is not bound is NULL.
class ComandoNu
{
public:
    ComandoNu(MotorNu &motor, const std::string &sql);
    ~ComandoNu();
    ComandoNu(const ComandoNu &) = delete;
    ComandoNu &operator=(const ComandoNu &) = delete;

    void Ligar(int lugar, const std::string &texto);
    void Ligar(int lugar, qint64 numero);
    /// Runs a statement without rows and forgets the bound values.
    void Rodar();
    /// The next row; false after the last.
    bool Avancar();
    /// Asks for every value of the present row as text.
    void LerLinha();
    qint64 Inteiro(int coluna);

private:
    sqlite3 *m_conexao;
    sqlite3_stmt *m_comando = nullptr;
};
