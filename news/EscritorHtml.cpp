#include "news/EscritorHtml.h"

#include "news/DocumentoHtml.h"
#include "news/Enderecos.h"
#include "news/Estilo.h"
#include "news/LimitesPagina.h"
#include "news/PastaDaPagina.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

namespace
{

using namespace LimitesPagina;

/// Known tags, and the tag each is written as.
const QHash<QByteArray, QByteArray> &Tags()
{
    static const QHash<QByteArray, QByteArray> kTags = [] {
        QHash<QByteArray, QByteArray> tags{
            {"article", "div"}, {"aside", "div"},   {"fieldset", "div"}, {"figcaption", "div"},
            {"figure", "div"},  {"footer", "div"},  {"form", "div"},     {"header", "div"},
            {"legend", "div"},  {"main", "div"},    {"marquee", "div"},  {"nav", "div"},
            {"section", "div"}, {"dir", "ul"},      {"menu", "ul"},      {"strike", "s"},
            {"del", "s"},       {"ins", "u"},       {"acronym", "span"}, {"label", "span"},
            {"mark", "span"},   {"listing", "pre"}, {"xmp", "pre"},
        };
        for (const char *tag :
             {"a",     "address", "b",     "big",  "blockquote", "br",   "caption", "center", "cite", "code",
              "dd",    "dfn",     "div",   "dl",   "dt",         "em",   "font",    "h1",     "h2",   "h3",
              "h4",    "h5",      "h6",    "hr",   "i",          "img",  "kbd",     "li",     "nobr", "ol",
              "p",     "pre",     "s",     "samp", "small",      "span", "strong",  "sub",    "sup",  "table",
              "tbody", "td",      "tfoot", "th",   "thead",      "tr",   "tt",      "u",      "ul",   "var"})
            tags.insert(tag, tag);
        return tags;
    }();
    return kTags;
}

/// Elements that vanish with all they hold. Those without an end tag that the reader does not know to have
/// none (embed, wbr, source ...) are not among them: the rest of the page would count as their content.
bool Some(const QByteArray &nome)
{
    static const QSet<QByteArray> kSomem{
        "applet", "area",   "audio", "base",    "basefont", "button",   "canvas", "col",  "colgroup", "frame",
        "head",   "iframe", "input", "isindex", "link",     "map",      "math",   "meta", "object",   "param",
        "script", "select", "style", "svg",     "template", "textarea", "title",  "video"};
    return kSomem.contains(nome);
}

bool SoTabelas(const QByteArray &tag)
{
    return tag == "table" || tag == "tr" || tag == "tbody" || tag == "thead" || tag == "tfoot";
}

bool EhCelula(const xmlNode *no)
{
    return No::Eh(no, "td") || No::Eh(no, "th");
}

int Inteiro(const xmlNode *no, const char *nome, int minimo, int maximo, int falta)
{
    bool ok = false;
    const int valor = No::Atributo(no, nome).toInt(&ok);
    return ok ? qBound(minimo, valor, maximo) : falta;
}

/// An attribute ready to follow a tag's name. `valor` comes from a checked set or has been escaped.
QString Par(const char *nome, const QString &valor)
{
    return valor.isEmpty() ? QString() : u' ' + QLatin1String(nome) + QString("=\"") + valor + u'"';
}

QString ParInteiro(const xmlNode *no, const char *nome, int minimo, int maximo)
{
    const int valor = Inteiro(no, nome, minimo, maximo, -1);
    return valor < 0 ? QString() : Par(nome, QString::number(valor));
}

/// A width in pixels or, with "%", of what surrounds it.
QString ParLargura(const xmlNode *no, const char *nome)
{
    QString valor = No::Atributo(no, nome);
    const bool porcento = valor.endsWith(u'%');
    if (porcento)
        valor.chop(1);
    bool ok = false;
    const int numero = valor.toInt(&ok);
    if (!ok || numero <= 0)
        return {};
    return Par(nome,
               porcento ? QString::number(qMin(numero, 100)) + u'%' : QString::number(qMin(numero, 1000)));
}

QString ParPalavra(const xmlNode *no, const char *nome, std::initializer_list<QLatin1String> aceitas)
{
    const QString valor = No::Atributo(no, nome);
    for (const QLatin1String &aceita : aceitas) {
        if (valor.compare(aceita, Qt::CaseInsensitive) == 0)
            return Par(nome, aceita);
    }
    return {};
}

QString ParCor(const xmlNode *no, const char *nome)
{
    return Par(nome, Estilo::LimparCor(No::Atributo(no, nome)));
}

QString ParNome(const xmlNode *no, const char *nome)
{
    static const QRegularExpression kForma("^[A-Za-z_][\\w.-]{0,60}$");
    const QString valor = No::Atributo(no, nome);
    return kForma.match(valor).hasMatch() ? Par(nome, valor) : QString();
}

QString TamanhoFont(const xmlNode *no)
{
    static const QRegularExpression kForma("^[+-]?[1-7]$");
    const QString valor = No::Atributo(no, "size");
    return kForma.match(valor).hasMatch() ? Par("size", valor) : QString();
}

/// Calls `f` with each row of the table itself, not of tables within it.
template <typename F>
void CadaLinha(const xmlNode *tabela, F f)
{
    for (const xmlNode *no = tabela->children; no; no = no->next) {
        if (No::Eh(no, "tr"))
            f(no);
        else if (No::Eh(no, "tbody") || No::Eh(no, "thead") || No::Eh(no, "tfoot"))
            CadaLinha(no, f);
    }
}

} // namespace

