#pragma once

#include "print/MedidaTexto.h"
#include "print/Superficie.h"

#include <QRectF>
#include <QSizeF>

class QPainter;

/**
 * A surface over a QPainter on any device.
 *
 * Millimetres become device pixels at this edge only; the painter is never scaled, for fonts would then be
 * scaled twice. The painter's origin is the top-left of the drawable area.
 */
class SuperficiePainter : public Superficie
{
public:
    /// @param painter     active for as long as the surface is used
    /// @param areaPixels  drawable area in device pixels
    /// @param pixelsPorMm device pixels in one millimetre
    SuperficiePainter(QPainter &painter, QSizeF areaPixels, double pixelsPorMm);

    double ScaleWidth() const override { return m_areaPixels.width() / m_pixelsPorMm; }
    double ScaleHeight() const override { return m_areaPixels.height() / m_pixelsPorMm; }
    double TextWidth(const QString &texto) const override;
    double TextHeight(const QString &texto) const override;
    void Print(const QString &texto) override;
    void Line(double x1, double y1, double x2, double y2) override;
    void PaintPicture(const QImage &figura, double x, double y, double largura, double altura) override;
    /// A plain painter has one page: only the position goes back to the corner.
    void NewPage() override;

private:
    MedidaTexto::Fonte FonteAtual() const { return {FontName, FontSize, FontBold}; }

    QPainter &m_painter;
    QSizeF m_areaPixels;
    double m_pixelsPorMm;
    MedidaTexto m_medida;
};

/**
 * The picture with no more detail than its place can show, so that a photo from a camera neither swells a
 * print job nor slows the screen down. A picture that is small enough comes back as it is.
 *
 * @param painter       where it will be painted
 * @param lugar         its place in painter units
 * @param unidadesPorMm painter units in one millimetre
 */
QImage ReduzirFigura(const QPainter &painter, const QImage &figura, const QRectF &lugar,
                     double unidadesPorMm);
