#include "packages/RecipienteEmFatias.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QIODevice>

#include <algorithm>
#include <optional>
#include <vector>

#include <zlib.h>

namespace
{
constexpr qint64 kFatia = 256 * 1024;
constexpr qint64 kSoma = 4;

/// Takes the next unpacked bytes; a code other than kSucesso ends the unpacking with it.
using Receptor = std::function<int(QByteArrayView)>;

Bytef *Bytes(std::vector<char> &bloco)
{
    return reinterpret_cast<Bytef *>(bloco.data());
}

/// Owns zlib's state for the length of a scope.
class Fluxo
{
public:
    explicit Fluxo(int (*fim)(z_streamp))
        : m_fim(fim)
    {
    }
    ~Fluxo() { m_fim(&z); } // harmless when the beginning failed
    Fluxo(const Fluxo &) = delete;
    Fluxo &operator=(const Fluxo &) = delete;

    z_stream z = {};

private:
    int (*m_fim)(z_streamp);
};

/// Packs what `z` has been given, writing as the output fills; with Z_FINISH to the stream's end.
int EscoarDeflate(z_stream &z, int modo, std::vector<char> &saida, QIODevice &destino)
{
    for (;;) {
        z.next_out = Bytes(saida);
        z.avail_out = static_cast<uInt>(saida.size());
        const int codigo = deflate(&z, modo);
        if (codigo != Z_OK && codigo != Z_STREAM_END && codigo != Z_BUF_ERROR)
            return codigo;
        const qint64 prontos = static_cast<qint64>(saida.size()) - z.avail_out;
        if (prontos > 0 && destino.write(saida.data(), prontos) != prontos)
            return Recipiente::kDestinoIndisponivel;
        if (modo == Z_FINISH ? codigo == Z_STREAM_END : z.avail_out > 0)
            return Z_OK;
    }
}

/// Unfolds the stream of `m` bytes that stands at the start of `origem`; the receiver gets n + 1 bytes.
int Desdobrar(QIODevice &origem, qint64 m, qint64 n, bool comSoma, const Receptor &receptor,
              const RecipienteEmFatias::Pausa &pausa)
{
    Fluxo fluxo(inflateEnd);
    z_stream &z = fluxo.z;
    if (const int codigo = inflateInit(&z); codigo != Z_OK)
        return codigo;
    inflateValidate(&z, comSoma ? 1 : 0);
    std::vector<char> lido(kFatia);
    std::vector<char> saida(kFatia);
    qint64 falta = m;
    qint64 espaco = n;

    for (int codigo = Z_OK; codigo != Z_STREAM_END;) {
        if (z.avail_in == 0 && falta > 0) {
            const qint64 bytes = origem.read(lido.data(), std::min(falta, kFatia));
            if (bytes <= 0)
                return Recipiente::kArquivoIlegivel;
            falta -= bytes;
            z.next_in = Bytes(lido);
            z.avail_in = static_cast<uInt>(bytes);
        }
        z.next_out = Bytes(saida);
        z.avail_out = static_cast<uInt>(std::min(espaco, kFatia));
        const uInt oferecido = z.avail_out;
        codigo = inflate(&z, Z_NO_FLUSH);
        if (codigo != Z_OK && codigo != Z_STREAM_END && codigo != Z_BUF_ERROR)
            return codigo == Z_NEED_DICT ? Z_DATA_ERROR : codigo;

        const qint64 prontos = oferecido - z.avail_out;
        espaco -= prontos;
        if (const int recusa = receptor(QByteArrayView(saida.data(), prontos));
            recusa != Recipiente::kSucesso)
            return recusa;
        // No progress and nothing more to read: the length field was too small, or the stream is cut.
        if (codigo == Z_BUF_ERROR && (z.avail_in > 0 || falta == 0))
            return espaco > 0 || n == 0 ? Z_DATA_ERROR : Z_BUF_ERROR;
        if (!pausa())
            return RecipienteEmFatias::kInterrompido;
    }
    // A stream shorter than its length field says leaves zeros, as unpacking into one zeroed block would; but
    // never more of them than the stream could have filled.
    if (!Recipiente::Cabe(n, m - falta - z.avail_in))
        return Recipiente::kTrailerInvalido;
    std::fill(saida.begin(), saida.end(), '\0');
    for (qint64 nulos = espaco + 1; nulos > 0; nulos -= std::min(nulos, kFatia))
        if (const int recusa = receptor(QByteArrayView(saida.data(), std::min(nulos, kFatia)));
            recusa != Recipiente::kSucesso)
            return recusa;
    return Recipiente::kSucesso;
}

int DescompactarPara(QIODevice &recipiente, bool comSoma, const Receptor &receptor,
                     const RecipienteEmFatias::Pausa &pausa, qint64 maximo)
{
    if (recipiente.size() == 0)
        return Recipiente::kSucesso;
    const qint64 m = recipiente.size() - Recipiente::kTrailer;
    if (m < 0)
        return Recipiente::kTrailerInvalido;
    if (!recipiente.seek(m))
        return Recipiente::kArquivoIlegivel;
    const std::optional<qint64> n = Recipiente::LerTrailer(recipiente.read(Recipiente::kTrailer));
    if (!n || !Recipiente::Cabe(*n, m))
        return Recipiente::kTrailerInvalido;
    if (*n > maximo)
        return Recipiente::kGrandeDemais;
    if (!recipiente.seek(0))
        return Recipiente::kArquivoIlegivel;
    return Desdobrar(recipiente, m, *n, comSoma, receptor, pausa);
}
} // namespace

