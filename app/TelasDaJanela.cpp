#include "app/TelasDaJanela.h"

#include "base/Painel.h"

#include <QLabel>

namespace
{
struct Tela {
    const char *request;
    const char *key;
    const char *title;
};

// The crossing in the middle is intended: a new recipe is asked for as "DetalheReceitas", the change of a
// recipe as "NovaReceita".
constexpr Tela kTelas[] = {
    {"ListaReceitas", "Listagem", " Receitas Cadastradas"},
    {"DetalheReceitas", "Detalhe", " Nova Receita "},
    {"NovaReceita", "Detalhe", " Alteração da Receita "},
    {"PesquisaReceitas", "Pesquisa", " Pesquisa de Receitas "},
};
} // namespace

TelasDaJanela::TelasDaJanela(const ControlesDasTelas &controles, std::function<void()> restaurarBotoes)
    : m_controles(controles)
    , m_restaurarBotoes(std::move(restaurarBotoes))
{
}

Painel *TelasDaJanela::PainelDe(const QString &key) const
{
    if (key == "Listagem")
        return m_controles.picLstReceitas;
    if (key == "Detalhe")
        return m_controles.picDetReceita;
    if (key == "Pesquisa")
        return m_controles.picPesReceita;
    return nullptr;
}

void TelasDaJanela::AjustarAlturas(int twips)
{
    m_controles.picLstReceitas->DefinirAltura(twips);
    m_controles.picDetReceita->DefinirAltura(twips);
}

int TelasDaJanela::AlturaDeTrabalho() const
{
    return m_controles.picPesReceita->isVisible() ? kAlturaComPesquisa : kAlturaInteira;
}

QString TelasDaJanela::TelaAtual() const
{
    return m_historico.Chave(m_historico.Profundidade());
}

void TelasDaJanela::EmpilharTela(const QString &title, const QString &key)
{
    m_historico.Empilhar(title, key);
}

void TelasDaJanela::AbrirTela(const QString &request)
{
    const auto *tela = std::find_if(std::begin(kTelas), std::end(kTelas),
                                    [&request](const Tela &t) { return request == t.request; });
    if (tela == std::end(kTelas))
        return;
    m_controles.picWeb->hide();
    m_controles.WbBsr1->hide();
    EmpilharTela(tela->title, tela->key);

    Painel *painel = PainelDe(tela->key);
    if (painel == m_controles.picPesReceita)
        AjustarAlturas(kAlturaComPesquisa);
    painel->show(); // a view that is open already is not shown anew
    painel->raise();

    m_controles.lblTitulo->setText(tela->title);
    m_controles.lblTitulo->show();
    m_controles.picTitulo->show();
    m_controles.picTitulo->raise();
}

void TelasDaJanela::FecharTela()
{
    if (m_historico.Profundidade() == 0)
        return;
    const QString key = TelaAtual();
    m_historico.Baixar();

    if (Painel *painel = PainelDe(key); painel && painel->isVisible()) {
        if (painel == m_controles.picPesReceita)
            AjustarAlturas(kAlturaInteira);
        painel->hide();
        painel->DefinirAltura(kAlturaInteira);
    }

    if (!m_controles.picLstReceitas->isVisible() && !m_controles.picDetReceita->isVisible() &&
        !m_controles.picPesReceita->isVisible()) {
        EsconderTudo();
        return;
    }
    while (m_historico.Profundidade() > 0 && !PainelDe(TelaAtual())->isVisible())
        m_historico.Baixar();
    if (m_historico.Profundidade() == 0) {
        EsconderTudo();
        return;
    }
    if (TelaAtual() == "Pesquisa")
        AjustarAlturas(kAlturaComPesquisa);
    m_controles.lblTitulo->setText(m_historico.Titulo(m_historico.Profundidade()));
}

void TelasDaJanela::EsconderTudo()
{
    m_controles.picLstReceitas->hide();
    m_controles.picDetReceita->hide();
    m_controles.picPesReceita->hide();
    m_controles.picTitulo->hide();
    m_historico.Esvaziar();
}
