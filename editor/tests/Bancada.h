#pragma once

#include "base/Avisos.h"
#include "base/CampoTexto.h"
#include "base/Relogio.h"
#include "base/SeletorArquivos.h"
#include "editor/PainelEditor.h"
#include "store/Banco.h"
#include "store/Figuras.h"

#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QtTest>

#include <functional>

class AvisosDeTeste : public Avisos
{
public:
    void Avisar(const QString &texto, Icone icone) override
    {
        avisos += texto;
        ultimoIcone = icone;
    }
    bool Perguntar(const QString &texto) override
    {
        perguntas += texto;
        return resposta;
    }

    QStringList avisos;
    QStringList perguntas;
    Icone ultimoIcone = Icone::Nenhum;
    bool resposta = false;
};

class SeletorDeTeste : public SeletorArquivos
{
public:
    QString EscolherParaAbrir(const PedidoArquivo &pedido) override
    {
        pedidos += pedido;
        return resposta;
    }
    QString EscolherParaSalvar(const PedidoArquivo &) override { return {}; }

    QList<PedidoArquivo> pedidos;
    QString resposta;
};

class RelogioParado : public Relogio
{
public:
    QDateTime Agora() const override { return QDateTime(dia, QTime(9, 30)); }
    QDate dia = QDate(2005, 11, 21);
};

/// The real panel over a real book in a folder of its own, in an active window.
class Bancada
{
public:
    Bancada();

    template <typename T = QWidget>
    T *Controle(const char *nome) const
    {
        T *controle = painel->findChild<T *>(nome);
        if (!controle)
            qFatal("no control %s", nome);
        return controle;
    }
    ComboTexto *Combo(const char *nome) const { return Controle<ComboTexto>(nome); }
    QLineEdit *Campo(const char *nome) const { return Controle<QLineEdit>(nome); }
    CampoMemo *Memo(const char *nome) const { return Controle<CampoMemo>(nome); }
    QTreeWidget *Arvore() const { return Controle<QTreeWidget>("TrVwIngredientes"); }
    QTreeWidgetItem *Linha(int i) const { return Arvore()->topLevelItem(0)->child(i); }

    /// Key events carrying each character's text, accented letters included.
    void Digitar(const char *nome, const QString &texto) const;
    void Tecla(const char *nome, Qt::Key tecla, Qt::KeyboardModifiers mod = Qt::NoModifier) const
    {
        QTest::keyClick(Controle(nome), tecla, mod);
    }
    void Clicar(const char *nome) const;
    void ClicarNo(const QTreeWidgetItem *no) const;
    void Colar(const char *nome, const QString &texto) const;
    /// Types a line and presses "Salvar Dados".
    void EntrarLinha(const QString &qtde, const QString &medida, const QString &ingrediente) const;
    /// Name, method and one line: the least that can be saved.
    void EntrarMinimo(const QString &nome = "Bolo de fubá") const;

    QStringList ChavesDaArvore() const;
    QStringList TextosDaArvore() const;
    /// Rows of a query, columns joined by "|", NULL as "NULL".
    QStringList Linhas(const QString &sql) const;
    /// Makes a picture file and returns its path.
    QString CriarFigura(const QString &nome, QColor cor, const char *formato) const;
    static QByteArray Bytes(const QString &caminho);
    QByteArray FiguraGravada(int numero) const;

    QTemporaryDir pasta;
    Banco banco;
    Figuras figuras;
    AvisosDeTeste avisos;
    SeletorDeTeste seletor;
    RelogioParado relogio;
    QWidget janela;
    PainelEditor *painel;
};

/// A line's tag, its three parts written with "|".
QString Tag(QString partes);
