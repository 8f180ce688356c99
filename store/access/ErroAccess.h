#pragma once

#include <QString>

#include <stdexcept>

namespace Access
{
/**
 * An Access file cannot be read, or not completely. The text is a whole sentence in Portuguese that says why,
 * without naming the file.
 */
class Erro : public std::runtime_error
{
public:
    explicit Erro(const QString &mensagem)
        : std::runtime_error(mensagem.toStdString())
    {
    }
    QString Mensagem() const { return QString::fromUtf8(what()); }
};

/// Throws Erro: the file is damaged or was cut. `detalhe` says what was found, e.g. "página 12 sem dono".
[[noreturn]] void Danificado(const QString &detalhe);
} // namespace Access
