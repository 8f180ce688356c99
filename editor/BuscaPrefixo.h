#pragma once

#include <QStringList>
#include <QStringView>

#include <string>
#include <vector>

/**
 * Finds the first of many texts that begins with a typed prefix, letter case ignored, accents kept.
 *
 * It runs at every key press over lists of up to some hundred thousand names, so the texts lie folded to one
 * case in one piece of memory that is read from front to back.
 */
class BuscaPrefixo
{
public:
    void Definir(const QStringList &itens);
    void Acrescentar(const QString &item);
    int Quantidade() const { return static_cast<int>(m_inicios.size()) - 1; }

    /// Position of the first text, in list order, that begins with `prefixo`; -1 when there is none. An empty
    /// prefix finds nothing: an emptied field asks for no proposal.
    int Procurar(QStringView prefixo) const;

private:
    std::u16string m_letras;              ///< all texts, one after another
    std::vector<quint32> m_inicios = {0}; ///< where each begins, and the end of the last
};
