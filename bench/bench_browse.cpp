// What browsing costs, beside the bare engine call for the same rows in the same run. Each row of the table
// gives our time and the bare time in processor time (counters `nosso_ms` and `nu_ms`), and how many times as
// long ours is (counter `razao`).

#include "base/Ordem.h"
#include "bench/Comparar.h"
#include "browse/LinhasLista.h"
#include "browse/ModeloLista.h"
#include "browse/tests/Apoio.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <map>
#include <memory>
#include <string_view>

namespace
{
constexpr const char *kNomes[] = {"Bolo de", "Torta de",  "Sopa de", "Pão de",
                                  "Doce de", "Salada de", "Pudim de"};
constexpr const char *kCoisas[] = {"fubá",   "milho", "maçã",     "abóbora", "coco", "queijo",
                                   "banana", "limão", "mandioca", "nozes",   "uva"};

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
    const QString modo = QString("Misture tudo muito bem e leve ao forno. ").repeated(20);
    for (int feitas = 0; feitas < quantas;) {
        QStringList valores;
        for (int i = 0; i < 500 && feitas < quantas; ++i, ++feitas)
            valores += QString("('%1 %2 nº %3',CDATE('2005-11-21'),'Tipo %4','%5',4,'%6 min','P',%7)")
                           .arg(kNomes[feitas % 7], kCoisas[(feitas / 7) % 11])
                           .arg(feitas)
                           .arg(feitas % 20)
                           .arg(modo)
                           .arg(feitas % 90)
                           .arg(feitas % 500);
        b->livro.banco.ExecutarSQL(
            "Insert into Receitas(Nome,Data,Classificacao,Modo,Porcoes,Preparo,Tipo_Calorias,Calorias) "
            "values " +
            valores.join(","));
    }
    b->lista->imgLstRcta_Click();
    b->pesquisa->imgPesRcta_Click();
    return *b;
}

/// The engine alone: its own connection, its own LIKE, the columns that the list shows, every value read.
int Nu(const Bancada &b, const QByteArray &resto)
{
    sqlite3 *conexao = nullptr;
    sqlite3_open_v2(b.livro.banco.Caminho("dadosr.lst").toUtf8().constData(), &conexao, SQLITE_OPEN_READONLY,
                    nullptr);
    // The collation, without which the book's tables cannot be ordered; LIKE is the engine's own.
    sqlite3_create_collation(conexao, "PORTUGUES", SQLITE_UTF8, nullptr,
                             [](void *, int na, const void *a, int nb, const void *b2) {
                                 const auto texto = [](const void *p, int n) {
                                     return std::string_view(static_cast<const char *>(p),
                                                             static_cast<std::size_t>(n));
                                 };
                                 return Ordem::Comparar(texto(a, na), texto(b2, nb));
                             });
    sqlite3_stmt *comando = nullptr;
    const QByteArray sql =
        "Select " + LinhasLista::CamposLidos().join(",").toUtf8() + " from Receitas " + resto;
    if (sqlite3_prepare_v2(conexao, sql.constData(), -1, &comando, nullptr) != SQLITE_OK)
        qFatal("%s", sqlite3_errmsg(conexao));
    int linhas = 0;
    for (; sqlite3_step(comando) == SQLITE_ROW; ++linhas)
        for (int coluna = 0; coluna < sqlite3_column_count(comando); ++coluna)
            benchmark::DoNotOptimize(sqlite3_column_text(comando, coluna));
    sqlite3_finalize(comando);
    sqlite3_close(conexao);
    return linhas;
}

/// Ours with everything painted; processor time, medians of turns.
template <class Nosso, class Deles>
void Comparar(benchmark::State &estado, Nosso nosso, Deles deles)
{
    Comparar(
        estado, Contagem::Processador,
        [&nosso] {
            nosso();
            QApplication::processEvents();
        },
        deles);
}

void PreencherLista(benchmark::State &estado)
{
    Bancada &b = Livraria(static_cast<int>(estado.range(0)));
    Comparar(
        estado, [&b] { b.lista->imgLstRcta_Click(); }, [&b] { Nu(b, "Order By Nome"); });
}

/// From a closed panel, every step of the roll painted, without the pacing between them.
void AbrirLista(benchmark::State &estado)
{
    Bancada &b = Livraria(static_cast<int>(estado.range(0)));
    b.pesquisa->hide();
    Comparar(
        estado,
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
        estado, [botao] { QTest::mouseClick(botao, Qt::LeftButton); },
        [&b] { Nu(b, "Where 1=1  and Nome like '%mandioca%' Order By Nome "); });
}

void OrdenarColuna(benchmark::State &estado)
{
    Bancada &b = Livraria(static_cast<int>(estado.range(0)));
    b.lista->imgLstRcta_Click();
    auto *modelo = static_cast<ModeloLista *>(b.Lst()->model());
    Comparar(
        estado, [modelo] { modelo->Ordenar(LinhasLista::Tipo); }, [&b] { Nu(b, "Order By Classificacao"); });
}

void AbrirCartao(benchmark::State &estado)
{
    Bancada &b = Livraria(static_cast<int>(estado.range(0)));
    const qint64 numero = estado.range(0) / 2;
    const QByteArray onde = "Where id_receitas = " + QByteArray::number(numero);
    Comparar(
        estado, [&b, numero] { b.cartao->CarregarPreviewReceita(numero); }, [&b, &onde] { Nu(b, onde); });
}

BENCHMARK(PreencherLista)->Arg(1000)->Arg(20000)->Arg(250000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(AbrirLista)->Arg(1000)->Arg(20000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(PesquisarNome)->Arg(1000)->Arg(20000)->Arg(250000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(OrdenarColuna)->Arg(1000)->Arg(20000)->Arg(250000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(AbrirCartao)->Arg(1000)->Arg(20000)->Arg(250000)->UseManualTime()->Unit(benchmark::kMillisecond);
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