PaginaLimpa EscritorHtml::Escrever(const xmlNode *raiz)
{
    for (const xmlNode *no = raiz; no; no = No::Seguinte(no, raiz)) {
        if (No::Eh(no, "style") && m_folha.size() < 8000)
            m_folha += Estilo::LimparFolha(No::Texto(no));
    }
    const xmlNode *body = No::Procurar(raiz, "body");
    if (body)
        LerCorpo(body);
    // Everything is walked, not only the body: a damaged page has its content anywhere. No recursion, since
    // the tree may be as deep as the file is long.
    const xmlNode *no = raiz;
    while (no && !Cheia()) {
        if (Entrar(no) && no->children) {
            no = no->children;
            continue;
        }
        no = Adiante(no, raiz);
    }
    while (!m_abertos.empty())
        Sair();

    m_pagina.html = "<html><head><style>a:link{color:#1b4f9c}\n" + m_folha +
                    "</style></head><body bgcolor=\"" + m_pagina.fundo.name() + "\">" + m_html +
                    "</body></html>";
    return m_pagina;
}

void EscritorHtml::LerCorpo(const xmlNode *body)
{
    // A page that sets only one of the two is read as it was meant, on white or in black.
    if (const QString cor = Estilo::LimparCor(No::Atributo(body, "bgcolor")); !cor.isEmpty())
        m_pagina.fundo = QColor(cor);
    if (const QString cor = Estilo::LimparCor(No::Atributo(body, "text")); !cor.isEmpty())
        m_pagina.texto = QColor(cor);
    if (const QString cor = Estilo::LimparCor(No::Atributo(body, "link")); !cor.isEmpty())
        m_folha.prepend("a:link{color:" + cor + "}\n");
}

bool EscritorHtml::Cheia() const
{
    return m_elementos >= kElementos || m_caracteres >= kTexto;
}

/// The next node after `no` and all it holds; closes what ends on the way there. Null at the end.
const xmlNode *EscritorHtml::Adiante(const xmlNode *no, const xmlNode *raiz)
{
    while (true) {
        if (!m_abertos.empty() && m_abertos.back().no == no)
            Sair();
        if (no == raiz)
            return nullptr;
        if (no->next)
            return no->next;
        no = no->parent;
    }
}

/// Writes the node's beginning; true when its children are to be visited.
bool EscritorHtml::Entrar(const xmlNode *no)
{
    if (no->type == XML_TEXT_NODE || no->type == XML_CDATA_SECTION_NODE) {
        Texto(no);
        return false;
    }
    if (no->type != XML_ELEMENT_NODE)
        return false;
    const QByteArray nome = No::Nome(no).toByteArray().toLower();
    if (Some(nome))
        return false;
    const QByteArray tag = TagPermitida(no);
    if (tag == "img") {
        Imagem(no);
        return false;
    }
    if (tag == "br" || tag == "hr") {
        ++m_elementos;
        m_html +=
            u'<' + QString::fromLatin1(tag) + (tag == "hr" ? ParLargura(no, "width") : QString()) + u'>';
        m_pagina.vazia = m_pagina.vazia && tag == "br";
        return false;
    }
    Abrir(no, tag, tag.isEmpty() ? QString() : Atributos(no, tag));
    return true;
}

void EscritorHtml::Abrir(const xmlNode *no, const QByteArray &tag, const QString &atributos)
{
    m_abertos.push_back({no, tag});
    if (tag.isEmpty())
        return;
    ++m_elementos;
    m_escritas.append(tag);
    m_tabelas += tag == "table";
    m_preformatado += tag == "pre";
    m_html += u'<' + QString::fromLatin1(tag) + atributos + u'>';
}

