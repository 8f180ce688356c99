#include "print/TrabalhoImpressao.h"

#include "print/ErroImpressao.h"
#include "print/Impressoras.h"
#include "print/SuperficiePainter.h"

#include <QPainter>
#include <QPrinter>

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

} // namespace

struct TrabalhoImpressao::Partes {
    explicit Partes(std::unique_ptr<SaidaImpressao> s)
        : saida(std::move(s))
    {
    }

    std::unique_ptr<SaidaImpressao> saida;
    QPainter painter;
    std::unique_ptr<SuperficieImpressora> superficie;
};

TrabalhoImpressao::TrabalhoImpressao(std::unique_ptr<SaidaImpressao> saida)
    : m_partes(std::make_unique<Partes>(std::move(saida)))
{
    QPrinter &printer = m_partes->saida->Printer();
    if (!m_partes->painter.begin(&printer)) {
        m_partes.reset();
        throw ErroImpressao(QStringLiteral("A Impressora não Aceitou o Documento. Nada foi Impresso!"));
    }
    m_partes->superficie = std::make_unique<SuperficieImpressora>(printer, m_partes->painter);
}

TrabalhoImpressao::~TrabalhoImpressao() = default;

Superficie &TrabalhoImpressao::ObjPrint()
{
    return *m_partes->superficie;
}

void TrabalhoImpressao::Terminar()
{
    const std::unique_ptr<Partes> partes = std::move(m_partes);
    if (!partes->painter.end() || partes->saida->Printer().printerState() == QPrinter::Error)
        throw ErroImpressao(QStringLiteral("A Impressora Comunicou um Erro. O Documento não foi Impresso!"));
    partes->saida->Entregar();
}
