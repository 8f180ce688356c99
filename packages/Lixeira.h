#pragma once

#include <QList>

class Banco;
class Figuras;
class Relogio;
struct ReceitaNaTela;

/**
 * What a deletion or a change is about to take away, and what stood unsaved in the editor, as ordinary
 * packages in the folder "Lixeira" beside the book: opening one offers its recipes for import. Nothing is
 * asked and nothing is said; a failure to write is no reason not to do what the cook asked.
 *
 * The last 500 packages are kept, and of those as many as fit into 200 MB.
 */
class Lixeira
{
public:
    static constexpr qsizetype kMaisPacotes = 500;
    static constexpr qint64 kMaisBytes = 200'000'000;

    Lixeira(const Banco &banco, const Figuras &figuras, const Relogio &relogio)
        : m_banco(banco)
        , m_figuras(figuras)
        , m_relogio(relogio)
    {
    }

    /// The recipes of these numbers, as they are in the book, in one package. Never throws.
    void Guardar(const QList<qint64> &numeros) const noexcept;
    /// What stands on the screen and is not, or not so, in the book. Never throws.
    void Guardar(const ReceitaNaTela &tela) const noexcept;

private:
    class Escrita;
    void Desbastar() const;

    const Banco &m_banco;
    const Figuras &m_figuras;
    const Relogio &m_relogio;
};
