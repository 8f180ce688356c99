#pragma once

#include <QByteArray>
#include <QUrl>

#include <memory>

/**
 * How far the program goes with a server it does not know. Every limit ends the transfer as a failure.
 */
struct LimitesWeb {
    qint64 bytesPorArquivo = 4 * 1024 * 1024; ///< body of one file
    int msSemByte = 10'000;                   ///< silence, before the answer begins or within it
    int msTotal = 60'000;      ///< one file from request to last byte, however steadily it drips
    int redirecionamentos = 5; ///< in a row; http to http(s) and https to https only
};

/// The body of one answer, read piece by piece. Destroying it closes the connection.
class Transferencia
{
public:
    virtual ~Transferencia() = default;

    /// Waits for the next piece and returns at most `maximo` bytes of it; window events run while it waits.
    /// Empty at the body's end and on any failure: Completa() tells them apart.
    virtual QByteArray Ler(int maximo) = 0;

    /// True once the whole body has been read without an error.
    virtual bool Completa() const = 0;
};

/// Opens addresses. Tests hand in one that needs no network.
class ClienteWeb
{
public:
    virtual ~ClienteWeb() = default;

    /// Sends the request. Null when it cannot even be sent (no http or https address, the program is ending).
    virtual std::unique_ptr<Transferencia> Abrir(const QUrl &url) = 0;

    /// Ends the transfer in progress, if any, as a failure: Ler() returns at once.
    virtual void Interromper() = 0;
};
