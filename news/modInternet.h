#pragma once

#include "news/ClienteWeb.h"

#include <QString>

/**
 * Reads whole resources from the web, 256 bytes at a time, with the window alive in between.
 *
 * Everything happens on the window's thread. Whoever calls LerUrl() must keep this object alive until it
 * returns, because any event may run meanwhile: hold a shared pointer to the owner.
 */
class modInternet
{
public:
    /// Bytes asked for at a time.
    static constexpr int kPedaco = 256;

    explicit modInternet(std::unique_ptr<ClienteWeb> cliente);
    ~modInternet();

    /**
     * The whole body of the resource, byte for byte.
     *
     * Empty on any failure: an address that is not http or https, no connection, a status other than 200, a
     * body cut short, a limit of the client (LimitesWeb) exceeded, the abandon flag set, the program ending.
     * A part of a body is never returned. Unless `url` contains "info" (case matters) every piece is counted
     * and pending window events run after it.
     */
    QByteArray LerUrl(const QString &url);

    /// Sets the abandon flag: the transfer in progress ends as a failure, and so does every later one until
    /// Retomar().
    void Abandonar();
    /// Clears the flag: a new visit begins.
    void Retomar() { m_abandonar = false; }
    bool Abandonado() const { return m_abandonar; }

    /// Pieces read so far by all transfers that count theirs.
    qint64 Pedacos() const { return m_pedacos; }

private:
    std::unique_ptr<ClienteWeb> m_cliente;
    bool m_abandonar = false;
    qint64 m_pedacos = 0;
};
