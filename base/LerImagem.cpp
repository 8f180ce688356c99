#include "base/LerImagem.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <cstring>

namespace
{
// Qt keeps pictures of up to 256 MB; one that asks for more is never unfolded.
constexpr qint64 kMaisPixels = 64LL * 1024 * 1024;
// A JPEG is reduced while it is read. A sequential one needs next to no memory for that; one in several scans
// keeps all its coefficients.
constexpr qint64 kMaisPixelsJpeg = 256LL * 1000 * 1000;
constexpr qint64 kMaisPixelsEmPassadas = 120LL * 1000 * 1000;
// About two seconds of work.
constexpr qint64 kMaisPixelsVezesPassadas = 1100LL * 1000 * 1000;
// Encoders write about ten. Each costs something even in a tiny picture.
constexpr int kMaisPassadas = 100;

constexpr quint8 kSoi = 0xD8;
constexpr quint8 kEoi = 0xD9;
constexpr quint8 kSos = 0xDA;
constexpr quint8 kTem = 0x01;

bool Reinicio(quint8 marca)
{
    return marca >= 0xD0 && marca <= 0xD7;
}

bool Quadro(quint8 marca)
{
    return marca >= 0xC0 && marca <= 0xCF && marca != 0xC4 && marca != 0xC8 && marca != 0xCC;
}

/// Walks from marker to marker, over whatever lies between them, as a decoder does.
class Marcas
{
public:
    explicit Marcas(const QByteArray &bytes)
        : m_bytes(bytes)
    {
    }

    /// The next marker's code, 0 at the end.
    quint8 Proxima()
    {
        while (m_onde < m_bytes.size()) {
            const void *achado =
                std::memchr(m_bytes.constData() + m_onde, 0xFF, static_cast<std::size_t>(m_bytes.size() - m_onde));
            if (!achado)
                return 0;
            m_onde = static_cast<const char *>(achado) - m_bytes.constData() + 1;
            while (m_onde < m_bytes.size() && Byte(m_onde) == 0xFF)
                ++m_onde;
            if (m_onde >= m_bytes.size())
                return 0;
            // A zero behind it makes 0xFF a byte of the picture itself.
            if (const quint8 marca = Byte(m_onde++); marca != 0)
                return marca;
        }
        return 0;
    }
    /// The segment behind the marker just read; leaves the position behind it.
    QByteArrayView Segmento()
    {
        if (m_onde + 2 > m_bytes.size())
            return {};
        const qsizetype tamanho = Byte(m_onde) * 256 + Byte(m_onde + 1);
        const qsizetype fim = std::min(m_onde + std::max<qsizetype>(tamanho, 2), m_bytes.size());
        const QByteArrayView segmento(m_bytes.constData() + m_onde + 2, fim - m_onde - 2);
        m_onde = fim;
        return segmento;
    }

private:
    quint8 Byte(qsizetype onde) const { return static_cast<quint8>(m_bytes[onde]); }

    const QByteArray &m_bytes;
    qsizetype m_onde = 0;
};

ImagemLida Grande()
{
    return {ImagemLida::Estado::GrandeDemais, {}};
}
} // namespace

CustoJpeg MedirJpeg(const QByteArray &bytes)
{
    CustoJpeg custo;
    if (!bytes.startsWith("\xFF\xD8\xFF"))
        return custo;
    Marcas marcas(bytes);
    for (quint8 marca = marcas.Proxima(); marca != 0 && marca != kEoi; marca = marcas.Proxima()) {
        if (marca == kSoi || marca == kTem || Reinicio(marca))
            continue;
        const QByteArrayView segmento = marcas.Segmento();
        if (marca == kSos) {
            ++custo.passadas;
        } else if (Quadro(marca) && segmento.size() >= 5) {
            const auto numero = [&segmento](qsizetype i) {
                return static_cast<quint8>(segmento[i]) * 256 + static_cast<quint8>(segmento[i + 1]);
            };
            custo.altura = std::max<qint64>(custo.altura, numero(1));
            custo.largura = std::max<qint64>(custo.largura, numero(3));
        }
    }
    return custo;
}

bool CustoJpeg::Aceitavel() const
{
    const qint64 pixels = largura * altura;
    // Three scans: a sequential picture may bring its three colours one after the other.
    return pixels <= (passadas > 3 ? kMaisPixelsEmPassadas : kMaisPixelsJpeg) && passadas <= kMaisPassadas &&
           pixels * std::max(passadas, 1) <= kMaisPixelsVezesPassadas;
}

ImagemLida LerImagem(const QByteArray &bytes)
{
    if (bytes.isEmpty())
        return {};
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    // Reading from bytes, not from a name, leaves the choice of the format to the content.
    QImageReader leitor(&buffer);
    const QByteArray formato = leitor.format();
    if (formato != "bmp" && formato != "jpeg" && formato != "gif" && formato != "png")
        return {};
    leitor.setAutoTransform(true);
    const QSize tamanho = leitor.size();
    if (formato == "jpeg") {
        if (!MedirJpeg(bytes).Aceitavel())
            return Grande();
    } else if (qint64(tamanho.width()) * tamanho.height() > kMaisPixels) {
        return Grande();
    }
    if (std::max(tamanho.width(), tamanho.height()) > kMaiorLado)
        leitor.setScaledSize(tamanho.scaled(kMaiorLado, kMaiorLado, Qt::KeepAspectRatio).expandedTo({1, 1}));
    QImage imagem = leitor.read();
    if (imagem.isNull())
        return {};
    return {ImagemLida::Estado::Boa, std::move(imagem)};
}

ImagemLida LerArquivoDeImagem(const QString &caminho)
{
    const QFileInfo informacao(caminho);
    if (!informacao.isFile())
        return {};
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::ReadOnly))
        return {};
    if (arquivo.size() > kMaiorArquivoDeImagem)
        return Grande();
    return LerImagem(arquivo.readAll());
}
