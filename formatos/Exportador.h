#pragma once

#include "formatos/LivroAberto.h"
#include "formatos/Receita.h"
#include "formatos/Relato.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace Formatos
{
/// What goes out: recipes, and where their pictures come from, asked for one at a time.
struct Saida {
    const LivroAberto &livro;
    QList<ReceitaDoLivro> receitas;
    QByteArray pagina; ///< set of characters for files of one byte a letter; "" for Windows-1252
};

/// The names that Exportar() knows, in the order of the help.
QStringList FormatosDeSaida();

/**
 * Writes recipes. A file is replaced as a whole or not at all; a folder must be new or empty.
 *
 * @param formato one of FormatosDeSaida()
 * @param relato  is told, recipe by recipe, what the format does not carry
 * @return "" or, for the user, why not
 */
QString Exportar(const Saida &saida, const QString &formato, const QString &destino, Relato &relato);

/// One recipe each, as text.
QString ParaMarkdown(const Receita &receita, const QString &figura);
QString ParaCooklang(const Receita &receita);
QString ParaMealMaster(const Receita &receita);
/// Cells of one row, and the headings, CR LF behind each.
QString CabecalhoCsv();
QString ParaCsv(const Receita &receita);

/// A name that every file system takes, at most 100 characters; never empty.
QString NomeDeArquivo(const QString &nome);

/// Bytes into a file, whole or not at all; "" or why not.
QString GravarInteiro(const QString &caminho, const QByteArray &bytes);

/// "0" and "" are the same to everybody but the book.
QString SemZero(const QString &numero);

/// The book as one page. `figuras`: "nenhuma", "pequenas" or "todas"; above a size they lie in a folder beside it.
QString GravarPagina(const Saida &saida, const QString &destino, const QString &figuras, Relato &relato);

/// An Access file of the recipes, with "Fotos" beside it.
QString GravarAccess(const Saida &saida, const QString &destino, Relato &relato);
} // namespace Formatos
