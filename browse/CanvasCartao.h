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
    /// What is written on it, line by line from the top.
    const std::vector<ListaDesenho::Linha> &Linhas() const { return m_linhas; }
    /// The same as one text, lines parted by line feeds.
    QString Texto() const { return m_texto; }

signals:
    /// Somebody who listens to the card wants to see the place `y` (pixels from the canvas's top).
    void lugarPedido(int y);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    ListaDesenho m_desenho;
    std::vector<ListaDesenho::Linha> m_linhas;
    QString m_texto;
};
