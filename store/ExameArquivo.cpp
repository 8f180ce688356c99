#include "store/ExameArquivo.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace std::string_view_literals;

TipoArquivo ExaminarArquivo(const QString &caminho, QString *erro)
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
    std::array<char, 20> bytes{};
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
    if (inicio.starts_with("SQLite format 3\0"sv)) {
        constexpr std::size_t kVersaoDeLeitura = 19; // offset in the file's header; 2 is the write-ahead log
        return inicio.size() > kVersaoDeLeitura && inicio[kVersaoDeLeitura] == 2 ? TipoArquivo::LivroWal
                                                                                 : TipoArquivo::Livro;
    }
    if (inicio.starts_with("\0\1\0\0Standard Jet DB"sv) || inicio.starts_with("\0\1\0\0Standard ACE DB"sv))
        return TipoArquivo::Access;
    return TipoArquivo::Outro;
}
