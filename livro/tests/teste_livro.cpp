// The program from the outside: what it prints, what it leaves behind, what it answers to scripts.

#include "livro/Comandos.h"

#include "formatos/tests/ReceitasGeradas.h"

#include <QBuffer>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

class TesteLivro : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void Ajuda();
    void MauUso_data();
    void MauUso();
    void Converte();
    void NadaParaConverter();
    void PacoteNaoSomeSeFalha();
    void Lista();
    void Mostra();
    void Exporta();
    void Verifica();
    void VerificaFiguras();
    void VerificaEstragado();
    void Abre();
    void NadaMudaNoLivro();

private:
    struct Resposta {
        int estado = 0;
        QString saida, erros;
    };
    Resposta Livro(const QStringList &argumentos) const;
    QString Em(const QString &nome) const { return m_pasta.filePath(nome); }

    QTemporaryDir m_pasta;
};

TesteLivro::Resposta TesteLivro::Livro(const QStringList &argumentos) const
{
    QBuffer saida;
    QBuffer erros;
    saida.open(QIODevice::WriteOnly);
    erros.open(QIODevice::WriteOnly);
    const int estado = ::Livro::Executar(argumentos, {saida, erros, Em("programa")});
    return {estado, QString::fromUtf8(saida.data()), QString::fromUtf8(erros.data())};
}

void TesteLivro::initTestCase()
{
    QDir().mkpath(Em("livro"));
    QVERIFY(ReceitasGeradas::GravarLivro(Em("livro"), ReceitasGeradas::Gerar(12)));
}

void TesteLivro::Ajuda()
{
    const Resposta geral = Livro({"--help"});
    QCOMPARE(geral.estado, 0);
    for (const QString comando : {"converter", "abrir", "exportar", "pagina", "verificar", "listar", "mostrar"}) {
        QVERIFY(geral.saida.contains(comando));
        const Resposta ajuda = Livro({comando, "--help"});
        QCOMPARE(ajuda.estado, 0);
        QVERIFY(ajuda.saida.startsWith("Uso: livro " + comando));
        QVERIFY(ajuda.erros.isEmpty());
    }
}

void TesteLivro::MauUso_data()
{
    QTest::addColumn<QStringList>("argumentos");
    QTest::newRow("nothing") << QStringList{};
    QTest::newRow("unknown") << QStringList{"assar"};
    QTest::newRow("no output") << QStringList{"converter", "a.html"};
    QTest::newRow("no input") << QStringList{"converter", "-o", "a.lr$"};
    QTest::newRow("option") << QStringList{"listar", "--nada"};
    QTest::newRow("value") << QStringList{"exportar", "--formato"};
    QTest::newRow("format") << QStringList{"exportar", "--formato", "pdf", "-o", "x"};
    QTest::newRow("code page") << QStringList{"converter", "a", "-o", "b", "--pagina", "klingon"};
    QTest::newRow("which") << QStringList{"mostrar"};
}

void TesteLivro::MauUso()
{
    QFETCH(QStringList, argumentos);
    const Resposta resposta = Livro(argumentos);
    QCOMPARE(resposta.estado, 2);
    QVERIFY(!resposta.erros.isEmpty());
    QVERIFY(resposta.saida.isEmpty());
}

void TesteLivro::Converte()
{
    const QString pacote = Em("novas.lr$");
    const Resposta resposta = Livro({"converter", PASTA_AMOSTRAS "/html/bolo_simples.html", PASTA_AMOSTRAS "/mealmaster", "-o", pacote});
    QCOMPARE(resposta.estado, 0);
    QVERIFY2(resposta.saida.contains("bolo_simples.html: 1 receita, 1 figura faltou."), qPrintable(resposta.saida));
    QVERIFY(resposta.saida.contains("mealmaster: 3 receitas."));
    QVERIFY(resposta.erros.contains("Bolo de milho da Zuleica: A figura não está junto do arquivo"));
    const Resposta lista = Livro({"listar", "--de", pacote, "--json"});
    QCOMPARE(QJsonDocument::fromJson(lista.saida.toUtf8()).array().size(), 4);
    const Resposta json = Livro({"converter", PASTA_AMOSTRAS "/json", PASTA_AMOSTRAS "/json/mealie.json", "-o", pacote, "--json"});
    const QJsonObject objeto = QJsonDocument::fromJson(json.saida.toUtf8()).object();
    QCOMPARE(objeto["receitas"].toInt(), 6);
    QVERIFY(json.saida.contains("Há mais de uma receita com este nome."));
}

void TesteLivro::NadaParaConverter()
{
    const QString nada = Em("nada.txt");
    QFile arquivo(nada);
    QVERIFY(arquivo.open(QIODevice::WriteOnly));
    arquivo.write("uma carta qualquer");
    arquivo.close();
    const Resposta resposta = Livro({"converter", nada, Em("nao_existe"), "-o", Em("vazio.lr$")});
    QCOMPARE(resposta.estado, 1);
    QVERIFY(resposta.erros.contains("Nenhuma receita foi encontrada"));
    QVERIFY(resposta.erros.contains("não é de nenhum formato"));
    QVERIFY(resposta.erros.contains("O arquivo não existe."));
    QVERIFY(!QFile::exists(Em("vazio.lr$")));
}

void TesteLivro::PacoteNaoSomeSeFalha()
{
    const Resposta resposta = Livro({"converter", PASTA_AMOSTRAS "/csv", "-o", Em("pasta/que/nao/ha.lr$")});
    QCOMPARE(resposta.estado, 1);
    QVERIFY(resposta.erros.contains("Não foi possível gravar"));
}

