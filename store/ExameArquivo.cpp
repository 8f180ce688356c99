#include "store/ExameArquivo.h"

#include "store/Cabecalho.h"
#include "store/Esquema.h"

#include <QtEndian>

#include <cerrno>
#include <string_view>

using namespace std::string_view_literals;

namespace
{
// The header of the engine's file format; numbers are big-endian.
constexpr std::size_t kTamanhoDaPagina = 16; ///< two bytes, 1 for 65536
constexpr std::size_t kVersaoDeLeitura = 19; ///< 2 is the write-ahead log
constexpr std::size_t kFixos = 21;
constexpr std::size_t kContador = 24;        ///< changes with every transaction
constexpr std::size_t kPaginas = 28;         ///< number of pages, true if the next equals the counter
constexpr std::size_t kVersaoDoEsquema = 60; ///< `user_version`
constexpr std::size_t kPaginasValidasEm = 92;

TipoArquivo ExaminarLivro(std::string_view cabecalho, qint64 tamanho, int *versao)
{
    if (cabecalho.size() < Cabecalho::kTamanho)
        return TipoArquivo::Cortado;
    const char *bytes = cabecalho.data();
    const auto numero = qFromBigEndian<qint32>(bytes + kVersaoDoEsquema);
    if (versao)
        *versao = numero;
    // Three bytes that are the same in every file of the engine, or the number means nothing.
    if (numero > Esquema::kVersao && cabecalho.substr(kFixos, 3) == "\x40\x20\x20")
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
    const Cabecalho lido = Cabecalho::De(caminho);
    if (lido.lidos < 0) {
        if (lido.erro == ENOENT)
            return TipoArquivo::Ausente;
        if (erro)
            *erro = lido.erro ? qt_error_string(lido.erro) : QString("Não é um arquivo");
        return TipoArquivo::Outro;
    }
    if (lido.lidos == 0)
        return TipoArquivo::Vazio;
    const std::string_view inicio(lido.bytes.data(), static_cast<std::size_t>(lido.lidos));
    if (inicio.starts_with("SQLite format 3\0"sv))
        return ExaminarLivro(inicio, lido.dados.st_size, versao);
    if (inicio.starts_with("\0\1\0\0Standard Jet DB"sv) || inicio.starts_with("\0\1\0\0Standard ACE DB"sv))
        return TipoArquivo::Access;
    return TipoArquivo::Outro;
}
