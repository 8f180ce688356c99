#include "news/ClienteWebQt.h"

#include "news/RespostaHttp.h"

#include "base/EventosPendentes.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QNetworkProxy>
#include <QSslSocket>
#include <QTimer>

#include <functional>

struct ClienteWebQt::Alca {
    std::function<void()> interromper;
};

namespace
{

/// What may pile up unread before the server is made to wait.
constexpr qint64 kBytesEmEspera = 64 * 1024;

bool EhDaWeb(const QUrl &url)
{
    return url.isValid() && (url.scheme() == u"http" || url.scheme() == u"https") && !url.host().isEmpty();
}

QByteArray Pedido(QUrl url)
{
    url.setUserInfo(QString());
    QByteArray alvo = url.path(QUrl::FullyEncoded).toLatin1();
    if (alvo.isEmpty())
        alvo = "/";
    if (url.hasQuery())
        alvo += '?' + url.query(QUrl::FullyEncoded).toLatin1();
    return "GET " + alvo + " HTTP/1.1\r\nHost: " + url.authority(QUrl::FullyEncoded).toLatin1() +
           "\r\nUser-Agent: vb wininet\r\nAccept: */*\r\n"
           // Files arrive as they are: an answer that unfolds to many times its size is not asked for.
           "Accept-Encoding: identity\r\nCache-Control: no-cache\r\nPragma: no-cache\r\nConnection: "
           "close\r\n\r\n";
}

class TransferenciaHttp : public Transferencia
{
public:
    TransferenciaHttp(const QUrl &url, const LimitesWeb &limites)
        : m_limites(limites)
        , m_prazo(limites.msTotal)
    {
        // The silence is measured by the connection's own signals, not by our reading: another event handler
        // may keep us from reading for a while, and that is not the server's fault.
        m_silencio.setInterval(limites.msSemByte);
        m_total.setInterval(limites.msTotal);
        for (QTimer *timer : {&m_silencio, &m_total}) {
            timer->setSingleShot(true);
            QObject::connect(timer, &QTimer::timeout, timer, [this] { Interromper(); });
            timer->start();
        }
        Conectar(url);
    }

    QByteArray Ler(int maximo) override
    {
        while (!m_falhou && !Encerrando() && !m_prazo.hasExpired()) {
            Puxar(maximo);
            switch (Avaliar()) {
            case Passo::Falha:
                return Falhar();
            case Passo::Espera:
                if (!EsperarSinal())
                    return Falhar();
                break;
            case Passo::DeNovo:
                break;
            case Passo::Pedaco: {
                const QByteArray pedaco = m_resposta.Tirar(maximo);
                m_lidos += pedaco.size();
                return m_lidos > m_limites.bytesPorArquivo ? Falhar() : pedaco;
            }
            case Passo::Fim:
                m_completa = true;
                return {};
            }
        }
        return Falhar();
    }

    bool Completa() const override { return m_completa && !m_falhou; }

    /// Ends the transfer as a failure, from whatever event; a reader that waits is woken.
    void Interromper()
    {
        m_falhou = true;
        Acordar();
    }

private:
    enum class Passo { Espera, DeNovo, Pedaco, Fim, Falha };

    void Conectar(const QUrl &url)
    {
        m_url = url;
        m_resposta = RespostaHttp();
        m_tomada = std::make_unique<QSslSocket>();
        m_tomada->setProxy(QNetworkProxy::NoProxy);
        m_tomada->setReadBufferSize(kBytesEmEspera);
        const bool segura = url.scheme() == u"https";
        const auto ouviu = [this] {
            m_silencio.start();
            Acordar();
        };
        QObject::connect(m_tomada.get(), segura ? &QSslSocket::encrypted : &QSslSocket::connected,
                         m_tomada.get(), [this, url] { m_tomada->write(Pedido(url)); });
        QObject::connect(m_tomada.get(), &QSslSocket::readyRead, m_tomada.get(), ouviu);
        QObject::connect(m_tomada.get(), &QSslSocket::disconnected, m_tomada.get(), [this] { Acordar(); });
        QObject::connect(m_tomada.get(), &QSslSocket::errorOccurred, m_tomada.get(), [this] { Acordar(); });
        const QString host = url.host(QUrl::FullyEncoded);
        if (segura)
            m_tomada->connectToHostEncrypted(host, static_cast<quint16>(url.port(443)));
        else
            m_tomada->connectToHost(host, static_cast<quint16>(url.port(80)));
    }

