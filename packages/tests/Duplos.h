#pragma once

#include "base/Abridor.h"
#include "base/Avisos.h"
#include "base/PainelMensagem.h"
#include "base/Relogio.h"
#include "base/Telas.h"
#include "base/tests/LimiteDeArquivo.h"
#include "packages/Exportacao.h"
#include "store/Banco.h"
#include "store/Figuras.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

/// Stand-ins for what lies outside, shared by the tests of this folder.

inline QByteArray LerArquivo(const QString &caminho)
{
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray("(não há)");
}

inline bool GravarArquivo(const QString &caminho, const QByteArray &bytes)
{
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::WriteOnly) && arquivo.write(bytes) == bytes.size();
}

inline QByteArray Dourado(const QString &nome)
{
    return LerArquivo(QString(PASTA_FONTES "/tests/data/") + nome);
}

/// An empty book in a folder of its own.
struct Livro {
    QTemporaryDir pasta;
    Banco banco{pasta.path()};
    Figuras figuras{banco};

    QString Caminho(const QString &nome) const { return banco.Caminho(nome); }
    qint64 Contar(const QString &tabela) const
    {
        return banco.AbrirRecordset("Select count(*) from " + tabela).Valor(0).toLongLong();
    }
    /// One column of a table, row after row; NULL reads "NULL".
    QStringList Coluna(const QString &tabela, const QString &coluna, const QString &ordem) const
    {
        QStringList valores;
        for (RecordSet rs = banco.AbrirRecordset("Select * from " + tabela + " Order By " + ordem); !rs.Eof();
             rs.MoveNext())
            valores += rs.Valor(coluna).isNull() ? QString("NULL") : rs.Texto(coluna);
        return valores;
    }
    QStringList Nomes() const { return Coluna("Receitas", "Nome", "id_receitas"); }
    QStringList Arquivos() const
    {
        return QDir(pasta.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
};

/// Remembers what was said, as "icon|text", and answers questions as told.
class AvisosDeTeste : public Avisos
{
public:
    void Avisar(const QString &texto, Icone icone) override
    {
        static const QStringList icones = {"nenhum", "informação", "exclamação", "parada"};
        ditos += icones[static_cast<int>(icone)] + "|" + texto;
        if (aoAvisar)
            aoAvisar();
    }
    bool Perguntar(const QString &texto) override
    {
        ditos += "pergunta|" + texto;
        if (aoPerguntar)
            aoPerguntar();
        return resposta;
    }

    Resposta PerguntarComSaida(const QString &texto) override
    {
        const bool sim = Perguntar(texto);
        return semResposta ? Resposta::Nenhuma : sim ? Resposta::Sim : Resposta::Nao;
    }

    QStringList ditos;
    bool resposta = false;
    bool semResposta = false; ///< the user closes the question's box
    std::function<void()> aoAvisar, aoPerguntar;
};

class RelogioParado : public Relogio
{
public:
    QDateTime Agora() const override { return QDateTime(QDate(2005, 11, 21), QTime(10, 30)); }
};

/// Remembers the panel's life, one word a call.
class PainelDeTeste : public PainelMensagem
{
public:
    void Mostrar(const QString &texto, int maximo) override
    {
        passos += "mostra " + texto + " " + QString::number(maximo);
        visivel = true;
    }
    void DefinirMaximo(int maximo) override { passos += "máximo " + QString::number(maximo); }
    void DefinirValor(int valor) override
    {
        passos += QString::number(valor);
        if (aoAvancar)
            aoAvancar(valor);
    }
    void Esconder() override
    {
        passos += "esconde";
        visivel = false;
    }

    QStringList passos;
    bool visivel = false;
    std::function<void(int)> aoAvancar;
};

/// The view switch and the list panel, which say in one list what was asked of them.
class JanelaDeTeste : public Telas, public ListaParaExportar
{
public:
    void AbrirTela(const QString &request) override { pedidos += "abre " + request; }
    void FecharTela() override { pedidos += "fecha"; }
    QString TelaAtual() const override { return tela; }
    void RestaurarBotoes() override { pedidos += "botões"; }
    int AlturaDeTrabalho() const override { return 6540; }

    bool ListaVisivel() const override { return listaVisivel; }
    void MostrarLista() override { pedidos += "mostra lista"; }
    void DefinirAlturaDaLista(int twips) override { pedidos += "altura " + QString::number(twips); }

    QString tela = "Listagem";
    bool listaVisivel = true;
    QStringList pedidos;
};

class AbridorDeTeste : public Abridor
{
public:
    void AbrirArquivo(const QString &caminho) override { abertos += caminho; }
    void AbrirMensagem(const QString &caminho, const std::function<void()> &semPrograma) override
    {
        abertos += caminho;
        if (nenhumPrograma)
            semPrograma();
    }
    void AbrirEndereco(const QUrl &endereco) override { abertos += endereco.toString(); }

    QStringList abertos;
    bool nenhumPrograma = false;
};
