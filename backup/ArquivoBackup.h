#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

class QIODevice;

/**
 * The archive inside a backup file: entries of a 200-byte name, a 9-digit length and the bytes, one after
 * another. There is no header, no count, no end mark and no checksum. The first entry is the database.
 *
 * Names are 8-bit text, padded with blanks; a longer one is cut.
 */
namespace ArquivoBackup
{
constexpr qsizetype kTamanhoDoNome = 200;
constexpr qsizetype kTamanhoDoCabecalho = 209;
constexpr qint64 kMaiorEntrada = 999'999'999; ///< what nine digits can say
extern const QString kNomeDoLivro;            ///< "dadosr.lst", the first entry's name

/// Where one entry's bytes lie in the archive.
struct Entrada {
    QString nome;
    qint64 posicao;
    qint64 tamanho;
};

/// The name as an entry holds it: trimmed of blanks after the cut at 200 characters.
QString NomeNaEntrada(const QString &nome);

/// The 209 bytes that stand before an entry's data. `tamanho` is 0 to kMaiorEntrada.
QByteArray Cabecalho(const QString &nome, qint64 tamanho);

/// Whether a file of that name may be written into a folder of ours: not empty, no separator of any system,
/// no "..", no control character.
bool NomeAceito(const QString &nome);

/**
 * Reads a whole unpacked archive and tells where its entries lie; writes nothing anywhere.
 *
 * @param arquivo  open for reading and seekable: the archive and the one 0x00 that unpacking leaves behind it
 * @param entradas receives the entries; a remainder too short for a header is ignored
 * @return false when the archive is damaged or foreign: no entry at all, a first entry that is not the
 *         database, a length that is no number, an entry cut short, or a name that is not accepted
 */
bool Ler(QIODevice &arquivo, QList<Entrada> &entradas);
} // namespace ArquivoBackup
