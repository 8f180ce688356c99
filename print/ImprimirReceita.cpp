#include "print/ImprimirReceita.h"

#include "print/LayoutReceita.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/Figuras.h"

namespace
{
std::optional<QString> TextoOuAusente(const RecordSet &rs, int campo)
{
    if (rs.Nulo(campo))
        return std::nullopt;
    return rs.Texto(campo);
}
} // namespace

std::optional<ReceitaImpressa> CarregarReceitaImpressa(const Banco &banco, const Figuras &figuras,
                                                       qint64 lngReceita)
{
    ReceitaImpressa receita;
    QString strFigura;
    {
        const RecordSet rs = banco.AbrirRecordset(Comandos::SqlReceita(lngReceita));
        if (rs.Eof())
            return std::nullopt;
        receita.Nome = rs.Texto(u"Nome");
        receita.Origem = rs.Texto(u"Origem");
        receita.Classificacao = rs.Texto(u"Classificacao");
        receita.Preparo = rs.Texto(u"Preparo");
        receita.Porcoes = rs.Texto(u"Porcoes");
        receita.Calorias = rs.Texto(u"Calorias");
        receita.Tipo_Calorias = rs.Texto(u"Tipo_Calorias");
        receita.Modo = rs.Texto(u"Modo");
        receita.Observacao = rs.Texto(u"Observacao");
        strFigura = rs.Texto(u"Figura");
    }
    if (!strFigura.isEmpty() && strFigura != u"NADA")
        receita.Figura = CarregarImagem(figuras.Caminho(strFigura));

    RecordSet rs = banco.AbrirRecordset(Comandos::SqlIngredientes(lngReceita));
    const int quantidade = rs.Campo(u"Quantidade");
    const int unidade = rs.Campo(u"Unidade");
    const int ingrediente = rs.Campo(u"Ingrediente");
    for (; !rs.Eof(); rs.MoveNext())
        receita.Ingredientes.append(
            {TextoOuAusente(rs, quantidade), TextoOuAusente(rs, unidade), rs.Texto(ingrediente)});
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
