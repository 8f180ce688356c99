#pragma once

#include "base/Avisos.h"

#include <QPointer>
#include <QWidget>

class QMessageBox;

/// Message boxes on the screen, modal to the window on top.
class AvisosQt : public Avisos
{
public:
    void Avisar(const QString &texto, Icone icone) override;
    bool Perguntar(const QString &texto) override;
    Resposta PerguntarComSaida(const QString &texto) override;

    /// The window that boxes belong to when no other is active.
    void DefinirJanela(QWidget *janela) { m_janela = janela; }

private:
    QWidget *Dono() const;
    QPointer<QWidget> m_janela;
};
