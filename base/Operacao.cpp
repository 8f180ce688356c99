#include "base/Operacao.h"

#include "base/EventosPendentes.h"

#include <QCoreApplication>
#include <QPointer>

#include <algorithm>
#include <list>
#include <utility>
#include <vector>

namespace
{
/// What becomes of the user's wishes while an operation runs.
enum class Regra { Espera, Recusa, Deixa };

Regra RegraDe(Operacao::Tipo tipo)
{
    switch (tipo) {
    case Operacao::Tipo::Preenchimento:
    case Operacao::Tipo::Rolagem:
        return Regra::Espera;     // over in a moment
    case Operacao::Tipo::Partida: // what is asked for completes the window first
    case Operacao::Tipo::Visita:
    case Operacao::Tipo::Menu:
        return Regra::Deixa;
    default:
        return Regra::Recusa;
    }
}

struct Pendente {
    QPointer<QObject> dono;
    std::function<void()> acao;
    bool doUsuario;
};

std::vector<std::pair<const Operacao *, Operacao::Tipo>> abertas; // the innermost last
std::list<Pendente> pendentes;
bool despachoMarcado = false;

/// The rule of the innermost operation that has one; what lets the user through does not count.
Regra RegraAtual()
{
    // At the start the list opens unasked: who begins at once does not wait for it.
    const bool partida = Operacao::EmAndamento(Operacao::Tipo::Partida);
    for (auto aberta = abertas.rbegin(); aberta != abertas.rend(); ++aberta)
        if (const Regra regra = RegraDe(aberta->second);
            regra != Regra::Deixa && !(partida && regra == Regra::Espera))
            return regra;
    return Regra::Deixa;
}

bool PodeRodar(const Pendente &pendente)
{
    return pendente.doUsuario ? RegraAtual() == Regra::Deixa : abertas.empty();
}

void Despachar()
{
    despachoMarcado = false;
    while (!Encerrando()) {
        pendentes.remove_if([](const Pendente &pendente) { return !pendente.dono; });
        const auto proximo = std::find_if(pendentes.begin(), pendentes.end(), PodeRodar);
        if (proximo == pendentes.end())
            return; // what still waits is looked at again when the next operation ends
        const std::function<void()> acao = std::move(proximo->acao);
        pendentes.erase(proximo);
        acao();
    }
    pendentes.clear();
}

void MarcarDespacho()
{
    if (despachoMarcado || pendentes.empty() || !QCoreApplication::instance())
        return;
    despachoMarcado = true;
    QMetaObject::invokeMethod(QCoreApplication::instance(), &Despachar, Qt::QueuedConnection);
}

void Guardar(QObject *dono, std::function<void()> acao, bool doUsuario)
{
    if (doUsuario)
        pendentes.remove_if(
            [dono](const Pendente &pendente) { return pendente.doUsuario && pendente.dono == dono; });
    pendentes.push_back({dono, std::move(acao), doUsuario});
    if (PodeRodar(pendentes.back()))
        MarcarDespacho();
}
} // namespace

Operacao::Operacao(Tipo tipo)
    : m_tipo(tipo)
{
    abertas.emplace_back(this, tipo);
}

Operacao::~Operacao()
{
    Encerrar();
}

void Operacao::Encerrar()
{
    if (!std::exchange(m_aberta, false))
        return;
    std::erase(abertas, std::pair<const Operacao *, Tipo>(this, m_tipo));
    MarcarDespacho();
}

bool Operacao::EmAndamento()
{
    return !abertas.empty();
}

bool Operacao::EmAndamento(Tipo tipo)
{
    return std::any_of(abertas.begin(), abertas.end(),
                       [tipo](const auto &aberta) { return aberta.second == tipo; });
}

bool Operacao::EmAndamentoAlemDe(Tipo tipo)
{
    return std::any_of(abertas.begin(), abertas.end(),
                       [tipo](const auto &aberta) { return aberta.second != tipo; });
}

bool Operacao::PodeComecar()
{
    return RegraAtual() == Regra::Deixa;
}

bool Operacao::Pedir(QObject *dono, std::function<void()> comando)
{
    switch (RegraAtual()) {
    case Regra::Deixa:
        comando();
        return true;
    case Regra::Espera:
        Guardar(dono, std::move(comando), true);
        return true;
    case Regra::Recusa:
        break;
    }
    return false;
}

void Operacao::QuandoLivre(QObject *dono, std::function<void()> tarefa)
{
    Guardar(dono, std::move(tarefa), false);
}
