#pragma once

#include <QString>

/**
 * The panel that a long operation shows (picMsg with lblMensagem and PrgrssBrMsg), as those parts see it
 * that know no window. Use it through OperacaoLonga, whose life is the panel's life.
 */
class PainelMensagem
{
public:
    virtual ~PainelMensagem() = default;
    /// Brings the panel to the front with this text; the bar runs from 0 to `maximo` and stands at 0.
    virtual void Mostrar(const QString &texto, int maximo) = 0;
    virtual void DefinirMaximo(int maximo) = 0;
    virtual void DefinirValor(int valor) = 0;
    virtual void Esconder() = 0;
};
