#pragma once

#include <QLabel>
#include <QMargins>

/// The editor's grid: one distance between controls, one inside every frame.
constexpr int kEspaco = 4;
constexpr QMargins kMargemQuadro(8, 6, 8, 8);
/// Fields of one line and combo boxes stand in rows of one height, whatever the style makes of each.
constexpr int kAlturaCampo = 22;
constexpr int kAlturaBotao = 24;

/// A field as wide as its column leaves it, whatever width it would like.
inline void EncherColuna(QWidget &campo)
{
    campo.setSizePolicy(QSizePolicy::Ignored, campo.sizePolicy().verticalPolicy());
    campo.setMinimumWidth(44);
}

/// A label of the editor; all of them are named lblGeral, as the window knows its labels.
inline QLabel *NovoRotulo(const QString &texto, QWidget *campo = nullptr)
{
    auto *rotulo = new QLabel(texto);
    rotulo->setObjectName("lblGeral");
    if (campo)
        rotulo->setBuddy(campo);
    return rotulo;
}

/// The tooltip is what a screen reader tells after the control's name, which is its label (Acessivel::Nomear).
inline void Descrever(QWidget &controle, const QString &dica)
{
    controle.setToolTip(dica);
}
