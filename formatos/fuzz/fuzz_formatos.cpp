// What every reader of foreign recipe files must survive. LEITOR names one of them; without it the file is recognised by
// its content, as for the user. Built for libFuzzer, or with Repetir.cpp as a plain program that runs each file once.

#include "formatos/Importador.h"

#include <cstdint>
#include <cstdlib>

using namespace Formatos;

namespace
{
void Exigir(bool promessa)
{
    if (!promessa)
        std::abort();
}

QList<Receita> Ler(const Entrada &entrada, Relato &relato)
{
#ifdef LEITOR
    return LEITOR(entrada, relato);
#else
    switch (Reconhecer(entrada.nome, entrada.bytes)) {
    case Formato::Pagina: return LerPagina(entrada, relato);
    case Formato::Mhtml: return LerMhtml(entrada, relato);
    case Formato::Json: return LerJsonDePrograma(entrada, relato);
    case Formato::Paprika: return LerPaprika(entrada, relato);
    case Formato::MealMaster: return LerMealMaster(entrada, relato);
    case Formato::MasterCookTexto: return LerMasterCookTexto(entrada, relato);
    case Formato::MasterCookXml: return LerMasterCookXml(entrada, relato);
    case Formato::Gourmet: return LerGourmet(entrada, relato);
    case Formato::KRecipes: return LerKRecipes(entrada, relato);
    case Formato::Csv: return LerCsv(entrada, relato);
    case Formato::Cooklang: return LerCooklang(entrada, relato);
    case Formato::Markdown: return LerMarkdown(entrada, relato);
    case Formato::Pacote: return LerPacote(entrada, relato);
    case Formato::Zip: AbrirZip(entrada.bytes); return {};
    case Formato::Gzip: AbrirGzip(entrada.bytes); return LerPaprika(entrada, relato);
    case Formato::Desconhecido: break;
    }
    AbrirTar(entrada.bytes);
    return {};
#endif
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho)
{
    const QByteArray bytes(reinterpret_cast<const char *>(dados), static_cast<qsizetype>(tamanho));
    const FonteNenhuma nada;
    Relato relato;
    const QList<Receita> receitas = Ler({"receita", bytes, &nada, {}}, relato);
    for (const Receita &lida : receitas) {
        const Receita receita = ParaOPacote(lida);
        Exigir(!receita.Nome.isEmpty());
        Exigir(!receita.Nome.contains(u'\n') && !receita.Nome.contains(u'\''));
        Exigir(!receita.Modo.contains("</MODO") && !receita.Modo.contains("<RECEITA>"));
        Exigir(receita.Porcoes.size() < 20 && receita.Calorias.size() < 20);
        for (const Linha &linha : receita.Ingredientes)
            Exigir(!linha.Ingrediente.contains(u'\n') && !linha.Ingrediente.contains("<ITEM>"));
    }
    return 0;
}
