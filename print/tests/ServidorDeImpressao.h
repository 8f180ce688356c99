#pragma once

#include <QList>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/**
 * A print service of the test's own: the real scheduler on a Unix socket in a temporary folder, with raw
 * queues whose backend writes down what arrives. Nothing of the machine's own printing is touched.
 *
 * Queues: "Cozinha" (the default), "Sala", and "Recusa", which accepts no jobs.
 */
class ServidorDeImpressao
{
public:
    struct Trabalho {
        QString titulo;
        QString copias;
        QString opcoes;
        QString arquivo; ///< the document, as the printer would receive it
    };

    ~ServidorDeImpressao();
    /// Whether the machine has the scheduler.
    static bool Instalado();
    /// Starts the scheduler and points CUPS_SERVER at it; false with a reason in `erro`.
    bool Iniciar(QString &erro);
    void Parar();
    /// The finished jobs in the order they arrived.
    QList<Trabalho> Trabalhos() const;

private:
    bool Escrever(const QString &nome, const QString &texto, bool programa = false);

    QTemporaryDir m_pasta;
    QProcess m_processo;
};
