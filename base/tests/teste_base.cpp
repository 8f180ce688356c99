#include "base/Acompanha.h"
#include "base/EventosPendentes.h"
#include "base/FiltrarTecla.h"
#include "base/FonteDeItens.h"
#include "base/Numero.h"
#include "base/Operacao.h"
#include "base/OperacaoLonga.h"
#include "base/PaginaCodigo.h"
#include "base/PainelMensagem.h"
#include "base/Separadores.h"
#include "base/Texto.h"
#include "base/Twips.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>
#include <optional>

namespace
{
class PainelDeTeste : public PainelMensagem
{
public:
    void Mostrar(const QString &texto, int maximo) override
    {
        visivel = true;
        historia << QString("mostrar %1 0..%2").arg(texto).arg(maximo);
    }
    void DefinirMaximo(int maximo) override { historia << QString("maximo %1").arg(maximo); }
    void DefinirValor(int valor) override { historia << QString("valor %1").arg(valor); }
    void Esconder() override
    {
        visivel = false;
        historia << "esconder";
    }
    bool visivel = false;
    QStringList historia;
};
} // namespace

class TesteBase : public QObject
{
    Q_OBJECT
private slots:
    void achaOPrimeiroQueComeca_data()
    {
        QTest::addColumn<QString>("prefixo");
        QTest::addColumn<int>("achado");
        QTest::newRow("sem olhar maiúsculas") << "ma" << 1;
        QTest::newRow("o primeiro da lista") << "MASSA" << 1;
        QTest::newRow("o texto inteiro") << "massas finas" << 2;
        QTest::newRow("mais que o texto inteiro") << "massas finas e" << -1;
        QTest::newRow("o acento distingue") << "pa" << 4;
        QTest::newRow("acento sem olhar maiúsculas") << "PÃ" << 3;
        QTest::newRow("no meio não vale") << "ssas" << -1;
        QTest::newRow("vazio não acha nada") << "" << -1;
        QTest::newRow("acrescentado") << "ze" << 6;
        // Folding it would change the count of letters that are still missing.
        QTest::newRow("a dobra não muda o tamanho") << "STRASSE" << -1;
        QTest::newRow("letra sem maiúscula de um caractere") << "straß" << 5;
    }
    void achaOPrimeiroQueComeca()
    {
        FonteDeTextos busca({"", "Massas", "Massas Finas", "pães", "Panquecas", "Straße"});
        busca.Acrescentar("Zebra");
        QCOMPARE(busca.Quantos(), 7);
        QFETCH(QString, prefixo);
        QTEST(busca.Procurar(prefixo), "achado");
    }

    void init() { Separadores::Definir({u',', u'.'}); }

    void oGuiaEOsExemplosVemComOPrograma()
    {
        const QTemporaryDir raiz;
        const auto por = [&raiz](const QString &nome) {
            const QString caminho = raiz.filePath(nome);
            QVERIFY(QDir().mkpath(caminho.section(u'/', 0, -2)));
            QVERIFY(QFile(caminho).open(QIODevice::WriteOnly));
        };
        const QString pasta = raiz.filePath("bin");
        QVERIFY(QDir().mkpath(pasta));
        QCOMPARE(Acompanha::Guia(pasta), QString());
        QCOMPARE(Acompanha::Exemplos(pasta), QString());
        QVERIFY(QDir().mkpath(raiz.filePath("bin/guia/index.html"))); // a folder is no page
        QCOMPARE(Acompanha::Guia(pasta), QString());

        por("share/cozinhario/guia/index.html");
        por("share/cozinhario/exemplos/PacoteReceita.lr$");
        QCOMPARE(Acompanha::Guia(pasta), raiz.filePath("share/cozinhario/guia/index.html"));
        QCOMPARE(Acompanha::Exemplos(pasta + "/"),
                 raiz.filePath("share/cozinhario/exemplos/PacoteReceita.lr$"));

        por("bin/exemplos/PacoteReceita.lr$"); // what lies beside it is the program's own
        QCOMPARE(Acompanha::Exemplos(pasta), raiz.filePath("bin/exemplos/PacoteReceita.lr$"));
    }

