#include "print/Impressoras.h"

#include "print/ErroImpressao.h"

#include <QPageLayout>
#include <QPrintEngine>
#include <QPrinter>
#include <QPrinterInfo>

#include <algorithm>

namespace
{
// The engine's key for options that go to the print system as they are: a list of name, value, name, value
// ...
constexpr auto kOpcoesCups = static_cast<QPrintEngine::PrintEnginePropertyKey>(0xfe00);

// The print system knows three qualities: 3 draft, 4 normal, 5 high.
QString QualidadeIpp(int qualidade)
{
    switch (qualidade) {
    case -1:
    case -2:
        return QStringLiteral("3");
    case -4:
        return QStringLiteral("5");
    default:
        return QStringLiteral("4");
    }
}

ImpressoraAtual Ler(const QPrinterInfo &info)
{
    ImpressoraAtual lida;
    if (info.isNull())
        return lida;
    lida.DeviceName = info.printerName();
    lida.PrintQuality = -3; // what a queue prints with when nothing is asked for
    lida.ColorMode = info.defaultColorMode() == QPrinter::Color ? 2 : 1;
    return lida;
}
} // namespace

QStringList ImpressorasDoSistema::Nomes() const
{
    return QPrinterInfo::availablePrinterNames();
}

ImpressoraAtual ImpressorasDoSistema::Padrao() const
{
    return Ler(QPrinterInfo::defaultPrinter());
}

ImpressoraAtual ImpressorasDoSistema::Configuracao(const QString &nome) const
{
    return Ler(QPrinterInfo::printerInfo(nome));
}

std::unique_ptr<QPrinter> ImpressorasDoSistema::Criar(const ImpressoraAtual &atual,
                                                      const QString &documento) const
{
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    if (!atual.DeviceName.isEmpty())
        printer->setPrinterName(atual.DeviceName);
    // Without a print system QPrinter silently becomes a PDF writer with no file name, and an unknown name
    // silently leaves the default printer in place: the recipe must come out where the user said, or not at
    // all.
    if (printer->outputFormat() != QPrinter::NativeFormat || !printer->isValid() ||
        printer->printerName() != atual.DeviceName)
        throw ErroImpressao(
            QStringLiteral("A Impressora \"%1\" não foi Encontrada. O Documento não foi Impresso!")
                .arg(atual.DeviceName));
    printer->setDocName(documento);
    printer->setCreator(QStringLiteral("Cozinhario 2005"));
    AplicarConfiguracao(*printer, atual);
    printer->printEngine()->setProperty(
        kOpcoesCups,
        QStringList{QStringLiteral("print-quality"), QualidadeIpp(atual.PrintQuality),
                    QStringLiteral("print-color-mode"),
                    atual.ColorMode == 2 ? QStringLiteral("color") : QStringLiteral("monochrome")});
    return printer;
}

void AplicarConfiguracao(QPrinter &printer, const ImpressoraAtual &atual)
{
    if (atual.Copies >= 1)
        printer.setCopyCount(atual.Copies);
    printer.setPageOrientation(atual.Orientation == 2 ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setColorMode(atual.ColorMode == 2 ? QPrinter::Color : QPrinter::GrayScale);
    if (atual.PrintQuality == -1) {
        const QList<int> resolucoes = printer.supportedResolutions();
        if (!resolucoes.isEmpty())
            printer.setResolution(*std::min_element(resolucoes.begin(), resolucoes.end()));
    }
}
