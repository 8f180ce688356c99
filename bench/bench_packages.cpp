// Each of our operations beside the bare library's for the same work, in one run: base64 beside QByteArray's,
// the container beside the zlib calls, import beside the same rows inserted by the bare engine in the same
// mode; and export at three sizes, for its growth.
#include "packages/Base64Class.h"
#include "packages/Exportacao.h"
#include "packages/Pacote.h"
#include "packages/Recipiente.h"
#include "packages/frmImportacao.h"
#include "packages/tests/Duplos.h"

#include <QApplication>
#include <QPushButton>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QTimer>

#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <zlib.h>

namespace
{
constexpr int kLinhas = 10;

QByteArray AoAcaso(qsizetype tamanho)
{
    QRandomGenerator gerador(2005);
    QByteArray bytes(tamanho, Qt::Uninitialized);
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(gerador.bounded(256)); });
    return bytes;
}

/// A package text as they are: recipes in words, and a picture in base64 with every tenth.
QByteArray TextoDePacote(int receitas, int linhas, qsizetype figura)
{
    QByteArray texto = Pacote::EscreverCabecalho();
    const QByteArray dados = figura > 0 ? AoAcaso(figura) : QByteArray();
    for (int i = 0; i < receitas; ++i) {
        Pacote::Receita receita;
        receita.Nome = "Receita número " + QString::number(i);
        receita.Classificacao = "Bolos";
        receita.Modo = QString("Bata os ovos, o açúcar e o óleo.\r\nAsse por %1 minutos.").arg(i).repeated(8);
        receita.Porcoes = "8";
        receita.Calorias = QString::number(i);
        if (i % 10 == 0 && figura > 0) {
            receita.Figura = "F0000001.img";
            receita.DadosFigura = dados;
        }
        for (int k = 0; k < linhas; ++k)
            receita.Ingredientes.append({"Ingrediente " + QString::number(k), "1/2", "xícara"});
        texto += Pacote::EscreverReceita(receita);
    }
    return texto;
}

void ContarBytes(benchmark::State &estado, qsizetype bytes)
{
    estado.SetBytesProcessed(static_cast<int64_t>(estado.iterations()) * bytes);
}

void CodificarQByteArray(benchmark::State &estado)
{
    const QByteArray bytes = AoAcaso(estado.range(0));
    for (auto _ : estado)
        benchmark::DoNotOptimize(bytes.toBase64());
    ContarBytes(estado, bytes.size());
}

void CodificarBase64Class(benchmark::State &estado)
{
    const QByteArray bytes = AoAcaso(estado.range(0));
    for (auto _ : estado)
        benchmark::DoNotOptimize(Base64Class().Codificar(bytes));
    ContarBytes(estado, bytes.size());
}

void DecodificarQByteArray(benchmark::State &estado)
{
    const QByteArray texto = Base64Class().Codificar(AoAcaso(estado.range(0)));
    for (auto _ : estado)
        benchmark::DoNotOptimize(QByteArray::fromBase64(texto));
    ContarBytes(estado, estado.range(0));
}

void DecodificarBase64Class(benchmark::State &estado)
{
    const QByteArray texto = Base64Class().Codificar(AoAcaso(estado.range(0)));
    for (auto _ : estado)
        benchmark::DoNotOptimize(Base64Class().Decodificar(texto));
    ContarBytes(estado, estado.range(0));
}

