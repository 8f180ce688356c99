#pragma once

#include "store/access/ArquivoJet.h"

#include <QString>

#include <vector>

namespace Access
{
enum class TipoColuna : quint8 {
    SimNao = 1,
    Byte = 2,
    Inteiro = 3,
    Longo = 4,
    Moeda = 5,
    Simples = 6,
    Duplo = 7,
    DataHora = 8,
    Binario = 9,
    Texto = 10,
    Ole = 11,
    Memo = 12,
    Guid = 15,
    Decimal = 16,
};

struct Coluna {
    QString nome;
    TipoColuna tipo;
    int numero;    ///< its bit in a row's null mask; not its position
    bool fixa;     ///< its value lies in the row's fixed area
    int lugarFixo; ///< of a fixed one: where its value begins in that area
    int variavel;  ///< of the others: which of the row's variable values is its own
    int tamanho;   ///< as declared, in bytes
    int escala;    ///< of a decimal: digits behind the point

    /// Bytes of a value in the fixed area.
    int TamanhoFixo() const;
};

/// What a table's definition pages say of it.
struct DefinicaoTabela {
    qint64 pagina; ///< the first of the definition's pages, which is the owner of the table's data pages
    quint32 linhas;
    qint32 contador; ///< the last number that the autonumber gave
    int topo;        ///< highest column number ever, plus 1
    int variaveis;   ///< variable columns
    std::vector<Coluna> colunas;
    quint32 mapa;                     ///< pointer to the map of its data pages
    std::vector<quint32> outrosMapas; ///< pointers to the maps of its indexes and long values

    /// The column of that name without regard to case, or null. Two of them are an error.
    const Coluna *Procurar(const char *nome) const;
};

DefinicaoTabela LerDefinicao(const ArquivoJet &arquivo, qint64 pagina);
} // namespace Access
