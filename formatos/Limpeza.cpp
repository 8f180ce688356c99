#include "formatos/Limpeza.h"

#include "base/PaginaCodigo.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <libxml/HTMLparser.h>

#include <algorithm>
#include <array>
#include <utility>

namespace
{
bool ELetraAscii(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool EAlgarismo(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// Names that the table of the HTML library (version 4 of the language) does not have.
const QHash<QString, char32_t> &OutrasEntidades()
{
    static const QHash<QString, char32_t> nomes = {
        {"apos", U'\''},      {"frac13", 0x2153},   {"frac23", 0x2154},    {"frac15", 0x2155},
        {"frac25", 0x2156},   {"frac35", 0x2157},   {"frac45", 0x2158},    {"frac16", 0x2159},
        {"frac56", 0x215A},   {"frac18", 0x215B},   {"frac38", 0x215C},    {"frac58", 0x215D},
        {"frac78", 0x215E},   {"half", 0xBD},       {"comma", U','},       {"period", U'.'},
        {"colon", U':'},      {"semi", U';'},       {"excl", U'!'},        {"quest", U'?'},
        {"lpar", U'('},       {"rpar", U')'},       {"sol", U'/'},         {"lsqb", U'['},
        {"rsqb", U']'},       {"num", U'#'},        {"percnt", U'%'},      {"ast", U'*'},
        {"plus", U'+'},       {"equals", U'='},     {"commat", U'@'},      {"dollar", U'$'},
        {"lowbar", U'_'},     {"hyphen", 0x2010},   {"dash", 0x2010},      {"horbar", 0x2015},
        {"NewLine", U'\n'},   {"Tab", U'\t'},       {"rsquor", 0x2019},    {"ldquor", 0x201E},
        {"numsp", 0x2007},    {"puncsp", 0x2008},   {"hairsp", 0x200A},    {"check", 0x2713},
        {"nbsp", 0xA0}};
    return nomes;
}

/// The character of an entity's name or number; 0 when it is none.
char32_t Entidade(QStringView nome)
{
    if (nome.startsWith(u'#')) {
        const bool hex = nome.size() > 1 && (nome[1] == u'x' || nome[1] == u'X');
        bool ok = false;
        const uint numero = nome.sliced(hex ? 2 : 1).toUInt(&ok, hex ? 16 : 10);
        if (!ok || numero == 0 || numero > 0x10FFFF || (numero >= 0xD800 && numero < 0xE000))
            return 0;
        if (numero >= 0x80 && numero < 0xA0) {
            // As browsers do: these numbers mean the bytes of Windows-1252.
            const char byte = static_cast<char>(numero);
            return PaginaCodigo::DeAnsi(QByteArrayView(&byte, 1)).at(0).unicode();
        }
        return numero;
    }
    const QString chave = nome.toString();
    if (const auto achado = OutrasEntidades().constFind(chave); achado != OutrasEntidades().constEnd())
        return *achado;
    const QByteArray utf8 = chave.toUtf8();
    const htmlEntityDesc *entidade = htmlEntityLookup(reinterpret_cast<const xmlChar *>(utf8.constData()));
    return entidade ? entidade->value : 0;
}

QString DecodificarUmaVez(const QString &texto)
{
    constexpr qsizetype kMaiorNome = 32;
    QString saida;
    saida.reserve(texto.size());
    qsizetype i = 0;
    while (i < texto.size()) {
        const qsizetype inicio = texto.indexOf(u'&', i);
        if (inicio < 0)
            break;
        saida += QStringView(texto).sliced(i, inicio - i);
        qsizetype fim = inicio + 1;
        while (fim < texto.size() && fim - inicio <= kMaiorNome &&
               (ELetraAscii(texto[fim]) || EAlgarismo(texto[fim]) || (texto[fim] == u'#' && fim == inicio + 1)))
            ++fim;
        char32_t caractere = 0;
        if (fim < texto.size() && texto[fim] == u';' && fim > inicio + 1)
            caractere = Entidade(QStringView(texto).sliced(inicio + 1, fim - inicio - 1));
        if (caractere) {
            saida += QChar::fromUcs4(caractere);
            i = fim + 1;
        } else {
            saida += u'&';
            i = inicio + 1;
        }
    }
    saida += QStringView(texto).sliced(i);
    return saida;
}

bool EElementoHtml(QStringView nome)
{
    if (nome.contains(u'-') || nome.contains(u':'))
        return true;
    static const QSet<QString> nomes = {
        "a",        "abbr",    "acronym",  "address", "applet",   "area",     "article",  "aside",   "audio",
        "b",        "base",    "basefont", "bdi",     "bdo",      "big",      "blockquote", "body",  "br",
        "button",   "canvas",  "caption",  "center",  "cite",     "code",     "col",      "colgroup", "data",
        "datalist", "dd",      "del",      "details", "dfn",      "dialog",   "dir",      "div",     "dl",
        "dt",       "em",      "embed",    "fieldset", "figcaption", "figure", "font",    "footer",  "form",
        "frame",    "frameset", "h1",      "h2",      "h3",       "h4",       "h5",       "h6",      "head",
        "header",   "hgroup",  "hr",       "html",    "i",        "iframe",   "img",      "input",   "ins",
        "kbd",      "label",   "legend",   "li",      "link",     "main",     "map",      "mark",    "menu",
        "meta",     "meter",   "nav",      "nobr",    "noframes", "noscript", "object",   "ol",      "optgroup",
        "option",   "output",  "p",        "param",   "picture",  "pre",      "progress", "q",       "rp",
        "rt",       "ruby",    "s",        "samp",    "section",  "select",   "slot",     "small",   "source",
        "span",     "strike",  "strong",   "sub",     "summary",  "sup",      "svg",      "table",   "tbody",
        "td",       "template", "textarea", "tfoot",  "th",       "thead",    "time",     "title",   "tr",
        "track",    "tt",      "u",        "ul",      "var",      "video",    "wbr"};
    return nomes.contains(nome.toString());
}

bool ComecaLinha(QStringView nome)
{
    static const QSet<QString> nomes = {"br", "hr", "p", "div", "li", "h1", "h2", "h3", "h4", "h5", "h6", "tr"};
    return nomes.contains(nome.toString());
}

/// Where the tag that begins at `inicio` ends (behind its ">"), quoted values skipped; -1 when it does not.
qsizetype FimDaTag(const QString &texto, qsizetype inicio)
{
    constexpr qsizetype kMaiorTag = 2000;
    QChar aspas;
    const qsizetype limite = std::min(texto.size(), inicio + kMaiorTag);
    for (qsizetype i = inicio + 1; i < limite; ++i) {
        const QChar c = texto[i];
        if (!aspas.isNull()) {
            if (c == aspas)
                aspas = QChar();
        } else if (c == u'"' || c == u'\'') {
            aspas = c;
        } else if (c == u'>') {
            return i + 1;
        } else if (c == u'<') {
            return -1;
        }
    }
    return -1;
}

QString SemHtml(const QString &texto)
{
    if (!texto.contains(u'<'))
        return texto;
    const qsizetype ultimoFecho = texto.lastIndexOf(u'>');
    QString saida;
    saida.reserve(texto.size());
    qsizetype i = 0;
    while (i < texto.size()) {
        const qsizetype menor = texto.indexOf(u'<', i);
        if (menor < 0)
            break;
        saida += QStringView(texto).sliced(i, menor - i);
        i = menor;
        if (QStringView(texto).sliced(i).startsWith(u"<!--")) {
            const qsizetype fim = texto.indexOf("-->", i + 4);
            i = fim < 0 ? texto.size() : fim + 3;
            continue;
        }
        qsizetype nomeInicio = i + 1;
        const bool fechada = nomeInicio < texto.size() && texto[nomeInicio] == u'/';
        nomeInicio += fechada ? 1 : 0;
        qsizetype nomeFim = nomeInicio;
        while (nomeFim < texto.size() && (ELetraAscii(texto[nomeFim]) || EAlgarismo(texto[nomeFim]) ||
                                          (nomeFim > nomeInicio && (texto[nomeFim] == u'-' || texto[nomeFim] == u':'))))
            ++nomeFim;
        const QString nome = texto.sliced(nomeInicio, nomeFim - nomeInicio).toLower();
        const bool limpo = nomeFim < texto.size() &&
                           (texto[nomeFim] == u'>' || texto[nomeFim] == u'/' || texto[nomeFim].isSpace());
        qsizetype fim = -1;
        if (limpo && i < ultimoFecho && !nome.isEmpty() && ELetraAscii(nome[0]))
            fim = FimDaTag(texto, i);
        if (fim > 0 && !fechada && (nome == "script" || nome == "style")) {
            const qsizetype fecho = texto.indexOf("</" + nome, fim, Qt::CaseInsensitive);
            const qsizetype depois = fecho < 0 ? -1 : texto.indexOf(u'>', fecho);
            i = depois < 0 ? texto.size() : depois + 1;
        } else if (fim > 0 && EElementoHtml(nome)) {
            if (ComecaLinha(nome))
                saida += u'\n';
            i = fim;
        } else {
            saida += u'<';
            ++i;
        }
    }
    saida += QStringView(texto).sliced(std::min(i, texto.size()));
    return saida;
}

enum class Classe { Comum, Branco, Quebra, Nada };

Classe ClasseDe(char32_t c)
{
    switch (c) {
    case U'\n':
    case 0x0B:
    case 0x0C:
    case 0x85:
    case 0x2028:
    case 0x2029:
        return Classe::Quebra;
    case U'\t':
    case 0xA0:
    case 0x1680:
    case 0x202F:
    case 0x205F:
    case 0x3000:
    case U' ':
        return Classe::Branco;
    case 0xAD:
    case 0x034F:
    case 0x061C:
    case 0x180E:
    case 0x2060:
    case 0xFEFF:
        return Classe::Nada;
    default:
        break;
    }
    if (c >= 0x2000 && c <= 0x200A)
        return Classe::Branco;
    if ((c >= 0x200B && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) || (c >= 0x2061 && c <= 0x2069))
        return Classe::Nada;
    if (c < 0x20 || (c >= 0x7F && c < 0xA0))
        return Classe::Nada;
    return Classe::Comum;
}

/// Whether nothing of what Arrumar() does would change the text.
bool Arrumado(const QString &texto)
{
    QChar antes = u'\n';
    for (const QChar c : texto) {
        if (c.unicode() < 0x20 || (c.unicode() >= 0x7F && c.unicode() <= 0xA0) || c.unicode() == 0xAD ||
            c.unicode() > 0xFF)
            return false;
        if (c == u' ' && (antes == u' ' || antes == u'\n'))
            return false;
        antes = c;
    }
    return antes != u' ';
}

QString Arrumar(QString texto)
{
    if (Arrumado(texto))
        return texto;
    texto.replace("\r\n", "\n").replace(u'\r', u'\n');
    texto = texto.normalized(QString::NormalizationForm_C);
    QString saida;
    saida.reserve(texto.size());
    bool branco = false;
    for (const QChar c : texto) {
        switch (c.isSurrogate() ? Classe::Comum : ClasseDe(c.unicode())) {
        case Classe::Quebra:
            saida += u'\n';
            branco = false;
            break;
        case Classe::Branco:
            branco = true;
            break;
        case Classe::Nada:
            break;
        case Classe::Comum:
            if (branco && !saida.isEmpty() && !saida.endsWith(u'\n'))
                saida += u' ';
            branco = false;
            saida += c;
            break;
        }
    }
    return saida;
}

struct Fracao {
    char32_t caractere;
    const char *texto;
};
constexpr std::array<Fracao, 16> kFracoes = {{{0x2150, "1/7"},
                                              {0x2151, "1/9"},
                                              {0x2152, "1/10"},
                                              {0x2153, "1/3"},
                                              {0x2154, "2/3"},
                                              {0x2155, "1/5"},
                                              {0x2156, "2/5"},
                                              {0x2157, "3/5"},
                                              {0x2158, "4/5"},
                                              {0x2159, "1/6"},
                                              {0x215A, "5/6"},
                                              {0x215B, "1/8"},
                                              {0x215C, "3/8"},
                                              {0x215D, "5/8"},
                                              {0x215E, "7/8"},
                                              {0x2189, "0/3"}}};

const char *FracaoPorExtenso(char32_t c)
{
    for (const Fracao &fracao : kFracoes)
        if (fracao.caractere == c)
            return fracao.texto;
    return nullptr;
}

/// What stands for a character outside the code page; nullptr when the general rules decide.
const char16_t *Semelhante(char32_t c)
{
    switch (c) {
    case 0x2044: return u"/";
    case 0x2212:
    case 0x2010:
    case 0x2011: return u"-";
    case 0x2012: return u"–";
    case 0x2015: return u"—";
    case 0x2032: return u"'";
    case 0x2033: return u"\"";
    case 0x2264: return u"<=";
    case 0x2265: return u">=";
    case 0x2260: return u"<>";
    case 0x2248: return u"~";
    case 0x2192: return u"->";
    case 0x2190: return u"<-";
    case 0x21D2: return u"=>";
    case 0x25CF:
    case 0x25AA:
    case 0x25E6:
    case 0x2023:
    case 0x2219: return u"•";
    case 0x2715:
    case 0x2716: return u"×";
    case 0x2103: return u"°C";
    case 0x0142: return u"l";
    case 0x0141: return u"L";
    case 0x0111: return u"d";
    case 0x0110: return u"D";
    case 0x0131: return u"i";
    default: return nullptr;
    }
}

QString SemMarcas(char32_t c)
{
    QString resto;
    const QString decomposto = QString::fromUcs4(&c, 1).normalized(QString::NormalizationForm_KD);
    for (const char32_t parte : decomposto.toUcs4()) {
        if (QChar::isMark(parte))
            continue;
        if (PaginaCodigo::ByteDe(parte) < 0) {
            const char16_t *semelhante = Semelhante(parte);
            if (!semelhante)
                return {};
            resto += QString::fromUtf16(semelhante);
        } else {
            resto += QChar::fromUcs4(parte);
        }
    }
    return resto;
}

void AcrescentarFracao(QString &saida, const char *fracao)
{
    if (!saida.isEmpty() && EAlgarismo(saida.back()))
        saida += u' ';
    saida += QLatin1String(fracao);
}
} // namespace

QString Formatos::SemEntidades(const QString &texto)
{
    constexpr int kVezes = 3;
    QString saida = texto;
    for (int vez = 0; vez < kVezes && saida.contains(u'&'); ++vez) {
        const QString decodificado = DecodificarUmaVez(saida);
        if (decodificado == saida)
            break;
        saida = decodificado;
    }
    return saida;
}

QString Formatos::Limpar(const QString &texto)
{
    return LimparSemHtml(SemHtml(SemEntidades(texto)));
}

QString Formatos::LimparLinha(const QString &texto)
{
    QString limpo = Limpar(texto);
    if (!limpo.contains(u'\n'))
        return limpo;
    limpo.replace(u'\n', u' ');
    return limpo.simplified();
}

QString Formatos::LimparSemHtml(const QString &texto)
{
    QString saida = Arrumar(texto);
    qsizetype inicio = 0;
    while (inicio < saida.size() && saida[inicio] == u'\n')
        ++inicio;
    qsizetype fim = saida.size();
    while (fim > inicio && saida[fim - 1] == u'\n')
        --fim;
    return inicio == 0 && fim == saida.size() ? saida : saida.sliced(inicio, fim - inicio);
}

QString Formatos::ParaWindows1252(const QString &texto, int &perdidos)
{
    const auto comum = [](QChar c) { return c.unicode() <= 0xFF; };
    if (std::all_of(texto.begin(), texto.end(), comum))
        return texto;
    QString saida;
    saida.reserve(texto.size());
    bool interrogacao = false;
    bool largou = false;
    for (qsizetype i = 0; i < texto.size(); ++i) {
        char32_t c = texto[i].unicode();
        if (texto[i].isHighSurrogate() && i + 1 < texto.size() && texto[i + 1].isLowSurrogate()) {
            c = QChar::surrogateToUcs4(texto[i], texto[i + 1]);
            ++i;
        }
        const bool seguia = std::exchange(interrogacao, false);
        if (PaginaCodigo::ByteDe(c) >= 0) {
            saida += QChar::fromUcs4(c);
        } else if (const char *fracao = FracaoPorExtenso(c)) {
            AcrescentarFracao(saida, fracao);
        } else if (const char16_t *semelhante = Semelhante(c)) {
            saida += QString::fromUtf16(semelhante);
        } else if (const QString letras = SemMarcas(c); !letras.isEmpty()) {
            saida += letras;
        } else if (QChar::isLetter(c) || c == QChar::ReplacementCharacter) {
            interrogacao = true;
            if (!seguia) {
                saida += u'?';
                ++perdidos;
            }
        } else {
            largou = true;
            interrogacao = seguia && QChar::isMark(c);
        }
    }
    return largou ? Arrumar(saida) : saida;
}

QString Formatos::FracoesPorExtenso(const QString &texto)
{
    QString saida;
    for (const QChar c : texto) {
        if (c == u'½')
            AcrescentarFracao(saida, "1/2");
        else if (c == u'¼')
            AcrescentarFracao(saida, "1/4");
        else if (c == u'¾')
            AcrescentarFracao(saida, "3/4");
        else if (const char *fracao = FracaoPorExtenso(c.unicode()))
            AcrescentarFracao(saida, fracao);
        else
            saida += c;
    }
    return saida;
}

QString Formatos::SemMarkdown(const QString &linha)
{
    static const QRegularExpression titulo(R"(^#{1,6}\s*(.*?)\s*#*$)");
    static const QRegularExpression colchetes(R"(^\[([^\[\]]+)\]:?$)");
    static const QRegularExpression marcador(R"(^[-*+•]\s+)");
    static const QRegularExpression figura(R"(!\[([^\[\]]*)\]\([^()]*\))");
    static const QRegularExpression ligacao(R"(\[([^\[\]]+)\]\([^()]*\))");
    static const QRegularExpression forte(R"((\*\*|__)(?=\S)(.+?)(?<=\S)\1)");
    static const QRegularExpression enfase(R"((?<![\w*])\*(?=[^\s*])([^*]*?)(?<=[^\s*])\*(?![\w*]))");
    static const QRegularExpression sublinhado(R"((?<!\w)_(?=[^\s_])([^_]*?)(?<=[^\s_])_(?!\w))",
                                               QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression riscado(R"(~~(?=\S)(.+?)(?<=\S)~~)");
    static const QRegularExpression codigo(R"(`([^`]+)`)");
    // No paragraph is longer; the patterns would take their time over one that never closes its marks.
    constexpr qsizetype kMaiorLinha = 20'000;
    if (linha.isEmpty() || linha.size() > kMaiorLinha)
        return linha;
    QString texto = linha;
    bool eTitulo = false;
    if (texto.startsWith(u'#')) {
        const QRegularExpressionMatch m = titulo.match(texto);
        if (m.hasMatch() && !m.captured(1).isEmpty()) {
            texto = m.captured(1);
            eTitulo = true;
        }
    } else if (texto.startsWith(u'[')) {
        const QRegularExpressionMatch m = colchetes.match(texto);
        if (m.hasMatch()) {
            texto = m.captured(1).trimmed();
            eTitulo = true;
        }
    } else {
        texto.remove(marcador);
    }
    if (texto.contains(u'[')) {
        texto.replace(figura, "\\1");
        texto.replace(ligacao, "\\1");
    }
    if (texto.contains(u'*') || texto.contains(u'_')) {
        texto.replace(forte, "\\2");
        texto.replace(enfase, "\\1");
        texto.replace(sublinhado, "\\1");
    }
    if (texto.contains(u'~'))
        texto.replace(riscado, "\\1");
    if (texto.contains(u'`'))
        texto.replace(codigo, "\\1");
    if (eTitulo && !texto.endsWith(u':'))
        texto += u':';
    return texto.trimmed();
}

QStringList Formatos::Linhas(const QString &texto)
{
    QStringList linhas;
    for (const QStringView parte : QStringView(texto).split(u'\n')) {
        const QStringView linha = parte.trimmed();
        if (!linha.isEmpty())
            linhas += linha.toString();
    }
    return linhas;
}

QString Formatos::SemSlogan(QString texto)
{
    for (const QString traco : {" - ", " | ", " – "})
        if (const qsizetype i = texto.indexOf(traco); i > 0)
            texto.truncate(i);
    return texto.trimmed();
}

QString Formatos::Dobrar(QStringView texto)
{
    QString saida;
    saida.reserve(texto.size());
    for (const QChar c : texto) {
        if (c.unicode() < 0x80) {
            saida += c.toLower();
        } else {
            for (const QChar parte : QString(c).normalized(QString::NormalizationForm_KD))
                if (!parte.isMark())
                    saida += parte.toLower();
        }
    }
    return saida.simplified();
}