void CompactarZlib(benchmark::State &estado)
{
    const QByteArray texto = TextoDePacote(300, kLinhas, 30'000);
    for (auto _ : estado) {
        auto m = compressBound(static_cast<uLong>(texto.size()));
        QByteArray saida(static_cast<qsizetype>(m), Qt::Uninitialized);
        compress2(reinterpret_cast<Bytef *>(saida.data()), &m,
                  reinterpret_cast<const Bytef *>(texto.constData()), static_cast<uLong>(texto.size()), 9);
        benchmark::DoNotOptimize(saida);
    }
    ContarBytes(estado, texto.size());
}

void CompactarRecipiente(benchmark::State &estado)
{
    const QByteArray texto = TextoDePacote(300, kLinhas, 30'000);
    for (auto _ : estado) {
        QByteArray saida;
        Recipiente::Compactar(texto, saida);
        benchmark::DoNotOptimize(saida);
    }
    ContarBytes(estado, texto.size());
}

void DescompactarZlib(benchmark::State &estado)
{
    const QByteArray texto = TextoDePacote(300, kLinhas, 30'000);
    QByteArray recipiente;
    Recipiente::Compactar(texto, recipiente);
    for (auto _ : estado) {
        auto n = static_cast<uLongf>(texto.size());
        QByteArray saida(texto.size() + 1, Qt::Uninitialized);
        uncompress(reinterpret_cast<Bytef *>(saida.data()), &n,
                   reinterpret_cast<const Bytef *>(recipiente.constData()),
                   static_cast<uLong>(recipiente.size()) - 17);
        benchmark::DoNotOptimize(saida);
    }
    ContarBytes(estado, texto.size());
}

void DescompactarRecipiente(benchmark::State &estado)
{
    const QByteArray texto = TextoDePacote(300, kLinhas, 30'000);
    QByteArray recipiente;
    Recipiente::Compactar(texto, recipiente);
    for (auto _ : estado) {
        QByteArray saida;
        Recipiente::Descompactar(recipiente, saida);
        benchmark::DoNotOptimize(saida);
    }
    ContarBytes(estado, texto.size());
}

/// One statement, one connection, as bare as the engine allows.
void ExecutarNu(const QByteArray &banco, const QByteArray &sql)
{
    sqlite3 *conexao = nullptr;
    if (sqlite3_open(banco.constData(), &conexao) != SQLITE_OK ||
        sqlite3_exec(conexao, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        qFatal("the bare engine: %s", sqlite3_errmsg(conexao));
    sqlite3_close(conexao);
}

/// The same rows, a commit each, written ahead on one connection, and one plain file again at the end.
void InserirComMotorNu(benchmark::State &estado)
{
    const int receitas = static_cast<int>(estado.range(0));
    const QByteArray modo =
        QByteArray("Bata os ovos, o açúcar e o óleo.\r\nAsse por 40 minutos.").repeated(8);
    for (auto _ : estado) {
        estado.PauseTiming();
        auto livro = std::make_unique<Livro>();
        livro->Contar("Receitas"); // makes the book
        estado.ResumeTiming();
        sqlite3 *conexao = nullptr;
        sqlite3_open(QFile::encodeName(livro->Caminho("dadosr.lst")).constData(), &conexao);
        const auto executar = [conexao](const QByteArray &sql) {
            if (sqlite3_exec(conexao, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
                qFatal("the bare engine: %s", sqlite3_errmsg(conexao));
        };
        executar("PRAGMA journal_mode=WAL;PRAGMA synchronous=NORMAL;PRAGMA wal_autocheckpoint=16384");
        for (int i = 1; i <= receitas; ++i) {
            const QByteArray numero = QByteArray::number(i);
            executar("Insert into Receitas(Nome,Data,Classificacao,Modo,Tipo,Origem,Porcoes,Preparo,"
                     "Tipo_Calorias,Calorias,Observacao,Figura) values ('Receita número " +
                     numero + "','2005-11-21','Bolos','" + modo + "',NULL,NULL,'8',NULL,NULL,'" + numero +
                     "',NULL,NULL)");
            for (int k = 0; k < kLinhas; ++k)
                executar("Insert into Ingredientes(id_receitas,Ingrediente,Quantidade,Unidade) values (" +
                         numero + ",'Ingrediente " + QByteArray::number(k) + "','1/2','xícara')");
        }
        executar("PRAGMA journal_mode=DELETE");
        sqlite3_close(conexao);
        estado.PauseTiming();
        livro.reset();
        estado.ResumeTiming();
    }
}

void ImportarPacote(benchmark::State &estado)
{
    QByteArray recipiente;
    Recipiente::Compactar(TextoDePacote(static_cast<int>(estado.range(0)), kLinhas, 0), recipiente);
    for (auto _ : estado) {
        estado.PauseTiming();
        auto livro = std::make_unique<Livro>();
        livro->Contar("Receitas");
        GravarArquivo(livro->Caminho("p.lr$"), recipiente);
        AvisosDeTeste avisos;
        RelogioParado relogio;
        estado.ResumeTiming();
        {
            frmImportacao form(livro->banco, livro->figuras, avisos, relogio);
            if (!form.CarregarReceitas(livro->Caminho("p.lr$")))
                estado.SkipWithError("the package was refused");
            form.show();
            form.findChild<QPushButton *>("cmdSalvarIngredientes")->click();
        }
        estado.PauseTiming();
        if (livro->Contar("Ingredientes") != estado.range(0) * kLinhas || avisos.ditos.size() != 1)
            estado.SkipWithError("not everything was imported");
        livro.reset();
        estado.ResumeTiming();
    }
}

/// Recipes with a picture each; the time must grow as their number does.
void ExportarComFiguras(benchmark::State &estado)
{
    const int receitas = static_cast<int>(estado.range(0));
    Livro livro;
    QList<ReceitaSelecionada> selecionadas;
    livro.Contar("Receitas");
    const QByteArray banco = QFile::encodeName(livro.Caminho("dadosr.lst"));
    const QByteArray figura = AoAcaso(20'000);
    QDir().mkpath(livro.Caminho("Fotos"));
    QByteArray sql = "BEGIN;";
    for (int i = 1; i <= receitas; ++i) {
        const QString nome = "F" + QString::number(i).rightJustified(7, '0') + ".img";
        sql += "Insert into Receitas(Nome,Modo,Porcoes,Calorias,Figura) values ('Receita " +
               QByteArray::number(i) + "','Bata e asse.',8,100,'" + nome.toLatin1() + "');";
        for (int k = 0; k < kLinhas; ++k)
            sql += "Insert into Ingredientes(id_receitas,Ingrediente) values (" + QByteArray::number(i) +
                   ",'Sal');";
        GravarArquivo(livro.Caminho("Fotos\\" + nome), figura);
        selecionadas.append({i, ""});
    }
    ExecutarNu(banco, sql + "COMMIT;");
    AvisosDeTeste avisos;
    PainelDeTeste painel;
    JanelaDeTeste janela;
    AbridorDeTeste abridor;
    Exportacao exportacao(livro.banco, livro.figuras, avisos, painel, janela, janela, abridor,
                          "https://www.tamarel.example");
    for (auto _ : estado)
        exportacao.imgTransmit_Click(selecionadas);
    if (!avisos.ditos.isEmpty() || abridor.abertos.isEmpty())
        estado.SkipWithError("the export failed");
    estado.SetComplexityN(receitas);
    estado.counters["por_receita"] = benchmark::Counter(
        receitas * 1e-3, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/// What a package of so many megabytes of text holds, most of it in one place.
enum class Caso { Modo, Receitas, Figura };

QByteArray TextoGrande(Caso caso, qsizetype bytes)
{
    Pacote::Receita receita;
    receita.Nome = "Grande";
    QByteArray texto = Pacote::EscreverCabecalho();
    switch (caso) {
    case Caso::Modo:
        receita.Modo = QString(bytes, 'x');
        return texto + Pacote::EscreverReceita(receita);
    case Caso::Figura:
        receita.Figura = "x.img";
        receita.DadosFigura = QByteArray(bytes / 4 * 3, 'f');
        return texto + Pacote::EscreverReceita(receita);
    case Caso::Receitas:
        break;
    }
    receita.Modo = QString(3'900'000, 'x');
    const QByteArray uma = Pacote::EscreverReceita(receita);
    for (qsizetype i = 0; i < std::max<qsizetype>(bytes / uma.size(), 1); ++i)
        texto += uma;
    return texto;
}

/// Imports a package as the program does and says the longest time, in milliseconds, in which no event of the
/// window got through.
int ImportarParaMedir(const QString &pasta, const QString &pacote)
{
    const Banco banco(pasta);
    const Figuras figuras(banco);
    AvisosDeTeste avisos;
    avisos.resposta = true;
    RelogioParado relogio;
    frmImportacao form(banco, figuras, avisos, relogio);
    QElapsedTimer carga;
    carga.start();
    if (!form.CarregarReceitas(pacote))
        return 1;
    const qint64 carregado = carga.elapsed();
    form.show();
    qint64 maior = 0;
    QElapsedTimer desde;
    QTimer batida;
    QObject::connect(&batida, &QTimer::timeout, &batida, [&] { maior = std::max(maior, desde.restart()); });
    desde.start();
    batida.start(0);
    form.findChild<QPushButton *>("cmdSalvarIngredientes")->click();
    printf("%lld %lld\n", static_cast<long long>(carregado), static_cast<long long>(std::max(maior, desde.elapsed())));
    return avisos.ditos.isEmpty() ? 1 : 0;
}

/// Peak memory of a process that imports a package of so much text, and its longest silence.
void MemoriaDaImportacao(benchmark::State &estado)
{
    QTemporaryDir pasta;
    const QString pacote = pasta.filePath("p.lr$");
    {
        QByteArray recipiente;
        Recipiente::Compactar(TextoGrande(Caso(estado.range(0)), estado.range(1) * 1'000'000), recipiente, 1);
        GravarArquivo(pacote, recipiente);
        estado.counters["package_MB"] = static_cast<double>(recipiente.size()) / 1e6;
    }
    for (auto _ : estado) {
        const QString livro = pasta.filePath("livro");
        QDir(livro).removeRecursively();
        QDir().mkpath(livro);
        QProcess filho;
        filho.start("/usr/bin/env", {"bash", "-c",
                                     "\"$0\" --importar \"$1\" \"$2\" & p=$!; while kill -0 $p 2>/dev/null; do "
                                     "grep -s VmHWM /proc/$p/status; sleep 0.02; done; wait $p",
                                     QCoreApplication::applicationFilePath(), livro, pacote});
        filho.waitForFinished(-1);
        if (filho.exitCode() != 0)
            estado.SkipWithError("the import failed");
        double pico = 0;
        for (const QByteArray &linha : filho.readAllStandardOutput().split('\n')) {
            if (linha.startsWith("VmHWM:"))
                pico = std::max(pico, linha.mid(6).trimmed().split(' ').first().toDouble() * 1024);
            else if (const QList<QByteArray> numeros = linha.split(' '); numeros.size() == 2) {
                estado.counters["load_ms"] = numeros[0].toDouble();
                estado.counters["silence_ms"] = numeros[1].toDouble();
            }
        }
        estado.counters["peak_MB"] = pico / 1e6;
    }
}

BENCHMARK(MemoriaDaImportacao)
    ->ArgsProduct({{int(Caso::Modo), int(Caso::Receitas), int(Caso::Figura)}, {1, 20, 100, 500}})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->UseRealTime();
BENCHMARK(CodificarQByteArray)->Arg(20'000)->Arg(1'000'000);
BENCHMARK(CodificarBase64Class)->Arg(20'000)->Arg(1'000'000);
BENCHMARK(DecodificarQByteArray)->Arg(20'000)->Arg(1'000'000);
BENCHMARK(DecodificarBase64Class)->Arg(20'000)->Arg(1'000'000);
BENCHMARK(CompactarZlib)->Unit(benchmark::kMillisecond);
BENCHMARK(CompactarRecipiente)->Unit(benchmark::kMillisecond);
BENCHMARK(DescompactarZlib)->Unit(benchmark::kMillisecond);
BENCHMARK(DescompactarRecipiente)->Unit(benchmark::kMillisecond);
BENCHMARK(InserirComMotorNu)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->UseRealTime();
BENCHMARK(ImportarPacote)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(ExportarComFiguras)
    ->Arg(250)
    ->Arg(500)
    ->Arg(1000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Complexity();
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    if (const QStringList argumentos = QApplication::arguments(); argumentos.value(1) == "--importar")
        return ImportarParaMedir(argumentos.value(2), argumentos.value(3));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
