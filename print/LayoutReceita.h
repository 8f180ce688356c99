#pragma once

#include "print/ReceitaImpressa.h"

#include <QtGlobal>

#include <functional>

class Superficie;

/**
 * A recipe on paper: header with name and origin, facts, ingredients, picture, method and additional
 * information, and a footer on every page. All measures are millimetres of the printable area.
 */
namespace LayoutReceita
{
/// What every page of a recipe repeats, and the number of the page in work.
struct Folha {
    QString Nome;
    QString Origem;
    QString site; ///< host name of the maker's site, printed in the footer
    qint16 pagina = 1;
    /// The header left too little room on the page where it ended: from now on it is repeated shortened.
    bool cabecalhoCurto = false;
};

/// Prints a whole recipe from the top of the current page, pages numbered from 1, the last footer included.
/// The caller starts the page and ends the job. Returns how many pages it took. Throws ErroImpressao when the
/// page number overflows, and what the surface throws.
int Imprimir(Superficie &objPrint, const ReceitaImpressa &receita, const QString &site);

/// Name and origin in blue and a rule under them; the current y ends at the rule's lower edge. The first time
/// they are printed whole, on as many pages as they need.
void ImprimirCabecalho(Superficie &objPrint, Folha &folha);

/// The four fact lines, each only when it has a value.
/// @param right limit of a line that would start at this y: the facts leave room for a picture
/// @param novaPagina called when the next line would start at the bottom limit or below
void ImprimirFatos(Superficie &objPrint, const ReceitaImpressa &receita,
                   const std::function<double(double y)> &right, const std::function<void()> &novaPagina);

/// "Ingredientes : " and a line for each ingredient.
void ImprimirIngredientes(Superficie &objPrint, const QList<IngredienteImpresso> &ingredientes,
                          const std::function<double(double y)> &right,
                          const std::function<void()> &novaPagina);

/// 55 x 45 at the right edge; text that ends beside it goes on 40 below its top.
void ImprimirFigura(Superficie &objPrint, const QImage &figura, double top);

/// The method and, when there is any, the additional information, over as many pages as they need.
void ImprimirModo(Superficie &objPrint, const QString &Modo, const QString &Observacao, Folha &folha);

/// Bar, page number at the right and the two lines of credit.
void ImprimirRodape(Superficie &objPrint, qint16 pagina, const QString &site);

/// Footer of this page, a new page with the next number, and its header.
void QuebrarPagina(Superficie &objPrint, Folha &folha);
} // namespace LayoutReceita
