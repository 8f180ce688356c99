#include "formatos/LinhaDeIngrediente.h"

#include "formatos/Limpeza.h"
#include "formatos/Palavras.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

namespace
{
using namespace Formatos;

constexpr int kMaiorUnidade = 20;
constexpr qsizetype kMaiorTexto = 2000; ///< no line of ingredients is longer; the rest is ingredient anyway

/// A section's name as a template's argument: each section is looked up once.
template <std::size_t N> struct Secao {
    consteval Secao(const char (&nome)[N]) { std::copy_n(nome, N, texto); }
    char texto[N] = {};
};
template <Secao secao> const QSet<QString> &Conjunto()
{
    static const QSet<QString> &conjunto = Palavras::Da().Conjunto(QString::fromLatin1(secao.texto));
    return conjunto;
}
template <Secao secao> const QStringList &Frases()
{
    static const QStringList &frases = Palavras::Da().Frases(QString::fromLatin1(secao.texto));
    return frases;
}
template <Secao secao> const QList<std::pair<QString, QString>> &Pares()
{
    static const QList<std::pair<QString, QString>> &pares = Palavras::Da().Pares(QString::fromLatin1(secao.texto));
    return pares;
}

bool EAlgarismo(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// Small letters without accents, position by position.
QString DobrarNoLugar(const QString &texto)
{
    QString saida = texto;
    for (QChar &c : saida) {
        if (c.unicode() >= 0x80 && c.decompositionTag() == QChar::Canonical)
            c = c.decomposition().at(0);
        c = c.toLower();
    }
    return saida;
}

const char *FracaoUnica(QChar c)
{
    switch (c.unicode()) {
    case u'½': return "1/2";
    case u'¼': return "1/4";
    case u'¾': return "3/4";
    default: return nullptr;
    }
}

/// A number found in a text.
struct Numero {
    QString texto;     ///< as the house writes it
    qsizetype fim = 0; ///< behind it
    bool palavra = false; ///< written as a word
};

/// Reads one line from the front; positions are of the original text.
class Leitor
{
public:
    explicit Leitor(const QString &texto)
        : m_texto(texto)
        , m_dobrado(DobrarNoLugar(texto))
    {
    }

    qsizetype Tamanho() const { return m_texto.size(); }
    const QString &Texto() const { return m_texto; }
    QChar Em(qsizetype i) const { return i >= 0 && i < m_texto.size() ? m_texto[i] : QChar(); }
    bool Fim(qsizetype i) const { return i >= m_texto.size(); }

    qsizetype PularBrancos(qsizetype i) const
    {
        while (i < m_texto.size() && m_texto[i] == u' ')
            ++i;
        return i;
    }

    /// The end of `frase` (folded) when it stands at i and no letter follows; -1 otherwise.
    qsizetype Frase(qsizetype i, const QString &frase) const
    {
        if (i < 0 || frase.isEmpty() || i >= m_dobrado.size() || m_dobrado[i] != frase[0] ||
            !QStringView(m_dobrado).sliced(i).startsWith(frase))
            return -1;
        const qsizetype fim = i + frase.size();
        return frase.back().isLetter() && Em(fim).isLetter() ? -1 : fim;
    }

    /// The folded word at i: letters, and hyphens between letters.
    QString Palavra(qsizetype i) const
    {
        qsizetype fim = i;
        while (fim < m_dobrado.size() &&
               (m_dobrado[fim].isLetter() ||
                (m_dobrado[fim] == u'-' && fim > i && fim + 1 < m_dobrado.size() && m_dobrado[fim + 1].isLetter())))
            ++fim;
        return m_dobrado.sliced(i, fim - i);
    }
    QString SoLetras(qsizetype i) const
    {
        qsizetype fim = i;
        while (fim < m_dobrado.size() && m_dobrado[fim].isLetter())
            ++fim;
        return i < m_dobrado.size() ? m_dobrado.sliced(i, fim - i) : QString();
    }

    std::optional<Numero> LerNumero(qsizetype i) const;
    std::optional<Numero> LerQuantidade(qsizetype i) const;

private:
    std::optional<Numero> Fracao(qsizetype i) const;
    qsizetype Ligacao(qsizetype i, QString &entre) const;

    QString m_texto;
    QString m_dobrado;
};

/// "1/2" or a one-character fraction at i.
std::optional<Numero> Leitor::Fracao(qsizetype i) const
{
    if (const char *fracao = FracaoUnica(Em(i)))
        return Numero{fracao, i + 1, false};
    qsizetype barra = i;
    while (EAlgarismo(Em(barra)))
        ++barra;
    const qsizetype depois = Em(barra) == u'/' ? barra + 1 : -1;
    if (barra == i || depois < 0 || !EAlgarismo(Em(depois)) || Em(depois) == u'0')
        return std::nullopt;
    qsizetype fim = depois;
    while (EAlgarismo(Em(fim)))
        ++fim;
    return Numero{m_texto.sliced(i, fim - i), fim, false};
}

std::optional<Numero> Leitor::LerNumero(qsizetype i) const
{
    if (const std::optional<Numero> fracao = Fracao(i))
        return fracao;
    if (!EAlgarismo(Em(i))) {
        for (const auto &[palavra, valor] : Pares<"numeros">()) {
            qsizetype fim = Frase(i, palavra);
            if (fim < 0 || Em(fim) == u'-')
                continue;
            if (palavra == "half")
                for (const QString artigo : {" an ", " a "})
                    if (QStringView(m_dobrado).sliced(fim).startsWith(artigo)) {
                        fim += artigo.size() - 1;
                        break;
                    }
            QString texto = valor;
            if (valor != "1/2")
                for (const QString meio : {" e meia", " e meio"})
                    if (const qsizetype depois = Frase(fim, meio); depois > 0) {
                        texto += " 1/2";
                        fim = depois;
                        break;
                    }
            return Numero{texto, fim, true};
        }
        return std::nullopt;
    }
    qsizetype fim = i;
    while (EAlgarismo(Em(fim)))
        ++fim;
    const QString inteiro = m_texto.sliced(i, fim - i);
    if ((Em(fim) == u'.' || Em(fim) == u',') && EAlgarismo(Em(fim + 1))) {
        qsizetype decimais = fim + 1;
        while (EAlgarismo(Em(decimais)))
            ++decimais;
        const QString resto = m_texto.sliced(fim + 1, decimais - fim - 1);
        const bool milhares = Em(fim) == u'.' && resto.size() == 3 && !inteiro.startsWith(u'0');
        if (Em(decimais) == u'/')
            return std::nullopt;
        return Numero{inteiro + (milhares ? u'.' : u',') + resto, decimais, false};
    }
    // "1 1/2", "1-1/2", "1 e 1/2", "1½", "1 e meia"
    const bool zero = inteiro.toLongLong() == 0;
    const auto misto = [&](const QString &parte, qsizetype ate) {
        return Numero{zero ? parte : inteiro + u' ' + parte, ate, false};
    };
    if (FracaoUnica(Em(fim)))
        return misto(FracaoUnica(Em(fim)), fim + 1);
    qsizetype depois = -1;
    if (const qsizetype brancos = PularBrancos(fim); brancos > fim) {
        depois = brancos;
        if (const qsizetype e = Frase(brancos, "e "); e > 0) {
            depois = PularBrancos(e);
            for (const QString meio : {"meia", "meio"})
                if (const qsizetype ate = Frase(depois, meio); ate > 0)
                    return misto("1/2", ate);
        }
    } else if (Em(fim) == u'-') {
        depois = fim + 1;
    }
    if (depois > 0)
        if (const std::optional<Numero> fracao = Fracao(depois))
            return misto(fracao->texto, fracao->fim);
    return Numero{inteiro, fim, false};
}

/// The link between two numbers at i; `entre` is how the house writes it. The end, or -1.
qsizetype Leitor::Ligacao(qsizetype i, QString &entre) const
{
    const qsizetype inicio = PularBrancos(i);
    const QChar c = Em(inicio);
    if (c == u'-' || c == u'–') {
        entre = " a ";
        return PularBrancos(inicio + 1);
    }
    if (c == u'×' || ((c == u'x' || c == u'X') && !Em(inicio + 1).isLetter())) {
        entre = " x ";
        return PularBrancos(inicio + 1);
    }
    if (inicio == i)
        return -1;
    for (const QString palavra : {"a", "ate", "to"})
        if (const qsizetype fim = Frase(inicio, palavra); fim > 0 && Em(fim) == u' ') {
            entre = " a ";
            return PularBrancos(fim);
        }
    for (const QString palavra : {"ou", "or"})
        if (const qsizetype fim = Frase(inicio, palavra); fim > 0 && Em(fim) == u' ') {
            entre = " ou ";
            return PularBrancos(fim);
        }
    return -1;
}

/// A number or two of them, with "de" and "cerca de" before.
std::optional<Numero> Leitor::LerQuantidade(qsizetype i) const
{
    QString antes;
    qsizetype inicio = i;
    for (const QString &aproximado : Frases<"aproximado">())
        if (const qsizetype fim = Frase(i, aproximado); fim > 0) {
            antes = "± ";
            inicio = PularBrancos(fim);
            break;
        }
    const qsizetype de = Frase(inicio, "de ");
    const qsizetype primeiro = de > 0 ? PularBrancos(de) : inicio;
    std::optional<Numero> numero = LerNumero(primeiro);
    if (!numero)
        return std::nullopt;
    QString entre;
    if (const qsizetype outro = Ligacao(numero->fim, entre); outro > 0) {
        const std::optional<Numero> segundo = LerNumero(outro);
        // "2 x ..." without a number behind it, and "um a um", are no quantities of two numbers.
        if (segundo && (!segundo->palavra || entre != " x "))
            numero = Numero{numero->texto + entre + segundo->texto, segundo->fim, segundo->palavra};
        else
            entre.clear();
    }
    if (de > 0 && entre.isEmpty())
        return std::nullopt;
    const qsizetype fim = numero->fim;
    if (Em(PularBrancos(fim)) == u'%' || QStringView(u"°ºª").contains(Em(fim)) ||
        (Em(fim) == u'-' && Em(fim + 1).isLetter()))
        return std::nullopt;
    numero->texto.prepend(antes);
    return numero;
}

/// A unit found in a text.
struct Unidade {
    QString texto;
    qsizetype fim = 0;
    bool meia = false; ///< "e meia" stood behind it
};

class LeitorDeUnidade
{
public:
    LeitorDeUnidade(const Leitor &leitor, bool plural, bool noFim)
        : m_leitor(leitor)
        , m_plural(plural)
        , m_noFim(noFim)
    {
    }

    std::optional<Unidade> Ler(qsizetype i) const;

private:
    std::optional<Unidade> DeUmaLetra(qsizetype i) const;
    std::optional<Unidade> Composta(qsizetype i) const;
    qsizetype Tipo(qsizetype i) const;
    bool EBebida(qsizetype i) const;
    bool AntesDeErva(qsizetype i) const;
    qsizetype Adjetivo(qsizetype i) const;
    qsizetype Meia(qsizetype i) const;

    const Leitor &m_leitor;
    bool m_plural;
    bool m_noFim; ///< the text ends with the unit: the ingredient stood before it
};

std::optional<Unidade> LeitorDeUnidade::DeUmaLetra(qsizetype i) const
{
    const QString letra = m_leitor.Texto().mid(i, 1);
    if (!Conjunto<"unidades-de-uma-letra">().contains(letra) || m_leitor.Em(i + 1) != u' ' ||
        !m_leitor.Em(i + 2).isLower())
        return std::nullopt;
    return Unidade{letra, i + 1, false};
}

std::optional<Unidade> LeitorDeUnidade::Composta(qsizetype i) const
{
    const auto unidade = [&](qsizetype fim) { return Unidade{m_leitor.Texto().sliced(i, fim - i), fim, false}; };
    for (const QString &frase : Frases<"unidades-compostas">())
        if (const qsizetype fim = m_leitor.Frase(i, frase); fim > 0)
            return unidade(fim);
    for (const QString &frase : Frases<"unidades-compostas-antes-de">())
        if (const qsizetype fim = m_leitor.Frase(i, frase);
            fim > 0 && m_leitor.Frase(m_leitor.PularBrancos(fim), "de") > 0)
            return unidade(fim);
    return std::nullopt;
}

/// Whether chá or café, ending at i, is the drink itself.
bool LeitorDeUnidade::EBebida(qsizetype i) const
{
    const qsizetype depois = m_leitor.PularBrancos(i);
    if (m_leitor.Fim(depois))
        return !m_noFim;
    for (const QString &frase : Frases<"bebidas">())
        for (const QString &palavra : frase.startsWith("de ") || frase.startsWith("em ") ? QStringList{frase}
                                                                                         : frase.split(u' '))
            if (m_leitor.Frase(depois, palavra) > 0)
                return true;
    return false;
}

/// The end of the kind of spoon or cup at i: "(sopa)", "de sopa", "de (sopa)", "sopa"; -1 when there is none.
qsizetype LeitorDeUnidade::Tipo(qsizetype i) const
{
    qsizetype inicio = m_leitor.PularBrancos(i);
    if (const qsizetype de = m_leitor.Frase(inicio, "de"); de > 0)
        inicio = m_leitor.PularBrancos(de);
    const bool parenteses = m_leitor.Em(inicio) == u'(';
    if (parenteses) {
        inicio = m_leitor.PularBrancos(inicio + 1);
        if (const qsizetype de = m_leitor.Frase(inicio, "de"); de > 0)
            inicio = m_leitor.PularBrancos(de);
    }
    for (const QString &tipo : Conjunto<"tipos">()) {
        const qsizetype fim = m_leitor.Frase(inicio, tipo);
        if (fim < 0)
            continue;
        if (parenteses) {
            const qsizetype fecho = m_leitor.PularBrancos(fim);
            return m_leitor.Em(fecho) == u')' ? fecho + 1 : -1;
        }
        if (m_leitor.Em(fim) == u'-')
            return -1;
        return Conjunto<"tipos-bebidas">().contains(tipo) && EBebida(fim) ? -1 : fim;
    }
    return -1;
}

bool LeitorDeUnidade::AntesDeErva(qsizetype i) const
{
    const qsizetype de = m_leitor.Frase(m_leitor.PularBrancos(i), "de ");
    if (de < 0)
        return false;
    return Conjunto<"ervas">().contains(m_leitor.Palavra(m_leitor.PularBrancos(de)));
}

/// The end of an adjective at i ("bem cheia"); -1 when there is none.
qsizetype LeitorDeUnidade::Adjetivo(qsizetype i) const
{
    qsizetype inicio = m_leitor.PularBrancos(i);
    if (inicio == i)
        return -1;
    if (const QString palavra = m_leitor.SoLetras(inicio); Conjunto<"adverbios">().contains(palavra))
        inicio = m_leitor.PularBrancos(inicio + palavra.size());
    const QString palavra = m_leitor.SoLetras(inicio);
    return Conjunto<"adjetivos">().contains(palavra) ? inicio + palavra.size() : -1;
}

qsizetype LeitorDeUnidade::Meia(qsizetype i) const
{
    const qsizetype inicio = m_leitor.PularBrancos(i);
    for (const QString meia : {"e meia", "e meio"})
        if (const qsizetype fim = m_leitor.Frase(inicio, meia); fim > 0 && m_leitor.Em(fim) != u'-')
            return fim;
    return -1;
}

std::optional<Unidade> LeitorDeUnidade::Ler(qsizetype i) const
{
    if (const auto letra = DeUmaLetra(i))
        return letra;
    const Palavras &palavras = Palavras::Da();
    std::optional<Unidade> unidade = Composta(i);
    if (!unidade) {
        // "mão-cheia" is a word with a hyphen; "pé-de-moleque" begins with a unit and is none.
        QString palavra = m_leitor.Palavra(i);
        if (palavra.isEmpty())
            return std::nullopt;
        const bool soComTipo = Conjunto<"so-com-tipo">().contains(palavra);
        if (!soComTipo && !palavras.EUnidade(palavra))
            return std::nullopt;
        qsizetype fim = i + palavra.size();
        if (m_leitor.Em(fim) == u'-' || EAlgarismo(m_leitor.Em(fim)))
            return std::nullopt;
        if (Conjunto<"so-com-ervas">().contains(palavra) && !AntesDeErva(fim))
            return std::nullopt;
        const bool comPonto = m_leitor.Em(fim) == u'.';
        if (comPonto)
            ++fim;
        // "A | B" is singular and plural.
        QString texto = m_leitor.Texto().sliced(i, fim - i);
        if (const qsizetype barra = m_leitor.PularBrancos(fim); m_leitor.Em(barra) == u'|') {
            const qsizetype outra = m_leitor.PularBrancos(barra + 1);
            const QString segunda = m_leitor.Palavra(outra);
            if (!segunda.isEmpty()) {
                if (m_plural)
                    texto = m_leitor.Texto().sliced(outra, segunda.size());
                fim = outra + segunda.size();
            }
        }
        if (Conjunto<"unidades-minusculas">().contains(palavra))
            texto = texto.toLower();
        unidade = Unidade{texto, fim, false};
        if (Conjunto<"com-tipo">().contains(palavra) || soComTipo) {
            qsizetype antes = fim;
            if (const qsizetype meia = Meia(fim); meia > 0 && Tipo(meia) > 0) {
                unidade->meia = true;
                antes = meia;
            }
            if (const qsizetype adjetivo = Adjetivo(antes); adjetivo > 0 && Tipo(adjetivo) > 0) {
                const QString comAdjetivo = texto + m_leitor.Texto().sliced(antes, adjetivo - antes);
                const qsizetype tipo = Tipo(adjetivo);
                const QString inteira = comAdjetivo + m_leitor.Texto().sliced(adjetivo, tipo - adjetivo);
                if (inteira.size() <= kMaiorUnidade) {
                    unidade->texto = inteira;
                    unidade->fim = tipo;
                    return unidade;
                }
            }
            if (const qsizetype tipo = Tipo(antes); tipo > 0) {
                QString trecho = m_leitor.Texto().sliced(antes, tipo - antes);
                if (!trecho.startsWith(u' '))
                    trecho.prepend(u' ');
                unidade->texto = (texto + trecho).simplified();
                unidade->fim = tipo;
                static const QRegularExpression longa(R"(^(colheres) de (sobremesa)$)",
                                                      QRegularExpression::CaseInsensitiveOption);
                unidade->texto.replace(longa, "\\1 (\\2)");
            } else if (soComTipo) {
                return std::nullopt;
            }
        }
    }
    if (const qsizetype meia = Meia(unidade->fim); meia > 0 && !unidade->meia) {
        unidade->meia = true;
        unidade->fim = meia;
    }
    if (const qsizetype adjetivo = Adjetivo(unidade->fim);
        adjetivo > 0 && m_leitor.Frase(m_leitor.PularBrancos(adjetivo), "de") > 0) {
        const QString inteira =
            unidade->texto + u' ' + m_leitor.Texto().sliced(unidade->fim, adjetivo - unidade->fim).trimmed();
        if (inteira.size() <= kMaiorUnidade) {
            unidade->texto = inteira;
            unidade->fim = adjetivo;
        }
    }
    return unidade;
}

/// The end of one "de", "da", "of" ... at i; i itself when there is none.
qsizetype PularDe(const Leitor &leitor, qsizetype i)
{
    for (const QString palavra : {"das", "dos", "de", "da", "do", "of"})
        if (const qsizetype fim = leitor.Frase(i, palavra); fim > 0 && (leitor.Em(fim) == u' ' || leitor.Fim(fim)))
            return leitor.PularBrancos(fim);
    for (const QString palavra : {"d'", "d’"})
        if (const qsizetype fim = leitor.Frase(i, palavra); fim > 0)
            return fim;
    return i;
}

/// The end of a parenthesis that opens at i, nested ones included; -1 when it does not close.
qsizetype FimDoParenteses(const Leitor &leitor, qsizetype i)
{
    int abertos = 0;
    for (qsizetype k = i; k < leitor.Tamanho(); ++k) {
        if (leitor.Em(k) == u'(')
            ++abertos;
        else if (leitor.Em(k) == u')' && --abertos == 0)
            return k + 1;
    }
    return -1;
}

QString SomarMeia(const QString &quantidade)
{
    bool ok = false;
    const qsizetype corte = quantidade.lastIndexOf(u' ');
    quantidade.sliced(corte + 1).toLongLong(&ok);
    return ok ? quantidade + " 1/2" : quantidade + " e meia";
}

/// Quantity in front: what it, the unit and the rest are. Nothing when there is no quantity.
std::optional<Linha> ComQuantidadeNaFrente(const QString &texto)
{
    const Leitor leitor(texto);
    QString quantidade;
    qsizetype i = 0;
    bool soAntesDeUnidade = false;
    bool precisaDeBranco = false;

    if (const qsizetype pouco = leitor.Frase(0, "um pouco de "); pouco > 0) {
        return Linha{texto.sliced(pouco).trimmed(), texto.first(qsizetype(8)), {}};
    }
    if (const std::optional<Numero> numero = leitor.LerQuantidade(0)) {
        quantidade = numero->texto;
        i = numero->fim;
        precisaDeBranco = leitor.Em(i).isLetter(); // "200g" needs a unit, "7up" is a name
    } else {
        const QString palavra = leitor.SoLetras(0);
        if (Conjunto<"vagos">().contains(palavra))
            quantidade = texto.first(palavra.size());
        else if (Conjunto<"artigos">().contains(palavra))
            quantidade = "1";
        else
            return std::nullopt;
        if (leitor.Em(palavra.size()) != u' ')
            return std::nullopt;
        i = palavra.size();
        soAntesDeUnidade = true;
    }

    QString parenteses;
    const auto recolher = [&] {
        const qsizetype inicio = leitor.PularBrancos(i);
        if (leitor.Em(inicio) != u'(')
            return;
        const qsizetype fim = FimDoParenteses(leitor, inicio);
        if (fim < 0)
            return;
        parenteses += (parenteses.isEmpty() ? "" : " ") + texto.sliced(inicio, fim - inicio);
        i = fim;
    };
    recolher();
    i = leitor.PularBrancos(i);
    const bool plural = UltimoNumero(quantidade) >= 2;
    const LeitorDeUnidade leitorDeUnidade(leitor, plural, false);
    std::optional<Unidade> unidade = leitorDeUnidade.Ler(i);
    if (!unidade)
        if (const qsizetype de = PularDe(leitor, i); de > i)
            unidade = leitorDeUnidade.Ler(de);
    QString nomeDaUnidade;
    if (unidade) {
        nomeDaUnidade = unidade->texto;
        i = unidade->fim;
        if (unidade->meia)
            quantidade = SomarMeia(quantidade);
        recolher();
        i = leitor.PularBrancos(i);
    } else if (soAntesDeUnidade || precisaDeBranco) {
        return std::nullopt;
    }
    i = PularDe(leitor, i);
    QString ingrediente = i < texto.size() ? texto.sliced(i).trimmed() : QString();
    static const QRegularExpression sinais(R"(^[,;:–-]+\s+)");
    ingrediente.remove(sinais);
    if (ingrediente.isEmpty()) {
        // A unit without an ingredient is the ingredient; a number alone is no quantity.
        if (nomeDaUnidade.isEmpty() && parenteses.isEmpty())
            return std::nullopt;
        if (!nomeDaUnidade.isEmpty())
            ingrediente = std::exchange(nomeDaUnidade, QString());
        else
            ingrediente = std::exchange(parenteses, QString());
    }
    if (!parenteses.isEmpty())
        ingrediente += u' ' + parenteses;
    return Linha{ingrediente, quantidade, nomeDaUnidade};
}

/// "a gosto" and its like in front.
std::optional<Linha> ComQuantidadeLivreNaFrente(const QString &texto)
{
    const Leitor leitor(texto);
    qsizetype inicio = 0;
    if (leitor.Frase(0, "1 ") > 0)
        inicio = leitor.PularBrancos(1);
    for (const auto &[palavras, quantidade] : Pares<"livres">()) {
        const qsizetype fim = leitor.Frase(inicio, palavras);
        if (fim < 0)
            continue;
        qsizetype i = leitor.PularBrancos(fim);
        if (i == fim && !QStringView(u"-:").contains(leitor.Em(i)))
            return std::nullopt;
        bool ligado = false;
        for (const QString ligacao : {"de ", "da ", "do "})
            if (const qsizetype depois = leitor.Frase(i, ligacao); depois > 0) {
                i = depois;
                ligado = true;
                break;
            }
        if (!ligado && QStringView(u"-–:").contains(leitor.Em(i)))
            ++i;
        const QString ingrediente = texto.mid(i).trimmed();
        if (ingrediente.isEmpty())
            return std::nullopt;
        return Linha{ingrediente, quantidade, {}};
    }
    return std::nullopt;
}

QString SemSinalNoFim(QString texto)
{
    texto = texto.trimmed();
    while (!texto.isEmpty() && QStringView(u",;:-–").contains(texto.back())) {
        texto.chop(1);
        texto = texto.trimmed();
    }
    return texto;
}

/// "a gosto" and its like behind the ingredient, or in parentheses there.
std::optional<Linha> ComQuantidadeLivreNoFim(const QString &texto)
{
    const Leitor leitor(texto);
    QString alvo = texto;
    bool parenteses = false;
    if (texto.endsWith(u')')) {
        alvo.chop(1);
        parenteses = true;
    }
    alvo = alvo.trimmed();
    const QString dobrado = DobrarNoLugar(alvo);
    for (const auto &[palavras, quantidade] : Pares<"livres">()) {
        if (!dobrado.endsWith(palavras))
            continue;
        const qsizetype inicio = dobrado.size() - palavras.size();
        if (inicio == 0)
            return std::nullopt;
        QString antes = alvo.first(inicio);
        if (parenteses) {
            if (!antes.trimmed().endsWith(u'('))
                continue;
            antes = antes.trimmed().chopped(1);
        } else if (!QStringView(u" ,-:").contains(antes.back())) {
            continue;
        }
        antes = SemSinalNoFim(antes);
        if (antes.isEmpty())
            return std::nullopt;
        return Linha{antes, quantidade, {}};
    }
    return std::nullopt;
}

/// "Ovos: 3", "Alho: 2 dentes", "Molho de tomate 200 gramas".
std::optional<Linha> ComQuantidadeNoFim(const QString &texto)
{
    const Leitor leitor(texto);
    static const QRegularExpression presa(R"((^|\s)(de|da|do|com|em|para|por|of|e|ou|até|a|\+)$)",
                                          QRegularExpression::CaseInsensitiveOption);
    for (qsizetype i = 1; i < texto.size(); ++i) {
        if (texto[i - 1] != u' ' && texto[i - 1] != u':')
            continue;
        if (texto[i] == u' ')
            continue;
        const std::optional<Numero> numero = leitor.LerQuantidade(i);
        if (!numero)
            continue;
        const QString antes = texto.first(i).trimmed();
        const bool sinal = antes.endsWith(u':') || antes.endsWith(u'-') || antes.endsWith(u'–');
        if (!sinal && presa.match(antes).hasMatch())
            continue;
        const QString ingrediente = SemSinalNoFim(antes);
        if (ingrediente.isEmpty())
            continue;
        qsizetype depois = leitor.PularBrancos(numero->fim);
        if (leitor.Fim(depois)) {
            if (sinal)
                return Linha{ingrediente, numero->texto, {}};
            continue;
        }
        const LeitorDeUnidade leitorDeUnidade(leitor, UltimoNumero(numero->texto) >= 2, true);
        const std::optional<Unidade> unidade = leitorDeUnidade.Ler(depois);
        if (unidade && leitor.Fim(leitor.PularBrancos(unidade->fim)))
            return Linha{ingrediente, unidade->meia ? SomarMeia(numero->texto) : numero->texto, unidade->texto};
    }
    return std::nullopt;
}

/// Figures of one number as the house writes it.
double Valor(const QString &numero)
{
    double soma = 0;
    for (const QString &parte : numero.split(u' ', Qt::SkipEmptyParts)) {
        const qsizetype barra = parte.indexOf(u'/');
        if (barra > 0) {
            const double divisor = parte.sliced(barra + 1).toDouble();
            soma += divisor > 0 ? parte.first(barra).toDouble() / divisor : 0;
            continue;
        }
        QString texto = parte;
        static const QRegularExpression milhares(R"(^[1-9]\d{0,2}(\.\d{3})+$)");
        if (milhares.match(texto).hasMatch())
            texto.remove(u'.');
        soma += texto.replace(u',', u'.').toDouble();
    }
    return soma;
}

QStringList NumerosDa(const QString &quantidade)
{
    static const QRegularExpression numero(R"(\d+ \d+/\d+|\d+/\d+|\d+(?:[.,]\d+)*)");
    QStringList numeros;
    for (auto it = numero.globalMatch(FracoesPorExtenso(quantidade)); it.hasNext();)
        numeros += it.next().captured();
    return numeros;
}
} // namespace

QString Formatos::LimparItem(const QString &texto)
{
    QString limpo = texto.trimmed();
    while (!limpo.isEmpty()) {
        const QChar c = limpo.front();
        if (QStringView(u"•▪●○▢☐□✓✔").contains(c) ||
            (QStringView(u"-–—*·").contains(c) && limpo.size() > 1 && limpo[1] == u' '))
            limpo = limpo.sliced(1).trimmed();
        else
            break;
    }
    while (limpo.endsWith(u';') || limpo.endsWith(u','))
        limpo = limpo.chopped(1).trimmed();
    if (limpo.endsWith(u'.') && limpo.count(u'.') == 1) {
        const QString ultima = Dobrar(limpo.sliced(limpo.lastIndexOf(u' ') + 1));
        if (!Palavras::Da().EUnidade(ultima))
            limpo = limpo.chopped(1).trimmed();
    }
    return limpo;
}

QString Formatos::TituloDaLinha(const QString &texto)
{
    static const QRegularExpression cerquilhas(R"(^#+\s*(.*?)\s*#*$)");
    static const QRegularExpression colchetes(R"(^\[([^\[\]]+)\]$)");
    if (!texto.startsWith(u'#') && !texto.startsWith(u'['))
        return texto;
    QString titulo;
    if (const auto m = cerquilhas.match(texto); m.hasMatch())
        titulo = m.captured(1).trimmed();
    else if (const auto n = colchetes.match(texto); n.hasMatch())
        titulo = n.captured(1).trimmed();
    if (titulo.isEmpty())
        return texto;
    while (titulo.endsWith(u':'))
        titulo = titulo.chopped(1).trimmed();
    return titulo + u':';
}

bool Formatos::ETitulo(const Linha &linha)
{
    return linha.Quantidade.isEmpty() && linha.Unidade.isEmpty() && linha.Ingrediente.endsWith(u':');
}

Linha Formatos::SepararLinha(const QString &texto)
{
    int perdidos = 0;
    const QString limpo = TituloDaLinha(LimparItem(ParaWindows1252(texto, perdidos)));
    if (limpo.endsWith(u':') || limpo.size() > kMaiorTexto)
        return {limpo, {}, {}};
    if (const auto linha = ComQuantidadeLivreNaFrente(limpo))
        return *linha;
    if (const auto linha = ComQuantidadeNaFrente(limpo))
        return *linha;
    if (const auto linha = ComQuantidadeLivreNoFim(limpo))
        return *linha;
    if (const auto linha = ComQuantidadeNoFim(limpo))
        return *linha;
    return {limpo, {}, {}};
}

QString Formatos::QuantidadeDada(const QString &texto)
{
    const QString limpo = texto.trimmed();
    const Leitor leitor(limpo);
    const std::optional<Numero> numero = leitor.LerQuantidade(0);
    if (numero && !numero->palavra && leitor.Fim(leitor.PularBrancos(numero->fim)))
        return numero->texto;
    const QString dobrado = Dobrar(limpo);
    for (const auto &[palavras, quantidade] : Pares<"livres">())
        if (dobrado == palavras)
            return quantidade;
    return FracoesPorExtenso(limpo);
}

QString Formatos::QuantidadeDoNumero(double numero)
{
    if (!std::isfinite(numero) || std::fabs(numero) < 1e-9 || std::fabs(numero) >= 1e15)
        return {};
    struct Fracao {
        double valor;
        const char *texto;
    };
    static constexpr std::array<Fracao, 6> kFracoes = {
        {{0.5, "1/2"}, {1.0 / 3, "1/3"}, {2.0 / 3, "2/3"}, {0.25, "1/4"}, {0.75, "3/4"}, {0.125, "1/8"}}};
    const double inteiro = std::floor(numero);
    const double resto = numero - inteiro;
    for (const Fracao &fracao : kFracoes)
        if (std::fabs(resto - fracao.valor) <= 0.005)
            return inteiro > 0 ? QString::number(inteiro, 'f', 0) + u' ' + QLatin1String(fracao.texto)
                               : QString::fromLatin1(fracao.texto);
    QString texto = QString::number(numero, 'f', 3);
    while (texto.endsWith(u'0'))
        texto.chop(1);
    if (texto.endsWith(u'.'))
        texto.chop(1);
    return texto.replace(u'.', u',');
}

double Formatos::UltimoNumero(const QString &quantidade)
{
    const QStringList numeros = NumerosDa(quantidade);
    return numeros.isEmpty() ? 0 : Valor(numeros.last());
}

double Formatos::PrimeiroNumero(const QString &quantidade)
{
    const QStringList numeros = NumerosDa(quantidade);
    return numeros.isEmpty() ? 0 : Valor(numeros.first());
}

bool Formatos::EQuantidadeLivre(const QString &quantidade)
{
    const QString dobrada = Dobrar(quantidade);
    for (const auto &[palavras, valor] : Pares<"livres">())
        if (dobrada == palavras)
            return true;
    return false;
}

QString Formatos::TextoDaLinha(const Linha &linha)
{
    if (ETitulo(linha))
        return linha.Ingrediente;
    if (linha.Unidade.isEmpty() && EQuantidadeLivre(linha.Quantidade))
        return linha.Ingrediente + u' ' + linha.Quantidade;
    QString texto = linha.Quantidade;
    if (!linha.Unidade.isEmpty())
        texto += (texto.isEmpty() ? "" : " ") + linha.Unidade;
    if (texto.isEmpty())
        return linha.Ingrediente;
    static const QRegularExpression semDe(R"(^(e |ou |\+|\())", QRegularExpression::CaseInsensitiveOption);
    const bool de = !linha.Unidade.isEmpty() && !Palavras::Da().EUnidadeInglesa(Dobrar(linha.Unidade)) &&
                    !semDe.match(linha.Ingrediente).hasMatch();
    return texto + (de ? " de " : " ") + linha.Ingrediente;
}
