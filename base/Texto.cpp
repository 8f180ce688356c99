#include "base/Texto.h"

#include <algorithm>

QString Aparar(QStringView texto)
{
    qsizetype inicio = 0;
    qsizetype fim = texto.size();
    while (inicio < fim && texto[inicio] == u' ')
        ++inicio;
    while (fim > inicio && texto[fim - 1] == u' ')
        --fim;
    return texto.sliced(inicio, fim - inicio).toString();
}

double Val(QStringView texto)
{
    QString numero;
    bool ponto = false;
    for (const QChar c : texto) {
        if (c == u' ')
            continue;
        if ((c == u'-' || c == u'+') && numero.isEmpty())
            numero += c;
        else if (c >= u'0' && c <= u'9')
            numero += c;
        else if (c == u'.' && !ponto) {
            ponto = true;
            numero += c;
        } else
            break;
    }
    return numero.toDouble(); // 0 for what holds no digit
}

QString RemoveEnter(const QString &texto)
{
    qsizetype fim = texto.size();
    while (fim >= 2 && texto[fim - 2] == u'\r' && texto[fim - 1] == u'\n')
        fim -= 2;
    return texto.left(fim);
}

int ContarOcorrencias(QStringView texto, QStringView procurado)
{
    if (procurado.isEmpty())
        return 0;
    int vezes = 0;
    for (qsizetype i = texto.indexOf(procurado); i >= 0; i = texto.indexOf(procurado, i + procurado.size()))
        ++vezes;
    return vezes;
}

QString ComLf(const QString &texto)
{
    QString saida = texto;
    saida.replace("\r\n", "\n");
    saida.replace('\r', '\n');
    return saida;
}

QString ComCrLf(const QString &texto)
{
    QString saida = ComLf(texto);
    saida.replace("\n", "\r\n");
    return saida;
}

QString SemControles(QString texto)
{
    const auto controle = [](QChar c) { return c.unicode() < 0x20 || c.unicode() == 0x7F; };
    // Hardly any text has one: those that do not are not copied.
    if (std::any_of(texto.cbegin(), texto.cend(), controle))
        std::replace_if(texto.begin(), texto.end(), controle, QChar(u' '));
    return texto;
}

QString ParaMostrar(const QString &texto, qsizetype maximo)
{
    constexpr int kMaisMarcas = 8;
    const bool longo = texto.size() > maximo;
    QString saida = longo ? texto.first(maximo) : texto;
    int marcas = 0;
    const auto demais = [&marcas](QChar c) {
        marcas = c.isMark() ? marcas + 1 : 0;
        return marcas > kMaisMarcas;
    };
    if (std::any_of(saida.cbegin(), saida.cend(), demais)) {
        marcas = 0;
        saida.removeIf(demais);
    }
    if (!longo)
        return saida;
    if (!saida.isEmpty() && saida.back().isHighSurrogate())
        saida.chop(1);
    return saida + "...";
}
