#pragma once

#include "print/Superficie.h"

#include <QStringList>

#include <vector>

/**
 * A surface that remembers what was printed where, with measures that no font decides: every letter is one
 * unit wide and every line one unit high, times what the test sets.
 */
class SuperficieDeTeste : public Superficie
{
public:
    struct Corrida {
        int pagina;
        double x, y;
        double largura;
        QString texto;
        double FontSize;
        bool FontBold;
        QColor cor;
    };
    struct Retangulo {
        int pagina;
        double x1, y1, x2, y2;
        QColor cor;
    };

    explicit SuperficieDeTeste(double largura = 16, double altura = 1000)
        : m_largura(largura)
        , m_altura(altura)
    {
    }

    double larguraDaLetra = 1;
    double alturaDaLinha = 1;
    /// With true a letter's width and a line's height grow with the font size (as if at size 11) and bold
    /// letters are a tenth wider.
    bool seguirFonte = false;

    std::vector<Corrida> corridas;
    std::vector<Retangulo> barras;
    std::vector<Retangulo> figuras;
    int paginas = 1;

    double ScaleWidth() const override { return m_largura; }
    double ScaleHeight() const override { return m_altura; }
    double TextWidth(const QString &texto) const override
    {
        const double fator = seguirFonte ? FontSize / 11 * (FontBold ? 1.1 : 1) : 1;
        return static_cast<double>(texto.size()) * larguraDaLetra * fator;
    }
    double TextHeight(const QString &) const override
    {
        return alturaDaLinha * (seguirFonte ? FontSize / 11 : 1);
    }
    void Print(const QString &texto) override
    {
        const double largura = TextWidth(texto);
        corridas.push_back({paginas, CurrentX, CurrentY, largura, texto, FontSize, FontBold, ForeColor});
        m_registro += QStringLiteral("%1 %2 %3%4 %5 \"%6\"")
                          .arg(Mm(CurrentX), Mm(CurrentY), QString::number(FontSize),
                               FontBold ? QStringLiteral("b") : QString(), ForeColor.name(), texto);
        CurrentX += largura;
    }
    void Line(double x1, double y1, double x2, double y2) override
    {
        barras.push_back({paginas, x1, y1, x2, y2, ForeColor});
        m_registro +=
            QStringLiteral("%1 %2 bar to %3 %4 %5").arg(Mm(x1), Mm(y1), Mm(x2), Mm(y2), ForeColor.name());
        CurrentX = x2;
        CurrentY = y2;
    }
    void PaintPicture(const QImage &, double x, double y, double largura, double altura) override
    {
        figuras.push_back({paginas, x, y, x + largura, y + altura, {}});
        m_registro += QStringLiteral("%1 %2 picture %3 x %4").arg(Mm(x), Mm(y), Mm(largura), Mm(altura));
    }
    void NewPage() override
    {
        ++paginas;
        CurrentX = 0;
        CurrentY = 0;
        m_registro += QStringLiteral("-- page %1").arg(paginas);
    }

    /// One line per thing drawn, in drawing order: what golden files hold.
    QString Registro() const { return m_registro.join(u'\n') + u'\n'; }
    /// The text line by line, the runs of a line joined by a blank.
    QStringList Linhas() const
    {
        QStringList linhas;
        for (size_t i = 0; i < corridas.size(); ++i) {
            const bool mesma = i > 0 && corridas[i].pagina == corridas[i - 1].pagina &&
                               qAbs(corridas[i].y - corridas[i - 1].y) < 0.001;
            if (mesma)
                linhas.last() += u' ' + corridas[i].texto;
            else
                linhas << corridas[i].texto;
        }
        return linhas;
    }

private:
    static QString Mm(double valor) { return QString::number(valor, 'f', 2); }

    double m_largura;
    double m_altura;
    QStringList m_registro;
};
