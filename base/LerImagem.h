#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

/**
 * Reading pictures that came from anywhere: by content, bounded in time and memory.
 *
 * BMP, JPEG, GIF (first frame) and PNG are read, EXIF rotation applied. A picture of more than kMaiorLado
 * pixels a side is reduced while it is read, so that a camera's largest photos open in little memory. What a
 * picture costs is known from its header and its scans before anything is unfolded.
 */
struct ImagemLida {
    enum class Estado {
        Boa,         ///< `imagem` holds it
        GrandeDemais, ///< a picture, but reading it would cost too much time or memory
        NaoEImagem   ///< no file, no picture, or one of which nothing can be shown
    };
    Estado estado = Estado::NaoEImagem;
    QImage imagem;
};

/// Pixels of the longer side of what LerImagem() gives: a card's and a page's picture are sharp with them.
inline constexpr int kMaiorLado = 2560;
/// Bytes of the largest file that is read at all.
inline constexpr qint64 kMaiorArquivoDeImagem = 256LL * 1024 * 1024;

/// What a JPEG costs: decoding goes over every pixel once a scan, and a file of a few kilobytes can ask for
/// thousands of scans.
struct CustoJpeg {
    qint64 largura = 0;
    qint64 altura = 0;
    int passadas = 0;
    /// Whether it is read. An ordinary progressive photo of 108 megapixels (ten scans) is.
    bool Aceitavel() const;
};
/// Counts without decoding. Bytes that are no JPEG give zeros.
CustoJpeg MedirJpeg(const QByteArray &bytes);

/// @param bytes a whole file
ImagemLida LerImagem(const QByteArray &bytes);
/// @param caminho native path; pipes and folders are no pictures
ImagemLida LerArquivoDeImagem(const QString &caminho);
