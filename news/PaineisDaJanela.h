#pragma once

#include "news/PaineisDeTrabalho.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>

/**
 * PaineisDeTrabalho for any widgets. Watches the whole program's input from its construction until the user's
 * first key press, click, wheel turn or drop; make it together with the window.
 */
class PaineisDaJanela : public QObject, public PaineisDeTrabalho
{
    Q_OBJECT

public:
    explicit PaineisDaJanela(const QList<QWidget *> &paineis, QObject *parent = nullptr);

    void Esconder() override;
    void Restaurar() override;
    bool UsuarioComecou() const override { return m_comecou; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QList<QPointer<QWidget>> m_paineis;
    QList<QPointer<QWidget>> m_escondidos;
    QPointer<QWidget> m_foco;
    bool m_comecou = false;
};
