#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace Formatos
{
/// What is read of any one file at most; a recipe file is never larger.
constexpr qint64 kMaiorArquivo = qint64(256) * 1024 * 1024;

/**
 * Where a file came from, and what lies beside it: a folder of the disk or an archive. Nothing outside it is
 * ever read.
 */
class Fonte
{
public:
    virtual ~Fonte() = default;
    /// The names of all files, "/" between folders, sorted.
    virtual QStringList Nomes() const = 0;
    /// The bytes of one; nothing when there is none of that name or it passes the limit.
    virtual std::optional<QByteArray> Ler(const QString &nome) const = 0;
};

/// A folder of the disk; links that lead out of it are not followed.
class FontePasta : public Fonte
{
public:
    explicit FontePasta(const QString &pasta);
    QStringList Nomes() const override;
    std::optional<QByteArray> Ler(const QString &nome) const override;

private:
    QString m_pasta; ///< canonical
};

/// What an archive held, already unpacked within bounds.
class FonteMemoria : public Fonte
{
public:
    explicit FonteMemoria(QHash<QString, QByteArray> arquivos)
        : m_arquivos(std::move(arquivos))
    {
    }
    QStringList Nomes() const override;
    std::optional<QByteArray> Ler(const QString &nome) const override;

private:
    QHash<QString, QByteArray> m_arquivos;
};

/// Nothing beside the file.
class FonteNenhuma : public Fonte
{
public:
    QStringList Nomes() const override { return {}; }
    std::optional<QByteArray> Ler(const QString &) const override { return std::nullopt; }
};

/// An archive unpacked, or why not.
struct Desempacotado {
    QHash<QString, QByteArray> arquivos;
    QString erro; ///< a sentence for the user; what was whole is in `arquivos` all the same
};
/// Names of folders, "__MACOSX" and dot files left out; the sum, the count and each file bounded.
Desempacotado AbrirZip(const QByteArray &bytes);
Desempacotado AbrirTar(const QByteArray &bytes);
/// A gzip's content; nothing when it is damaged or passes the limit.
std::optional<QByteArray> AbrirGzip(const QByteArray &bytes);

/// "a/b" of "a/b/c", "" of "c".
QString PastaDe(const QString &nome);
/// `nome` seen from the folder of `base`, ".." resolved; "" when it leads outside.
QString NomeRelativo(const QString &base, const QString &nome);
} // namespace Formatos
