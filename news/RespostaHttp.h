#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QHash>

/**
 * An HTTP/1.1 answer (RFC 9112), read from the bytes as they arrive. Knows no connection.
 *
 * It exists because the difference counts between a body that has come to its end and one that was cut: only
 * what is whole may replace a file. A body ends by its Content-Length, by the last chunk of its chunked
 * encoding, or, where the answer has neither, when the connection does. Anything else is an error, and so are
 * a content encoding (none is asked for), lengths that contradict each other, and a head beyond 64 kB.
 */
class RespostaHttp
{
public:
    enum class Estado { Cabeca, Corpo, Fim, Erro };

    /// Takes what has arrived.
    void Receber(QByteArrayView bytes);
    /// The connection has ended: the body is complete, or the answer an error.
    void FimDaConexao();

    Estado EstadoAtual() const { return m_estado; }
    /// Status code, 0 until the head is complete. Interim answers (1xx) are skipped.
    int Status() const { return m_status; }
    /// Value of a header field, trimmed; names in lower case. Empty when missing.
    QByteArray Campo(const QByteArray &nome) const { return m_campos.value(nome); }
    /// The announced length of the body, -1 when there is none.
    qint64 Tamanho() const { return m_tamanho; }

    /// Bytes of the body that have arrived and were not taken yet.
    qsizetype Prontos() const { return m_corpo.size(); }
    /// Takes at most `maximo` of them.
    QByteArray Tirar(qsizetype maximo);

private:
    enum class Treco { Tamanho, Dados, Quebra, Final };

    bool Linha(QByteArray &linha);
    void LerCabeca();
    void ComecarCorpo();
    void LerCorpo();
    void LerTrecos();
    void Falhar();

    Estado m_estado = Estado::Cabeca;
    QByteArray m_chegados; ///< not yet understood
    QByteArray m_corpo;    ///< understood, not yet taken
    QHash<QByteArray, QByteArray> m_campos;
    qsizetype m_lidosDaCabeca = 0;
    int m_statusLido = 0;
    int m_status = 0;
    qint64 m_tamanho = -1;
    qint64 m_faltam = 0; ///< of the body or of the chunk
    bool m_emTrecos = false;
    Treco m_treco = Treco::Tamanho;
};
