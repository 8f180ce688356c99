#pragma once

#include <QString>
#include <QStringList>

/**
 * A recipe as the editor's controls hold it at this moment, saved or not; one member for each control.
 * Values are as typed, blanks around them included. Texts of several lines end their lines in CR LF.
 */
struct ReceitaNaTela {
    QString txtNome;
    QString txtOrigem;
    QString cmbTipo;
    QString txtPreparo;
    QString txtPorcoes;
    QString txtCalorias;
    bool optPorcao = false;
    bool optReceita = false;
    QString txtModo;
    QString txtObs;
    /// Tags of the tree's lines, its root left out: quantity, unit and ingredient joined by character 160.
    QStringList TrVwIngredientes;
    QString txtNroReceita;
    /// The recipe's kind, a number as text or nothing.
    QString txtTipoRect;
    /// Whether imgFigura shows any picture, and its tag: "NADA", "OLD", "" or the path of a chosen file.
    bool temFigura = false;
    QString tagFigura;
};
