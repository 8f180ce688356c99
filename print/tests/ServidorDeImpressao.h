#pragma once

#include <QList>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/**
 * A print service of the test's own: the real scheduler on a Unix socket in a temporary folder, with raw
 * queues whose backend writes down what arrives. Nothing of the machine's own printing is touched.
 *
 * Queues, unless others are asked for: "Cozinha" (the default), "Sala", and "Recusa", which accepts no jobs.
 * The user's own options lie below Casa(); HOME points there.
 */
class ServidorDeImpressao
{
public:
    struct Fila {
        QString nome;
        bool padrao = false;
        bool aceita = true;
        QStringList opcoes = {}; ///< its defaults at the service, e.g. "copies 3"
        QString descricao = {};  ///< the printer's description (PPD); empty: none
    };
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
    bool Iniciar(QString &erro, const QList<Fila> &filas);
    void Parar();
    /// Takes calls and says nothing, until Acordar().
    void Adormecer();
    void Acordar();
    bool Remover(const QString &fila);
    /// Writes the user's own print options (lpoptions); "" for none.
    bool EscreverLpoptions(const QString &texto);
    /// A file or folder of the service, e.g. "spool".
    QString Caminho(const QString &nome) const { return m_pasta.filePath(nome); }
    /// The finished jobs in the order they arrived.
    QList<Trabalho> Trabalhos() const;

private:
    bool Escrever(const QString &nome, const QString &texto, bool programa = false);

    QTemporaryDir m_pasta;
    QProcess m_processo;
};
