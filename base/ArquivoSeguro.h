#pragma once

#include "base/Disco.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QFile>
#include <QString>

/// How ArquivoSeguro writes, where the usual is not what is wanted.
struct OpcoesDeEscrita {
    /// A file that tells who may read: what it does not allow the new file does not allow either. The book's
    /// path, for whatever is made of the book.
    QString modelo = {};
    /// Where the destination is a link: replace what it leads to. Only for a name that the cook chose
    /// herself; else the link is replaced, never followed.
    bool seguirLink = false;
    /// Hold a lock on the work file, which tells it from one that a killed program left. Off where the engine
    /// writes it: its own locks and this one are one on some drives.
    bool trancar = true;
};

/**
 * The one way in which a file is written: beside its place under a name of its own, brought to the disk, put
 * in place in one step, and the folder brought to the disk. Until Confirmar() the earlier file stays as it
 * was, whatever happens, and nothing of the new one is left behind but what a kill leaves (RemoverSobras).
 *
 * The work file is made anew under a name that cannot be guessed; no link is ever followed. The new file has
 * the rights, group and owner of the one it replaces, as far as they can be given, and never allows more than
 * `modelo`.
 */
class ArquivoSeguro
{
public:
    /// @param destino native path
    explicit ArquivoSeguro(const QString &destino, OpcoesDeEscrita opcoes = {});
    /// Removes what was not confirmed.
    ~ArquivoSeguro();
    ArquivoSeguro(const ArquivoSeguro &) = delete;
    ArquivoSeguro &operator=(const ArquivoSeguro &) = delete;

    /// Makes the work file. Throws ErroArquivo, also when the destination is anything but a file.
    void Abrir();
    /// The work file, open for reading and writing, without a buffer.
    QFile &Arquivo() { return m_arquivo; }
    /// Its path, for who opens it by name.
    QString Trabalho() const { return QFile::decodeName(m_trabalho); }
    /// Writes all of `bytes`. Throws ErroArquivo.
    void Escrever(QByteArrayView bytes);

    /// Puts the new file in the place of the earlier one. Throws ErroArquivo; nothing has changed then.
    void Confirmar();
    /// The same, but never over a file: false when one has that name already; it can be tried under another.
    bool ConfirmarSeNovo();
    bool ConfirmarSeNovo(const QString &outroDestino);
    /// Throws the work file away at once.
    void Desistir();

    /// Opens, writes, confirms. Throws ErroArquivo.
    static void Gravar(const QString &destino, QByteArrayView bytes, const OpcoesDeEscrita &opcoes = {});

    /// Removes the work files that killed programs left in `pasta`; those that are being written stay.
    static void RemoverSobras(const QString &pasta);

private:
    [[noreturn]] void Falhar(int codigo) const;
    void LevarAoDisco();
    void Tomou(const QByteArray &destino);

    OpcoesDeEscrita m_opcoes;
    QByteArray m_destino;
    QByteArray m_trabalho; ///< empty: none
    QFile m_arquivo;
};
