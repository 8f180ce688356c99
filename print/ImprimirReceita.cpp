#include "print/ImprimirReceita.h"

#include "print/LayoutReceita.h"
#include "store/Banco.h"
#include "store/Figuras.h"
#include "store/LeitorDeReceitas.h"

namespace
{
std::optional<QString> TextoOuAusente(const QString &texto)
{
    if (texto.isNull())
        return std::nullopt;
    return texto;
}
} // namespace

std::optional<ReceitaImpressa> CarregarReceitaImpressa(const Banco &banco, const Figuras &figuras,
                                                       qint64 lngReceita)
{
    const std::optional<Receita> buscada = BuscarReceita(banco, lngReceita);
    if (!buscada)
        return std::nullopt;
    const Receita &lida = *buscada;
    ReceitaImpressa receita;
    receita.Nome = lida.Nome;
    receita.Origem = lida.Origem;
    receita.Classificacao = lida.Classificacao;
    receita.Preparo = lida.Preparo;
    receita.Porcoes = lida.Porcoes;
    receita.Calorias = lida.Calorias;
    receita.Tipo_Calorias = lida.Tipo_Calorias;
    receita.Modo = lida.Modo;
    receita.Observacao = lida.Observacao;
    if (!lida.Figura.isEmpty() && lida.Figura != u"NADA")
        receita.Figura = CarregarImagem(figuras.Caminho(lida.Figura));
    for (const LinhaDaReceita &linha : lida.Ingredientes)
        receita.Ingredientes.append(
            {TextoOuAusente(linha.Quantidade), TextoOuAusente(linha.Unidade), linha.Ingrediente});
    return receita;
}

bool ImprimirReceita(Superficie &objPrint, qint64 lngReceita, const Banco &banco, const Figuras &figuras,
                     const QString &site)
{
    const std::optional<ReceitaImpressa> receita = CarregarReceitaImpressa(banco, figuras, lngReceita);
    if (receita)
        LayoutReceita::Imprimir(objPrint, *receita, site);
    return receita.has_value();
}
