#include "print/Impressao.h"
#include "print/TrabalhoImpressao.h"
#include "print/tests/Duplos.h"
#include "print/tests/ReceitasDeTeste.h"
#include "print/tests/ServidorDeImpressao.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"
#include "store/Figuras.h"

#include <QComboBox>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTest>

namespace
{
QByteArray Rodar(const QString &programa, const QStringList &argumentos)
{
    QProcess processo;
    processo.start(programa, argumentos);
    if (!processo.waitForStarted())
        qFatal("%s is missing: install poppler-utils", qPrintable(programa));
    processo.waitForFinished(60000);
    return processo.readAllStandardOutput();
}

int Paginas(const QString &arquivo)
{
    static const QRegularExpression linha("Pages: +(\\d+)");
    return linha.match(QString::fromLatin1(Rodar("pdfinfo", {arquivo}))).captured(1).toInt();
}
} // namespace

/// The way from the dialog to the queue of a real print service.
class TesteImpressoraReal : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void conheceAsImpressorasInstaladas();
    void asOpcoesChegamNaFila_data();
    void asOpcoesChegamNaFila();
    void tresReceitasSaoUmTrabalhoNaFila();
    void filaQueRecusaNaoDizSucesso();
    void impressoraDesconhecidaNaoVaiParaAPadrao();
    void trabalhoAbandonadoNaoChegaNaFila();
    void servicoQueCaiNoMeioNaoDizSucesso(); // last: the service stays down

private:
    void Escolher(const QString &impressora, const QString &copias = "1", const QStringList &opcoes = {});

    ServidorDeImpressao m_servidor;
    QTemporaryDir m_pasta;
    ImpressorasDoSistema m_impressoras;
    std::unique_ptr<Banco> m_banco;
    std::unique_ptr<Figuras> m_figuras;
    std::unique_ptr<Impressao> m_impressao;
    std::unique_ptr<Operador> m_operador;
    AvisosDeTeste m_avisos;
    PainelDeTeste m_painel;
};

void TesteImpressoraReal::initTestCase()
{
    if (!ServidorDeImpressao::Instalado())
        QSKIP("the print scheduler is not installed (Debian: cups-daemon, cups-client)");
    QString erro;
    QVERIFY2(m_servidor.Iniciar(erro), qPrintable(erro));
    m_banco = std::make_unique<Banco>(m_pasta.path());
    m_figuras = std::make_unique<Figuras>(*m_banco);
    for (const char *nome : {"Pão", "Bolo", "Sopa"}) {
        Comandos::Receita receita;
        receita.Nome = nome;
        receita.Modo = "Misture e asse.";
        m_banco->ExecutarSQL(Comandos::SqlInserirReceita(receita, QDate(2005, 11, 21)));
        const qint64 numero = m_banco->AbrirRecordset(Comandos::SqlMaiorNumero()).Valor(0).toLongLong();
        const QString figura = m_pasta.filePath("figura.png");
        QVERIFY(ReceitasDeTeste::Figura().save(figura));
        m_figuras->CopiarFigura(figura, numero);
        m_banco->ExecutarSQL(Comandos::SqlGravarFigura(numero));
    }
}

void TesteImpressoraReal::init()
{
    m_avisos = AvisosDeTeste();
    m_painel = PainelDeTeste();
    m_operador = std::make_unique<Operador>();
    m_impressao = std::make_unique<Impressao>(*m_banco, *m_figuras, m_avisos, m_painel, m_impressoras,
                                              ReceitasDeTeste::kSite);
}

void TesteImpressoraReal::Escolher(const QString &impressora, const QString &copias,
                                   const QStringList &opcoes)
{
    m_operador->aoAbrir = [=](frmImpressao &dialogo) {
        dialogo.findChild<QComboBox *>("cmbImpressora")->setCurrentText(impressora);
        dialogo.findChild<QLineEdit *>("txtCopies")->setText(copias);
        for (const QString &opcao : opcoes)
            dialogo.findChild<QRadioButton *>(opcao)->click();
        QTest::mouseClick(dialogo.findChild<QPushButton *>("cmdImprimir"), Qt::LeftButton);
    };
}

void TesteImpressoraReal::conheceAsImpressorasInstaladas()
{
    QStringList nomes = m_impressoras.Nomes();
    nomes.sort();
    QCOMPARE(nomes, (QStringList{"Cozinha", "Recusa", "Sala"}));
    QCOMPARE(m_impressoras.Padrao().DeviceName, QString("Cozinha"));
    QCOMPARE(m_impressoras.Configuracao("Sala").DeviceName, QString("Sala"));
    QCOMPARE(m_impressoras.Configuracao("Nenhuma").DeviceName, QString());
}

void TesteImpressoraReal::asOpcoesChegamNaFila_data()
{
    QTest::addColumn<QString>("copias");
    QTest::addColumn<QStringList>("opcoes");
    QTest::addColumn<QString>("qualidade");
    QTest::addColumn<bool>("deitada");
    QTest::addColumn<bool>("colorida");
    QTest::newRow("padrao") << "1" << QStringList{} << "4" << false << false;
    QTest::newRow("otima colorida") << "3" << QStringList{"optOtima", "optColorido"} << "5" << false << true;
    QTest::newRow("paisagem normal") << "2" << QStringList{"optPaisagem", "optNormal"} << "4" << true
                                     << false;
    QTest::newRow("baixa") << "2000" << QStringList{"optBaixa"} << "3" << false << false;
    QTest::newRow("rascunho") << "1" << QStringList{"optRascunho", "optColorido", "optPaisagem"} << "3"
                              << true << true;
}

