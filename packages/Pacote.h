#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

class QIODevice;

/**
 * The package text: the header line, then one record for each recipe. Every value stands between an opening
 * and a closing tag on one line (the picture's base64 spans several); "<RECEITA>" and "<ITEM>" are never
 * closed: a record ends where the next begins. No count, no version, no checksum. Bytes are Windows-1252,
 * lines end in CR LF.
 *
 * The only escapes are "\VG/" for a comma and "</BR\>" for a line break, and not every field has them.
 */
namespace Pacote
{
/// "Exportação do Cozinhario 2005 por Tamarel", without its line end.
QString Cabecalho();

/// The longest package text that is written or read: what an import needs stays below 2 GB of memory.
constexpr qint64 kMaiorTexto = qint64(512) * 1024 * 1024;
/// The most recipes a package may hold.
constexpr qsizetype kMaisReceitas = 300'000;

/// A line of ingredients, as the database holds it; NULL is "".
struct Ingrediente {
    QString Ingrediente, Quantidade, Unidade;
};

/// A recipe on its way into a package, as the database holds it; NULL is "".
struct Receita {
    QString Nome, Classificacao, Modo, Porcoes, Preparo, Tipo_Calorias, Calorias, Tipo, Origem, Observacao;
    QString Figura;         ///< name of the picture's file
    QByteArray DadosFigura; ///< its bytes; when empty, neither line of the picture is written
    QList<Ingrediente> Ingredientes;
};

/// The header line's bytes, line end included.
QByteArray EscreverCabecalho();
/// A record's bytes. Values are trimmed here.
QByteArray EscreverReceita(const Receita &receita);

/// The text of an unpacked package: lines end where a CR or a CR LF stands and get a CR LF each; the 0x00
/// that unpacking leaves behind the text is dropped, present or not. A lone LF is content.
QString LerTexto(QIODevice &arquivo);

/// One recipe's record in a text that has been read; valid as long as the text.
class Registro
{
public:
    explicit Registro(QStringView texto)
        : m_texto(texto)
    {
    }

    /// What stands between "<TAG>" and the next "</TAG", escapes not undone; a missing tag gives "". A value
    /// whose closing tag is missing (the record was cut) ends with the record.
    QStringView Valor(QStringView tag) const;
    /// The pieces of "INGREDIENTES", one for each "<ITEM>".
    std::vector<Registro> Itens() const;
    /// The picture's bytes, whatever they are; empty when there are none.
    QByteArray DadosFigura() const;

private:
    QStringView m_texto;
};

/// A package text split into its records.
class Texto
{
public:
    /// Nothing when the text does not begin with exactly the header line and its line end.
    static std::optional<Texto> Dividir(const QString &texto);

    qsizetype Quantas() const { return static_cast<qsizetype>(m_registros.size()); }
    /// 0 is the first record.
    const Registro &operator[](qsizetype i) const { return m_registros[static_cast<std::size_t>(i)]; }

private:
    QString m_texto; ///< never changed: the records point into it
    std::vector<Registro> m_registros;
};

/// "\VG/" becomes ",".
QString DesfazerVirgulas(QStringView valor);
/// "</BR\>" becomes CR LF.
QString DesfazerQuebras(QStringView valor);
} // namespace Pacote
