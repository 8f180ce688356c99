#pragma once

#include "store/access/ErroAccess.h"
#include "store/access/LivroAccess.h"
#include "store/access/tests/EscritorJet.h"

#include <QBuffer>
#include <QFile>

/// A small book written by hand: three recipes with lines, which a test may change before the file is made.
class LivroFeito
{
public:
    explicit LivroFeito(int jet)
        : escritor(jet)
        , receitas(escritor.Receitas())
        , ingredientes(escritor.Ingredientes())
    {
    }

    /// Adds a recipe with a name and a method; `outros` are further columns.
    EscritorJet::Linha &Receita(qint32 numero, const QString &nome,
                                const QMap<QByteArray, QByteArray> &outros = {})
    {
        QMap<QByteArray, QByteArray> valores = {{"id_receitas", EscritorJet::longo(numero)},
                                                {"Nome", escritor.texto(nome)},
                                                {"Modo", escritor.memo(escritor.texto("Misture " + nome))}};
        valores.insert(outros);
        receitas.contador = std::max(receitas.contador, numero);
        return receitas.Acrescentar(valores);
    }

    EscritorJet::Linha &Ingrediente(qint32 numero, qint32 receita, const QString &nome,
                                    const QMap<QByteArray, QByteArray> &outros = {})
    {
        QMap<QByteArray, QByteArray> valores = {{"id_ingredientes", EscritorJet::longo(numero)},
                                                {"id_receitas", EscritorJet::longo(receita)},
                                                {"Ingrediente", escritor.texto(nome)}};
        valores.insert(outros);
        ingredientes.contador = std::max(ingredientes.contador, numero);
        return ingredientes.Acrescentar(valores);
    }

    /// Pão, Bolo and Café with two lines each.
    LivroFeito &Encher()
    {
        qint32 linha = 0;
        for (const auto &[numero, nome] :
             {std::pair(1, QString("Pão")), std::pair(2, QString("Bolo")), std::pair(5, QString("Café"))}) {
            Receita(numero, nome);
            Ingrediente(++linha, numero, "água", {{"Quantidade", escritor.texto("1/2")}});
            Ingrediente(++linha, numero, "açúcar");
        }
        return *this;
    }

    QByteArray Bytes() { return escritor.Gerar({receitas, ingredientes}); }

    EscritorJet escritor;
    EscritorJet::Tabela receitas;
    EscritorJet::Tabela ingredientes;
};

inline LivroAccess Ler(QByteArray bytes)
{
    QBuffer arquivo(&bytes);
    arquivo.open(QIODevice::ReadOnly);
    return LerLivroAccess(arquivo);
}

/// Why the file is refused; empty when it is read.
inline QString Recusa(const QByteArray &bytes)
{
    try {
        Ler(bytes);
        return {};
    } catch (const Access::ErroAccess &erro) {
        return erro.Mensagem();
    }
}

inline QByteArray BytesDoArquivo(const QString &caminho)
{
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
}
