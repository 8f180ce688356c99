// conferir_ordem FILE: tells how many neighbouring lines of a sorted list of names (UTF-8, one a line) stand
// in the book's order, and prints those that do not. Ends with status 1 below 99.5 %.

#include "base/Ordem.h"

#include <fstream>
#include <iostream>
#include <string>

int main(int argc, char **argv)
{
    std::ifstream arquivo(argc > 1 ? argv[1] : "");
    std::string anterior;
    if (!std::getline(arquivo, anterior)) {
        std::cerr << "uso: conferir_ordem ARQUIVO\n";
        return 2;
    }
    int pares = 0;
    int certos = 0;
    for (std::string nome; std::getline(arquivo, nome); anterior = nome) {
        ++pares;
        if (Ordem::Comparar(anterior, nome) <= 0)
            ++certos;
        else
            std::cout << anterior << "  >  " << nome << '\n';
    }
    std::cout << certos << " de " << pares << " pares em ordem\n";
    return certos * 1000 >= pares * 995 ? 0 : 1;
}