    void filtraATeclaDigitada_data()
    {
        QTest::addColumn<int>("codigo");
        QTest::addColumn<bool>("numeric");
        QTest::addColumn<bool>("fica");
        for (const int livre : {3, 8, 22, 24}) {
            QTest::addRow("comando %d em texto", livre) << livre << false << true;
            QTest::addRow("comando %d em número", livre) << livre << true << true;
        }
        QTest::newRow("algarismo") << int('7') << true << true;
        QTest::newRow("menos") << int('-') << true << true;
        QTest::newRow("vírgula brasileira") << int(',') << true << true;
        QTest::newRow("ponto") << int('.') << true << false;
        QTest::newRow("letra em número") << int('a') << true << false;
        QTest::newRow("blank em número") << int(' ') << true << false;
        QTest::newRow("apóstrofo") << int('\'') << false << false;
        QTest::newRow("apóstrofo em número") << int('\'') << true << false;
        QTest::newRow("Enter") << 13 << false << false;
        QTest::newRow("Enter em número") << 13 << true << false;
        QTest::newRow("código 29") << 29 << false << false;
        QTest::newRow("código 30") << 30 << false << true;
        QTest::newRow("letra") << int('a') << false << true;
        QTest::newRow("letra acentuada") << 0xE3 << false << true;
        QTest::newRow("fora do código de página") << 0x4E2D << false << true;
    }
    void filtraATeclaDigitada()
    {
        QFETCH(int, codigo);
        QFETCH(bool, numeric);
        QFETCH(bool, fica);
        auto tecla = static_cast<quint16>(codigo);
        const quint16 esperado = fica ? tecla : quint16(0);
        QCOMPARE(FiltrarTecla(tecla, numeric), esperado);
        QCOMPARE(tecla, esperado); // the argument carries the result, too
    }

    void oSeparadorDecimalEODoUsuario()
    {
        Separadores::Definir(Separadores::De(QLocale("en_US")));
        quint16 ponto = u'.';
        quint16 virgula = u',';
        QCOMPARE(FiltrarTecla(ponto, true), quint16(u'.'));
        QCOMPARE(FiltrarTecla(virgula, true), quint16(0));
    }

    void separadoresDaLocalidade_data()
    {
        QTest::addColumn<QChar>("decimal");
        QTest::addColumn<QChar>("milhar");
        QTest::newRow("pt_BR") << QChar(u',') << QChar(u'.');
        // Portugal groups only from five digits on, by a blank; the separator is the same question.
        QTest::newRow("pt_PT") << QChar(u',') << QChar(0x00A0);
        QTest::newRow("en_US") << QChar(u'.') << QChar(u',');
        QTest::newRow("C") << QChar(u'.') << QChar(u',');
        QTest::newRow("de_DE") << QChar(u',') << QChar(u'.');
        QTest::newRow("tr_TR") << QChar(u',') << QChar(u'.');
    }

    /// What the cook types and reads goes by her system: the separators, the filter's and the number's form.
    void separadoresDaLocalidade()
    {
        QFETCH(QChar, decimal);
        QFETCH(QChar, milhar);
        const Separadores separadores = Separadores::De(QLocale(QTest::currentDataTag()));
        QCOMPARE(separadores.decimal, decimal);
        QCOMPARE(separadores.milhar, milhar);

        Separadores::Definir(separadores);
        for (const char16_t letra : {u',', u'.'}) {
            quint16 tecla = letra;
            QCOMPARE(FiltrarTecla(tecla, true), letra == decimal ? quint16(letra) : quint16(0));
        }
        const QString umEMeio = u'1' + QString(decimal) + u'5';
        QCOMPARE(TextoDoNumero(1.5), umEMeio);
        QCOMPARE(TextoDoNumero(qint64(1234567)), "1234567"); // never grouped
        QCOMPARE(TextoDoNumero(1234567.25), "1234567" + QString(decimal) + "25");
        bool numero = false;
        QCOMPARE(NumeroDoTexto(umEMeio, &numero), 1.5);
        QVERIFY(numero);
    }

