#pragma once

#include "formatos/Fonte.h"
#include "formatos/Receita.h"
#include "formatos/Relato.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace Formatos
{
/// One file to read, and what lies beside it.
struct Entrada {
    QString nome;                 ///< within `fonte`
    QByteArray bytes;
    const Fonte *fonte = nullptr; ///< never null while reading
    QByteArray pagina;            ///< a set of characters that the user insists on

    /// The content as text; `declarado` is the set that the file names.
    QString Texto(const QByteArray &declarado = {}) const;
    /// A file beside this one, by its name seen from here.
    std::optional<QByteArray> AoLado(const QString &relativo) const
    {
        const QString alvo = NomeRelativo(nome, relativo);
        return alvo.isEmpty() ? std::nullopt : fonte->Ler(alvo);
    }
};

/// The readers, one for each kind of file. Each gives what is whole and tells the rest to `relato`; none of
/// them throws for what a file holds.
QList<Receita> LerPagina(const Entrada &entrada, Relato &relato);      ///< HTML with JSON-LD or microdata
QList<Receita> LerMhtml(const Entrada &entrada, Relato &relato);       ///< a page saved as one file by a browser
QList<Receita> LerJsonDePrograma(const Entrada &entrada, Relato &relato);
QList<Receita> LerPaprika(const Entrada &entrada, Relato &relato);     ///< one recipe: gzip or its JSON
QList<Receita> LerMealMaster(const Entrada &entrada, Relato &relato);
QList<Receita> LerMasterCookTexto(const Entrada &entrada, Relato &relato);
QList<Receita> LerMasterCookXml(const Entrada &entrada, Relato &relato);
QList<Receita> LerGourmet(const Entrada &entrada, Relato &relato);
QList<Receita> LerKRecipes(const Entrada &entrada, Relato &relato);
QList<Receita> LerCsv(const Entrada &entrada, Relato &relato);
QList<Receita> LerCooklang(const Entrada &entrada, Relato &relato);
QList<Receita> LerMarkdown(const Entrada &entrada, Relato &relato);
QList<Receita> LerPacote(const Entrada &entrada, Relato &relato);      ///< our own
} // namespace Formatos
