#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

class Banco;
class Superficie;

/// What a recipe's card shows, read from the book.
struct Cartao {
    /// Millimetres; the right margin is as wide as the left one.
    static constexpr double kMargem = 3.0;
    /// Height that the drawing has to itself (twips). Longer recipes go on below it.
    static constexpr int kAlturaDesenho = 66150;

    struct Fato {
        QString rotulo; ///< "Tipo : "
        QString valor;
    };

    qint64 numero = 0;
    QString nome;
    QString origem;
    QList<Fato> fatos; ///< only those that the recipe has
    QStringList ingredientes;
    QImage figura; ///< null when there is none, or it is missing or unreadable
    QString modo;
    QString observacao;
    bool podeAlterar = true;

    /// Reads the recipe and its lines. Throws ErroBanco, also when there is no recipe of that number.
    static Cartao Ler(const Banco &banco, qint64 lngReceita);

    /**
     * Draws the card from the surface's top-left corner.
     * @return where the drawing ends: the lower edge of the closing rule (mm)
     */
    double Desenhar(Superficie &objPrint) const;

    /// The card's words in reading order, for those who listen to it.
    QString Texto() const;
};
