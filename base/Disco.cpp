#include "base/Disco.h"

#include <QFileInfo>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <optional>

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr qint64 kBloco = 1024 * 1024;

/// What a file system answers that knows no such call; any other failure is a failure.
bool NaoSeAplica(int codigo)
{
    return codigo == EINVAL || codigo == ENOSYS || codigo == EOPNOTSUPP;
}

constexpr mode_t kDoDono = S_IRUSR | S_IWUSR;
constexpr mode_t kDeTodos = 0777;

std::optional<struct stat> Ver(const QString &caminho, bool seguir)
{
    struct stat dados = {};
    const QByteArray nome = QFile::encodeName(caminho);
    const int rc = seguir ? ::stat(nome.constData(), &dados) : ::lstat(nome.constData(), &dados);
    return rc == 0 && S_ISREG(dados.st_mode) ? std::optional(dados) : std::nullopt;
}

int Fsync(int arquivo)
{
    int rc = 0;
    do
        rc = ::fsync(arquivo);
    while (rc != 0 && errno == EINTR);
    return rc;
}
} // namespace

Disco::ErroArquivo::ErroArquivo(const QString &caminho, int codigo)
    : Erro("Não foi possível gravar o arquivo:\r\n" + caminho +
               "\r\n\r\nVerifique o espaço em disco e a permissão de escrita na pasta.",
           codigo ? qt_error_string(codigo) : QString())
    , m_codigo(codigo)
{
}

void Disco::SuportarLimiteDeTamanho()
{
    std::signal(SIGXFSZ, SIG_IGN);
}

void Disco::IniciarGravacao(QFile &arquivo)
{
    sync_file_range(arquivo.handle(), 0, 0, SYNC_FILE_RANGE_WRITE); // a hint: failures show at Sincronizar()
}

bool Disco::Sincronizar(QFile &arquivo)
{
    if (!arquivo.flush())
        return false;
    return Fsync(arquivo.handle()) == 0 || NaoSeAplica(errno);
}

void Disco::SincronizarPasta(const QString &pasta)
{
    const int fd = ::open(QFile::encodeName(pasta).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return; // a folder that may be written but not read
    Fsync(fd);
    ::close(fd);
}

void Disco::DarDireitos(QFile &arquivo, const QString &anterior, const QString &modelo)
{
    const std::optional<struct stat> substituido = anterior.isEmpty() ? std::nullopt : Ver(anterior, false);
    const std::optional<struct stat> limite = modelo.isEmpty() ? std::nullopt : Ver(modelo, true);
    struct stat novo = {};
    if ((!substituido && !limite) || ::fstat(arquivo.handle(), &novo) != 0)
        return;

    const struct stat &de = substituido ? *substituido : *limite;
    if (de.st_gid != novo.st_gid || de.st_uid != novo.st_uid) {
        const uid_t dono = ::geteuid() == 0 ? de.st_uid : static_cast<uid_t>(-1);
        if (::fchown(arquivo.handle(), dono, de.st_gid) == 0)
            novo.st_gid = de.st_gid;
    }
    mode_t modo = (substituido ? de.st_mode : novo.st_mode) & kDeTodos;
    if (limite)
        modo &= limite->st_mode;
    if (de.st_gid != novo.st_gid) // another group: it gets what everybody has
        modo &= ~static_cast<mode_t>(S_IRWXG) | ((modo & S_IRWXO) << 3U);
    modo |= kDoDono;
    if (modo != (novo.st_mode & kDeTodos))
        ::fchmod(arquivo.handle(), modo);
}

bool Disco::CopiarResto(QFile &origem, QFile &destino)
{
    while (!origem.atEnd()) {
        const QByteArray bloco = origem.read(kBloco);
        if (bloco.isEmpty() || destino.write(bloco) != bloco.size())
            return false;
    }
    return origem.error() == QFileDevice::NoError;
}

bool Disco::FazerPasta(const QString &pasta)
{
    ::mkdir(QFile::encodeName(pasta).constData(), 0777); // usually it is there
    return EPasta(pasta);
}

bool Disco::EPasta(const QString &caminho)
{
    struct stat dados = {};
    return ::lstat(QFile::encodeName(caminho).constData(), &dados) == 0 && S_ISDIR(dados.st_mode);
}

bool Disco::RemoverArvore(const QString &pasta)
{
    std::error_code erro;
    std::filesystem::remove_all(QFile::encodeName(pasta).toStdString(), erro);
    return !erro;
}

QString Disco::Alcancavel(const QByteArray &nome)
{
    const QString texto = QFile::decodeName(nome);
    if (QFile::encodeName(texto) == nome)
        return texto;
    const int aberto = ::open(nome.constData(), O_PATH | O_CLOEXEC); // for as long as the program runs
    return aberto < 0 ? texto : QString("/proc/%1/fd/%2").arg(::getpid()).arg(aberto);
}

QByteArray Disco::PastaDoPrograma()
{
    std::error_code erro;
    const std::filesystem::path programa = std::filesystem::read_symlink("/proc/self/exe", erro);
    return erro ? QByteArray() : QByteArray::fromStdString(programa.parent_path().native());
}

bool Disco::MesmoArquivo(const QString &a, const QString &b)
{
    struct stat um = {};
    struct stat outro = {};
    return ::stat(QFile::encodeName(a).constData(), &um) == 0 &&
           ::stat(QFile::encodeName(b).constData(), &outro) == 0 && um.st_dev == outro.st_dev &&
           um.st_ino == outro.st_ino;
}
