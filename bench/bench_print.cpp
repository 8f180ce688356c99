// How long printing takes: recipes into one PDF, and the text routine alone. Pages and characters a second
// should not fall as the work grows.

#include "print/ImpressaoGrafica.h"
#include "print/Impressoras.h"
#include "print/LayoutReceita.h"
#include "print/ListaDesenho.h"
#include "print/TrabalhoImpressao.h"

#include <QApplication>
#include <QPrinter>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace
{
const QString kFrase =
    QStringLiteral("Bata os ovos com o açúcar até formar um creme claro, junte a farinha aos poucos "
                   "e mexa bem. Leve ao forno já quente por cerca de 40 minutos. ");

ReceitaImpressa Inventar(int numero)
{
    ReceitaImpressa receita;
    receita.Nome = QStringLiteral("Receita inventada nº %1").arg(numero);
    receita.Classificacao = QStringLiteral("Bolos");
    receita.Preparo = QStringLiteral("%1 minutos").arg(20 + numero % 70);
    receita.Porcoes = QString::number(1 + numero % 12);
    for (int i = 0; i < 8; ++i)
        receita.Ingredientes.append({QString::number(i + 1), QStringLiteral("xícaras"),
                                     QStringLiteral("ingrediente %1").arg((numero * 7 + i) % 97)});
    receita.Modo = kFrase.repeated(12 + numero % 30);
    return receita;
}

class Pdf : public SaidaImpressao
{
public:
    explicit Pdf(const QString &arquivo)
    {
        m_printer.setOutputFormat(QPrinter::PdfFormat);
        m_printer.setOutputFileName(arquivo);
    }
    QPrinter &Printer() override { return m_printer; }
    void Entregar() override {}

private:
    QPrinter m_printer{QPrinter::HighResolution};
};

void ReceitasEmUmPdf(benchmark::State &estado)
{
    const QTemporaryDir pasta;
    const int receitas = static_cast<int>(estado.range(0));
    double paginas = 0;
    for ([[maybe_unused]] auto _ : estado) {
        TrabalhoImpressao trabalho(std::make_unique<Pdf>(pasta.filePath(QStringLiteral("receitas.pdf"))));
        for (int i = 0; i < receitas; ++i) {
            if (i > 0)
                trabalho.ObjPrint().NewPage();
            paginas +=
                LayoutReceita::Imprimir(trabalho.ObjPrint(), Inventar(i), QStringLiteral("www.example"));
        }
        trabalho.Terminar();
    }
    estado.counters["paginas/s"] = benchmark::Counter(paginas, benchmark::Counter::kIsRate);
}

void TextoNoCartao(benchmark::State &estado)
{
    const QString texto = kFrase.repeated(20 * static_cast<int>(estado.range(0)));
    for ([[maybe_unused]] auto _ : estado) {
        ListaDesenho lista;
        SuperficieLista superficie(lista, 113, 1e6);
        QString resto = texto;
        benchmark::DoNotOptimize(ImpressaoGrafica::ImprimirTexto(superficie, 0, 3, 110, 1e6, resto));
    }
    estado.counters["letras/s"] =
        benchmark::Counter(static_cast<double>(texto.size()) * static_cast<double>(estado.iterations()),
                           benchmark::Counter::kIsRate);
}

/// The same text without a blank: every line is broken between letters.
void PalavraSemFim(benchmark::State &estado)
{
    const QString texto = QString(kFrase).remove(u' ').repeated(20 * static_cast<int>(estado.range(0)));
    for ([[maybe_unused]] auto _ : estado) {
        ListaDesenho lista;
        SuperficieLista superficie(lista, 113, 1e6);
        QString resto = texto;
        benchmark::DoNotOptimize(ImpressaoGrafica::ImprimirTexto(superficie, 0, 3, 110, 1e6, resto));
    }
    estado.counters["letras/s"] =
        benchmark::Counter(static_cast<double>(texto.size()) * static_cast<double>(estado.iterations()),
                           benchmark::Counter::kIsRate);
}

BENCHMARK(ReceitasEmUmPdf)->Arg(50)->Arg(100)->Arg(200)->Unit(benchmark::kMillisecond);
BENCHMARK(TextoNoCartao)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(PalavraSemFim)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMicrosecond);
} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication aplicacao(argc, argv);
    QFont::insertSubstitution(QStringLiteral("Verdana"), QStringLiteral("DejaVu Sans"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
