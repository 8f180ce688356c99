#include "news/Estilo.h"

#include <QColor>
#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>

namespace
{

using Valida = QString (*)(const QString &valor);

constexpr qsizetype kMaximoFolha = 64 * 1024;
constexpr int kMaximoDeclaracoes = 40;

/// A length of at most `maximo` pixels; relative units count as the pixels they come to at the usual size.
QString Comprimento(const QString &valor, double maximo)
{
    static const QRegularExpression kForma("^(\\d{1,4}(?:\\.\\d{1,3})?)(px|pt|em|ex|%)?$");
    const QRegularExpressionMatch m = kForma.match(valor);
    if (!m.hasMatch())
        return {};
    const QString unidade = m.captured(2);
    const double fator = unidade == u"em" ? 16 : unidade == u"ex" ? 8 : unidade == u"pt" ? 4.0 / 3 : 1;
    return m.captured(1).toDouble() * fator <= maximo ? valor : QString();
}

QString Espaco(const QString &valor)
{
    const QStringList partes = valor.split(u' ', Qt::SkipEmptyParts);
    if (partes.isEmpty() || partes.size() > 4)
        return {};
    for (const QString &parte : partes) {
        if (Comprimento(parte, 100).isEmpty())
            return {};
    }
    return partes.join(u' ');
}

QString Largura(const QString &valor)
{
    return Comprimento(valor, 1000);
}

QString TamanhoDaFonte(const QString &valor)
{
    static const QSet<QString> kPalavras{"xx-small", "x-small", "small",   "medium",
                                         "large",    "x-large", "xx-large"};
    if (kPalavras.contains(valor))
        return valor;
    // Percentages and ems multiply when elements nest, pixels and points do not.
    static const QRegularExpression kForma("^(\\d{1,2})(?:\\.\\d+)?(px|pt)$");
    const QRegularExpressionMatch m = kForma.match(valor);
    if (!m.hasMatch())
        return {};
    const int numero = m.captured(1).toInt();
    return numero >= 6 && numero <= 40 ? QString::number(numero) + m.captured(2) : QString();
}

QString Entrelinha(const QString &valor)
{
    static const QRegularExpression kForma("^(1\\d\\d|200)%$|^(1(\\.\\d)?|2)$");
    return kForma.match(valor).hasMatch() ? valor : QString();
}

QString Borda(const QString &valor)
{
    static const QSet<QString> kEstilos{"none", "solid", "dotted", "dashed", "double"};
    QStringList limpas;
    for (const QString &parte : valor.split(u' ', Qt::SkipEmptyParts)) {
        const QString cor = Estilo::LimparCor(parte);
        if (kEstilos.contains(parte) || !Comprimento(parte, 20).isEmpty())
            limpas += parte;
        else if (!cor.isEmpty())
            limpas += cor;
        else
            return {};
    }
    return limpas.size() <= 4 ? limpas.join(u' ') : QString();
}

QString FonteCss(const QString &valor)
{
    const QString fonte = Estilo::LimparFonte(valor);
    return fonte.isEmpty() ? fonte : u'\'' + fonte + u'\'';
}

const QHash<QString, QSet<QString>> &Palavras()
{
    static const QHash<QString, QSet<QString>> kPalavras{
        {"font-weight", {"normal", "bold", "bolder", "lighter", "400", "500", "600", "700", "800", "900"}},
        {"font-style", {"normal", "italic", "oblique"}},
        {"text-decoration", {"none", "underline", "line-through", "overline"}},
        {"text-align", {"left", "right", "center", "justify"}},
        {"vertical-align", {"top", "middle", "bottom", "baseline", "sub", "super"}},
        {"white-space", {"normal", "nowrap", "pre-wrap"}},
        {"text-transform", {"none", "uppercase", "lowercase", "capitalize"}},
        {"list-style-type", {"disc", "circle", "square", "decimal", "lower-alpha", "upper-alpha"}},
    };
    return kPalavras;
}

const QHash<QString, Valida> &Validadores()
{
    static const QHash<QString, Valida> kValidadores{
        {"color", Estilo::LimparCor},
        {"background-color", Estilo::LimparCor},
        {"background", Estilo::LimparCor},
        {"border-color", Estilo::LimparCor},
        {"border", Borda},
        {"border-width", Espaco},
        {"border-style", Borda},
        {"font-family", FonteCss},
        {"font-size", TamanhoDaFonte},
        {"line-height", Entrelinha},
        {"margin", Espaco},
        {"margin-top", Espaco},
        {"margin-bottom", Espaco},
        {"margin-left", Espaco},
        {"margin-right", Espaco},
        {"padding", Espaco},
        {"padding-top", Espaco},
        {"padding-bottom", Espaco},
        {"padding-left", Espaco},
        {"padding-right", Espaco},
        {"text-indent", Espaco},
        {"width", Largura},
    };
    return kValidadores;
}

QString LimparDeclaracao(const QString &declaracao)
{
    const qsizetype doisPontos = declaracao.indexOf(u':');
    if (doisPontos < 0)
        return {};
    const QString nome = declaracao.left(doisPontos).trimmed().toLower();
    QString valor = declaracao.mid(doisPontos + 1).simplified().toLower();
    if (valor.endsWith(u"!important"))
        valor = valor.chopped(10).trimmed();
    QString limpo;
    if (const auto palavras = Palavras().constFind(nome); palavras != Palavras().constEnd())
        limpo = palavras->contains(valor) ? valor : QString();
    else if (const Valida valida = Validadores().value(nome))
        limpo = valida(valor);
    if (limpo.isEmpty())
        return {};
    return (nome == u"background" ? QString("background-color") : nome) + u':' + limpo;
}

QString LimparSeletores(const QString &seletores)
{
    // At most one step of descent: "td a". Pseudo-classes other than :link name states that are never drawn.
    static const QRegularExpression kForma("^(?:[a-z][a-z0-9]*)?(?:[.#][a-z_][\\w-]*)?(?::link)?(?: "
                                           "(?:[a-z][a-z0-9]*)?(?:[.#][a-z_][\\w-]*)?(?::link)?)?$",
                                           QRegularExpression::CaseInsensitiveOption);
    QStringList limpos;
    for (const QString &seletor : seletores.split(u',')) {
        const QString s = seletor.simplified();
        if (!s.isEmpty() && s.size() <= 80 && kForma.match(s).hasMatch())
            limpos += s;
    }
    return limpos.size() <= 10 ? limpos.join(u',') : QString();
}

QString SemComentarios(QString folha)
{
    folha.truncate(kMaximoFolha);
    folha.replace("<!--", " ").replace("-->", " ");
    QString resultado;
    qsizetype inicio = 0;
    while (true) {
        const qsizetype abre = folha.indexOf(u"/*", inicio);
        if (abre < 0)
            return resultado + folha.mid(inicio);
        resultado += folha.mid(inicio, abre - inicio) + u' ';
        const qsizetype fecha = folha.indexOf(u"*/", abre + 2);
        if (fecha < 0)
            return resultado;
        inicio = fecha + 2;
    }
}

/// Where the block that opens at `abre` closes, its inner blocks included; the sheet's end when it does not.
qsizetype FimDoBloco(const QString &folha, qsizetype abre)
{
    int nivel = 0;
    for (qsizetype i = abre; i < folha.size(); ++i) {
        if (folha[i] == u'{')
            ++nivel;
        else if (folha[i] == u'}' && --nivel == 0)
            return i;
    }
    return folha.size();
}

} // namespace

