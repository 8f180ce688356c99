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

void Escrever(Superficie &objPrint, double top, double left, double right, QString texto)
{
    ImpressaoGrafica::ImprimirTexto(objPrint, top, left, right, Inferior(objPrint), texto);
}

void FonteDoCorpo(Superficie &objPrint, bool negrito)
{
    objPrint.FontName = QStringLiteral("Verdana");
    objPrint.FontSize = 11;
    objPrint.FontBold = negrito;
    objPrint.ForeColor = Qt::black;
}

void ImprimirFato(Superficie &objPrint, const QString &rotulo, const QString &valor, double right)
{
    const double y = objPrint.CurrentY + kAvanco;
    FonteDoCorpo(objPrint, true);
    Escrever(objPrint, y, kEsquerda, right, rotulo);
    FonteDoCorpo(objPrint, false);
    Escrever(objPrint, y, objPrint.CurrentX + 1, right, valor);
}

void ImprimirBloco(Superficie &objPrint, const QString &rotulo, const QString &texto,
                   LayoutReceita::Folha &folha)
{
    FonteDoCorpo(objPrint, true);
    Escrever(objPrint, objPrint.CurrentY + kAvanco, kEsquerda, Direita(objPrint), rotulo);
    QString resto = texto;
    while (true) {
        FonteDoCorpo(objPrint, false);
        if (ImpressaoGrafica::ImprimirTexto(objPrint, objPrint.CurrentY + kAvanco, kEsquerda,
                                            Direita(objPrint), Inferior(objPrint), resto))
            return;
        LayoutReceita::QuebrarPagina(objPrint, folha);
    }
}
} // namespace

void LayoutReceita::ImprimirCabecalho(Superficie &objPrint, const QString &Nome, const QString &Origem)
{
    objPrint.FontName = QStringLiteral("Verdana");
    objPrint.FontSize = 16;
    objPrint.FontBold = true;
    objPrint.CurrentX = 0;
    objPrint.CurrentY = 0;
    objPrint.ForeColor = QColor(0, 0, 255);
    Escrever(objPrint, kTopo, kEsquerda, Direita(objPrint), Nome);

    objPrint.FontSize = 9;
    objPrint.FontBold = false;
    Escrever(objPrint, objPrint.CurrentY + 6, kEsquerda, Direita(objPrint), u'(' + Origem + u')');

    objPrint.ForeColor = Qt::black;
    const double y = objPrint.CurrentY;
    // The rule is as long as the footer's bar, so that the two frame the page.
    objPrint.Line(5, y + 4.8, Direita(objPrint), y + 5.1);
}

void LayoutReceita::ImprimirFatos(Superficie &objPrint, const ReceitaImpressa &receita,
                                  const std::function<double(double y)> &right)
{
    const auto fato = [&](const QString &rotulo, const QString &valor) {
        ImprimirFato(objPrint, rotulo, valor, right(objPrint.CurrentY + kAvanco));
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
        if (objPrint.CurrentY + kAvanco >= Inferior(objPrint))
            novaPagina();
        FonteDoCorpo(objPrint, negrito);
        const double y = objPrint.CurrentY + kAvanco;
        Escrever(objPrint, y, kEsquerda, right(y), texto);
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
    ImprimirRodape(objPrint, folha.pagina, folha.site);
    if (folha.pagina == std::numeric_limits<qint16>::max())
        throw ErroImpressao(QStringLiteral("A Receita tem Páginas demais para ser Impressa!"));
    ++folha.pagina;
    objPrint.NewPage();
    ImprimirCabecalho(objPrint, folha.Nome, folha.Origem);
}

int LayoutReceita::Imprimir(Superficie &objPrint, const ReceitaImpressa &receita, const QString &site)
{
    Folha folha{receita.Nome, receita.Origem, site, 1};
    ImprimirCabecalho(objPrint, folha.Nome, folha.Origem);

    const double topoFigura = objPrint.CurrentY + kAvanco;
    bool figuraAoLado = !receita.Figura.isNull();
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
    ImprimirFatos(objPrint, receita, right);
    ImprimirIngredientes(objPrint, receita.Ingredientes, right, novaPagina);
    if (figuraAoLado)
        ImprimirFigura(objPrint, receita.Figura, topoFigura);
    ImprimirModo(objPrint, receita.Modo, receita.Observacao, folha);
    ImprimirRodape(objPrint, folha.pagina, site);
    return folha.pagina;
}
