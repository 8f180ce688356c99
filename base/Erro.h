#pragma once

#include <QString>

#include <stdexcept>

/**
 * What went wrong, as the cook is told: a sentence in Portuguese and, last, what the system or the engine
 * said, if that helps anybody. Thrown where it happens and caught once, at the event handler
 * (base/Protegido.h), or where a failure is no reason to stop.
 */
class Erro : public std::runtime_error
{
public:
    explicit Erro(const QString &sentenca, const QString &detalhe = {})
        : std::runtime_error((detalhe.isEmpty() ? sentenca : sentenca + "\r\n\r\n" + detalhe).toStdString())
        , m_sentenca(sentenca)
    {
    }

    /// The whole text, for a message box.
    QString Mensagem() const { return QString::fromUtf8(what()); }
    /// Without what the system said.
    QString Sentenca() const { return m_sentenca; }

private:
    QString m_sentenca;
};