void TesteLivro::Lista()
{
    const Resposta resposta = Livro({"listar", "--de", Em("livro")});
    QCOMPARE(resposta.estado, 0);
    QCOMPARE(resposta.saida.count(u'\n'), 12);
    QCOMPARE(Livro({"listar", "--de", Em("programa")}).estado, 1);
}

void TesteLivro::Mostra()
{
    const Resposta numero = Livro({"mostrar", "--de", Em("livro"), "3"});
    QCOMPARE(numero.estado, 0);
    QVERIFY(numero.saida.contains("Modo de preparar"));
    const QString nome = numero.saida.section(u'\n', 0, 0);
    const Resposta porNome = Livro({"mostrar", "--de", Em("livro"), nome.toUpper()});
    QCOMPARE(porNome.saida, numero.saida);
    const Resposta nenhuma = Livro({"mostrar", "--de", Em("livro"), "999"});
    QCOMPARE(nenhuma.estado, 1);
    QVERIFY(nenhuma.erros.contains("Não há receita \"999\"."));
}

void TesteLivro::Exporta()
{
    const Resposta uma = Livro({"exportar", "--de", Em("livro"), "--formato", "markdown", "-o", Em("uma.md"), "2"});
    QCOMPARE(uma.estado, 0);
    QVERIFY(QFile::exists(Em("uma.md")));
    const Resposta csv = Livro({"exportar", "--de", Em("livro"), "--formato", "csv", "-o", Em("l.csv")});
    QCOMPARE(csv.estado, 0);
    QVERIFY(csv.erros.contains("Este formato não leva a figura"));
    const Resposta pagina = Livro({"pagina", "--de", Em("livro"), "-o", Em("l.html"), "--figuras", "nenhuma", "--json"});
    QCOMPARE(pagina.estado, 0);
    const QJsonObject objeto = QJsonDocument::fromJson(pagina.saida.toUtf8()).object();
    QCOMPARE(objeto["receitas"].toInt(), 12);
    QVERIFY(objeto["bytes"].toInt() > 10'000);
}

void TesteLivro::Verifica()
{
    const Resposta resposta = Livro({"verificar", Em("livro")});
    QVERIFY2(resposta.estado == 0, qPrintable(resposta.saida));
    QVERIFY(resposta.saida.contains("12 receitas"));
    QVERIFY(resposta.saida.contains("Está inteiro."));
}

void TesteLivro::VerificaFiguras()
{
    QDir().mkpath(Em("falho"));
    QVERIFY(ReceitasGeradas::GravarLivro(Em("falho"), ReceitasGeradas::Gerar(12)));
    const QString primeira = QDir(Em("falho/Fotos")).entryList(QDir::Files).value(0);
    QVERIFY(QFile::rename(Em("falho/Fotos/") + primeira, Em("falho/Fotos/F7777777.img")));
    const Resposta resposta = Livro({"verificar", Em("falho")});
    QCOMPARE(resposta.estado, 1);
    QVERIFY(resposta.saida.contains("Falta a figura " + primeira));
    QVERIFY(resposta.saida.contains("Nenhuma receita tem a figura F7777777.img."));
    const Resposta json = Livro({"verificar", Em("falho"), "--json"});
    QCOMPARE(QJsonDocument::fromJson(json.saida.toUtf8())["inteiro"].toBool(), false);
}

void TesteLivro::VerificaEstragado()
{
    QFile livro(Em("livro/dadosr.lst"));
    QVERIFY(livro.open(QIODevice::ReadOnly));
    QByteArray bytes = livro.readAll();
    QDir().mkpath(Em("cortado"));
    QFile cortado(Em("cortado/dadosr.lst"));
    QVERIFY(cortado.open(QIODevice::WriteOnly));
    cortado.write(bytes.first(bytes.size() / 2));
    cortado.close();
    const Resposta resposta = Livro({"verificar", Em("cortado")});
    QCOMPARE(resposta.estado, 1);
    QCOMPARE(QFileInfo(cortado.fileName()).size(), bytes.size() / 2);
    QCOMPARE(Livro({"verificar", PASTA_AMOSTRAS "/csv/lista.csv"}).estado, 1);
}

// The program gets a package that it can read, while it runs; afterwards nothing is left behind.
void TesteLivro::Abre()
{
    const QString programa = Em("recebe");
    QFile script(programa);
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write("#!/bin/sh\ncp \"$1\" '" + Em("recebido.lr$").toUtf8() + "'\necho \"$1\" > '" + Em("caminho").toUtf8() + "'\n");
    script.close();
    QVERIFY(script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QProcess livro;
    livro.start(LIVRO, {"abrir", "--programa", programa, PASTA_AMOSTRAS "/paprika/livro.paprikarecipes"});
    QVERIFY(livro.waitForFinished(60'000));
    QCOMPARE(livro.exitCode(), 0);
    QCOMPARE(QJsonDocument::fromJson(Livro({"listar", "--de", Em("recebido.lr$"), "--json"}).saida.toUtf8()).array().size(), 2);
    QFile caminho(Em("caminho"));
    QVERIFY(caminho.open(QIODevice::ReadOnly));
    QVERIFY(!QFile::exists(QString::fromUtf8(caminho.readAll()).trimmed()));
    livro.start(LIVRO, {"abrir", "--programa", Em("nao_ha"), PASTA_AMOSTRAS "/paprika/livro.paprikarecipes"});
    QVERIFY(livro.waitForFinished(60'000));
    QCOMPARE(livro.exitCode(), 1);
}

void TesteLivro::NadaMudaNoLivro()
{
    QStringList arquivos = QDir(Em("livro")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    arquivos.sort();
    QCOMPARE(arquivos, QStringList({"Fotos", "dadosr.lst"}));
}

QTEST_GUILESS_MAIN(TesteLivro)
#include "teste_livro.moc"
