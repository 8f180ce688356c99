#pragma once

#include "store/Receita.h"

#include <QDate>
#include <QList>
#include <QString>

/**
 * The text of every statement the program issues, as pure functions: the texts are promises, kept to the
 * character, blanks and letter case included. Values come in as the user left them; each function trims and
 * quotes by the house's rules (Texto, TextoOuNulo, Numero below) unless it says otherwise.
 */
namespace Comandos
{
/// Trimmed, apostrophes doubled, between apostrophes.
QString Texto(const QString &valor);
/// The same, or the bare word NULL when nothing is left after trimming.
QString TextoOuNulo(const QString &valor);
/// Trimmed and unquoted, "0" when empty; the user's notation reaches the database as it is.
QString Numero(const QString &valor);
/// CDATE('2005-11-21'): an unambiguous date.
QString Data(const QDate &dia);
/// "F0000042.img" for 42; pads to seven digits, never cuts.
QString NomeFigura(qint64 lngReceita);
/// Capital letters, character by character, as the database's ucase() makes them.
QString Maiusculas(const QString &texto);

/// A save writes the name, type, method, servings, preparation time, calories with what they count, and
/// remarks; their values as the controls hold them.
using ::Receita;

/// What a changed recipe's save does to the picture's name.
enum class Figura { Nova, Nenhuma, Mantida };

QString SqlInserirReceita(const Receita &receita, const QDate &hoje);
QString SqlMaiorNumero(); ///< "Select max(id_receitas) from Receitas"
QString SqlGravarFigura(qint64 lngReceita);
QString SqlAlterarReceita(const Receita &receita, qint64 lngReceita, Figura figura);
QString SqlExcluirIngredientes(qint64 lngReceita);
/// The quantity's apostrophes are not doubled: the keystroke filter keeps them out of its field.
QString SqlInserirIngrediente(qint64 lngReceita, const QString &ingrediente, const QString &quantidade,
                              const QString &unidade);
QString SqlExcluirReceita(qint64 lngReceita);

QString SqlReceita(qint64 lngReceita);       ///< "... Where id_Receitas = n": editor, card, printing
QString SqlReceitaFigura(qint64 lngReceita); ///< "... Where id_receitas = n": picture look-up, e-mail
QString SqlFigura(qint64 lngReceita);        ///< "Select Figura from Receitas Where id_Receitas = n"
QString SqlIngredientes(qint64 lngReceita);
QString SqlLista(); ///< "Select * from Receitas Order By Nome"

QString SqlTipos(); ///< editor: "... is not null ..."
QString SqlUnidades();
QString SqlNomesDeIngredientes(); ///< editor and search
QString SqlTiposPesquisa();       ///< search: "... is not Null ...", capital N
QString SqlOrigensPesquisa();

/// The seven criteria of the search panel; empty ones are left out (the three chosen from lists, Tipo, Origem
/// and Ingrediente, count as filled even when they hold blanks only). Values go between apostrophes trimmed
/// but not escaped, on purpose: an apostrophe breaks the query and the user sees the database's error.
/// Calorias goes in as it stands.
struct Pesquisa {
    QString Nome = {}, Tipo = {}, Origem = {}, Ingrediente = {}, Calorias = {}, Preparo = {};
    bool ComFigura = false;
};
QString SqlPesquisa(const Pesquisa &pesquisa);

QString SqlFigurasDoBackup();
QString SqlReceitasDoPacote(const QList<qint64> &numeros);
/// `nome` stands in the statement upper-cased and otherwise as in the package.
QString SqlReceitaDeNome(const QString &nome);
} // namespace Comandos
