#pragma once

#include <QtGlobal>

class Avisos;
class Banco;
class PainelLista;
class Telas;

/// Deleting the recipe that is open in the editor (its button `cmdExcluirRct`).
class Exclusao
{
public:
    Exclusao(const Banco &banco, Avisos &avisos, Telas &telas, PainelLista &lista)
        : m_banco(banco)
        , m_avisos(avisos)
        , m_telas(telas)
        , m_lista(lista)
    {
    }

    /// Asks, deletes the recipe, closes the view on top and shows the list anew. True when it was deleted.
    /// Throws ErroBanco.
    bool ExcluirDaTela(qint64 lngReceita);

private:
    const Banco &m_banco;
    Avisos &m_avisos;
    Telas &m_telas;
    PainelLista &m_lista;
};
