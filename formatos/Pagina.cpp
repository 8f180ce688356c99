// Saved web pages: JSON-LD first, microdata where there is none.

#include "formatos/Codificacao.h"
#include "formatos/Json.h"
#include "formatos/Limpeza.h"
#include "formatos/Schema.h"

#include <QJsonArray>
#include <QRegularExpression>

#include <libxml/HTMLparser.h>
#include <libxml/HTMLtree.h>

#include <memory>

namespace
{
using namespace Formatos;

constexpr qsizetype kMaiorPagina = 64 * 1024 * 1024;
constexpr int kMaisReceitasNaPagina = 300'000;

struct SoltarDocumento {
    void operator()(xmlDoc *documento) const { xmlFreeDoc(documento); }
};
using Documento = std::unique_ptr<xmlDoc, SoltarDocumento>;

QString Texto(const xmlChar *texto)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(texto));
}

QString Atributo(const xmlNode *no, const char *nome)
{
    for (const xmlAttr *atributo = no->properties; atributo; atributo = atributo->next)
        if (Texto(atributo->name).compare(QLatin1String(nome), Qt::CaseInsensitive) == 0) {
            QString valor;
            for (const xmlNode *parte = atributo->children; parte; parte = parte->next)
                if (parte->content)
                    valor += Texto(parte->content);
            return valor.isNull() ? QString("") : valor;
        }
    return {};
}

bool Chama(const xmlNode *no, const char *nome)
{
    return no->type == XML_ELEMENT_NODE && xmlStrcasecmp(no->name, reinterpret_cast<const xmlChar *>(nome)) == 0;
}

/// The node after `no` in the order of the text, below `raiz`; without its children when `semFilhos`.
xmlNode *Seguinte(xmlNode *no, const xmlNode *raiz, bool semFilhos = false)
{
    if (no->children && !semFilhos && no->type != XML_ENTITY_REF_NODE)
        return no->children;
    while (no && no != raiz) {
        if (no->next)
            return no->next;
        no = no->parent;
    }
    return nullptr;
}

/// What a reader of the page sees of an element: blocks are lines, the source's own line breaks blanks.
QString TextoVisivel(xmlNode *raiz)
{
    QString texto;
    xmlNode *no = raiz;
    while (no) {
        bool semFilhos = false;
        if (no->type == XML_TEXT_NODE || no->type == XML_CDATA_SECTION_NODE) {
            QString parte = Texto(no->content);
            for (QChar &c : parte)
                if (c == u'\n' || c == u'\r' || c == u'\t')
                    c = u' ';
            texto += parte;
        } else if (no->type == XML_ELEMENT_NODE) {
            for (const char *bloco : {"br", "p", "div", "li", "ul", "ol", "h1", "h2", "h3", "h4", "h5", "h6", "tr", "hr"})
                if (Chama(no, bloco)) {
                    texto += u'\n';
                    break;
                }
            semFilhos = Chama(no, "script") || Chama(no, "style");
        }
        no = Seguinte(no, raiz, semFilhos);
    }
    return LimparSemHtml(texto);
}

/// The value of an element with itemprop.
QString ValorDaPropriedade(xmlNode *no)
{
    for (const char *atributo : {"content", "datetime"})
        if (const QString valor = Atributo(no, atributo); !valor.isNull())
            return valor;
    if (Chama(no, "img") || Chama(no, "source") || Chama(no, "video"))
        if (const QString valor = Atributo(no, "src"); !valor.isNull())
            return valor;
    if (Chama(no, "a") || Chama(no, "link"))
        if (const QString valor = Atributo(no, "href"); !valor.isNull()) {
            const QString texto = TextoVisivel(no);
            // A link around a name is the name; the address counts where an address is asked for.
            const QString nome = Atributo(no, "itemprop").toLower();
            if (texto.isEmpty() || nome.contains("url") || nome.contains("image") || nome.contains("entity"))
                return valor;
            return texto;
        }
    return TextoVisivel(no);
}

