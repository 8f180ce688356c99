#pragma once

#include "print/MedidaTexto.h"
#include "print/Superficie.h"

#include <QSizeF>

class QPainter;
class QPrinter;

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
 * Paints a picture into a rectangle of device pixels. One with far more detail than the place can show is
 * reduced first, so that a photo from a camera does not swell a print job.
 *
 * @param pixelsPorMm device pixels in one millimetre
 */
void PintarFigura(QPainter &painter, const QImage &figura, const QRectF &lugar, double pixelsPorMm);
