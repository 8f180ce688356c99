#pragma once

#include <QColor>
#include <QWidget>

/// Colour of one pixel row of the toolbar's gradient: from the bottom up, 0.2 more red and green per twip
/// from 80 on, blue 255. `linha` counts from the top, `altura` is the panel's height in twips.
QColor CorDaBarra(int linha, int altura);
/// The same for the title bar: from the top down, 0.5 more per twip from 125 on.
QColor CorDoTitulo(int linha);

/// A strip painted with one of the two gradients; dragging it may move the window (see frmPrincipal).
class Faixa : public QWidget
{
    Q_OBJECT
public:
    enum class Tipo { Barra, Titulo };
    Faixa(const QString &nome, Tipo tipo, int alturaTwips, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Tipo m_tipo;
    int m_altura;
};
