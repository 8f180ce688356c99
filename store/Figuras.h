#pragma once

#include "base/LerImagem.h"

#include <QByteArray>
#include <QImage>
#include <QString>

#include <functional>

class Banco;

/**
 * The recipes' pictures: files "F" + seven digits + ".img" in the folder "Fotos", byte-for-byte copies of
 * what the user chose. Folder creation, copy and removal ignore every error on purpose: a row may name a file
 * that is missing, and whoever reads it takes that as no picture.
 */
class Figuras
{
public:
    explicit Figuras(const Banco &banco)
        : m_banco(banco)
    {
    }

    /// Native path of a picture named in the database; the name's letter case does not matter. A name that is
    /// no plain file name (separators, "..") gives an empty path.
    QString Caminho(const QString &figura) const;

    /// Value of `Figura` for the recipe, "" when NULL or when the query fails.
    QString PegarNomeArquivo(qint64 lngReceita) const;

    /// Native path of the picture that the recipe's row names, empty for none. Throws ErroBanco when the row
    /// cannot be read.
    QString CaminhoDaReceita(qint64 lngReceita) const;

    /// Deletes the recipe's picture file, if its row names one; a missing file is no failure. Throws
    /// ErroBanco when the row cannot be read.
    void ApagarFigura(qint64 lngReceita) const;

    /// Makes "Fotos" and copies `origem` (native path) over the recipe's picture file. Errors are ignored,
    /// but an earlier file is replaced only by a complete copy.
    void CopiarFigura(const QString &origem, qint64 lngReceita) const;

    /// Makes "Fotos" and writes the bytes as the recipe's picture file, whatever they hold. Errors are
    /// ignored.
    void GravarFigura(const QByteArray &bytes, qint64 lngReceita) const;
    /// The same for bytes that come piece by piece, an empty piece last. Whether all of them are in the file,
    /// for who wants to know. What `proximo` throws passes through, with the earlier file as it was.
    bool GravarFigura(const std::function<QByteArray()> &proximo, qint64 lngReceita) const;

private:
    void PrepararPasta() const;

    const Banco &m_banco;
    mutable bool m_semSobras = false;
};

/**
 * Reads a recipe's picture, or one that the user chose (base/LerImagem.h tells the bounds). The last one read
 * is kept, so that the card and the editor behind it decode it once.
 *
 * @param caminho native path; a missing or unreadable file, another format or a file of which nothing can be
 * shown is no picture; of a JPEG that lost its end the part that is there is shown
 */
ImagemLida LerFigura(const QString &caminho);
/// The picture alone; a null image for one that is too large and for what is no picture.
QImage CarregarImagem(const QString &caminho);
