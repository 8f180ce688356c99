#include "print/Impressao.h"

#include "base/Avisos.h"
#include "base/EventosPendentes.h"
#include "base/Operacao.h"
#include "base/OperacaoLonga.h"
#include "base/Ponteiro.h"
#include "print/Impressoras.h"
#include "print/ImprimirReceita.h"
#include "print/Superficie.h"
#include "print/TrabalhoImpressao.h"
#include "print/frmImpressao.h"

QString HostDoSite(const QString &site)
{
    const qsizetype esquema = site.indexOf(QStringLiteral("://"));
    QString host = esquema < 0 ? site : site.mid(esquema + 3);
    while (host.endsWith(u'/'))
        host.chop(1);
    return host;
}

Impressao::Impressao(const Banco &banco, const Figuras &figuras, Avisos &avisos, PainelMensagem &painel,
                     const Impressoras &impressoras, const QString &site,
                     std::function<QString(qint64)> nomeDaReceita, QWidget *janela)
    : m_banco(banco)
    , m_figuras(figuras)
    , m_avisos(avisos)
    , m_painel(painel)
    , m_impressoras(impressoras)
    , m_site(HostDoSite(site))
    , m_nomeDaReceita(std::move(nomeDaReceita))
    , m_janela(janela)
{
}

void Impressao::ImprimirSelecionadas(const QList<qint64> &receitas)
{
    if (receitas.isEmpty()) {
        m_avisos.Avisar(QStringLiteral("Selecione pelo menos 1 (uma) Receita para Imprimir!"),
                        Avisos::Icone::Informacao);
        return;
    }
    if (EscolherImpressora())
        ImprimirTrabalho(receitas, QStringLiteral("Efetuando Impressão das Receitas..."));
}

void Impressao::ImprimirDaTela(qint64 lngReceita)
{
    if (lngReceita <= 0) {
        RecusarNaPesquisa();
        return;
    }
    if (EscolherImpressora())
        ImprimirTrabalho({lngReceita}, QString());
}

void Impressao::ImprimirDoMenu(qint64 lngReceita)
{
    if (EscolherImpressora())
        ImprimirTrabalho({lngReceita}, QStringLiteral("Efetuando Impressão da Receita..."));
}

void Impressao::RecusarNaPesquisa()
{
    m_avisos.Avisar(QStringLiteral("É Necessário ter a Receita Aberta na Tela para Executar a Impressão!"),
                    Avisos::Icone::Exclamacao);
}

bool Impressao::EscolherImpressora()
{
    const Operacao operacao(Operacao::Tipo::Impressao);
    AtualizarAtual();
    frmImpressao dialogo(m_impressoras, *m_atual, m_janela);
    dialogo.exec();
    m_indice = dialogo.Indice();
    m_confirmada |= m_indice >= 0;
    return m_indice >= 0 && !Encerrando();
}

void Impressao::AtualizarAtual()
{
    const EsperaLonga espera;
    try {
        if (m_confirmada && m_impressoras.Nomes().contains(m_atual->DeviceName))
            return;
        m_atual = m_impressoras.Padrao();
        m_confirmada = false;
    } catch (const ErroImpressao &) { // the dialog says in its list that there is no answer
        if (!m_atual)
            m_atual.emplace();
    }
}

ErroImpressao Impressao::ReceitaSumida(qint64 lngReceita) const
{
    const QString nome = m_nomeDaReceita ? m_nomeDaReceita(lngReceita) : QString();
    const QString qual = nome.isEmpty() ? QStringLiteral("nº %1").arg(lngReceita) : u'"' + nome + u'"';
    return ErroImpressao(
        QStringLiteral("A Receita %1 não está mais no Livro. O Documento não foi Impresso!").arg(qual));
}

void Impressao::ImprimirTrabalho(const QList<qint64> &receitas, const QString &textoDoPainel)
{
    const Operacao impressao(Operacao::Tipo::Impressao);
    try {
        const EsperaLonga espera;
        std::optional<OperacaoLonga> operacao;
        if (!textoDoPainel.isEmpty())
            operacao.emplace(m_painel, textoDoPainel, static_cast<int>(receitas.size()));
        TrabalhoImpressao trabalho(m_impressoras.Criar(
            *m_atual, receitas.size() == 1 ? QStringLiteral("Receita") : QStringLiteral("Receitas")));
        for (qsizetype i = 0; i < receitas.size(); ++i) {
            if (i > 0)
                trabalho.ObjPrint().NewPage();
            if (!ImprimirReceita(trabalho.ObjPrint(), receitas[i], m_banco, m_figuras, m_site))
                throw ReceitaSumida(receitas[i]);
            if (operacao)
                operacao->Avancar();
            if (Encerrando())
                return;
        }
        trabalho.Terminar();
    } catch (const ErroImpressao &erro) {
        m_avisos.Avisar(erro.Mensagem(), Avisos::Icone::Parada);
        return;
    }
    m_avisos.Avisar(QStringLiteral("Documento Impresso com Sucesso"), Avisos::Icone::Nenhum);
}
