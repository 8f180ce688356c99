#include "news/DocumentoHtml.h"

#include "base/PaginaCodigo.h"

#include <QStringDecoder>

#include <libxml/HTMLparser.h>

#include <cstring>

namespace
{
constexpr int kOpcoes = HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET |
                        HTML_PARSE_IGNORE_ENC | HTML_PARSE_COMPACT;
constexpr std::size_t kMaximoDicionario = 16 * 1024; ///< bytes of different tag and attribute names
} // namespace

DocumentoHtml::DocumentoHtml(QByteArrayView bytes)
{
    const QByteArray utf8 = Decodificar(bytes).toUtf8();
    if (utf8.isEmpty())
        return;
    htmlParserCtxt *leitor = htmlNewParserCtxt();
    if (!leitor)
        return;
    // The reader compares each attribute with all others of its tag: a tag with 100 000 of them took 42 s.
    // All names live in its dictionary; once that is full the further ones count as misspelt and are skipped.
    xmlDictSetLimit(leitor->dict, kMaximoDicionario);
    m_doc = htmlCtxtReadMemory(leitor, utf8.constData(), static_cast<int>(utf8.size()), nullptr, "UTF-8",
                               kOpcoes);
    htmlFreeParserCtxt(leitor);
}

DocumentoHtml::~DocumentoHtml()
{
    if (m_doc)
        xmlFreeDoc(m_doc);
}

const xmlNode *DocumentoHtml::Raiz() const
{
    return m_doc ? xmlDocGetRootElement(m_doc) : nullptr;
}

QString DocumentoHtml::Decodificar(QByteArrayView bytes)
{
    QString texto;
    if (const auto marca = QStringConverter::encodingForData(bytes)) {
        QStringDecoder decodificador(*marca, QStringDecoder::Flag::Stateless);
        texto = decodificador(bytes);
    } else {
        QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        texto = utf8(bytes);
        if (utf8.hasError())
            texto = PaginaCodigo::DeAnsi(bytes);
    }
    for (QChar &c : texto) {
        const bool espaco = c == u'\t' || c == u'\n' || c == u'\r';
        if ((c.category() == QChar::Other_Control && !espaco) || c.isNonCharacter())
            c = u' ';
    }
    return texto;
}

QByteArrayView No::Nome(const xmlNode *no)
{
    if (!no || no->type != XML_ELEMENT_NODE || !no->name)
        return {};
    return QByteArrayView(reinterpret_cast<const char *>(no->name));
}

bool No::Eh(const xmlNode *no, const char *nome)
{
    return no && no->type == XML_ELEMENT_NODE && no->name &&
           std::strcmp(reinterpret_cast<const char *>(no->name), nome) == 0;
}

QString No::Atributo(const xmlNode *no, const char *nome)
{
    xmlChar *valor = xmlGetProp(no, reinterpret_cast<const xmlChar *>(nome));
    if (!valor)
        return {};
    const QString texto = QString::fromUtf8(reinterpret_cast<const char *>(valor)).trimmed();
    xmlFree(valor);
    return texto;
}

QString No::Texto(const xmlNode *no)
{
    xmlChar *valor = xmlNodeGetContent(no);
    if (!valor)
        return {};
    const QString texto = QString::fromUtf8(reinterpret_cast<const char *>(valor));
    xmlFree(valor);
    return texto;
}

const xmlNode *No::Seguinte(const xmlNode *no, const xmlNode *raiz)
{
    // Entity declarations share their children with the document type: only elements are entered.
    if (no->type == XML_ELEMENT_NODE && no->children)
        return no->children;
    while (no && no != raiz) {
        if (no->next)
            return no->next;
        no = no->parent;
    }
    return nullptr;
}

const xmlNode *No::Procurar(const xmlNode *raiz, const char *nome)
{
    for (const xmlNode *no = raiz; no; no = Seguinte(no, raiz)) {
        if (Eh(no, nome))
            return no;
    }
    return nullptr;
}
