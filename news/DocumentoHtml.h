#pragma once

#include <QByteArrayView>
#include <QString>

#include <libxml/tree.h>

/**
 * An HTML page as a tree, made by libxml2's forgiving HTML reader, which fetches nothing.
 *
 * The page is taken as UTF-8 when its bytes are valid UTF-8 (or it begins with a byte order mark), else as
 * Windows-1252, whatever it says of itself: old pages say ISO-8859-1 and mean Windows-1252, or say nothing.
 */
class DocumentoHtml
{
public:
    explicit DocumentoHtml(QByteArrayView bytes);
    ~DocumentoHtml();
    DocumentoHtml(const DocumentoHtml &) = delete;
    DocumentoHtml &operator=(const DocumentoHtml &) = delete;

    /// The outermost element; null when there is nothing in the page.
    const xmlNode *Raiz() const;

    /// The bytes as text, control characters replaced by blanks.
    static QString Decodificar(QByteArrayView bytes);

private:
    xmlDoc *m_doc = nullptr;
};

namespace No
{
/// Lower-case tag name of an element, empty for any other node. Valid as long as the tree.
QByteArrayView Nome(const xmlNode *no);
bool Eh(const xmlNode *no, const char *nome);
/// Value of an attribute, trimmed; empty when missing.
QString Atributo(const xmlNode *no, const char *nome);
/// All the text inside.
QString Texto(const xmlNode *no);
/// The node after `no` in reading order within `raiz`, children first; null at the end. Uses no stack,
/// however deep the tree.
const xmlNode *Seguinte(const xmlNode *no, const xmlNode *raiz);
/// The first element of that name within `raiz`, itself included; null when there is none.
const xmlNode *Procurar(const xmlNode *raiz, const char *nome);
} // namespace No
