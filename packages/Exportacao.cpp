#include "packages/Exportacao.h"

#include "base/Abridor.h"
#include "base/ArquivoDeTrabalho.h"
#include "base/ArquivoSeguro.h"
#include "base/EventosPendentes.h"
#include "base/Numero.h"
#include "base/Operacao.h"
#include "base/OperacaoLonga.h"
#include "base/Protegido.h"
#include "base/Telas.h"
#include "base/Texto.h"
#include "packages/MensagemPacote.h"
#include "packages/Pacote.h"
#include "packages/Recipiente.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"
#include "store/Figuras.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <cerrno>
#include <stdexcept>

namespace
{
constexpr auto kTextoDoPacote = "PacoteReceitas.lrs"; ///< the import's work file is spelled without the "s"
constexpr auto kPacote = "PacoteReceita.lr$";
constexpr auto kMensagem = "~temppct.eml";
constexpr int kNivel = 9;
constexpr int kAlturaDaLista = 6540;
/// Recipes of this kind and above may not be passed on in packages; by e-mail (kind 3) they may.
constexpr double kTipoReservado = 2;

[[noreturn]] void Falhar(const QString &texto)
{
    throw std::runtime_error(texto.toStdString());
}

void Escrever(ArquivoDeTrabalho &trabalho, const QByteArray &bytes)
{
    errno = 0;
    if (trabalho.Arquivo().write(bytes) != bytes.size())
        throw Disco::ErroArquivo(trabalho.Caminho(), errno);
}

/// The bytes of a picture or package; an empty file and one that cannot be read are alike: nothing.
QByteArray LerParaBase64(const QString &caminho)
{
    QFile arquivo(caminho);
    if (!QFileInfo(caminho).isFile() || !arquivo.open(QIODevice::ReadOnly))
        return {};
    return arquivo.readAll();
}

bool PodeIrNoPacote(const ReceitaSelecionada &receita)
{
    bool ok = false;
    const double tipo = NumeroDoTexto(receita.Tag, &ok);
    return Int(ok ? tipo : Val(receita.Tag)) < kTipoReservado;
}

QList<Pacote::Ingrediente> LerIngredientes(const Banco &banco, qint64 lngReceita)
{
    QList<Pacote::Ingrediente> linhas;
    for (RecordSet rs = banco.AbrirRecordset(Comandos::SqlIngredientes(lngReceita)); !rs.Eof(); rs.MoveNext())
        linhas.append({rs.Texto(u"Ingrediente"), rs.Texto(u"Quantidade"), rs.Texto(u"Unidade")});
    return linhas;
}

// Name and method always hold text in a sound book; a NULL there ends the export.
QString TextoObrigatorio(const RecordSet &rs, QStringView campo, qint64 lngReceita)
{
    if (rs.Valor(campo).isNull())
        Falhar("A receita número " + QString::number(lngReceita) + " está sem " +
               (campo == u"Nome" ? "nome" : "modo de preparar") + " e não pode ser exportada.");
    return rs.Texto(campo);
}

Pacote::Receita LerReceita(const Banco &banco, const Figuras &figuras, const RecordSet &rs)
{
    const qint64 lngReceita = rs.Valor(u"id_receitas").toLongLong();
    Pacote::Receita receita;
    receita.Nome = TextoObrigatorio(rs, u"Nome", lngReceita);
    receita.Classificacao = rs.Texto(u"Classificacao");
    receita.Modo = TextoObrigatorio(rs, u"Modo", lngReceita);
    receita.Porcoes = rs.Texto(u"Porcoes");
    receita.Preparo = rs.Texto(u"Preparo");
    receita.Tipo_Calorias = rs.Texto(u"Tipo_Calorias");
    receita.Calorias = rs.Texto(u"Calorias");
    receita.Tipo = rs.Texto(u"Tipo");
    receita.Origem = rs.Texto(u"Origem");
    receita.Observacao = rs.Texto(u"Observacao");
    receita.Figura = rs.Texto(u"Figura");
    if (!receita.Figura.isEmpty())
        receita.DadosFigura = LerParaBase64(figuras.Caminho(receita.Figura));
    receita.Ingredientes = LerIngredientes(banco, lngReceita);
    return receita;
}
} // namespace

