#include "formatos/Codificacao.h"

#include "base/PaginaCodigo.h"

#include <QList>
#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <optional>

namespace
{
using Tabela = std::array<char16_t, 128>;

/// Bytes 0x80 to 0xFF of the western code page of DOS.
constexpr Tabela k850 = {
    0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E4, 0x00E0, 0x00E5, 0x00E7, 0x00EA, 0x00EB, 0x00E8, 0x00EF,
    0x00EE, 0x00EC, 0x00C4, 0x00C5, 0x00C9, 0x00E6, 0x00C6, 0x00F4, 0x00F6, 0x00F2, 0x00FB, 0x00F9,
    0x00FF, 0x00D6, 0x00DC, 0x00F8, 0x00A3, 0x00D8, 0x00D7, 0x0192, 0x00E1, 0x00ED, 0x00F3, 0x00FA,
    0x00F1, 0x00D1, 0x00AA, 0x00BA, 0x00BF, 0x00AE, 0x00AC, 0x00BD, 0x00BC, 0x00A1, 0x00AB, 0x00BB,
    0x2591, 0x2592, 0x2593, 0x2502, 0x2524, 0x00C1, 0x00C2, 0x00C0, 0x00A9, 0x2563, 0x2551, 0x2557,
    0x255D, 0x00A2, 0x00A5, 0x2510, 0x2514, 0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x00E3, 0x00C3,
    0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550, 0x256C, 0x00A4, 0x00F0, 0x00D0, 0x00CA, 0x00CB,
    0x00C8, 0x0131, 0x00CD, 0x00CE, 0x00CF, 0x2518, 0x250C, 0x2588, 0x2584, 0x00A6, 0x00CC, 0x2580,
    0x00D3, 0x00DF, 0x00D4, 0x00D2, 0x00F5, 0x00D5, 0x00B5, 0x00FE, 0x00DE, 0x00DA, 0x00DB, 0x00D9,
    0x00FD, 0x00DD, 0x00AF, 0x00B4, 0x00AD, 0x00B1, 0x2017, 0x00BE, 0x00B6, 0x00A7, 0x00F7, 0x00B8,
    0x00B0, 0x00A8, 0x00B7, 0x00B9, 0x00B3, 0x00B2, 0x25A0, 0x00A0};
/// The same of its Portuguese code page.
constexpr Tabela k860 = {
    0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E3, 0x00E0, 0x00C1, 0x00E7, 0x00EA, 0x00CA, 0x00E8, 0x00CD,
    0x00D4, 0x00EC, 0x00C3, 0x00C2, 0x00C9, 0x00C0, 0x00C8, 0x00F4, 0x00F5, 0x00F2, 0x00DA, 0x00F9,
    0x00CC, 0x00D5, 0x00DC, 0x00A2, 0x00A3, 0x00D9, 0x20A7, 0x00D3, 0x00E1, 0x00ED, 0x00F3, 0x00FA,
    0x00F1, 0x00D1, 0x00AA, 0x00BA, 0x00BF, 0x00D2, 0x00AC, 0x00BD, 0x00BC, 0x00A1, 0x00AB, 0x00BB,
    0x2591, 0x2592, 0x2593, 0x2502, 0x2524, 0x2561, 0x2562, 0x2556, 0x2555, 0x2563, 0x2551, 0x2557,
    0x255D, 0x255C, 0x255B, 0x2510, 0x2514, 0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x255E, 0x255F,
    0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550, 0x256C, 0x2567, 0x2568, 0x2564, 0x2565, 0x2559,
    0x2558, 0x2552, 0x2553, 0x256B, 0x256A, 0x2518, 0x250C, 0x2588, 0x2584, 0x258C, 0x2590, 0x2580,
    0x03B1, 0x00DF, 0x0393, 0x03C0, 0x03A3, 0x03C3, 0x00B5, 0x03C4, 0x03A6, 0x0398, 0x03A9, 0x03B4,
    0x221E, 0x03C6, 0x03B5, 0x2229, 0x2261, 0x00B1, 0x2265, 0x2264, 0x2320, 0x2321, 0x00F7, 0x2248,
    0x00B0, 0x2219, 0x00B7, 0x221A, 0x207F, 0x00B2, 0x25A0, 0x00A0};

QString DePagina(QByteArrayView bytes, const Tabela &tabela)
{
    QString texto(bytes.size(), Qt::Uninitialized);
    QChar *destino = texto.data();
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        *destino++ = byte < 0x80 ? QChar(byte) : QChar(tabela[byte - 0x80u]);
    }
    return texto;
}

bool EUtf8(QByteArrayView bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString texto = utf8(bytes);
    return !utf8.hasError();
}

bool ELetraPortuguesa(QChar c)
{
    return QStringView(u"áàâãéêíóôõúüç").contains(c.toLower());
}

