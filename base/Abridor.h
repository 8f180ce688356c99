#pragma once

#include <QString>
#include <QUrl>

/**
 * Hands documents and addresses to the programs the user has chosen for them.
 * Results are not reported: whether a mail program or browser starts is the desktop's business.
 */
class Abridor
{
public:
    virtual ~Abridor() = default;

    /// Opens the local file (native path) with its default program.
    virtual void AbrirArquivo(const QString &caminho) = 0;

    /// Opens a web address with the user's browser.
    virtual void AbrirEndereco(const QUrl &endereco) = 0;
};
