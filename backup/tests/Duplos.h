#pragma once

#include "backup/JanelaDoBackup.h"
#include "backup/modBackup.h"
#include "base/Avisos.h"
#include "base/PainelMensagem.h"
#include "base/Relogio.h"
#include "base/SeletorArquivos.h"
#include "base/Telas.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/Figuras.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QStringList>

#include <functional>

/// Remembers what the user would have been told, and answers questions.
class AvisosDeTeste : public Avisos
{
public:
    void Avisar(const QString &texto, Icone icone) override
    {
        textos << texto;
        icones << icone;
    }
    bool Perguntar(const QString &texto) override
    {
        perguntas << texto;
        return resposta;
    }

    QStringList textos;
    QStringList perguntas;
    QList<Icone> icones;
    bool resposta = true;
};

/// A chooser whose user picks what the test says.
class SeletorDeTeste : public SeletorArquivos
{
public:
    QString EscolherParaAbrir(const PedidoArquivo &pedido) override
    {
        abrir << pedido;
        return escolha;
    }
    QString EscolherParaSalvar(const PedidoArquivo &pedido) override
    {
        salvar << pedido;
        return escolha;
    }

    QString escolha;
    QList<PedidoArquivo> abrir;
    QList<PedidoArquivo> salvar;
};

/// Writes down what the message panel shows.
class PainelDeTeste : public PainelMensagem
{
public:
    void Mostrar(const QString &texto, int maximo) override
    {
        passos << QString("%1 0/%2").arg(texto).arg(maximo);
        visivel = true;
    }
    void DefinirMaximo(int maximo) override { passos << QString("/%1").arg(maximo); }
    void DefinirValor(int valor) override
    {
        passos << QString::number(valor);
        if (aCadaValor)
            aCadaValor();
    }
    void Esconder() override
    {
        passos << "fim";
        visivel = false;
    }

    QStringList passos;
    bool visivel = false;
    std::function<void()> aCadaValor;
};

class TelasDeTeste : public Telas
{
public:
    void AbrirTela(const QString &) override {}
    void FecharTela() override {}
    QString TelaAtual() const override { return "Listagem"; }
    void RestaurarBotoes() override { ++botoesRestaurados; }
    int AlturaDeTrabalho() const override { return 6540; }

    int botoesRestaurados = 0;
};

class RelogioDeTeste : public Relogio
{
public:
    QDateTime Agora() const override { return agora; }

    QDateTime agora = QDateTime(QDate(2005, 11, 21), QTime(10, 20, 30));
};

class JanelaDeTeste : public JanelaDoBackup
{
public:
    void EsconderTelas() override { chamadas << "EsconderTelas"; }
    void LivroRestaurado() override { chamadas << "LivroRestaurado"; }

    QStringList chamadas;
};

/// An application folder with everything a backup needs around it.
struct Cozinha {
    explicit Cozinha(const QString &caminho)
        : pasta(caminho)
        , banco(caminho)
        , figuras(banco)
    {
    }

    void Backup(const QString &destino)
    {
        seletor.escolha = destino;
        backup.imgBackup_Click();
    }
    void Restaurar(const QString &origem)
    {
        seletor.escolha = origem;
        backup.imgRestore_Click();
    }
    void NovaReceita(const QString &nome, const QByteArray &figura = {})
    {
        Comandos::Receita receita;
        receita.Nome = nome;
        receita.Modo = "Asse.";
        banco.ExecutarSQL(Comandos::SqlInserirReceita(receita, QDate(2005, 11, 21)));
        if (figura.isNull())
            return;
        const qint64 numero = banco.AbrirRecordset(Comandos::SqlMaiorNumero()).Valor(0).toLongLong();
        banco.ExecutarSQL(Comandos::SqlGravarFigura(numero));
        figuras.GravarFigura(figura, numero);
    }
    QStringList Nomes() const
    {
        QStringList nomes;
        for (RecordSet rs = banco.AbrirRecordset(Comandos::SqlLista()); !rs.Eof(); rs.MoveNext())
            nomes << rs.Texto(u"Nome");
        return nomes;
    }

    QString pasta;
    Banco banco;
    Figuras figuras;
    AvisosDeTeste avisos;
    SeletorDeTeste seletor;
    PainelDeTeste painel;
    TelasDeTeste telas;
    RelogioDeTeste relogio;
    JanelaDeTeste janela;
    modBackup backup = modBackup(banco, figuras, avisos, seletor, painel, telas, relogio, janela);
};

inline QByteArray Conteudo(const QString &caminho)
{
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray("(does not exist)");
}

/// Every file and folder below a folder, files with their bytes.
inline QMap<QString, QByteArray> Retrato(const QString &pasta)
{
    QMap<QString, QByteArray> retrato;
    QDirIterator it(pasta, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString caminho = it.next();
        retrato[QDir(pasta).relativeFilePath(caminho)] =
            it.fileInfo().isDir() ? "(folder)" : Conteudo(caminho);
    }
    return retrato;
}
