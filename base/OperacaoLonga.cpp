#include "base/OperacaoLonga.h"

#include "base/EventosPendentes.h"
#include "base/PainelMensagem.h"

#include <algorithm>

OperacaoLonga::OperacaoLonga(PainelMensagem &painel, const QString &texto, int maximo)
    : m_painel(painel)
    , m_maximo(maximo)
{
    m_painel.Mostrar(texto, maximo);
    DeixarEventosRodarem();
}

OperacaoLonga::~OperacaoLonga()
{
    Encerrar();
}

void OperacaoLonga::DefinirMaximo(int maximo)
{
    m_maximo = maximo;
    m_painel.DefinirMaximo(maximo);
}

void OperacaoLonga::DefinirValor(int valor)
{
    m_valor = std::min(valor, m_maximo);
    m_painel.DefinirValor(m_valor);
    DeixarEventosRodarem();
}

void OperacaoLonga::Encerrar()
{
    if (!m_aberta)
        return;
    m_aberta = false;
    m_painel.Esconder();
    m_espera.Encerrar();
    m_operacao.Encerrar();
}
