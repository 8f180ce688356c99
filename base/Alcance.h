#pragma once

#include <QObject>

class QAbstractButton;
class QKeyEvent;
class QShortcutEvent;
class QWidget;

/**
 * What the cook can reach now, decided in one place.
 *
 * Panels share the same place in the window and those behind stay "visible", so the toolkit would hand them
 * keys and the focus. Nothing under another panel is reached: no access key, no shortcut, no key press, no
 * Tab stop, no focus, no command that has waited. Everybody asks the functions here.
 *
 * An object of this class, installed on the application, keeps to it:
 *  - a control that is covered gets no key; a focus that comes to it, or that it has when it is covered, goes
 *    on to the panel on top;
 *  - an access key presses the one button of the window that can be reached, and at once. (The toolkit shows
 *    the button held down for a tenth of a second first and acts only then, so that a fast typist's next key
 *    would overtake the last one.)
 *  - Alt with a letter that no button has types nothing.
 */
class Alcance : public QObject
{
    Q_OBJECT
public:
    explicit Alcance(QObject *parent = nullptr);

    /// Whether `controle` can be reached: seen, enabled, not covered, and no dialog before its window.
    static bool Alcanca(const QWidget &controle);

    /// Whether `controle`, or a panel it lies on, is covered by a visible sibling in front. A panel that
    /// rolls open covers from its first step what it covers in the end.
    static bool Encoberto(const QWidget &controle);

    /// Whether a command of this control may begin: it is shown in its window (the window itself need not be)
    /// and not covered. What is no widget commands always.
    static bool PodeComandar(const QObject *dono);

    /// Gives the focus to the control that `painel` (or the panel that covers it) proposes, or else to the
    /// first one there that can be reached. False when there is none.
    static bool Focar(const QWidget &painel);

    /// Moves the focus of `janela`'s window to the next control (`next`) or the one before that can be
    /// reached, as the Tab key does. False when there is no other.
    static bool MoverFoco(const QWidget &janela, bool next);

protected:
    bool eventFilter(QObject *objeto, QEvent *event) override;

private:
    static bool Atalho(QObject *objeto, const QShortcutEvent &atalho);
    static bool Tecla(QWidget &controle, const QKeyEvent &tecla);
    static void ReverFoco(const QWidget *mudou);
};
