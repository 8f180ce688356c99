// What the store costs beside the bare engine doing the same, in turns in one run. A number after the name is
// the size of the book. The bare engine reads a copy of the book with the best index for the query
// (`...ComIndice`) or the book as it is.

#include "base/Relogio.h"
#include "bench/Comparar.h"
#include "bench/GeradorLivro.h"
#include "bench/MotorNu.h"
#include "browse/LinhasLista.h"
#include "editor/GravarReceita.h"
#include "editor/LinhaIngrediente.h"
#include "store/Banco.h"
#include "store/Figuras.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <map>
#include <memory>
#include <stdexcept>

namespace
{
constexpr int kLinhas = 10;

struct Estante {
    explicit Estante(int receitas)
        : banco(pasta.path())
    {
        GerarLivro(pasta.path(), receitas);
    }
    QTemporaryDir pasta;
    Banco banco;
    QString Caminho() const { return pasta.filePath("dadosr.lst"); }
    /// A copy with the indexes that the list's order and the names of ingredients would like best.
    QString ComIndice() const
    {
        const QString copia = pasta.filePath("indexado.lst");
        if (!QFile::exists(copia)) {
            if (!QFile::copy(Caminho(), copia))
                throw std::runtime_error("the book cannot be copied");
            MotorNu motor(copia, MotorNu::Modo::Gravar);
            motor.Executar("CREATE INDEX PorNome ON Receitas(Nome);"
                           "CREATE INDEX PorIngrediente ON Ingredientes(Ingrediente)");
        }
        return copia;
    }
};

/// The book of so many recipes, made once a run.
Estante &Livro(benchmark::State &estado)
{
    static std::map<int, std::unique_ptr<Estante>> prontos;
    const int receitas = static_cast<int>(estado.range(0));
    std::unique_ptr<Estante> &livro = prontos[receitas];
    if (!livro)
        livro = std::make_unique<Estante>(receitas);
    return *livro;
}

Comandos::Receita ReceitaDeTeste()
{
    Comandos::Receita receita;
    receita.Nome = "Bolo de fubá da vovó";
    receita.Classificacao = "Bolos";
    receita.Modo = QString("Bata os ovos com o açúcar até formar um creme claro.\r\n").repeated(18);
    receita.Porcoes = "8";
    receita.Preparo = "40 minutos";
    receita.Calorias = "320";
    receita.Tipo_Calorias = "R";
    return receita;
}

QString NomeDaLinha(int linha)
{
    return "farinha de milho nº " + QString::number(linha);
}

/// The statements of a new recipe with ten lines, by the bare engine, one connection each.
void GravarNu(const QString &caminho)
{
    const QDate hoje = QDate::currentDate();
    const auto executar = [&caminho](const QString &sql) {
        MotorNu(caminho, MotorNu::Modo::Gravar).Executar(sql.toStdString());
    };
    QString inserir = Comandos::SqlInserirReceita(ReceitaDeTeste(), hoje);
    // The bare engine has no CDATE; the book keeps what CDATE gives.
    inserir.replace(Comandos::Data(hoje), Comandos::Texto(hoje.toString(Qt::ISODate)));
    executar(inserir);
    const qint64 numero =
        MotorNu(caminho, MotorNu::Modo::Ler).Numero(Comandos::SqlMaiorNumero().toStdString());
    for (int linha = 0; linha < kLinhas; ++linha)
        executar(Comandos::SqlInserirIngrediente(numero, NomeDaLinha(linha), "2", "xícaras"));
}

void ComandosDeGravar(benchmark::State &estado)
{
    const Estante &livro = Livro(estado);
    Comparar(
        estado, Contagem::Parede,
        [&livro] {
            livro.banco.ExecutarSQL(Comandos::SqlInserirReceita(ReceitaDeTeste(), QDate::currentDate()));
            const qint64 numero =
                livro.banco.AbrirRecordset(Comandos::SqlMaiorNumero()).Valor(0).toLongLong();
            for (int linha = 0; linha < kLinhas; ++linha)
                livro.banco.ExecutarSQL(
                    Comandos::SqlInserirIngrediente(numero, NomeDaLinha(linha), "2", "xícaras"));
        },
        [&livro] { GravarNu(livro.Caminho()); });
}

/// The whole save, from what the editor's controls hold.
void Gravar(benchmark::State &estado)
{
    const Estante &livro = Livro(estado);
    const Figuras figuras(livro.banco);
    const RelogioDoSistema relogio;
    const Comandos::Receita receita = ReceitaDeTeste();
    ReceitaNaTela tela;
    tela.txtNome = receita.Nome;
    tela.cmbTipo = receita.Classificacao;
    tela.txtModo = receita.Modo;
    tela.txtPorcoes = receita.Porcoes;
    tela.txtPreparo = receita.Preparo;
    tela.txtCalorias = receita.Calorias;
    tela.optReceita = true;
    tela.imgFigura = EstadoDaFigura::Nenhuma();
    for (int linha = 0; linha < kLinhas; ++linha)
        tela.ingredientes += LinhaIngrediente{"2", "xícaras", NomeDaLinha(linha)}.Tag();
    Comparar(
        estado, Contagem::Parede, [&] {
            ReceitaNaTela nova = tela; // the save gives it its number
            GravarReceita(livro.banco, figuras, relogio, nova);
        },
        [&livro] { GravarNu(livro.Caminho()); });
}

/// One recipe by its number: open, ask, close.
void AbrirEConsultar(benchmark::State &estado)
{
    const Estante &livro = Livro(estado);
    const QString sql = Comandos::SqlReceita(estado.range(0) / 2);
    constexpr int kVezes = 20; // one alone is too short for the clock
    Comparar(
        estado, Contagem::Processador,
        [&] {
            for (int i = 0; i < kVezes; ++i)
                benchmark::DoNotOptimize(livro.banco.AbrirRecordset(sql));
        },
        [&] {
            for (int i = 0; i < kVezes; ++i)
                MotorNu(livro.Caminho(), MotorNu::Modo::Ler).Percorrer(sql.toStdString());
        });
    estado.counters["nosso_ms"] = estado.counters["nosso_ms"] / kVezes;
    estado.counters["nu_ms"] = estado.counters["nu_ms"] / kVezes;
}

void CompararConsulta(benchmark::State &estado, const QString &caminhoNu, const QString &sql,
                      const QStringList &colunas)
{
    const Estante &livro = Livro(estado);
    std::string nu = sql.toStdString();
    if (!colunas.isEmpty())
        nu.replace(nu.find('*'), 1, colunas.join(",").toStdString());
    if (livro.banco.AbrirRecordset(sql, colunas).RecordCount() !=
        MotorNu(caminhoNu, MotorNu::Modo::Ler).Percorrer(nu))
        throw std::runtime_error("the two do not return the same rows");
    Comparar(
        estado, Contagem::Processador,
        [&] { benchmark::DoNotOptimize(livro.banco.AbrirRecordset(sql, colunas)); },
        [&] { MotorNu(caminhoNu, MotorNu::Modo::Ler).Percorrer(nu); });
}

void NomesDistintos(benchmark::State &estado)
{
    CompararConsulta(estado, Livro(estado).Caminho(), Comandos::SqlNomesDeIngredientes(), {});
}

void NomesDistintosComIndice(benchmark::State &estado)
{
    CompararConsulta(estado, Livro(estado).ComIndice(), Comandos::SqlNomesDeIngredientes(), {});
}

void BuscarLista(benchmark::State &estado)
{
    CompararConsulta(estado, Livro(estado).Caminho(), Comandos::SqlLista(), LinhasLista::CamposLidos());
}

void BuscarListaComIndice(benchmark::State &estado)
{
    CompararConsulta(estado, Livro(estado).ComIndice(), Comandos::SqlLista(), LinhasLista::CamposLidos());
}

constexpr auto kMs = benchmark::kMillisecond;
// A save reaches the disk a dozen times; more rounds would only wear it.
BENCHMARK(ComandosDeGravar)->Arg(50)->Arg(20000)->Arg(250000)->UseManualTime()->Unit(kMs)->Iterations(31);
BENCHMARK(Gravar)->Arg(50)->Arg(20000)->Arg(250000)->UseManualTime()->Unit(kMs)->Iterations(31);
BENCHMARK(AbrirEConsultar)->Arg(1000)->Arg(20000)->Arg(250000)->UseManualTime()->Unit(kMs);
BENCHMARK(BuscarLista)->Arg(1000)->Arg(20000)->Arg(250000)->UseManualTime()->Unit(kMs);
BENCHMARK(BuscarListaComIndice)->Arg(1000)->Arg(20000)->Arg(250000)->UseManualTime()->Unit(kMs);
BENCHMARK(NomesDistintos)->Arg(1000)->Arg(20000)->Arg(250000)->UseManualTime()->Unit(kMs);
BENCHMARK(NomesDistintosComIndice)->Arg(1000)->Arg(20000)->Arg(250000)->UseManualTime()->Unit(kMs);
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication aplicacao(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
