#pragma once

#include "news/ClienteWeb.h"

#include <QPointer>

class QNetworkAccessManager;
class QNetworkReply;

/**
 * The real web client: HTTP and HTTPS by a direct connection (no proxy), as agent "vb wininet", without
 * cache, cookies or stored passwords, certificates checked.
 *
 * An answer counts only with status 200. Redirects are followed within LimitesWeb and never from https to
 * http, nor to any other scheme. While it waits a local event loop runs; EncerrarPrograma() ends that loop,
 * and with it the transfer.
 */
class ClienteWebQt : public ClienteWeb
{
public:
    explicit ClienteWebQt(const LimitesWeb &limites = {});
    ~ClienteWebQt() override;

    std::unique_ptr<Transferencia> Abrir(const QUrl &url) override;
    void Interromper() override;

private:
    LimitesWeb m_limites;
    /// Made at the first request: it costs some milliseconds that the start of the program need not pay.
    std::unique_ptr<QNetworkAccessManager> m_gerente;
    QPointer<QNetworkReply> m_emCurso;
};
