#include "app/Desenho.h"

#include <QDataStream>
#include <QFile>
#include <QHash>

#include <cstring>

namespace
{
/// What desenhar_botoes wrote for this scale; nothing where it was not built in.
QHash<QString, QByteArray> LerProntos(int escala)
{
    QHash<QString, QByteArray> prontos;
    QFile arquivo(QString(":/desenhos_%1.bin").arg(escala));
    if (arquivo.open(QIODevice::ReadOnly)) {
        QDataStream fluxo(&arquivo);
        fluxo >> prontos;
    }
    return prontos;
}

QByteArray Pronto(const QString &arquivo, const QSize &lugar, qreal escala)
{
    const QString chave = ChaveDoDesenho(arquivo, lugar * escala);
    if (escala == 1) {
        static const auto prontos = LerProntos(1);
        return prontos.value(chave);
    }
    if (escala == 2) {
        static const auto prontos = LerProntos(2);
        return prontos.value(chave);
    }
    return {};
}
} // namespace

QPixmap Desenho(const QString &arquivo, const QSize &lugar, qreal escala)
{
    const QByteArray bytes = Pronto(arquivo, lugar, escala);
    QImage figura(lugar * escala, QImage::Format_ARGB32_Premultiplied);
    if (bytes.isEmpty() || bytes.size() != figura.sizeInBytes())
        return QPixmap::fromImage(Desenhar(arquivo, lugar, escala));
    std::memcpy(figura.bits(), bytes.constData(), static_cast<std::size_t>(bytes.size()));
    figura.setDevicePixelRatio(escala);
    return QPixmap::fromImage(std::move(figura));
}
