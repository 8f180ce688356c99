#pragma once

#include "formatos/Receita.h"
#include "formatos/Relato.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace Formatos
{
/// A line of ingredients as a foreign file gives it.
struct LinhaLida {
    enum class Tipo { Texto, Titulo, Partes };
    Tipo tipo = Tipo::Texto;
    QString texto; ///< of Texto and Titulo; several lines are several ingredients
    QString quantidade, unidade, ingrediente;
    QString observacao; ///< follows the ingredient behind a comma
    bool opcional = false;
};

/// A step of the method: the name of a section or step that begins here, and the text.
struct PassoLido {
    QString titulo;
    QString texto;
};

/**
 * What a reader found in a foreign file, raw: one shape for all formats. Montar() makes a recipe of it by the
 * house's rules, the same for each.
 */
struct Rascunho {
    QString nome;
    QStringList tipos;
    bool tiposNumTexto = false; ///< the first of `tipos` is one text with commas
    QStringList outrasCategorias;
    QStringList rendimento;
    QString tempoTotal, tempoPreparo, tempoCozimento;
    QString calorias;
    QString tipoDasCalorias = "P"; ///< basis when the text does not say it
    QString porcaoDasCalorias;     ///< what the calories are of, as the source says: "100 g"
    QStringList nutrientes;        ///< "proteínas 38 g"
    QStringList fontes;            ///< candidates for the origin, best first
    QString autor;
    QString url;
    QStringList descricao, notas, utensilios;
    QString dificuldade;
    QList<LinhaLida> linhas;
    QList<PassoLido> passos;
    QByteArray figura;   ///< bytes as found; recognised by content
    bool markdown = true; ///< whether texts may carry Markdown's marks

    void Texto(const QString &linha) { linhas.append({LinhaLida::Tipo::Texto, linha, {}, {}, {}, {}, false}); }
    void Titulo(const QString &linha) { linhas.append({LinhaLida::Tipo::Titulo, linha, {}, {}, {}, {}, false}); }
};

/**
 * The recipe of a draft, within the limits of the book. What does not fit goes to the remarks and is told.
 *
 * @return nothing, and a line in `relato`, when there is no name, or neither ingredients nor method
 */
std::optional<Receita> Montar(const Rascunho &rascunho, Relato &relato);

/// Whether the bytes are a picture that the book can hold: "JPEG", "PNG", "GIF", "BMP", or "" when not.
QString FormatoDaFigura(const QByteArray &bytes);
/// "WEBP", "AVIF", "HEIC", "SVG" or "TIFF" for pictures that the book cannot hold; "" otherwise.
QString FiguraEstranha(const QByteArray &bytes);
} // namespace Formatos