int RecipienteEmFatias::Compactar(QIODevice &origem, QIODevice &destino, quint32 &soma, const Pausa &pausa,
                                  int nivel)
{
    if (!origem.seek(0))
        return Recipiente::kArquivoIlegivel;
    const qint64 n = origem.size();
    if (n == 0)
        return Recipiente::kSucesso;
    Fluxo fluxo(deflateEnd);
    z_stream &z = fluxo.z;
    if (const int codigo = deflateInit(&z, nivel); codigo != Z_OK)
        return codigo;
    std::vector<char> lido(kFatia);
    std::vector<char> saida(kFatia);

    for (qint64 falta = n; falta > 0;) {
        const qint64 bytes = origem.read(lido.data(), std::min(falta, kFatia));
        if (bytes <= 0)
            return Recipiente::kArquivoIlegivel;
        falta -= bytes;
        z.next_in = Bytes(lido);
        z.avail_in = static_cast<uInt>(bytes);
        if (const int codigo = EscoarDeflate(z, Z_NO_FLUSH, saida, destino); codigo != Z_OK)
            return codigo;
        if (!pausa())
            return kInterrompido;
    }
    if (const int codigo = EscoarDeflate(z, Z_FINISH, saida, destino); codigo != Z_OK)
        return codigo;
    soma = static_cast<quint32>(z.adler);
    return destino.write(Recipiente::Trailer(n)) == Recipiente::kTrailer ? Recipiente::kSucesso
                                                                         : Recipiente::kDestinoIndisponivel;
}

int RecipienteEmFatias::Descompactar(QIODevice &recipiente, QIODevice &destino, const Pausa &pausa,
                                     qint64 maximo)
{
    return DescompactarPara(
        recipiente, true,
        [&destino](QByteArrayView bytes) {
            return destino.write(bytes.data(), bytes.size()) == bytes.size()
                       ? Recipiente::kSucesso
                       : Recipiente::kDestinoIndisponivel;
        },
        pausa, maximo);
}

int RecipienteEmFatias::Conferir(QIODevice &recipiente, QIODevice &original, quint32 soma, const Pausa &pausa)
{
    if (!original.seek(0))
        return Recipiente::kArquivoIlegivel;
    if (recipiente.size() == 0)
        return original.size() == 0 ? Recipiente::kSucesso : Z_DATA_ERROR;
    std::vector<char> esperado(kFatia);
    qint64 falta = original.size();
    qint64 sobra = 0;
    const auto comparar = [&](QByteArrayView bytes) {
        const qint64 comuns = std::min<qint64>(bytes.size(), falta);
        if (original.read(esperado.data(), comuns) != comuns)
            return Recipiente::kArquivoIlegivel;
        falta -= comuns;
        sobra += bytes.size() - comuns;
        return std::equal(bytes.begin(), bytes.begin() + comuns, esperado.begin()) ? Recipiente::kSucesso
                                                                                   : Z_DATA_ERROR;
    };
    if (const int codigo = DescompactarPara(recipiente, false, comparar, pausa, Recipiente::kMaiorComprimento);
        codigo != Recipiente::kSucesso)
        return codigo;
    if (falta > 0 || sobra != 1) // one 0x00 is what unpacking leaves
        return Z_DATA_ERROR;
    // The stream ends in its sum, highest byte first.
    if (!recipiente.seek(recipiente.size() - Recipiente::kTrailer - kSoma))
        return Recipiente::kArquivoIlegivel;
    return recipiente.read(kSoma).toHex().toUInt(nullptr, 16) == soma ? Recipiente::kSucesso : Z_DATA_ERROR;
}
