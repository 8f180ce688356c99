#include "formatos/Medidas.h"

#include "formatos/Limpeza.h"

#include <QRegularExpression>

#include <cmath>

namespace
{
using namespace Formatos;

constexpr int kMaiorTempo = 20;
constexpr qsizetype kMaiorMedida = 300; ///< what is looked at of a text
constexpr double kMaisMinutos = 1e7; ///< nobody cooks for twenty years

double DoTexto(QString numero)
{
    return numero.replace(u',', u'.').toDouble();
}

std::optional<double> DeIso(const QString &texto)
{
    static const QRegularExpression iso(
        R"(^P(?:([\d.,]*)Y)?(?:([\d.,]*)M)?(?:([\d.,]*)W)?(?:([\d.,]*)D)?(?:T(?:([\d.,]*)H)?(?:([\d.,]*)M)?(?:([\d.,]*)S)?)?$)",
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch m = iso.match(texto);
    if (!m.hasMatch() || texto.size() < 3)
        return std::nullopt;
    // Months make no sense here: "P35M" has lost its T.
    return DoTexto(m.captured(1)) * 525600 + DoTexto(m.captured(2)) + DoTexto(m.captured(3)) * 10080 +
           DoTexto(m.captured(4)) * 1440 + DoTexto(m.captured(5)) * 60 + DoTexto(m.captured(6)) +
           DoTexto(m.captured(7)) / 60;
}

/// "1 1/2", "1,5", "meia"; in units.
double Quantos(const QString &texto)
{
    if (texto == "meia" || texto == "meio" || texto == "half")
        return 0.5;
    if (texto == "um" || texto == "uma" || texto == "one" || texto == "a" || texto == "an")
        return 1;
    if (texto == "dois" || texto == "duas" || texto == "two")
        return 2;
    if (texto == "tres" || texto == "three")
        return 3;
    double soma = 0;
    for (const QString &parte : texto.split(u' ', Qt::SkipEmptyParts)) {
        const qsizetype barra = parte.indexOf(u'/');
        if (barra > 0) {
            const double divisor = DoTexto(parte.sliced(barra + 1));
            soma += divisor > 0 ? DoTexto(parte.first(barra)) / divisor : 0;
        } else {
            soma += DoTexto(parte);
        }
    }
    return soma;
}

std::optional<double> DePalavras(const QString &texto)
{
    static const QRegularExpression relogio(R"(^(\d{1,3})(?::|h)([0-5]?\d)(?:\s*(?:h|hs|hrs?|min(?:utos?)?|m))?$)");
    static const QRegularExpression parte(
        R"((?:e|and|,|\+)?\s*(\d+ \d+/\d+|\d+/\d+|\d+(?:[.,]\d+)?|meia|meio|half an?|half|uma?|one|an?|dois|duas|two|tres|three)\s*)"
        R"((dias?|days?|d|horas?|hours?|hrs?|hs?|h|minutos?|minutes?|mins?|min|m|'|segundos?|seconds?|secs?|seg|s)\.?(?![a-z])\s*)"
        R"((?:(e|and)\s+(meia|meio|half)(?![a-z])\s*)?)");
    static const QRegularExpression soltos(R"(^\s*(?:e|and)?\s*(\d{1,2})\s*$)");
    QString t = Dobrar(FracoesPorExtenso(texto));
    if (t.endsWith(u'.'))
        t.chop(1);
    if (const auto m = relogio.match(t); m.hasMatch())
        return m.captured(1).toDouble() * 60 + m.captured(2).toDouble();
    if (t == "hora e meia")
        return 90;
    double minutos = 0;
    qsizetype i = 0;
    bool horas = false;
    while (i < t.size()) {
        const QRegularExpressionMatch m =
            parte.match(t, i, QRegularExpression::NormalMatch, QRegularExpression::AnchorAtOffsetMatchOption);
        if (!m.hasMatch() || m.capturedLength() == 0)
            break;
        QString numero = m.captured(1);
        if (numero.startsWith("half"))
            numero = "half";
        const QString unidade = m.captured(2);
        const double vezes = unidade.startsWith(u'd')                              ? 1440
                             : unidade.startsWith(u'h')                            ? 60
                             : unidade.startsWith(u's')                            ? 1.0 / 60
                                                                                   : 1;
        horas = vezes == 60;
        minutos += (Quantos(numero) + (m.captured(4).isEmpty() ? 0 : 0.5)) * vezes;
        i = m.capturedEnd();
    }
    if (i == 0)
        return std::nullopt;
    if (i < t.size()) {
        // "1 hora e 40"
        const QRegularExpressionMatch m = soltos.match(t.sliced(i));
        if (!m.hasMatch() || !horas)
            return std::nullopt;
        minutos += m.captured(1).toDouble();
    }
    return minutos;
}

/// A number as people write it; "1.250" and "1,250" are thousands.
double NumeroComMilhares(QString texto)
{
    static const QRegularExpression milhares(R"(^[1-9]\d{0,2}(?:[.,]\d{3})+$)");
    if (milhares.match(texto).hasMatch())
        return texto.remove(u'.').remove(u',').toDouble();
    if (texto.contains(u'.') && texto.contains(u',')) {
        // The last of the two is the decimal sign.
        const QChar milhar = texto.lastIndexOf(u'.') > texto.lastIndexOf(u',') ? u',' : u'.';
        texto.remove(milhar);
    }
    return DoTexto(texto);
}

const char *const kPessoas = R"((?:por[cç](?:[aã]o|[oõ]es)|pessoas?|servings?|serves?|people|persons?|portions?|pax|dose\(s\)))";

bool FalaDePessoas(const QString &texto)
{
    static const QRegularExpression palavra(QString(kPessoas), QRegularExpression::CaseInsensitiveOption);
    return palavra.match(texto.left(kMaiorMedida)).hasMatch();
}

bool TemAlgarismo(const QString &texto)
{
    static const QRegularExpression algarismo(R"([0-9½¼¾⅓⅔])");
    return algarismo.match(texto).hasMatch();
}

/// The number of servings in one text; 0 when it tells none.
double PorcoesDe(const QString &texto)
{
    static const QRegularExpression meiaDuzia(R"(\bmeia\s+d[uú]zia\b|\bhalf a dozen\b)",
                                              QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression duzias(
        R"(\b(\d+(?:[.,]\d+)?|uma?|duas|tr[eê]s|a|one|two)\s+(?:d[uú]zias?|dozens?)\b)",
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression numero(R"(\d+(?: \d+/\d+|/\d+|[.,]\d+)?)");
    static const QRegularExpression medida(
        R"(^\s*(?:a|até|to|-|–)?\s*(?:\d+(?:[.,]\d+)?)?\s*(?:de\s+)?(?:kgs?|quilos?|kilos?|gr?s?|gramas?|mls?|mililitros?|l|lts?|litros?|liters?|cm|x[ií]caras?|copos?|cups?|oz|ounces?|lbs?|pounds?)(?![\p{L}]))",
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    const QString t = FracoesPorExtenso(texto.left(kMaiorMedida));
    if (meiaDuzia.match(t).hasMatch())
        return 6;
    if (const auto m = duzias.match(t); m.hasMatch())
        return 12 * std::max(Quantos(Dobrar(m.captured(1))), 0.0);
    const QRegularExpressionMatch m = numero.match(t);
    if (!m.hasMatch() || medida.match(t.sliced(m.capturedEnd())).hasMatch())
        return 0;
    return Quantos(m.captured());
}

/// Whether the text says more than a number of servings.
bool DizMais(const QString &texto)
{
    static const QRegularExpression soNumero(
        QString(R"(^(?:(?:rende|rendimento|serve|serves|para|makes|yields?|servings?|por[cç][oõ]es)\s*:?\s*)?\d+(?:[.,]\d+)?\s*%1?\.?$)")
            .arg(kPessoas),
        QRegularExpression::CaseInsensitiveOption);
    const QString t = texto.trimmed();
    if (t.size() > kMaiorMedida)
        return true;
    return !t.isEmpty() && !soNumero.match(t).hasMatch();
}
} // namespace

std::optional<double> Formatos::MinutosDoTexto(const QString &texto)
{
    const QString t = texto.trimmed();
    if (t.isEmpty())
        return 0;
    static const QRegularExpression soNumero(R"(^\d+(?:[.,]\d+)?$)");
    std::optional<double> minutos;
    if (t.size() < 100 && soNumero.match(t).hasMatch())
        minutos = DoTexto(t);
    else if (t.size() < 100 && t.startsWith(u'P', Qt::CaseInsensitive))
        minutos = DeIso(t);
    if (!minutos && t.size() < 100)
        minutos = DePalavras(t);
    if (minutos && (!std::isfinite(*minutos) || *minutos > kMaisMinutos))
        return std::nullopt;
    return minutos;
}

QString Formatos::TextoDosMinutos(double minutos)
{
    if (!(minutos > 0))
        return {};
    const auto total = std::max<qint64>(1, std::llround(minutos));
    const qint64 dias = total / 1440;
    const qint64 horas = total / 60 % 24;
    const qint64 resto = total % 60;
    QStringList longas;
    QStringList curtas;
    const auto juntar = [&](qint64 n, const char *um, const char *varios, const char *curta) {
        if (n == 0)
            return;
        longas += QString::number(n) + u' ' + QString::fromUtf8(n == 1 ? um : varios);
        curtas += QString::number(n) + u' ' + QString::fromUtf8(curta);
    };
    juntar(dias, "dia", "dias", "d");
    juntar(horas, "hora", "horas", "h");
    juntar(resto, "minuto", "minutos", "min");
    const QString longa = longas.join(" e ");
    return longa.size() <= kMaiorTempo ? longa : curtas.join(u' ');
}

QString Formatos::TempoDaCasa(const QString &texto)
{
    const std::optional<double> minutos = MinutosDoTexto(texto);
    return minutos ? TextoDosMinutos(*minutos) : texto.trimmed();
}

QString Formatos::NumeroDaCasa(double numero)
{
    if (!std::isfinite(numero) || numero <= 0 || numero >= 1e9)
        return {};
    QString texto = QString::number(numero, 'f', 2);
    while (texto.endsWith(u'0'))
        texto.chop(1);
    if (texto.endsWith(u'.'))
        texto.chop(1);
    return texto == "0" ? QString() : texto.replace(u'.', u',');
}

Rendimento Formatos::RendimentoDe(const QStringList &elementos)
{
    QStringList dados;
    for (const QString &elemento : elementos)
        if (!elemento.trimmed().isEmpty() && dados.size() < 50)
            dados += elemento.trimmed();
    if (dados.isEmpty())
        return {};
    qsizetype escolhido = -1;
    for (qsizetype i = 0; i < dados.size() && escolhido < 0; ++i)
        if (FalaDePessoas(dados[i]))
            escolhido = i;
    for (qsizetype i = 0; i < dados.size() && escolhido < 0; ++i)
        if (TemAlgarismo(dados[i]))
            escolhido = i;
    escolhido = std::max<qsizetype>(escolhido, 0);
    Rendimento rendimento;
    rendimento.porcoes = NumeroDaCasa(PorcoesDe(dados[escolhido]));
    static const QRegularExpression soZero(R"(^0+(?:[.,]0+)?$)");
    if (DizMais(dados[escolhido])) {
        rendimento.texto = dados[escolhido];
    } else {
        for (const QString &elemento : dados)
            if (DizMais(elemento)) {
                rendimento.texto = elemento;
                break;
            }
    }
    if (soZero.match(rendimento.texto).hasMatch())
        rendimento.texto.clear();
    return rendimento;
}

Calorias Formatos::CaloriasDe(const QString &inteiro, const QString &tipo)
{
    const QString texto = inteiro.left(kMaiorMedida);
    static const QRegularExpression comUnidade(R"((\d[\d.,]*)\s*(?:k?cal\b|[ck]alor\w*|cals\b|kcals\b))",
                                               QRegularExpression::CaseInsensitiveOption |
                                                   QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression sozinho(R"(^\s*(\d[\d.,]*)\s*$)");
    static const QRegularExpression inteira(R"(receita|recipe|total)", QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression soIsto(
        R"(^\s*\d[\d.,]*\s*(?:k?cals?|[ck]alor\w*)?\.?\s*(?:(?:por|per|/)\s*(?:por[cç][aã]o|serving|receita|recipe))?\s*$)",
        QRegularExpression::CaseInsensitiveOption);
    Calorias calorias;
    calorias.tipo = inteira.match(texto).hasMatch() ? "R" : tipo;
    QRegularExpressionMatch m = comUnidade.match(texto);
    if (!m.hasMatch())
        m = sozinho.match(texto);
    calorias.soNumero = texto.trimmed().isEmpty() || soIsto.match(texto).hasMatch();
    if (!m.hasMatch())
        return calorias;
    QString numero = m.captured(1);
    while (numero.endsWith(u'.') || numero.endsWith(u','))
        numero.chop(1);
    calorias.numero = NumeroDaCasa(NumeroComMilhares(numero));
    return calorias;
}
