#pragma once

#include "base/Avisos.h"
#include "base/Ponteiro.h"
#include "base/Telas.h"
#include "base/Twips.h"
#include "news/ClienteWebQt.h"
#include "news/Novidades.h"
#include "news/PaineisDaJanela.h"
#include "news/PainelNovidades.h"
#include "news/VisorNovidades.h"
#include "news/tests/AbridorDeTeste.h"
#include "news/tests/ServidorLocal.h"

#include <QDir>
#include <QEvent>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

class AvisosDeTeste : public Avisos
{
public:
    void Avisar(const QString &texto, Icone icone) override
    {
        textos += texto;
        icones += icone;
    }
    bool Perguntar(const QString &) override { return false; }

    QStringList textos;
    QList<Icone> icones;
};

class TelasDeTeste : public Telas
{
public:
    void AbrirTela(const QString &) override {}
    void FecharTela() override {}
    QString TelaAtual() const override { return "Listagem"; }
    void RestaurarBotoes() override { ++restauradas; }
    int AlturaDeTrabalho() const override { return 6540; }

    int restauradas = 0;
};

/// Remembers what happens to a widget: its heights, and how often it was hidden.
class Observador : public QObject
{
    Q_OBJECT

public:
    explicit Observador(QWidget *alvo)
        : QObject(alvo)
        , m_alvo(alvo)
    {
        alvo->installEventFilter(this);
    }

    QList<int> alturas;
    int escondidas = 0;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            alturas += m_alvo->height();
        if (event->type() == QEvent::Hide)
            ++escondidas;
        return QObject::eventFilter(watched, event);
    }

private:
    QWidget *m_alvo;
};

/// A window like the program's: three working panels, of which the list is seen, and the news; beside it a
/// site on this machine.
struct CenaDoPainel {
    ServidorLocal servidor;
    QTemporaryDir raiz;
    AvisosDeTeste avisos;
    AbridorDeTeste abridor;
    TelasDeTeste telas;
    QWidget janela;
    QWidget *lista = new QWidget(&janela);
    QWidget *detalhe = new QWidget(&janela);
    QWidget *pesquisa = new QWidget(&janela);
    QLineEdit *txtNome = new QLineEdit(lista);
    Observador *olhoDaLista = new Observador(lista);
    QPushButton *cmdLetra = new QPushButton("A", lista);
    QLabel *lblTitulo = new QLabel("Receitas", &janela);
    bool livre = true; ///< nothing else runs
    PaineisDaJanela paineis{[this] { return livre; }};
    PainelNovidades *picWeb = nullptr;
    QPointer<QObject> vivo; ///< null once the panel is destroyed

    explicit CenaDoPainel(const LimitesWeb &limites = Limites())
    {
        Painel::DefinirRitmo(0);
        paineis.DefinirPaineis({detalhe, lista, pesquisa});
        picWeb = new PainelNovidades(
            std::make_shared<Novidades>(std::make_unique<ClienteWebQt>(limites), servidor.Site(), Pasta()),
            avisos, abridor, telas, paineis, &janela);
        vivo = picWeb;
        janela.resize(640, 600);
        picWeb->DefinirLugar(135, 0, 9330, Painel::kRecolhido);
        for (QWidget *painel : {lista, detalhe, pesquisa})
            painel->setGeometry(9, 20, 600, TwipsParaPixels(6540));
        cmdLetra->move(0, 100);
        detalhe->hide();
        pesquisa->hide();
        janela.show();
        txtNome->setFocus();
        QCoreApplication::processEvents();
        olhoDaLista->escondidas = 0;
    }

    static LimitesWeb Limites()
    {
        LimitesWeb limites;
        limites.msSemByte = 300;
        limites.msTotal = 900;
        return limites;
    }

    QString Pasta() const { return raiz.filePath("temporario"); }
    QString Arquivo(const QString &nome) const { return Pasta() + u'/' + nome; }

    void PorSite()
    {
        servidor.PorCorpo("/cozinhario/index.file", "index.htm\r\nfoto.gif");
        servidor.PorCorpo("/cozinhario/index.htm", "<p>Novidades de hoje</p>");
        servidor.PorCorpo("/cozinhario/foto.gif", "gif");
    }

    void PorPaginaAntiga() const
    {
        QDir().mkpath(Pasta());
        QFile arquivo(Arquivo("index.htm"));
        QVERIFY(arquivo.open(QIODevice::WriteOnly));
        arquivo.write("<p>Novidades de ontem</p>");
    }

    QTimer *TimerWeb() const { return picWeb->findChild<QTimer *>("TimerWeb"); }
    VisorNovidades *WbBsr1() const { return picWeb->findChild<VisorNovidades *>("WbBsr1"); }
    bool TimerPassou() const { return TimerWeb()->property("tag").toString().isEmpty(); }
    /// The page that is seen, or "".
    QString NaTela() const
    {
        return vivo && picWeb->isVisible() && WbBsr1()->isVisible() ? WbBsr1()->toPlainText() : QString();
    }

    /// What the window does when another view opens.
    void AbrirOutraTela() const
    {
        picWeb->Esconder();
        detalhe->show();
        detalhe->raise();
    }
};
