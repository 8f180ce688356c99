#pragma once

#include <QString>
#include <QUrl>

#include <functional>

/**
 * Hands documents and addresses to the programs the user has chosen for them.
 * Results are not waited for: whether a mail program or browser starts is the desktop's business.
 */
class Abridor
{
public:
    virtual ~Abridor() = default;

    /// Opens the local file (native path) with its default program.
    virtual void AbrirArquivo(const QString &caminho) = 0;

    /**
     * Opens a written e-mail message with the user's mail program. What becomes of it is not looked at, but
     * when there is no such program, or only a web browser would show the message, `semPrograma` is called
     * soon after, from the event loop.
     */
    virtual void AbrirMensagem(const QString &caminho,
                               [[maybe_unused]] const std::function<void()> &semPrograma)
    {
        AbrirArquivo(caminho);
    }

    /// Opens a web address with the user's browser.
    virtual void AbrirEndereco(const QUrl &endereco) = 0;
};
