#include "store/access/TrocaDeArquivo.h"

#include "store/ErroBanco.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>

#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr QLatin1String kMarca(".convertendo-");
constexpr int kSorteadas = 6; // letters that mkostemp() chooses
constexpr int kMaisNomes = 100000;

[[noreturn]] void Falhar(const QString &oQue, int erro)
{
    throw ErroBanco(oQue + ": " + qt_error_string(erro));
}

QString NomeDoOriginal(const QString &caminho, int vez)
{
    const QFileInfo arquivo(caminho);
    QString nome = arquivo.completeBaseName() + "-access-original";
    if (vez > 1)
        nome += '-' + QString::number(vez);
    if (!arquivo.suffix().isEmpty())
        nome += '.' + arquivo.suffix();
    return arquivo.absoluteDir().filePath(nome);
}

bool MesmoArquivo(const QByteArray &a, const QByteArray &b)
{
    struct stat de = {};
    struct stat para = {};
    return ::lstat(a.constData(), &de) == 0 && ::lstat(b.constData(), &para) == 0 &&
           de.st_dev == para.st_dev && de.st_ino == para.st_ino;
}

constexpr const char *kNaoGuardado = "O arquivo original não pôde ser guardado com outro nome";
} // namespace

namespace TrocaDeArquivo
{
Provisorio::Provisorio(const QString &caminho)
{
    QByteArray nome = QFile::encodeName(caminho + kMarca) + QByteArray(kSorteadas, 'X');
    m_arquivo = ::mkostemp(nome.data(), O_CLOEXEC);
    if (m_arquivo < 0)
        Falhar("Não se pode gravar na pasta do livro", errno);
    m_caminho = QFile::decodeName(nome);
}

Provisorio::~Provisorio()
{
    ::close(m_arquivo);
    if (!m_caminho.isEmpty())
        QFile::remove(m_caminho);
}

void Provisorio::CopiarDireitos(const QString &modelo)
{
    struct stat dados = {};
    if (::stat(QFile::encodeName(modelo).constData(), &dados) != 0)
        return;
    // Where rights or owners cannot be set, those of a new file stay. An old book may have come from a
    // read-only disc; the new one must be writable.
    if (::fchown(m_arquivo, dados.st_uid, dados.st_gid) != 0)
        errno = 0;
    ::fchmod(m_arquivo, (dados.st_mode & 0777) | S_IRUSR | S_IWUSR);
}

void Provisorio::ForcarAoDisco()
{
    if (::fsync(m_arquivo) != 0)
        Falhar("O novo livro de receitas não pôde ser gravado", errno);
}

void Provisorio::Substituir(const QString &caminho)
{
    if (::rename(QFile::encodeName(m_caminho).constData(), QFile::encodeName(caminho).constData()) != 0)
        Falhar("O novo livro de receitas não pôde tomar o lugar do antigo", errno);
    m_caminho.clear();
}

bool Provisorio::Batizar(const QString &caminho)
{
    const QByteArray de = QFile::encodeName(m_caminho);
    const QByteArray para = QFile::encodeName(caminho);
    int rc = ::renameat2(AT_FDCWD, de.constData(), AT_FDCWD, para.constData(), RENAME_NOREPLACE);
    if (rc != 0 && (errno == EINVAL || errno == ENOSYS)) {
        // The oldest file systems cannot promise it in one step.
        if (QFile::exists(caminho))
            return false;
        rc = ::rename(de.constData(), para.constData());
    }
    if (rc != 0 && errno == EEXIST)
        return false;
    if (rc != 0)
        Falhar(kNaoGuardado, errno);
    m_caminho.clear();
    return true;
}

void RemoverSobras(const QString &caminho)
{
    const QFileInfo arquivo(caminho);
    const QString comeco = arquivo.fileName() + kMarca;
    QDir pasta = arquivo.absoluteDir();
    const QStringList nomes = pasta.entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &nome : nomes)
        if (nome.startsWith(comeco) && nome.size() == comeco.size() + kSorteadas)
            pasta.remove(nome); // one that stays does no harm
}

QString Guardar(const QString &caminho, bool &novo)
{
    const QByteArray original = QFile::encodeName(caminho);
    for (int vez = 1; vez < kMaisNomes; ++vez) {
        const QString nome = NomeDoOriginal(caminho, vez);
        const QByteArray guardado = QFile::encodeName(nome);
        novo = ::link(original.constData(), guardado.constData()) == 0;
        if (novo)
            return nome;
        if (errno != EEXIST) {
            novo = true;
            return GuardarPorCopia(caminho);
        }
        if (MesmoArquivo(original, guardado))
            return nome;
    }
    Falhar(kNaoGuardado, EEXIST);
}

QString GuardarPorCopia(const QString &caminho)
{
    QFile original(caminho);
    Provisorio copia(caminho);
    QFile destino(copia.Caminho());
    if (!original.open(QIODevice::ReadOnly) || !destino.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw ErroBanco(kNaoGuardado + QString(": ") + original.errorString());
    constexpr qint64 kPorVez = 1 << 20;
    for (QByteArray bytes = original.read(kPorVez); !bytes.isEmpty(); bytes = original.read(kPorVez))
        if (destino.write(bytes) != bytes.size())
            throw ErroBanco(kNaoGuardado + QString(": ") + destino.errorString());
    if (original.error() != QFileDevice::NoError || destino.size() != original.size())
        throw ErroBanco(kNaoGuardado + QString(": ") + original.errorString());
    destino.close();
    copia.CopiarDireitos(caminho);
    copia.ForcarAoDisco();
    for (int vez = 1; vez < kMaisNomes; ++vez) {
        const QString nome = NomeDoOriginal(caminho, vez);
        if (copia.Batizar(nome))
            return nome;
    }
    Falhar(kNaoGuardado, EEXIST);
}

void ForcarPastaAoDisco(const QString &caminho)
{
    const int pasta = ::open(QFile::encodeName(QFileInfo(caminho).absolutePath()).constData(),
                             O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (pasta < 0)
        return;     // a folder that may be written but not read: the names are right, if not yet on the disk
    ::fsync(pasta); // some file systems know none for folders
    ::close(pasta);
}
} // namespace TrocaDeArquivo
