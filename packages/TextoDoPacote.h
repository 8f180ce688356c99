#pragma once

#include "packages/Base64Class.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <functional>
#include <memory>
#include <vector>

class QIODevice;

/**
 * Reading a package's text (Pacote.h) from the file that it was unpacked into: walked once for the records'
 * places, then read one record at a time. The text is never in memory as a whole, nor is a large picture.
 *
 * Lines end where a CR or a CR LF stands and get a CR LF each; a lone LF is content. The 0x00 that unpacking
 * leaves behind the text is dropped, present or not.
 */
namespace Pacote
{
/// The longest value of a recipe, the picture's data apart, in characters.
constexpr qsizetype kMaiorValor = 4 * 1024 * 1024;
/// The most characters of a whole recipe, lines included, the picture's data apart.
constexpr qsizetype kMaiorReceita = 4 * kMaiorValor;
/// The most ingredient lines of a recipe.
constexpr qsizetype kMaisLinhas = 5000;

/// A part of the file, in bytes.
struct Faixa {
    qint64 inicio = 0;
    qint64 fim = 0;
    qint64 Tamanho() const { return fim - inicio; }
};

/// A window that slides over the file.
class Janela
{
public:
    /// @param respirar called whenever the window slides
    Janela(QIODevice &arquivo, std::function<void()> respirar);

    /// The bytes from `de` on, as many as the window holds but at least `minimo` unless `ate` comes before;
    /// valid until the next call. Throws std::runtime_error when the file cannot be read.
    QByteArrayView Ver(qint64 de, qint64 ate, qint64 minimo = 1);
    /// Where `agulha` stands first within the part, or -1.
    qint64 Procurar(QByteArrayView agulha, Faixa faixa);

private:
    QIODevice &m_arquivo;
    std::function<void()> m_respirar;
    QByteArray m_bytes;
    qint64 m_inicio = 0;
};

/// A picture's bytes, piece by piece. The text that it was opened from must outlive it.
class LeitorDaFigura
{
public:
    /// The next bytes; empty when all have been read. Throws std::runtime_error when the file cannot be read.
    QByteArray LerBloco();

private:
    friend class Registro;
    Janela *m_janela = nullptr; ///< none: the data is `m_base64`
    Faixa m_faixa;
    QByteArray m_base64;
    DecodificadorBase64 m_decodificador;
};

/// One recipe's record, or one item of it.
class Registro
{
public:
    explicit Registro(const QString &texto)
        : m_dono(texto)
        , m_texto(m_dono)
    {
    }

    /// What stands between "<TAG>" and the next "</TAG", escapes not undone; a missing tag gives "". A value
    /// whose closing tag is missing (the record was cut) ends with the record.
    QStringView Valor(QStringView tag) const;
    /// The pieces of "INGREDIENTES", one for each "<ITEM>".
    std::vector<Registro> Itens() const;
    /// The picture's bytes, whatever they are; none when the record has none.
    LeitorDaFigura AbrirFigura() const;
    /// Why a recipe like this is not taken in, for the user; "" when nothing is too large.
    QString Excesso() const;
    /// The whole record, the data of a large picture apart.
    QStringView Tudo() const { return m_texto; }

private:
    friend class Texto;
    Registro(const QString &dono, QStringView texto)
        : m_dono(dono)
        , m_texto(texto)
    {
    }

    QString m_dono; ///< keeps what m_texto looks at
    QStringView m_texto;
    bool m_cortado = false; ///< more than kMaiorReceita: only the beginning is here
    std::shared_ptr<Janela> m_janela;
    Faixa m_figura; ///< where a picture lies that is too large to be held
};

/// A package's records.
class Texto
{
public:
    enum class Abertura {
        Aberto,
        OutroTexto,     ///< it does not begin with exactly the header line and its line end
        ReceitasDemais, ///< more than kMaisReceitas
    };

    /// Walks the file once. `arquivo` is open, seekable and outlives this object. `respirar` is called now
    /// and then, here and while records are read. Throws std::runtime_error when the file cannot be read.
    Abertura Abrir(QIODevice &arquivo, const std::function<void()> &respirar = {});

    qsizetype Quantas() const { return static_cast<qsizetype>(m_faixas.size()); }
    /// Reads a record, 0 is the first. Throws std::runtime_error when the file cannot be read.
    Registro operator[](qsizetype i) const;
    /// What NOME holds in the record, at most its first `maximo` characters, without reading all of it.
    QString Nome(qsizetype i, qsizetype maximo) const;

private:
    std::shared_ptr<Janela> m_janela;
    std::vector<Faixa> m_faixas;
};
} // namespace Pacote
