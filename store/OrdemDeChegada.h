#pragma once

#include <QtGlobal>

#include <functional>
#include <string_view>
#include <vector>

/**
 * Puts rows into the book's order that come nearly in that order, as an index of the engine's own collation
 * gives them: each is compared with the one before; the few that stand elsewhere are set aside, sorted at the
 * end and put in their places. Equal texts keep the order in which they came.
 */
class OrdemDeChegada
{
public:
    /// Gives the text of a row that has come; it must stay where it is.
    using Texto = std::function<std::string_view(quint32 linha)>;

    explicit OrdemDeChegada(Texto texto)
        : m_texto(std::move(texto))
    {
    }

    /// The next row, numbered from 0 on. NULL comes before every text and stands first.
    void Chegou(bool nulo);
    /// How many stand elsewhere than they came; 0: all stand as they came.
    std::size_t Desviadas() const { return m_desviadas.size(); }
    /// The rows in the book's order; `unicas` leaves out all but the first of equal ones.
    std::vector<quint32> Terminar(bool unicas);

private:
    Texto m_texto;
    std::vector<quint32> m_emOrdem;
    std::vector<quint32> m_desviadas;
    quint32 m_proxima = 0;
    quint32 m_nulas = 0;
};