    void umTextoComposto_perdeSoOQueOFiltroRecusa()
    {
        QCOMPARE(FiltrarTexto("d'água\r", false), QString("dágua"));
        QCOMPARE(FiltrarTexto("1,5kg", true), QString("1,5"));
    }

    void aparaSoBrancos()
    {
        QCOMPARE(Aparar(u"  a b  "), QString("a b"));
        QCOMPARE(Aparar(u"\ta\r\n"), QString("\ta\r\n"));
        QCOMPARE(Aparar(u"   "), QString(""));
    }

    void controlesViramBrancos()
    {
        QCOMPARE(SemControles("Torta\r\nBcc: x\t" + QString(QChar(0)) + QChar(0x7F)),
                 QString("Torta  Bcc: x   "));
        QCOMPARE(SemControles("Pão de ló – 1ª"), QString("Pão de ló – 1ª"));
        QCOMPARE(SemControles(""), QString(""));
    }

    void removeTodosOsEnterDoFim()
    {
        QCOMPARE(RemoveEnter("Mexa.\r\n\r\n\r\n"), QString("Mexa."));
        QCOMPARE(RemoveEnter("Mexa.\r\nSirva."), QString("Mexa.\r\nSirva."));
        QCOMPARE(RemoveEnter("Mexa.\r\n "), QString("Mexa.\r\n "));
        QCOMPARE(RemoveEnter("\r\n\r\n"), QString(""));
        QCOMPARE(RemoveEnter("Mexa.\n"), QString("Mexa.\n"));
    }

    void valLeOComecoDoTexto_data()
    {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<double>("valor");
        QTest::newRow("inteiro") << "3" << 3.0;
        QTest::newRow("com resto") << "3 colheres" << 3.0;
        QTest::newRow("fração") << "2.75" << 2.75;
        QTest::newRow("vírgula acaba o número") << "2,75" << 2.0;
        QTest::newRow("negativo") << "-4" << -4.0;
        QTest::newRow("brancos") << " 1 2" << 12.0;
        QTest::newRow("nada") << "" << 0.0;
        QTest::newRow("letras") << "abc" << 0.0;
        QTest::newRow("só sinal") << "-" << 0.0;
    }
    void valLeOComecoDoTexto()
    {
        QFETCH(QString, texto);
        QFETCH(double, valor);
        QCOMPARE(Val(texto), valor);
    }

    void contaOcorrencias()
    {
        QCOMPARE(ContarOcorrencias(u"12,7,30,", u","), 3);
        QCOMPARE(ContarOcorrencias(u"aaaa", u"aa"), 2);
        QCOMPARE(ContarOcorrencias(u"abc", u""), 0);
    }

    void numerosNaNotacaoDoUsuario()
    {
        QCOMPARE(TextoDoNumero(215.5), QString("215,5"));
        QCOMPARE(TextoDoNumero(1000.0), QString("1000"));
        QCOMPARE(TextoDoValor(QVariant()), QString(""));
        QCOMPARE(TextoDoValor(QVariant(qint64(0))), QString("0"));
        QCOMPARE(TextoDoValor(QVariant("Pão")), QString("Pão"));
        QCOMPARE(Int(-1.5), -2.0);
        QCOMPARE(Int(1.9), 1.0);
        bool ok = false;
        QCOMPARE(NumeroDoTexto(" 12,5 ", &ok), 12.5);
        QVERIFY(ok);
        (void)NumeroDoTexto("1-2", &ok);
        QVERIFY(!ok);
    }

