#include "base/Separadores.h"

#include <QLocale>

namespace
{
Separadores atuais;
}

Separadores Separadores::De(const QLocale &localidade)
{
    Separadores s;
    const QString meio = localidade.toString(0.5, 'f', 1);
    if (meio.size() > 1)
        s.decimal = meio[1];
    // Some locales group only from five digits on; asked for a pattern, 1000 is always grouped.
    const QString grupo = localidade.groupSeparator();
    if (!grupo.isEmpty())
        s.milhar = grupo[0];
    return s;
}

const Separadores &Separadores::Atuais()
{
    return atuais;
}

void Separadores::Definir(const Separadores &separadores)
{
    atuais = separadores;
}
