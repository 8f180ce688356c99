#pragma once

#include "base/CampoTexto.h"

#include <QLineEdit>

class CampoDeCombo;

/**
 * An editable combo box that completes what the user types with the first item that begins with it. The typed
 * part keeps its letter case; the completed tail is selected, so that typing on replaces it.
 *
 * Only the user's own edits are completed: a text set by the program stays as it is.
 */
class ComboCompletavel : public ComboTexto
{
    Q_OBJECT
public:
    /// @param limite           characters that can be typed; what a paste brings beyond is cut on lost focus
    /// @param blnApagandoCombo one flag for all combo boxes of the editor: a backspace in one suppresses the
    ///                         next completion in whichever changes next
    ComboCompletavel(const QString &nome, int limite, bool &blnApagandoCombo, QWidget *parent = nullptr);

    int Limite() const;
    /// Whether the user is in it: the box or its text field has the focus.
    bool TemFoco() const { return hasFocus() || lineEdit()->hasFocus(); }
    /// Cuts the text to the limit, as losing the focus does. For actions that an access key starts, which do
    /// not move the focus.
    void CortarNoLimite();
    /// Adds the trimmed text to the list unless it is empty, chosen from the list or already in it.
    void LembrarValor(const QString &valor);

signals:
    void teclaRecusada();

protected:
    void focusOutEvent(QFocusEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    CampoDeCombo *Campo() const;
    void AoMudar();
    void Tratar(bool doUsuario);
    void AutoCompletarCombo(bool doUsuario);

    bool &m_blnApagandoCombo;
    bool m_doUsuario = false;
};
