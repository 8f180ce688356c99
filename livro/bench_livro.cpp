// Our time beside that of the bare libraries for the same bytes: reading a file and parsing its JSON, packing a text.

#include "formatos/EscritorJson.h"
#include "formatos/Exportador.h"
#include "formatos/Importador.h"
#include "formatos/tests/ReceitasGeradas.h"

#include "packages/Pacote.h"

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <zlib.h>

namespace
{
constexpr int kQuantas = 10'000;

struct Mesa {
    QTemporaryDir pasta;
    QList<Formatos::Receita> receitas = ReceitasGeradas::Gerar(kQuantas);

    Mesa()
    {
        for (Formatos::Receita &r : receitas) {
            r.Figura.clear();
            r.DadosFigura.clear();
        }
        ReceitasGeradas::GravarLivro(pasta.path(), receitas);
        const Formatos::LivroAberto livro(pasta.path());
        Formatos::Relato relato;
        const Formatos::Saida saida{livro, livro.Receitas(), {}};
        for (const auto &[formato, nome] : {std::pair("json", "livro.json"), {"csv", "livro.csv"}, {"mealmaster", "livro.mmf"},
                                            {"html", "livro.html"}, {"pacote", "livro.lr$"}})
            Formatos::Exportar(saida, formato, pasta.filePath(nome), relato);
    }
};

const Mesa &AMesa()
{
    static const Mesa mesa;
    return mesa;
}

QByteArray Ler(const QString &nome)
{
    QFile arquivo(AMesa().pasta.filePath(nome));
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
}

QByteArray TextoDoPacote()
{
    QByteArray texto = Pacote::EscreverCabecalho();
    for (const Formatos::Receita &r : AMesa().receitas)
        texto += Pacote::EscreverReceita(r);
    return texto;
}

/// The bare libraries: read, parse, pack what comes out of it.
void LimiteConverterJson(benchmark::State &estado)
{
    const QByteArray texto = TextoDoPacote();
    for (auto _ : estado) {
        benchmark::DoNotOptimize(QJsonDocument::fromJson(Ler("livro.json")));
        uLongf tamanho = compressBound(static_cast<uLong>(texto.size()));
        QByteArray saida(static_cast<qsizetype>(tamanho), Qt::Uninitialized);
        compress2(reinterpret_cast<Bytef *>(saida.data()), &tamanho, reinterpret_cast<const Bytef *>(texto.constData()),
                  static_cast<uLong>(texto.size()), 9);
        QFile arquivo(AMesa().pasta.filePath("limite.lr$"));
        if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(saida.constData(), static_cast<qint64>(tamanho)) < 0)
            estado.SkipWithError("cannot write");
    }
}

void Converter(benchmark::State &estado, const char *nome)
{
    for (auto _ : estado) {
        Formatos::Relato relato;
        QList<Formatos::Receita> receitas = Formatos::Importador(relato).Ler(AMesa().pasta.filePath(nome));
        for (Formatos::Receita &r : receitas)
            r = Formatos::ParaOPacote(r);
        if (receitas.size() != kQuantas || !Formatos::GravarPacote(receitas, AMesa().pasta.filePath("saida.lr$")).isEmpty())
            estado.SkipWithError("not all of them");
    }
}

void AbrirLivro(benchmark::State &estado)
{
    for (auto _ : estado)
        benchmark::DoNotOptimize(Formatos::LivroAberto(AMesa().pasta.path()).Receitas().size());
}

void Gravar(benchmark::State &estado, const char *formato, const char *nome)
{
    const Formatos::LivroAberto livro(AMesa().pasta.path());
    for (auto _ : estado) {
        Formatos::Relato relato;
        if (!Formatos::Exportar({livro, livro.Receitas(), {}}, formato, AMesa().pasta.filePath(nome), relato).isEmpty())
            estado.SkipWithError("not written");
    }
}
} // namespace

BENCHMARK(LimiteConverterJson)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Converter, json, "livro.json")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Converter, csv, "livro.csv")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Converter, mealmaster, "livro.mmf")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Converter, html, "livro.html")->Unit(benchmark::kMillisecond);
BENCHMARK(AbrirLivro)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Gravar, json, "json", "saida.json")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Gravar, csv, "csv", "saida.csv")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Gravar, html, "html", "saida.html")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Gravar, pacote, "pacote", "saida2.lr$")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Gravar, access, "access", "saida.lst")->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
