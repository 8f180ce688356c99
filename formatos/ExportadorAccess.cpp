// The book as an old installation keeps it: a file of its own and the folder of pictures beside it.

#include "formatos/EscritorAccess.h"
#include "formatos/Exportador.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace
{
using namespace Formatos;

EscritorAccess::Texto OuNulo(const QString &texto)
{
    return texto.isEmpty() ? std::nullopt : EscritorAccess::Texto(texto);
}

EscritorAccess::Numero OuNulo(const QString &texto, bool zero)
{
    bool ok = false;
    const double numero = QString(texto).replace(u',', u'.').toDouble(&ok);
    if (ok)
        return numero;
    return zero ? EscritorAccess::Numero(0) : std::nullopt;
}

EscritorAccess::Numero Dias(const QString &data)
{
    static const QRegularExpression iso(R"(^(\d{4})-(\d\d)-(\d\d)(?:[ T](\d\d):(\d\d):(\d\d))?)");
    const QRegularExpressionMatch m = iso.match(data);
    const QDate dia(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
    if (!m.hasMatch() || !dia.isValid())
        return std::nullopt;
    const qint64 inteiro = QDate(1899, 12, 30).daysTo(dia);
    const double fracao =
        (m.captured(4).toInt() * 3600 + m.captured(5).toInt() * 60 + m.captured(6).toInt()) / 86400.0;
    // Before that day the time counts away from zero all the same.
    return inteiro < 0 ? static_cast<double>(inteiro) - fracao : static_cast<double>(inteiro) + fracao;
}
} // namespace

QString Formatos::GravarAccess(const Saida &saida, const QString &destino, Relato &relato)
{
    const bool pasta = QFileInfo(destino).isDir() || destino.endsWith(u'/');
    const QString arquivo = pasta ? destino + "/dadosr.lst" : destino;
    if (pasta && !QDir().mkpath(destino))
        return "Não foi possível criar a pasta " + destino;
    if (pasta && QFile::exists(arquivo))
        return "Já existe um livro nesta pasta: " + destino;
    const QString fotos = QFileInfo(arquivo).absolutePath() + "/Fotos";

    QList<ReceitaDoLivro> ordenadas = saida.receitas;
    std::sort(ordenadas.begin(), ordenadas.end(),
              [](const ReceitaDoLivro &a, const ReceitaDoLivro &b) { return a.numero < b.numero; });
    QList<EscritorAccess::Receita> receitas;
    QList<EscritorAccess::Ingrediente> linhas;
    QList<std::pair<QString, const ReceitaDoLivro *>> figuras;
    qint32 numeroDaLinha = 0;
    for (const ReceitaDoLivro &r : std::as_const(ordenadas)) {
        relato.DefinirReceita(r.receita.Nome);
        if (r.numero <= 0 || r.numero > INT32_MAX) {
            relato.Pular("o número dela não cabe no formato antigo.");
            continue;
        }
        EscritorAccess::Receita a;
        a.id_receitas = static_cast<qint32>(r.numero);
        a.Nome = r.receita.Nome;
        a.Data = Dias(r.data);
        a.Classificacao = OuNulo(r.receita.Classificacao);
        a.Modo = r.receita.Modo;
        a.Tipo = OuNulo(r.receita.Tipo, false);
        a.Origem = OuNulo(r.receita.Origem);
        a.Porcoes = OuNulo(r.receita.Porcoes, true);
        a.Preparo = OuNulo(r.receita.Preparo);
        a.Tipo_Calorias = OuNulo(r.receita.Tipo_Calorias);
        a.Calorias = OuNulo(r.receita.Calorias, true);
        a.Observacao = OuNulo(r.receita.Observacao);
        const QByteArray figura = saida.livro.Figura(r);
        if (!figura.isEmpty()) {
            a.Figura = "F" + QString::number(r.numero).rightJustified(7, u'0') + ".img";
            figuras.append({*a.Figura, &r});
        } else if (!r.receita.Figura.isEmpty()) {
            relato.FaltaFigura("A figura " + r.receita.Figura + " não está na pasta Fotos.");
        }
        for (const EscritorAccess::Texto &texto : {a.Nome, a.Classificacao, a.Origem, a.Preparo})
            if (texto && texto->size() > EscritorAccess::kMaiorTexto)
                relato.Avisar("Texto com mais de 255 letras, cortado: \"" + texto->left(40) + "...\".");
        receitas += a;
        for (const Linha &linha : r.receita.Ingredientes) {
            if (linha.Ingrediente.size() > EscritorAccess::kMaiorTexto)
                relato.Avisar("Ingrediente com mais de 255 letras, cortado: \"" + linha.Ingrediente.left(40) + "...\".");
            linhas += {++numeroDaLinha, a.id_receitas, linha.Ingrediente, OuNulo(linha.Quantidade), OuNulo(linha.Unidade)};
        }
    }
    const QByteArray bytes = EscritorAccess::Gerar(receitas, linhas);
    if (bytes.isEmpty())
        return "O livro é grande demais para o formato antigo (2 GB).";
    if (!figuras.isEmpty() && !QDir().mkpath(fotos))
        return "Não foi possível criar a pasta " + fotos;
    for (const auto &[nome, receita] : std::as_const(figuras))
        if (const QString erro = GravarInteiro(fotos + "/" + nome, saida.livro.Figura(*receita)); !erro.isEmpty())
            return erro;
    return GravarInteiro(arquivo, bytes);
}