    void todoBytePassaPeloCodigoDePaginaEVolta()
    {
        QByteArray todos;
        for (int i = 0; i < 256; ++i)
            todos.append(static_cast<char>(i));
        QCOMPARE(PaginaCodigo::ParaAnsi(PaginaCodigo::DeAnsi(todos)), todos);
        QCOMPARE(PaginaCodigo::ParaAnsi(u"ção €"), QByteArray("\xE7\xE3o \x80"));
    }

    void oQueOCodigoDePaginaNaoTemVira_interrogacao()
    {
        QCOMPARE(PaginaCodigo::ParaAnsi(u"a\u4E2Db"), QByteArray("a?b"));
        QCOMPARE(PaginaCodigo::ParaAnsi(u"\U0001F370!"), QByteArray("?!"));
        QCOMPARE(PaginaCodigo::ByteDe(0x201C), 0x93);
        QCOMPARE(PaginaCodigo::ByteDe(0x4E2D), -1);
    }

    void finsDeLinhaVaoEVoltam()
    {
        QCOMPARE(ComCrLf("a\nb\r\nc\rd"), QString("a\r\nb\r\nc\r\nd"));
        QCOMPARE(ComLf("a\r\nb\rc"), QString("a\nb\nc"));
    }

    void twipsViramPixelsInteiros()
    {
        QCOMPARE(TwipsParaPixels(20), 1);
        QCOMPARE(TwipsParaPixels(220), 15);
        QCOMPARE(TwipsParaPixels(420), 28);
        QCOMPARE(TwipsParaPixels(6540), 436);
    }

    void oPedidoDoUsuarioContraCadaOperacao_data()
    {
        using Tipo = Operacao::Tipo;
        QTest::addColumn<Operacao::Tipo>("tipo");
        QTest::addColumn<QString>("pedido"); // what becomes of what the user asks for
        const auto linha = [](const char *nome, Tipo tipo, const QString &pedido) {
            QTest::newRow(nome) << tipo << pedido;
        };
        linha("partida", Tipo::Partida, "agora");
        linha("preenchimento", Tipo::Preenchimento, "depois");
        linha("rolagem", Tipo::Rolagem, "depois");
        linha("diálogo", Tipo::Dialogo, "nunca");
        linha("longa", Tipo::Longa, "nunca");
        linha("gravação", Tipo::Gravacao, "nunca");
        linha("exclusão", Tipo::Exclusao, "nunca");
        linha("importação", Tipo::Importacao, "nunca");
        linha("exportação", Tipo::Exportacao, "nunca");
        linha("e-mail", Tipo::Email, "nunca");
        linha("impressão", Tipo::Impressao, "nunca");
        linha("backup", Tipo::Backup, "nunca");
        linha("restauração", Tipo::Restauracao, "nunca");
        linha("visita", Tipo::Visita, "agora");
        linha("menu", Tipo::Menu, "agora");
    }
    void oPedidoDoUsuarioContraCadaOperacao()
    {
        QFETCH(Operacao::Tipo, tipo);
        QFETCH(QString, pedido);
        QObject dono;
        int pedidos = 0;
        int tarefas = 0;
        {
            Operacao operacao(tipo);
            QVERIFY(Operacao::EmAndamento());
            QVERIFY(Operacao::EmAndamento(tipo));
            QVERIFY(!Operacao::EmAndamentoAlemDe(tipo));
            QCOMPARE(Operacao::PodeComecar(), pedido == "agora");
            QCOMPARE(Operacao::Pedir(&dono, [&] { ++pedidos; }), pedido != "nunca");
            Operacao::QuandoLivre(&dono, [&] { ++tarefas; });
            DeixarEventosRodarem();
            QCOMPARE(pedidos, pedido == "agora" ? 1 : 0);
            QCOMPARE(tarefas, 0); // what nobody asked for waits for whatever runs
        }
        QVERIFY(!Operacao::EmAndamento());
        QCOMPARE(tarefas, 0); // and does not start in the middle of its end
        DeixarEventosRodarem();
        QCOMPARE(pedidos, pedido == "nunca" ? 0 : 1);
        QCOMPARE(tarefas, 1);
    }

