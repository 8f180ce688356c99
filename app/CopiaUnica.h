#pragma once

#include <QLocalServer>
#include <QObject>

#include <memory>

/**
 * The single-copy rule: one running program per application folder.
 *
 * A lock on a file in that folder decides who is first (the system drops it when the process ends, however it
 * ends). The first then listens for the others; a later copy delivers one short line and ends.
 */
class CopiaUnica : public QObject
{
    Q_OBJECT
public:
    explicit CopiaUnica(const QString &pasta, QObject *parent = nullptr);
    ~CopiaUnica() override;

    /// Whether this copy is the first. Where there can be no lock (a folder without write permission, a drive
    /// without locks) it is the first that listens.
    bool Primeira() const { return m_primeira; }
    /// Whether the folder is this copy's alone: it may tidy up in it.
    bool Trancada() const { return m_trancada; }

    /// First copy: starts to listen.
    void Escutar();

    enum class Aviso {
        ImportacaoTerminada, ///< recipes were imported: show them
        Ativar               ///< the program was started once more: come to the front
    };
    /// Later copy: delivers the line, waiting at most two seconds, or eight where the first copy has only
    /// just begun. False when nobody took it.
    bool Entregar(Aviso aviso) const;
    /// Where the first copy listens: a socket only its user may open.
    QString NomeDoCanal() const;

signals:
    void importacaoTerminada();
    void ativacaoPedida();

private:
    void Trancar();
    bool AlguemEscuta() const;
    int Paciencia() const;
    void Receber();

    QString m_pasta;
    int m_trava = -1;
    bool m_primeira = true;
    bool m_trancada = false;
    QLocalServer m_servidor;
};
