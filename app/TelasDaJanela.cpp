#include "app/TelasDaJanela.h"

#include "base/Alcance.h"
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

TelasDaJanela::TelasDaJanela(QWidget *picTitulo, QLabel *lblTitulo, std::function<void()> restaurarBotoes)
    : m_picTitulo(picTitulo)
    , m_lblTitulo(lblTitulo)
    , m_restaurarBotoes(std::move(restaurarBotoes))
{
}

Painel *TelasDaJanela::PainelDe(const QString &key) const
{
    if (key == "Listagem")
        return m_paineis.picLstReceitas;
    if (key == "Detalhe")
        return m_paineis.picDetReceita;
    if (key == "Pesquisa")
        return m_paineis.picPesReceita;
    return nullptr;
}

void TelasDaJanela::AjustarAlturas(int twips)
{
    m_paineis.picLstReceitas->DefinirAltura(twips);
    m_paineis.picDetReceita->DefinirAltura(twips);
}

int TelasDaJanela::AlturaDeTrabalho() const
{
    return m_paineis.picPesReceita->isHidden() ? kAlturaInteira : kAlturaComPesquisa;
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
    m_paineis.esconderNovidades();
    EmpilharTela(tela->title, tela->key);

    Painel *painel = PainelDe(tela->key);
    if (painel == m_paineis.picPesReceita)
        AjustarAlturas(kAlturaComPesquisa);
    painel->show(); // a view that is open already is not shown anew
    painel->raise();

    m_lblTitulo->setText(tela->title);
    m_lblTitulo->show();
    m_picTitulo->show();
    m_picTitulo->raise();
}

void TelasDaJanela::FecharTela()
{
    if (m_historico.Profundidade() == 0)
        return;
    const QString key = TelaAtual();
    m_historico.Baixar();

    if (Painel *painel = PainelDe(key); painel && !painel->isHidden())
        Esconder(*painel);
    MostrarTopo();
}

// Other views may lie before it: only the editor goes, with all that the history holds of it.
void TelasDaJanela::FecharDetalhe()
{
    if (TelaAtual() == "Detalhe") {
        FecharTela();
        return;
    }
    m_historico.Esquecer("Detalhe");
    if (!m_paineis.picDetReceita->isHidden())
        Esconder(*m_paineis.picDetReceita);
    MostrarTopo();
}

void TelasDaJanela::Esconder(Painel &painel)
{
    if (&painel == m_paineis.picPesReceita)
        AjustarAlturas(kAlturaInteira);
    painel.hide();
    painel.DefinirAltura(kAlturaInteira);
}

// After a view has closed: the title and the focus go to the newest one that is still open.
void TelasDaJanela::MostrarTopo()
{
    if (m_paineis.picLstReceitas->isHidden() && m_paineis.picDetReceita->isHidden() &&
        m_paineis.picPesReceita->isHidden()) {
        EsconderTudo();
        return;
    }
    while (m_historico.Profundidade() > 0 && PainelDe(TelaAtual())->isHidden())
        m_historico.Baixar();
    if (m_historico.Profundidade() == 0) {
        EsconderTudo();
        return;
    }
    if (TelaAtual() == "Pesquisa")
        AjustarAlturas(kAlturaComPesquisa);
    m_lblTitulo->setText(m_historico.Titulo(m_historico.Profundidade()));
    Alcance::Focar(*PainelDe(TelaAtual()));
}

void TelasDaJanela::EsconderTudo()
{
    m_paineis.picLstReceitas->hide();
    m_paineis.picDetReceita->hide();
    m_paineis.picPesReceita->hide();
    m_picTitulo->hide();
    m_historico.Esvaziar();
}
