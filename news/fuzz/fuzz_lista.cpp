#include "news/ListaNovidades.h"

#include <QUrl>

#include <cstdio>
#include <cstdlib>

// Any bytes as index.file: what is listed stays in its folder, and is asked for on the maker's site only.

namespace
{
void Exigir(bool verdade, const char *promessa)
{
    if (verdade)
        return;
    std::fprintf(stderr, "broken promise: %s\n", promessa);
    std::abort();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *dados, std::size_t tamanho)
{
    const QByteArray bytes(reinterpret_cast<const char *>(dados), static_cast<qsizetype>(tamanho));
    const auto entradas = ListaNovidades::Ler(bytes);
    Exigir(entradas.size() <= ListaNovidades::kMaximo, "the number of entries is bounded");
    for (const ListaNovidades::Entrada &entrada : entradas) {
        Exigir(!entrada.nome.isEmpty() && entrada.nome.toUtf8().size() <= 200,
               "a name is neither empty nor long");
        Exigir(entrada.nome != u"." && entrada.nome != u"..", "a name is no folder");
        for (const QChar c : entrada.nome)
            Exigir(c >= u' ' && c != u'/' && c != u'\\' && c != u':' && c != u'\x7F',
                   "a name has no separator");
        const QUrl url(ListaNovidades::Endereco("https://site.example/cozinhario/", entrada.caminho),
                       QUrl::StrictMode);
        Exigir(!url.isValid() || (url.host() == u"site.example" && url.scheme() == u"https"),
               "one site only");
    }
    return 0;
}
