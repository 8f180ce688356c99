#pragma once

#include "print/MedidaTexto.h"
#include "print/Superficie.h"

#include <QColor>
#include <QImage>
#include <QRectF>
#include <QString>

#include <vector>

class QPainter;

/**
 * A drawing remembered as text runs, bars and pictures in millimetres.
 *
 * It can be painted again and again at any scale, crisp every time, and only the part that is seen: a card of
 * a hundred pages needs no canvas of that size.
 */
class ListaDesenho
{
public:
    void Gravar(const MedidaTexto::Fonte &fonte, const QColor &cor, const QString &texto,
                const QRectF &lugarMm, double subidaMm);
    void Gravar(const QColor &cor, const QRectF &barraMm);
    void Gravar(const QImage &figura, const QRectF &lugarMm);
    void Limpar() { m_itens.clear(); }
    bool Vazia() const { return m_itens.empty(); }

    /// Everything drawn lies in this rectangle (mm).
    QRectF Limites() const;
    /// The text runs in the order they were drawn, one per line of the result: what a screen reader is told.
    QString Texto() const;

    /// What is written on one line, and where (mm).
    struct Linha {
        QString texto;
        QRectF lugar;
    };
    /// The text runs as lines, in the order they were drawn: neighbours of one height are one line.
    std::vector<Linha> Linhas() const;

    /**
     * Paints what touches the visible part.
     *
     * @param visivelMm   visible part of the drawing (mm); the rest is skipped
     * @param pixelsPorMm painter units in one millimetre. The drawing's top-left lies at the painter's
     * origin: translate the painter to scroll, do not scale it
     */
    void Pintar(QPainter &painter, const QRectF &visivelMm, double pixelsPorMm) const;

private:
    struct Item {
        QRectF lugar;
        QColor cor;
        MedidaTexto::Fonte fonte;
        double subida = 0;
        QString texto;
        QImage figura;
        mutable QImage reduzida; ///< as painted last, for device pixels of this scale
        mutable double escala = 0;
    };
    std::vector<Item> m_itens;
};

/**
 * The surface that records into a ListaDesenho. Endless downward; it has one page.
 */
class SuperficieLista : public Superficie
{
public:
    /// @param lista   where to record; outlives the surface
    /// @param largura width of the drawing (mm)
    /// @param altura  what ScaleHeight() answers (mm); nothing is cut there
    SuperficieLista(ListaDesenho &lista, double largura, double altura);

    double ScaleWidth() const override { return m_largura; }
    double ScaleHeight() const override { return m_altura; }
    double TextWidth(const QString &texto) const override;
    double TextHeight(const QString &texto) const override;
    void Print(const QString &texto) override;
    void Line(double x1, double y1, double x2, double y2) override;
    void PaintPicture(const QImage &figura, double x, double y, double largura, double altura) override;
    void NewPage() override;

private:
    MedidaTexto::Fonte FonteAtual() const { return {FontName, FontSize, FontBold}; }

    ListaDesenho &m_lista;
    double m_largura;
    double m_altura;
    MedidaTexto m_medida;
};
