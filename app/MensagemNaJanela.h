#pragma once

#include "base/PainelMensagem.h"

#include <QSet>
#include <QWidget>

class QLabel;
class QProgressBar;

/**
 * The message panel picMsg. While it shows, the window stays alive but takes no commands: the mouse and the
 * keyboard reach only what was let through (minimise, exit, the areas that drag the window), so that no
 * second operation starts in the middle of the first.
 */
class MensagemNaJanela : public QWidget, public PainelMensagem
{
    Q_OBJECT
public:
    explicit MensagemNaJanela(QWidget *janela);

    void Mostrar(const QString &texto, int maximo) override;
    void DefinirMaximo(int maximo) override;
    void DefinirValor(int valor) override;
    void Esconder() override;

    /// Lets a control take input while an operation runs.
    void DeixarPassar(QWidget *controle) { m_livres.insert(controle); }
    bool EmOperacao() const { return m_emOperacao; }

signals:
    void operacaoTerminada();

protected:
    bool eventFilter(QObject *objeto, QEvent *event) override;

private:
    QWidget *m_janela;
    QLabel *m_lblMensagem;
    QProgressBar *m_prgrssBrMsg;
    QSet<QWidget *> m_livres;
    bool m_emOperacao = false;
};
