#include "base/ArquivoSeguro.h"

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cstdlib>
#include <optional>

#include <fcntl.h>
#include <stdio.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

namespace
{
constexpr QByteArrayView kInicio("~cozinhario-");
constexpr QByteArrayView kFim(".tmp");
constexpr int kSorteadas = 16; ///< hexadecimal digits
constexpr int kTentativas = 100;
constexpr time_t kUmDia = 24 * 60 * 60;
constexpr mode_t kDoDono = S_IRUSR | S_IWUSR;

QByteArray PastaDe(const QByteArray &caminho)
{
    const qsizetype barra = caminho.lastIndexOf('/');
    return barra < 0 ? QByteArray("./") : caminho.first(barra + 1);
}

QByteArray NomeSorteado()
{
    const QByteArray numero = QByteArray::number(QRandomGenerator::system()->generate64(), 16);
    return kInicio.toByteArray() + numero.rightJustified(kSorteadas, '0') + kFim.toByteArray();
}

std::optional<struct stat> Ver(const QByteArray &caminho, bool seguir)
{
    struct stat dados = {};
    const int rc = seguir ? ::stat(caminho.constData(), &dados) : ::lstat(caminho.constData(), &dados);
    return rc == 0 ? std::optional(dados) : std::nullopt;
}

/// Where a link leads to; the name itself when it is none or leads nowhere.
QByteArray SemLink(const QByteArray &caminho)
{
    const std::optional<struct stat> dados = Ver(caminho, false);
    if (!dados || !S_ISLNK(dados->st_mode))
        return caminho;
    char *real = ::realpath(caminho.constData(), nullptr);
    const QByteArray alvo = real ? QByteArray(real) : caminho;
    std::free(real);
    return alvo;
}

/// Whether nobody is writing it any more.
bool Abandonado(const QByteArray &caminho)
{
    const int arquivo = ::open(caminho.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (arquivo < 0)
        return false;
    struct stat dados = {};
    bool abandonado = false;
    if (::fstat(arquivo, &dados) == 0 && S_ISREG(dados.st_mode)) {
        abandonado = ::flock(arquivo, LOCK_EX | LOCK_NB) == 0;
        if (!abandonado && errno != EWOULDBLOCK)
            abandonado = dados.st_mtime + kUmDia < ::time(nullptr); // a drive without locks
    }
    ::close(arquivo);
    return abandonado;
}
} // namespace

ArquivoSeguro::ArquivoSeguro(const QString &destino, OpcoesDeEscrita opcoes)
    : m_opcoes(std::move(opcoes))
    , m_destino(QFile::encodeName(destino))
{
    if (m_opcoes.seguirLink)
        m_destino = SemLink(m_destino);
}

ArquivoSeguro::~ArquivoSeguro()
{
    Desistir();
}

void ArquivoSeguro::Falhar(int codigo) const
{
    throw Disco::ErroArquivo(QFile::decodeName(m_destino), codigo);
}

void ArquivoSeguro::Abrir()
{
    Desistir();
    // A device, a pipe or a folder is nobody's file to replace.
    const std::optional<struct stat> anterior = Ver(m_destino, false);
    if (anterior && !S_ISREG(anterior->st_mode) && !S_ISLNK(anterior->st_mode))
        Falhar(S_ISDIR(anterior->st_mode) ? EISDIR : EINVAL);

    // Never wider than it will be: who opened it meanwhile would go on reading.
    mode_t modo = 0666;
    if (anterior && S_ISREG(anterior->st_mode))
        modo &= anterior->st_mode;
    if (!m_opcoes.modelo.isEmpty())
        if (const auto modelo = Ver(QFile::encodeName(m_opcoes.modelo), true))
            modo &= modelo->st_mode;
    int arquivo = -1;
    for (int vez = 0; vez < kTentativas && arquivo < 0; ++vez) {
        m_trabalho = PastaDe(m_destino) + NomeSorteado();
        arquivo = ::open(m_trabalho.constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                         modo | kDoDono);
        if (arquivo < 0 && errno != EEXIST && errno != EINTR)
            break;
    }
    if (arquivo < 0) {
        m_trabalho.clear();
        Falhar(errno);
    }
    if (m_opcoes.trancar)
        ::flock(arquivo,
                LOCK_EX | LOCK_NB); // nobody else knows the name yet; a drive without locks does without
    m_arquivo.open(arquivo, QIODevice::ReadWrite | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle);
}

void ArquivoSeguro::Escrever(QByteArrayView bytes)
{
    errno = 0;
    if (m_arquivo.write(bytes.data(), bytes.size()) != bytes.size())
        Falhar(errno);
}

void ArquivoSeguro::LevarAoDisco()
{
    if (m_trabalho.isEmpty())
        Falhar(EBADF);
    Disco::DarDireitos(m_arquivo, QFile::decodeName(m_destino), m_opcoes.modelo);
    errno = 0;
    if (!Disco::Sincronizar(m_arquivo))
        Falhar(errno);
}

void ArquivoSeguro::Tomou(const QByteArray &destino)
{
    m_trabalho.clear();
    m_arquivo.close();
    Disco::SincronizarPasta(QFile::decodeName(PastaDe(destino)));
}

void ArquivoSeguro::Confirmar()
{
    LevarAoDisco();
    if (::rename(m_trabalho.constData(), m_destino.constData()) != 0)
        Falhar(errno);
    Tomou(m_destino);
}

bool ArquivoSeguro::ConfirmarSeNovo()
{
    return ConfirmarSeNovo(QFile::decodeName(m_destino));
}

bool ArquivoSeguro::ConfirmarSeNovo(const QString &outroDestino)
{
    const QByteArray destino = QFile::encodeName(outroDestino);
    LevarAoDisco();
    int rc = ::renameat2(AT_FDCWD, m_trabalho.constData(), AT_FDCWD, destino.constData(), RENAME_NOREPLACE);
    if (rc != 0 && (errno == EINVAL || errno == ENOSYS)) {
        // A file system without that call has links as a rule; the oldest can promise nothing in one step.
        rc = ::link(m_trabalho.constData(), destino.constData());
        if (rc == 0)
            ::unlink(m_trabalho.constData());
        else if (errno != EEXIST && Ver(destino, false))
            errno = EEXIST;
        else if (errno != EEXIST)
            rc = ::rename(m_trabalho.constData(), destino.constData());
    }
    if (rc != 0 && errno == EEXIST)
        return false;
    if (rc != 0)
        Falhar(errno);
    Tomou(destino);
    return true;
}

void ArquivoSeguro::Desistir()
{
    if (!m_trabalho.isEmpty())
        ::unlink(m_trabalho.constData());
    m_trabalho.clear();
    m_arquivo.close();
}

void ArquivoSeguro::Gravar(const QString &destino, QByteArrayView bytes, const OpcoesDeEscrita &opcoes)
{
    ArquivoSeguro arquivo(destino, opcoes);
    arquivo.Abrir();
    arquivo.Escrever(bytes);
    arquivo.Confirmar();
}

void ArquivoSeguro::RemoverSobras(const QString &pasta)
{
    const qsizetype tamanho = kInicio.size() + kSorteadas + kFim.size();
    const QString padrao = QString::fromLatin1(kInicio) + '*' + QString::fromLatin1(kFim);
    for (const QString &nome : QDir(pasta).entryList({padrao}, QDir::Files | QDir::Hidden)) {
        const QByteArray caminho = QFile::encodeName(pasta + '/' + nome);
        if (nome.size() == tamanho && Abandonado(caminho))
            ::unlink(caminho.constData());
    }
}
