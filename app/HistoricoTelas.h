#pragma once

#include <QString>

#include <array>

/**
 * The history through which "Voltar" closes views. Entries 1 to 5 are used, entry 0 never; each is the view's
 * title, a tab and the view's key (" Receitas Cadastradas" + tab + "Listagem").
 */
class HistoricoTelas
{
public:
    /// Depth, 0 when no view is open, at most 5.
    quint8 Profundidade() const { return m_profundidade; }
    /// Entry as stored; "" for depths without one.
    QString Entrada(int indice) const;
    QString Titulo(int indice) const; ///< the text before the entry's first tab
    QString Chave(int indice) const;  ///< the text after it

    /// Pushes a view. A full history loses its two newest entries first, see the implementation.
    void Empilhar(const QString &titulo, const QString &chave);
    /// Lowers the depth by one; 0 stays 0.
    void Baixar();
    /// Takes every entry of this key out; the others keep their order.
    void Esquecer(const QString &chave);
    void Esvaziar() { m_profundidade = 0; }

private:
    static constexpr int kMaximo = 5;
    std::array<QString, kMaximo + 1> m_telas;
    quint8 m_profundidade = 0;
};
