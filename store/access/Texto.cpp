#include "store/access/Texto.h"

#include "base/PaginaCodigo.h"
#include "store/access/ErroAccess.h"

using namespace Access;

namespace
{
/// Half a surrogate pair cannot be written as UTF-8.
void TrocarMeiosPares(QString &texto)
{
    for (qsizetype i = 0; i < texto.size(); ++i) {
        if (!texto[i].isSurrogate())
            continue;
        if (texto[i].isHighSurrogate() && i + 1 < texto.size() && texto[i + 1].isLowSurrogate())
            ++i;
        else
            texto[i] = QChar::ReplacementCharacter;
    }
}
} // namespace

QString Access::TextoDaPagina1252(const Trecho &bytes)
{
    return PaginaCodigo::DeAnsi(bytes.Bytes());
}

QString Access::TextoUtf16(const Trecho &bytes)
{
    if (bytes.Tamanho() % 2 != 0)
        Danificado("um texto com meio caractere");
    QString texto(bytes.Tamanho() / 2, Qt::Uninitialized);
    for (qsizetype i = 0; i < texto.size(); ++i)
        texto[i] = QChar(bytes.U16(2 * i));
    TrocarMeiosPares(texto);
    return texto;
}

// A compressed text begins in narrow mode, one byte a character of Latin-1 (not of code page 1252). A zero
// byte where a character should begin switches to wide mode, two bytes a character, and back.
QString Access::TextoJet4(const Trecho &bytes)
{
    constexpr quint16 kComprimido = 0xFEFF;
    if (bytes.Tamanho() < 2 || bytes.U16(0) != kComprimido)
        return TextoUtf16(bytes);
    QString texto;
    texto.reserve(bytes.Tamanho());
    bool largo = false;
    for (qint64 i = 2; i < bytes.Tamanho();) {
        const quint8 byte = bytes.U8(i);
        if (byte == 0) {
            largo = !largo;
            ++i;
        } else if (largo) {
            texto += QChar(bytes.U16(i));
            i += 2;
        } else {
            texto += QChar(char16_t(byte));
            ++i;
        }
    }
    TrocarMeiosPares(texto);
    return texto;
}
