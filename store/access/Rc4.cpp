#include "store/access/Rc4.h"

#include <array>
#include <numeric>
#include <utility>

QByteArray Access::Rc4(QByteArrayView chave, QByteArrayView bytes)
{
    std::array<quint8, 256> caixa;
    std::iota(caixa.begin(), caixa.end(), quint8(0));
    quint8 j = 0;
    for (std::size_t i = 0; i < caixa.size(); ++i) {
        j = static_cast<quint8>(j + caixa[i] +
                                static_cast<quint8>(chave[static_cast<qsizetype>(i) % chave.size()]));
        std::swap(caixa[i], caixa[j]);
    }
    QByteArray saida(bytes.size(), Qt::Uninitialized);
    quint8 i = 0;
    j = 0;
    for (qsizetype k = 0; k < bytes.size(); ++k) {
        ++i;
        j = static_cast<quint8>(j + caixa[i]);
        std::swap(caixa[i], caixa[j]);
        const quint8 fluxo = caixa[static_cast<quint8>(caixa[i] + caixa[j])];
        saida[k] = static_cast<char>(static_cast<quint8>(bytes[k]) ^ fluxo);
    }
    return saida;
}
