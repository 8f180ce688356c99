#include "store/ExameArquivo.h"

#include "store/Esquema.h"

#include <QFile>
#include <QtEndian>

#include <array>
#include <cerrno>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace std::string_view_literals;

namespace
{
// The header of the engine's file format; numbers are big-endian.
constexpr std::size_t kCabecalho = 100;
constexpr std::size_t kTamanhoDaPagina = 16; ///< two bytes, 1 for 65536
constexpr std::size_t kVersaoDeLeitura = 19; ///< 2 is the write-ahead log
constexpr std::size_t kContador = 24;        ///< changes with every transaction
constexpr std::size_t kPaginas = 28;         ///< number of pages, true if the next equals the counter
constexpr std::size_t kVersaoDoEsquema = 60; ///< `user_version`
constexpr std::size_t kPaginasValidasEm = 92;

TipoArquivo ExaminarLivro(std::string_view cabecalho, qint64 tamanho, int *versao)
{
    if (cabecalho.size() < kCabecalho)
        return TipoArquivo::Cortado;
    const char *bytes = cabecalho.data();
    const auto numero = qFromBigEndian<qint32>(bytes + kVersaoDoEsquema);
    if (versao)
        *versao = numero;
    if (numero > Esquema::kVersao)
        return TipoArquivo::Futuro;
    // The engine takes a last page that is not whole for one that ends in zeros. What lies behind the last
    // page is harmless: a file that was longer may keep its tail when another is written over it.
    const qint64 pagina = qFromBigEndian<quint16>(bytes + kTamanhoDaPagina);
    const qint64 paginas = qFromBigEndian<quint32>(bytes + kPaginas);
    const bool valido =
        qFromBigEndian<quint32>(bytes + kContador) == qFromBigEndian<quint32>(bytes + kPaginasValidasEm);
    if (valido && tamanho < paginas * (pagina == 1 ? 65536 : pagina))
        return TipoArquivo::Cortado;
    return bytes[kVersaoDeLeitura] == 2 ? TipoArquivo::LivroWal : TipoArquivo::Livro;
}
} // namespace

TipoArquivo ExaminarArquivo(const QString &caminho, QString *erro, int *versao)
{
    // O_NONBLOCK: a pipe of that name must not make the program wait for ever.
    const int arquivo = ::open(QFile::encodeName(caminho).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (arquivo < 0) {
        if (errno == ENOENT)
            return TipoArquivo::Ausente;
        if (erro)
            *erro = qt_error_string(errno);
        return TipoArquivo::Outro;
    }
    struct stat dados = {};
    std::array<char, kCabecalho> bytes{};
    ssize_t lidos = -1;
    errno = 0;
    if (::fstat(arquivo, &dados) == 0 && S_ISREG(dados.st_mode))
        lidos = ::read(arquivo, bytes.data(), bytes.size());
    if (lidos < 0 && erro)
        *erro = errno ? qt_error_string(errno) : QString("Não é um arquivo");
    ::close(arquivo);
    if (lidos < 0)
        return TipoArquivo::Outro;
    if (lidos == 0)
        return TipoArquivo::Vazio;
    const std::string_view inicio(bytes.data(), static_cast<std::size_t>(lidos));
    if (inicio.starts_with("SQLite format 3\0"sv))
        return ExaminarLivro(inicio, dados.st_size, versao);
    if (inicio.starts_with("\0\1\0\0Standard Jet DB"sv) || inicio.starts_with("\0\1\0\0Standard ACE DB"sv))
        return TipoArquivo::Access;
    return TipoArquivo::Outro;
}
