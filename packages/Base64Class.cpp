#include "packages/Base64Class.h"

#include "base/PaginaCodigo.h"

#include <cstring>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace
{
constexpr std::string_view kAlfabeto = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr qsizetype kBytesPorLinha = 57; ///< 19 groups of three: 76 characters

// Twelve bits are two characters: one look-up instead of two.
using Par = std::array<char, 2>;
constexpr std::array<Par, 4096> kPares = [] {
    std::array<Par, 4096> pares{};
    for (std::size_t i = 0; i < pares.size(); ++i)
        pares[i] = {kAlfabeto[i >> 6], kAlfabeto[i & 63]};
    return pares;
}();

// The value of each character, shifted to its place among the 24 bits of a group. The two characters that may
// have to be removed, "=" and CR, carry a bit that no value has.
constexpr quint32 kAtencao = 0x80000000;
constexpr std::array<std::array<quint32, 256>, 4> kDeslocados = [] {
    std::array<std::array<quint32, 256>, 4> tabelas{};
    for (unsigned posicao = 0; posicao < 4; ++posicao) {
        for (quint32 i = 0; i < kAlfabeto.size(); ++i)
            tabelas[posicao][static_cast<unsigned char>(kAlfabeto[i])] = i << (18 - 6 * posicao);
        tabelas[posicao]['='] = tabelas[posicao]['\r'] = kAtencao;
    }
    return tabelas;
}();

char *EscreverGrupos(const unsigned char *bytes, qsizetype grupos, char *saida)
{
    for (; grupos > 0; --grupos, bytes += 3, saida += 4) {
        const unsigned bits = unsigned(bytes[0]) << 16 | unsigned(bytes[1]) << 8 | bytes[2];
        std::memcpy(saida, kPares[bits >> 12].data(), 2);
        std::memcpy(saida + 2, kPares[bits & 0xFFF].data(), 2);
    }
    return saida;
}

char *EscreverBytes(quint32 bits, char *saida)
{
    saida[0] = static_cast<char>(bits >> 16);
    saida[1] = static_cast<char>(bits >> 8);
    saida[2] = static_cast<char>(bits);
    return saida + 3;
}
} // namespace

Base64Class::Base64Class()
{
    for (std::size_t i = 0; i < m_ida.size(); ++i)
        m_ida[i] = static_cast<unsigned char>(kAlfabeto[i]);
}

QString Base64Class::EncodeString(const QString &Text) const
{
    return EncodeByteArray(PaginaCodigo::ParaAnsi(Text));
}

QString Base64Class::EncodeByteArray(const QByteArray &Data) const
{
    return QString::fromLatin1(Codificar(Data));
}

QString Base64Class::DecodeToString(const QString &EncodedText) const
{
    return PaginaCodigo::DeAnsi(DecodeToByteArray(EncodedText));
}

QByteArray Base64Class::DecodeToByteArray(const QString &EncodedText) const
{
    return Decodificar(PaginaCodigo::ParaAnsi(EncodedText));
}

QByteArray Base64Class::Codificar(QByteArrayView bytes) const
{
    if (bytes.isEmpty())
        throw std::invalid_argument("Base64Class: nada a codificar");

    const qsizetype n = bytes.size();
    const qsizetype c = n / 3 * 4 + (n % 3 > 0 ? 4 : 0);
    qsizetype L = c + c / 76 * 2;
    if (L % 78 == 0)
        L -= 2; // no line break after a final full line

    QByteArray texto(L, Qt::Uninitialized);
    const auto *entrada = reinterpret_cast<const unsigned char *>(bytes.data());
    const auto *fim = entrada + n;
    char *saida = texto.data();

    for (; fim - entrada > kBytesPorLinha; entrada += kBytesPorLinha) {
        saida = EscreverGrupos(entrada, kBytesPorLinha / 3, saida);
        *saida++ = '\r';
        *saida++ = '\n';
    }
    const qsizetype grupos = (fim - entrada) / 3;
    saida = EscreverGrupos(entrada, grupos, saida);
    entrada += grupos * 3;

    const qsizetype resto = fim - entrada;
    if (resto > 0) {
        const unsigned b1 = resto == 2 ? entrada[1] : 0;
        saida[0] = static_cast<char>(m_ida[entrada[0] >> 2]);
        saida[1] = static_cast<char>(m_ida[(entrada[0] & 3u) << 4 | b1 >> 4]);
        saida[2] = resto == 2 ? static_cast<char>(m_ida[(b1 & 15) << 2]) : '=';
        saida[3] = '=';
    }
    return texto;
}

