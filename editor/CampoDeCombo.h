#pragma once

#include "base/CampoTexto.h"

/**
 * The text field of a combo box that completes what is typed. It refuses every key press once the text has
 * reached its limit, backspace included, and notes when the user deletes. Keys that type nothing (Delete,
 * arrows, Tab) are no key presses and always work.
 */
class CampoDeCombo : public CampoTexto
{
    Q_OBJECT
public:
    /// @param limite           characters
    /// @param blnApagandoCombo set when backspace or Delete goes down; shared by all combo boxes of the
    /// editor
    CampoDeCombo(const QString &nome, int limite, bool &blnApagandoCombo, QWidget *parent = nullptr);

    int Limite() const { return m_limite; }
    /// True while an input method composes, or while the user takes an edit back: moments that are not
    /// typing.
    bool Suspenso() const { return m_suspenso; }

signals:
    /// A key press was dropped because the text has its full length; the system's beep sounds with it.
    void teclaRecusada();
    /// An input method has put its text in.
    void composicaoTerminada();

protected:
    bool Aceitar(QKeyEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;

private:
    bool Cheio() const { return text().size() >= m_limite; }
    void Recusar();

    int m_limite;
    bool &m_blnApagandoCombo;
    bool m_suspenso = false;
};
