#pragma once

#include <QWidget>

/**
 * A working panel of the main window. Its height is kept in twips and rolled open in steps of 200.
 *
 * Heights are the promise, pixels only their picture: Altura() is what was set, never what was measured.
 */
class Painel : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int alturaTwips READ Altura WRITE DefinirAltura)
    Q_PROPERTY(QSize tamanhoAberto READ TamanhoAberto)

public:
    /// Height of a panel that is about to roll open.
    static constexpr int kRecolhido = 20;

    explicit Painel(const QString &nome, QWidget *parent = nullptr);

    int Altura() const { return m_altura; }
    /// The size in pixels; while the panel rolls open, the one it will have in the end.
    QSize TamanhoAberto() const;
    void DefinirAltura(int twips);
    /// Left, top, width and height in twips.
    void DefinirLugar(int left, int top, int width, int height);

    /**
     * Rolls the panel open: 20, 220, 420, ... while at most `alturaFinal`, then `alturaFinal` itself. Window
     * events run after each step, and each height is painted once.
     *
     * @return false when the roll was abandoned: the program is ending, or an event that ran in between
     * rolled or sized the panel anew (the newer height then stands)
     */
    bool Rolar(int alturaFinal);

    /// Milliseconds from one step to the next; 0 (tests) does not wait at all.
    static void DefinirRitmo(int milissegundos);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    int m_altura = 0;
    int m_alvo = 0;    ///< height that a roll goes to; 0: none under way
    bool m_encoberto = false;
    int m_rolagem = 0; ///< counts the times the height was set from outside a roll, to notice a newer wish
};
