// Every operation that writes, with the disk failing or the program killed at each of its calls: the book
// stays sound, no other recipe is harmed, what is left over goes, and the same operation succeeds when the
// fault is gone. A sample of the points; with FALHAS_TODAS=1 in the environment all of them.
#include "backup/tests/Duplos.h"
#include "packages/Pacote.h"
#include "packages/Recipiente.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <cerrno>
#include <csignal>

namespace
{
constexpr int kAmostra = 2; ///< points of an operation and a kind of fault, in everyday runs

struct Saida {
    int codigo = -1; ///< exit status, minus the signal after a kill
    QString texto;
};

Saida Rodar(const QString &operacao, const QString &pasta, const QStringList &falhas = {})
{
    QProcess processo;
    QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
    if (!falhas.isEmpty()) {
        ambiente.insert("LD_PRELOAD", FALHAS);
        ambiente.insert("ASAN_OPTIONS", "verify_asan_link_order=0");
        ambiente.insert("FALHAS_PASTA", pasta);
        for (const QString &par : falhas)
            ambiente.insert(par.section('=', 0, 0), par.section('=', 1));
    }
    processo.setProcessEnvironment(ambiente);
    processo.start(OPERACOES, {operacao, pasta});
    if (!processo.waitForFinished(60'000)) {
        processo.kill();
        processo.waitForFinished();
        return {-1, "does not end"};
    }
    const bool morto = processo.exitStatus() != QProcess::NormalExit;
    return {morto ? -processo.exitCode() : processo.exitCode(),
            QString::fromUtf8(processo.readAllStandardOutput())};
}

void CopiarPasta(const QString &de, const QString &para)
{
    QDir(para).removeRecursively();
    const auto retrato = Retrato(de);
    QDir().mkpath(para);
    for (auto it = retrato.begin(); it != retrato.end(); ++it)
        if (it.value() == "(folder)")
            QDir().mkpath(para + '/' + it.key());
    for (auto it = retrato.begin(); it != retrato.end(); ++it)
        if (it.value() != "(folder)")
            QFile::copy(de + '/' + it.key(), para + '/' + it.key());
}

/// What no operation leaves behind.
QStringList Sobras(const QString &pasta)
{
    static const QRegularExpression esperado(
        "\\A(dadosr\\.lst|dadosr-\\d{8}-\\d{6}\\.lst|Fotos|Fotos/F\\d{7}\\.img|Lixeira|Lixeira/"
        "[^~].*\\.lr\\$|copia\\.bck|~temp\\.eml)\\z");
    QStringList sobras;
    const auto retrato = Retrato(pasta);
    for (auto it = retrato.begin(); it != retrato.end(); ++it)
        if (!esperado.match(it.key()).hasMatch())
            sobras += it.key();
    return sobras;
}

QString Emendar(const QStringList &linhas)
{
    return linhas.join(" / ");
}
} // namespace

class TesteFalhasDeDisco : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(QDir().mkpath(m_raiz.filePath("entrada")));
        QVERIFY(QDir().mkpath(Original()));
        const auto gravar = [this](const QString &nome, const QByteArray &bytes) {
            QFile arquivo(m_raiz.filePath("entrada/" + nome));
            QVERIFY(arquivo.open(QIODevice::WriteOnly));
            QCOMPARE(arquivo.write(bytes), bytes.size());
        };
        gravar("figura", QByteArray("uma figura nova ").repeated(30'000));
        Pacote::Receita receita;
        receita.Nome = "Do pacote";
        receita.Modo = "Asse";
        receita.Figura = "F0000009.img";
        receita.DadosFigura = QByteArray("figura do pacote ").repeated(20'000);
        receita.Ingredientes = {{"ovo", "1", ""}};
        QByteArray pacote;
        QCOMPARE(
            Recipiente::Compactar(Pacote::EscreverCabecalho() + Pacote::EscreverReceita(receita), pacote), 0);
        gravar("pacote.lr$", pacote);
        {
            QTemporaryDir outra;
            Cozinha outro(outra.path());
            outro.NovaReceita("De outro livro um", QByteArray("outra figura ").repeated(9'000));
            outro.NovaReceita("De outro livro dois", QByteArray("figura dois ").repeated(9'000));
            outro.NovaReceita("De outro livro tres", QByteArray("figura tres ").repeated(9'000));
            outro.Backup(m_raiz.filePath("entrada/outro.bck"));
        }
        Cozinha livro(Original());
        livro.NovaReceita("Primeira", QByteArray("figura um ").repeated(9'000));
        livro.NovaReceita("Segunda", QByteArray("figura dois ").repeated(9'000));
        livro.NovaReceita("Terceira", QByteArray("figura tres ").repeated(9'000));
        for (int i = 1; i <= 3; ++i)
            livro.banco.ExecutarSQL(Comandos::SqlInserirIngrediente(i, "farinha", "2", "copos"));
        m_antes = Rodar("estado", Original()).texto.split('\n', Qt::SkipEmptyParts);
        QCOMPARE(m_antes.size(), 3);
    }

    void cadaFalhaDeCadaOperacao_data()
    {
        QTest::addColumn<QString>("operacao");
        QTest::addColumn<QString>("modo");
        QTest::addColumn<int>("erro");
        for (const char *operacao :
             {"inicio", "salvar", "mudar", "excluir", "importar", "email", "backup", "restaurar"}) {
            const auto linha = [operacao](const char *nome, const char *modo, int erro) {
                QTest::addRow("%s, %s", operacao, nome) << operacao << modo << erro;
            };
            linha("sem espaço uma vez", "erro", ENOSPC);
            linha("disco cheio", "sempre", ENOSPC);
            linha("erro de leitura e escrita", "erro", EIO);
            linha("sem permissão", "erro", EACCES);
            linha("só leitura de repente", "sempre", EROFS);
            linha("escrita pela metade", "curto", ENOSPC);
            linha("morte", "morte", 0);
        }
    }

    void cadaFalhaDeCadaOperacao()
    {
        QFETCH(QString, operacao);
        QFETCH(QString, modo);
        QFETCH(int, erro);
        const QString conta = m_raiz.filePath("conta");
        const QString livro = m_raiz.filePath("livro");

        // Without a fault: how many points there are, and what comes out.
        CopiarPasta(Original(), livro);
        QFile::remove(conta);
        const Saida inteira = Rodar(operacao, livro, {"FALHAS_MODO=contar", "FALHAS_CONTA=" + conta});
        QVERIFY2(inteira.codigo == 0, qPrintable(inteira.texto));
        const int pontos = Conteudo(conta).split(' ').value(0).toInt();
        const QStringList depois = Rodar("estado", livro).texto.split('\n', Qt::SkipEmptyParts);
        if (pontos == 0) {
            QCOMPARE(operacao, "inicio"); // a start with nothing to finish changes nothing
            return;
        }

        const bool todas = qEnvironmentVariableIsSet("FALHAS_TODAS");
        const int passo = todas ? 1 : std::max(1, pontos / kAmostra);
        for (int n = 1 + (todas ? 0 : passo / 2); n <= pontos; n += passo) {
            CopiarPasta(Original(), livro);
            const Saida fim = Rodar(operacao, livro,
                                    {"FALHAS_MODO=" + modo, QString("FALHAS_VEZ=%1").arg(n),
                                     QString("FALHAS_ERRO=%1").arg(erro), "FALHAS_CONTA=" + conta});
            ++m_pontos;
            const QString onde = QString("%1 at call %2 of %3: ").arg(modo).arg(n).arg(pontos);
            if (modo == "morte")
                QVERIFY2(fim.codigo == -SIGKILL, qPrintable(onde + QString::number(fim.codigo) + fim.texto));
            else
                QVERIFY2(fim.codigo == 0 || fim.codigo == 1,
                         qPrintable(onde + QString::number(fim.codigo) + fim.texto));

            const Saida comeco = Rodar("inicio", livro);
            QVERIFY2(comeco.codigo == 0, qPrintable(onde + comeco.texto));
            const Saida estado = Rodar("estado", livro);
            QVERIFY2(estado.codigo == 0, qPrintable(onde + "the book is not sound"));
            const QStringList agora = estado.texto.split('\n', Qt::SkipEmptyParts);
            if (operacao == "restaurar") {
                // A file that cannot be moved to its place once the restore is decided is told by name.
                const bool dito = modo != "morte" && fim.texto.contains("Impossível Restaurar o Arquivo");
                QVERIFY2(agora == m_antes || agora == depois || dito,
                         qPrintable(onde + "a mixture: " + Emendar(agora)));
            } else {
                for (const QString &receita : m_antes)
                    if (!receita.startsWith("2|") || (operacao != "mudar" && operacao != "excluir"))
                        QVERIFY2(agora.contains(receita),
                                 qPrintable(onde + receita + " is gone: " + Emendar(agora)));
            }

            const Saida outraVez = Rodar(operacao, livro);
            QVERIFY2(outraVez.codigo == 0,
                     qPrintable(onde + "not the second time either: " + outraVez.texto));
            const QStringList sobras = Sobras(livro);
            QVERIFY2(sobras.isEmpty(), qPrintable(onde + "left behind: " + Emendar(sobras)));
        }
    }

    void cleanupTestCase() { qInfo("%d points", m_pontos); }

private:
    QString Original() const { return m_raiz.filePath("original"); }

    QTemporaryDir m_raiz;
    QStringList m_antes;
    int m_pontos = 0;
};

QTEST_GUILESS_MAIN(TesteFalhasDeDisco)
#include "teste_falhas_de_disco.moc"
