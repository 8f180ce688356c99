#pragma once

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QSize>
#include <QString>

/// What a page may ask of the place it lies in: nothing but files beside it.
class PastaDaPagina
{
public:
    /// A picture that can be shown.
    struct Figura {
        QString chave; ///< stands for the picture in the cleaned page; empty when it cannot be shown
        QSize tamanho; ///< pixels
    };

    virtual ~PastaDaPagina() = default;
    /// Bytes of the page `nome`, a plain file name; empty when there is none.
    virtual QByteArray LerPagina(const QString &nome) = 0;
    /// The picture `nome`, a plain file name.
    virtual Figura PegarFigura(const QString &nome) = 0;
};

/**
 * The local folder of the news. Only regular files that lie in it are read, no symbolic links out of it.
 * Letter case counts only when it has to: pages made on Windows do not care for it.
 *
 * Pictures are read by their content (BMP, JPEG, GIF, PNG) and kept while the object lives. One that is
 * larger than kPixelsPorFigura, or that would take all of them beyond kPixels or kTrabalho, counts as
 * missing.
 */
class PastaLocal : public PastaDaPagina
{
public:
    static constexpr qint64 kPixelsPorFigura = 6'000'000;
    static constexpr qint64 kPixels = 12'000'000;
    /// Pixels times scans of all pictures: a few hundred milliseconds. Encoders write about ten scans, a
    /// hostile page thousands.
    static constexpr qint64 kTrabalho = 10 * kPixels;
    static constexpr qint64 kBytesPorFigura = 16 * 1024 * 1024;

    explicit PastaLocal(const QString &pasta)
        : m_pasta(pasta)
    {
    }

    QByteArray LerPagina(const QString &nome) override;
    Figura PegarFigura(const QString &nome) override;
    /// The picture a key stands for; null for any other text.
    QImage Imagem(const QString &chave) const { return m_imagens.value(chave); }

private:
    QString CaminhoLocal(const QString &nome) const;
    QImage Carregar(const QString &caminho);

    QString m_pasta;
    QHash<QString, Figura> m_figuras; ///< by file path
    QHash<QString, QImage> m_imagens; ///< by key
    qint64 m_pixels = 0;
    qint64 m_trabalho = 0;
};
