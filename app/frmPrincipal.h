#pragma once

#include "browse/DetalheReceita.h"

#include <QWidget>

#include <memory>

class Abridor;
class AvisosQt;
class Avisos;
class Banco;
class BotaoImagem;
class EnvioEmail;
class Exclusao;
class Exportacao;
class Faixa;
class Figuras;
class Impressao;
class Impressoras;
class MensagemNaJanela;
class CopiaSeguranca;
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

/// Everything outside the program that the window needs; tests hand in their own.
struct Portas {
    Avisos &avisos;
    SeletorArquivos &seletor;
    Relogio &relogio;
    Sorteio &sorteio;
    Abridor &abridor;
    Impressoras &impressoras;
    class ClienteWeb &clienteWeb;
};

/**
 * The main window: an entrance hall. It makes the panels, wires them together in one place and offers its named
 * operations as one-line calls to the parts that do the work.
 */
class frmPrincipal : public QWidget, public DetalheReceita
{
    Q_OBJECT
public:
    frmPrincipal(const Banco &banco, const Figuras &figuras, const Portas &portas);
    ~frmPrincipal() override;

    void AbrirTela(const QString &request);
    void FecharTela();
    void AtualizarBotoes(const BotaoImagem *controle);
    bool LocalizarValorCombo(const QString &combo, const QString &valor) const;
    void CarregarDetalheReceita(qint64 lngReceita, bool BlnAbrir) override;
    void CarregarValoresDetalheReceita(quint8 bytTipo) override;
    void EsquecerLinhaEmEdicao() override;

    /// What another copy's import or a restore asks for: the list shows what the book holds now. Waits for the
    /// end of a dialog or long operation that is under way.
    void RecarregarLista();
    /// Comes to the front, out of the task bar if need be.
    void TrazerParaFrente();

    TelasDaJanela &Telas() { return *m_telas; }

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *objeto, QEvent *event) override;

private:
    void CriarBarra();
    void CriarFundo();
    void CriarPaineis();
    void CriarOperacoes();
    void LigarBotoes();
    void LigarPaineis();
    void OrdenarTabulacao();
    void PrimeiraAtivacao();
    void Imprimir();
    void Receita();
    BotaoImagem *Botao(const QString &nome) const;

    const Banco &m_banco;
    const Figuras &m_figuras;
    Portas m_portas;
    class NovidadesNaJanela *m_paineisDasNovidades = nullptr;

    Faixa *m_picToolBar = nullptr;
    QWidget *m_picFundo = nullptr;
    Faixa *m_picTitulo = nullptr;
    QLabel *m_lblTitulo = nullptr;
    QPushButton *m_lblFechar = nullptr;
    QLabel *m_lblEntrada = nullptr;
    QList<BotaoImagem *> m_botoes;

    PainelLista *m_lista = nullptr;
    PainelPesquisa *m_pesquisa = nullptr;
    PainelEditor *m_editor = nullptr;
    PainelCartao *m_cartao = nullptr;
    PainelNovidades *m_novidades = nullptr;
    MensagemNaJanela *m_picMsg = nullptr;

    std::unique_ptr<TelasDaJanela> m_telas;
    std::unique_ptr<Exclusao> m_exclusao;
    std::unique_ptr<Impressao> m_impressao;
    std::unique_ptr<EnvioEmail> m_email;
    std::unique_ptr<Exportacao> m_exportacao;
    std::unique_ptr<CopiaSeguranca> m_copia;
    bool m_ativada = false;
    bool m_recargaPendente = false;
};
