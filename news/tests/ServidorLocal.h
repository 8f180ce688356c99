#pragma once

#include <QHash>
#include <QPointer>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

/// A small, badly behaved web server on 127.0.0.1: each path answers with the bytes it was given, in the way
/// it was told. Counts what it is asked for.
class ServidorLocal : public QObject
{
    Q_OBJECT

public:
    enum class Modo {
        Normal,          ///< everything at once, then the connection closes
        Cala,            ///< takes the request and never answers
        CalaNoMeio,      ///< sends the first half and then nothing, the connection stays open
        FechaNoMeio,     ///< announces the whole and closes after the first half
        TrecoCortado,    ///< chunked encoding that breaks off without its last chunk
        Goteja,          ///< one byte every few milliseconds
        SemFim,          ///< bytes for ever, no length announced
        SemFimAnunciado, ///< announces 1 GB and begins to send it
    };
    struct Resposta {
        QByteArray corpo;
        QByteArray status = "200 OK";
        QByteArray cabecalhos = {}; ///< complete lines with their CR LF
        Modo modo = Modo::Normal;
    };

    ServidorLocal()
    {
        connect(&m_servidor, &QTcpServer::newConnection, this, &ServidorLocal::Atender);
        if (!m_servidor.listen(QHostAddress::LocalHost))
            qFatal("no local port");
        m_porta = m_servidor.serverPort();
    }

    QString Site() const { return "http://127.0.0.1:" + QString::number(m_porta); }
    /// From now on nobody listens at that port.
    void Desligar() { m_servidor.close(); }
    void Por(const QString &caminho, const Resposta &resposta) { m_respostas[caminho] = resposta; }
    void PorCorpo(const QString &caminho, const QByteArray &corpo) { m_respostas[caminho] = Resposta{corpo}; }
    void Tirar(const QString &caminho) { m_respostas.remove(caminho); }

    QStringList pedidos;         ///< paths, in the order they were asked for
    QList<QByteArray> completos; ///< the requests' whole text
    int conexoes = 0;
    int desligadas = 0;  ///< connections that have ended, by whomever
    qint64 enviados = 0; ///< bytes of endless bodies

signals:
    void pedido(const QString &caminho);

private:
    void Atender()
    {
        while (QTcpSocket *tomada = m_servidor.nextPendingConnection()) {
            ++conexoes;
            tomada->setParent(this);
            connect(tomada, &QTcpSocket::disconnected, tomada, &QObject::deleteLater);
            connect(tomada, &QTcpSocket::disconnected, this, [this] { ++desligadas; });
            connect(tomada, &QTcpSocket::readyRead, this, [this, tomada] {
                const QByteArray texto = tomada->property("pedido").toByteArray() + tomada->readAll();
                tomada->setProperty("pedido", texto);
                if (texto.contains("\r\n\r\n"))
                    Responder(tomada, texto);
            });
        }
    }

    void Responder(QTcpSocket *tomada, const QByteArray &texto)
    {
        tomada->setProperty("pedido", QByteArray());
        const QString caminho = QString::fromLatin1(texto.split(' ').value(1));
        pedidos += caminho;
        completos += texto;
        emit pedido(caminho);
        if (!m_respostas.contains(caminho)) {
            Enviar(tomada, Resposta{"nao ha", "404 Not Found"});
            return;
        }
        Enviar(tomada, m_respostas.value(caminho));
    }

    void Enviar(QTcpSocket *tomada, const Resposta &r)
    {
        if (r.modo == Modo::Cala)
            return;
        QByteArray cabeca = "HTTP/1.1 " + r.status + "\r\nConnection: close\r\n" + r.cabecalhos;
        const QByteArray metade = r.corpo.left(r.corpo.size() / 2);
        switch (r.modo) {
        case Modo::TrecoCortado:
            tomada->write(cabeca + "Transfer-Encoding: chunked\r\n\r\n" +
                          QByteArray::number(r.corpo.size(), 16) + "\r\n" + r.corpo + "\r\n");
            tomada->disconnectFromHost();
            return;
        case Modo::SemFim:
            tomada->write(cabeca + "\r\n");
            Inundar(tomada);
            return;
        case Modo::SemFimAnunciado:
            tomada->write(cabeca + "Content-Length: 1000000000\r\n\r\n");
            Inundar(tomada);
            return;
        default:
            break;
        }
        tomada->write(cabeca + "Content-Length: " + QByteArray::number(r.corpo.size()) + "\r\n\r\n");
        if (r.modo == Modo::Goteja) {
            auto *relogio = new QTimer(tomada);
            connect(relogio, &QTimer::timeout, tomada, [tomada, corpo = r.corpo, i = 0]() mutable {
                if (i < corpo.size())
                    tomada->write(corpo.mid(i++, 1));
            });
            relogio->start(5);
        } else if (r.modo == Modo::CalaNoMeio) {
            tomada->write(metade);
        } else {
            tomada->write(r.modo == Modo::FechaNoMeio ? metade : r.corpo);
            tomada->disconnectFromHost();
        }
    }

    void Inundar(QTcpSocket *tomada)
    {
        const QByteArray bloco(64 * 1024, 'x');
        const auto mandar = [this, tomada, bloco] {
            if (tomada->bytesToWrite() < bloco.size())
                enviados += tomada->write(bloco);
        };
        connect(tomada, &QTcpSocket::bytesWritten, tomada, mandar);
        mandar();
    }

    QTcpServer m_servidor;
    quint16 m_porta = 0;
    QHash<QString, Resposta> m_respostas;
};
