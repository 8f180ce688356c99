#pragma once

#include <QtGlobal>

namespace Access
{
/**
 * Where things lie in the two formats of the engine: Jet 3 (Access 97) and Jet 4 (Access 2000 to 2003).
 * Offsets and sizes in bytes. A definition's offsets count from the beginning of its stream.
 */
struct Formato {
    int jet;
    qint64 pagina; ///< size of a page
    qint64 maiorArquivo;
    qint64 mascarado; ///< size of page 0's masked area, which begins at 0x18
    // data pages
    qint64 registros; ///< u16 number of slots, followed by the slots
    // usage maps
    qint64 referencias; ///< most pages that a map by reference names
    // table definitions
    qint64 defLinhas, defContador, defTopo, defVariaveis, defColunas, defIndicesLogicos, defIndicesReais;
    qint64 defMapa, defBlocos;
    qint64 indiceResumo, coluna, indiceReal, indiceRealMapa, indiceLogico; ///< sizes of block entries
    qint64 nomeTamanho; ///< bytes that hold a name's length
    // column entries
    qint64 colNumero, colVariavel, colPrecisao, colEscala, colMarcas, colFixo, colTamanho;
    qint64 fimDaAreaFixa; ///< where fixed values must have ended
    // rows
    qint64 linhaContagem; ///< bytes that hold a row's number of columns; fixed values lie behind
};

inline constexpr qint64 kGiB = qint64(1) << 30;

inline constexpr Formato kJet3 = {
    .jet = 3,
    .pagina = 2048,
    .maiorArquivo = kGiB,
    .mascarado = 126,
    .registros = 8,
    .referencias = 33,
    .defLinhas = 12,
    .defContador = 16,
    .defTopo = 21,
    .defVariaveis = 23,
    .defColunas = 25,
    .defIndicesLogicos = 27,
    .defIndicesReais = 31,
    .defMapa = 35,
    .defBlocos = 43,
    .indiceResumo = 8,
    .coluna = 18,
    .indiceReal = 39,
    .indiceRealMapa = 30,
    .indiceLogico = 20,
    .nomeTamanho = 1,
    .colNumero = 1,
    .colVariavel = 3,
    .colPrecisao = 9,
    .colEscala = 10,
    .colMarcas = 13,
    .colFixo = 14,
    .colTamanho = 16,
    .fimDaAreaFixa = 2012,
    .linhaContagem = 1,
};

inline constexpr Formato kJet4 = {
    .jet = 4,
    .pagina = 4096,
    .maiorArquivo = 2 * kGiB,
    .mascarado = 128,
    .registros = 12,
    .referencias = 17,
    .defLinhas = 16,
    .defContador = 20,
    .defTopo = 41,
    .defVariaveis = 43,
    .defColunas = 45,
    .defIndicesLogicos = 47,
    .defIndicesReais = 51,
    .defMapa = 55,
    .defBlocos = 63,
    .indiceResumo = 12,
    .coluna = 25,
    .indiceReal = 52,
    .indiceRealMapa = 34,
    .indiceLogico = 28,
    .nomeTamanho = 2,
    .colNumero = 5,
    .colVariavel = 7,
    .colPrecisao = 11,
    .colEscala = 12,
    .colMarcas = 15,
    .colFixo = 21,
    .colTamanho = 23,
    .fimDaAreaFixa = 4060,
    .linhaContagem = 2,
};

/// A pointer on disk: page times 256 plus row. 0 points nowhere.
struct Ponteiro {
    quint32 pagina;
    int linha;

    static constexpr Ponteiro De(quint32 valor) { return {valor >> 8, static_cast<int>(valor & 0xFF)}; }
};
} // namespace Access
