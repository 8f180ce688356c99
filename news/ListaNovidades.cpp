#include "news/ListaNovidades.h"

#include "base/PaginaCodigo.h"

#include <QStringDecoder>

#include <algorithm>

namespace
{
constexpr int kMaximoCaracteres = 100;
constexpr int kMaximoBytes = 200;

/// Names that Windows gives to devices, with any extension and in any case.
bool EhDispositivo(const QString &nome)
{
    const QString raiz = nome.section(u'.', 0, 0).trimmed().toUpper();
    static const QStringList kDispositivos{"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$", "CLOCK$"};
    if (kDispositivos.contains(raiz))
        return true;
    // COM1 to COM9 and LPT1 to LPT9, the superscript digits too.
    static const QString kDigitos = "0123456789¹²³";
    return raiz.size() == 4 && (raiz.startsWith(u"COM") || raiz.startsWith(u"LPT")) &&
           kDigitos.contains(raiz.back());
}

/// Control characters, and the format characters that make a name look like another.
bool EhControle(QChar c)
{
    return c.category() == QChar::Other_Control || c.category() == QChar::Other_Format ||
           c.category() == QChar::Separator_Line || c.category() == QChar::Separator_Paragraph ||
           c.category() == QChar::Other_NotAssigned || c == QChar::ReplacementCharacter;
}
} // namespace

QList<ListaNovidades::Entrada> ListaNovidades::Ler(const QByteArray &bytes)
{
    QList<Entrada> entradas;
    if (bytes.trimmed().startsWith('<'))
        return entradas;
    qsizetype inicio = 0;
    while (inicio < bytes.size() && entradas.size() < kMaximo) {
        qsizetype fim = bytes.indexOf("\r\n", inicio);
        if (fim < 0)
            fim = bytes.size();
        const QByteArray caminho = bytes.mid(inicio, fim - inicio);
        const QString nome = NomeLocal(caminho);
        if (NomeAceito(nome))
            entradas.append({caminho, nome});
        inicio = fim + 2;
    }
    return entradas;
}

QString ListaNovidades::NomeLocal(const QByteArray &caminho)
{
    const QByteArray nome = caminho.mid(caminho.lastIndexOf('/') + 1);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString texto = utf8(nome);
    return utf8.hasError() ? PaginaCodigo::DeAnsi(nome) : texto;
}

bool ListaNovidades::NomeAceito(const QString &nome)
{
    if (nome.isEmpty() || nome.size() > kMaximoCaracteres || nome.toUtf8().size() > kMaximoBytes)
        return false;
    if (nome.startsWith(u' ') || nome.endsWith(u' ') || nome.endsWith(u'.') || !nome.isValidUtf16())
        return false;
    static const QString kProibidos = "/\\:*?\"<>|";
    for (const QChar c : nome) {
        if (EhControle(c) || kProibidos.contains(c))
            return false;
    }
    return !EhDispositivo(nome);
}

bool ListaNovidades::SempreBaixada(const QString &nome)
{
    return nome == u"index.htm" || nome.contains(u"bnrtml");
}

QString ListaNovidades::Endereco(const QString &base, const QByteArray &caminho)
{
    // "%" stays: a path that is escaped already must not be escaped twice.
    static const QByteArray kEscapar = " \"<>\\^`{|}";
    QString endereco = base;
    for (const char c : caminho) {
        if (c > 0x20 && c < 0x7F && !kEscapar.contains(c))
            endereco += QLatin1Char(c);
        else
            endereco += u'%' + QString::fromLatin1(QByteArray(1, c).toHex().toUpper());
    }
    return endereco;
}
