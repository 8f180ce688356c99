#pragma once

#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/Figuras.h"

#include <QBuffer>
#include <QImage>
#include <QStringList>
#include <QTemporaryDir>

/// A recipe as a test states it; empty texts become NULL.
struct ReceitaDeTeste {
    QString nome;
    QString classificacao = {};
    QString origem = {};
    QString preparo = {};
    QString calorias = "0";
    QString tipoCalorias = {};
    QString porcoes = "0";
    QString tipo = {};
    QString modo = "Misture tudo.";
    QString observacao = {};
    bool figura = false;
    QStringList ingredientes = {}; ///< "quantidade|unidade|ingrediente"; "-" is NULL
};

/// A book in a folder of its own.
class Livro
{
public:
    Livro()
        : banco(pasta.path())
    {
    }

    qint64 Guardar(const ReceitaDeTeste &r)
    {
        const auto nulo = [](const QString &valor) { return valor.isEmpty() ? "NULL" : valor; };
        banco.ExecutarSQL("Insert into Receitas(Nome,Data,Classificacao,Modo,Tipo,Origem,Porcoes,Preparo,"
                          "Tipo_Calorias,Calorias,Observacao,Figura) values (" +
                          QStringList{Comandos::Texto(r.nome), "CDATE('2005-11-21')",
                                      Comandos::TextoOuNulo(r.classificacao), Comandos::Texto(r.modo),
                                      nulo(r.tipo), Comandos::TextoOuNulo(r.origem), nulo(r.porcoes),
                                      Comandos::TextoOuNulo(r.preparo), Comandos::TextoOuNulo(r.tipoCalorias),
                                      nulo(r.calorias), Comandos::TextoOuNulo(r.observacao), "NULL"}
                              .join(",") +
                          ")");
        const qint64 numero = banco.AbrirRecordset(Comandos::SqlMaiorNumero()).Valor(0).toLongLong();
        for (const QString &linha : r.ingredientes) {
            const QStringList partes = linha.split('|');
            const auto valor = [&partes](int i) {
                return partes.at(i) == "-" ? QString("NULL") : "'" + partes.at(i) + "'";
            };
            banco.ExecutarSQL(
                "Insert into Ingredientes(id_receitas,Ingrediente,Quantidade,Unidade) values (" +
                QString("%1,%2,%3,%4").arg(numero).arg(valor(2), valor(0), valor(1)) + ")");
        }
        if (r.figura) {
            Figuras(banco).GravarFigura(Png(), numero);
            banco.ExecutarSQL(Comandos::SqlGravarFigura(numero));
        }
        return numero;
    }

    static QByteArray Png()
    {
        QImage imagem(110, 90, QImage::Format_RGB32);
        imagem.fill(QColor(200, 120, 40));
        QByteArray bytes;
        QBuffer saida(&bytes);
        saida.open(QIODevice::WriteOnly);
        imagem.save(&saida, "PNG");
        return bytes;
    }

    /// Many small recipes, "Receita 0001" and so on, in one statement.
    void GuardarMuitas(int quantas)
    {
        const Banco::Remessa remessa(banco); // synced now and then, not at each
        for (int i = 1; i <= quantas; ++i)
            banco.ExecutarSQL(QString("Insert into Receitas(Nome,Data,Modo,Porcoes,Calorias) values "
                                      "('Receita %1',CDATE('2005-11-21'),'Misture.',0,0)")
                                  .arg(i, 4, 10, QChar(u'0')));
    }

    int Quantas(const QString &tabela) const
    {
        return banco.AbrirRecordset("Select count(*) from " + tabela).Valor(0).toInt();
    }

    QTemporaryDir pasta;
    Banco banco;
};
