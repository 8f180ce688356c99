#include "print/LayoutReceita.h"

#include "base/Texto.h"
#include "print/ErroImpressao.h"
#include "print/ImpressaoGrafica.h"
#include "print/Superficie.h"

#include <limits>

namespace
{
constexpr double kTopo = 5;
constexpr double kEsquerda = 15;
constexpr double kMargemDireita = 5;
constexpr double kAvanco = 4.5;
constexpr double kAvancoOrigem = 6;
constexpr double kLimiteInferior = 22; // above the page's end
// No block of text starts in the last 8 above the bottom limit. After the additional information the limit
// itself counts; the two differ on purpose.
constexpr double kUltimoInicio = 30;

constexpr double kLarguraFigura = 55;
constexpr double kAlturaFigura = 45;
// The picture is 45 high and the text resumes 40 under its top: kept on purpose.
constexpr double kRetomadaSobFigura = 40;
constexpr double kVaoDaFigura = 2;
constexpr double kMenorColuna = 60;

// A header that takes nearly the whole page comes back shortened on the pages that follow, or they would have
// no room for what goes on: the name down to a quarter of the page, the origin down to a half.
constexpr double kMenorEspaco = 50;
constexpr double kNomeRepetido = 0.25;
constexpr double kOrigemRepetida = 0.5;

// Heights are sums of many 4.5s: two that are equal on paper may differ in the last bits.
constexpr double kFolga = 1e-6;

double Direita(const Superficie &objPrint)
{
    return objPrint.ScaleWidth() - kMargemDireita;
}

double Inferior(const Superficie &objPrint)
{
    return objPrint.ScaleHeight() - kLimiteInferior;
}

/// Draws a text that may run past the page's end: the rest goes on with a new page.
/// @param fonte     sets font and colour; the new page's header and footer have changed them
/// @param novaPagina ends the page; leaves the current y where the rest is to follow
/// @param right     limit of a line that starts at this y
void Escrever(Superficie &objPrint, double top, double left, QString texto,
              const std::function<double(double y)> &right, const std::function<void()> &fonte,
              const std::function<double()> &novaPagina)
{
    fonte();
    while (!ImpressaoGrafica::ImprimirTexto(objPrint, top, left, right(top), Inferior(objPrint), texto)) {
        top = novaPagina();
        fonte();
    }
}

void UsarFonte(Superficie &objPrint, double tamanho, bool negrito, const QColor &cor)
{
    objPrint.FontName = QStringLiteral("Verdana");
    objPrint.FontSize = tamanho;
    objPrint.FontBold = negrito;
    objPrint.ForeColor = cor;
}

/// A label or a text of the recipe's body.
void EscreverCorpo(Superficie &objPrint, double top, double left, const QString &texto, bool negrito,
                   const std::function<double(double y)> &right, const std::function<void()> &novaPagina)
{
    Escrever(
        objPrint, top, left, texto, right, [&] { UsarFonte(objPrint, 11, negrito, Qt::black); },
        [&] {
            novaPagina();
            return objPrint.CurrentY + kAvanco;
        });
}

/// Where the next line of facts or ingredients starts: on a new page when this one is full.
double ProximaLinha(Superficie &objPrint, const std::function<void()> &novaPagina)
{
    if (objPrint.CurrentY + kAvanco >= Inferior(objPrint))
        novaPagina();
    return objPrint.CurrentY + kAvanco;
}

void ImprimirBloco(Superficie &objPrint, const QString &rotulo, const QString &texto,
                   LayoutReceita::Folha &folha)
{
    const auto right = [&](double) { return Direita(objPrint); };
    const auto novaPagina = [&] { LayoutReceita::QuebrarPagina(objPrint, folha); };
    EscreverCorpo(objPrint, objPrint.CurrentY + kAvanco, kEsquerda, rotulo, true, right, novaPagina);
    EscreverCorpo(objPrint, objPrint.CurrentY + kAvanco, kEsquerda, texto, false, right, novaPagina);
}

/// Footer of this page and a new, empty page with the next number.
void EncerrarPagina(Superficie &objPrint, LayoutReceita::Folha &folha)
{
    LayoutReceita::ImprimirRodape(objPrint, folha.pagina, folha.site);
    if (folha.pagina == std::numeric_limits<qint16>::max())
        throw ErroImpressao(QStringLiteral("A Receita tem Páginas demais para ser Impressa!"));
    ++folha.pagina;
    objPrint.NewPage();
}
} // namespace

