#include "print/ListaDesenho.h"

#include "print/SuperficiePainter.h"

#include <QPainter>

void ListaDesenho::Gravar(const MedidaTexto::Fonte &fonte, const QColor &cor, const QString &texto,
                          const QRectF &lugarMm, double subidaMm)
{
    m_itens.push_back({lugarMm, cor, fonte, subidaMm, texto, {}, {}, 0});
}

void ListaDesenho::Gravar(const QColor &cor, const QRectF &barraMm)
{
    m_itens.push_back({barraMm, cor, {}, 0, {}, {}, {}, 0});
}

void ListaDesenho::Gravar(const QImage &figura, const QRectF &lugarMm)
{
    m_itens.push_back({lugarMm, {}, {}, 0, {}, figura, {}, 0});
}

QRectF ListaDesenho::Limites() const
{
    QRectF limites;
    for (const Item &item : m_itens)
        limites |= item.lugar;
    return limites;
}

QString ListaDesenho::Texto() const
{
    QString texto;
    double y = 0;
    for (const Item &item : m_itens) {
        if (item.texto.isEmpty())
            continue;
        if (!texto.isEmpty())
            texto += qAbs(item.lugar.top() - y) < 0.01 ? u' ' : u'\n';
        texto += item.texto;
        y = item.lugar.top();
    }
    return texto;
}

std::vector<ListaDesenho::Linha> ListaDesenho::Linhas() const
{
    std::vector<Linha> linhas;
    double y = 0;
    for (const Item &item : m_itens) {
        if (item.texto.isEmpty())
            continue;
        if (!linhas.empty() && qAbs(item.lugar.top() - y) < 0.01) {
            linhas.back().texto += u' ' + item.texto;
            linhas.back().lugar |= item.lugar;
        } else {
            linhas.push_back({item.texto, item.lugar});
            y = item.lugar.top();
        }
    }
    return linhas;
}

void ListaDesenho::Pintar(QPainter &painter, const QRectF &visivelMm, double pixelsPorMm) const
{
    for (const Item &item : m_itens) {
        // Letters lean a little out of their box; a margin of one millimetre keeps them whole at the edges.
        if (!item.lugar.adjusted(-1, -1, 1, 1).intersects(visivelMm))
            continue;
        const QRectF lugar(item.lugar.topLeft() * pixelsPorMm, item.lugar.size() * pixelsPorMm);
        if (!item.texto.isEmpty()) {
            const QPointF base = lugar.topLeft() + QPointF(0, item.subida * pixelsPorMm);
            PintarTexto(painter, item.fonte, item.cor, base, item.texto, pixelsPorMm);
        } else if (!item.figura.isNull()) {
            // Scrolling repaints at the same scale again and again.
            const double escala = pixelsPorMm * painter.deviceTransform().m11();
            if (item.escala != escala) {
                item.reduzida = ReduzirFigura(painter, item.figura, lugar, pixelsPorMm);
                item.escala = escala;
            }
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            painter.drawImage(lugar, item.reduzida);
        } else {
            painter.fillRect(lugar, item.cor);
        }
    }
}

SuperficieLista::SuperficieLista(ListaDesenho &lista, double largura, double altura)
    : m_lista(lista)
    , m_largura(largura)
    , m_altura(altura)
{
}

double SuperficieLista::TextWidth(const QString &texto) const
{
    return m_medida.Largura(FonteAtual(), texto);
}

double SuperficieLista::TextHeight(const QString &) const
{
    return m_medida.Altura(FonteAtual());
}

void SuperficieLista::Print(const QString &texto)
{
    const double largura = TextWidth(texto);
    if (!texto.isEmpty())
        m_lista.Gravar(FonteAtual(), ForeColor, texto, QRectF(CurrentX, CurrentY, largura, TextHeight(texto)),
                       m_medida.Subida(FonteAtual()));
    CurrentX += largura;
}

void SuperficieLista::Line(double x1, double y1, double x2, double y2)
{
    m_lista.Gravar(ForeColor, QRectF(QPointF(x1, y1), QPointF(x2, y2)).normalized());
    CurrentX = x2;
    CurrentY = y2;
}

void SuperficieLista::PaintPicture(const QImage &figura, double x, double y, double largura, double altura)
{
    if (!figura.isNull())
        m_lista.Gravar(figura, QRectF(x, y, largura, altura));
}

void SuperficieLista::NewPage()
{
    CurrentX = 0;
    CurrentY = 0;
}
