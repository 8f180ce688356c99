#pragma once

#include "app/Dicas.h"

#include <QLabel>
#include <QWidget>

class Abridor;

/// A label that draws its text as large as its fixed room allows, so that no line and no letter's foot is
/// cut.
class RotuloAjustado : public QLabel
{
    Q_OBJECT
public:
    using QLabel::QLabel;

    /// Lays the text out in the largest letter that fits; gives its height, which is larger than the label's
    /// only when not even the smallest letter fits.
    double Ajustar(class QTextLayout &linhas) const;

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// The background of the window, with the program's title, the tip, and the logos that open web sites.
class Fundo : public QWidget
{
    Q_OBJECT
public:
    Fundo(Abridor &abridor, const QString &site, QWidget *janela);

    AreaDaDica Area() const { return m_area; }
    QLabel *lblEntrada() const { return m_lblEntrada; }
    /// Shows the footer, which is hidden at first: its texts need the fonts, and the window's first paint
    /// does not wait for those.
    void MostrarRodape() { m_rodape->show(); }
    /// The line that says where to click while no view is open.
    void MostrarConvite(bool mostrar) { m_lblConvite->setVisible(mostrar); }

private:
    QWidget *CriarElo(class QAbstractButton *elo, const QString &nome, const QString &endereco);

    Abridor &m_abridor;
    AreaDaDica m_area;
    QWidget *m_rodape;
    QLabel *m_lblEntrada;
    QLabel *m_lblConvite;
};

/// The distributor's site.
QString SiteDoDistribuidor();