    /// Moves what has arrived into the answer, no more than is wanted now: the rest waits in the connection,
    /// which makes the server wait.
    void Puxar(int maximo)
    {
        const bool segura = m_url.scheme() == u"https";
        if (segura && !m_tomada->isEncrypted() && m_tomada->state() != QAbstractSocket::UnconnectedState)
            return;
        while (m_resposta.Prontos() < maximo && m_tomada->bytesAvailable() > 0)
            m_resposta.Receber(m_tomada->read(4096));
        if (m_tomada->bytesAvailable() == 0 && m_tomada->state() == QAbstractSocket::UnconnectedState) {
            // A lost connection is no end, but some that end well say so by an error of just this name.
            const auto erro = m_tomada->error();
            if (erro == QAbstractSocket::RemoteHostClosedError || erro == QAbstractSocket::UnknownSocketError)
                m_resposta.FimDaConexao();
            else if (m_resposta.EstadoAtual() != RespostaHttp::Estado::Fim)
                m_falhou = true;
        }
    }

    Passo Avaliar()
    {
        if (m_falhou || m_resposta.EstadoAtual() == RespostaHttp::Estado::Erro)
            return Passo::Falha;
        if (m_resposta.EstadoAtual() == RespostaHttp::Estado::Cabeca)
            return Passo::Espera;
        switch (m_resposta.Status()) {
        case 200:
            break;
        case 301:
        case 302:
        case 303:
        case 307:
        case 308:
            return Redirecionar() ? Passo::DeNovo : Passo::Falha;
        default:
            return Passo::Falha;
        }
        if (m_resposta.Tamanho() > m_limites.bytesPorArquivo)
            return Passo::Falha;
        if (m_resposta.Prontos() > 0)
            return Passo::Pedaco;
        return m_resposta.EstadoAtual() == RespostaHttp::Estado::Fim ? Passo::Fim : Passo::Espera;
    }

    bool Redirecionar()
    {
        const QByteArray lugar = m_resposta.Campo("location");
        if (lugar.isEmpty() || ++m_saltos > m_limites.redirecionamentos)
            return false;
        const QUrl destino = m_url.resolved(QUrl::fromEncoded(lugar, QUrl::StrictMode));
        if (!EhDaWeb(destino) || (m_url.scheme() == u"https" && destino.scheme() != u"https"))
            return false;
        m_tomada->disconnect();
        Conectar(destino);
        return true;
    }

    /// Runs the event loop until something happens to the connection. False when something else ended the
    /// loop: the program ends.
    bool EsperarSinal()
    {
        QEventLoop espera;
        m_espera = &espera;
        m_acordada = false;
        espera.exec();
        m_espera = nullptr;
        return m_acordada;
    }

    void Acordar()
    {
        m_acordada = true;
        if (m_espera)
            m_espera->quit();
    }

    QByteArray Falhar()
    {
        m_falhou = true;
        return {};
    }

    LimitesWeb m_limites;
    QDeadlineTimer m_prazo;
    QUrl m_url;
    RespostaHttp m_resposta;
    QTimer m_silencio;
    QTimer m_total;
    QEventLoop *m_espera = nullptr;
    int m_saltos = 0;
    qint64 m_lidos = 0;
    bool m_acordada = false;
    bool m_falhou = false;
    bool m_completa = false;
    std::unique_ptr<QSslSocket> m_tomada; ///< last, so that it goes first: its signals use the rest
};

} // namespace

ClienteWebQt::ClienteWebQt(const LimitesWeb &limites)
    : m_limites(limites)
{
}

ClienteWebQt::~ClienteWebQt() = default;

std::unique_ptr<Transferencia> ClienteWebQt::Abrir(const QUrl &url)
{
    // The transfer that knows how to be interrupted from outside.
    class ComAlca : public TransferenciaHttp
    {
    public:
        using TransferenciaHttp::TransferenciaHttp;
        std::shared_ptr<Alca> alca = std::make_shared<Alca>();
    };

    if (Encerrando() || !EhDaWeb(url))
        return nullptr;
    auto transferencia = std::make_unique<ComAlca>(url, m_limites);
    transferencia->alca->interromper = [t = transferencia.get()] { t->Interromper(); };
    m_emCurso = transferencia->alca;
    return transferencia;
}

void ClienteWebQt::Interromper()
{
    if (const std::shared_ptr<Alca> alca = m_emCurso.lock())
        alca->interromper();
}
