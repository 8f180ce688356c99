#include "packages/Recipiente.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <cmath>
#include <new>
#include <vector>

#include <zlib.h>

namespace
{
constexpr qsizetype kNulosIniciais = 5;
constexpr qint64 kMaiorDesdobramento = 1032; ///< deflate at its best: 258 bytes out of two bits
constexpr qsizetype kBloco = 256 * 1024;

const Bytef *Entrada(const char *bytes)
{
    return reinterpret_cast<const Bytef *>(bytes);
}

Bytef *Saida(char *bytes)
{
    return reinterpret_cast<Bytef *>(bytes);
}

/// zlib's inflate state, released at the end of the scope.
class Inflador
{
public:
    Inflador() { m_inicio = inflateInit(&fluxo); }
    ~Inflador()
    {
        if (m_inicio == Z_OK)
            inflateEnd(&fluxo);
    }
    Inflador(const Inflador &) = delete;
    Inflador &operator=(const Inflador &) = delete;
    int Inicio() const { return m_inicio; }

    z_stream fluxo = {};

private:
    int m_inicio;
};

bool Escrever(QIODevice &destino, const char *bytes, qint64 tamanho)
{
    return destino.write(bytes, tamanho) == tamanho;
}

/// commit() alone would put a cut file in place: Qt 6.4 forgets that the last of the buffer found no room.
bool Confirmar(QSaveFile &arquivo)
{
    return arquivo.flush() && arquivo.commit();
}

bool EscreverNulos(QIODevice &destino, qint64 quantos)
{
    const QByteArray nulos(std::min<qint64>(quantos, kBloco), '\0');
    for (; quantos > 0; quantos -= std::min<qint64>(quantos, nulos.size()))
        if (!Escrever(destino, nulos.constData(), std::min<qint64>(quantos, nulos.size())))
            return false;
    return true;
}

/// Unfolds the next `m` bytes of `origem` into n + 1 bytes of `destino`, block by block; codes as uncompress.
int Desdobrar(QIODevice &origem, qint64 m, qint64 n, QIODevice &destino)
{
    Inflador inflador;
    if (inflador.Inicio() != Z_OK)
        return inflador.Inicio();
    z_stream &fluxo = inflador.fluxo;
    std::vector<char> lido(kBloco);
    std::vector<char> escrito(kBloco);
    qint64 falta = m;
    qint64 espaco = n;

    for (int codigo = Z_OK; codigo != Z_STREAM_END;) {
        if (fluxo.avail_in == 0 && falta > 0) {
            const qint64 bytes = origem.read(lido.data(), std::min<qint64>(falta, kBloco));
            if (bytes <= 0)
                return Recipiente::kArquivoIlegivel;
            falta -= bytes;
            fluxo.next_in = Saida(lido.data());
            fluxo.avail_in = static_cast<uInt>(bytes);
        }
        fluxo.next_out = Saida(escrito.data());
        fluxo.avail_out = static_cast<uInt>(std::min<qint64>(espaco, kBloco));
        const uInt oferecido = fluxo.avail_out;
        codigo = inflate(&fluxo, Z_NO_FLUSH);

        const qint64 saiu = oferecido - fluxo.avail_out;
        if (!Escrever(destino, escrito.data(), saiu))
            return Recipiente::kDestinoIndisponivel;
        espaco -= saiu;
        // Z_BUF_ERROR: no progress. Out of room, the length field was too small; else the stream is cut.
        if (codigo == Z_BUF_ERROR && fluxo.avail_in == 0 && falta > 0)
            continue;
        if (codigo == Z_BUF_ERROR)
            return espaco > 0 || n == 0 ? Z_DATA_ERROR : Z_BUF_ERROR;
        if (codigo == Z_NEED_DICT)
            return Z_DATA_ERROR;
        if (codigo != Z_OK && codigo != Z_STREAM_END)
            return codigo;
    }
    if (!Recipiente::Cabe(n, m - falta - fluxo.avail_in))
        return Recipiente::kTrailerInvalido;
    return EscreverNulos(destino, espaco + 1) ? Recipiente::kSucesso : Recipiente::kDestinoIndisponivel;
}

/// What both file operations check before they begin.
int AbrirOrigem(QFile &origem, const QString &destino, bool sobrescrever)
{
    if (origem.fileName().isEmpty() || destino.isEmpty())
        return Recipiente::kArquivoNaoEncontrado;
    const QFileInfo info(origem.fileName());
    if (!info.exists())
        return Recipiente::kArquivoNaoEncontrado;
    if (!sobrescrever && QFileInfo::exists(destino))
        return Recipiente::kArquivoJaExiste;
    // Folders and devices are not read: a device may never end.
    if (!info.isFile() || !origem.open(QIODevice::ReadOnly))
        return Recipiente::kArquivoIlegivel;
    return Recipiente::kSucesso;
}

int CompactarAberto(QFile &origem, const QString &destino, int nivel)
{
    const qint64 n = origem.size();
    const QByteArray bytes = origem.read(n);
    if (bytes.size() != n)
        return Recipiente::kArquivoIlegivel;
    QByteArray saida;
    if (const int codigo = Recipiente::Compactar(bytes, saida, nivel); codigo != Recipiente::kSucesso)
        return codigo;

    QSaveFile arquivo(destino);
    if (!arquivo.open(QIODevice::WriteOnly) || !Escrever(arquivo, saida.constData(), saida.size()) ||
        !Confirmar(arquivo))
        return Recipiente::kDestinoIndisponivel;
    return Recipiente::kSucesso;
}

int DescompactarAberto(QFile &origem, const QString &destino, qint64 maximo)
{
    qint64 n = -1; // nothing to unfold
    qint64 m = 0;
    if (origem.size() > 0) {
        m = origem.size() - Recipiente::kTrailer;
        if (m < 0)
            return Recipiente::kTrailerInvalido;
        if (!origem.seek(m))
            return Recipiente::kArquivoIlegivel;
        const QByteArray trailer = origem.read(Recipiente::kTrailer);
        if (trailer.size() != Recipiente::kTrailer || !origem.seek(0))
            return Recipiente::kArquivoIlegivel;
        const std::optional<qint64> comprimento = Recipiente::LerTrailer(trailer);
        if (!comprimento || !Recipiente::Cabe(*comprimento, m))
            return Recipiente::kTrailerInvalido;
        n = *comprimento;
        if (n > maximo)
            return Recipiente::kGrandeDemais;
    }

    QSaveFile arquivo(destino);
    if (!arquivo.open(QIODevice::WriteOnly))
        return Recipiente::kDestinoIndisponivel;
    if (n >= 0)
        if (const int codigo = Desdobrar(origem, m, n, arquivo); codigo != Recipiente::kSucesso)
            return codigo; // the half-written file beside the destination goes with `arquivo`
    return Confirmar(arquivo) ? Recipiente::kSucesso : Recipiente::kDestinoIndisponivel;
}

/// Runs the operation; memory that cannot be had is a code like the others.
template <class Operacao>
int SemFaltarMemoria(Operacao operacao)
{
    try {
        return operacao();
    } catch (const std::bad_alloc &) {
        return Recipiente::kSemMemoria;
    }
}
} // namespace

