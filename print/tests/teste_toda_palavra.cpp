#include "print/LayoutReceita.h"
#include "print/TrabalhoImpressao.h"
#include "print/tests/Duplos.h"
#include "print/tests/ReceitaSorteada.h"
#include "print/tests/ReceitasDeTeste.h"
#include "print/tests/ServidorDeImpressao.h"
#include "print/tests/SuperficieDeTeste.h"

#include <QRegularExpression>
#include <QTest>

#include <algorithm>

using namespace ReceitasDeTeste;

namespace
{
QByteArray Rodar(const QString &programa, const QStringList &argumentos)
{
    QProcess processo;
    processo.start(programa, argumentos);
    if (!processo.waitForStarted())
        qFatal("%s is missing: install poppler-utils", qPrintable(programa));
    processo.waitForFinished(120000);
    return processo.readAllStandardOutput();
}

/// The first place where two word lists differ, for a message; "" when they are equal.
QString Diferenca(const QStringList &impressas, const QStringList &esperadas)
{
    const auto [impressa, esperada] =
        std::mismatch(impressas.begin(), impressas.end(), esperadas.begin(), esperadas.end());
    if (impressa == impressas.end() && esperada == esperadas.end())
        return {};
    const auto lugar = impressa - impressas.begin();
    return QString("word %1 of %2 is ...%3, not ...%4")
        .arg(lugar)
        .arg(esperadas.size())
        .arg(impressas.mid(lugar, 6).join(' '), esperadas.mid(lugar, 6).join(' '));
}

/// Takes footers and the headers of later pages away from the pages of one recipe.
/// A header that was shortened is known by its words, too: they begin the name, then the origin.
QStringList Corpo(const QStringList &paginas, const ReceitaImpressa &receita)
{
    static const QRegularExpression rodape("Pag\\.: \\d+.*$", QRegularExpression::DotMatchesEverythingOption);
    const QStringList nome = receita.Nome.split(u' ');
    const QStringList origem = QString('(' + receita.Origem + ')').split(u' ');
    QStringList corpo;
    // The header is whole once; how many of the words belong to it shows where it ends.
    const qsizetype inteiro = nome.size() + origem.size();
    for (const QString &pagina : paginas) {
        QStringList palavras = QString(pagina).remove(rodape).simplified().split(u' ', Qt::SkipEmptyParts);
        if (corpo.size() >= inteiro) {
            qsizetype i = 0;
            while (i < palavras.size() && i < nome.size() && palavras[i] == nome[i])
                ++i;
            qsizetype j = 0;
            while (i + j < palavras.size() && j < origem.size() && palavras[i + j] == origem[j])
                ++j;
            palavras = palavras.mid(i + j);
        }
        corpo << palavras;
    }
    return corpo;
}
} // namespace

/// Whatever a recipe holds, every word of it is on some page, in order, once.
class TesteTodaPalavra : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void naSuperficie_data();
    void naSuperficie();
    void naFila_data();
    void naFila();

private:
    ServidorDeImpressao m_servidor;
    bool m_haServico = false;
};

void TesteTodaPalavra::initTestCase()
{
    QFont::insertSubstitution("Verdana", "DejaVu Sans");
    if (!ServidorDeImpressao::Instalado())
        return;
    QString erro;
    m_haServico = m_servidor.Iniciar(erro, {{"A4", true, true, {"media iso_a4_210x297mm"}},
                                            {"Carta", false, true, {"media na_letter_8.5x11in"}}});
    QVERIFY2(m_haServico, qPrintable(erro));
}

void TesteTodaPalavra::naSuperficie_data()
{
    QTest::addColumn<double>("W");
    QTest::addColumn<double>("H");
    QTest::newRow("A4 em pe") << 200.0 << 280.0;
    QTest::newRow("A4 deitada") << 280.0 << 200.0;
    QTest::newRow("folha pequena") << 95.0 << 140.0;
}