void TesteImpressoraReal::asOpcoesChegamNaFila()
{
    QFETCH(QString, copias);
    QFETCH(QStringList, opcoes);
    QFETCH(QString, qualidade);
    QFETCH(bool, deitada);
    QFETCH(bool, colorida);
    const qsizetype antes = m_servidor.Trabalhos().size();
    Escolher("Cozinha", copias, opcoes);
    m_impressao->ImprimirDaTela(1);
    QCOMPARE(m_avisos.textos, QStringList{"Documento Impresso com Sucesso"});
    QTRY_COMPARE(m_servidor.Trabalhos().size(), antes + 1);
    const ServidorDeImpressao::Trabalho trabalho = m_servidor.Trabalhos().last();
    QCOMPARE(trabalho.titulo, QString("Receita"));
    QCOMPARE(trabalho.copias, copias);
    const QStringList chegaram = trabalho.opcoes.split(' ');
    QVERIFY2(chegaram.contains("print-quality=" + qualidade), qPrintable(trabalho.opcoes));
    QVERIFY2(chegaram.contains(colorida ? "print-color-mode=color" : "print-color-mode=monochrome"),
             qPrintable(trabalho.opcoes));

    const QImage folha = QImage::fromData(Rodar("pdftoppm", {"-png", "-r", "50", trabalho.arquivo}), "PNG");
    QVERIFY(!folha.isNull());
    QCOMPARE(folha.width() > folha.height(), deitada);
    bool temCor = false;
    for (int y = 0; y < folha.height(); ++y) {
        for (int x = 0; x < folha.width(); ++x)
            temCor |= QColor(folha.pixel(x, y)).saturation() > 60;
    }
    QCOMPARE(temCor, colorida);
}

void TesteImpressoraReal::tresReceitasSaoUmTrabalhoNaFila()
{
    const qsizetype antes = m_servidor.Trabalhos().size();
    Escolher("Sala");
    m_impressao->ImprimirSelecionadas({3, 1, 2});
    QCOMPARE(m_avisos.textos, QStringList{"Documento Impresso com Sucesso"});
    QTRY_COMPARE(m_servidor.Trabalhos().size(), antes + 1);
    const ServidorDeImpressao::Trabalho trabalho = m_servidor.Trabalhos().last();
    QCOMPARE(trabalho.titulo, QString("Receitas"));
    QCOMPARE(Paginas(trabalho.arquivo), 3);
    const QString texto = QString::fromUtf8(Rodar("pdftotext", {"-enc", "UTF-8", trabalho.arquivo, "-"}));
    QVERIFY(texto.startsWith("Sopa"));
    QCOMPARE(texto.count("Pag.: 1"), 3);
}

void TesteImpressoraReal::filaQueRecusaNaoDizSucesso()
{
    const qsizetype antes = m_servidor.Trabalhos().size();
    Escolher("Recusa");
    m_impressao->ImprimirSelecionadas({1, 2});
    QCOMPARE(
        m_avisos.textos,
        QStringList{"A Impressora \"Recusa\" não está Aceitando Documentos. O Documento não foi Impresso!"});
    QCOMPARE(m_avisos.icones, QList{Avisos::Icone::Parada});
    QCOMPARE(m_painel.diario.last(), QString("esconder"));

    // The queue's refusal is not remembered against the next job.
    Escolher("Cozinha");
    m_impressao->ImprimirDoMenu(1);
    QCOMPARE(m_avisos.textos.last(), QString("Documento Impresso com Sucesso"));
    QTRY_COMPARE(m_servidor.Trabalhos().size(), antes + 1);
}

void TesteImpressoraReal::impressoraDesconhecidaNaoVaiParaAPadrao()
{
    ImpressoraAtual atual;
    for (const char *nome : {"Nenhuma", ""}) {
        atual.DeviceName = nome;
        QVERIFY_EXCEPTION_THROWN(m_impressoras.Criar(atual, "Receita"), ErroImpressao);
    }
}

void TesteImpressoraReal::trabalhoAbandonadoNaoChegaNaFila()
{
    const qsizetype antes = m_servidor.Trabalhos().size();
    Escolher("Cozinha");
    m_impressao->ImprimirSelecionadas({1, 99}); // of which only the first is in the book
    QCOMPARE(m_avisos.icones, QList{Avisos::Icone::Parada});
    m_impressao->ImprimirDaTela(2); // were the first one in the queue, it would come before this one
    QTRY_VERIFY(m_servidor.Trabalhos().size() > antes);
    QCOMPARE(m_servidor.Trabalhos().size(), antes + 1);
    QCOMPARE(m_servidor.Trabalhos().last().titulo, QString("Receita"));
}

void TesteImpressoraReal::servicoQueCaiNoMeioNaoDizSucesso()
{
    Escolher("Cozinha");
    m_painel.aoAvancar = [this](int) { m_servidor.Parar(); };
    m_impressao->ImprimirDoMenu(1);
    QCOMPARE(m_avisos.icones, QList{Avisos::Icone::Parada});
    QCOMPARE(m_avisos.textos,
             QStringList{"O Serviço de Impressão não Responde. O Documento não foi Impresso!"});

    // From here on no printer is known, and none is made up.
    QVERIFY(m_impressoras.Nomes().isEmpty());
    QCOMPARE(m_impressoras.Padrao().DeviceName, QString());
    ImpressoraAtual atual;
    atual.DeviceName = "Cozinha";
    QVERIFY_EXCEPTION_THROWN(m_impressoras.Criar(atual, "Receita"), ErroImpressao);
}

QTEST_MAIN(TesteImpressoraReal)
#include "teste_impressora_real.moc"