/// An element with itemscope as an object of its properties.
QJsonObject Microdados(xmlNode *raiz, int profundidade)
{
    QJsonObject objeto;
    if (const QString tipo = Atributo(raiz, "itemtype"); !tipo.isEmpty())
        objeto["@type"] = tipo.split(u' ').first();
    xmlNode *no = Seguinte(raiz, raiz);
    while (no) {
        bool semFilhos = false;
        if (no->type == XML_ELEMENT_NODE) {
            const bool escopo = !Atributo(no, "itemscope").isNull();
            const QString nomes = Atributo(no, "itemprop");
            if (!nomes.isEmpty()) {
                QJsonValue valor;
                if (escopo && profundidade < kMaiorProfundidadeJson / 2)
                    valor = Microdados(no, profundidade + 1);
                else
                    valor = ValorDaPropriedade(no);
                for (const QString &nome : nomes.split(u' ', Qt::SkipEmptyParts)) {
                    QJsonArray lista = objeto.value(nome).toArray();
                    if (lista.size() < 10'000)
                        lista.append(valor);
                    objeto[nome] = lista;
                }
            }
            semFilhos = escopo;
        }
        no = Seguinte(no, raiz, semFilhos);
    }
    // One value is no list: of one text with commas the first part is the type.
    for (auto it = objeto.begin(); it != objeto.end(); ++it)
        if (it->isArray() && it->toArray().size() == 1)
            *it = QJsonValue(it->toArray().first());
    return objeto;
}

QByteArray ConjuntoDeclarado(const QByteArray &bytes)
{
    static const QRegularExpression charset(R"(charset\s*=\s*["']?\s*([A-Za-z0-9_:.-]+))",
                                            QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch m = charset.match(QString::fromLatin1(bytes.first(std::min<qsizetype>(bytes.size(), 4096))));
    return m.captured(1).toLatin1();
}

Documento Interpretar(const QString &texto)
{
    const QByteArray utf8 = texto.toUtf8();
    return Documento(htmlReadMemory(utf8.constData(), static_cast<int>(utf8.size()), nullptr, "UTF-8",
                                    HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET |
                                        HTML_PARSE_NODEFDTD | HTML_PARSE_IGNORE_ENC));
}

QString EnderecoNoComentario(const QString &comentario)
{
    static const QRegularExpression salva(R"(saved from url=\(\d+\)(\S+))");
    static const QRegularExpression umArquivo(R"(^\s*url:\s*(\S+))", QRegularExpression::MultilineOption);
    if (const auto m = salva.match(comentario); m.hasMatch())
        return m.captured(1);
    if (comentario.contains("SingleFile"))
        if (const auto m = umArquivo.match(comentario); m.hasMatch())
            return m.captured(1);
    return {};
}

bool EJsonLd(const QString &tipo)
{
    return SemEntidades(tipo).trimmed().startsWith("application/ld+json", Qt::CaseInsensitive);
}

QList<Receita> Ler(const Entrada &entrada, const QString &texto, DadosDaPagina dados, Relato &relato)
{
    const Documento documento = Interpretar(texto);
    if (!documento) {
        relato.Avisar("A página não pôde ser lida.");
        return {};
    }
    LeitorSchema leitor(entrada, relato, true);
    QString canonico;
    QString comentado;
    QList<xmlNode *> escopos;
    int quebrados = 0;
    auto *raiz = reinterpret_cast<xmlNode *>(documento.get());
    for (xmlNode *no = raiz->children; no; no = Seguinte(no, raiz)) {
        if (no->type == XML_COMMENT_NODE) {
            if (comentado.isEmpty())
                comentado = EnderecoNoComentario(Texto(no->content).left(4000));
            continue;
        }
        if (no->type != XML_ELEMENT_NODE)
            continue;
        if (Chama(no, "script") && EJsonLd(Atributo(no, "type"))) {
            QString bloco;
            for (xmlNode *parte = no->children; parte; parte = parte->next)
                if (parte->content)
                    bloco += Texto(parte->content);
            if (const std::optional<QJsonValue> valor = LerJson(bloco))
                leitor.AcrescentarBloco(*valor);
            else if (bloco.contains("Recipe"))
                ++quebrados;
        } else if (Chama(no, "meta")) {
            const QString nome = Atributo(no, "property").isEmpty() ? Atributo(no, "name") : Atributo(no, "property");
            if (nome.compare(QLatin1String("og:site_name"), Qt::CaseInsensitive) == 0 && dados.siteNome.isEmpty())
                dados.siteNome = Atributo(no, "content");
        } else if (Chama(no, "link")) {
            if (Atributo(no, "rel").toLower().split(u' ').contains("canonical") && canonico.isEmpty())
                canonico = Atributo(no, "href").trimmed();
        } else if (Chama(no, "img")) {
            const QString src = Atributo(no, "src").trimmed();
            if (const QString id = Atributo(no, "id"); !id.isEmpty())
                dados.imagensPorId.insert(id, src);
            if (!src.startsWith("data:"))
                dados.imagens += src;
        }
        const QString tipo = Atributo(no, "itemtype");
        if (!tipo.isEmpty() && !Atributo(no, "itemscope").isNull())
            for (const QString &um : tipo.split(u' ', Qt::SkipEmptyParts))
                if (um.endsWith("/Recipe", Qt::CaseInsensitive) && escopos.size() < kMaisReceitasNaPagina) {
                    escopos += no;
                    break;
                }
    }
    if (quebrados > 0)
        relato.Avisar("A página tem dados de receita que não puderam ser lidos.");
    dados.endereco = !canonico.isEmpty() ? canonico : (!comentado.isEmpty() ? comentado : dados.endereco);
    if (!leitor.TemReceitas())
        for (xmlNode *no : escopos)
            leitor.AcrescentarBloco(Microdados(no, 0));
    return leitor.Ler(dados);
}

/// A part of a multipart message: its headers, folded to small letters, and its bytes.
struct Parte {
    QHash<QByteArray, QByteArray> cabecalhos;
    QByteArray corpo;
};

Parte SepararParte(const QByteArray &bytes)
{
    Parte parte;
    qsizetype i = 0;
    QByteArray nome;
    while (i < bytes.size()) {
        qsizetype fim = bytes.indexOf('\n', i);
        if (fim < 0)
            fim = bytes.size();
        QByteArray linha = bytes.mid(i, fim - i);
        if (linha.endsWith('\r'))
            linha.chop(1);
        i = fim + 1;
        if (linha.isEmpty())
            break;
        if ((linha[0] == ' ' || linha[0] == '\t') && !nome.isEmpty()) {
            parte.cabecalhos[nome] += ' ' + linha.trimmed();
            continue;
        }
        const qsizetype dois = linha.indexOf(':');
        if (dois <= 0)
            continue;
        nome = linha.first(dois).trimmed().toLower();
        parte.cabecalhos[nome] = linha.mid(dois + 1).trimmed();
    }
    parte.corpo = i < bytes.size() ? bytes.mid(i) : QByteArray();
    return parte;
}

QByteArray DeQuotedPrintable(const QByteArray &texto)
{
    const auto valor = [](char c) {
        return c >= '0' && c <= '9' ? c - '0' : c >= 'A' && c <= 'F' ? c - 'A' + 10 : c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
    };
    QByteArray saida;
    saida.reserve(texto.size());
    for (qsizetype i = 0; i < texto.size(); ++i) {
        if (texto[i] != '=') {
            saida += texto[i];
            continue;
        }
        qsizetype fim = i + 1;
        while (fim < texto.size() && (texto[fim] == ' ' || texto[fim] == '\t' || texto[fim] == '\r'))
            ++fim;
        if (fim < texto.size() && texto[fim] == '\n') {
            i = fim;
            continue;
        }
        const int alto = i + 1 < texto.size() ? valor(texto[i + 1]) : -1;
        const int baixo = i + 2 < texto.size() ? valor(texto[i + 2]) : -1;
        if (alto >= 0 && baixo >= 0) {
            saida += static_cast<char>(alto * 16 + baixo);
            i += 2;
        } else {
            saida += '=';
        }
    }
    return saida;
}

QByteArray Decodificar(const Parte &parte)
{
    const QByteArray modo = parte.cabecalhos.value("content-transfer-encoding").toLower().trimmed();
    if (modo == "base64")
        return QByteArray::fromBase64(parte.corpo);
    if (modo == "quoted-printable")
        return DeQuotedPrintable(parte.corpo);
    return parte.corpo;
}
} // namespace

QList<Receita> Formatos::LerPagina(const Entrada &entrada, Relato &relato)
{
    if (entrada.bytes.size() > kMaiorArquivo) {
        relato.Avisar("A página é grande demais.");
        return {};
    }
    const QString texto = entrada.Texto(ConjuntoDeclarado(entrada.bytes));
    return Ler(entrada, texto, {}, relato);
}

QList<Receita> Formatos::LerMhtml(const Entrada &entrada, Relato &relato)
{
    static const QRegularExpression limite(R"re(boundary="?([^";\s]+)"?)re", QRegularExpression::CaseInsensitiveOption);
    const Parte inteira = SepararParte(entrada.bytes);
    const QByteArray fronteira =
        "--" + limite.match(QString::fromLatin1(inteira.cabecalhos.value("content-type"))).captured(1).toLatin1();
    DadosDaPagina dados;
    dados.endereco = QString::fromUtf8(inteira.cabecalhos.value("snapshot-content-location"));
    if (fronteira.size() <= 2) {
        relato.Avisar("A página salva está danificada.");
        return {};
    }
    QByteArray pagina;
    QByteArray conjunto;
    const QByteArray &corpo = inteira.corpo;
    qsizetype i = corpo.startsWith(fronteira) ? 0 : corpo.indexOf("\n" + fronteira);
    for (int quantas = 0; i >= 0 && quantas < 10'000; ++quantas) {
        const qsizetype inicio = corpo.indexOf('\n', i + fronteira.size());
        if (inicio < 0 || corpo.mid(i + (corpo[i] == '\n' ? 1 : 0) + fronteira.size(), 2) == "--")
            break;
        const qsizetype fim = corpo.indexOf("\n" + fronteira, inicio);
        // Two boundaries in a row have nothing between them.
        const qsizetype tamanho = std::max<qsizetype>((fim < 0 ? corpo.size() : fim) - inicio - 1, 0);
        const Parte parte = SepararParte(corpo.mid(inicio + 1, tamanho));
        const QByteArray tipo = parte.cabecalhos.value("content-type").toLower();
        if (tipo.startsWith("text/html") && pagina.isEmpty()) {
            pagina = Decodificar(parte);
            conjunto = ConjuntoDeclarado(tipo);
            if (dados.endereco.isEmpty())
                dados.endereco = QString::fromUtf8(parte.cabecalhos.value("content-location"));
        } else if (tipo.startsWith("image/")) {
            const QByteArray bytes = Decodificar(parte);
            if (const QByteArray endereco = parte.cabecalhos.value("content-location"); !endereco.isEmpty())
                dados.partes.insert(QString::fromUtf8(endereco), bytes);
            QByteArray id = parte.cabecalhos.value("content-id");
            if (id.startsWith('<') && id.endsWith('>'))
                dados.partes.insert("cid:" + QString::fromUtf8(id.mid(1, id.size() - 2)), bytes);
        }
        i = fim;
    }
    if (pagina.size() > kMaiorPagina || pagina.isEmpty()) {
        relato.Avisar("A página salva não tem texto que se possa ler.");
        return {};
    }
    return Ler(entrada, TextoDosBytes(pagina, conjunto.isEmpty() ? ConjuntoDeclarado(pagina) : conjunto, entrada.pagina),
               dados, relato);
}
