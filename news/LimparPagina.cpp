#include "news/LimparPagina.h"

#include "news/DocumentoHtml.h"
#include "news/EscritorHtml.h"
#include "news/Quadros.h"

#include <QUrlQuery>

PaginaLimpa LimparPagina(QByteArrayView bytes, PastaDaPagina &pasta, const QUrl &base)
{
    QByteArray quadro;
    for (int i = 0;; ++i) {
        const DocumentoHtml documento(bytes.first(qMin(bytes.size(), LimitesPagina::kBytes)));
        const xmlNode *raiz = documento.Raiz();
        if (!raiz)
            return {};
        const QString src = i < LimitesPagina::kQuadros ? QuadroPrincipal(raiz) : QString();
        const QByteArray principal = src.isEmpty() ? QByteArray() : pasta.LerPagina(NomeDoEndereco(src));
        if (principal.isEmpty())
            return EscritorHtml(pasta, base).Escrever(raiz);
        quadro = principal;
        bytes = quadro;
    }
}

QUrl LinkSeguro(const QString &href, const QUrl &base)
{
    constexpr qsizetype kMaximo = 2000;
    if (href.isEmpty() || href.size() > kMaximo)
        return {};
    const QUrl url = base.resolved(QUrl(href, QUrl::TolerantMode));
    if (!url.isValid())
        return {};
    if (url.scheme() == u"http" || url.scheme() == u"https")
        return url.host().isEmpty() ? QUrl() : url;
    if (url.scheme() != u"mailto" || !url.path().contains(u'@'))
        return {};
    // Some mail programs take further fields as a wish to attach a file of the user's.
    QUrl carta;
    carta.setScheme("mailto");
    carta.setPath(url.path());
    QUrlQuery campos;
    for (const auto &[nome, valor] : QUrlQuery(url).queryItems(QUrl::FullyEncoded)) {
        if (nome.compare(u"subject", Qt::CaseInsensitive) == 0 ||
            nome.compare(u"body", Qt::CaseInsensitive) == 0)
            campos.addQueryItem(nome, valor);
    }
    if (!campos.isEmpty())
        carta.setQuery(campos);
    return carta;
}
