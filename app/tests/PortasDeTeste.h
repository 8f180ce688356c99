#pragma once

#include "app/frmPrincipal.h"
#include "base/Abridor.h"
#include "base/Alcance.h"
#include "base/Avisos.h"
#include "base/Relogio.h"
#include "base/SeletorArquivos.h"
#include "base/Sorteio.h"
#include "news/ClienteWeb.h"
#include "print/Impressoras.h"
#include "store/Banco.h"
#include "store/Figuras.h"

#include <QPrinter>
#include <QTemporaryDir>
#include <QUrl>

/// A box that was shown, as one line: "parada: texto".
class AvisosDeTeste : public Avisos
{
public:
    void Avisar(const QString &texto, Icone icone) override
    {
        static const QStringList nomes{"nenhum", "informacao", "exclamacao", "parada"};
        mostrados << nomes.at(static_cast<int>(icone)) + ": " + texto;
    }
    bool Perguntar(const QString &texto) override
    {
        mostrados << "pergunta: " + texto;
        return sim;
    }
    QStringList mostrados;
    bool sim = true;
};

class SeletorDeTeste : public SeletorArquivos
{
public:
    QString EscolherParaAbrir(const PedidoArquivo &) override { return escolhido; }
    QString EscolherParaSalvar(const PedidoArquivo &) override { return escolhido; }
    QString escolhido;
};

class RelogioParado : public Relogio
{
public:
    QDateTime Agora() const override { return QDateTime(QDate(2005, 6, 24), QTime(18, 30)); }
};

class SorteioDeTeste : public Sorteio
{
public:
    double Sortear() override { return proximo; }
    double proximo = 0;
};

class AbridorDeTeste : public Abridor
{
public:
    void AbrirArquivo(const QString &caminho) override { abertos << caminho; }
    void AbrirEndereco(const QUrl &endereco) override { abertos << endereco.toString(); }
    QStringList abertos;
};

class SemImpressoras : public Impressoras
{
public:
    QStringList Nomes() const override { return {}; }
    ImpressoraAtual Padrao() const override { return {}; }
    ImpressoraAtual Configuracao(const QString &) const override { return {}; }
    std::unique_ptr<SaidaImpressao> Criar(const ImpressoraAtual &, const QString &) const override
    {
        return nullptr;
    }
};

class SemRede : public ClienteWeb
{
public:
    std::unique_ptr<Transferencia> Abrir(const QUrl &) override { return nullptr; }
    void Interromper() override {}
};

/// A whole program on an empty book in a folder of its own.
struct ProgramaDeTeste {
    /// @param completa false: the window as it is before its first paint
    explicit ProgramaDeTeste(bool completa = true)
        : banco(pasta.path())
        , figuras(banco)
        , janela(banco, figuras,
                 {avisos, seletor, relogio, sorteio, abridor, impressoras, "https://www.tamarel.example"},
                 std::make_unique<SemRede>())
    {
        if (completa)
            janela.Completar(); // tests ask for controls before the first paint
    }

    Alcance alcance;
    QTemporaryDir pasta;
    Banco banco;
    Figuras figuras;
    AvisosDeTeste avisos;
    SeletorDeTeste seletor;
    RelogioParado relogio;
    SorteioDeTeste sorteio;
    AbridorDeTeste abridor;
    SemImpressoras impressoras;
    frmPrincipal janela;
};
