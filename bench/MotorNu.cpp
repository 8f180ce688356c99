#include "bench/MotorNu.h"

#include "base/Ordem.h"

#include <QFile>

#include <sqlite3.h>

#include <stdexcept>
#include <string_view>

namespace
{
int Colacao(void *, int tamanhoA, const void *a, int tamanhoB, const void *b)
{
    return Ordem::Comparar({static_cast<const char *>(a), static_cast<std::size_t>(tamanhoA)},
                           {static_cast<const char *>(b), static_cast<std::size_t>(tamanhoB)});
}

void Conferir(sqlite3 *conexao, int codigo)
{
    if (codigo != SQLITE_OK && codigo != SQLITE_ROW && codigo != SQLITE_DONE)
        throw std::runtime_error(sqlite3_errmsg(conexao));
}
} // namespace

MotorNu::MotorNu(const QString &caminho, Modo modo)
{
    int opcoes = SQLITE_OPEN_NOMUTEX;
    opcoes |= modo == Modo::Ler ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
    if (modo == Modo::Criar)
        opcoes |= SQLITE_OPEN_CREATE;
    int codigo = sqlite3_open_v2(QFile::encodeName(caminho).constData(), &m_conexao, opcoes, nullptr);
    if (codigo == SQLITE_OK)
        codigo = sqlite3_create_collation_v2(m_conexao, "PORTUGUES", SQLITE_UTF8, nullptr, Colacao, nullptr);
    if (codigo == SQLITE_OK)
        return;
    const std::string mensagem = sqlite3_errstr(codigo);
    sqlite3_close(m_conexao);
    throw std::runtime_error(caminho.toStdString() + ": " + mensagem);
}

MotorNu::~MotorNu()
{
    sqlite3_close(m_conexao);
}

void MotorNu::Executar(const std::string &sql)
{
    Conferir(m_conexao, sqlite3_exec(m_conexao, sql.c_str(), nullptr, nullptr, nullptr));
}

int MotorNu::Percorrer(const std::string &sql)
{
    ComandoNu comando(*this, sql);
    int linhas = 0;
    for (; comando.Avancar(); ++linhas)
        comando.LerLinha();
    return linhas;
}

qint64 MotorNu::Numero(const std::string &sql)
{
    ComandoNu comando(*this, sql);
    return comando.Avancar() ? comando.Inteiro(0) : 0;
}

ComandoNu::ComandoNu(MotorNu &motor, const std::string &sql)
    : m_conexao(motor.m_conexao)
{
    Conferir(m_conexao, sqlite3_prepare_v2(m_conexao, sql.c_str(), -1, &m_comando, nullptr));
}

ComandoNu::~ComandoNu()
{
    sqlite3_finalize(m_comando);
}

void ComandoNu::Ligar(int lugar, const std::string &texto)
{
    Conferir(m_conexao, sqlite3_bind_text(m_comando, lugar, texto.data(), static_cast<int>(texto.size()),
                                          SQLITE_TRANSIENT));
}

void ComandoNu::Ligar(int lugar, qint64 numero)
{
    Conferir(m_conexao, sqlite3_bind_int64(m_comando, lugar, numero));
}

void ComandoNu::Rodar()
{
    Conferir(m_conexao, sqlite3_step(m_comando));
    Conferir(m_conexao, sqlite3_reset(m_comando));
    sqlite3_clear_bindings(m_comando);
}

bool ComandoNu::Avancar()
{
    const int codigo = sqlite3_step(m_comando);
    Conferir(m_conexao, codigo);
    return codigo == SQLITE_ROW;
}

void ComandoNu::LerLinha()
{
    for (int coluna = 0; coluna < sqlite3_column_count(m_comando); ++coluna) {
        const volatile auto *texto = sqlite3_column_text(m_comando, coluna);
        static_cast<void>(texto);
    }
}

qint64 ComandoNu::Inteiro(int coluna)
{
    return sqlite3_column_int64(m_comando, coluna);
}
