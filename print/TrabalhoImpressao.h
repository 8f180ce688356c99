#pragma once

#include <memory>

class SaidaImpressao;
class Superficie;

/**
 * One print job, from its first page to its acceptance by the print system.
 *
 * It is printed by Terminar() only; one that is destroyed before, after an error or because the program ends,
 * prints nothing.
 */
class TrabalhoImpressao
{
public:
    /// Starts the job on its first page. Throws ErroImpressao when the printer refuses.
    explicit TrabalhoImpressao(std::unique_ptr<SaidaImpressao> saida);
    ~TrabalhoImpressao();
    TrabalhoImpressao(const TrabalhoImpressao &) = delete;
    TrabalhoImpressao &operator=(const TrabalhoImpressao &) = delete;

    /// The page to draw on. Its NewPage() throws ErroImpressao when the printer refuses.
    Superficie &ObjPrint();

    /// Hands the job over. Throws ErroImpressao when the print system does not accept it.
    void Terminar();

private:
    struct Partes;
    std::unique_ptr<Partes> m_partes;
};