QString Estilo::LimparDeclaracoes(const QString &declaracoes)
{
    QStringList limpas;
    const QStringList partes = declaracoes.left(2000).split(u';', Qt::SkipEmptyParts);
    for (const QString &parte : partes.first(qMin<qsizetype>(partes.size(), kMaximoDeclaracoes))) {
        const QString limpa = LimparDeclaracao(parte);
        if (!limpa.isEmpty())
            limpas += limpa;
    }
    return limpas.join(u';');
}

QString Estilo::LimparFolha(const QString &original)
{
    const QString folha = SemComentarios(original);
    QString limpa;
    int regras = 0;
    qsizetype inicio = 0;
    while (regras < kMaximoRegras) {
        const qsizetype abre = folha.indexOf(u'{', inicio);
        if (abre < 0)
            break;
        QString seletores = folha.mid(inicio, abre - inicio).trimmed();
        // An @import or @charset ends with a semicolon, before the next rule's selectors.
        seletores = seletores.mid(seletores.lastIndexOf(u';') + 1).trimmed();
        const qsizetype fecha = FimDoBloco(folha, abre);
        inicio = fecha + 1;
        const QString corpo = folha.mid(abre + 1, fecha - abre - 1);
        if (seletores.startsWith(u'@') || corpo.contains(u'{'))
            continue;
        seletores = LimparSeletores(seletores);
        const QString declaracoes = LimparDeclaracoes(corpo);
        if (seletores.isEmpty() || declaracoes.isEmpty())
            continue;
        limpa += seletores + u'{' + declaracoes + "}\n";
        ++regras;
    }
    return limpa;
}

QString Estilo::LimparCor(const QString &cor)
{
    static const QRegularExpression kRgb(
        "^rgb\\(\\s*(\\d{1,3})\\s*,\\s*(\\d{1,3})\\s*,\\s*(\\d{1,3})\\s*\\)$");
    const QString limpa = cor.trimmed().toLower();
    if (limpa.isEmpty() || limpa.size() > 40 || limpa == u"transparent")
        return {};
    if (const QRegularExpressionMatch m = kRgb.match(limpa); m.hasMatch()) {
        const auto canal = [&m](int i) { return qMin(255, m.captured(i).toInt()); };
        return QColor(canal(1), canal(2), canal(3)).name();
    }
    // Old pages leave the "#" out.
    static const QRegularExpression kHex("^[0-9a-f]{6}$");
    const QColor valor(kHex.match(limpa).hasMatch() ? u'#' + limpa : limpa);
    return valor.isValid() ? valor.name() : QString();
}

QString Estilo::LimparFonte(const QString &familias)
{
    static const QStringList kFamilias{
        "Verdana",     "Arial",  "Helvetica",    "Times New Roman", "Times",      "Georgia",  "Courier",
        "Courier New", "Tahoma", "Trebuchet MS", "Serif",           "Sans-serif", "Monospace"};
    for (const QString &familia : familias.left(400).split(u',')) {
        QString nome = familia.trimmed();
        nome.remove(u'\'').remove(u'"');
        nome = nome.trimmed();
        for (const QString &conhecida : kFamilias) {
            if (conhecida.compare(nome, Qt::CaseInsensitive) == 0)
                return conhecida;
        }
    }
    return {};
}
