#pragma once

#include "print/ListaDesenho.h"

#include <QWidget>

/// The card's canvas: a drawing that persists and is painted, crisp at any scale, where it is seen.
class CanvasCartao : public QWidget
{
    Q_OBJECT
public:
    explicit CanvasCartao(QWidget *parent = nullptr);

    void DefinirDesenho(ListaDesenho desenho);
    const ListaDesenho &Desenho() const { return m_desenho; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    ListaDesenho m_desenho;
};
