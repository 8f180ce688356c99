#include "news/Quadros.h"

#include "news/DocumentoHtml.h"

#include <QStringList>

namespace
{
constexpr int kNiveis = 5;

/// How much of a frameset a frame gets, in arbitrary units: a star beats any number.
double Parte(const QString &medida)
{
    QString numero = medida.trimmed();
    const bool estrela = numero.endsWith(u'*');
    const bool porcento = numero.endsWith(u'%');
    if (estrela || porcento)
        numero.chop(1);
    const double valor = numero.isEmpty() ? 1 : qBound(0.0, numero.toDouble(), 10000.0);
    return estrela ? 1e6 * valor : porcento ? valor * 10 : valor;
}

bool NomePrincipal(const QString &nome)
{
    static const QStringList kNomes{"main",  "princip", "conteudo", "content",
                                    "corpo", "body",    "centro",   "meio"};
    for (const QString &parte : kNomes) {
        if (nome.contains(parte, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

QString MaiorQuadro(const xmlNode *frameset, int nivel)
{
    const QString medidas = No::Atributo(frameset, "cols") + u',' + No::Atributo(frameset, "rows");
    const QStringList partes = medidas.split(u',', Qt::SkipEmptyParts);
    QString src;
    double maior = -1;
    qsizetype i = 0;
    for (const xmlNode *no = frameset->children; no; no = no->next) {
        const bool interno = No::Eh(no, "frameset");
        if (!interno && !No::Eh(no, "frame"))
            continue;
        const double parte = Parte(partes.value(i++, "*"));
        if (parte <= maior)
            continue;
        const QString candidato = !interno          ? No::Atributo(no, "src")
                                  : nivel < kNiveis ? MaiorQuadro(no, nivel + 1)
                                                    : QString();
        if (!candidato.isEmpty()) {
            src = candidato;
            maior = parte;
        }
    }
    return src;
}
} // namespace

QString QuadroPrincipal(const xmlNode *raiz)
{
    const xmlNode *frameset = No::Procurar(raiz, "frameset");
    if (!frameset)
        return {};
    for (const xmlNode *no = frameset; no; no = No::Seguinte(no, frameset)) {
        if (No::Eh(no, "frame") && NomePrincipal(No::Atributo(no, "name"))) {
            const QString src = No::Atributo(no, "src");
            if (!src.isEmpty())
                return src;
        }
    }
    return MaiorQuadro(frameset, 1);
}