QByteArray Base64Class::Decodificar(QByteArrayView texto) const
{
    if (texto.isEmpty())
        throw std::invalid_argument("Base64Class: nada a decodificar");
    DecodificadorBase64 decodificador;
    QByteArray bytes = decodificador.Passar(texto);
    return bytes += decodificador.Terminar();
}

QByteArray DecodificadorBase64::Passar(QByteArrayView texto)
{
    // Characters that are removed only make the result shorter than this; what an earlier piece has begun,
    // longer.
    QByteArray bytes(texto.size() / 4 * 3 + 6, Qt::Uninitialized);
    const auto *entrada = reinterpret_cast<const unsigned char *>(texto.data());
    const auto *fim = entrada + texto.size();
    char *saida = bytes.data();
    const auto acrescentar = [&](unsigned char c) {
        m_grupo = m_grupo << 6 | (kDeslocados[3][c] & 63);
        if (++m_noGrupo == 4) {
            saida = EscreverBytes(m_grupo, saida);
            m_grupo = 0;
            m_noGrupo = 0;
        }
    };

    if (m_cr && entrada < fim) {
        m_cr = false;
        if (*entrada == '\n')
            ++entrada;
        else
            acrescentar('\r');
    }
    while (entrada < fim) {
        while (m_noGrupo == 0 && fim - entrada >= 4) {
            const quint32 bits = kDeslocados[0][entrada[0]] | kDeslocados[1][entrada[1]] |
                                 kDeslocados[2][entrada[2]] | kDeslocados[3][entrada[3]];
            if (bits & kAtencao)
                break;
            saida = EscreverBytes(bits, saida);
            entrada += 4;
        }
        if (entrada == fim)
            break;

        // One character at a time until the next group begins.
        const unsigned char c = *entrada++;
        if (c == '\r' && entrada == fim)
            m_cr = true;
        else if (c == '\r' && *entrada == '\n')
            ++entrada;
        else if (c != '=')
            acrescentar(c);
    }
    bytes.truncate(saida - bytes.data());
    return bytes;
}

QByteArray DecodificadorBase64::Terminar()
{
    QByteArray fim;
    if (std::exchange(m_cr, false))
        fim = Passar("A"); // no line end after all: a character of value 0, as "A" is
    // Two characters left are one byte, three are two; a single one says nothing.
    if (m_noGrupo == 2) {
        fim += static_cast<char>(m_grupo >> 4);
    } else if (m_noGrupo == 3) {
        fim += static_cast<char>(m_grupo >> 10);
        fim += static_cast<char>(m_grupo >> 2);
    }
    m_grupo = 0;
    m_noGrupo = 0;
    return fim;
}

QByteArray CodificadorBase64::Passar(QByteArrayView bytes)
{
    m_resto.append(bytes);
    const qsizetype inteiras = m_resto.size() / kBytesPorLinha * kBytesPorLinha;
    if (inteiras == 0)
        return {};
    QByteArray texto = Base64Class().Codificar(QByteArrayView(m_resto).first(inteiras));
    m_resto.remove(0, inteiras);
    if (std::exchange(m_comecou, true))
        texto.prepend("\r\n");
    return texto;
}

QByteArray CodificadorBase64::Terminar()
{
    if (m_resto.isEmpty())
        return {};
    const QByteArray texto = Base64Class().Codificar(std::exchange(m_resto, {}));
    return std::exchange(m_comecou, false) ? "\r\n" + texto : texto;
}
