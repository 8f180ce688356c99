#pragma once

#include "news/ClienteWeb.h"

/**
 * The real web client: HTTP/1.1 and HTTPS over a direct connection (no proxy), as agent "vb wininet", with
 * the certificate checked. It has no cache, no cookies and no passwords.
 *
 * An answer counts only with status 200 and only when it has arrived whole (RespostaHttp). Redirects (301,
 * 302, 303, 307, 308) are followed within LimitesWeb, and never from https to http nor to any other scheme.
 * While it waits a local event loop runs; EncerrarPrograma() ends that loop, and with it the transfer.
 */
class ClienteWebQt : public ClienteWeb
{
public:
    explicit ClienteWebQt(const LimitesWeb &limites = {});
    ~ClienteWebQt() override;

    std::unique_ptr<Transferencia> Abrir(const QUrl &url) override;
    void Interromper() override;

private:
    /// The transfer in progress, as long as there is one.
    struct Alca;

    LimitesWeb m_limites;
    std::weak_ptr<Alca> m_emCurso;
};
