#pragma once

#include "backup/ArquivadorDoLivro.h"
#include "backup/ArquivoBackup.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <functional>
#include <optional>

/**
 * Puts the entries of an archive in the place of the book and its pictures, all of them or none.
 *
 * Every new file is first made complete under "Restore\~preparo" and brought to the disk. Renaming that
 * folder to "Restore\~pronto" is the moment of decision: before it nothing of the book has changed, after it
 * the files only move to their places, and a run that was cut off there is finished by Aplicar() at the next
 * start.
 *
 * A new file is the old one overwritten from its start: where the restored data is shorter, the old file's
 * tail stays behind it, on purpose.
 */
class RestauracaoDoLivro
{
public:
    RestauracaoDoLivro(const Banco &banco, const Figuras &figuras)
        : m_banco(banco)
        , m_figuras(figuras)
    {
    }

    /**
     * Makes every new file; the book and the pictures are only read.
     * @param arquivo the unpacked archive that `entradas` were read from
     * @param andamento called after each entry
     */
    Fim Preparar(QFile &arquivo, const QList<ArquivoBackup::Entrada> &entradas,
                 const std::function<void(const ArquivoBackup::Entrada &)> &andamento,
                 const RecipienteEmFatias::Pausa &pausa);

    /// Copies the present book beside itself as "dadosr-AAAAMMDD-HHMMSS.lst", then keeps three of these
    /// copies, the new one and the two that were made last. Gives its path, "" when there is no book yet,
    /// nothing when the copy cannot be made whole.
    std::optional<QString> GuardarLivroAtual(const QDateTime &agora);

    /// Decides for the new files that Preparar() made; false when that cannot be written down. `copia` is what
    /// GuardarLivroAtual() gave.
    bool Decidir(const QString &copia);

    /// Whether an earlier run decided and was cut off before it had finished.
    bool Pendente() const;
    /// Whether the present book is another than when the pending restore was decided: something was saved
    /// since, which no copy holds.
    bool LivroMudouDesdeADecisao() const;

    /// Moves the files of a decided restore to their places, the book first. Returns the name of the file
    /// that could not be moved, "" when all were; the files after it are discarded.
    QString Aplicar();

    /// Removes what Preparar() made, decided or not. Nothing to remove is no failure. False when a decision
    /// could not be taken back: it must be tried again before the book changes.
    bool Descartar();

private:
    QString PastaDeTrabalho() const;
    QString Preparo() const;
    QString Pronto() const;

    const Banco &m_banco;
    const Figuras &m_figuras;
};
