#pragma once

#include "formatos/Entrada.h"
#include "formatos/Rascunho.h"

#include <QHash>
#include <QJsonObject>
#include <QJsonValue>
#include <QSet>

namespace Formatos
{
/// What a page tells beside its recipes.
struct DadosDaPagina {
    QString siteNome;                      ///< og:site_name
    QString endereco;                      ///< canonical link, or where it was saved from
    QStringList imagens;                   ///< the src of every img
    QHash<QString, QString> imagensPorId;  ///< src by the element's id
    QHash<QString, QByteArray> partes;     ///< of an MHTML file, by address
};

/// Recipes as schema.org describes them, in the words of pages and of programs, out of any number of blocks.
class LeitorSchema
{
public:
    /// @param pagina whether the blocks come from a page and not from a program's file
    LeitorSchema(const Entrada &entrada, Relato &relato, bool pagina)
        : m_entrada(entrada)
        , m_relato(relato)
        , m_pagina(pagina)
    {
    }

    void AcrescentarBloco(const QJsonValue &bloco);
    bool TemReceitas() const { return !m_receitas.isEmpty(); }
    QList<Receita> Ler(const DadosDaPagina &dados);

private:
    void Indexar(const QJsonValue &valor);
    void Recolher(const QJsonValue &valor);
    bool EReceita(const QJsonObject &objeto) const;
    QJsonValue Resolver(const QJsonValue &valor) const;
    std::optional<Receita> LerUma(const QJsonObject &objeto, const DadosDaPagina &dados);
    Rascunho LerRascunho(const QJsonObject &objeto, const DadosDaPagina &dados);
    void LerOrigem(const QJsonObject &objeto, const DadosDaPagina &dados, Rascunho &rascunho);
    void LerNutricao(const QJsonObject &objeto, Rascunho &rascunho);
    void LerIngredientes(const QJsonValue &valor, Rascunho &rascunho);
    void LerIngrediente(const QJsonObject &objeto, Rascunho &rascunho);
    void LerPassos(const QJsonValue &valor, Rascunho &rascunho);
    void LerEtapas(const QJsonObject &objeto, Rascunho &rascunho);
    QStringList EnderecosDaFigura(const QJsonValue &valor) const;
    QByteArray LerFigura(const QJsonObject &objeto, const DadosDaPagina &dados);

    const Entrada &m_entrada;
    Relato &m_relato;
    bool m_pagina;
    QHash<QString, QJsonObject> m_porId;
    QList<QJsonObject> m_receitas;
    QHash<QString, qsizetype> m_porNome;
    QString m_siteNome;
};
} // namespace Formatos