/// How much `texto`, decoded from bytes over 127 among others, looks like Portuguese.
int Pontos(const QString &texto, bool windows)
{
    const QStringView semPeso = windows ? QStringView(u"ºª°½¼¾–—“”’•…") : QStringView(u"ºª°½¼");
    int pontos = 0;
    for (qsizetype i = 0; i < texto.size(); ++i) {
        const QChar c = texto[i];
        if (c.unicode() < 0x80 || semPeso.contains(c))
            continue;
        const QChar antes = i > 0 ? texto[i - 1] : QChar();
        const QChar depois = i + 1 < texto.size() ? texto[i + 1] : QChar();
        const bool palavra = antes.isLetter() || depois.isLetter();
        const bool maiusculaDentro = c.isUpper() && antes.isLower();
        pontos += ELetraPortuguesa(c) && palavra && !maiusculaDentro ? 1 : -1;
    }
    return pontos;
}

QString Adivinhar(QByteArrayView bytes)
{
    // A page is judged by its beginning: enough of it to be sure, bounded for files without end.
    constexpr qsizetype kAmostra = 1024 * 1024;
    const QByteArrayView amostra = bytes.first(std::min(bytes.size(), kAmostra));
    const int p1252 = Pontos(PaginaCodigo::DeAnsi(amostra), true);
    const int p850 = Pontos(DePagina(amostra, k850), false);
    const int p860 = Pontos(DePagina(amostra, k860), false);
    if (p1252 >= p850 && p1252 >= p860)
        return PaginaCodigo::DeAnsi(bytes);
    return DePagina(bytes, p850 >= p860 ? k850 : k860);
}

/// Text in a set of characters known by name; nothing when the name is not known.
std::optional<QString> PorNome(QByteArrayView bytes, const QByteArray &conjunto)
{
    QByteArray nome = conjunto.trimmed().toLower();
    nome.replace("_", "-");
    if (nome.isEmpty())
        return std::nullopt;
    // What calls itself ISO-8859-1 or ASCII is Windows-1252 as often as not, and never less.
    static const QList<QByteArray> windows = {"iso-8859-1", "iso8859-1", "latin1", "latin-1",  "l1",
                                              "us-ascii",   "ascii",     "cp1252", "windows-1252", "1252"};
    if (windows.contains(nome))
        return PaginaCodigo::DeAnsi(bytes);
    if (nome == "850" || nome == "cp850" || nome == "ibm850")
        return DePagina(bytes, k850);
    if (nome == "860" || nome == "cp860" || nome == "ibm860")
        return DePagina(bytes, k860);
    if (nome == "utf-8" || nome == "utf8")
        return QString::fromUtf8(bytes);
    QStringDecoder outro(nome.constData());
    if (!outro.isValid())
        return std::nullopt;
    return QString(outro(bytes));
}
} // namespace

QByteArray Formatos::BytesDoTexto(const QString &texto, const QByteArray &conjunto, int &perdidos)
{
    QByteArray nome = conjunto.trimmed().toLower();
    if (nome == "utf-8" || nome == "utf8")
        return texto.toUtf8();
    if (nome.startsWith("cp") || nome.startsWith("ibm"))
        nome.remove(0, nome.startsWith("cp") ? 2 : 3);
    const Tabela *tabela = nome == "850" ? &k850 : nome == "860" ? &k860 : nullptr;
    QByteArray bytes;
    bytes.reserve(texto.size());
    for (const QChar c : texto) {
        int byte = -1;
        if (!tabela) {
            byte = PaginaCodigo::ByteDe(c.unicode());
        } else if (c.unicode() < 0x80) {
            byte = c.unicode();
        } else {
            const auto achado = std::find(tabela->begin(), tabela->end(), c.unicode());
            if (achado != tabela->end())
                byte = 0x80 + static_cast<int>(achado - tabela->begin());
        }
        if (byte < 0)
            ++perdidos;
        bytes += static_cast<char>(byte < 0 ? '?' : byte);
    }
    return bytes;
}

bool Formatos::PaginaConhecida(const QByteArray &nome)
{
    return PorNome(QByteArrayView(), nome).has_value();
}

QString Formatos::TextoDosBytes(QByteArrayView bytes, const QByteArray &declarado, const QByteArray &forcado)
{
    if (!forcado.isEmpty())
        if (const std::optional<QString> texto = PorNome(bytes, forcado))
            return *texto;
    if (bytes.startsWith("\xEF\xBB\xBF"))
        return QString::fromUtf8(bytes.sliced(3));
    if (bytes.startsWith("\xFF\xFE"))
        return QString(QStringDecoder(QStringDecoder::Utf16LE)(bytes.sliced(2)));
    if (bytes.startsWith("\xFE\xFF"))
        return QString(QStringDecoder(QStringDecoder::Utf16BE)(bytes.sliced(2)));
    if (EUtf8(bytes))
        return QString::fromUtf8(bytes);
    if (const std::optional<QString> texto = PorNome(bytes, declarado))
        return *texto;
    return Adivinhar(bytes);
}
