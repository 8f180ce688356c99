#pragma once

#include "formatos/Entrada.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace Formatos
{
/// What a file is, told by its bytes; its name decides only where nothing else can (Cooklang).
enum class Formato {
    Desconhecido, Pagina, Mhtml, Json, Paprika, Zip, Gzip, MealMaster, MasterCookTexto, MasterCookXml, Gourmet, KRecipes,
    Csv, Cooklang, Markdown, Pacote
};
Formato Reconhecer(const QString &nome, const QByteArray &bytes, const QByteArray &pagina = {});
/// Its name for the user.
QString NomeDoFormato(Formato formato);

/**
 * Reads recipes from files, folders and archives. Never throws for what they hold: what is whole is read,
 * the rest told.
 */
class Importador
{
public:
    explicit Importador(Relato &relato, const QByteArray &pagina = {})
        : m_relato(relato)
        , m_pagina(pagina)
    {
    }

    /// The recipes of a file or folder of the disk.
    QList<Receita> Ler(const QString &caminho);

private:
    QList<Receita> LerFonte(const Fonte &fonte, const QString &rotulo, int nivel);
    QList<Receita> LerEntrada(const Entrada &entrada, const QString &rotulo, int nivel, bool sozinha);

    Relato &m_relato;
    QByteArray m_pagina;
};

/// What the package cannot carry made fit: apostrophes, tags, escapes. Nothing is lost by it.
Receita ParaOPacote(Receita receita);

/**
 * Writes a package that the program imports, records by name; whole or not at all.
 * @return "" or, for the user, why not
 */
QString GravarPacote(QList<Receita> receitas, const QString &caminho);

/// Names that stand more than once, case aside: the import asks about those that the book has, not about these.
QStringList NomesRepetidos(const QList<Receita> &receitas);
} // namespace Formatos
