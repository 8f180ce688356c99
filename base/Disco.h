#pragma once

#include "base/Erro.h"

#include <QFile>
#include <QString>

/**
 * The file system as it really is, beneath what Qt shows of it: what is on the disk and what is not yet,
 * whose a file is, what a link is. Paths are native. The calls of the operating system that these need are
 * made in Disco.cpp, RenomearSobre.cpp, ArquivoSeguro.cpp and ArquivoDeTrabalho.cpp and nowhere else.
 */
namespace Disco
{
/// A file that could not be written.
class ErroArquivo : public Erro
{
public:
    /// @param codigo errno
    ErroArquivo(const QString &caminho, int codigo);
    int Codigo() const { return m_codigo; }

private:
    int m_codigo;
};

/// A file that grows beyond the limit of its user fails with an error, like any other; it does not end the
/// program. Once, at the start.
void SuportarLimiteDeTamanho();

/// Starts sending what was written so far to the disk and does not wait, so that the final Sincronizar() is
/// short.
void IniciarGravacao(QFile &arquivo);
/// Waits until the file's bytes are on the disk; false, with errno, when they are not. Where a file cannot be
/// waited for (some drives of a network) that is no failure.
bool Sincronizar(QFile &arquivo);
/// Waits until the folder's entries (new names, renames) are on the disk. What was renamed is in its place
/// whatever this says, so a failure is none of the caller's.
void SincronizarPasta(const QString &pasta);
/// Gives the new file the rights, group and owner of `anterior`, which it will replace, and never more than
/// `modelo` allows; either may be missing. Where they cannot be given those of a new file stay.
void DarDireitos(QFile &arquivo, const QString &anterior, const QString &modelo);
/// Copies the rest of `origem` from its position to the position of `destino`.
bool CopiarResto(QFile &origem, QFile &destino);

/// Makes a folder, unless it is there; false when there is none afterwards, or a link in its place.
bool FazerPasta(const QString &pasta);
/// Whether it is a folder itself, not a link to one.
bool EPasta(const QString &caminho);
/// Removes a folder with all that is in it; of links only the links, `pasta` included. True when it is gone.
bool RemoverArvore(const QString &pasta);
/// A path of Unicode that leads to the file or folder of this name, as long as the program runs: the name
/// itself, or, where its bytes are no text, a way round it. Other programs of the same user can open it too.
QString Alcancavel(const QByteArray &nome);
/// The folder of the running program, as bytes; empty when the system does not say.
QByteArray PastaDoPrograma();
/// Whether two names lead to one file.
bool MesmoArquivo(const QString &a, const QString &b);
} // namespace Disco