/// On a surface whose letters are all equally wide: many sheets in little time.
void TesteTodaPalavra::naSuperficie()
{
    QFETCH(double, W);
    QFETCH(double, H);
    for (quint32 semente = 1; semente <= 100; ++semente) {
        SuperficieDeTeste superficie(W, H);
        superficie.seguirFonte = true;
        superficie.larguraDaLetra = 2;
        superficie.alturaDaLinha = 4.7;
        const ReceitaImpressa receita = ReceitaSorteada::Sortear(semente, semente % 2 == 0);
        const int paginas = LayoutReceita::Imprimir(superficie, receita, kSite);
        QCOMPARE(paginas, superficie.paginas);
        QStringList texto(paginas);
        for (const auto &corrida : superficie.corridas) {
            texto[corrida.pagina - 1] += corrida.texto + ' ';
            QVERIFY2(corrida.FontSize < 9 || corrida.y < H - 22 + 4.5, qPrintable(corrida.texto));
        }
        const QString diferenca = Diferenca(Corpo(texto, receita), ReceitaSorteada::Palavras(receita));
        QVERIFY2(diferenca.isEmpty(), qPrintable(QString("recipe %1: %2").arg(semente).arg(diferenca)));
        for (const auto &figura : superficie.figuras)
            QVERIFY2(H < 190 || figura.y2 < H - 16, qPrintable(QString::number(semente)));
    }
}

void TesteTodaPalavra::naFila_data()
{
    QTest::addColumn<QString>("fila");
    QTest::addColumn<int>("orientacao");
    QTest::addColumn<int>("primeira");
    QTest::addColumn<bool>("comFigura");
    int primeira = 1;
    for (const char *fila : {"A4", "Carta"}) {
        for (const int orientacao : {1, 2}) {
            for (const bool comFigura : {false, true}) {
                QTest::addRow("%s %s %s", fila, orientacao == 1 ? "em pe" : "deitada",
                              comFigura ? "com figura" : "sem figura")
                    << fila << orientacao << primeira << comFigura;
                primeira += 38;
            }
        }
    }
}

/// What arrived at the queue of a real print service, read back.
void TesteTodaPalavra::naFila()
{
    if (!m_haServico)
        QSKIP("the print scheduler is not installed (Debian: cups-daemon, cups-client)");
    QFETCH(QString, fila);
    QFETCH(int, orientacao);
    QFETCH(int, primeira);
    QFETCH(bool, comFigura);
    constexpr int kReceitas = 38; // in each of eight rows: some three hundred in all
    const qsizetype antes = m_servidor.Trabalhos().size();
    QList<int> paginas;
    {
        TrabalhoImpressao trabalho(ImpressorasDoSistema().Criar({fila, 1, orientacao, -3, 1}, "Receitas"));
        for (int i = 0; i < kReceitas; ++i) {
            if (i > 0)
                trabalho.ObjPrint().NewPage();
            paginas << LayoutReceita::Imprimir(
                trabalho.ObjPrint(), ReceitaSorteada::Sortear(static_cast<quint32>(primeira + i), comFigura),
                kSite);
        }
        trabalho.Terminar();
    }
    QTRY_COMPARE_WITH_TIMEOUT(m_servidor.Trabalhos().size(), antes + 1, 60000);
    const QString arquivo = m_servidor.Trabalhos().last().arquivo;
    // To look at the pages: GUARDAR_PAGINAS=FOLDER keeps what was printed.
    if (const QString pasta = qEnvironmentVariable("GUARDAR_PAGINAS"); !pasta.isEmpty())
        QFile::copy(arquivo, pasta + '/' + QString(QTest::currentDataTag()).replace(' ', '-') + ".pdf");
    const QString tamanho = fila == "A4" ? (orientacao == 1 ? "595 x 842" : "842 x 595")
                                         : (orientacao == 1 ? "612 x 792" : "792 x 612");
    const QString sobre = QString::fromUtf8(Rodar("pdfinfo", {arquivo}));
    QVERIFY2(sobre.contains(tamanho), qPrintable(sobre));
    QStringList folhas =
        QString::fromUtf8(Rodar("pdftotext", {"-raw", "-enc", "UTF-8", arquivo, "-"})).split(u'\f');
    folhas.removeLast(); // behind the last page's end mark
    QCOMPARE(folhas.size(), std::accumulate(paginas.begin(), paginas.end(), 0));
    for (int i = 0; i < kReceitas; ++i) {
        const ReceitaImpressa receita =
            ReceitaSorteada::Sortear(static_cast<quint32>(primeira + i), comFigura);
        const QString diferenca =
            Diferenca(Corpo(folhas.mid(0, paginas[i]), receita), ReceitaSorteada::Palavras(receita));
        QVERIFY2(diferenca.isEmpty(), qPrintable(QString("recipe %1: %2").arg(primeira + i).arg(diferenca)));
        folhas.remove(0, paginas[i]);
    }
}

QTEST_MAIN(TesteTodaPalavra)
#include "teste_toda_palavra.moc"
