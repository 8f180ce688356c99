#include "store/ExameEsquema.h"

#include "store/Esquema.h"
#include "store/Funcoes.h"

#include <QFile>
#include <QSet>

#include <sqlite3.h>

#include <algorithm>
#include <memory>

namespace
{
struct Fechar {
    void operator()(sqlite3 *conexao) const { sqlite3_close(conexao); }
};
using Conexao = std::unique_ptr<sqlite3, Fechar>;

/// One row of the schema.
struct Objeto {
    QByteArray tipo, nome, tabela, sql;

    /// As the engine writes it for one and the same statement.
    QByteArray Tudo() const { return tipo + '\0' + nome + '\0' + tabela + '\0' + sql; }
};

int Ler(sqlite3 *conexao, QList<Objeto> &objetos)
{
    const auto guardar = [](void *onde, int, char **valores, char **) {
        static_cast<QList<Objeto> *>(onde)->append({valores[0], valores[1], valores[2], valores[3]});
        return 0;
    };
    return sqlite3_exec(conexao, "SELECT type,name,tbl_name,sql FROM sqlite_master", guardar, &objetos, nullptr);
}

/// Everything that today's version makes: each version holds all that those before it did.
const QSet<QByteArray> &Conhecidas()
{
    static const QSet<QByteArray> conhecidas = [] {
        QSet<QByteArray> todas;
        sqlite3 *memoria = nullptr;
        sqlite3_open_v2(":memory:", &memoria, SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY, nullptr);
        const Conexao conexao(memoria);
        QList<Objeto> objetos;
        if (Funcoes::Registrar(memoria) == SQLITE_OK &&
            sqlite3_exec(memoria, Esquema::Livro().constData(), nullptr, nullptr, nullptr) == SQLITE_OK)
            Ler(memoria, objetos);
        for (const Objeto &objeto : objetos)
            todas += objeto.Tudo();
        return todas;
    }();
    return conhecidas;
}

/// The engine's own counters of rows, which other tools leave behind.
bool DoMotor(const Objeto &objeto)
{
    return objeto.tipo == "table" && (objeto.nome == "sqlite_stat1" || objeto.nome == "sqlite_stat4");
}

bool TemTabela(const QList<Objeto> &objetos, const char *nome)
{
    return std::any_of(objetos.begin(), objetos.end(), [nome](const Objeto &objeto) { return objeto.nome == nome; });
}
} // namespace

ExameEsquema ExaminarEsquema(const QString &caminho, bool semTocar)
{
    constexpr int kEsperaMs = 2000;
    const QByteArray endereco = "file:" + QFile::encodeName(caminho).toPercentEncoding("/") +
                                (semTocar ? "?immutable=1" : "?mode=ro");
    sqlite3 *aberta = nullptr;
    int rc = sqlite3_open_v2(endereco.constData(), &aberta,
                             SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX, nullptr);
    const Conexao conexao(aberta);
    QList<Objeto> objetos;
    if (rc == SQLITE_OK) {
        sqlite3_busy_timeout(aberta, kEsperaMs);
        sqlite3_db_config(aberta, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
        rc = Ler(aberta, objetos);
    }
    switch (rc & 0xFF) {
    case SQLITE_OK:
        break;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
    case SQLITE_ERROR: // a schema that the engine cannot make sense of
        return {ExameEsquema::Origem::Outro, {}};
    default:
        return {};
    }
    if (!TemTabela(objetos, "Receitas") || !TemTabela(objetos, "Ingredientes"))
        return {ExameEsquema::Origem::Outro, {}};
    for (const Objeto &objeto : std::as_const(objetos)) {
        if (!Conhecidas().contains(objeto.Tudo()) && !DoMotor(objeto))
            return {ExameEsquema::Origem::Mexido, QString::fromUtf8(objeto.nome)};
    }
    return {ExameEsquema::Origem::Nosso, {}};
}
