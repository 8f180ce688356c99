#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/**
 * What becomes of the picture on the screen, as the tag of `imgFigura` says it: "NADA" there is none, "OLD"
 * (or nothing) the recipe keeps the one it has, any other text the full native path of a file that the user
 * has chosen and not saved yet.
 */
class EstadoDaFigura
{
public:
    EstadoDaFigura() = default;
    EstadoDaFigura(const QString &tag) // NOLINT: a tag is its state
        : m_tag(tag)
    {
    }
    EstadoDaFigura(const char *tag) // NOLINT
        : m_tag(QString::fromUtf8(tag))
    {
    }
    static EstadoDaFigura Nenhuma() { return "NADA"; }
    static EstadoDaFigura Guardada() { return "OLD"; }

    bool ENenhuma() const { return m_tag == QLatin1String("NADA"); }
    bool EGuardada() const { return m_tag.isEmpty() || m_tag == QLatin1String("OLD"); }
    bool ENova() const { return !ENenhuma() && !EGuardada(); }
    /// As the control's tag holds it; of a new picture its path.
    const QString &Tag() const { return m_tag; }

    bool operator==(const EstadoDaFigura &) const = default;

private:
    QString m_tag;
};

/// Everything that the editor's controls hold, as it stands on the screen, saved or not: untrimmed, each value
/// under the name of its control. What saving writes and what the recipe e-mail sends.
struct ReceitaNaTela {
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
    QString txtTipoRect; ///< the kind of a recipe that came in a package
    /// Tags of the tree's lines, its root left out: quantity, unit and ingredient joined by character 160.
    QStringList ingredientes;
    EstadoDaFigura imgFigura;
    /// The bytes of the stored picture while it stays: the recipe may be deleted meanwhile, and its file with it.
    QByteArray figuraAntiga;
    bool figuraMostrada = false; ///< whether a picture shows, the placeholder not counted

    bool operator==(const ReceitaNaTela &) const = default;
};
