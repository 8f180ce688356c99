#pragma once

#include "store/RecordSet.h"

#include <QStringList>

#include <vector>

/**
 * The rows of the recipe list: a view of the record set, without an object or a copy per row.
 *
 * Calories are shown, and checked against the limit of a search, for the whole recipe: what is stored per
 * serving is multiplied by the servings.
 */
class LinhasLista
{
public:
    enum Coluna { Nome, Tipo, Origem, Preparo, Calorias, kColunas };

    LinhasLista() = default;
    /// @param lngLimiteCalorias recipes stored per serving whose total lies above it are left out; 0: no
    /// limit
    LinhasLista(RecordSet receitas, qint64 lngLimiteCalorias);

    /// The columns of `Receitas` that the list reads; the texts of the recipes stay on disk.
    static QStringList CamposLidos();

    /// Takes up to `quantos` further records over; false when there are none left.
    bool Tomar(int quantos);

    int Quantas() const { return static_cast<int>(m_linhas.size()); }
    qint64 Receita(int linha) const;
    /// "C" followed by the recipe's number.
    QString Chave(int linha) const;
    QString Texto(int linha, Coluna coluna) const;
    /// The recipe's `Tipo` as text, "" for NULL.
    QString Tag(int linha) const;
    bool TemFigura(int linha) const;

    /// Sorts by a column in the book's order of texts; rows that are equal there keep their order.
    /// Gives the old place of every row. A long one lets the window paint meanwhile.
    std::vector<int> Ordenar(Coluna coluna);
    void Remover(int linha)
    {
        m_linhas.erase(m_linhas.begin() + linha);
        m_removeu = true;
    }
    /// Whether these are all the rows of that record set and limit: the same ones, not equal ones.
    bool Mostra(const RecordSet &receitas, qint64 lngLimiteCalorias) const;
    /// The row of a recipe, or -1.
    int Linha(qint64 lngReceita) const;
    /// The first row whose name begins so, whatever the letter case, from `aPartirDe` on and around the end;
    /// where no name does, accents count for nothing either. -1 for none.
    int ProcurarNome(const QString &inicio, int aPartirDe) const;

private:
    struct Campos {
        int numero = -1, nome = -1, figura = -1, classificacao = -1, origem = -1, preparo = -1;
        int tipo = -1, tipoCalorias = -1, calorias = -1, porcoes = -1;
    };
    bool PorPorcao(int registro) const;
    std::vector<int> Postos(Coluna coluna) const;
    std::vector<int> PostosDoNome() const;
    bool AcimaDoLimite(int registro) const;

    RecordSet m_receitas;
    Campos m_campos;
    qint64 m_limite = 0;
    int m_proximo = 0;
    bool m_removeu = false;
    std::vector<int> m_linhas; ///< record of each row
};
