// Files made to hurt, or hurt on their way: no crash, no endless work, and what is whole is read.

#include "formatos/Importador.h"
#include "formatos/Json.h"
#include "formatos/Rascunho.h"

#include <QDirIterator>
#include <QFile>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <zip.h>
#include <zlib.h>

using namespace Formatos;

class TesteHostis : public QObject
{
    Q_OBJECT

private slots:
    void AmostrasEstragadas();
    void SemFim_data();
    void SemFim();
    void JsonFundo();
    void JsonConsertado_data();
    void JsonConsertado();
    void ZipBomba();
    void ZipComCaminhos();
    void ZipNoZip();
    void LigacaoParaFora();
    void UmaEstragadaOutraNao();
    void UmaReceitaSemTamanho();
    void FiguraQueNaoE();
};

static QList<Receita> Ler(const QByteArray &bytes, Relato &relato, const QString &nome = "receita.txt")
{
    const QTemporaryDir pasta;
    QFile arquivo(pasta.filePath(nome));
    if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(bytes) != bytes.size())
        return {};
    arquivo.close();
    return Importador(relato).Ler(arquivo.fileName());
}

static QByteArray Zip(const QList<std::pair<QByteArray, QByteArray>> &arquivos)
{
    const QTemporaryDir pasta;
    const QByteArray nome = QFile::encodeName(pasta.filePath("a.zip"));
    zip_t *zip = zip_open(nome.constData(), ZIP_CREATE, nullptr);
    for (const auto &[n, bytes] : arquivos)
        zip_file_add(zip, n.constData(), zip_source_buffer(zip, bytes.constData(), static_cast<zip_uint64_t>(bytes.size()), 0), 0);
    zip_close(zip);
    QFile arquivo(pasta.filePath("a.zip"));
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
}

void TesteHostis::AmostrasEstragadas()
{
    QRandomGenerator g(2005);
    QDirIterator it(PASTA_FONTES "/tests/data", QDir::Files, QDirIterator::Subdirectories);
    int vezes = 0;
    while (it.hasNext()) {
        QFile arquivo(it.next());
        QVERIFY(arquivo.open(QIODevice::ReadOnly));
        const QByteArray bytes = arquivo.readAll();
        for (int vez = 0; vez < 40 && !bytes.isEmpty(); ++vez, ++vezes) {
            QByteArray estragados = bytes;
            for (quint32 n = 1 + g.bounded(6U); n > 0; --n) {
                const qsizetype lugar = g.bounded(static_cast<int>(estragados.size()));
                switch (g.bounded(4)) {
                case 0: estragados[lugar] = static_cast<char>(g.bounded(256)); break;
                case 1: estragados.truncate(std::max<qsizetype>(lugar, 1)); break;
                case 2: estragados.insert(lugar, estragados.mid(lugar, 50)); break;
                default: estragados.remove(lugar, 20); break;
                }
                if (estragados.isEmpty())
                    estragados = "x";
            }
            const FonteNenhuma nada;
            Relato relato;
            const Entrada entrada{QFileInfo(arquivo).fileName(), estragados, &nada, {}};
            for (auto *leitor : {LerPagina, LerMhtml, LerJsonDePrograma, LerPaprika, LerMealMaster, LerMasterCookTexto,
                                 LerMasterCookXml, LerGourmet, LerKRecipes, LerCsv, LerCooklang, LerMarkdown, LerPacote})
                for (const Receita &receita : leitor(entrada, relato))
                    QVERIFY(!receita.Nome.isEmpty());
        }
    }
    QVERIFY(vezes > 500);
}

