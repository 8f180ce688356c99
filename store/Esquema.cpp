#include "store/Esquema.h"

// The long texts, Modo and Observacao, stand last: a row is read from its beginning, so a list that does not
// ask for them never touches the pages they fill.
//
// AUTOINCREMENT: the number of a deleted recipe is not given again, because its picture may still lie about.
//
// The triggers make '1,5' the number 1.5 and refuse 'abc' in the numeric columns. They use built-in functions
// only, so that other tools of the same engine can write into the book. They are kept short: the engine reads
// the whole schema again at every opening.

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

const char *EsquemaDoLivro()
{
    return "CREATE TABLE Receitas("
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
           "CREATE INDEX IngredientesDaReceita ON Ingredientes(id_receitas);" CONVERTER(
               "NumerosAoInserir", "INSERT") CONVERTER("NumerosAoAlterar", "UPDATE OF Porcoes,Calorias,Tipo");
}