QByteArray Recipiente::Trailer(qint64 n)
{
    QByteArray trailer(kTrailer, '\0');
    const QByteArray digitos = QByteArray::number(n);
    std::copy(digitos.begin(), digitos.end(), trailer.begin() + kNulosIniciais);
    return trailer;
}

std::optional<qint64> Recipiente::LerTrailer(QByteArrayView trailer)
{
    if (trailer.size() != kTrailer)
        return std::nullopt;
    const QByteArrayView nulos = trailer.first(kNulosIniciais);
    if (!std::all_of(nulos.begin(), nulos.end(), [](char c) { return c == '\0'; }))
        return std::nullopt;

    qint64 n = 0;
    qsizetype i = kNulosIniciais;
    for (; i < kTrailer && trailer[i] != '\0'; ++i) {
        if (trailer[i] < '0' || trailer[i] > '9')
            return std::nullopt;
        n = n * 10 + (trailer[i] - '0'); // twelve digits at most
    }
    return i > kNulosIniciais ? std::optional(n) : std::nullopt;
}

bool Recipiente::Cabe(qint64 n, qint64 m)
{
    return n / kMaiorDesdobramento <= m;
}

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
    return SemFaltarMemoria([&] {
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

    return SemFaltarMemoria([&] {
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
                                  bool sobrescrever)
{
    QFile arquivo(origem);
    erro = AbrirOrigem(arquivo, destino, sobrescrever);
    if (erro == kSucesso)
        erro = SemFaltarMemoria([&] { return CompactarAberto(arquivo, destino, nivel); });
    return erro == kSucesso;
}

bool Recipiente::DescompactarArquivo(const QString &origem, const QString &destino, int &erro,
                                     bool sobrescrever, qint64 maximo)
{
    QFile arquivo(origem);
    erro = AbrirOrigem(arquivo, destino, sobrescrever);
    if (erro == kSucesso)
        erro = SemFaltarMemoria([&] { return DescompactarAberto(arquivo, destino, maximo); });
    return erro == kSucesso;
}