void LayoutReceita::ImprimirCabecalho(Superficie &objPrint, Folha &folha)
{
    const auto right = [&](double) { return Direita(objPrint); };
    const auto fonteDoNome = [&] { UsarFonte(objPrint, 16, true, QColor(0, 0, 255)); };
    const auto fonteDaOrigem = [&] { UsarFonte(objPrint, 9, false, QColor(0, 0, 255)); };
    QString nome = folha.Nome;
    QString origem = u'(' + folha.Origem + u')';

    objPrint.CurrentX = 0;
    objPrint.CurrentY = 0;
    if (folha.cabecalhoCurto) {
        const double altura = objPrint.ScaleHeight();
        fonteDoNome();
        ImpressaoGrafica::ImprimirTexto(objPrint, kTopo, kEsquerda, right(kTopo), altura * kNomeRepetido,
                                        nome);
        const double y = objPrint.CurrentY + kAvancoOrigem;
        fonteDaOrigem();
        ImpressaoGrafica::ImprimirTexto(objPrint, y, kEsquerda, right(y), altura * kOrigemRepetida, origem);
    } else {
        const qint16 primeira = folha.pagina;
        const auto novaPagina = [&] {
            EncerrarPagina(objPrint, folha);
            return kTopo;
        };
        Escrever(objPrint, kTopo, kEsquerda, nome, right, fonteDoNome, novaPagina);
        double y = objPrint.CurrentY + kAvancoOrigem;
        if (y >= Inferior(objPrint))
            y = novaPagina();
        Escrever(objPrint, y, kEsquerda, origem, right, fonteDaOrigem, novaPagina);
        folha.cabecalhoCurto =
            folha.pagina != primeira || Inferior(objPrint) - objPrint.CurrentY < kMenorEspaco;
    }

    objPrint.ForeColor = Qt::black;
    const double y = objPrint.CurrentY;
    // The rule is as long as the footer's bar, so that the two frame the page.
    objPrint.Line(5, y + 4.8, Direita(objPrint), y + 5.1);
}

void LayoutReceita::ImprimirFatos(Superficie &objPrint, const ReceitaImpressa &receita,
                                  const std::function<double(double y)> &right,
                                  const std::function<void()> &novaPagina)
{
    const auto fato = [&](const QString &rotulo, const QString &valor) {
        const double y = ProximaLinha(objPrint, novaPagina);
        EscreverCorpo(objPrint, y, kEsquerda, rotulo, true, right, novaPagina);
        EscreverCorpo(objPrint, y, objPrint.CurrentX + 1, valor, false, right, novaPagina);
    };
    if (!receita.Classificacao.isEmpty())
        fato(QStringLiteral("Tipo : "), receita.Classificacao);
    if (!receita.Preparo.isEmpty())
        fato(QStringLiteral("Tempo de Preparo : "), receita.Preparo);
    if (!receita.Porcoes.isEmpty())
        fato(QStringLiteral("Rendimento : "), TextoRendimento(receita.Porcoes));
    if (!receita.Calorias.isEmpty())
        fato(QStringLiteral("Calorias : "), receita.Calorias + SufixoCalorias(receita.Tipo_Calorias));
}

void LayoutReceita::ImprimirIngredientes(Superficie &objPrint, const QList<IngredienteImpresso> &ingredientes,
                                         const std::function<double(double y)> &right,
                                         const std::function<void()> &novaPagina)
{
    const auto linha = [&](const QString &texto, bool negrito) {
        EscreverCorpo(objPrint, ProximaLinha(objPrint, novaPagina), kEsquerda, texto, negrito, right,
                      novaPagina);
    };
    linha(QStringLiteral("Ingredientes : "), true);
    for (const IngredienteImpresso &ingrediente : ingredientes)
        linha(LinhaIngrediente(ingrediente), false);
}

void LayoutReceita::ImprimirFigura(Superficie &objPrint, const QImage &figura, double top)
{
    objPrint.PaintPicture(figura, Direita(objPrint) - kLarguraFigura, top, kLarguraFigura, kAlturaFigura);
    // A line that starts right at the picture's lower edge is already below it.
    if (objPrint.CurrentY < top + kAlturaFigura - kFolga)
        objPrint.CurrentY = top + kRetomadaSobFigura;
}

