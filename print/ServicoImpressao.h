#pragma once

#include "print/ConfiguracaoDaFila.h"

#include <QSizeF>
#include <QString>

#include <cups/cups.h>

#include <memory>

class QIODevice;
struct BibliotecaCups;

/**
 * A conversation with the print service (CUPS): its queues, what they say of themselves, and jobs for them.
 *
 * The service may be slow, but not silent: an answer that does not come within some seconds ends in an
 * ErroImpressao.
 */
class ServicoImpressao
{
public:
    struct Fila {
        QString nome; ///< with its instance: "Cozinha/rascunho"
        bool padrao;  ///< the user's default, else the service's
    };

    /// Throws ErroImpressao when somebody listens and does not answer. Nobody there: Responde() is false.
    ServicoImpressao();
    ~ServicoImpressao();
    ServicoImpressao(const ServicoImpressao &) = delete;
    ServicoImpressao &operator=(const ServicoImpressao &) = delete;

    bool Responde() const { return m_http != nullptr; }

    /// The queues in the service's order, the user's instances of a queue behind it.
    QList<Fila> Filas() const;
    /// What the queue says of itself; an empty name when there is no such queue.
    ConfiguracaoDaFila Configuracao(const QString &nome) const;
    /// Size in mm of the paper that a job gets when the printer has no description; empty when nobody says.
    QSizeF Papel(const ConfiguracaoDaFila &fila) const;
    /// Hands a document over as one job. Throws ErroImpressao, with the queue's name.
    void Imprimir(const QString &nome, const QString &titulo,
                  const QList<std::pair<QString, QString>> &opcoes, QIODevice &documento) const;

private:
    void LerAtributos(ConfiguracaoDaFila &fila) const;
    void LerDescricao(ConfiguracaoDaFila &fila) const;
    /// What to tell the user about the print system's last refusal.
    [[noreturn]] void Recusado(const QString &nome) const;

    const BibliotecaCups *m_cups;
    http_t *m_http = nullptr;
};
