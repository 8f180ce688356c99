#include "browse/Cartao.h"

#include "base/Numero.h"
#include "base/Texto.h"
#include "base/Twips.h"
#include "browse/RegraTipo.h"
#include "print/ImpressaoGrafica.h"
#include "print/Superficie.h"
#include "store/Banco.h"
#include "store/Figuras.h"
#include "store/LeitorDeReceitas.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
// All in millimetres.
constexpr double kEntreLinhas = 4.5;
constexpr double kDepoisDoRotulo = 1.0;
// From the top of the title's last line to the top of the origin's: that line's height, nearly. The page
// header on paper leaves the same.
constexpr double kTituloAteOrigem = 6.0;
constexpr double kLarguraFigura = 55.0;
constexpr double kAlturaFigura = 45.0;
// Between the picture and the lines beside it, which are broken before they would run under it.
constexpr double kAoLadoDaFigura = 2.0;
// What no cook reads: a text without end, or twenty thousand lines, must not hold the window. The paper has all.
constexpr qsizetype kMaisLetras = 1000;   ///< of a value in one line
constexpr qsizetype kMaisTexto = 200'000; ///< of the method and the remarks
constexpr qsizetype kMaisLinhas = 2000;   ///< of ingredients
constexpr double kSemFim = std::numeric_limits<double>::max();

constexpr auto kIngredientes = "Ingredientes : ";
constexpr auto kModo = "Modo de Preparo : ";
constexpr auto kObservacao = "Informações Adicionais : ";

QList<Cartao::Fato> FatosDe(const Receita &receita)
{
    QList<Cartao::Fato> fatos;
    const auto juntar = [&fatos](const QString &rotulo, const QString &valor) {
        fatos.append({rotulo, ParaMostrar(valor, kMaisLetras)});
    };
    if (!receita.Classificacao.isEmpty())
        juntar("Tipo : ", receita.Classificacao);
    if (!receita.Preparo.isEmpty())
        juntar("Tempo de Preparo : ", receita.Preparo);
    if (const QString &porcoes = receita.Porcoes; !porcoes.isEmpty() && porcoes != "0")
        juntar("Rendimento : ", porcoes + (porcoes == "1" ? " porção" : " porções"));
    if (const QString &calorias = receita.Calorias; !calorias.isEmpty() && calorias != "0") {
        const QString &tipo = receita.Tipo_Calorias;
        juntar("Calorias : ", calorias + (tipo == "P" ? " por Porção" : tipo == "R" ? " por Receita" : ""));
    }
    return fatos;
}