    void aOperacaoDeDentroDecide()
    {
        QObject dono;
        int pedidos = 0;
        std::optional<Operacao> exclusao(Operacao::Tipo::Exclusao);
        {
            const Operacao preenchimento(Operacao::Tipo::Preenchimento);
            const Operacao menu(Operacao::Tipo::Menu);
            QVERIFY(Operacao::Pedir(&dono, [&] { ++pedidos; }));
        }
        DeixarEventosRodarem();
        QCOMPARE(pedidos, 0); // the deletion that had filled the list is not over
        exclusao->Encerrar();
        exclusao->Encerrar();
        DeixarEventosRodarem();
        QCOMPARE(pedidos, 1);
    }

    void oPedidoMaisNovoDeUmControleFicaNoLugarDoMaisVelho()
    {
        QObject botao;
        QObject outro;
        QStringList feitos;
        {
            auto perdido = std::make_unique<QObject>();
            const Operacao preenchimento(Operacao::Tipo::Preenchimento);
            Operacao::Pedir(&botao, [&] { feitos << "velho"; });
            Operacao::Pedir(&outro, [&] { feitos << "outro"; });
            Operacao::Pedir(&botao, [&] { feitos << "novo"; });
            Operacao::Pedir(perdido.get(), [&] { feitos << "de ninguém"; });
            Operacao::QuandoLivre(&botao, [&] { feitos << "uma tarefa"; });
            Operacao::QuandoLivre(&botao, [&] { feitos << "outra tarefa"; });
        }
        DeixarEventosRodarem();
        QCOMPARE(feitos, (QStringList{"outro", "novo", "uma tarefa", "outra tarefa"}));
    }

    void oQueEsperaComecaUmDepoisDoOutro()
    {
        QObject um;
        QObject dois;
        QStringList feitos;
        Operacao::QuandoLivre(&um, [&] {
            const Operacao preenchimento(Operacao::Tipo::Preenchimento);
            feitos << "um";
            DeixarEventosRodarem();
            feitos << "fim de um";
        });
        Operacao::QuandoLivre(&dois, [&] { feitos << "dois"; });
        DeixarEventosRodarem();
        QCOMPARE(feitos, (QStringList{"um", "fim de um", "dois"}));
    }

    void mostrarMudancasNaoDeixaPassarTempoNemPedidos()
    {
        int passaram = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] { ++passaram; });
        timer.start(0);
        QMetaObject::invokeMethod(
            this, [&] { ++passaram; }, Qt::QueuedConnection);
        MostrarMudancas();
        QCOMPARE(passaram, 0);
        DeixarEventosRodarem();
        QVERIFY(passaram >= 2);
    }

    void aOperacaoLongaSegueOPainelEOPonteiro()
    {
        PainelDeTeste painel;
        try {
            OperacaoLonga operacao(painel, "Trabalhando...", 2);
            QVERIFY(painel.visivel);
            QVERIFY(Ponteiro::EmEspera());
            Ponteiro::Normal(); // what a database operation in between does
            QVERIFY(Ponteiro::EmEspera());
            operacao.Avancar();
            operacao.DefinirValor(9);
            throw 1;
        } catch (int) {
        }
        QVERIFY(!painel.visivel);
        QVERIFY(!Ponteiro::EmEspera());
        QCOMPARE(painel.historia,
                 (QStringList{"mostrar Trabalhando... 0..2", "valor 1", "valor 2", "esconder"}));
    }
};

QTEST_GUILESS_MAIN(TesteBase)
#include "teste_base.moc"
