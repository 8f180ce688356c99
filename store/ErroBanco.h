#pragma once

#include <QString>

#include <stdexcept>

/**
 * The database refused a statement or could not be opened. Thrown where it happens, with a text fit for the
 * user, and caught once, at the event handler (base/Protegido.h).
 */
class ErroBanco : public std::runtime_error
{
public:
    explicit ErroBanco(const QString &mensagem)
        : std::runtime_error(mensagem.toStdString())
    {
    }
    QString Mensagem() const { return QString::fromUtf8(what()); }
};
