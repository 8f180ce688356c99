#pragma once

#include <QWidget>

class Avisos;
class Banco;
class CanvasCartao;
class DetalheReceita;
class Painel;
class QLabel;
class QPushButton;
class QScrollBar;
class Telas;

/**
 * The recipe card (`picView`): a recipe laid out as a page, on a tall canvas that the scroll bar moves.
 *
 * It covers `picDetReceita`, the editor's panel, and follows its height. The bar counts twips: its maximum is
 * what of the canvas does not fit, which at the panel's full height of 6540 is the canvas's height less 6150.
 */
class PainelCartao : public QWidget
{
    Q_OBJECT
public:
    /// Of the panel's height, what the card does not use (twips).
    static constexpr int kMoldura = 390;

    PainelCartao(const Banco &banco, Avisos &avisos, Telas &telas, DetalheReceita &detalhe,
                 Painel &picDetReceita);

    /**
     * Draws the card of a recipe and shows it, rolling the panel open when it was closed. Scrolling redraws
     * nothing from the book. Throws ErroBanco, also for a recipe that does not exist (any more); what was
     * shown before then stays.
     */
    void CarregarPreviewReceita(qint64 lngReceita);

    /// The recipe drawn last, or 0.
    qint64 Receita() const { return m_receita; }
    /// Height of the canvas (twips).
    int AlturaDoCanvas() const { return m_alturaCanvas; }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject *objeto, QEvent *event) override;

private:
    void Desenhar(const struct Cartao &cartao);
    void Dispor(int alturaDoPainel);
    void AjustarBarra(int alturaDoPainel);
    void MoverCanvas(int valor);
    void cmdAlterarReceita_Click();

    const Banco &m_banco;
    Avisos &m_avisos;
    Telas &m_telas;
    DetalheReceita &m_detalhe;
    Painel &m_picDetReceita;

    QWidget *m_janela; ///< through which the canvas is seen
    CanvasCartao *m_picViewDados;
    QScrollBar *m_vScrlPic;
    QLabel *m_imgPrint;
    QPushButton *m_cmdAlterarReceita;
    qint64 m_receita = 0;
    int m_alturaCanvas = 0;
    int m_restoDaRoda = 0;
    bool m_rolando = false;
};
