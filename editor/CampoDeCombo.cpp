#include "editor/CampoDeCombo.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>

namespace
{
// Whether the key is one that types a character or an editing command of the keyboard (Ctrl and a letter).
// Letters with Alt are access keys on their way to the window.
bool Digita(const QKeyEvent &tecla)
{
    const bool ctrl = tecla.modifiers().testFlag(Qt::ControlModifier);
    const bool alt = tecla.modifiers().testFlag(Qt::AltModifier);
    if (alt && !ctrl)
        return false;
    if (ctrl && !alt && tecla.key() >= Qt::Key_A && tecla.key() <= Qt::Key_Z)
        return true;
    return CodigoDaTecla(tecla) != 0;
}
} // namespace

CampoDeCombo::CampoDeCombo(const QString &nome, int limite, bool &blnApagandoCombo, QWidget *parent)
    : CampoTexto(nome, parent)
    , m_limite(limite)
    , m_blnApagandoCombo(blnApagandoCombo)
{
}

bool CampoDeCombo::Aceitar(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete)
        m_blnApagandoCombo = true;
    if (!Cheio() || !Digita(*event))
        return true;
    Recusar();
    return false;
}

void CampoDeCombo::keyPressEvent(QKeyEvent *event)
{
    // What comes back by undo is not typed: completing it would put back the very text being undone.
    const QScopedValueRollback suspender(m_suspenso, event->matches(QKeySequence::Undo) ||
                                                         event->matches(QKeySequence::Redo));
    CampoTexto::keyPressEvent(event);
}

void CampoDeCombo::inputMethodEvent(QInputMethodEvent *event)
{
    const bool escreve = !event->commitString().isEmpty();
    if (escreve && Cheio()) {
        Recusar();
        event->setCommitString(QString());
    }
    {
        const QScopedValueRollback suspender(m_suspenso, true);
        CampoTexto::inputMethodEvent(event);
    }
    // A dead key and its letter are one key press: only the finished letter may be completed.
    if (escreve && event->preeditString().isEmpty())
        emit composicaoTerminada();
}

void CampoDeCombo::Recusar()
{
    QApplication::beep();
    emit teclaRecusada();
}
