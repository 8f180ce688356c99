#pragma once

#include <QString>

#include <stdexcept>

/// Nothing, or not everything, came out of the printer. The text is fit for the user.
class ErroImpressao : public std::runtime_error
{
public:
    explicit ErroImpressao(const QString &mensagem)
        : std::runtime_error(mensagem.toStdString())
    {
    }
    QString Mensagem() const { return QString::fromUtf8(what()); }
};
