#pragma once

#include "formatos/Receita.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <stdexcept>

class QTemporaryDir;

namespace Formatos
{
/// What keeps a book from being read; what() is UTF-8, for the user.
class ErroLivro : public std::runtime_error
{
public:
    explicit ErroLivro(const QString &texto)
        : std::runtime_error(texto.toStdString())
    {
    }
    QString Texto() const { return QString::fromUtf8(what()); }
};

/// A recipe in the book: its number, when it was registered, and its values as the book has them. The picture
/// is only named; its bytes are asked for one at a time.
struct ReceitaDoLivro {
    qint64 numero = 0;
    QString data; ///< "2005-11-21", "" when the book has none
    Receita receita;
};

/**
 * A book read as a whole, and nothing written: a folder with its `dadosr.lst`, such a file, one of an old
 * installation (Access), a backup, or a package. The program may run beside it; what it writes meanwhile is
 * seen either not at all or completely.
 */
class LivroAberto
{
public:
    enum class Especie { Livro, Access, Copia, Pacote };

    /// @param alvo native path. Throws ErroLivro.
    explicit LivroAberto(const QString &alvo);
    ~LivroAberto();
    LivroAberto(const LivroAberto &) = delete;
    LivroAberto &operator=(const LivroAberto &) = delete;

    Especie Qual() const { return m_especie; }
    /// In the book's order of names.
    const QList<ReceitaDoLivro> &Receitas() const { return m_receitas; }
    /// The bytes of the picture that a recipe names; empty when the file is missing or cannot be read.
    QByteArray Figura(const ReceitaDoLivro &receita) const;
    /// With its picture.
    Receita Completa(const ReceitaDoLivro &receita) const;

    /// What a check of the book's soundness asks for beside the recipes.
    int LinhasSemReceita() const { return m_linhasSemReceita; }
    int Linhas() const { return m_linhas; }
    /// The pictures there are, whether or not a recipe names them.
    QStringList Figuras() const;
    /// Findings of the engine that keeps the book; none for other kinds.
    QStringList Integridade() const;
    /// Findings of the reading itself: damaged records.
    const QStringList &Danos() const { return m_danos; }

private:
    void AbrirArquivo(const QString &arquivo, const QString &pasta);
    void AbrirLivro(const QString &pasta);
    void AbrirAccess(const QString &arquivo);
    void AbrirCopia(const QString &arquivo);
    void AbrirPacote(const QString &arquivo);
    void LerTabelas(const QString &pasta);
    void Ordenar();

    Especie m_especie = Especie::Livro;
    QString m_pasta; ///< where "Fotos" lies
    QString m_motor; ///< the folder whose book the engine read
    QList<ReceitaDoLivro> m_receitas;
    int m_linhas = 0;
    int m_linhasSemReceita = 0;
    QStringList m_danos;
    std::unique_ptr<QTemporaryDir> m_temporaria;
};
} // namespace Formatos
