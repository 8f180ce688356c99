#include "news/Enderecos.h"

#include <QUrlQuery>

#include <algorithm>

namespace
{
bool TemControle(const QUrl &url)
{
    const QString texto =
        url.path(QUrl::FullyDecoded) + QUrl::fromPercentEncoding(url.query(QUrl::FullyEncoded).toLatin1());
    return std::any_of(texto.begin(), texto.end(), [](QChar letra) {
        return letra.category() == QChar::Other_Control || letra == QChar::LineSeparator ||
               letra == QChar::ParagraphSeparator;
    });
}
} // namespace

QString NomeDoEndereco(const QString &endereco)
{
    const QUrl url(endereco.trimmed(), QUrl::TolerantMode);
    if (!url.isValid() || !url.isRelative() || !url.authority().isEmpty() || endereco.contains(u'\\'))
        return {};
    return url.path(QUrl::FullyDecoded).section(u'/', -1);
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
    if (url.scheme() != u"mailto" || !url.path().contains(u'@') || TemControle(url))
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
