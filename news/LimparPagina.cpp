#include "news/LimparPagina.h"

#include "news/DocumentoHtml.h"
#include "news/Enderecos.h"
#include "news/EscritorHtml.h"
#include "news/LimitesPagina.h"
#include "news/PastaDaPagina.h"
#include "news/Quadros.h"

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
