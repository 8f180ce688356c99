#include "news/VisorNovidades.h"

#include "news/Enderecos.h"
#include "news/LimparPagina.h"
#include "news/PastaDaPagina.h"

#include "base/Abridor.h"

#include <QFile>
#include <QFileInfo>
#include <QScrollBar>

VisorNovidades::VisorNovidades(Abridor &abridor, QWidget *parent)
    : QTextBrowser(parent)
    , m_abridor(abridor)
{
    setFrameShape(QFrame::NoFrame);
    setOpenLinks(false);
    setUndoRedoEnabled(false);
    document()->setDocumentMargin(8);
    connect(this, &QTextBrowser::anchorClicked, this, &VisorNovidades::Abrir);
    // Where a link leads is seen before it is followed.
    connect(this, &QTextBrowser::highlighted, viewport(),
            [this](const QUrl &link) { viewport()->setToolTip(link.toDisplayString().toHtmlEscaped()); });
}

VisorNovidades::~VisorNovidades() = default;

void VisorNovidades::Navegar(const QString &caminho, const QUrl &base)
{
    m_base = base;
    auto pasta = std::make_unique<PastaLocal>(QFileInfo(caminho).path());
    PaginaLimpa pagina = LimparPagina(pasta->LerPagina(QFileInfo(caminho).fileName()), *pasta, base);
    if (pagina.vazia)
        pagina.html = "<p align=\"center\">A página de novidades não pôde ser mostrada.</p>";
    m_pasta = std::move(pasta);

    // The page's own colours, whatever the desktop's: a dark desktop would put white letters on its white.
    QPalette cores = palette();
    cores.setColor(QPalette::Base, pagina.fundo);
    cores.setColor(QPalette::Text, pagina.texto);
    setPalette(cores);
    setHtml(pagina.html);
    verticalScrollBar()->setValue(0);
}

QVariant VisorNovidades::loadResource(int type, const QUrl &name)
{
    if (type == QTextDocument::ImageResource) {
        const QImage imagem = m_pasta ? m_pasta->Imagem(name.toString()) : QImage();
        if (!imagem.isNull())
            return imagem;
        // Not an invalid value: the text engine would then look for a file of that name on its own.
        QImage nada(1, 1, QImage::Format_ARGB32);
        nada.fill(Qt::transparent);
        return nada;
    }
    return QByteArray("");
}

void VisorNovidades::Abrir(const QUrl &link)
{
    if (link.isRelative() && link.path().isEmpty() && link.hasFragment()) {
        scrollToAnchor(link.fragment());
        return;
    }
    // Checked again here: it is here that the address leaves the program.
    const QUrl seguro = LinkSeguro(link.toString(QUrl::FullyEncoded), m_base);
    if (!seguro.isEmpty())
        m_abridor.AbrirEndereco(seguro);
}
