#pragma once

#include "backup/JanelaDoBackup.h"
#include "base/Operacao.h"
#include "browse/DetalheReceita.h"
#include "packages/Exportacao.h"

#include <QList>
#include <QPoint>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class Abridor;
class Avisos;
class Banco;
class Barra;
class BotaoImagem;
class ClienteWeb;
class EnvioEmail;
class Exclusao;
class Faixa;
class Figuras;
class Fundo;
class Impressao;
class Impressoras;
class MensagemNaJanela;
class modBackup;
class Painel;
class PaineisDaJanela;
class PainelCartao;
class PainelEditor;
class PainelLista;
class PainelNovidades;
class PainelPesquisa;
class QLabel;
class QPushButton;
class Relogio;
class SeletorArquivos;
class Sorteio;
class TelasDaJanela;

/// What lies outside the program, and two settings of the build; tests hand in their own.
struct Portas {
    Avisos &avisos;
    SeletorArquivos &seletor;
    const Relogio &relogio;
    Sorteio &sorteio;
    Abridor &abridor;
    const Impressoras &impressoras;
    QString site; ///< the maker's site, scheme and host
};

/**
 * The main window: an entrance hall. It makes the panels, wires them together in one place and offers its
 * named operations as one-line calls to the parts that do the work.
 */
class frmPrincipal : public QWidget, public DetalheReceita, private ListaParaExportar, private JanelaDoBackup
{
    Q_OBJECT
public:
    /// The window's size, which never changes, in device-independent pixels.
    static QSize Tamanho();

    frmPrincipal(const Banco &banco, const Figuras &figuras, const Portas &portas,
                 std::unique_ptr<ClienteWeb> clienteWeb);
    ~frmPrincipal() override;

    /// Makes what the first painted look of the window does not show: the panels, the operations, the lit
    /// looks of the buttons; and finishes a restore that a crash cut off. Comes by itself right after the
    /// first paint; whoever needs the panels before calls it. Later calls do nothing.
    void Completar();

    void AbrirTela(const QString &request);
    void FecharTela();
    /// Every toolbar button gets its normal look, `controle` its lit one; nullptr lights none.
    void AtualizarBotoes(const BotaoImagem *controle);
    void CarregarDetalheReceita(qint64 lngReceita, bool BlnAbrir) override;
    void CarregarValoresDetalheReceita(quint8 bytTipo) override;
    void EsquecerLinhaEmEdicao() override;

    /// What another copy's import asks for: the list shows what the book holds now. Waits for the end of a
    /// dialog or long operation that is under way.
    void RecarregarLista();
    /// Shows an information box at the next quiet moment.
    void AvisarDepois(const QString &texto);
    /// Comes to the front, out of the task bar if need be.
    void TrazerParaFrente();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject *objeto, QEvent *event) override;

private:
    void CriarTitulo();
    void CriarPaineis();
    void CriarOperacoes();
    void LigarBotoes();
    void LigarPaineis();
    void Vigiar();
    void PrimeiraAtivacao();
    void NovaReceita();
    void ImportarPacote(const QString &caminho);
    void AbrirGuia();
    void Imprimir();
    void Minimizar();
    void Sair();
    void ConcluirRestauracao();
    void EvoluirLivro();
    /// Runs `tarefa` once nothing is under way, and reports what it throws.
    void QuandoLivre(std::function<void()> tarefa);

    bool ListaVisivel() const override;
    void MostrarLista() override;
    void DefinirAlturaDaLista(int twips) override;
    void EsconderTelas() override;
    void LivroRestaurado() override;

    const Banco &m_banco;
    const Figuras &m_figuras;
    Portas m_portas;

    Fundo *m_fundo;
    Barra *m_barra;
    Faixa *m_picTitulo = nullptr;
    QLabel *m_lblTitulo = nullptr;
    QPushButton *m_lblFechar = nullptr;
    PainelLista *m_lista = nullptr;
    PainelPesquisa *m_pesquisa = nullptr;
    PainelEditor *m_editor = nullptr;
    PainelCartao *m_cartao = nullptr;
    PainelNovidades *m_novidades = nullptr;
    MensagemNaJanela *m_picMsg = nullptr;

    std::unique_ptr<TelasDaJanela> m_telas;
    std::unique_ptr<PaineisDaJanela> m_paineisDasNovidades;
    std::unique_ptr<Exclusao> m_exclusao;
    std::unique_ptr<Impressao> m_impressao;
    std::unique_ptr<EnvioEmail> m_email;
    std::unique_ptr<Exportacao> m_exportacao;
    std::unique_ptr<modBackup> m_backup;
    std::unique_ptr<ClienteWeb> m_clienteWeb; ///< until the panel of the news takes it
    enum class Montagem { Moldura, EmAndamento, Completa };
    Montagem m_montagem = Montagem::Moldura;
    std::optional<Operacao> m_partida{Operacao::Tipo::Partida}; ///< until the panels are made
    bool m_ativada = false;
    bool m_recargaPedida = false;
    QPoint m_arrastadaEm; ///< where a drag took hold of the window
    bool m_arrastaSozinha = false;
};
