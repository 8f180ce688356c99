#include "base/PaginaCodigo.h"

#include <array>

namespace
{
// What bytes 0x80 to 0x9F stand for in Windows-1252 (registered with IANA); the rest equals Latin-1.
constexpr std::array<char16_t, 32> kAltos = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                             0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                             0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                             0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
} // namespace

int PaginaCodigo::ByteDe(char32_t caractere)
{
    if (caractere < 0x80 || (caractere >= 0xA0 && caractere <= 0xFF))
        return static_cast<int>(caractere);
    for (std::size_t i = 0; i < kAltos.size(); ++i)
        if (kAltos[i] == caractere)
            return static_cast<int>(0x80 + i);
    return -1;
}

QByteArray PaginaCodigo::ParaAnsi(QStringView texto)
{
    QByteArray bytes;
    bytes.reserve(texto.size());
    for (qsizetype i = 0; i < texto.size(); ++i) {
        const char16_t c = texto[i].unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < texto.size() && texto[i + 1].isLowSurrogate())
            ++i;
        const int byte = ByteDe(c);
        bytes.append(byte < 0 ? '?' : static_cast<char>(byte));
    }
    return bytes;
}

QString PaginaCodigo::DeAnsi(QByteArrayView bytes)
{
    QString texto(bytes.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        texto[i] = QChar(b >= 0x80 && b <= 0x9F ? kAltos[b - 0x80] : char16_t(b));
    }
    return texto;
}