void TesteHostis::SemFim_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const auto caso = [](const char *nome, const QByteArray &bytes) { QTest::newRow(nome) << bytes; };
    const int n = 200'000;
    caso("tags", "<html>" + QByteArray("<a \"").repeated(n));
    caso("nested elements", "<html>" + QByteArray("<div>").repeated(n));
    caso("nested scopes", "<html>" + QByteArray("<div itemscope itemtype=\"http://schema.org/Recipe\" itemprop=\"name\">").repeated(5000));
    caso("tags in a text", "{\"name\":\"a\",\"recipeIngredient\":[\"" + QByteArray("<a '").repeated(n) + "\"]}");
    caso("emphasis", "{\"name\":\"a\",\"recipeInstructions\":[\"" + QByteArray("** ").repeated(n) + "\"],\"recipeIngredient\":[]}");
    caso("commas", "{\"name\":\"a\",\"recipeIngredient\":[" + QByteArray(", ").repeated(n) + "]}");
    caso("digits", "{\"name\":\"a\",\"recipeIngredient\":[\"" + QByteArray(n, '1') + "\"],\"recipeYield\":\"" + QByteArray(n, '1') + "\",\"totalTime\":\"P" +
                       QByteArray(n, '1') + "\"}");
    caso("cooklang braces", "---\ntitle: a\n---\n" + QByteArray("@a{").repeated(n));
    caso("cooklang comments", "---\ntitle: a\n---\n@a{1}" + QByteArray("[-").repeated(n));
    caso("headings", "MMMMM----- Recipe via Meal-Master\n Title: a\n\nMMMMM----" + QByteArray("a - ").repeated(n) + "b\n");
    caso("blank lines", "# a\n\n---\n" + QByteArray("\n ").repeated(n));
    caso("table heading", "nome" + QByteArray(n, ' ') + ";x");
    caso("columns", "nome;ingredientes" + QByteArray(n, ';') + "\na;b");
    caso("open quote", "nome;ingredientes\n\"" + QByteArray(n, 'a'));
    caso("groups", "<gourmetDoc><recipe><title>a</title><ingredient-list>" + QByteArray("<inggroup>").repeated(20'000));
    caso("entities", "<?xml version=\"1.0\"?><!DOCTYPE g [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\">"
                     "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;\">]>"
                     "<gourmetDoc><recipe><title>&d;</title><instructions>&d;&d;</instructions></recipe></gourmetDoc>");
    caso("external entity", "<?xml version=\"1.0\"?><!DOCTYPE g [<!ENTITY a SYSTEM \"file:///etc/passwd\">]>"
                            "<gourmetDoc><recipe><title>a</title><instructions>x &a; y</instructions></recipe></gourmetDoc>");
    caso("mime", "MIME-Version: 1.0\nContent-Type: multipart/related; boundary=\"a\"\n\n" + QByteArray("--a\n").repeated(n));
    caso("zeros", QByteArray(n, '\0'));
    caso("nothing", "");
}

void TesteHostis::SemFim()
{
    QFETCH(QByteArray, bytes);
    Relato relato;
    for (const Receita &receita : Ler(bytes, relato)) {
        QVERIFY(!receita.Modo.contains("root:"));
        QVERIFY(receita.Modo.size() < 1'000'000);
    }
}

void TesteHostis::JsonFundo()
{
    QVERIFY(!LerJson(QString("[").repeated(100'000)));
    QVERIFY(!LerJson(QString("[").repeated(65) + QString("]").repeated(65)));
    QVERIFY(LerJson(QString("[").repeated(64) + QString("]").repeated(64)).has_value());
}

void TesteHostis::JsonConsertado_data()
{
    QTest::addColumn<QString>("texto");
    QTest::newRow("comma") << "{\"a\":\"b\",}";
    QTest::newRow("commas in a list") << "{\"a\":\"b\",\"c\":[1,,2,]}";
    QTest::newRow("behind the end") << "{\"a\":\"b\"};";
    QTest::newRow("cdata") << "//<![CDATA[\n{\"a\":\"b\"}\n//]]>";
    QTest::newRow("comment") << "<!-- {\"a\":\"b\"} -->";
    QTest::newRow("raw control") << "{\"a\":\"b\",\"d\":\"x\ty\nz\"}";
    QTest::newRow("wrong escape") << "{\"a\":\"b\",\"d\":\"it\\'s\"}";
    QTest::newRow("comment inside") << "{/* x */\"a\":\"b\" // y\n}";
}

void TesteHostis::JsonConsertado()
{
    QFETCH(QString, texto);
    const std::optional<QJsonValue> valor = LerJson(texto);
    QVERIFY(valor);
    QCOMPARE((*valor)["a"].toString(), QString("b"));
}

void TesteHostis::ZipBomba()
{
    QList<std::pair<QByteArray, QByteArray>> arquivos;
    const QByteArray zeros(64 * 1024 * 1024, '\0');
    for (int i = 0; i < 10; ++i)
        arquivos.append({"z" + QByteArray::number(i), zeros});
    const QByteArray bomba = Zip(arquivos);
    QVERIFY(bomba.size() < 2 * 1024 * 1024);
    const Desempacotado aberto = AbrirZip(bomba);
    QVERIFY(!aberto.erro.isEmpty());
    qint64 soma = 0;
    for (const QByteArray &bytes : aberto.arquivos)
        soma += bytes.size();
    QVERIFY(soma <= qint64(512) * 1024 * 1024);
}

void TesteHostis::ZipComCaminhos()
{
    const QByteArray json = "{\"name\":\"Fora\",\"recipeIngredient\":[\"1 ovo\"]}";
    const Desempacotado aberto =
        AbrirZip(Zip({{"../fora.json", json}, {"/tmp/fora.json", json}, {"__MACOSX/._x.json", json}, {"dentro.json", json}}));
    QCOMPARE(aberto.arquivos.keys(), QStringList{"dentro.json"});
    QCOMPARE(NomeRelativo("a/b.html", "../../x"), QString());
    QCOMPARE(NomeRelativo("a/b.html", "../x"), QString("x"));
}

void TesteHostis::ZipNoZip()
{
    QByteArray zip = Zip({{"a.json", "{\"name\":\"Fundo\",\"recipeIngredient\":[\"1 ovo\"]}"}});
    Relato relato;
    QCOMPARE(Ler(Zip({{"a.zip", zip}}), relato, "x.zip").size(), 1);
    for (int i = 0; i < 5; ++i)
        zip = Zip({{"a.zip", zip}});
    QCOMPARE(Ler(zip, relato, "x.zip").size(), 0);
    QVERIFY(!relato.Avisos().isEmpty());
}

// A page may name any file; only what lies in its own folder is ever taken for its picture.
void TesteHostis::LigacaoParaFora()
{
    const QTemporaryDir pasta;
    QFile segredo(pasta.filePath("segredo.png"));
    QVERIFY(segredo.open(QIODevice::WriteOnly));
    segredo.write("\x89PNG\r\n\x1A\n segredo");
    segredo.close();
    QDir(pasta.path()).mkdir("pagina");
    QVERIFY(QFile::link(segredo.fileName(), pasta.filePath("pagina/atalho.png")));
    for (const QByteArray src : {"../segredo.png", "atalho.png", "%2e%2e/segredo.png"}) {
        QFile pagina(pasta.filePath("pagina/p.html"));
        QVERIFY(pagina.open(QIODevice::WriteOnly | QIODevice::Truncate));
        pagina.write("<html><img src=\"" + src + "\"><script type=\"application/ld+json\">{\"@type\":\"Recipe\",\"name\":\"A\",\"image\":\"" + src +
                     "\",\"recipeIngredient\":[\"1 ovo\"]}</script></html>");
        pagina.close();
        Relato relato;
        const QList<Receita> lidas = Importador(relato).Ler(pagina.fileName());
        QCOMPARE(lidas.size(), 1);
        QVERIFY(lidas[0].DadosFigura.isEmpty());
    }
}

void TesteHostis::UmaEstragadaOutraNao()
{
    Relato relato;
    const QByteArray pagina = "<html><script type=\"application/ld+json\">{\"@type\":\"Recipe\",\"name\":</script>"
                              "<script type=\"application/ld+json\">{\"@type\":\"Recipe\",\"name\":\"Inteira\",\"recipeIngredient\":[\"1 ovo\"]}</script></html>";
    const QList<Receita> lidas = Ler(pagina, relato, "p.html");
    QCOMPARE(lidas.size(), 1);
    QCOMPARE(lidas[0].Nome, QString("Inteira"));
    QVERIFY(!relato.Avisos().isEmpty());
}

void TesteHostis::UmaReceitaSemTamanho()
{
    Relato relato;
    QCOMPARE(Ler("# a\n\n---\n" + QByteArray("- *1 g* x\n").repeated(600'000) + "---\nx", relato, "a.md").size(), 0);
    QVERIFY(!relato.Avisos().isEmpty());
}

void TesteHostis::FiguraQueNaoE()
{
    Rascunho r;
    r.nome = "A";
    r.Texto("1 ovo");
    r.figura = "<script>alert(1)</script>";
    Relato relato;
    QVERIFY(Montar(r, relato)->DadosFigura.isEmpty());
    QCOMPARE(relato.FigurasFaltam(), 1);
    r.figura = "RIFF\x10\0\0\0WEBPVP8 ";
    QVERIFY(Montar(r, relato)->DadosFigura.isEmpty());
}

QTEST_GUILESS_MAIN(TesteHostis)
#include "teste_hostis.moc"
