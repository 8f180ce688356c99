// What browsing costs, beside the bare engine call for the same rows in the same run. Each row of the table
// gives our time and the bare time in processor time (counters `nosso_ms` and `nu_ms`), and how many times as
// long ours is (counter `razao`).

#include "base/CampoTexto.h"
#include "base/Ordem.h"
#include "bench/Comparar.h"
#include "bench/GeradorLivro.h"
#include "bench/MotorNu.h"
#include "browse/LinhasLista.h"
#include "browse/ModeloLista.h"
#include "browse/tests/Apoio.h"
#include "store/EscolhasDoLivro.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace
{
/// The windows that are open, by the size of their books.
std::map<int, std::unique_ptr<Bancada>> &Prontas()
{
    static std::map<int, std::unique_ptr<Bancada>> prontas;
    return prontas;
}

/// A window over a book of so many invented recipes; always the same ones.
Bancada &Livraria(int quantas)
{
    std::unique_ptr<Bancada> &b = Prontas()[quantas];
    if (b)
        return *b;
    b = std::make_unique<Bancada>();
    GerarLivro(b->livro.pasta.path(), quantas);
    b->lista->imgLstRcta_Click();
    b->pesquisa->imgPesRcta_Click();
    return *b;
}

/// The longest time that the event loop was not heard of while this lives, in milliseconds.
class Silencio
{
public:
    Silencio()
    {
        QObject::connect(&m_batida, &QTimer::timeout, &m_batida, [this] { Bater(); });
        m_batida.start(0);
        m_desde.start();
    }
    double Maior()
    {
        Bater();
        return m_maior;
    }

private:
    void Bater()
    {
        m_maior = std::max(m_maior, static_cast<double>(m_desde.nsecsElapsed()) / 1e6);
        m_desde.start();
    }
    QTimer m_batida;
    QElapsedTimer m_desde;
    double m_maior = 0;
};

/// What another copy does: the book is written, and no one's rows change.
void Mexer(const Bancada &b)
{
    b.livro.banco.LerUmaVez(); // ends what is still being read behind a panel
    MotorNu(b.livro.banco.Caminho("dadosr.lst"), MotorNu::Modo::Gravar)
        .Executar("UPDATE Receitas SET Tipo=Tipo WHERE id_receitas=1");
}

/// A copy of the book with the indexes that the bare engine would like best, in the book's own order.
QString ComIndices(const Bancada &b)
{
    const QString copia = b.livro.pasta.filePath("indexado.lst");
    if (QFile::exists(copia))
        return copia;
    QFile::copy(b.livro.banco.Caminho("dadosr.lst"), copia);
    MotorNu motor(copia, MotorNu::Modo::Gravar);
    motor.Executar("PRAGMA synchronous=OFF");
    motor.Executar(
        "CREATE INDEX BomNome ON Receitas(Nome,id_receitas,Figura,Classificacao,Origem,Preparo,Tipo,"
        "Tipo_Calorias,Calorias,Porcoes);"
        "CREATE INDEX BomTipo ON Receitas(Classificacao);CREATE INDEX BomaOrigem ON Receitas(Origem);"
        "CREATE INDEX BomIngrediente ON Ingredientes(Ingrediente)");
    return copia;
}

/// The bare engine on the best indexes: the columns that the list shows, every value read.
int Nu(const Bancada &b, const QByteArray &resto)
{
    return MotorNu(ComIndices(b), MotorNu::Modo::Ler)
        .Percorrer("Select " + LinhasLista::CamposLidos().join(",").toStdString() + " from Receitas " +
                   resto.toStdString());
}

/// Ours with everything painted; processor time, medians of turns. `antes` is not measured. The longest
/// silence of the event loop is the wall's, the median of the rounds.
template <class Antes, class Nosso, class Deles>
void Comparar(benchmark::State &estado, Antes antes, Nosso nosso, Deles deles)
{
    std::vector<double> nossos;
    std::vector<double> nus;
    std::vector<double> silencios;
    deles();
    nosso();
    for ([[maybe_unused]] auto _ : estado) {
        antes();
        QApplication::processEvents();
        Silencio silencio;
        const double t0 = Segundos(Contagem::Processador);
        nosso();
        QApplication::processEvents();
        const double t1 = Segundos(Contagem::Processador);
        silencios.push_back(silencio.Maior());
        deles();
        const double t2 = Segundos(Contagem::Processador);
        nossos.push_back(t1 - t0);
        nus.push_back(t2 - t1);
        estado.SetIterationTime(t1 - t0);
    }
    estado.counters["nosso_ms"] = 1000 * Mediana(nossos);
    estado.counters["nu_ms"] = 1000 * Mediana(nus);
    estado.counters["razao"] = Mediana(nossos) / Mediana(nus);
    estado.counters["silencio_ms"] = Mediana(silencios);
}

constexpr auto kNada = [] {};

void PreencherLista(benchmark::State &estado)
{
    Bancada &b = Livraria(static_cast<int>(estado.range(0)));
    std::vector<double> primeiras;
    double inicio = 0;
    bool chegou = true;
    const auto notar = [&] {
        if (!chegou && b.Lst()->model()->rowCount() > 0) {
            chegou = true;
            primeiras.push_back(Segundos(Contagem::Processador) - inicio);
        }
    };
    const auto um = QObject::connect(b.Lst()->model(), &QAbstractItemModel::rowsInserted, b.Lst(), notar);
    const auto outro = QObject::connect(b.Lst()->model(), &QAbstractItemModel::modelReset, b.Lst(), notar);
    Comparar(
        estado, [&b] { Mexer(b); },
        [&] {
            chegou = false;
            inicio = Segundos(Contagem::Processador);
            b.lista->imgLstRcta_Click();
        },
        [&b] { Nu(b, "Order By Nome"); });
    estado.counters["primeira_ms"] = 1000 * Mediana(primeiras);
    QObject::disconnect(um);
    QObject::disconnect(outro);
}

void PreencherListaIgual(benchmark::State &estado)
{
    Bancada &b = Livraria(static_cast<int>(estado.range(0)));
    Comparar(
        estado, kNada, [&b] { b.lista->imgLstRcta_Click(); }, [&b] { Nu(b, "Order By Nome"); });
}

/// From a closed panel, every step of the roll painted, without the pacing between them.
void AbrirLista(benchmark::State &estado)
{
    Bancada &b = Livraria(static_cast<int>(estado.range(0)));
    b.pesquisa->hide();
    Comparar(
        estado, [&b] { Mexer(b); },
        [&b] {
            b.lista->hide();
            b.lista->imgLstRcta_Click();
        },
        [&b] { Nu(b, "Order By Nome"); });
    b.pesquisa->show();
}

void PesquisarNome(benchmark::State &estado)
{
    Bancada &b = Livraria(static_cast<int>(estado.range(0)));
    b.Controle<QLineEdit>("txtPesNome")->setText("mandioca");
    auto *botao = b.Controle<QPushButton>("cmdPesquisa");
    Comparar(
        estado, [&b] { Mexer(b); }, [botao] { QTest::mouseClick(botao, Qt::LeftButton); },
        [&b] { Nu(b, "Where 1=1  and Nome like '%mandioca%' Order By Nome "); });
    b.Controle<QLineEdit>("txtPesNome")->clear();
}

void PesquisarIngrediente(benchmark::State &estado)
{
    Bancada &b = Livraria(static_cast<int>(estado.range(0)));
    b.Controle<ComboTexto>("cmbPesIngrediente")->setEditText("sal");
    auto *botao = b.Controle<QPushButton>("cmdPesquisa");
    Comparar(
        estado, [&b] { Mexer(b); }, [botao] { QTest::mouseClick(botao, Qt::LeftButton); },
        [&b] {
            Nu(b, "Where 1=1  and id_receitas in (Select id_receitas from Ingredientes Where Ingrediente = "
                  "'sal') "
                  "Order By Nome ");
        });
    b.Controle<ComboTexto>("cmbPesIngrediente")->setEditText("");
}

/// Everything that the three choice lists of the search ask for.
void EscolhasNuas(const Bancada &b)
{
    MotorNu motor(ComIndices(b), MotorNu::Modo::Ler);
    for (const QString &sql :
         {Comandos::SqlTiposPesquisa(), Comandos::SqlOrigensPesquisa(), Comandos::SqlNomesDeIngredientes()})
        motor.Percorrer(sql.toStdString());
}

/// The panel painted, its roll without pacing; the lists may still be on their way.
void AbrirPesquisa(benchmark::State &estado)
{
    Bancada &b = Livraria(static_cast<int>(estado.range(0)));
    Comparar(
        estado,
        [&b] {
            b.Controle<ComboTexto>("cmbPesIngrediente")->count(); // the last round's reading ends
            Mexer(b);
        },
        [&b] { b.pesquisa->imgPesRcta_Click(); }, [&b] { EscolhasNuas(b); });
    b.Controle<ComboTexto>("cmbPesIngrediente")->count();
}

void AbrirPesquisaIgual(benchmark::State &estado)
{
    Bancada &b = Livraria(static_cast<int>(estado.range(0)));
    b.pesquisa->imgPesRcta_Click();
    b.Controle<ComboTexto>("cmbPesIngrediente")->count();
    Comparar(
        estado, kNada, [&b] { b.pesquisa->imgPesRcta_Click(); }, [&b] { EscolhasNuas(b); });
}

/// The same until the last list is there, read between the window's events.
void EscolhasCompletas(benchmark::State &estado)
{
    Bancada &b = Livraria(static_cast<int>(estado.range(0)));
    Comparar(
        estado, [&b] { Mexer(b); },
        [&b] {
            const EscolhasDoLivro tipos(b.livro.banco, Comandos::SqlTiposPesquisa(), {});
            const EscolhasDoLivro origens(b.livro.banco, Comandos::SqlOrigensPesquisa(), {});
            const EscolhasDoLivro ingredientes(b.livro.banco, Comandos::SqlNomesDeIngredientes(), {});
            while (!ingredientes.Completa())
                QApplication::processEvents();
        },
        [&b] { EscolhasNuas(b); });
}

/// What a key press costs that is completed among all ingredients; ten presses, mean.
void TeclaCompletada(benchmark::State &estado)
{
    Bancada &b = Livraria(static_cast<int>(estado.range(0)));
    EscolhasDoLivro ingredientes(b.livro.banco, Comandos::SqlNomesDeIngredientes(), {});
    const QStringList digitados{"f", "fa", "far", "á", "z", "couve-", "x", "xy", "açú", "queijo r"};
    Comparar(
        estado, kNada,
        [&] {
            for (const QString &digitado : digitados)
                benchmark::DoNotOptimize(ingredientes.Procurar(digitado));
        },
        kNada);
    estado.counters["nosso_ms"] = estado.counters["nosso_ms"] / 10;
}

void OrdenarColuna(benchmark::State &estado)
{
    Bancada &b = Livraria(static_cast<int>(estado.range(0)));
    b.lista->imgLstRcta_Click();
    auto *modelo = static_cast<ModeloLista *>(b.Lst()->model());
    // The limit: the standard sort of keys that are ready.
    std::vector<std::pair<std::string, int>> prontas;
    for (int linha = 0; linha < modelo->rowCount(); ++linha)
        prontas.emplace_back(
            Ordem::Chave(modelo->Linhas().Texto(linha, LinhasLista::Tipo).toUtf8().toStdString()), linha);
    std::vector<std::pair<std::string, int>> chaves;
    const LinhasLista::Coluna coluna = LinhasLista::Tipo;
    Comparar(
        estado,
        [&] {
            modelo->Ordenar(LinhasLista::Nome);
            chaves = prontas;
        },
        [&] { modelo->Ordenar(coluna); }, [&] { std::sort(chaves.begin(), chaves.end()); });
}

void AbrirCartao(benchmark::State &estado)
{
    Bancada &b = Livraria(static_cast<int>(estado.range(0)));
    const qint64 numero = estado.range(0) / 2;
    const QByteArray onde = "Where id_receitas = " + QByteArray::number(numero);
    Comparar(
        estado, kNada, [&b, numero] { b.cartao->CarregarPreviewReceita(numero); },
        [&b, &onde] { Nu(b, onde); });
}

BENCHMARK(PreencherListaIgual)
    ->Arg(50)
    ->Arg(1000)
    ->Arg(20000)
    ->Arg(250000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
#define MEDIR(nome)                                                                                          \
    BENCHMARK(nome)->Arg(50)->Arg(1000)->Arg(20000)->Arg(250000)->UseManualTime()->Unit(                     \
        benchmark::kMillisecond)
MEDIR(PesquisarIngrediente);
MEDIR(AbrirPesquisa);
MEDIR(AbrirPesquisaIgual);
MEDIR(EscolhasCompletas);
MEDIR(TeclaCompletada);
BENCHMARK(PreencherLista)
    ->Arg(50)
    ->Arg(1000)
    ->Arg(20000)
    ->Arg(250000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(AbrirLista)->Arg(50)->Arg(1000)->Arg(20000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(PesquisarNome)
    ->Arg(50)
    ->Arg(1000)
    ->Arg(20000)
    ->Arg(250000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(OrdenarColuna)
    ->Arg(50)
    ->Arg(1000)
    ->Arg(20000)
    ->Arg(250000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(AbrirCartao)
    ->Arg(50)
    ->Arg(1000)
    ->Arg(20000)
    ->Arg(250000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication aplicacao(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    Prontas().clear(); // windows must not outlive the application
    return 0;
}
