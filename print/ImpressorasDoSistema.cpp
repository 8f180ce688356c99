#include "print/Impressoras.h"

#include "print/ErroImpressao.h"
#include "print/ServicoImpressao.h"

#include <QDir>
#include <QFile>
#include <QPageLayout>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTemporaryFile>

#include <algorithm>
#include <optional>

namespace
{
void AplicarConfiguracao(QPrinter &printer, const ImpressoraAtual &atual, QSizeF papel)
{
    // The paper is the queue's. A printer object begins with that of the default printer, whatever its own.
    QPageSize tamanho = QPrinterInfo(printer).defaultPageSize();
    if (!tamanho.isValid())
        tamanho = papel.isEmpty() ? QPageSize(QPageSize::A4) : QPageSize(papel, QPageSize::Millimeter);
    printer.setPageSize(tamanho);
    printer.setPageOrientation(atual.Orientation == 2 ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setColorMode(atual.ColorMode == 2 ? QPrinter::Color : QPrinter::GrayScale);
    if (atual.PrintQuality == -1) {
        const QList<int> resolucoes = printer.supportedResolutions();
        if (!resolucoes.isEmpty())
            printer.setResolution(*std::min_element(resolucoes.begin(), resolucoes.end()));
    }
}

/**
 * A job for a queue. The pages are drawn into a file without a name, which is gone with this object, however
 * the program ends; only Entregar() brings them to the print service.
 */
class SaidaParaFila : public SaidaImpressao
{
public:
    SaidaParaFila(const ImpressoraAtual &atual, const QString &documento)
        : m_atual(atual)
        , m_documento(documento)
    {
        const ServicoImpressao servico;
        if (!servico.Responde())
            throw ErroImpressao(
                QStringLiteral("O Serviço de Impressão não Responde. O Documento não foi Impresso!"));
        const ConfiguracaoDaFila fila = servico.Configuracao(atual.DeviceName);
        if (fila.nome.isEmpty())
            throw Desconhecida();
        m_opcoes = OpcoesDoTrabalho(fila, atual);

        // Qt asks the service, too, and would wait for a silent one for ever: only now may there be a
        // printer.
        m_printer.emplace(QPrinter::HighResolution);
        m_printer->setPrinterName(atual.DeviceName);
        // Without a print system a printer silently writes a PDF with no file name, and an unknown name
        // silently leaves the default printer in place: the recipe must come out where the user said, or not
        // at all.
        if (m_printer->outputFormat() != QPrinter::NativeFormat || !m_printer->isValid() ||
            m_printer->printerName() != atual.DeviceName)
            throw Desconhecida();
        m_printer->setDocName(documento);
        m_printer->setCreator(QStringLiteral("Cozinhario 2005"));
        AplicarConfiguracao(*m_printer, atual, servico.Papel(fila));
        const auto ehPapel = [](const auto &opcao) {
            return opcao.first == u"media" || opcao.first == u"PageSize";
        };
        if (std::none_of(m_opcoes.begin(), m_opcoes.end(), ehPapel))
            m_opcoes.append({QStringLiteral("media"), m_printer->pageLayout().pageSize().key()});

        if (!m_arquivo.open() || !QFile::remove(m_arquivo.fileName()))
            throw NaoGravado();
        m_arquivo.setAutoRemove(false);
        m_printer->setOutputFileName(QStringLiteral("/proc/self/fd/%1").arg(m_arquivo.handle()));
    }

    QPrinter &Printer() override { return *m_printer; }

    void Entregar() override
    {
        constexpr int kFim = 64; // the end mark and what may follow it
        m_arquivo.seek(std::max<qint64>(m_arquivo.size() - kFim, 0));
        if (!m_arquivo.readAll().contains("%%EOF") ||
            !m_arquivo.seek(0)) // a full disk says nothing while drawing
            throw NaoGravado();
        ServicoImpressao().Imprimir(m_atual.DeviceName, m_documento, m_opcoes, m_arquivo);
    }

private:
    ErroImpressao Desconhecida() const
    {
        return ErroImpressao(
            QStringLiteral("A Impressora \"%1\" não foi Encontrada. O Documento não foi Impresso!")
                .arg(m_atual.DeviceName));
    }

    static ErroImpressao NaoGravado()
    {
        return ErroImpressao(
            QStringLiteral("Não foi possível Gravar na Pasta \"%1\". O Documento não foi Impresso!")
                .arg(QDir::tempPath()));
    }

    ImpressoraAtual m_atual;
    QString m_documento;
    QList<std::pair<QString, QString>> m_opcoes;
    QTemporaryFile m_arquivo;
    std::optional<QPrinter> m_printer;
};
} // namespace

QStringList ImpressorasDoSistema::Nomes() const
{
    QStringList nomes;
    for (const ServicoImpressao::Fila &fila : ServicoImpressao().Filas())
        nomes << fila.nome;
    return nomes;
}

ImpressoraAtual ImpressorasDoSistema::Padrao() const
{
    const ServicoImpressao servico;
    const QList<ServicoImpressao::Fila> filas = servico.Filas();
    if (filas.isEmpty())
        return {};
    const auto padrao =
        std::find_if(filas.begin(), filas.end(), [](const auto &fila) { return fila.padrao; });
    return LerConfiguracao(servico.Configuracao(padrao != filas.end() ? padrao->nome : filas.first().nome));
}

ImpressoraAtual ImpressorasDoSistema::Configuracao(const QString &nome) const
{
    const ConfiguracaoDaFila fila = ServicoImpressao().Configuracao(nome);
    return fila.nome.isEmpty() ? ImpressoraAtual() : LerConfiguracao(fila);
}

std::unique_ptr<SaidaImpressao> ImpressorasDoSistema::Criar(const ImpressoraAtual &atual,
                                                            const QString &documento) const
{
    return std::make_unique<SaidaParaFila>(atual, documento);
}
