#include "exemplos/desenhos/GravadorGif.h"

#include <QHash>
#include <QImage>

#include <algorithm>
#include <array>
#include <unordered_map>
#include <vector>

namespace
{
using Cor = std::array<int, 3>; // red, green, blue

struct Amostra {
    Cor cor;
    int pontos; // how many pixels have it
};

Cor CorDe(QRgb rgb)
{
    return {qRed(rgb), qGreen(rgb), qBlue(rgb)};
}

/// The channel in which the colours of a box differ most, and by how much.
std::pair<int, int> MaiorDiferenca(const std::vector<Amostra> &caixa)
{
    std::pair<int, int> maior{0, -1};
    for (size_t canal = 0; canal < 3; ++canal) {
        const auto [menor, maximo] =
            std::minmax_element(caixa.begin(), caixa.end(), [canal](const Amostra &a, const Amostra &b) {
                return a.cor[canal] < b.cor[canal];
            });
        const int diferenca = maximo->cor[canal] - menor->cor[canal];
        if (diferenca > maior.second)
            maior = {int(canal), diferenca};
    }
    return maior;
}

/// Median cut: the box whose colours differ most is halved until there are 256 boxes; each becomes its mean.
std::vector<Cor> EscolherCores(const QImage &imagem)
{
    QHash<QRgb, int> contagem;
    for (int y = 0; y < imagem.height(); ++y) {
        for (int x = 0; x < imagem.width(); ++x)
            ++contagem[imagem.pixel(x, y)];
    }
    std::vector<Amostra> todas;
    for (auto it = contagem.cbegin(); it != contagem.cend(); ++it)
        todas.push_back({CorDe(it.key()), it.value()});
    // The hash has no order of its own: without one the same picture would not always give the same bytes.
    std::sort(todas.begin(), todas.end(), [](const Amostra &a, const Amostra &b) { return a.cor < b.cor; });

    std::vector<std::vector<Amostra>> caixas{todas};
    while (caixas.size() < 256) {
        const auto escolhida =
            std::max_element(caixas.begin(), caixas.end(), [](const auto &a, const auto &b) {
                return MaiorDiferenca(a).second < MaiorDiferenca(b).second;
            });
        const auto [canal, diferenca] = MaiorDiferenca(*escolhida);
        if (diferenca == 0)
            break; // every box holds one colour: nothing is lost
        const auto indice = size_t(canal);
        std::stable_sort(escolhida->begin(), escolhida->end(), [indice](const Amostra &a, const Amostra &b) {
            return a.cor[indice] < b.cor[indice];
        });
        const auto meio = escolhida->begin() + std::ptrdiff_t(escolhida->size() / 2);
        std::vector<Amostra> metade(meio, escolhida->end());
        escolhida->erase(meio, escolhida->end());
        caixas.push_back(std::move(metade));
    }

    std::vector<Cor> cores;
    for (const auto &caixa : caixas) {
        std::array<qint64, 3> soma{};
        qint64 pontos = 0;
        for (const Amostra &amostra : caixa) {
            for (size_t canal = 0; canal < 3; ++canal)
                soma[canal] += qint64(amostra.cor[canal]) * amostra.pontos;
            pontos += amostra.pontos;
        }
        cores.push_back({int(soma[0] / pontos), int(soma[1] / pontos), int(soma[2] / pontos)});
    }
    return cores;
}

quint8 MaisProxima(const Cor &cor, const std::vector<Cor> &cores)
{
    const auto distancia = [&cor](const Cor &outra) {
        int soma = 0;
        for (size_t canal = 0; canal < 3; ++canal)
            soma += (cor[canal] - outra[canal]) * (cor[canal] - outra[canal]);
        return soma;
    };
    const auto melhor = std::min_element(
        cores.begin(), cores.end(), [&](const Cor &a, const Cor &b) { return distancia(a) < distancia(b); });
    return quint8(melhor - cores.begin());
}

/// Codes of growing width, lowest bit first, cut into blocks of at most 255 bytes.
class Bits
{
public:
    void Por(int codigo, int largura)
    {
        m_resto |= quint32(codigo) << m_quantos;
        m_quantos += largura;
        while (m_quantos >= 8) {
            m_bytes += char(m_resto & 0xFF);
            m_resto >>= 8;
            m_quantos -= 8;
        }
    }

