#pragma once

#include <QString>

/**
 * Steps by which one file takes another's place, each safe against a crash at any moment. Paths are native.
 * Failures throw ErroBanco and leave the files of before.
 */
namespace TrocaDeArquivo
{
/// A new empty file in the folder of `caminho`, with a name of its own that begins with the name of
/// `caminho`. It is removed at the end of the object's life, unless it has taken another name by then.
class Provisorio
{
public:
    explicit Provisorio(const QString &caminho);
    ~Provisorio();
    Provisorio(const Provisorio &) = delete;
    Provisorio &operator=(const Provisorio &) = delete;

    QString Caminho() const { return m_caminho; }
    /// Rights as those of `modelo`, and writable for the owner.
    void CopiarDireitos(const QString &modelo);
    /// Forces the bytes to the disk.
    void ForcarAoDisco();
    /// Takes the place of the file `caminho`, in one step.
    void Substituir(const QString &caminho);
    /// Takes the name `caminho` unless a file has it already; false then.
    bool Batizar(const QString &caminho);

private:
    QString m_caminho;
    int m_arquivo = -1;
};

/// Removes what crashes left of earlier Provisorio objects for the same `caminho`. Only while no other
/// process can be at it.
void RemoverSobras(const QString &caminho);

/**
 * Gives the file a second name beside it: "dadosr-access-original.lst" for "dadosr.lst", with a number when
 * that is taken by another file. The bytes are not copied where the file system can do without.
 * @param novo set to whether the name was made now; false when a crash had left it there
 * @return the name's path
 */
QString Guardar(const QString &caminho, bool &novo);
/// The same by copying, for file systems without links.
QString GuardarPorCopia(const QString &caminho);

/// Makes the folder's names of this moment survive a power cut.
void ForcarPastaAoDisco(const QString &caminho);
} // namespace TrocaDeArquivo
