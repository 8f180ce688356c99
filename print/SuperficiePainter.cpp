#include "print/SuperficiePainter.h"

#include <QPainter>

#include <algorithm>

namespace
{
// Finer than this no eye tells a photo on paper (300 dots an inch).
constexpr double kPontosDeFotoPorMm = 300 / 25.4;
} // namespace

SuperficiePainter::SuperficiePainter(QPainter &painter, QSizeF areaPixels, double pixelsPorMm)
    : m_painter(painter)
    , m_areaPixels(areaPixels)
    , m_pixelsPorMm(pixelsPorMm)
{
}

double SuperficiePainter::TextWidth(const QString &texto) const
{
    return m_medida.Largura(FonteAtual(), texto);
}

double SuperficiePainter::TextHeight(const QString &) const
{
    return m_medida.Altura(FonteAtual());
}

void SuperficiePainter::Print(const QString &texto)
{
    const double linhaDeBase = CurrentY + m_medida.Subida(FonteAtual());
    PintarTexto(m_painter, FonteAtual(), ForeColor, QPointF(CurrentX, linhaDeBase) * m_pixelsPorMm, texto,
                m_pixelsPorMm);
    CurrentX += TextWidth(texto);
}

void SuperficiePainter::Line(double x1, double y1, double x2, double y2)
{
    const QPointF canto1 = QPointF(x1, y1) * m_pixelsPorMm;
    const QPointF canto2 = QPointF(x2, y2) * m_pixelsPorMm;
    m_painter.fillRect(QRectF(canto1, canto2).normalized(), ForeColor);
    CurrentX = x2;
    CurrentY = y2;
}

void SuperficiePainter::PaintPicture(const QImage &figura, double x, double y, double largura, double altura)
{
    const QRectF lugar(QPointF(x, y) * m_pixelsPorMm, QSizeF(largura, altura) * m_pixelsPorMm);
    m_painter.setRenderHint(QPainter::SmoothPixmapTransform);
    m_painter.drawImage(lugar, ReduzirFigura(m_painter, figura, lugar, m_pixelsPorMm));
}

void SuperficiePainter::NewPage()
{
    CurrentX = 0;
    CurrentY = 0;
}

QImage ReduzirFigura(const QPainter &painter, const QImage &figura, const QRectF &lugar, double unidadesPorMm)
{
    if (figura.isNull())
        return figura;
    // Device pixels in one painter unit: two on a screen of double density.
    const double densidade = painter.deviceTransform().m11();
    const double fator = densidade * std::min(1.0, kPontosDeFotoPorMm / (unidadesPorMm * densidade));
    const QSize bastante = (lugar.size() * fator).toSize().expandedTo(QSize(1, 1));
    const QSize reduzida = figura.size().boundedTo(bastante);
    return reduzida == figura.size()
               ? figura
               : figura.scaled(reduzida, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}
