#pragma once

#include <QString>

/**
 * An ingredient line of the editor: quantity, unit and ingredient, as its tree node carries them.
 *
 * The node's text is what the user reads ("2 xícaras farinha"). The node's tag joins the three values by the
 * no-break space; it always has three parts, the empty ones too. Saving and the recipe e-mail split it at
 * that character as well: change the three together.
 */
struct LinhaIngrediente {
    QString quantidade;
    QString unidade;
    QString ingrediente;

    /// Splits a tag. Missing parts come out empty.
    static LinhaIngrediente DoTag(const QString &tag);
    /// Of values as a field or a row holds them: no-break spaces become plain blanks, then each is trimmed.
    static LinhaIngrediente De(const QString &quantidade, const QString &unidade, const QString &ingrediente);

    QString Texto() const;
    QString Tag() const;
};

/// Key of the tree's root node.
inline const QString kChaveRaiz = QStringLiteral("R");
/// Text of the tree's root node.
inline const QString kTextoRaiz = QStringLiteral("Ingredientes Cadastrados");

/// Key of a new line: "C" and the number of the tree's last node plus one, "C1" after the root. Removed lines
/// leave gaps.
QString ProximaChave(const QString &ultimaChave);
