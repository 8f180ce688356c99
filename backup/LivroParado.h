#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

class Banco;

/**
 * Whether the book's file is still what it was when this was made: for a raw copy, which is whole only if
 * nothing was written meanwhile.
 */
class LivroParado
{
public:
    explicit LivroParado(const Banco &banco);

    /// False when the file is another one or has changed, or when somebody is in the middle of changing it.
    /// @param eLivro false: the engine could not read the file, and a journal beside it says nothing
    bool Continua(bool eLivro = true) const;

private:
    struct Estado {
        quint64 numero = 0;
        qint64 tamanho = -1;
        qint64 segundos = 0, nanossegundos = 0;
        QByteArray cabecalho; ///< holds the engine's change counter
        bool operator==(const Estado &) const = default;
    };
    Estado Ver() const;

    QString m_livro;
    Estado m_antes;
};