Exportacao::Exportacao(const Banco &banco, const Figuras &figuras, Avisos &avisos, PainelMensagem &painel,
                       Telas &telas, ListaParaExportar &lista, Abridor &abridor, const QString &site)
    : m_banco(banco)
    , m_figuras(figuras)
    , m_avisos(avisos)
    , m_painel(painel)
    , m_telas(telas)
    , m_lista(lista)
    , m_abridor(abridor)
    , m_site(site)
{
}

void Exportacao::imgTransmit_Click(const QList<ReceitaSelecionada> &selecionadas)
{
    const Operacao operacao(Operacao::Tipo::Exportacao);
    Proteger(m_avisos, [&] {
        if (ExigirLista())
            Exportar(selecionadas);
    });
}

bool Exportacao::ExigirLista()
{
    if (m_telas.TelaAtual() == "Listagem")
        return true;
    if (m_lista.ListaVisivel()) {
        m_telas.AbrirTela("ListaReceitas");
        m_lista.DefinirAlturaDaLista(kAlturaDaLista);
    } else {
        m_lista.MostrarLista();
    }
    m_avisos.Avisar("Faça a Seleção das Receitas que Deseja Enviar, pela Lista de Receitas Cadastradas!",
                    Avisos::Icone::Parada);
    return false;
}

void Exportacao::Exportar(const QList<ReceitaSelecionada> &selecionadas)
{
    QList<qint64> numeros;
    for (const ReceitaSelecionada &receita : selecionadas)
        if (PodeIrNoPacote(receita))
            numeros += receita.lngReceita;
    if (numeros.isEmpty()) {
        m_avisos.Avisar("Selecione pelo menos 1 (uma) Receita para criar o Pacote!",
                        Avisos::Icone::Informacao);
        return;
    }
    if (numeros.size() > Pacote::kMaisReceitas)
        Falhar("As receitas selecionadas são muitas para um pacote. Selecione menos receitas.");

    EsperaLonga espera;
    DeixarEventosRodarem();
    const RecordSet rs = m_banco.AbrirRecordset(Comandos::SqlReceitasDoPacote(numeros));
    OperacaoLonga operacao(m_painel, "Gerando Pacote de Receitas...", rs.RecordCount() + 2);

    ArquivoDeTrabalho texto(m_banco.Caminho(kTextoDoPacote));
    const QString pacote = m_banco.Caminho(kPacote);
    const QString mensagem = m_banco.Caminho(kMensagem);

    const QString nomes = GravarTexto(texto, rs, operacao);
    if (Encerrando())
        return;
    // Kept on purpose: the result is not looked at, and the message is made of whatever package there is.
    int erro = 0;
    Recipiente::CompactarArquivo(texto.Caminho(), pacote, kNivel, erro, true, {}, m_banco.CaminhoDoLivro());
    operacao.Avancar();
    texto.Remover();

    ArquivoSeguro arquivo(mensagem, {.modelo = m_banco.CaminhoDoLivro()});
    arquivo.Abrir();
    arquivo.Escrever(MensagemPacote(nomes, LerParaBase64(pacote), m_site));
    operacao.DefinirValor(operacao.Maximo());
    arquivo.Confirmar();
    operacao.Encerrar();
    espera.Encerrar();

    if (!Encerrando())
        m_abridor.AbrirArquivo(mensagem);
}

QString Exportacao::GravarTexto(ArquivoDeTrabalho &texto, RecordSet rs, OperacaoLonga &operacao) const
{
    texto.Abrir();
    Escrever(texto, Pacote::EscreverCabecalho());
    QString nomes;
    for (; !rs.Eof() && !Encerrando(); rs.MoveNext()) {
        operacao.Avancar();
        const Pacote::Receita receita = LerReceita(m_banco, m_figuras, rs);
        Escrever(texto, Pacote::EscreverReceita(receita));
        if (texto.Arquivo().pos() > Pacote::kMaiorTexto)
            Falhar("As receitas selecionadas, com suas figuras, são grandes demais para um pacote. "
                   "Selecione menos receitas.");
        nomes += "<LI>" + Aparar(SemControles(receita.Nome));
    }
    return nomes;
}