// A photo from a camera is reduced once, here, and not at every scroll; what is left is sharp at scale 4.
QImage Reduzir(const QImage &figura)
{
    constexpr int kLargura = static_cast<int>(4 * kLarguraFigura * kPixelsPorMilimetro);
    constexpr int kAltura = static_cast<int>(4 * kAlturaFigura * kPixelsPorMilimetro);
    if (figura.width() <= kLargura && figura.height() <= kAltura)
        return figura;
    return figura.scaled(std::min(figura.width(), kLargura), std::min(figura.height(), kAltura),
                         Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

// The text routine over the card's width: where it starts is the caller's, where it ends the margin's.
class Pena
{
public:
    explicit Pena(Superficie &objPrint)
        : m_objPrint(objPrint)
        , m_direita(std::round(objPrint.ScaleWidth() - Cartao::kMargem))
    {
    }

    double Direita() const { return m_direita; }
    double Y() const { return m_objPrint.CurrentY; }
    void Descer(double mm) { m_objPrint.CurrentY += mm; }
    void DescerAte(double y) { m_objPrint.CurrentY = std::max(m_objPrint.CurrentY, y); }

    void Fonte(double pontos, bool negrito, const QColor &cor)
    {
        m_objPrint.FontName = "Verdana";
        m_objPrint.FontSize = pontos;
        m_objPrint.FontBold = negrito;
        m_objPrint.ForeColor = cor;
    }
    void Negrito(bool negrito) { m_objPrint.FontBold = negrito; }

    /// Leaves the position at the last line's top, behind its last character.
    void Escrever(QString texto, double esquerda, double direita)
    {
        ImpressaoGrafica::ImprimirTexto(m_objPrint, m_objPrint.CurrentY, esquerda, direita, kSemFim, texto);
    }
    void Escrever(const QString &texto) { Escrever(texto, Cartao::kMargem, m_direita); }

    /// A label in bold and its value behind it, in the line that starts here.
    void EscreverFato(const Cartao::Fato &fato)
    {
        Negrito(true);
        Escrever(fato.rotulo);
        Negrito(false);
        Escrever(fato.valor, m_objPrint.CurrentX + kDepoisDoRotulo, m_direita);
    }
    void EscreverTitulo(const QString &titulo)
    {
        Negrito(true);
        Escrever(titulo);
        Negrito(false);
    }

    /// A bar across the card; the position ends at its lower edge.
    void Regua(double de, double ate)
    {
        const double y = m_objPrint.CurrentY;
        m_objPrint.ForeColor = Qt::black;
        m_objPrint.Line(Cartao::kMargem, y + de, m_direita, y + ate);
        m_objPrint.CurrentX = m_direita;
        m_objPrint.CurrentY = y + ate;
    }

    void Figura(const QImage &figura, double topo)
    {
        m_objPrint.PaintPicture(figura, m_direita - kLarguraFigura, topo, kLarguraFigura, kAlturaFigura);
    }

private:
    Superficie &m_objPrint;
    double m_direita;
};
} // namespace

Cartao Cartao::Ler(const Banco &banco, qint64 lngReceita)
{
    const Receita receita = LerReceita(banco, lngReceita);
    Cartao cartao;
    cartao.numero = lngReceita;
    cartao.nome = ParaMostrar(receita.Nome, kMaisLetras);
    cartao.origem = ParaMostrar(receita.Origem, kMaisLetras);
    cartao.fatos = FatosDe(receita);
    for (const LinhaDaReceita &linha : receita.Ingredientes) {
        if (cartao.ingredientes.size() == kMaisLinhas) {
            cartao.ingredientes += QString("... e mais %1").arg(receita.Ingredientes.size() - kMaisLinhas);
            break;
        }
        cartao.ingredientes += ParaMostrar(LinhaPorExtenso(linha), kMaisLetras);
    }
    if (!receita.Figura.isEmpty())
        cartao.figura = Reduzir(CarregarImagem(Figuras(banco).Caminho(receita.Figura)));
    // A book or package from elsewhere may hold lone LFs, which alone would join the lines they part.
    cartao.modo = ParaMostrar(RemoveEnter(ComCrLf(receita.Modo)), kMaisTexto);
    cartao.observacao = ParaMostrar(RemoveEnter(ComCrLf(receita.Observacao)), kMaisTexto);
    cartao.podeAlterar = PodeAlterar(receita.Tipo);
    return cartao;
}

double Cartao::Desenhar(Superficie &objPrint) const
{
    Pena pena(objPrint);
    objPrint.CurrentX = 0;
    objPrint.CurrentY = 0;

    pena.Fonte(15, true, Qt::blue);
    pena.Escrever(nome);
    pena.Descer(kTituloAteOrigem);
    pena.Fonte(8, true, Qt::blue);
    pena.Escrever("(" + origem + ")");
    pena.Regua(4.5, 4.8);

    pena.Fonte(9, false, Qt::black);
    for (const Fato &fato : fatos) {
        pena.Descer(kEntreLinhas);
        pena.EscreverFato(fato);
    }

    pena.Descer(kEntreLinhas);
    pena.EscreverTitulo(kIngredientes);
    const double topo = pena.Y();
    for (const QString &ingrediente : ingredientes) {
        pena.Descer(kEntreLinhas);
        const bool aoLado = !figura.isNull() && pena.Y() < topo + kAlturaFigura;
        const double direita = aoLado ? pena.Direita() - kLarguraFigura - kAoLadoDaFigura : pena.Direita();
        pena.Escrever(ingrediente, kMargem, direita);
    }
    if (!figura.isNull()) {
        pena.Figura(figura, topo);
        pena.DescerAte(topo + kAlturaFigura);
    }

    pena.Descer(2 * kEntreLinhas);
    pena.EscreverTitulo(kModo);
    pena.Descer(kEntreLinhas);
    pena.Escrever(modo);
    if (!observacao.isEmpty()) {
        pena.Descer(2 * kEntreLinhas);
        pena.EscreverTitulo(kObservacao);
        pena.Descer(kEntreLinhas);
        pena.Escrever(observacao);
    }
    pena.Regua(6.8, 7.1);
    return pena.Y();
}

QString Cartao::Texto() const
{
    QStringList linhas{nome, "(" + origem + ")"};
    for (const Fato &fato : fatos)
        linhas += fato.rotulo + fato.valor;
    linhas += kIngredientes;
    linhas += ingredientes;
    linhas += kModo;
    linhas += modo;
    if (!observacao.isEmpty())
        linhas << kObservacao << observacao;
    return ComLf(linhas.join('\n'));
}
