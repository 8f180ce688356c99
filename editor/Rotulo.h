#pragma once

#include <QLabel>
#include <QMargins>

/// The editor's grid: one distance between controls, one inside every frame.
constexpr int kEspaco = 4;
constexpr QMargins kMargemQuadro(8, 6, 8, 8);

/// A label of the editor; all of them are named lblGeral, as the window knows its labels.
inline QLabel *NovoRotulo(const QString &texto, QWidget *campo = nullptr)
{
    auto *rotulo = new QLabel(texto);
    rotulo->setObjectName("lblGeral");
    if (campo)
        rotulo->setBuddy(campo);
    return rotulo;
}

/// The tooltip that names a control is also what a screen reader says.
inline void Descrever(QWidget &controle, const QString &dica)
{
    controle.setToolTip(dica);
    controle.setAccessibleName(dica);
}
