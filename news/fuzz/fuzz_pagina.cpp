#include "news/LimitesPagina.h"
#include "news/LimparPagina.h"
#include "news/PastaDaPagina.h"

#include <QRegularExpression>

#include <cstdio>
#include <cstdlib>

// Any bytes as a news page: the cleaned page keeps its promises. What is checked here is what a view could
// otherwise be made to do: run, fetch, open, or work without end.

namespace
{

class Pasta : public PastaDaPagina
{
public:
    explicit Pasta(const QByteArray &quadro)
        : m_quadro(quadro)
    {
    }
    QByteArray LerPagina(const QString &) override { return m_quadro; }
    Figura PegarFigura(const QString &nome) override
    {
        return nome.endsWith(u'g') ? Figura{"figura-1", QSize(40, 30)} : Figura{};
    }

private:
    QByteArray m_quadro;
};

void Exigir(bool verdade, const char *promessa, const QString &html)
{
    if (verdade)
        return;
    std::fprintf(stderr, "broken promise: %s\n%s\n", promessa, qPrintable(html.left(4000)));
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *dados, std::size_t tamanho)
{
    const QByteArray bytes(reinterpret_cast<const char *>(dados), static_cast<qsizetype>(tamanho));
    Pasta pasta(bytes.mid(bytes.size() / 2)); // a frame's page is the second half of the page itself
    const PaginaLimpa pagina = LimparPagina(bytes, pasta, QUrl("https://site.example/cozinhario/"));
    const QString &html = pagina.html;
    if (html.isEmpty()) {
        Exigir(pagina.vazia, "no text means nothing to see", html);
        return 0;
    }

    static const QRegularExpression kTag("<(/?)([A-Za-z!?][^\\s>]*)([^>]*)>");
    static const QRegularExpression kTags("^(a|address|b|big|blockquote|body|br|center|cite|code|dd|dfn|div|"
                                          "dl|dt|em|font|h[1-6r]|head|html|i|img|kbd|"
                                          "li|nobr|ol|p|pre|s|samp|small|span|strong|style|sub|sup|table|"
                                          "tbody|td|tfoot|th|thead|tr|tt|u|ul|var)$");
    static const QRegularExpression kAtributos("^( [a-z]+=\"[^\"<>]*\")*$");
    static const QRegularExpression kHref("href=\"([^\"]*)\"");
    static const QRegularExpression kHrefAceito("^(https?://|mailto:|#)");
    static const QRegularExpression kSrc("src=\"([^\"]*)\"");
    int tags = 0;
    int tabelas = 0;
    int fundo = 0;
    for (auto i = kTag.globalMatch(html); i.hasNext();) {
        const QRegularExpressionMatch tag = i.next();
        const bool fecha = !tag.captured(1).isEmpty();
        Exigir(kTags.match(tag.captured(2)).hasMatch(), "only known tags", tag.captured());
        Exigir(kAtributos.match(tag.captured(3)).hasMatch(), "attributes are well formed", tag.captured());
        if (const auto href = kHref.match(tag.captured()); href.hasMatch())
            Exigir(kHrefAceito.match(href.captured(1)).hasMatch(), "links lead to the web", tag.captured());
        if (const auto src = kSrc.match(tag.captured()); src.hasMatch())
            Exigir(src.captured(1) == u"figura-1", "pictures come from the folder", tag.captured());
        tags += !fecha;
        if (tag.captured(2) == u"table") {
            tabelas += fecha ? -1 : 1;
            Exigir(tabelas <= LimitesPagina::kTabelas, "tables within tables are few", html);
        }
        if (!QStringList{"br", "hr", "img"}.contains(tag.captured(2))) {
            fundo += fecha ? -1 : 1;
            Exigir(fundo <= LimitesPagina::kProfundidade + 3, "the depth is bounded", html);
        }
    }
    Exigir(fundo == 0, "what is opened is closed", html);
    Exigir(tags <= LimitesPagina::kElementos + 10, "the number of tags is bounded", html);
    Exigir(!html.contains("url(", Qt::CaseInsensitive) ||
               !html.left(html.indexOf("</style>")).contains("url("),
           "styles fetch nothing", html);
    return 0;
}
