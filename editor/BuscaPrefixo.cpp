#include "editor/BuscaPrefixo.h"

#include <QChar>

namespace
{
// One unit for one unit: a completion counts the letters that are still missing, so folding must not change a
// text's length.
char16_t Dobrar(QChar letra)
{
    return letra.toCaseFolded().unicode();
}
} // namespace

void BuscaPrefixo::Definir(const QStringList &itens)
{
    m_letras.clear();
    m_inicios.assign(1, 0);
    m_inicios.reserve(static_cast<size_t>(itens.size()) + 1);
    for (const QString &item : itens)
        Acrescentar(item);
}

void BuscaPrefixo::Acrescentar(const QString &item)
{
    for (const QChar letra : item)
        m_letras.push_back(Dobrar(letra));
    m_inicios.push_back(static_cast<quint32>(m_letras.size()));
}

int BuscaPrefixo::Procurar(QStringView prefixo) const
{
    if (prefixo.isEmpty())
        return -1;
    std::u16string procurado;
    procurado.reserve(static_cast<size_t>(prefixo.size()));
    for (const QChar letra : prefixo)
        procurado.push_back(Dobrar(letra));

    const std::u16string_view letras = m_letras;
    for (size_t i = 0; i + 1 < m_inicios.size(); ++i) {
        const std::u16string_view item = letras.substr(m_inicios[i], m_inicios[i + 1] - m_inicios[i]);
        if (!item.empty() && item[0] == procurado[0] && item.starts_with(procurado))
            return static_cast<int>(i);
    }
    return -1;
}
