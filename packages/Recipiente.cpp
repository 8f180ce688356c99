#include "packages/Recipiente.h"

#include "base/ArquivoSeguro.h"
#include "packages/RecipienteEmFatias.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <new>

#include <zlib.h>

namespace
{
constexpr int kFatiasPorGravacao = 32;

const Bytef *Entrada(const char *bytes)
{
    return reinterpret_cast<const Bytef *>(bytes);
}

Bytef *Saida(char *bytes)
{
    return reinterpret_cast<Bytef *>(bytes);
}

bool SemPausa()
{
    return true;
}

int AbrirOrigem(QFile &origem)
{
    if (origem.fileName().isEmpty())
        return Recipiente::kArquivoNaoEncontrado;
    const QFileInfo info(origem.fileName());
    if (!info.exists())
        return Recipiente::kArquivoNaoEncontrado;
    // Folders and devices are not read: a device may never end.
    if (!info.isFile() || !origem.open(QIODevice::ReadOnly))
        return Recipiente::kArquivoIlegivel;
    return Recipiente::kSucesso;
}

int CompactarAberto(QFile &origem, const QString &destino, int nivel, const std::function<bool()> &pausa,
                    const QString &modelo)
{
    quint32 soma = 0;
    ArquivoSeguro arquivo(destino, {.modelo = modelo});
    arquivo.Abrir();
    int fatias = 0;
    const auto gravando = [&] {
        if (++fatias % kFatiasPorGravacao == 0)
            Disco::IniciarGravacao(arquivo.Arquivo());
        return pausa();
    };
    if (const int codigo = RecipienteEmFatias::Compactar(origem, arquivo.Arquivo(), soma, gravando, nivel);
        codigo != Recipiente::kSucesso)
        return codigo; // the half-written file beside the destination goes with `arquivo`
    arquivo.Confirmar();
    return Recipiente::kSucesso;
}

int DescompactarAberto(QFile &origem, const QString &destino, qint64 maximo)
{
    ArquivoSeguro arquivo(destino);
    arquivo.Abrir();
    if (const int codigo = RecipienteEmFatias::Descompactar(origem, arquivo.Arquivo(), SemPausa, maximo);
        codigo != Recipiente::kSucesso)
        return codigo;
    arquivo.Confirmar();
    return Recipiente::kSucesso;
}

int AbrirOrigem(QFile &origem, const QString &destino, bool sobrescrever)
{
    if (destino.isEmpty())
        return Recipiente::kArquivoNaoEncontrado;
    if (!sobrescrever && QFileInfo::exists(destino) && QFileInfo::exists(origem.fileName()))
        return Recipiente::kArquivoJaExiste;
    return AbrirOrigem(origem);
}

/// Runs the operation; memory that cannot be had, or a file that cannot be written, is a code like the
/// others.
template <class Operacao>
int ComCodigo(Operacao operacao)
{
    try {
        return operacao();
    } catch (const Disco::ErroArquivo &) {
        return Recipiente::kDestinoIndisponivel;
    } catch (const std::bad_alloc &) {
        return Recipiente::kSemMemoria;
    }
}
} // namespace

qint64 Recipiente::Capacidade(qint64 n)
{
    const auto bytes = static_cast<double>(n);
    return static_cast<qint64>(std::nearbyint(bytes + bytes * 0.001 + 15));
}

int Recipiente::Compactar(const QByteArray &bytes, QByteArray &saida, int nivel)
{
    if (bytes.isEmpty())
        return kSucesso;
    if (bytes.size() > kMaiorComprimento)
        return kGrandeDemais;
    return ComCodigo([&] {
        auto m = static_cast<uLongf>(Capacidade(bytes.size()));
        QByteArray fluxo(static_cast<qsizetype>(m) + 1, Qt::Uninitialized);
        const int codigo = compress2(Saida(fluxo.data()), &m, Entrada(bytes.constData()),
                                     static_cast<uLong>(bytes.size()), nivel);
        if (codigo != Z_OK)
            return codigo;
        fluxo.truncate(static_cast<qsizetype>(m));
        fluxo += Trailer(bytes.size());
        saida = std::move(fluxo);
        return kSucesso;
    });
}

int Recipiente::Descompactar(const QByteArray &recipiente, QByteArray &saida, qint64 maximo)
{
    saida.clear();
    if (recipiente.isEmpty())
        return kSucesso;
    const qsizetype m = recipiente.size() - kTrailer;
    const std::optional<qint64> n =
        m < 0 ? std::nullopt : LerTrailer(QByteArrayView(recipiente).last(kTrailer));
    if (!n || !Cabe(*n, m))
        return kTrailerInvalido;
    if (*n > maximo)
        return kGrandeDemais;

    return ComCodigo([&] {
        QByteArray bytes(*n + 1, Qt::Uninitialized);
        auto escrito = static_cast<uLongf>(*n);
        auto lido = static_cast<uLong>(m);
        const int codigo = uncompress2(Saida(bytes.data()), &escrito, Entrada(recipiente.constData()), &lido);
        if (codigo != Z_OK)
            return codigo;
        if (!Cabe(*n, static_cast<qint64>(lido)))
            return kTrailerInvalido;
        std::fill(bytes.begin() + static_cast<qsizetype>(escrito), bytes.end(), '\0');
        saida = std::move(bytes);
        return kSucesso;
    });
}

bool Recipiente::CompactarArquivo(const QString &origem, const QString &destino, int nivel, int &erro,
                                  bool sobrescrever, const std::function<bool()> &pausa,
                                  const QString &modelo)
{
    QFile arquivo(origem);
    erro = AbrirOrigem(arquivo, destino, sobrescrever);
    if (erro == kSucesso)
        erro = ComCodigo(
            [&] { return CompactarAberto(arquivo, destino, nivel, pausa ? pausa : SemPausa, modelo); });
    return erro == kSucesso;
}

bool Recipiente::DescompactarArquivo(const QString &origem, const QString &destino, int &erro,
                                     bool sobrescrever, qint64 maximo)
{
    QFile arquivo(origem);
    erro = AbrirOrigem(arquivo, destino, sobrescrever);
    if (erro == kSucesso)
        erro = ComCodigo([&] { return DescompactarAberto(arquivo, destino, maximo); });
    return erro == kSucesso;
}

int Recipiente::DescompactarPara(const QString &origem, QIODevice &destino, qint64 maximo,
                                 const std::function<bool()> &pausa)
{
    QFile arquivo(origem);
    const int codigo = AbrirOrigem(arquivo);
    if (codigo != kSucesso)
        return codigo;
    return ComCodigo(
        [&] { return RecipienteEmFatias::Descompactar(arquivo, destino, pausa ? pausa : SemPausa, maximo); });
}
