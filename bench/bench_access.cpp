// How long an old book of 20 000 recipes takes to become a book of today, beside the bare engine inserting
// the same rows in one transaction. The last line tells the ratio; it should stay below 3.

#include "store/access/ConversorAccess.h"
#include "store/access/LivroAccess.h"
#include "store/access/tests/LivroFeito.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <iostream>
#include <stdexcept>

namespace
{
constexpr qint32 kReceitas = 20000;
constexpr qint32 kLinhas = 8;

/// The same book each time.
const QByteArray &LivroGrande()
{
    static const QByteArray bytes = [] {
        LivroFeito livro(4);
        const auto texto = [&](const QString &t) { return livro.escritor.texto(t); };
        const auto comprimido = [](const QString &t) { return EscritorJet::comprimido(t.toLatin1()); };
        qint32 linha = 0;
        for (qint32 i = 1; i <= kReceitas; ++i) {
            const QString modo =
                QString("Misture a farinha, o açúcar e os ovos; mexa bem.\r\n").repeated(4 + i % 30);
            livro.Receita(i, {},
                          {{"Nome", comprimido(QString("Bolo de fubá número %1").arg(i))},
                           {"Modo", livro.escritor.memo(i % 2 ? texto(modo) : comprimido(modo))},
                           {"Data", EscritorJet::duplo(36000 + i % 4000)},
                           {"Classificacao", comprimido("Bolos")},
                           {"Porcoes", EscritorJet::inteiro(static_cast<qint16>(i % 20))},
                           {"Preparo", comprimido("40 min")},
                           {"Calorias", EscritorJet::duplo(i % 1000)}});
            for (int j = 0; j < kLinhas; ++j)
                livro.Ingrediente(
                    ++linha, i, {},
                    {{"Ingrediente", comprimido(QString("farinha de trigo %1").arg(linha % 300))},
                     {"Quantidade", comprimido("1/2")},
                     {"Unidade", comprimido("xícara")}});
        }
        return livro.Bytes();
    }();
    return bytes;
}

void Exigir(bool certo)
{
    if (!certo)
        throw std::runtime_error("the benchmark's own work failed");
}

void LigarTexto(sqlite3_stmt *comando, int i, const LivroAccess::Texto &texto)
{
    if (!texto)
        return;
    const QByteArray utf8 = texto->toUtf8();
    sqlite3_bind_text(comando, i, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
}
void LigarNumero(sqlite3_stmt *comando, int i, const LivroAccess::Numero &numero)
{
    if (numero)
        sqlite3_bind_double(comando, i, *numero);
}

/// Plain tables, plain inserts, one transaction, the engine's usual safety.
void InserirNoMotor(const QString &caminho, const LivroAccess &livro)
{
    sqlite3 *motor = nullptr;
    Exigir(sqlite3_open(QFile::encodeName(caminho).constData(), &motor) == SQLITE_OK);
    const auto executar = [&](const char *sql) {
        Exigir(sqlite3_exec(motor, sql, nullptr, nullptr, nullptr) == SQLITE_OK);
    };
    executar("CREATE TABLE Receitas(id_receitas INTEGER PRIMARY KEY,Nome TEXT,Data TEXT,Classificacao TEXT,"
             "Tipo NUMERIC,Origem TEXT,Porcoes NUMERIC,Preparo TEXT,Tipo_Calorias TEXT,Calorias NUMERIC,"
             "Figura TEXT,Modo TEXT,Observacao TEXT);"
             "CREATE TABLE Ingredientes(id_ingredientes INTEGER PRIMARY KEY,id_receitas INTEGER,"
             "Ingrediente TEXT,Quantidade TEXT,Unidade TEXT);"
             "CREATE INDEX i ON Ingredientes(id_receitas);BEGIN");
    sqlite3_stmt *comando = nullptr;
    const auto preparar = [&](const char *sql) {
        Exigir(sqlite3_prepare_v2(motor, sql, -1, &comando, nullptr) == SQLITE_OK);
    };
    const auto passar = [&] {
        Exigir(sqlite3_step(comando) == SQLITE_DONE);
        sqlite3_reset(comando);
        sqlite3_clear_bindings(comando);
    };
    preparar("INSERT INTO Receitas VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?)");
    for (const LivroAccess::Receita &r : livro.receitas) {
        sqlite3_bind_int64(comando, 1, r.id_receitas);
        LigarTexto(comando, 2, r.Nome);
        LigarTexto(comando, 3, r.Data);
        LigarTexto(comando, 4, r.Classificacao);
        LigarNumero(comando, 5, r.Tipo);
        LigarTexto(comando, 6, r.Origem);
        LigarNumero(comando, 7, r.Porcoes);
        LigarTexto(comando, 8, r.Preparo);
        LigarTexto(comando, 9, r.Tipo_Calorias);
        LigarNumero(comando, 10, r.Calorias);
        LigarTexto(comando, 11, r.Figura);
        LigarTexto(comando, 12, r.Modo);
        LigarTexto(comando, 13, r.Observacao);
        passar();
    }
    sqlite3_finalize(comando);
    preparar("INSERT INTO Ingredientes VALUES(?,?,?,?,?)");
    for (const LivroAccess::Ingrediente &i : livro.ingredientes) {
        sqlite3_bind_int64(comando, 1, i.id_ingredientes);
        sqlite3_bind_int64(comando, 2, i.id_receitas.value_or(0));
        LigarTexto(comando, 3, i.Nome);
        LigarTexto(comando, 4, i.Quantidade);
        LigarTexto(comando, 5, i.Unidade);
        passar();
    }
    sqlite3_finalize(comando);
    executar("COMMIT");
    sqlite3_close(motor);
}

void MotorPuro(benchmark::State &estado)
{
    const LivroAccess livro = Ler(LivroGrande());
    for (auto _ : estado) {
        const QTemporaryDir pasta;
        InserirNoMotor(pasta.filePath("livro"), livro);
    }
}

void Leitura(benchmark::State &estado)
{
    const QByteArray &bytes = LivroGrande();
    for (auto _ : estado)
        benchmark::DoNotOptimize(Ler(bytes));
}

void Conversao(benchmark::State &estado)
{
    const QByteArray &bytes = LivroGrande();
    for (auto _ : estado) {
        estado.PauseTiming();
        const QTemporaryDir pasta;
        QFile arquivo(pasta.filePath("dadosr.lst"));
        Exigir(arquivo.open(QIODevice::WriteOnly) && arquivo.write(bytes) == bytes.size());
        arquivo.close();
        estado.ResumeTiming();
        ConversorAccess()(arquivo.fileName());
    }
}

/// The usual table, and the medians' ratio at the end.
class Tabela : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run> &rodadas) override
    {
        ConsoleReporter::ReportRuns(rodadas);
        for (const Run &rodada : rodadas) {
            if (rodada.aggregate_name != "median")
                continue;
            const double tempo = rodada.GetAdjustedRealTime();
            (rodada.run_name.function_name == "MotorPuro" ? m_motor : m_conversao) = tempo;
        }
    }
    void Finalize() override { std::cout << "conversion / bare engine: " << m_conversao / m_motor << '\n'; }

private:
    double m_motor = 0;
    double m_conversao = 0;
};
} // namespace

BENCHMARK(MotorPuro)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5);
BENCHMARK(Leitura)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5);
BENCHMARK(Conversao)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5);

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    Tabela tabela;
    benchmark::RunSpecifiedBenchmarks(&tabela);
    return 0;
}
