#pragma once

#include <QString>

#include <optional>
#include <vector>

class QIODevice;

/**
 * The recipe book of an Access database file, completely read. No value means the database's NULL, which is
 * not the same as an empty text.
 */
struct LivroAccess {
    using Texto = std::optional<QString>;
    using Numero = std::optional<double>;

    struct Receita {
        qint32 id_receitas = 0;
        Texto Nome;
        Texto Data; ///< "yyyy-MM-dd", with " HH:mm:ss" behind it when the time is not midnight
        Texto Classificacao, Modo;
        Numero Tipo;
        Texto Origem;
        Numero Porcoes;
        Texto Preparo, Tipo_Calorias;
        Numero Calorias;
        Texto Observacao, Figura;
    };
    struct Ingrediente {
        qint32 id_ingredientes = 0;
        std::optional<qint32> id_receitas;
        Texto Nome; ///< the column Ingrediente
        Texto Quantidade, Unidade;
    };

    std::vector<Receita> receitas;         ///< by number
    std::vector<Ingrediente> ingredientes; ///< by number
    /// The highest numbers ever given, those of deleted rows included; 0 when none was.
    qint32 ultimaReceita = 0;
    qint32 ultimoIngrediente = 0;
};

/**
 * Reads the whole book from an Access 97, 2000, 2002 or 2003 file.
 *
 * Tables and columns are found by name without regard to case and order; others are ignored. Columns that may
 * be NULL may be missing. Every number, length and place is checked before it is used, and the rows are
 * counted against the table definitions.
 * @param arquivo open for reading, random access
 * @return the book, or throws Access::ErroAccess when the file is of another kind or cannot be read completely
 */
LivroAccess LerLivroAccess(QIODevice &arquivo);
