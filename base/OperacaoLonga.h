#pragma once

#include "base/Operacao.h"
#include "base/Ponteiro.h"

#include <QString>

class PainelMensagem;

/**
 * A long operation: while it lives the message panel is shown and the pointer is the hourglass; its end,
 * on success, failure or exception, hides the panel and gives the pointer back.
 */
class OperacaoLonga
{
public:
    OperacaoLonga(PainelMensagem &painel, const QString &texto, int maximo);
    ~OperacaoLonga();
    OperacaoLonga(const OperacaoLonga &) = delete;
    OperacaoLonga &operator=(const OperacaoLonga &) = delete;

    void DefinirMaximo(int maximo);
    /// Sets the bar, at most to its maximum, and lets the window live for a moment.
    void DefinirValor(int valor);
    void Avancar(int passo = 1) { DefinirValor(m_valor + passo); }
    int Valor() const { return m_valor; }
    int Maximo() const { return m_maximo; }
    /// Hides the panel and gives the pointer back now, before a final message box. Idempotent.
    void Encerrar();

private:
    PainelMensagem &m_painel;
    Operacao m_operacao{Operacao::Tipo::Longa};
    EsperaLonga m_espera;
    int m_valor = 0;
    int m_maximo = 0;
    bool m_aberta = true;
};
