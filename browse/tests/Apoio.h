#pragma once

#include "assets/Recursos.h"
#include "base/Avisos.h"
#include "base/Fontes.h"
#include "base/Painel.h"
#include "base/PainelMensagem.h"
#include "base/Telas.h"
#include "browse/DetalheReceita.h"
#include "browse/Exclusao.h"
#include "browse/ListaReceitas.h"
#include "browse/PainelCartao.h"
#include "browse/PainelLista.h"
#include "browse/PainelPesquisa.h"
#include "browse/tests/Livro.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTimer>

#include <functional>

/// Remembers the boxes that a user would have seen, and answers questions.
class AvisosGravador : public Avisos
{
public:
    void Avisar(const QString &texto, Icone icone) override
    {
        static const char *const icones[] = {"nenhum", "informacao", "exclamacao", "parada"};
        vistos += QString(icones[static_cast<int>(icone)]) + ": " + texto;
    }
    bool Perguntar(const QString &texto) override
    {
        perguntas += texto;
        if (aoPerguntar)
            aoPerguntar();
        return resposta;
    }
    QStringList vistos;
    QStringList perguntas;
    bool resposta = true;
    std::function<void()> aoPerguntar;
};

/// A view switch of three panels that writes down what it was asked.
class TelasGravadas : public Telas
{
public:
    void AbrirTela(const QString &request) override
    {
        pedidos += request;
        if (request == "ListaReceitas")
            Mostrar(lista, "Listagem");
        else if (request == "PesquisaReceitas")
            AjustarAlturas(3780), Mostrar(pesquisa, "Pesquisa");
        else
            Mostrar(detalhe, "Detalhe");
    }
    void FecharTela() override
    {
        pedidos += "fechar";
        if (atual == "Pesquisa") {
            AjustarAlturas(6540);
            pesquisa->hide();
        } else if (atual == "Detalhe") {
            detalhe->hide();
        }
        atual = "Listagem";
    }
    QString TelaAtual() const override { return atual; }
    void RestaurarBotoes() override { ++restauradas; }
    int AlturaDeTrabalho() const override { return pesquisa && !pesquisa->isHidden() ? 3780 : 6540; }

    QStringList pedidos;
    int restauradas = 0;
    QString atual;
    Painel *lista = nullptr;
    Painel *detalhe = nullptr;
    Painel *pesquisa = nullptr;

private:
    void Mostrar(Painel *painel, const QString &tela)
    {
        atual = tela;
        painel->show();
        painel->raise();
    }
    void AjustarAlturas(int twips)
    {
        lista->DefinirAltura(twips);
        detalhe->DefinirAltura(twips);
    }
};

class MensagemGravada : public PainelMensagem
{
public:
    void Mostrar(const QString &texto, int maximo) override
    {
        passos += QString("mostrar %1 de %2").arg(texto).arg(maximo);
        visivel = true;
    }
    void DefinirMaximo(int maximo) override { passos += QString("maximo %1").arg(maximo); }
    void DefinirValor(int valor) override
    {
        passos += QString::number(valor);
        if (aoAvancar)
            aoAvancar(valor);
    }
    void Esconder() override
    {
        passos += "esconder";
        visivel = false;
    }
    QStringList passos;
    bool visivel = false;
    std::function<void(int)> aoAvancar;
};

class DetalheGravado : public DetalheReceita
{
public:
    void CarregarDetalheReceita(qint64 lngReceita, bool BlnAbrir) override
    {
        passos += QString("detalhe %1 %2").arg(lngReceita).arg(BlnAbrir ? "ver" : "alterar");
    }
    void CarregarValoresDetalheReceita(quint8 bytTipo) override
    {
        passos += QString("valores %1").arg(bytTipo);
    }
    void EsquecerLinhaEmEdicao() override { passos += "esquecer"; }
    QStringList passos;
};

/// Types a text as the keyboard would, accented letters included.
inline void Teclar(QWidget *controle, const QString &texto)
{
    for (const QChar letra : texto) {
        for (const auto tipo : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent tecla(tipo, letra.unicode() < 128 ? letra.toUpper().unicode() : 0, Qt::NoModifier,
                            letra);
            QApplication::sendEvent(controle, &tecla);
        }
    }
}

/// Runs something once, from the event loop, as soon as a panel has begun to roll open.
class AoRolar : public QObject
{
public:
    AoRolar(QWidget *painel, std::function<void()> acao)
        : m_acao(std::move(acao))
    {
        painel->installEventFilter(this);
    }
    bool Rodou() const { return m_rodou; }

protected:
    bool eventFilter(QObject *objeto, QEvent *event) override
    {
        const int altura = static_cast<QWidget *>(objeto)->height();
        if (event->type() == QEvent::Resize && altura > 100 && altura < 200 && !m_marcado) {
            m_marcado = true;
            QTimer::singleShot(0, this, [this] {
                m_rodou = true;
                m_acao();
            });
        }
        return false;
    }

private:
    std::function<void()> m_acao;
    bool m_marcado = false;
    bool m_rodou = false;
};

/// The three panels on a window of their own, wired to recorders.
class Bancada
{
public:
    Bancada()
    {
        IniciarRecursos();
        InstalarFontes();
        Painel::DefinirRitmo(0);
        janela.resize(660, 760);
        detalhePainel = new Painel("picDetReceita", &janela);
        detalhePainel->DefinirLugar(135, 0, 9330, 6540);
        cartao = new PainelCartao(livro.banco, avisos, telas, detalhe, *detalhePainel);
        lista = new PainelLista({livro.banco, avisos, telas, mensagem, detalhe, *cartao}, &janela);
        pesquisa = new PainelPesquisa(livro.banco, avisos, telas, *lista, &janela);
        lista->move(9, 0);
        pesquisa->move(9, 440);
        for (Painel *painel : {static_cast<Painel *>(lista), static_cast<Painel *>(pesquisa), detalhePainel})
            painel->hide();
        telas.lista = lista;
        telas.detalhe = detalhePainel;
        telas.pesquisa = pesquisa;
        janela.show();
        janela.activateWindow();
    }

    template <class T>
    T *Controle(const char *nome) const
    {
        return janela.findChild<T *>(nome);
    }
    ListaReceitas *Lst() const { return lista->lstVwReceitas(); }
    QString Celula(int linha, int coluna) const
    {
        return Lst()->model()->index(linha, coluna).data().toString();
    }
    QStringList Nomes() const
    {
        QStringList nomes;
        for (int linha = 0; linha < Lst()->model()->rowCount(); ++linha)
            nomes += Celula(linha, 0);
        return nomes;
    }
    QPoint Centro(int linha, int coluna = 0) const
    {
        return Lst()->visualRect(Lst()->model()->index(linha, coluna)).center();
    }

    Livro livro;
    QWidget janela;
    AvisosGravador avisos;
    TelasGravadas telas;
    MensagemGravada mensagem;
    DetalheGravado detalhe;
    Painel *detalhePainel;
    PainelCartao *cartao;
    PainelLista *lista;
    PainelPesquisa *pesquisa;
};
