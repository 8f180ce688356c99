#pragma once

#include "news/PaineisDeTrabalho.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>

/**
 * PaineisDeTrabalho for any widgets. Watches the whole program's input from its construction until the user
 * begins to work; make it together with the window, so that a click that comes before the panels counts too.
 */
class PaineisDaJanela : public QObject, public PaineisDeTrabalho
{
    Q_OBJECT

public:
    /// @param livre what Livre() answers
    explicit PaineisDaJanela(std::function<bool()> livre, QObject *parent = nullptr);

    /// The panels that make room; nothing else in their window is one.
    void DefinirPaineis(const QList<QWidget *> &paineis);

    void Esconder() override;
    void Restaurar() override;
    bool UsuarioComecou() const override { return m_comecou; }
    void AoComecar(std::function<void()> tarefa) override;
    bool Livre() const override { return m_livre(); }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool EhTrabalho(const QObject *watched, const QEvent *event) const;
    bool ServeAoTrabalho(const QWidget *controle) const;

    std::function<bool()> m_livre;
    std::function<void()> m_aoComecar;
    QList<QPointer<QWidget>> m_paineis;
    QList<QPointer<QWidget>> m_escondidos;
    QPointer<QWidget> m_foco;
    bool m_comecou = false;
};