    QByteArray Blocos()
    {
        if (m_quantos > 0)
            m_bytes += char(m_resto & 0xFF);
        QByteArray blocos;
        for (qsizetype i = 0; i < m_bytes.size(); i += 255) {
            const QByteArray bloco = m_bytes.mid(i, 255);
            blocos += char(bloco.size());
            blocos += bloco;
        }
        return blocos + '\0';
    }

private:
    QByteArray m_bytes;
    quint32 m_resto = 0;
    int m_quantos = 0;
};

/// GIF's LZW for 8-bit indices: codes begin 9 bits wide; 256 empties the table, 257 ends the picture.
QByteArray Comprimir(const std::vector<quint8> &indices)
{
    constexpr int Limpar = 256, Fim = 257, Cheia = 4096;
    Bits bits;
    std::unordered_map<int, int> tabela; // (code of the beginning << 8 | next index) -> code
    int proximo = Fim + 1, largura = 9;
    bits.Por(Limpar, largura);
    int comeco = indices[0];
    for (size_t i = 1; i < indices.size(); ++i) {
        const int chave = comeco << 8 | indices[i];
        if (const auto achado = tabela.find(chave); achado != tabela.end()) {
            comeco = achado->second;
            continue;
        }
        bits.Por(comeco, largura);
        if (proximo == Cheia) {
            bits.Por(Limpar, largura);
            tabela.clear();
            proximo = Fim + 1;
            largura = 9;
        } else {
            // The reader learns each code one step later, so the width grows when the new code needs it.
            if (proximo == 1 << largura)
                ++largura;
            tabela[chave] = proximo++;
        }
        comeco = indices[i];
    }
    bits.Por(comeco, largura);
    bits.Por(Fim, largura);
    return bits.Blocos();
}

void PorPalavra(QByteArray &bytes, int valor)
{
    bytes += char(valor & 0xFF);
    bytes += char(valor >> 8);
}
} // namespace

QByteArray GravarGif(const QImage &imagem)
{
    if (imagem.isNull() || imagem.width() > 0xFFFF || imagem.height() > 0xFFFF)
        return QByteArray();
    const QImage rgb = imagem.convertToFormat(QImage::Format_RGB32);
    const std::vector<Cor> cores = EscolherCores(rgb);

    QHash<QRgb, quint8> conhecidas;
    std::vector<quint8> indices;
    for (int y = 0; y < rgb.height(); ++y) {
        for (int x = 0; x < rgb.width(); ++x) {
            const QRgb ponto = rgb.pixel(x, y);
            if (!conhecidas.contains(ponto))
                conhecidas[ponto] = MaisProxima(CorDe(ponto), cores);
            indices.push_back(conhecidas[ponto]);
        }
    }

    QByteArray bytes("GIF89a");
    PorPalavra(bytes, rgb.width());
    PorPalavra(bytes, rgb.height());
    bytes += QByteArray::fromHex("f70000"); // one table of 256 colours, 8 bits to a channel
    for (size_t i = 0; i < 256; ++i) {
        const Cor cor = i < cores.size() ? cores[i] : Cor{0, 0, 0};
        for (int canal : cor)
            bytes += char(canal);
    }
    bytes += QByteArray::fromHex("2c00000000"); // the picture, at the top left corner
    PorPalavra(bytes, rgb.width());
    PorPalavra(bytes, rgb.height());
    bytes += QByteArray::fromHex("0008"); // no table of its own; indices of 8 bits
    bytes += Comprimir(indices);
    bytes += ';';
    return bytes;
}
