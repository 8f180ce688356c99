#pragma once

#include "store/access/DefinicaoTabela.h"
#include "store/access/Linha.h"
#include "store/access/PaginaDeDados.h"
#include "store/access/Texto.h"

#include <QString>

#include <optional>

namespace Access
{
/**
 * Days since 1899-12-30 as "yyyy-MM-dd", followed by " HH:mm:ss" when the time is not midnight, rounded to
 * the second. The whole part is cut toward zero and the fraction counts forward: -1.25 is 1899-12-29 06:00.
 * Throws ErroAccess outside the years 100 to 9999.
 */
QString DataDoNumero(double valor);

/// The number with `escala` digits behind the point; 17 bytes: sign and four words, the highest first.
double NumeroDecimal(const Trecho &bytes, int escala);

/**
 * Reads values of rows; NULL comes out as no value. A column whose type cannot mean what is asked for throws
 * ErroAccess, as damaged values do. One object reads a whole file: it counts the bytes of long values, which no
 * honest file shares between rows, so that a small damaged one cannot unfold into gigabytes.
 */
class LeitorDeValores
{
public:
    explicit LeitorDeValores(const ArquivoJet &arquivo)
        : m_arquivo(arquivo)
    {
    }

    std::optional<QString> Texto(const Linha &linha, const Coluna &coluna);
    std::optional<double> Numero(const Linha &linha, const Coluna &coluna) const;
    /// A number that is whole and fits 32 bits.
    std::optional<qint32> Inteiro(const Linha &linha, const Coluna &coluna) const;
    std::optional<QString> Data(const Linha &linha, const Coluna &coluna) const;

private:
    QString Decodificar(const Trecho &bytes) const;
    QByteArray Longo(const Trecho &cabecalho);
    Trecho Pedaco(quint32 ponteiro);
    void Gastar(qint64 bytes);

    const ArquivoJet &m_arquivo;
    qint64 m_longos = 0;                   ///< bytes of long values met so far
    std::optional<PaginaDeDados> m_pagina; ///< the last one with long values, and its number
    qint64 m_numeroDaPagina = 0;
};
} // namespace Access
