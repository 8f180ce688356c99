#pragma once

#include "news/PaginaLimpa.h"

#include <QChar>
#include <QList>
#include <QSet>
#include <QUrl>

#include <libxml/tree.h>

#include <vector>

class PastaDaPagina;

/// Writes the clean page from the tree of the original one. Used by LimparPagina(), once per page.
class EscritorHtml
{
public:
    EscritorHtml(PastaDaPagina &pasta, const QUrl &base)
        : m_pasta(pasta)
        , m_base(base)
    {
    }

    PaginaLimpa Escrever(const xmlNode *raiz);

private:
    /// An element that has been entered and must be closed.
    struct Aberto {
        const xmlNode *no;
        QByteArray tag; ///< as written; empty when the element's tag is left out
    };

    void LerCorpo(const xmlNode *body);
    bool Entrar(const xmlNode *no);
    const xmlNode *Adiante(const xmlNode *no, const xmlNode *raiz);
    void Sair();
    void Texto(const xmlNode *no);
    void Abrir(const xmlNode *no, const QByteArray &tag, const QString &atributos);
    void Imagem(const xmlNode *no);
    void Amansar(QString &texto);
    bool EscritaAceita(QChar::Script escrita);
    bool CabeTabela(const xmlNode *tabela);
    QByteArray TagPermitida(const xmlNode *no);
    QString Atributos(const xmlNode *no, const QByteArray &tag) const;
    QString Link(const xmlNode *no) const;
    /// Tag of the innermost element that was written; empty at the top.
    QByteArray Dentro() const { return m_escritas.isEmpty() ? QByteArray() : m_escritas.last(); }
    bool Cheia() const;

    PastaDaPagina &m_pasta;
    QUrl m_base;
    PaginaLimpa m_pagina;
    QString m_html;
    QString m_folha;
    std::vector<Aberto> m_abertos;
    QList<QByteArray> m_escritas;
    QSet<QChar::Script> m_escritasDoMundo;
    int m_elementos = 0;
    int m_caracteres = 0;
    int m_celulas = 0;
    int m_figuras = 0;
    int m_tabelas = 0;
    int m_preformatado = 0;
};
