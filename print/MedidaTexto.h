#pragma once

#include <QFont>
#include <QPointF>
#include <QString>

#include <unordered_map>

class QColor;
class QPainter;

/**
 * Text measures in millimetres, the same on every device.
 *
 * They are taken from the font's own design, unhinted, and scaled: so the card on the screen and the page on
 * paper break a text at the same words, whatever the resolution. Needs a QGuiApplication.
 */
class MedidaTexto
{
public:
    struct Fonte {
        QString nome;
        double pontos = 9;
        bool negrito = false;
    };

    MedidaTexto() = default;
    MedidaTexto(const MedidaTexto &) = delete;
    MedidaTexto &operator=(const MedidaTexto &) = delete;

    double Largura(const Fonte &fonte, const QString &texto) const;
    /// Ascent and descent together: the distance from one line to the next.
    double Altura(const Fonte &fonte) const;
    /// From a line's top down to its baseline.
    double Subida(const Fonte &fonte) const;

private:
    struct Tamanhos {
        QFont fonte;
        double subida;
        double altura;
        std::unordered_map<QString, double> larguras; ///< of words already met, in units of the design
    };
    Tamanhos &Escolher(const Fonte &fonte) const;

    mutable std::unordered_map<QString, Tamanhos> m_fontes;
    mutable QString m_nomeAtual;
    mutable bool m_negritoAtual = false;
    mutable Tamanhos *m_atual = nullptr;
};

/**
 * Paints a text so that it is as wide as MedidaTexto says.
 *
 * @param base        start of the baseline, in painter units
 * @param unidadesPorMm painter units in one millimetre
 */
void PintarTexto(QPainter &painter, const MedidaTexto::Fonte &fonte, const QColor &cor, QPointF base,
                 const QString &texto, double unidadesPorMm);
