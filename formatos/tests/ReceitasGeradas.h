#pragma once

#include "formatos/LivroAberto.h"
#include "formatos/Receita.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QList>
#include <QRandomGenerator>

#include "store/Comandos.h"
#include "store/access/LivroAccess.h"
#include "store/access/NovoLivro.h"

#include <optional>

/// Recipes from a seed, in the house's own style, with what makes conversions stumble: fractions, accents, signs,
/// groups, words for quantities, long methods, pictures.
namespace ReceitasGeradas
{
inline QByteArray Png(int i)
{
    // The smallest picture there is, told apart by a comment behind its end.
    static const QByteArray png = QByteArray::fromBase64(
        "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==");
    return png + QByteArray::number(i);
}

template <class Lista>
const typename Lista::value_type &Um(const Lista &lista, QRandomGenerator &g)
{
    return lista[static_cast<qsizetype>(g.bounded(static_cast<quint32>(lista.size())))];
}

inline QList<Formatos::Receita> Gerar(int quantas, quint32 semente = 7)
{
    QRandomGenerator g(semente);
    const QStringList pratos = {"Bolo de fubá", "Pão d'água", "Caldo verde", "Moqueca", "Arroz de forno", "Pudim de ovos",
                                "Torta de limão", "Vaca atolada", "Quindim", "Açorda à alentejana"};
    const QStringList jeitos = {"da vó", "de domingo", "\"especial\"", "com coco & canela", "n. 5", "ligeiro", "50% integral", "#1"};
    const QStringList tipos = {"", "Bolos", "Sopas", "Doces de colher", "Pães", "Peixes"};
    const QStringList tempos = {"", "45 minutos", "1 hora", "1 hora e 30 minutos", "2 horas e 5 minutos"};
    const QStringList origens = {"", "Caderno da Conceição", "Padaria da esquina"};
    const QStringList quantidades = {"1", "2", "1/2", "1 1/2", "2 a 3", "3/4", "250", "1,5", "± 300", "2 ou 3"};
    const QStringList unidades = {"", "xícaras (chá)", "g", "colher (sopa)", "dentes", "ml", "kg", "lata", "colheres de sopa"};
    const QStringList nomes = {"farinha de trigo", "açúcar mascavo", "óleo", "ovos", "manteiga", "alho picado", "leite de coco",
                               "batata-doce", "queijo minas (meia cura)"};
    const QStringList frases = {"Misture tudo e leve ao forno a 180 °C por 40 minutos.",
                                "Bata as claras em neve; junte aos poucos, sem parar de mexer.",
                                "Deixe descansar 1 hora e 30 minutos, coberto.",
                                "Sirva frio, com \"raspas\" de limão – se quiser.",
                                "O ponto é quando 2 + 2 colheradas enchem a forma; não passe disso."};
    const QStringList notas = {"", "Rende mais no dia seguinte.", "Da tia Zélia.\r\nCongela bem, até 3 meses.",
                               "Preço: R$ 12,50 (aprox.)"};
    QList<Formatos::Receita> receitas;
    for (int i = 0; i < quantas; ++i) {
        Formatos::Receita r;
        r.Nome = Um(pratos, g) + " " + Um(jeitos, g) + " " + QString::number(i + 1);
        r.Classificacao = Um(tipos, g);
        r.Preparo = Um(tempos, g);
        r.Origem = Um(origens, g);
        r.Porcoes = g.bounded(5) == 0 ? QString("0") : QString::number(1 + g.bounded(20));
        r.Calorias = g.bounded(3) == 0 ? QString("0") : QString::number(50 + g.bounded(900));
        if (g.bounded(4) == 0 && r.Calorias != "0")
            r.Calorias += ",5";
        if (r.Calorias != "0")
            r.Tipo_Calorias = g.bounded(2) ? "P" : "R";
        r.Observacao = Um(notas, g);
        QStringList modo;
        for (quint32 n = 1 + g.bounded(5U); n > 0; --n)
            modo += Um(frases, g);
        r.Modo = modo.join("\r\n");
        if (g.bounded(4) == 0)
            r.Ingredientes.append({"Massa:", "", ""});
        for (quint32 n = 1 + g.bounded(9U); n > 0; --n) {
            QString nome = Um(nomes, g) + (g.bounded(6) == 0 ? " " + QString::number(n) + "x" : "");
            switch (g.bounded(6)) {
            case 0: r.Ingredientes.append({nome, "a gosto", ""}); break;
            case 1: r.Ingredientes.append({nome, "", ""}); break;
            default: r.Ingredientes.append({nome, Um(quantidades, g), Um(unidades, g)}); break;
            }
        }
        if (g.bounded(3) == 0) {
            r.Figura = Comandos::NomeFigura(i + 1);
            r.DadosFigura = Png(i);
        }
        receitas += r;
    }
    return receitas;
}

/// A book of these recipes in a folder.
inline bool GravarLivro(const QString &pasta, const QList<Formatos::Receita> &receitas)
{
    const auto texto = [](const QString &t) { return t.isEmpty() ? std::nullopt : std::optional<QString>(t); };
    const auto numero = [](QString t) { return std::optional<double>(t.replace(u',', u'.').toDouble()); };
    LivroAccess livro;
    QDir().mkpath(pasta + "/Fotos");
    for (const Formatos::Receita &r : receitas) {
        LivroAccess::Receita a;
        a.id_receitas = ++livro.ultimaReceita;
        a.Nome = r.Nome;
        a.Data = "2005-11-21";
        a.Classificacao = texto(r.Classificacao);
        a.Modo = r.Modo;
        a.Origem = texto(r.Origem);
        a.Porcoes = numero(r.Porcoes);
        a.Preparo = texto(r.Preparo);
        a.Tipo_Calorias = texto(r.Tipo_Calorias);
        a.Calorias = numero(r.Calorias);
        a.Observacao = texto(r.Observacao);
        a.Figura = texto(r.Figura);
        livro.receitas.push_back(a);
        if (!r.Figura.isEmpty()) {
            QFile figura(pasta + "/Fotos/" + r.Figura);
            if (!figura.open(QIODevice::WriteOnly) || figura.write(r.DadosFigura) != r.DadosFigura.size())
                return false;
        }
        for (const Formatos::Linha &l : r.Ingredientes) {
            LivroAccess::Ingrediente i;
            i.id_ingredientes = ++livro.ultimoIngrediente;
            i.id_receitas = a.id_receitas;
            i.Nome = l.Ingrediente;
            i.Quantidade = texto(l.Quantidade);
            i.Unidade = texto(l.Unidade);
            livro.ingredientes.push_back(i);
        }
    }
    QFile vazio(pasta + "/dadosr.lst");
    if (!vazio.open(QIODevice::WriteOnly))
        return false;
    vazio.close();
    GravarNovoLivro(vazio.fileName(), livro);
    return true;
}
} // namespace ReceitasGeradas