void LayoutReceita::ImprimirModo(Superficie &objPrint, const QString &Modo, const QString &Observacao,
                                 Folha &folha)
{
    const auto terminarAbaixoDe = [&](double limite) {
        if (objPrint.CurrentY > objPrint.ScaleHeight() - limite)
            QuebrarPagina(objPrint, folha);
    };
    terminarAbaixoDe(kUltimoInicio); // a long list of ingredients may have filled the page
    // A book or package from elsewhere may hold lone LFs, which alone would join the lines they part.
    ImprimirBloco(objPrint, QStringLiteral("Modo de Preparo : "), RemoveEnter(ComCrLf(Modo)), folha);
    terminarAbaixoDe(kUltimoInicio);

    const QString observacao = RemoveEnter(ComCrLf(Observacao));
    if (observacao.isEmpty())
        return;
    ImprimirBloco(objPrint, QStringLiteral("Informações Adicionais : "), observacao, folha);
    terminarAbaixoDe(kLimiteInferior);
}

void LayoutReceita::ImprimirRodape(Superficie &objPrint, qint16 pagina, const QString &site)
{
    const double right = Direita(objPrint);
    const double fim = objPrint.ScaleHeight();
    const double barra = Inferior(objPrint) + 6;
    objPrint.ForeColor = Qt::black;
    objPrint.Line(5, barra, right, barra + 0.3);

    objPrint.FontName = QStringLiteral("Verdana");
    objPrint.FontSize = 8;
    objPrint.FontBold = true;
    objPrint.ForeColor = QColor(0, 0, 255);
    QString numero = QStringLiteral("Pag.: ") + QString::number(pagina);
    // The number ends at the right edge by where it starts; a limit beyond it keeps rounding from breaking
    // it.
    ImpressaoGrafica::ImprimirTexto(objPrint, objPrint.CurrentY + 1, right - objPrint.TextWidth(numero),
                                    objPrint.ScaleWidth(), fim, numero);
    QString credito = QStringLiteral("Receita Impressa com o Cozinhario 2005 - Por Tamarel Informática\r\n"
                                     "Para mais informações visite nosso site ") +
                      site;
    ImpressaoGrafica::ImprimirTexto(objPrint, objPrint.CurrentY + 5, kEsquerda, right, fim, credito);
    objPrint.ForeColor = Qt::black;
}

void LayoutReceita::QuebrarPagina(Superficie &objPrint, Folha &folha)
{
    EncerrarPagina(objPrint, folha);
    ImprimirCabecalho(objPrint, folha);
}

int LayoutReceita::Imprimir(Superficie &objPrint, const ReceitaImpressa &receita, const QString &site)
{
    Folha folha{receita.Nome, receita.Origem, site};
    ImprimirCabecalho(objPrint, folha);

    bool figuraAoLado = !receita.Figura.isNull();
    // Under a header as tall as half the page the picture would run over the footer.
    if (figuraAoLado && folha.cabecalhoCurto && objPrint.CurrentY > objPrint.ScaleHeight() / 2 &&
        objPrint.CurrentY + kAvanco + kAlturaFigura > Inferior(objPrint))
        QuebrarPagina(objPrint, folha);
    const double topoFigura = objPrint.CurrentY + kAvanco;
    // Facts and ingredients run on the picture's left, not under it.
    const auto right = [&](double y) {
        const double margem = Direita(objPrint);
        const double coluna = margem - kLarguraFigura - kVaoDaFigura;
        const bool estreita =
            figuraAoLado && y < topoFigura + kAlturaFigura && coluna - kEsquerda >= kMenorColuna;
        return estreita ? coluna : margem;
    };
    const auto novaPagina = [&] {
        if (figuraAoLado) // the picture belongs to the page on which the facts stand
            ImprimirFigura(objPrint, receita.Figura, topoFigura);
        figuraAoLado = false;
        QuebrarPagina(objPrint, folha);
    };
    ImprimirFatos(objPrint, receita, right, novaPagina);
    ImprimirIngredientes(objPrint, receita.Ingredientes, right, novaPagina);
    if (figuraAoLado)
        ImprimirFigura(objPrint, receita.Figura, topoFigura);
    ImprimirModo(objPrint, receita.Modo, receita.Observacao, folha);
    ImprimirRodape(objPrint, folha.pagina, site);
    return folha.pagina;
}
