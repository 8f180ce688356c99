#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Everything the editor's controls hold, as it stands on the screen: untrimmed, each value under the name of
/// its control. What saving writes and what the recipe e-mail sends.
struct EstadoDaTela {
    QString txtNroReceita; ///< empty for a new recipe
    QString txtNome;
    QString txtOrigem;
    QString cmbTipo;
    QString txtModo; ///< lines end in CR LF, as in txtObs
    QString txtObs;
    QString txtPorcoes;
    QString txtPreparo;
    QString txtCalorias;
    bool optReceita = false;
    bool optPorcao = false;
    QString txtTipoRect;         ///< the kind of a recipe that came in a package
    QStringList ingredientes;    ///< tags of the ingredient lines, in tree order (LinhaIngrediente.h)
    QString imgFigura;           ///< the picture's tag (EstadoFigura.h)
    /// The bytes of the stored picture while the tag says that it stays: the recipe may be deleted meanwhile, and
    /// its file with it.
    QByteArray figuraAntiga;
    bool figuraMostrada = false; ///< whether a picture shows, the placeholder not counted
};