void EscritorHtml::Sair()
{
    const Aberto aberto = m_abertos.back();
    m_abertos.pop_back();
    if (aberto.tag.isEmpty()) {
        // The rows and cells of a table that was left out still stand apart.
        const bool linha = No::Eh(aberto.no, "tr");
        if ((linha || EhCelula(aberto.no)) && !SoTabelas(Dentro())) {
            ++m_elementos;
            m_html += linha ? "<br>" : " ";
        }
        return;
    }
    m_escritas.removeLast();
    m_tabelas -= aberto.tag == "table";
    m_preformatado -= aberto.tag == "pre";
    m_html += "</" + QString::fromLatin1(aberto.tag) + u'>';
}

void EscritorHtml::Texto(const xmlNode *no)
{
    if (!no->content || SoTabelas(Dentro()))
        return;
    QString texto = QString::fromUtf8(reinterpret_cast<const char *>(no->content));
    if (!m_preformatado) {
        // What would be drawn as one blank is counted as one.
        static const QRegularExpression kBrancos("[ \\t\\r\\n]+");
        texto.replace(kBrancos, " ");
    }
    texto.truncate(kTexto - m_caracteres);
    Amansar(texto);
    m_caracteres += static_cast<int>(texto.size());
    if (m_pagina.vazia && !texto.trimmed().isEmpty())
        m_pagina.vazia = false;
    m_html += texto.toHtmlEscaped();
}

/// Takes from a text what costs a view dear: piles of accents, and letters of ever more scripts, each of
/// which sends it through all the fonts of the machine.
void EscritorHtml::Amansar(QString &texto)
{
    int acentos = 0;
    qsizetype fim = 0;
    for (qsizetype i = 0; i < texto.size(); ++i) {
        char32_t letra = texto[i].unicode();
        const bool par = texto[i].isHighSurrogate() && i + 1 < texto.size() && texto[i + 1].isLowSurrogate();
        if (par)
            letra = QChar::surrogateToUcs4(texto[i], texto[i + 1]);
        acentos = QChar::category(letra) == QChar::Mark_NonSpacing ? acentos + 1 : 0;
        if (acentos <= kAcentos) {
            if (EscritaAceita(QChar::script(letra))) {
                texto[fim++] = texto[i];
                if (par)
                    texto[fim++] = texto[i + 1];
            } else {
                texto[fim++] = u'?';
            }
        }
        i += par;
    }
    texto.truncate(fim);
}

bool EscritorHtml::EscritaAceita(QChar::Script escrita)
{
    switch (escrita) {
    case QChar::Script_Latin:
    case QChar::Script_Common:
    case QChar::Script_Inherited:
    case QChar::Script_Greek:
    case QChar::Script_Cyrillic:
        return true;
    default:
        if (m_escritasDoMundo.size() < kEscritas)
            m_escritasDoMundo.insert(escrita);
        return m_escritasDoMundo.contains(escrita);
    }
}

void EscritorHtml::Imagem(const xmlNode *no)
{
    if (SoTabelas(Dentro()) || ++m_figuras > kFiguras)
        return;
    ++m_elementos;
    const PastaDaPagina::Figura figura = m_pasta.PegarFigura(NomeDoEndereco(No::Atributo(no, "src")));
    if (figura.chave.isEmpty()) {
        QString alt = No::Atributo(no, "alt").left(200);
        Amansar(alt);
        m_caracteres += static_cast<int>(alt.size());
        m_pagina.vazia = m_pagina.vazia && alt.isEmpty();
        m_html += alt.toHtmlEscaped();
        return;
    }
    QSize tamanho = figura.tamanho;
    const int largura = Inteiro(no, "width", 1, kLadoDaFigura, 0);
    const int altura = Inteiro(no, "height", 1, kLadoDaFigura, 0);
    if (largura && altura)
        tamanho = QSize(largura, altura);
    else if (largura)
        tamanho = tamanho.scaled(largura, kLadoDaFigura, Qt::KeepAspectRatio);
    else if (altura)
        tamanho = tamanho.scaled(kLadoDaFigura, altura, Qt::KeepAspectRatio);
    tamanho = tamanho.boundedTo(QSize(kLadoDaFigura, kLadoDaFigura)).expandedTo(QSize(1, 1));
    m_pagina.vazia = false;
    m_html +=
        "<img" + Par("src", figura.chave) + Par("width", QString::number(tamanho.width())) +
        Par("height", QString::number(tamanho.height())) +
        ParPalavra(no, "align", {QLatin1String("left"), QLatin1String("right"), QLatin1String("middle")}) +
        u'>';
}

