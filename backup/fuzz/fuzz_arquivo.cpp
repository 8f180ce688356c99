// Feeds the readers of a backup file whatever the fuzzer makes up. The first byte chooses: even, the rest is
// an archive; odd, the rest is a container, whose contents are read as an archive if it unpacks.
#include "backup/ArquivoBackup.h"
#include "packages/RecipienteEmFatias.h"
#include "packages/Recipiente.h"

#include <QBuffer>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace
{
constexpr int kMaximoDePausas = 64; ///< sixteen megabytes are enough to see

void Exigir(bool condicao, const char *promessa)
{
    if (condicao)
        return;
    std::fprintf(stderr, "broken promise: %s\n", promessa);
    std::abort();
}

void LerArquivo(QByteArray &bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QList<ArquivoBackup::Entrada> entradas;
    if (!ArquivoBackup::Ler(buffer, entradas))
        return;
    Exigir(!entradas.isEmpty() && entradas[0].nome == "dadosr.lst", "the first entry is the book");
    qint64 livre = 0;
    for (const ArquivoBackup::Entrada &entrada : entradas) {
        Exigir(ArquivoBackup::NomeAceito(entrada.nome), "names are accepted ones");
        Exigir(entrada.posicao == livre + ArquivoBackup::kTamanhoDoCabecalho, "entries follow one another");
        Exigir(entrada.tamanho >= 0 && entrada.posicao + entrada.tamanho < bytes.size(),
               "entries lie inside");
        livre = entrada.posicao + entrada.tamanho;
        // A header made anew is the one that was read, but for blanks around the name.
        const QByteArray lido = bytes.mid(entrada.posicao - ArquivoBackup::kTamanhoDoCabecalho,
                                          ArquivoBackup::kTamanhoDoCabecalho);
        const QByteArray feito = ArquivoBackup::Cabecalho(entrada.nome, entrada.tamanho);
        Exigir(lido.left(ArquivoBackup::kTamanhoDoNome).trimmed() ==
                       feito.left(ArquivoBackup::kTamanhoDoNome).trimmed() &&
                   lido.right(9) == feito.right(9),
               "headers come back as they are written");
    }
    Exigir(bytes.size() - 1 - livre < ArquivoBackup::kTamanhoDoCabecalho, "the whole archive is read");
}

void LerRecipiente(QByteArray &bytes)
{
    QBuffer recipiente(&bytes);
    QBuffer saida;
    recipiente.open(QIODevice::ReadOnly);
    saida.open(QIODevice::ReadWrite);
    int pausas = 0;
    const int codigo =
        RecipienteEmFatias::Descompactar(recipiente, saida, [&] { return ++pausas < kMaximoDePausas; });
    if (codigo != Recipiente::kSucesso)
        return;
    QByteArray desdobrado = saida.data();
    Exigir(bytes.isEmpty() == desdobrado.isEmpty(), "unpacking leaves one byte at the least");
    Exigir(desdobrado.size() <= 1032 * bytes.size() + 1032, "a length field that lies fills no disk");
    if (!desdobrado.isEmpty())
        LerArquivo(desdobrado);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho)
{
    if (tamanho == 0)
        return 0;
    QByteArray resto(reinterpret_cast<const char *>(dados) + 1, static_cast<qsizetype>(tamanho) - 1);
    dados[0] % 2 == 0 ? LerArquivo(resto) : LerRecipiente(resto);
    return 0;
}
