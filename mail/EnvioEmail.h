#pragma once

#include "store/ReceitaNaTela.h"

#include <QByteArray>

#include <optional>

class Abridor;
class Avisos;
class Banco;
class Figuras;
class Telas;

/**
 * The toolbar's e-mail button: the recipe on screen becomes "~temp.eml" in the application folder, which the
 * desktop's mail program opens as an unsent message. The program itself talks to no mail server; when the
 * desktop has no mail program the user is told where the message is.
 */
class EnvioEmail
{
public:
    /// @param site the maker's site, scheme and host, no trailing slash
    EnvioEmail(const Banco &banco, const Figuras &figuras, Avisos &avisos, const Telas &telas,
               Abridor &abridor, const QString &site);

    /// The button's click. Refuses, with a message, when the recipe's view is not on screen or when the
    /// recipe's kind is 3 or more; says so when the file cannot be written. The controls stay as they are.
    void imgEmail_Click(const ReceitaNaTela &receita);

private:
    std::optional<QByteArray> LerFigura(const ReceitaNaTela &receita) const;

    const Banco &m_banco;
    const Figuras &m_figuras;
    Avisos &m_avisos;
    const Telas &m_telas;
    Abridor &m_abridor;
    QString m_site;
};