/// Whether the table's grid still fits into what a page may have; if so it is counted.
bool EscritorHtml::CabeTabela(const xmlNode *tabela)
{
    if (m_tabelas >= kTabelas)
        return false;
    struct Abaixo { // a cell that reaches down into the next rows
        int linhas;
        int colunas;
    };
    std::vector<Abaixo> abaixo;
    int linhas = 0;
    int colunas = 1;
    CadaLinha(tabela, [&](const xmlNode *tr) {
        if (linhas > kCelulas || colunas > kColunas)
            return;
        ++linhas;
        int nesta = 0;
        for (Abaixo &celula : abaixo) {
            nesta += celula.colunas;
            --celula.linhas;
        }
        std::erase_if(abaixo, [](const Abaixo &celula) { return celula.linhas <= 0; });
        for (const xmlNode *no = tr->children; no && nesta <= kColunas; no = no->next) {
            if (!EhCelula(no))
                continue;
            const int largura = Inteiro(no, "colspan", 1, kColunas, 1);
            const int altura = Inteiro(no, "rowspan", 1, kCelulas, 1);
            nesta += largura;
            if (altura > 1)
                abaixo.push_back({altura - 1, largura});
        }
        colunas = qMax(colunas, nesta);
    });
    if (linhas == 0 || colunas > kColunas || m_celulas + linhas * colunas > kCelulas)
        return false;
    m_celulas += linhas * colunas;
    return true;
}

/// The tag as which an element is written here; empty when it is left out and only its content is written.
QByteArray EscritorHtml::TagPermitida(const xmlNode *no)
{
    const QByteArray tag = Tags().value(No::Nome(no).toByteArray().toLower());
    if (tag.isEmpty() || m_escritas.size() >= kProfundidade)
        return {};
    const QByteArray dentro = Dentro();
    if (tag == "td" || tag == "th")
        return dentro == "tr" ? tag : QByteArray();
    if (tag == "tr")
        return SoTabelas(dentro) && dentro != "tr" ? tag : QByteArray();
    if (tag == "tbody" || tag == "thead" || tag == "tfoot")
        return dentro == "table" ? tag : QByteArray();
    if (SoTabelas(dentro)) // nothing else may stand between a table and its cells
        return {};
    if (tag == "table")
        return CabeTabela(no) ? tag : QByteArray();
    if (tag == "caption")
        return "div";
    return tag;
}

QString EscritorHtml::Atributos(const xmlNode *no, const QByteArray &tag) const
{
    const auto palavra = [](const char *texto) { return QLatin1String(texto); };
    QString par = ParNome(no, "class") + ParNome(no, "id");
    const QString estilo = Estilo::LimparDeclaracoes(No::Atributo(no, "style"));
    par += Par("style", estilo.toHtmlEscaped());
    if (tag == "a")
        return par + Link(no) + ParNome(no, "name");
    if (tag == "font")
        return par + ParCor(no, "color") + TamanhoFont(no) +
               Par("face", Estilo::LimparFonte(No::Atributo(no, "face")));
    if (tag == "ul" || tag == "ol" || tag == "li") {
        return par +
               ParPalavra(no, "type",
                          {palavra("disc"), palavra("circle"), palavra("square"), palavra("1"), palavra("a"),
                           palavra("i")}) +
               ParInteiro(no, "start", 1, 9999);
    }
    par +=
        ParPalavra(no, "align", {palavra("left"), palavra("right"), palavra("center"), palavra("justify")});
    if (tag == "table") {
        return par + ParInteiro(no, "border", 0, 20) + ParInteiro(no, "cellspacing", 0, 50) +
               ParInteiro(no, "cellpadding", 0, 50) + ParLargura(no, "width") + ParCor(no, "bgcolor") +
               ParCor(no, "bordercolor");
    }
    if (tag == "tr" || tag == "td" || tag == "th") {
        par += ParPalavra(no, "valign", {palavra("top"), palavra("middle"), palavra("bottom")}) +
               ParCor(no, "bgcolor");
    }
    if (tag == "td" || tag == "th") {
        int abaixo = 1; // a cell cannot reach below the table's last row
        for (const xmlNode *tr = no->parent->next; tr && abaixo < kCelulas; tr = tr->next)
            abaixo += No::Eh(tr, "tr");
        const int linhas = Inteiro(no, "rowspan", 1, abaixo, 1);
        const int colunas = Inteiro(no, "colspan", 1, kColunas, 1);
        par += linhas > 1 ? Par("rowspan", QString::number(linhas)) : QString();
        par += colunas > 1 ? Par("colspan", QString::number(colunas)) : QString();
        par += ParLargura(no, "width");
    }
    return par;
}

QString EscritorHtml::Link(const xmlNode *no) const
{
    const QString href = No::Atributo(no, "href");
    static const QRegularExpression kAncora("^#[\\w.-]{1,60}$");
    if (kAncora.match(href).hasMatch())
        return Par("href", href);
    const QUrl url = LinkSeguro(href, m_base);
    return url.isEmpty() ? QString() : Par("href", url.toString(QUrl::FullyEncoded).toHtmlEscaped());
}
