#include "print/ImpressaoGrafica.h"

#include "print/Superficie.h"

#include <QStringView>
#include <QVarLengthArray>

#include <algorithm>

namespace
{
constexpr ushort kRetorno = 13;

// Sums of widths carry rounding errors; a line is too wide only when a printer could show it.
constexpr double kFolga = 1e-6;

bool EhEspaco(QChar c)
{
    return c == u' ' || c == u'\t';
}

bool FimDePalavra(QChar c)
{
    return EhEspaco(c) || c.unicode() == kRetorno;
}

// What a surface is given: the LF that follows a CR opens the next line and has neither width nor ink.
QString SemControles(QStringView trecho)
{
    const auto controle = [](QChar c) { return c.unicode() < 32; };
    QString limpo = trecho.toString();
    if (std::any_of(limpo.cbegin(), limpo.cend(), controle))
        limpo.removeIf(controle);
    return limpo;
}

// Codes 128 to 159 of the code page (quotes, dashes, the euro) stand above 255 in Unicode.
bool EstaEntre128e159(char32_t c)
{
    constexpr char32_t tabela[] = {0x20AC, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030,
                                   0x0160, 0x2039, 0x0152, 0x017D, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
                                   0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x017E, 0x0178};
    return std::find(std::begin(tabela), std::end(tabela), c) != std::end(tabela);
}

// A break inside a word may leave only these at the line's end: codes 33 to 125, and 161 and above.
bool EhVisivel(char32_t c)
{
    return (c >= 33 && c <= 125) || (c >= 161 && !EstaEntre128e159(c));
}

struct Palavra {
    qsizetype inicio;
    qsizetype fim;
    double largura;
};

struct Linha {
    qsizetype inicio = 0;
    qsizetype fim = 0;     ///< behind the last character kept, trailing spaces removed
    qsizetype proxima = 0; ///< where the next line starts
    bool terminouEmRetorno = false;
    QVarLengthArray<Palavra, 48> palavras;
};

/**
 * Finds the lines of a text one after another.
 *
 * A line's width is the sum of its words and spaces, so every word is measured once, never a growing line;
 * that keeps the work linear. Words longer than a line are measured piece by piece.
 */
class Quebrador
{
public:
    Quebrador(const Superficie &superficie, QStringView texto, double disponivel)
        : m_superficie(superficie)
        , m_texto(texto)
        , m_disponivel(disponivel + kFolga)
        , m_larguraEspaco(superficie.TextWidth(QStringLiteral(" ")))
    {
    }

    double LarguraEspaco() const { return m_larguraEspaco; }

    Linha Colher(qsizetype inicio) const
    {
        Linha linha;
        linha.inicio = inicio;
        double largura = 0;
        qsizetype depoisDoEspaco = -1; // behind the last space collected
        qsizetype i = inicio;
        while (true) {
            if (i == m_texto.size()) {
                linha.fim = linha.proxima = i;
                break;
            }
            const QChar c = m_texto[i];
            if (c.unicode() == kRetorno) {
                linha.fim = i;
                linha.proxima = i + 1;
                linha.terminouEmRetorno = true;
                break;
            }
            if (EhEspaco(c)) {
                largura += m_larguraEspaco;
                ++i;
                if (largura > m_disponivel) { // the space that did not fit is dropped
                    linha.fim = i - 1;
                    linha.proxima = i;
                    break;
                }
                depoisDoEspaco = i;
                continue;
            }
            const Palavra palavra = MedirPalavra(i, m_disponivel - largura);
            if (palavra.fim == m_texto.size() || FimDePalavra(m_texto[palavra.fim])) {
                largura += palavra.largura;
                i = palavra.fim;
                linha.palavras.append(palavra);
                continue;
            }
            if (depoisDoEspaco >= 0) { // the word goes whole to the next line
                linha.fim = linha.proxima = depoisDoEspaco;
            } else {
                linha.fim = linha.proxima = QuebrarEntreLetras(palavra);
                linha.palavras.append({i, linha.fim, 0});
            }
            break;
        }
        while (linha.fim > linha.inicio && EhEspaco(m_texto[linha.fim - 1]))
            --linha.fim;
        return linha;
    }

private:
    double Medir(qsizetype inicio, qsizetype fim) const
    {
        return m_superficie.TextWidth(SemControles(m_texto.sliced(inicio, fim - inicio)));
    }

    /// End of the character at `i`, with the marks that sit on it; surrogate pairs stay together.
    qsizetype FimDoCaractere(qsizetype i) const
    {
        const auto avancar = [this](qsizetype p) {
            const bool par =
                m_texto[p].isHighSurrogate() && p + 1 < m_texto.size() && m_texto[p + 1].isLowSurrogate();
            return p + (par ? 2 : 1);
        };
        qsizetype fim = avancar(i);
        while (fim < m_texto.size() && m_texto[fim].isMark())
            ++fim;
        return fim;
    }

    char32_t CaractereEm(qsizetype i) const
    {
        if (m_texto[i].isHighSurrogate() && i + 1 < m_texto.size())
            return QChar::surrogateToUcs4(m_texto[i], m_texto[i + 1]);
        return m_texto[i].unicode();
    }

