#include "packages/Lixeira.h"

#include "base/ArquivoDeTrabalho.h"
#include "base/ArquivoSeguro.h"
#include "base/EventosPendentes.h"
#include "base/Relogio.h"
#include "base/Texto.h"
#include "packages/Pacote.h"
#include "packages/Recipiente.h"
#include "packages/RecipienteEmFatias.h"
#include "store/Banco.h"
#include "store/Figuras.h"
#include "store/LeitorDeReceitas.h"
#include "store/ReceitaNaTela.h"

#include <QDir>
#include <QFileInfo>

#include <exception>
#include <optional>

namespace
{
constexpr auto kPasta = "Lixeira";
constexpr int kNivel = 1; ///< the cook waits for it: quick, not small
constexpr qsizetype kLetrasDoTitulo = 60;
constexpr qint64 kTextoComFiguras = 150'000'000; ///< beyond it recipes go without their pictures

/// What a file of any system may be called.
QString ParaNomeDeArquivo(const QString &nome)
{
    QString titulo;
    for (const QChar c : Aparar(SemControles(nome)).left(kLetrasDoTitulo))
        titulo += QString("/\\:*?\"<>|").contains(c) || !c.isPrint() ? QChar(u'_') : c;
    while (titulo.startsWith('.') || titulo.startsWith('~'))
        titulo.remove(0, 1);
    return titulo.isEmpty() ? QString("Sem nome") : titulo;
}

QByteArray LerTudo(const QString &caminho)
{
    QFile arquivo(caminho);
    if (!QFileInfo(caminho).isFile() || !arquivo.open(QIODevice::ReadOnly))
        return {};
    return arquivo.readAll();
}

/// The screen as a package carries a recipe.
Receita Rascunho(const ReceitaNaTela &tela)
{
    Receita receita;
    receita.Nome = tela.txtNome;
    receita.Classificacao = tela.cmbTipo;
    receita.Modo = tela.txtModo;
    receita.Porcoes = tela.txtPorcoes;
    receita.Preparo = tela.txtPreparo;
    receita.Tipo_Calorias = tela.optReceita ? "R" : tela.optPorcao ? "P" : "";
    receita.Calorias = tela.txtCalorias;
    receita.Tipo = tela.txtTipoRect;
    receita.Origem = tela.txtOrigem;
    receita.Observacao = tela.txtObs;
    receita.DadosFigura = tela.imgFigura.ENova() ? LerTudo(tela.imgFigura.Tag()) : tela.figuraAntiga;
    if (!receita.DadosFigura.isEmpty())
        receita.Figura = "F0000000.img"; // an import gives it a name of its own
    for (const QString &tag : tela.ingredientes) {
        const QStringList partes = tag.split(QChar(160));
        receita.Ingredientes.append({partes.value(2), partes.value(0), partes.value(1)});
    }
    return receita;
}

bool MostrarQueTrabalha()
{
    MostrarMudancas();
    return true;
}
} // namespace

/// One package on its way: its text in a file without a name, then packed into its place.
class Lixeira::Escrita
{
public:
    explicit Escrita(const Lixeira &lixeira)
        : m_lixeira(lixeira)
        , m_pasta(lixeira.m_banco.Caminho(kPasta))
        , m_texto(m_pasta)
    {
        if (!Disco::FazerPasta(m_pasta)) // a link in its place leads to somebody else's
            throw Disco::ErroArquivo(m_pasta, 0);
        m_texto.AbrirSemNome(m_pasta);
        Escrever(Pacote::EscreverCabecalho());
    }

    void Acrescentar(Receita receita)
    {
        if (m_quantas++ == 0)
            m_titulo = ParaNomeDeArquivo(receita.Nome);
        if (m_texto.Arquivo().pos() + receita.DadosFigura.size() > kTextoComFiguras)
            receita.DadosFigura.clear();
        Escrever(Pacote::EscreverReceita(receita));
    }

    void Concluir()
    {
        if (m_quantas == 0)
            return;
        if (m_quantas > 1)
            m_titulo += QString(" e mais %1").arg(m_quantas - 1);
        const QString quando = m_lixeira.m_relogio.Agora().toString("yyyy-MM-dd HH-mm-ss");
        ArquivoSeguro pacote(m_pasta + "/pacote", {.modelo = m_lixeira.m_banco.CaminhoDoLivro()});
        pacote.Abrir();
        quint32 soma = 0;
        if (RecipienteEmFatias::Compactar(m_texto.Arquivo(), pacote.Arquivo(), soma, MostrarQueTrabalha,
                                          kNivel) != Recipiente::kSucesso)
            return;
        constexpr int kMaisVezes = 1000;
        for (int vez = 1; vez < kMaisVezes; ++vez) {
            const QString nome =
                m_titulo + ' ' + quando + (vez > 1 ? QString(" (%1)").arg(vez) : QString()) + ".lr$";
            if (pacote.ConfirmarSeNovo(m_pasta + '/' + nome))
                break;
        }
        m_lixeira.Desbastar();
    }

private:
    void Escrever(const QByteArray &bytes)
    {
        if (m_texto.Arquivo().write(bytes) != bytes.size())
            throw Disco::ErroArquivo(m_pasta, 0);
    }

    const Lixeira &m_lixeira;
    QString m_pasta;
    ArquivoDeTrabalho m_texto;
    QString m_titulo;
    int m_quantas = 0;
};

void Lixeira::Guardar(const QList<qint64> &numeros) const noexcept
{
    try {
        Escrita escrita(*this);
        for (const qint64 numero : numeros) {
            std::optional<Receita> receita = BuscarReceita(m_banco, numero);
            if (!receita)
                continue;
            if (!receita->Figura.isEmpty())
                receita->DadosFigura = LerTudo(m_figuras.Caminho(receita->Figura));
            escrita.Acrescentar(*receita);
        }
        escrita.Concluir();
    } catch (const std::exception &) {
        // By promise nobody is told.
    }
}

void Lixeira::Guardar(const ReceitaNaTela &tela) const noexcept
{
    try {
        Escrita escrita(*this);
        escrita.Acrescentar(Rascunho(tela));
        escrita.Concluir();
    } catch (const std::exception &) {
        // As above.
    }
}

/// Removes the oldest packages, beyond the most that are kept.
void Lixeira::Desbastar() const
{
    const QDir pasta(m_banco.Caminho(kPasta));
    qsizetype quantos = 0;
    qint64 bytes = 0;
    for (const QFileInfo &pacote : pasta.entryInfoList({"*.lr$"}, QDir::Files, QDir::Time)) {
        bytes += pacote.size();
        if (++quantos > kMaisPacotes || bytes > kMaisBytes)
            QFile::remove(pacote.filePath());
    }
}
