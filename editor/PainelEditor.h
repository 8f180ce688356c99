#pragma once

#include "base/CampoTexto.h"
#include "base/Painel.h"
#include "store/ReceitaNaTela.h"

class Avisos;
class Banco;
class CampoMemo;
class CampoTexto;
class ComboCompletavel;
class Figuras;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QScrollArea;
class QuadroFigura;
class QuadroIngredientes;
class QuadroValores;
class RecusaDeGravacao;
class Relogio;
class SeletorArquivos;

/**
 * The recipe editor, `picDetReceita`: a recipe's fields, its ingredient lines and its picture.
 *
 * It knows the book and its own controls; opening, closing and rolling its view is the main window's
 * business. The public operations throw ErroBanco and then leave every field as it was; the panel's own
 * buttons report what they throw.
 */
class PainelEditor : public Painel
{
    Q_OBJECT
public:
    /// Full height, and the height that is left while the search view is open, in twips.
    static constexpr int kAltura = 6540;
    static constexpr int kAlturaComPesquisa = 3780;
    static constexpr int kLargura = 9330;
    /// Characters of `txtNome`.
    static constexpr int kLimiteNome = 100;

    PainelEditor(const Banco &banco, const Figuras &figuras, Avisos &avisos, SeletorArquivos &seletor,
                 const Relogio &relogio, QWidget *parent = nullptr);
    ~PainelEditor() override;

    /// An empty recipe: lists filled afresh, every field empty, no picture, no lines, the ingredients' frame
    /// in front, the focus on the name (at once, or when the panel is shown).
    void NovaReceita();
    /// Refills the lists of the combo boxes: 0 types, ingredients and units; 1 ingredients and units; any
    /// other value does nothing. What stands in the fields stays.
    void CarregarValoresDetalheReceita(quint8 bytTipo);
    /// Fills the controls with a stored recipe; a recipe with a readable picture shows the picture's frame.
    /// The views and the panel's height are left alone.
    void Carregar(qint64 lngReceita);
    /// Clears the three fields of an ingredient line and forgets the line being changed.
    void EsquecerLinhaEmEdicao();
    /// Checks the fields, writes the recipe and says receitaSalva(); a refusal is shown and the field to mend
    /// gets the focus.
    void Salvar();
    /// Says rascunhoAbandonado() if something stands on the screen that was typed and never saved. Before
    /// another recipe takes its place it does so itself; the program's end is to be told.
    void EntregarRascunho();
    /// The values of all controls, as they stand.
    ReceitaNaTela DadosDaTela() const;

    /**
     * Takes the fields off the screen, or puts them back. Call it with false before another widget covers the
     * panel (the recipe card does): covered fields would still answer to access keys and the Tab key.
     */
    void MostrarCampos(bool mostrar);

    QSize sizeHint() const override;

signals:
    /// The recipe on screen is in the book.
    void receitaSalva();
    /// What stood here unsaved, the half-typed line included, is about to go.
    void rascunhoAbandonado(const ReceitaNaTela &tela);
    /// The user wants this stored recipe deleted; nothing was asked or done yet.
    void exclusaoPedida(qint64 lngReceita);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void Montar();
    void Ligar();
    void DefinirOrdemDoTab();
    void Preencher(const ReceitaNaTela &tela);
    void MostrarFoco();
    void MostrarQuadro();
    ReceitaNaTela Rascunho() const;
    bool Validar();
    /// Shows why a save was refused and puts the focus where it is to be mended.
    void MostrarRecusa(const RecusaDeGravacao &recusa);
    void MostrarNumero(const QString &numero);
    bool Recusar(const QString &texto, QWidget &campo);
    void AtualizarRolagem();

    const Banco &m_banco;
    const Figuras &m_figuras;
    Avisos &m_avisos;
    const Relogio &m_relogio;
    bool m_blnApagandoCombo = false;
    bool m_focarAoMostrar = false;
    ReceitaNaTela m_salvo; ///< the screen as it was filled or saved last

    QScrollArea *m_rolagem;
    QWidget *m_conteudo;
    QLineEdit *m_txtNroReceita;
    QLineEdit *m_txtTipoRect;
    QLineEdit *m_txtOrigem;
    QLabel *m_lblOrigem;
    CampoTexto *m_txtNome;
    ComboCompletavel *m_cmbTipo;
    QGroupBox *m_fraModo;
    CampoMemo *m_txtModo;
    QGroupBox *m_FraInformacoes;
    CampoMemo *m_txtObs;
    QuadroValores *m_fraValores;
    QRadioButton *m_optIngredientes;
    QRadioButton *m_optImagem;
    QuadroIngredientes *m_fraIngredientes;
    QuadroFigura *m_fraFigura;
    QPushButton *m_cmdSalvarRct;
    QPushButton *m_cmdExcluirRct;
};
