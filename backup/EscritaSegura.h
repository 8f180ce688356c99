#pragma once

#include <QFile>
#include <QString>

/**
 * A file that replaces another of its name only once it is complete and on the disk: written beside it as
 * "~NAME.tmp", synchronised, renamed over it. Until Confirmar() succeeds the earlier file stays as it was.
 */
class EscritaSegura
{
public:
    /// @param destino native path; when it is a link, what it points to is replaced
    explicit EscritaSegura(const QString &destino);
    /// Removes what was not confirmed.
    ~EscritaSegura();
    EscritaSegura(const EscritaSegura &) = delete;
    EscritaSegura &operator=(const EscritaSegura &) = delete;

    bool Abrir();
    /// The new file, open for reading and writing.
    QFile &Arquivo() { return m_arquivo; }
    /// Puts the new file in the place of the earlier one; false, and nothing changed, when that fails.
    bool Confirmar();

private:
    QString m_destino;
    QFile m_arquivo;
    bool m_pendente = false;
};

/// Starts sending what was written so far to the disk and does not wait, so that the final Sincronizar() is
/// short.
void IniciarGravacao(QFile &arquivo);
/// Waits until the file's bytes are on the disk.
bool Sincronizar(QFile &arquivo);
/// Waits until the folder's entries (new names, renames) are on the disk; a file system that cannot is no
/// failure.
void SincronizarPasta(const QString &pasta);
/// Renames over an existing file. Across file systems the file is copied beside its target first.
bool RenomearSobre(const QString &origem, const QString &destino);
/// Copies the rest of `origem` from its position to the position of `destino`.
bool CopiarResto(QFile &origem, QFile &destino);
