#include "print/TrabalhoImpressao.h"

#include "print/ErroImpressao.h"
#include "print/SuperficiePainter.h"

#include <QFileInfo>
#include <QLibrary>
#include <QPainter>
#include <QPrinter>

#include <vector>

namespace
{
class SuperficieImpressora : public SuperficiePainter
{
public:
    SuperficieImpressora(QPrinter &printer, QPainter &painter)
        : SuperficiePainter(painter, printer.pageRect(QPrinter::DevicePixel).size(),
                            printer.resolution() / 25.4)
        , m_printer(printer)
    {
    }
    void NewPage() override
    {
        if (!m_printer.newPage())
            throw ErroImpressao(
                QStringLiteral("A Impressora não Aceitou uma Nova Página. O Documento não foi Impresso!"));
        SuperficiePainter::NewPage();
    }

private:
    QPrinter &m_printer;
};

// Qt hands the job over when the painter ends and does not say what became of it; the print system's library,
// which Qt has loaded, still knows. 0 means accepted, or that there is no such library.
int UltimoErroDoSistema()
{
    using CupsLastError = int (*)();
    QLibrary cups(QStringLiteral("cups"), 2);
    const auto cupsLastError = reinterpret_cast<CupsLastError>(cups.resolve("cupsLastError"));
    if (!cupsLastError)
        return 0;
    const int estado = cupsLastError();
    return estado >= 0x300 ? estado : 0; // below lie the successful answers of IPP
}

QString Motivo(int estado)
{
    switch (estado) {
    case 0x406:
        return QStringLiteral("A Impressora não foi Encontrada.");
    case 0x401:
    case 0x402:
    case 0x403:
        return QStringLiteral("O Usuário não tem Permissão para usar a Impressora.");
    case 0x500: // also what the library says when nobody listens
    case 0x502:
    case 0x503:
        return QStringLiteral("O Serviço de Impressão não Responde.");
    case 0x506:
        return QStringLiteral("A Impressora não está Aceitando Documentos.");
    default:
        return QStringLiteral("O Sistema de Impressão Recusou o Documento (código %1).")
            .arg(estado, 4, 16, QLatin1Char('0'));
    }
}
} // namespace

struct TrabalhoImpressao::Partes {
    explicit Partes(std::unique_ptr<QPrinter> p)
        : printer(std::move(p))
    {
    }

    std::unique_ptr<QPrinter> printer;
    QPainter painter;
    std::unique_ptr<SuperficieImpressora> superficie;
};

TrabalhoImpressao::TrabalhoImpressao(std::unique_ptr<QPrinter> printer)
    : m_partes(std::make_unique<Partes>(std::move(printer)))
{
    if (!m_partes->painter.begin(m_partes->printer.get())) {
        m_partes.reset();
        throw ErroImpressao(QStringLiteral("A Impressora não Aceitou o Documento. Nada foi Impresso!"));
    }
    m_partes->superficie = std::make_unique<SuperficieImpressora>(*m_partes->printer, m_partes->painter);
}

TrabalhoImpressao::~TrabalhoImpressao()
{
    if (!m_partes)
        return;
    // A printer that is closed prints, and Qt's cannot be told to give up. So an unfinished job stays open,
    // out of reach, until the program ends: better than half a recipe on paper.
    static auto *abandonados = new std::vector<std::unique_ptr<Partes>>;
    abandonados->push_back(std::move(m_partes));
}

Superficie &TrabalhoImpressao::ObjPrint()
{
    return *m_partes->superficie;
}

void TrabalhoImpressao::Terminar()
{
    const std::unique_ptr<Partes> partes = std::move(m_partes);
    const QPrinter &printer = *partes->printer;
    const bool terminou = partes->painter.end();
    QString motivo;
    if (!terminou || printer.printerState() == QPrinter::Error) {
        motivo = QStringLiteral("A Impressora Comunicou um Erro.");
    } else if (printer.outputFormat() == QPrinter::NativeFormat) {
        const int estado = UltimoErroDoSistema();
        if (estado != 0)
            motivo = Motivo(estado);
    } else if (QFileInfo(printer.outputFileName()).size() == 0) {
        motivo = QStringLiteral("O Arquivo não pôde ser Gravado.");
    }
    if (!motivo.isEmpty())
        throw ErroImpressao(motivo + QStringLiteral(" O Documento não foi Impresso!"));
}
