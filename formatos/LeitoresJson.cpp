// JSON of programs, and the recipes of the app that zips them one by one.

#include "formatos/Codificacao.h"
#include "formatos/Entrada.h"
#include "formatos/Json.h"
#include "formatos/Limpeza.h"
#include "formatos/Rascunho.h"
#include "formatos/Schema.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

using namespace Formatos;

QString Formatos::Entrada::Texto(const QByteArray &declarado) const
{
    return TextoDosBytes(bytes, declarado, pagina);
}

QList<Receita> Formatos::LerJsonDePrograma(const Entrada &entrada, Relato &relato)
{
    const std::optional<QJsonValue> valor = LerJson(entrada.Texto());
    if (!valor) {
        relato.Avisar("O arquivo JSON está danificado.");
        return {};
    }
    if (valor->toObject().contains("photo_data") || valor->toObject().contains("directions"))
        return LerPaprika(entrada, relato);
    LeitorSchema leitor(entrada, relato, false);
    leitor.AcrescentarBloco(*valor);
    return leitor.Ler({});
}

namespace
{
/// Calories only where it is said what they count; the rest goes with the remarks.
void LerNutricao(const QString &texto, Rascunho &r)
{
    static const QRegularExpression kcal(
        R"((\d[\d.,]*)\s*k?cal\w*\s*(?:por|per|/)\s*(?:uma? |cada )?(por[cç][aã]o|pessoa|serving|receita|recipe))",
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch m = kcal.match(texto.left(1000));
    QString resto = texto;
    if (m.hasMatch()) {
        r.calorias = m.captured(1) + " kcal";
        r.tipoDasCalorias = m.captured(2).startsWith("rec", Qt::CaseInsensitive) ? "R" : "P";
        resto.remove(m.capturedStart(), m.capturedLength());
    }
    for (const QString &linha : resto.split(u'\n')) {
        QString limpa = linha.trimmed();
        while (!limpa.isEmpty() && QStringView(u",;.").contains(limpa.front()))
            limpa = limpa.sliced(1).trimmed();
        while (!limpa.isEmpty() && QStringView(u",;.").contains(limpa.back()))
            limpa = limpa.chopped(1).trimmed();
        if (!limpa.isEmpty())
            r.nutrientes += limpa;
    }
}
} // namespace

QList<Receita> Formatos::LerPaprika(const Entrada &entrada, Relato &relato)
{
    QByteArray bytes = entrada.bytes;
    if (bytes.startsWith("\x1F\x8B")) {
        const std::optional<QByteArray> aberto = AbrirGzip(bytes);
        if (!aberto) {
            relato.Avisar("O arquivo está danificado.");
            return {};
        }
        bytes = *aberto;
    }
    const std::optional<QJsonValue> valor = LerJson(TextoDosBytes(bytes, {}, entrada.pagina));
    const QJsonObject objeto = valor ? valor->toObject() : QJsonObject();
    if (objeto.isEmpty()) {
        relato.Avisar("O arquivo está danificado.");
        return {};
    }
    const auto texto = [&](const char *campo) { return TextoDe(objeto.value(QLatin1String(campo))); };
    Rascunho r;
    r.nome = texto("name");
    r.tipos = TextosDe(objeto.value("categories"));
    r.rendimento = {texto("servings")};
    r.tempoTotal = texto("total_time");
    r.tempoPreparo = texto("prep_time");
    r.tempoCozimento = texto("cook_time");
    LerNutricao(texto("nutritional_info"), r);
    r.fontes = {texto("source")};
    r.url = texto("source_url");
    r.descricao = {texto("description")};
    r.notas = {texto("notes")};
    r.dificuldade = texto("difficulty");
    r.Texto(texto("ingredients"));
    r.passos += PassoLido{{}, texto("directions")};
    r.figura = QByteArray::fromBase64(texto("photo_data").toLatin1());
    const std::optional<Receita> receita = Montar(r, relato);
    return receita ? QList<Receita>{*receita} : QList<Receita>();
}