    /// The word from `inicio`, or as many of its characters as fit into `limite`.
    Palavra MedirPalavra(qsizetype inicio, double limite) const
    {
        Palavra cabe{inicio, inicio, 0};
        qsizetype passo = 32;
        while (true) {
            QVarLengthArray<qsizetype, 64> fins; // ends of the characters of this piece
            qsizetype fim = cabe.fim;
            while (fins.size() < passo && fim < m_texto.size() && !FimDePalavra(m_texto[fim])) {
                fim = FimDoCaractere(fim);
                fins.append(fim);
            }
            if (fins.isEmpty())
                return cabe;
            const double largura = Medir(inicio, fim);
            if (largura <= limite) {
                cabe.fim = fim;
                cabe.largura = largura;
                passo *= 2;
                continue;
            }
            qsizetype nao = fins.size() - 1; // index of an end that does not fit
            qsizetype sim = -1;              // index of the last end known to fit
            while (nao - sim > 1) {
                const qsizetype meio = sim + (nao - sim) / 2;
                const double medida = Medir(inicio, fins[meio]);
                if (medida <= limite) {
                    sim = meio;
                    cabe.fim = fins[meio];
                    cabe.largura = medida;
                } else {
                    nao = meio;
                }
            }
            return cabe;
        }
    }

    /// Where a word that alone is wider than a line is cut: behind the last letter that fits when that one is
    /// visible, else before it. A line always takes at least one letter, however narrow the space.
    qsizetype QuebrarEntreLetras(const Palavra &cabe) const
    {
        qsizetype anterior = -1; // start of the last character that fits
        qsizetype tinta = -1;    // end of the first character that is no control
        for (qsizetype i = cabe.inicio; i < cabe.fim; i = FimDoCaractere(i)) {
            anterior = i;
            if (tinta < 0 && m_texto[i].unicode() >= 32)
                tinta = FimDoCaractere(i);
        }
        if (tinta < 0) // nothing that shows fits: take the letter that is too wide
            return FimDoCaractere(cabe.fim);
        if (EhVisivel(CaractereEm(anterior)) || anterior < tinta)
            return cabe.fim;
        return anterior;
    }

    const Superficie &m_superficie;
    QStringView m_texto;
    double m_disponivel;
    double m_larguraEspaco;
};

QString TextoDaLinha(QStringView texto, const Linha &linha)
{
    QString limpo = texto.sliced(linha.inicio, linha.fim - linha.inicio).toString();
    limpo.replace(u'\t', u' ');
    return SemControles(limpo);
}

/// Each word at its own x: the next one starts a space and a share of the gap behind it.
void DesenharJustificada(Superficie &objPrint, QStringView texto, const Linha &linha, double left,
                         double right, double larguraEspaco)
{
    qsizetype espacos = 0;
    for (qsizetype i = linha.inicio; i < linha.fim; ++i)
        espacos += EhEspaco(texto[i]) ? 1 : 0;
    double largura = static_cast<double>(espacos) * larguraEspaco;
    for (const Palavra &palavra : linha.palavras) {
        if (palavra.inicio < linha.fim)
            largura += palavra.largura;
    }
    const double parte = espacos > 0 ? (right - left - largura) / static_cast<double>(espacos) : 0;

    double x = left;
    qsizetype i = linha.inicio;
    for (const Palavra &palavra : linha.palavras) {
        if (palavra.inicio >= linha.fim)
            break;
        x += static_cast<double>(palavra.inicio - i) * (larguraEspaco + parte);
        objPrint.CurrentX = x;
        objPrint.Print(SemControles(texto.sliced(palavra.inicio, palavra.fim - palavra.inicio)));
        x += palavra.largura;
        i = palavra.fim;
    }
}
} // namespace

bool ImpressaoGrafica::ImprimirTexto(Superficie &objPrint, double top, double left, double right,
                                     double bottom, QString &TextoImpressao)
{
    if (TextoImpressao.isEmpty())
        return true;

    const QStringView texto(TextoImpressao);
    const Quebrador quebrador(objPrint, texto, right - left);
    objPrint.CurrentY = top - objPrint.TextHeight(QStringLiteral("ABZgzhj"));

    qsizetype posicao = 0;
    while (posicao < texto.size()) {
        const Linha linha = quebrador.Colher(posicao);
        posicao = linha.proxima;

        const QString textoDaLinha = TextoDaLinha(texto, linha);
        objPrint.CurrentY += objPrint.TextHeight(textoDaLinha);
        // Kept on purpose: this word is measured, not the line that comes. All lines of a font are equally
        // high.
        const bool cabeOutra = objPrint.CurrentY + objPrint.TextHeight(QStringLiteral("textoatual")) < bottom;

        objPrint.CurrentX = left;
        const bool aEsquerda = linha.terminouEmRetorno || posicao >= texto.size();
        if (!textoDaLinha.isEmpty()) {
            if (aEsquerda)
                objPrint.Print(textoDaLinha);
            else
                DesenharJustificada(objPrint, texto, linha, left, right, quebrador.LarguraEspaco());
        }

        if (!cabeOutra) {
            while (posicao < texto.size() && texto[posicao].unicode() < 32)
                ++posicao;
            if (posicao < texto.size()) {
                TextoImpressao.remove(0, posicao);
                return false;
            }
        }
    }
    TextoImpressao.clear();
    return true;
}
