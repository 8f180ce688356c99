#include "store/Esquema.h"

#include <utility>

// The long texts, Modo and Observacao, stand last: a row is read from its beginning, so a list that does not
// ask for them never touches the pages they fill.
//
// AUTOINCREMENT: the number of a deleted recipe is not given again, because its picture may still lie about.
//
// The triggers make '1,5' the number 1.5 and refuse 'abc' in the numeric columns. They use built-in functions
// only, so that other tools of the same engine can write into the book. They are kept short: the engine reads
// the whole schema again at every opening.
//
// The indexes keep to that too: they are ordered by the engine's own NOCASE, never by PORTUGUES. A tool that
// does not know the book's collation could not write into a book with such an index, and one that has another
// order under its name would spoil it.

#define TIPOS(linha) "typeof(" linha "Porcoes),typeof(" linha "Calorias),typeof(" linha "Tipo)"

#define CONVERTER(nome, quando)                                                                                    \
    "CREATE TRIGGER " nome " AFTER " quando " ON Receitas WHEN 'text' IN (" TIPOS(                                 \
        "NEW.") ") BEGIN "                                                                                         \
                "UPDATE Receitas SET Porcoes=replace(Porcoes,',','.'),Calorias=replace(Calorias,',','.'),"         \
                "Tipo=replace(Tipo,',','.') WHERE id_receitas=NEW.id_receitas;"                                    \
                "SELECT RAISE(ABORT,'Porções, calorias e tipo devem ser números: o texto não é um número') " \
                "FROM Receitas "                                                                                   \
                "WHERE id_receitas=NEW.id_receitas AND 'text' IN (" TIPOS("") ");"                                 \
                                                                              "END;"

namespace
{
constexpr const char *kTabelas =
    "CREATE TABLE Receitas("
    "id_receitas INTEGER PRIMARY KEY AUTOINCREMENT,"
    "Nome TEXT COLLATE PORTUGUES,"
    "Data TEXT,"
    "Classificacao TEXT COLLATE PORTUGUES,"
    "Tipo NUMERIC,"
    "Origem TEXT COLLATE PORTUGUES,"
    "Porcoes NUMERIC,"
    "Preparo TEXT COLLATE PORTUGUES,"
    "Tipo_Calorias TEXT COLLATE PORTUGUES,"
    "Calorias NUMERIC,"
    "Figura TEXT COLLATE PORTUGUES,"
    "Modo TEXT COLLATE PORTUGUES,"
    "Observacao TEXT COLLATE PORTUGUES);"
    "CREATE TABLE Ingredientes("
    "id_ingredientes INTEGER PRIMARY KEY AUTOINCREMENT,"
    "id_receitas INTEGER,"
    "Ingrediente TEXT COLLATE PORTUGUES,"
    "Quantidade TEXT COLLATE PORTUGUES,"
    "Unidade TEXT COLLATE PORTUGUES);"
    "CREATE INDEX IngredientesDaReceita ON Ingredientes(id_receitas);" CONVERTER("NumerosAoInserir", "INSERT")
        CONVERTER("NumerosAoAlterar", "UPDATE OF Porcoes,Calorias,Tipo");

/// The letters and signs that Portuguese names have most; rarer ones are left to whoever walks the index. The
/// engine's parser takes about 27 such steps one inside another.
constexpr std::pair<const char *, const char *> kDobras[] = {
    {"á", "a"}, {"à", "a"}, {"â", "a"}, {"ã", "a"}, {"é", "e"}, {"ê", "e"}, {"í", "i"}, {"ó", "o"},
    {"ô", "o"}, {"õ", "o"}, {"ú", "u"}, {"ç", "c"}, {"Á", "a"}, {"Ã", "a"}, {"É", "e"}, {"Í", "i"},
    {"Ó", "o"}, {"Õ", "o"}, {"Ú", "u"}, {"Ç", "c"}, {"-", ""},  {"''", ""}};
} // namespace

QByteArray Esquema::ChaveDoNome()
{
    QByteArray chave = "Nome";
    for (const auto &[letra, dobrada] : kDobras)
        chave = "replace(" + chave + ",'" + letra + "','" + dobrada + "')";
    return chave;
}

QByteArray Esquema::Tabelas()
{
    return kTabelas;
}

QList<QByteArray> Esquema::Passo(int deVersao)
{
    if (deVersao != 0)
        return {};
    // All that the list reads, in its order, so that it never touches the recipes themselves; then what the
    // choice lists offer and a search for an ingredient looks for.
    return {QByteArray("CREATE INDEX IF NOT EXISTS ") + kIndiceDaLista + " ON Receitas(" + ChaveDoNome() +
                " COLLATE NOCASE,id_receitas,Nome COLLATE BINARY,Figura COLLATE BINARY,"
                "Classificacao COLLATE BINARY,Origem COLLATE BINARY,Preparo COLLATE BINARY,Tipo,"
                "Tipo_Calorias COLLATE BINARY,Calorias,Porcoes)",
            QByteArray("CREATE INDEX IF NOT EXISTS ") + kIndiceDosTipos +
                " ON Receitas(Classificacao COLLATE NOCASE) WHERE Classificacao IS NOT NULL",
            QByteArray("CREATE INDEX IF NOT EXISTS ") + kIndiceDasOrigens +
                " ON Receitas(Origem COLLATE NOCASE) WHERE Origem IS NOT NULL",
            QByteArray("CREATE INDEX IF NOT EXISTS ") + kIndiceDosIngredientes +
                " ON Ingredientes(Ingrediente COLLATE NOCASE,id_receitas)",
            QByteArray("CREATE INDEX IF NOT EXISTS ") + kIndiceDasUnidades +
                " ON Ingredientes(Unidade COLLATE NOCASE) WHERE Unidade IS NOT NULL"};
}

QByteArray Esquema::Restante()
{
    QByteArray sql;
    for (int versao = 0; versao < kVersao; ++versao)
        sql += Passo(versao).join(';') + ';';
    return sql + "PRAGMA user_version=" + QByteArray::number(kVersao) + ';';
}

QByteArray Esquema::Livro(int versao)
{
    QByteArray sql = Tabelas();
    for (int passo = 0; passo < versao; ++passo)
        sql += Passo(passo).join(';') + ';';
    return sql + "PRAGMA user_version=" + QByteArray::number(versao) + ';';
}
