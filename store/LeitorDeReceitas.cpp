#include "store/LeitorDeReceitas.h"

#include "base/Numero.h"
#include "base/Texto.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"

namespace
{
QString Ler(const RecordSet &rs, int campo)
{
    if (campo < 0)
        return {};
    const QVariant valor = rs.Valor(campo);
    if (!valor.isValid())
        return {};
    const QString texto = TextoDoValor(valor);
    return texto.isNull() ? QString("") : texto;
}
} // namespace

Receita ReceitaDaLinha(const RecordSet &rs)
{
    const auto texto = [&rs](QStringView campo) { return Ler(rs, rs.Campo(campo)); };
    Receita receita;
    receita.Nome = texto(u"Nome");
    receita.Classificacao = texto(u"Classificacao");
    receita.Modo = texto(u"Modo");
    receita.Porcoes = texto(u"Porcoes");
    receita.Preparo = texto(u"Preparo");
    receita.Tipo_Calorias = texto(u"Tipo_Calorias");
    receita.Calorias = texto(u"Calorias");
    receita.Tipo = texto(u"Tipo");
    receita.Origem = texto(u"Origem");
    receita.Observacao = texto(u"Observacao");
    receita.Figura = texto(u"Figura");
    receita.id_receitas = texto(u"id_receitas").toLongLong();
    return receita;
}

QList<LinhaDaReceita> LerLinhas(const Banco &banco, qint64 lngReceita)
{
    QList<LinhaDaReceita> linhas;
    RecordSet rs = banco.AbrirRecordset(Comandos::SqlIngredientes(lngReceita));
    const int ingrediente = rs.Campo(u"Ingrediente");
    const int quantidade = rs.Campo(u"Quantidade");
    const int unidade = rs.Campo(u"Unidade");
    for (; !rs.Eof(); rs.MoveNext())
        linhas.append({Ler(rs, ingrediente), Ler(rs, quantidade), Ler(rs, unidade)});
    return linhas;
}

std::optional<Receita> BuscarReceita(const Banco &banco, qint64 lngReceita)
{
    const RecordSet rs = banco.AbrirRecordset(Comandos::SqlReceita(lngReceita));
    if (rs.Eof())
        return std::nullopt;
    Receita receita = ReceitaDaLinha(rs);
    receita.Ingredientes = LerLinhas(banco, lngReceita);
    return receita;
}

Receita LerReceita(const Banco &banco, qint64 lngReceita)
{
    std::optional<Receita> receita = BuscarReceita(banco, lngReceita);
    if (!receita)
        throw ErroBanco("Esta receita não está mais no livro. Ela foi excluída nesse meio-tempo.");
    return *std::move(receita);
}
