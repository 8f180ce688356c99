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
#include "packages/Base64Class.h"
#include "packages/MensagemPacote.h"
#include "packages/Pacote.h"
#include "packages/Recipiente.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"
#include "store/Figuras.h"
#include "store/LeitorDeReceitas.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <stdexcept>

namespace
{
constexpr auto kTextoDoPacote = "PacoteReceitas.lrs"; ///< the import's work file is spelled without the "s"
constexpr auto kPacote = "PacoteReceita.lr$";
constexpr auto kMensagem = "~temppct.eml";
constexpr int kNivel = 9;
constexpr qint64 kFatia = 256 * 1024;
constexpr int kFatiasPorGravacao = 32;
constexpr int kAlturaDaLista = 6540;
/// Recipes of this kind and above may not be passed on in packages; by e-mail (kind 3) they may.
constexpr double kTipoReservado = 2;

/// Lets the window live; false once the program is ending.
bool Respirar()
{
    DeixarEventosRodarem();
    return !Encerrando();
}

[[noreturn]] void Falhar(const QString &texto)
{
    throw std::runtime_error(texto.toStdString());
}

[[noreturn]] void FalharAoGravar(const QString &caminho)
{
    Falhar("Não foi possível gravar o arquivo:\r\n" + caminho +
           "\r\n\r\nVerifique o espaço em disco e a permissão de escrita na pasta.");
}

/// A file that is being written, and the window that lives on meanwhile.
class Escritor
{
public:
    Escritor(QFile &arquivo, const QString &caminho)
        : m_arquivo(arquivo)
        , m_caminho(caminho)
    {
    }

    void Gravar(const QByteArray &bytes)
    {
        if (m_arquivo.write(bytes) != bytes.size())
            FalharAoGravar(m_caminho);
    }
    /// The bytes of a picture or package as base64; false, with nothing written, when there are none: an
    /// empty file and one that cannot be opened are alike.
    static bool Abrir(QFile &origem)
    {
        return QFileInfo(origem.fileName()).isFile() && origem.open(QIODevice::ReadOnly) && origem.size() > 0;
    }
    void GravarBase64(QFile &origem)
    {
        CodificadorBase64 codificador;
        for (QByteArray bloco = origem.read(kFatia); !bloco.isEmpty() && !Encerrando(); bloco = origem.read(kFatia)) {
            Gravar(codificador.Passar(bloco));
            if (++m_fatias % kFatiasPorGravacao == 0)
                Disco::IniciarGravacao(m_arquivo);
            DeixarEventosRodarem();
        }
        if (origem.error() != QFileDevice::NoError)
            Falhar("Não foi possível ler o arquivo:\r\n" + origem.fileName());
        Gravar(codificador.Terminar());
    }

private:
    QFile &m_arquivo;
    QString m_caminho;
    int m_fatias = 0;
};

bool PodeIrNoPacote(const ReceitaSelecionada &receita)
{
    bool ok = false;
    const double tipo = NumeroDoTexto(receita.Tag, &ok);
    return Int(ok ? tipo : Val(receita.Tag)) < kTipoReservado;
}

// Name and method always hold text in a sound book; a NULL there ends the export.
void ExigirTexto(const QString &valor, const QString &campo, qint64 lngReceita)
{
    if (valor.isNull())
        Falhar("A receita número " + QString::number(lngReceita) + " está sem " + campo +
               " e não pode ser exportada.");
}

Receita LerParaOPacote(const Banco &banco, const RecordSet &rs)
{
    Receita receita = ReceitaDaLinha(rs);
    ExigirTexto(receita.Nome, "nome", receita.id_receitas);
    ExigirTexto(receita.Modo, "modo de preparar", receita.id_receitas);
    receita.Ingredientes = LerLinhas(banco, receita.id_receitas);
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

    const QString pacote = m_banco.Caminho(kPacote);
    const QString mensagem = m_banco.Caminho(kMensagem);
    QString nomes;
    {
        ArquivoDeTrabalho texto(m_banco.Caminho(kTextoDoPacote));
        try {
            texto.Abrir();
        } catch (const Disco::ErroArquivo &) {
            FalharAoGravar(texto.Caminho());
        }
        nomes = GravarTexto(texto.Arquivo(), texto.Caminho(), rs, operacao);
        if (Encerrando())
            return;
        // Kept on purpose: the result is not looked at, and the message is made of whatever package there is;
        // but never of one of another day, which a full disk leaves in its place.
        int erro = 0;
        if (!Recipiente::CompactarArquivo(texto.Caminho(), pacote, kNivel, erro, true, Respirar,
                                          m_banco.CaminhoDoLivro()) &&
            QFileInfo(pacote).isFile() && QFileInfo(pacote).size() > 0 && !Encerrando())
            FalharAoGravar(pacote);
        if (Encerrando())
            return;
        operacao.Avancar();
    }

    try {
        ArquivoSeguro arquivo(mensagem, {.modelo = m_banco.CaminhoDoLivro()});
        arquivo.Abrir();
        Escritor escritor(arquivo.Arquivo(), mensagem);
        escritor.Gravar(InicioDaMensagemPacote(nomes, m_site));
        if (QFile anexo(pacote); Escritor::Abrir(anexo))
            escritor.GravarBase64(anexo);
        if (Encerrando())
            return;
        escritor.Gravar(FimDaMensagemPacote());
        operacao.DefinirValor(operacao.Maximo());
        arquivo.Confirmar();
    } catch (const Disco::ErroArquivo &) {
        FalharAoGravar(mensagem);
    }
    operacao.Encerrar();
    espera.Encerrar();

    if (!Encerrando())
        m_abridor.AbrirMensagem(mensagem, [&avisos = m_avisos, pacote, mensagem] {
            avisos.Avisar("Nenhum programa de email abriu a mensagem.\r\n\r\nO pacote está pronto, no arquivo:\r\n" +
                              pacote + "\r\n\r\nAnexe-o a um email. A mensagem inteira está em:\r\n" + mensagem,
                          Avisos::Icone::Informacao);
        });
}

QString Exportacao::GravarTexto(QFile &arquivo, const QString &caminho, RecordSet rs,
                                OperacaoLonga &operacao) const
{
    Escritor escritor(arquivo, caminho);
    escritor.Gravar(Pacote::EscreverCabecalho());
    QString nomes;
    for (; !rs.Eof() && !Encerrando(); rs.MoveNext()) {
        operacao.Avancar();
        const Receita receita = LerParaOPacote(m_banco, rs);
        QFile figura(receita.Figura.isEmpty() ? QString() : m_figuras.Caminho(receita.Figura));
        const bool comFigura = !figura.fileName().isEmpty() && Escritor::Abrir(figura);
        escritor.Gravar(Pacote::EscreverAntesDaFigura(receita, comFigura));
        const qint64 base64 = comFigura ? figura.size() / 3 * 4 : 0;
        if (arquivo.pos() + base64 > Pacote::kMaiorTexto)
            Falhar("As receitas selecionadas, com suas figuras, são grandes demais para um pacote. "
                   "Selecione menos receitas.");
        if (comFigura)
            escritor.GravarBase64(figura);
        escritor.Gravar(Pacote::EscreverDepoisDaFigura(receita, comFigura));
        nomes += "<LI>" + Aparar(SemControles(receita.Nome));
    }
    return nomes;
}
