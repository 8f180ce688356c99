#pragma once

#include <QString>
#include <QtGlobal>

/**
 * What proves that nothing was written into a book since: which file it is, when it was touched, and the
 * change counter in its header, which every commit moves on. Four bytes and one look at the folder; the book
 * is not opened for it.
 */
struct Carimbo {
    quint64 disco = 0;
    quint64 arquivo = 0;
    qint64 tamanho = -1;
    qint64 mudadoEm = 0; ///< nanoseconds, by the file system
    quint32 contador = 0;

    /// Invalid when the file is no book, or its journal says that it is being written or was cut off: then
    /// only the engine knows what holds.
    static Carimbo De(const QString &caminho);
    bool Valido() const { return tamanho >= 0; }
    bool operator==(const Carimbo &) const = default;
};
