#pragma once

#include "packages/RecipienteEmFatias.h"

#include <QString>

class Banco;
class Figuras;
class QFile;

/// How a piece of the work ended.
enum class Fim {
    Feito,
    Falhou,       ///< a disk is full, a file cannot be read or written
    GrandeDemais, ///< a file of 1 000 000 000 bytes or more: nine digits cannot say its length
    Ocupado,      ///< another copy of the program keeps the book too long
    Interrompido, ///< the program is ending
};

/// Writes the book and its pictures as entries of an archive (backup/ArquivoBackup.h).
class ArquivadorDoLivro
{
public:
    ArquivadorDoLivro(const Banco &banco, const Figuras &figuras, const RecipienteEmFatias::Pausa &pausa)
        : m_banco(banco)
        , m_figuras(figuras)
        , m_pausa(pausa)
    {
    }

    /// The database entry: the whole book, with no transaction half done in it. Throws ErroBanco when the
    /// book cannot be opened.
    Fim EscreverLivro(QFile &arquivo);
    /// One picture's entry; a picture that is missing or empty gets none.
    Fim EscreverFigura(QFile &arquivo, const QString &figura);

private:
    Fim Copiar(QFile &origem, qint64 tamanho, QFile &arquivo);

    const Banco &m_banco;
    const Figuras &m_figuras;
    RecipienteEmFatias::Pausa m_pausa;
};
