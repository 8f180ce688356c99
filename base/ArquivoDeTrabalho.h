#pragma once

#include "base/Disco.h"

#include <QFile>
#include <QString>

/**
 * A file that lives for the time of one operation under a name that is known to all. It is made anew, for its
 * user's eyes only: what lies under that name, a link too, is removed first and never written through.
 * Another copy of the program may make its own meanwhile; both go on with their own.
 */
class ArquivoDeTrabalho
{
public:
    /// @param caminho native path
    explicit ArquivoDeTrabalho(const QString &caminho);
    /// Removes it.
    ~ArquivoDeTrabalho();
    ArquivoDeTrabalho(const ArquivoDeTrabalho &) = delete;
    ArquivoDeTrabalho &operator=(const ArquivoDeTrabalho &) = delete;

    /// Makes it. Throws ErroArquivo.
    void Abrir();
    /// Makes it without a name, in another folder: where the one it belongs in cannot be written. Nothing of
    /// it is left whatever happens. Throws ErroArquivo.
    void AbrirSemNome(const QString &pasta);
    /// Open for reading and writing, without a buffer.
    QFile &Arquivo() { return m_arquivo; }
    QString Caminho() const { return m_caminho; }
    /// Removes it, unless the name is another copy's by now. What is open stays open.
    void Remover();

private:
    QString m_caminho;
    QFile m_arquivo;
    quint64 m_dispositivo = 0;
    quint64 m_numero = 0; ///< 0: nothing of ours has that name
};
