#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/**
 * An ingredient line. A quantity or unit that is a null text is the database's NULL; an empty one that is not
 * null is an empty text, which some readers tell from it.
 */
struct LinhaDaReceita {
    QString Ingrediente, Quantidade, Unidade;
};

/**
 * A recipe with its lines: the one value in which it travels between the book, the screen, the card, paper,
 * packages, mail and foreign files. Each member has its column's name and holds the column as text; a null
 * text is the database's NULL.
 */
struct Receita {
    QString Nome, Classificacao, Modo, Porcoes, Preparo;
    QString Tipo_Calorias; ///< "R" total of the recipe, "P" per serving
    QString Calorias, Tipo, Origem, Observacao;
    QString Figura;         ///< name of the picture's file
    QByteArray DadosFigura; ///< its bytes, for who carries them along; reading a recipe leaves them out
    QList<LinhaDaReceita> Ingredientes;
    qint64 id_receitas = 0; ///< 0: not in the book
};

/// "2 xícaras farinha": quantity, unit and ingredient trimmed, a blank between them. Only a quantity or unit
/// that is NULL leaves its blank out.
QString LinhaPorExtenso(const LinhaDaReceita &linha);
