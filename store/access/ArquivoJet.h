#pragma once

#include "store/access/Formato.h"

#include <QByteArray>

#include <array>

class QIODevice;

namespace Access
{
/// Byte 0 of a page.
enum class TipoDePagina : quint8 { Dados = 1, Definicao = 2, Mapa = 5 };

/**
 * An Access database file as numbered pages. Page 0, the header, is looked at here: format, code page and the
 * key of encoded pages. A password does not hide the pages and is not asked for.
 *
 * Damage, an unknown version, and a file that is no Access database throw ErroAccess.
 */
class ArquivoJet
{
public:
    /// @param arquivo open for reading, random access; must outlive this object
    explicit ArquivoJet(QIODevice &arquivo);

    const Formato &formato() const { return *m_formato; }
    qint64 Tamanho() const { return m_tamanho; }
    /// Whole pages; an odd rest at the file's end does not count.
    qint64 Paginas() const { return m_paginas; }

    /// The bytes of page n, decoded: 1 <= n < Paginas(), of that type.
    QByteArray Pagina(qint64 n, TipoDePagina tipo) const;
    /// The same, whatever its type.
    QByteArray Pagina(qint64 n) const;

private:
    void LerCabecalho();
    QByteArray LerDoArquivo(qint64 lugar, qint64 tamanho) const;

    QIODevice &m_arquivo;
    const Formato *m_formato = &kJet4;
    qint64 m_tamanho = 0;
    qint64 m_paginas = 0;
    quint32 m_chave = 0; ///< 0: pages are not encoded

    // Rows of neighbouring recipes keep their long texts on the same few pages.
    struct Guardada {
        qint64 numero = 0;
        QByteArray bytes;
    };
    mutable std::array<Guardada, 64> m_guardadas;
};
} // namespace Access
