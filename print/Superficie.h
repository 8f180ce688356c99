#pragma once

#include <QColor>
#include <QImage>
#include <QString>

/**
 * What a layout asks of the thing it draws on: printer page, card on screen, or a test's recording surface.
 *
 * All positions and sizes are millimetres from the top-left of the drawable area; font sizes are points.
 */
class Superficie
{
public:
    virtual ~Superficie() = default;

    QString FontName = QStringLiteral("Verdana");
    double FontSize = 9;
    bool FontBold = false;
    QColor ForeColor = Qt::black;
    double CurrentX = 0;
    double CurrentY = 0;

    virtual double ScaleWidth() const = 0;
    virtual double ScaleHeight() const = 0;

    /// Width of the text in the current font.
    virtual double TextWidth(const QString &texto) const = 0;
    /// Height of one line in the current font.
    virtual double TextHeight(const QString &texto) const = 0;

    /// Prints one line with its top-left corner at CurrentX, CurrentY in the current font and colour;
    /// CurrentX ends behind the last character, CurrentY stays.
    virtual void Print(const QString &texto) = 0;

    /// Fills the bar between two corners with the current colour; the current position ends at the second
    /// one.
    virtual void Line(double x1, double y1, double x2, double y2) = 0;

    /// Paints a picture stretched into the rectangle.
    virtual void PaintPicture(const QImage &figura, double x, double y, double largura, double altura) = 0;

    /// Starts a new page; CurrentX and CurrentY become 0.
    virtual void NewPage() = 0;
};
