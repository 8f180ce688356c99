#pragma once

#include "store/ErroBanco.h"

/// A save that was refused before it wrote anything: the text's first sentence names the field or the line.
class RecusaDeGravacao : public ErroBanco
{
public:
    enum class Onde { Porcoes, Calorias, Linha, Receita };

    /// @param linha position of the ingredient line, from 0; for Onde::Linha only
    RecusaDeGravacao(Onde onde, const QString &mensagem, qsizetype linha = -1)
        : ErroBanco(mensagem)
        , m_onde(onde)
        , m_linha(linha)
    {
    }
    Onde OndeFoi() const { return m_onde; }
    qsizetype Linha() const { return m_linha; }

private:
    Onde m_onde;
    qsizetype m_linha;
};
