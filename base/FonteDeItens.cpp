#include "base/FonteDeItens.h"

#include <algorithm>

int FonteDeTextos::Procurar(QStringView prefixo)
{
    if (prefixo.isEmpty())
        return -1;
    const auto achado = std::find_if(m_textos.cbegin(), m_textos.cend(), [prefixo](const QString &texto) {
        return texto.startsWith(prefixo, Qt::CaseInsensitive);
    });
    return achado == m_textos.cend() ? -1 : static_cast<int>(achado - m_textos.cbegin());
}

bool FonteDeTextos::Contem(const QString &valor)
{
    const QString procurado = valor.toUpper();
    return std::any_of(m_textos.cbegin(), m_textos.cend(),
                       [&procurado](const QString &texto) { return texto.toUpper() == procurado; });
}
