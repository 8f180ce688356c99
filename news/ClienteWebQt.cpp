#include "news/ClienteWebQt.h"

#include "base/EventosPendentes.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

namespace
{

/// What may pile up unread before the connection is made to wait.
constexpr qint64 kBytesEmEspera = 64 * 1024;

class TransferenciaQt : public Transferencia
{
public:
    TransferenciaQt(QNetworkReply *resposta, const LimitesWeb &limites)
        : m_resposta(resposta)
        , m_limites(limites)
        , m_prazo(limites.msTotal)
    {
        m_resposta->setReadBufferSize(kBytesEmEspera);
        // The silence is measured by the connection's own signals, not by our reading: another event handler
        // may keep us from reading for a while, and that is not the server's fault.
        m_silencio.setSingleShot(true);
        m_silencio.setInterval(limites.msSemByte);
        m_total.setSingleShot(true);
        m_total.setInterval(limites.msTotal);
        const auto ouviu = [this] { m_silencio.start(); };
        QObject::connect(m_resposta.get(), &QNetworkReply::readyRead, &m_silencio, ouviu);
        QObject::connect(m_resposta.get(), &QNetworkReply::redirected, &m_silencio, ouviu);
        for (QTimer *timer : {&m_silencio, &m_total}) {
            QObject::connect(timer, &QTimer::timeout, m_resposta.get(), [this] {
                m_falhou = true;
                m_resposta->abort();
            });
            timer->start();
        }
    }

    ~TransferenciaQt() override
    {
        m_silencio.stop();
        m_total.stop();
        m_resposta->disconnect();
        m_resposta->abort();
    }

    QByteArray Ler(int maximo) override
    {
        if (!EsperarPedaco())
            return Falhar();
        const QByteArray pedaco = m_resposta->read(maximo);
        m_lidos += pedaco.size();
        if (m_lidos > m_limites.bytesPorArquivo)
            return Falhar();
        return pedaco;
    }

    bool Completa() const override { return m_completa; }

private:
    /// True when bytes can be read or the body has come to its end.
    bool EsperarPedaco()
    {
        while (!m_falhou && !Encerrando()) {
            if (m_prazo.hasExpired() || Anunciado() > m_limites.bytesPorArquivo)
                return false;
            if (m_resposta->isFinished()) {
                if (m_resposta->error() != QNetworkReply::NoError || Status() != 200)
                    return false;
                m_completa = m_resposta->bytesAvailable() == 0;
                return true;
            }
            // The body of an error page or of a redirect is not what was asked for.
            if (m_resposta->bytesAvailable() > 0 && Status() == 200)
                return true;
            if (!EsperarSinal())
                return false;
        }
        return false;
    }

    /// Runs the event loop until the answer moves. False when something else ended the loop: the program
    /// ends.
    bool EsperarSinal()
    {
        QEventLoop espera;
        bool moveu = false;
        const auto acordar = [&espera, &moveu] {
            moveu = true;
            espera.quit();
        };
        QObject::connect(m_resposta.get(), &QNetworkReply::readyRead, &espera, acordar);
        QObject::connect(m_resposta.get(), &QNetworkReply::finished, &espera, acordar);
        espera.exec();
        return moveu;
    }

    qint64 Anunciado() const { return m_resposta->header(QNetworkRequest::ContentLengthHeader).toLongLong(); }
    int Status() const { return m_resposta->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(); }

    QByteArray Falhar()
    {
        m_falhou = true;
        m_completa = false;
        return {};
    }

    std::unique_ptr<QNetworkReply> m_resposta;
    LimitesWeb m_limites;
    QDeadlineTimer m_prazo;
    QTimer m_silencio;
    QTimer m_total;
    qint64 m_lidos = 0;
    bool m_falhou = false;
    bool m_completa = false;
};

QNetworkRequest Pedido(const QUrl &url, const LimitesWeb &limites)
{
    QNetworkRequest pedido(url);
    pedido.setHeader(QNetworkRequest::UserAgentHeader, QByteArrayLiteral("vb wininet"));
    // Pictures arrive as they are: an answer that unfolds to many times its size is not asked for.
    pedido.setRawHeader("Accept-Encoding", "identity");
    pedido.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    pedido.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    pedido.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    pedido.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    pedido.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    pedido.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    pedido.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    pedido.setMaximumRedirectsAllowed(limites.redirecionamentos);
    return pedido;
}

} // namespace

ClienteWebQt::ClienteWebQt(const LimitesWeb &limites)
    : m_limites(limites)
{
}

ClienteWebQt::~ClienteWebQt() = default;

std::unique_ptr<Transferencia> ClienteWebQt::Abrir(const QUrl &url)
{
    const bool web = url.scheme() == u"http" || url.scheme() == u"https";
    if (Encerrando() || !url.isValid() || !web || url.host().isEmpty())
        return nullptr;
    if (!m_gerente) {
        m_gerente = std::make_unique<QNetworkAccessManager>();
        m_gerente->setProxy(QNetworkProxy::NoProxy);
    }
    QNetworkReply *resposta = m_gerente->get(Pedido(url, m_limites));
    m_emCurso = resposta;
    return std::make_unique<TransferenciaQt>(resposta, m_limites);
}

void ClienteWebQt::Interromper()
{
    if (QNetworkReply *resposta = m_emCurso.data())
        resposta->abort();
}
