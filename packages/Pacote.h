#pragma once

#include "store/Receita.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringView>

/**
 * The package text: the header line, then one record for each recipe. Every value stands between an opening
 * and a closing tag on one line (the picture's base64 spans several); "<RECEITA>" and "<ITEM>" are never
 * closed: a record ends where the next begins. No count, no version, no checksum. Bytes are Windows-1252,
 * lines end in CR LF.
 *
 * The only escapes are "\VG/" for a comma and "</BR\>" for a line break, and not every field has them.
 *
 * Here it is written; TextoDoPacote.h reads it.
 */
namespace Pacote
{
/// "Exportação do Cozinhario 2005 por Tamarel", without its line end.
QString Cabecalho();

/// The longest package text that is written or read.
constexpr qint64 kMaiorTexto = qint64(512) * 1024 * 1024;
/// The most recipes a package may hold.
constexpr qsizetype kMaisReceitas = 300'000;

/// What goes into a package and comes out of one. The picture's bytes go along; when there are none, neither
/// line of the picture is written.
using Ingrediente = ::LinhaDaReceita;
using ::Receita;

/// The header line's bytes, line end included.
QByteArray EscreverCabecalho();
/// A record's bytes. Values are trimmed here, and those of one line lose their control characters.
QByteArray EscreverReceita(const Receita &receita);
/// The same in three pieces, for pictures that are not held in memory: what comes before the picture's base64
/// (its two opening lines included when there is one), and what comes behind it.
QByteArray EscreverAntesDaFigura(const Receita &receita, bool comFigura);
QByteArray EscreverDepoisDaFigura(const Receita &receita, bool comFigura);

/// "\VG/" becomes ",".
QString DesfazerVirgulas(QStringView valor);
/// "</BR\>" becomes CR LF.
QString DesfazerQuebras(QStringView valor);
} // namespace Pacote
