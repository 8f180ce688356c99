#pragma once

#include "print/Superficie.h"

#include <QStringList>

/// Every letter is 2 mm wide (title 3, bold the same), every line 4 mm high; writes down what is drawn where.
class SuperficieGravadora : public Superficie
{
public:
    double ScaleWidth() const override { return 159.54; }
    double ScaleHeight() const override { return 1166.8; }
    double TextWidth(const QString &texto) const override
    {
        return static_cast<double>(texto.size()) * (FontSize > 10 ? 3 : 2);
    }
    double TextHeight(const QString &) const override { return FontSize > 10 ? 6 : 4; }
    void Print(const QString &texto) override
    {
        passos += QString("%1 %2 %3%4 %5 |%6|")
                      .arg(CurrentX, 7, 'f', 2)
                      .arg(CurrentY, 7, 'f', 2)
                      .arg(FontSize)
                      .arg(FontBold ? "b" : "")
                      .arg(ForeColor.name(), texto);
        CurrentX += TextWidth(texto);
    }
    void Line(double x1, double y1, double x2, double y2) override
    {
        passos += QString("%1 %2 barra ate %3 %4 %5")
                      .arg(x1, 7, 'f', 2)
                      .arg(y1, 7, 'f', 2)
                      .arg(x2, 0, 'f', 2)
                      .arg(y2, 0, 'f', 2)
                      .arg(ForeColor.name());
        CurrentX = x2;
        CurrentY = y2;
    }
    void PaintPicture(const QImage &figura, double x, double y, double largura, double altura) override
    {
        passos += QString("%1 %2 figura %3 x %4%5")
                      .arg(x, 7, 'f', 2)
                      .arg(y, 7, 'f', 2)
                      .arg(largura)
                      .arg(altura)
                      .arg(figura.isNull() ? " nula" : "");
    }
    void NewPage() override { passos += "pagina"; }

    QStringList passos;
};
