// Out of the book and in again: the same recipes, or the same but for what the format is known to lose.

#include "formatos/EscritorJson.h"
#include "formatos/Exportador.h"
#include "formatos/Importador.h"
#include "formatos/LinhaDeIngrediente.h"
#include "formatos/tests/ReceitasGeradas.h"

#include "store/access/LivroAccess.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Formatos;

static constexpr int kQuantas = 300;

class TesteSaidas : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void LivroNaoEscrito();
    void Json();
    void JsonNumArquivo();
    void JsonEditado();
    void Pagina();
    void PaginaPequena();
    void PaginaEmBlocos();
    void Pacote();
    void Access();
    void AccessGrande();
    void Markdown();
    void Csv();
    void CsvSemFormulas();
    void MealMaster();
    void Cooklang();
    void PastaOcupada();
    void NomeDosArquivos();

private:
    Saida Tudo() const { return {*m_livro, m_livro->Receitas(), {}}; }
    QList<Receita> Voltar(const QString &caminho);
    /// Pairs each recipe with the one of its name; the names of the generated ones are all different.
    const Receita *Da(const QList<Receita> &lidas, const QString &nome) const;

    QTemporaryDir m_pasta;
    QList<Receita> m_receitas;
    std::unique_ptr<LivroAberto> m_livro;
    Relato m_relato;
};

static QString Texto(const Receita &r)
{
    QString texto = QStringList{r.Nome, r.Classificacao, r.Modo, r.Porcoes, r.Preparo, r.Tipo_Calorias, r.Calorias, r.Tipo, r.Origem,
                                r.Observacao, r.Figura}
                        .join("|");
    for (const Linha &l : r.Ingredientes)
        texto += "\n" + l.Quantidade + "|" + l.Unidade + "|" + l.Ingrediente;
    return texto;
}

static QStringList LinhasDe(const Receita &r)
{
    QStringList linhas;
    for (const Linha &l : r.Ingredientes)
        linhas += l.Quantidade + "|" + l.Unidade + "|" + l.Ingrediente;
    return linhas;
}

void TesteSaidas::initTestCase()
{
    m_receitas = ReceitasGeradas::Gerar(kQuantas);
    QVERIFY(ReceitasGeradas::GravarLivro(m_pasta.filePath(""), m_receitas));
    m_livro = std::make_unique<LivroAberto>(m_pasta.path());
    QCOMPARE(m_livro->Receitas().size(), kQuantas);
}

QList<Receita> TesteSaidas::Voltar(const QString &caminho)
{
    Relato relato;
    return Importador(relato).Ler(caminho);
}

const Receita *TesteSaidas::Da(const QList<Receita> &lidas, const QString &nome) const
{
    for (const Receita &r : lidas)
        if (r.Nome == nome)
            return &r;
    return nullptr;
}

// Everything, pictures to the byte.
#define MESMAS(lidas) \
    do { \
        const QList<Receita> voltaram = (lidas); \
        QCOMPARE(voltaram.size(), kQuantas); \
        for (const Receita &original : std::as_const(m_receitas)) { \
            const Receita *outra = Da(voltaram, original.Nome); \
            QVERIFY2(outra, qPrintable(original.Nome)); \
            Receita mesma = *outra; \
            mesma.Figura = original.Figura; \
            QCOMPARE(Texto(mesma), Texto(original)); \
            QCOMPARE(outra->DadosFigura, original.DadosFigura); \
        } \
    } while (false)

void TesteSaidas::LivroNaoEscrito()
{
    QFile livro(m_pasta.filePath("dadosr.lst"));
    QVERIFY(livro.open(QIODevice::ReadOnly));
    const QByteArray antes = livro.readAll();
    livro.seek(0);
    const LivroAberto outro(m_pasta.path());
    QCOMPARE(outro.Receitas().size(), kQuantas);
    QCOMPARE(livro.readAll(), antes);
    QVERIFY(outro.Integridade().isEmpty());
    QVERIFY_EXCEPTION_THROWN(LivroAberto(m_pasta.filePath("Fotos")), ErroLivro);
    QVERIFY(!QFile::exists(m_pasta.filePath("Fotos/dadosr.lst")));
}

void TesteSaidas::Json()
{
    const QString saida = m_pasta.filePath("json");
    QCOMPARE(Exportar(Tudo(), "json", saida, m_relato), QString());
    MESMAS(Voltar(saida));
}

void TesteSaidas::JsonNumArquivo()
{
    const QString saida = m_pasta.filePath("livro.json");
    QCOMPARE(Exportar(Tudo(), "json", saida, m_relato), QString());
    MESMAS(Voltar(saida));
}

// What another program changed is what it says; the rest stays as it was.
void TesteSaidas::JsonEditado()
{
    Receita r = m_receitas[0];
    r.Porcoes = "4";
    r.Calorias = "800,5";
    r.Tipo_Calorias = "R";
    QJsonObject objeto = ParaSchema(r);
    objeto[kChaveNossa] = ChaveNossa(r);
    objeto["name"] = "Outro nome";
    objeto["recipeIngredient"] = QJsonArray{"3 ovos"};
    QFile arquivo(m_pasta.filePath("editado.json"));
    QVERIFY(arquivo.open(QIODevice::WriteOnly));
    arquivo.write(QJsonDocument(objeto).toJson());
    arquivo.close();
    const QList<Receita> lidas = Voltar(arquivo.fileName());
    QCOMPARE(lidas.size(), 1);
    QCOMPARE(lidas[0].Nome, QString("Outro nome"));
    QCOMPARE(LinhasDe(lidas[0]), QStringList{"3||ovos"});
    QCOMPARE(lidas[0].Modo, r.Modo);
    QCOMPARE(lidas[0].Calorias, QString("800,5"));
    QCOMPARE(lidas[0].Tipo_Calorias, QString("R"));
}

void TesteSaidas::Pagina()
{
    const QString saida = m_pasta.filePath("livro.html");
    QCOMPARE(GravarPagina(Tudo(), saida, "todas", m_relato), QString());
    MESMAS(Voltar(saida));
    QFile arquivo(saida);
    QVERIFY(arquivo.open(QIODevice::ReadOnly));
    const QByteArray pagina = arquivo.readAll();
    QVERIFY(!pagina.contains("src=\"http"));
    QVERIFY(!pagina.contains("@import"));
}

// What the page is beside its recipes stays small.
void TesteSaidas::PaginaPequena()
{
    const QString saida = m_pasta.filePath("uma.html");
    QCOMPARE(GravarPagina({*m_livro, m_livro->Receitas().mid(0, 1), {}}, saida, "nenhuma", m_relato), QString());
    QVERIFY2(QFileInfo(saida).size() < 60 * 1024, qPrintable(QString::number(QFileInfo(saida).size())));
}

// Many recipes stand in several scripts, for readers take none of any length.
void TesteSaidas::PaginaEmBlocos()
{
    QTemporaryDir pasta;
    QList<Receita> receitas = ReceitasGeradas::Gerar(1100, 5);
    for (Receita &r : receitas) {
        r.Figura.clear();
        r.DadosFigura.clear();
    }
    QVERIFY(ReceitasGeradas::GravarLivro(pasta.path(), receitas));
    const LivroAberto livro(pasta.path());
    const QString saida = pasta.filePath("livro.html");
    QCOMPARE(GravarPagina({livro, livro.Receitas(), {}}, saida, "todas", m_relato), QString());
    QFile arquivo(saida);
    QVERIFY(arquivo.open(QIODevice::ReadOnly));
    QCOMPARE(arquivo.readAll().count("application/ld+json\">"), 2);
    QCOMPARE(Voltar(saida).size(), 1100);
}

void TesteSaidas::Pacote()
{
    const QString saida = m_pasta.filePath("tudo.lr$");
    QCOMPARE(Exportar(Tudo(), "pacote", saida, m_relato), QString());
    MESMAS(Voltar(saida));
    const LivroAberto pacote(saida);
    QCOMPARE(pacote.Receitas().size(), kQuantas);
}

void TesteSaidas::Access()
{
    const QString saida = m_pasta.filePath("antigo/dadosr.lst");
    QDir().mkpath(m_pasta.filePath("antigo"));
    QCOMPARE(Exportar(Tudo(), "access", saida, m_relato), QString());
    const LivroAberto antigo(m_pasta.filePath("antigo"));
    QVERIFY(antigo.Qual() == LivroAberto::Especie::Access);
    QCOMPARE(antigo.Receitas().size(), kQuantas);
    for (qsizetype i = 0; i < kQuantas; ++i) {
        const ReceitaDoLivro &a = antigo.Receitas()[i];
        const ReceitaDoLivro &b = m_livro->Receitas()[i];
        QCOMPARE(a.numero, b.numero);
        QCOMPARE(Texto(a.receita), Texto(b.receita));
        QCOMPARE(a.data, b.data);
        QCOMPARE(antigo.Figura(a), m_livro->Figura(b));
    }
    // The other reader of such files says the same.
    const QString referee = QStandardPaths::findExecutable("mdb-export");
    if (referee.isEmpty())
        QSKIP("mdbtools is not installed");
    QProcess mdb;
    mdb.start(referee, {"-d", "\t", "-R", "\x1e", "-Q", saida, "Ingredientes"});
    QVERIFY(mdb.waitForFinished());
    const QStringList fileiras = QString::fromUtf8(mdb.readAllStandardOutput()).split(QChar(0x1e), Qt::SkipEmptyParts);
    qsizetype linhas = 0;
    QList<ReceitaDoLivro> porNumero = m_livro->Receitas();
    std::sort(porNumero.begin(), porNumero.end(), [](const auto &a, const auto &b) { return a.numero < b.numero; });
    for (const ReceitaDoLivro &r : std::as_const(porNumero))
        for (const Linha &l : r.receita.Ingredientes) {
            ++linhas;
            QVERIFY(linhas < fileiras.size());
            QCOMPARE(fileiras[linhas].split('\t').mid(1).join("|"),
                     QStringList({QString::number(r.numero), l.Ingrediente, l.Quantidade, l.Unidade}).join("|"));
        }
    QCOMPARE(fileiras.size(), linhas + 1);
    mdb.start(referee, {"-d", "\t", "-R", "\x1e", "-Q", saida, "Receitas"});
    QVERIFY(mdb.waitForFinished());
    const QStringList receitas = QString::fromUtf8(mdb.readAllStandardOutput()).split(QChar(0x1e), Qt::SkipEmptyParts);
    QCOMPARE(receitas.size(), kQuantas + 1);
    for (qsizetype i = 0; i < kQuantas; ++i) {
        const QStringList colunas = receitas[i + 1].split('\t');
        QCOMPARE(colunas.value(1), porNumero[i].receita.Nome);
        QCOMPARE(colunas.value(4), porNumero[i].receita.Modo);
    }
}

// More pages than a map holds in itself, index trees of two levels, chains of long values.
void TesteSaidas::AccessGrande()
{
    QTemporaryDir pasta;
    QList<Receita> receitas = ReceitasGeradas::Gerar(20, 3);
    receitas[4].Modo = QString("Mexa – e prove. ").repeated(6000).trimmed();
    receitas[5].Observacao = QString("Muito bom. ").repeated(900).trimmed();
    for (int i = 0; i < 130; ++i)
        for (int k = 0; k < 5; ++k)
            receitas[k].Ingredientes.append({"farinha €", "1", "kg"});
    for (int i = 0; i < 60; ++i) {
        Receita r = receitas[6];
        r.Figura.clear();
        r.DadosFigura.clear();
        r.Nome += " repetida " + QString::number(i);
        r.Modo = QString("Passo %1 – assim. ").arg(i).repeated(3000).trimmed();
        receitas += r;
    }
    QVERIFY(ReceitasGeradas::GravarLivro(pasta.path(), receitas));
    const LivroAberto livro(pasta.path());
    const QString saida = pasta.filePath("velho.lst");
    QCOMPARE(Exportar({livro, livro.Receitas(), {}}, "access", saida, m_relato), QString());
    QVERIFY(QFileInfo(saida).size() > 512 * 4096);
    const LivroAberto antigo(saida);
    QCOMPARE(antigo.Receitas().size(), livro.Receitas().size());
    for (qsizetype i = 0; i < livro.Receitas().size(); ++i)
        QCOMPARE(Texto(antigo.Receitas()[i].receita), Texto(livro.Receitas()[i].receita));
}

void TesteSaidas::Markdown()
{
    const QString saida = m_pasta.filePath("markdown");
    QCOMPARE(Exportar(Tudo(), "markdown", saida, m_relato), QString());
    const QList<Receita> lidas = Voltar(saida);
    QCOMPARE(lidas.size(), kQuantas);
    for (const Receita &r : std::as_const(m_receitas)) {
        const QString nome = QString(r.Nome).replace(u'\'', QChar(0x2019));
        const Receita *outra = Da(lidas, nome);
        QVERIFY2(outra, qPrintable(nome));
        QCOMPARE(outra->Classificacao, r.Classificacao);
        QCOMPARE(outra->Porcoes, SemZero(r.Porcoes));
        QCOMPARE(outra->Modo, r.Modo);
        QCOMPARE(LinhasDe(*outra), LinhasDe(r));
        QCOMPARE(outra->DadosFigura, r.DadosFigura);
        QVERIFY(outra->Observacao.startsWith(r.Observacao));
        QVERIFY(r.Origem.isEmpty() || outra->Observacao.contains("Origem: " + r.Origem));
    }
}

void TesteSaidas::Csv()
{
    const QString saida = m_pasta.filePath("livro.csv");
    QCOMPARE(Exportar(Tudo(), "csv", saida, m_relato), QString());
    const QList<Receita> lidas = Voltar(saida);
    QCOMPARE(lidas.size(), kQuantas);
    for (const Receita &r : std::as_const(m_receitas)) {
        const Receita *outra = Da(lidas, QString(r.Nome).replace(u'\'', QChar(0x2019)));
        QVERIFY2(outra, qPrintable(r.Nome));
        QCOMPARE(outra->Classificacao, r.Classificacao);
        QCOMPARE(outra->Porcoes, SemZero(r.Porcoes));
        QCOMPARE(outra->Preparo, r.Preparo);
        QCOMPARE(outra->Calorias, SemZero(r.Calorias));
        QCOMPARE(outra->Tipo_Calorias, SemZero(r.Calorias).isEmpty() ? QString() : r.Tipo_Calorias);
        QCOMPARE(outra->Origem, r.Origem);
        QCOMPARE(outra->Modo, r.Modo);
        QCOMPARE(outra->Observacao, r.Observacao);
        QCOMPARE(LinhasDe(*outra), LinhasDe(r));
    }
}

void TesteSaidas::CsvSemFormulas()
{
    Receita r;
    r.Nome = "=1+1";
    QVERIFY(ParaCsv(r).startsWith("\" =1+1\";"));
}

void TesteSaidas::MealMaster()
{
    const QString saida = m_pasta.filePath("livro.mmf");
    for (const QByteArray pagina : {"", "850"}) {
        Saida tudo = Tudo();
        tudo.pagina = pagina;
        QCOMPARE(Exportar(tudo, "mealmaster", saida, m_relato), QString());
        Relato relato;
        const QList<Receita> lidas = Importador(relato, pagina).Ler(saida);
        QCOMPARE(lidas.size(), kQuantas);
        for (const Receita &r : std::as_const(m_receitas)) {
            const Receita *outra = Da(lidas, QString(r.Nome).replace(u'\'', QChar(0x2019)));
            QVERIFY2(outra, qPrintable(r.Nome));
            QCOMPARE(outra->Classificacao, r.Classificacao);
            QCOMPARE(outra->Porcoes, SemZero(r.Porcoes));
            QCOMPARE(outra->Origem, r.Origem);
            QCOMPARE(LinhasDe(*outra), LinhasDe(r));
            if (pagina.isEmpty())
                QVERIFY2(outra->Modo.startsWith(r.Modo), qPrintable(outra->Modo + "\n--\n" + r.Modo));
        }
    }
}

void TesteSaidas::Cooklang()
{
    const QString saida = m_pasta.filePath("cooklang");
    QCOMPARE(Exportar(Tudo(), "cooklang", saida, m_relato), QString());
    const QList<Receita> lidas = Voltar(saida);
    QCOMPARE(lidas.size(), kQuantas);
    for (const Receita &r : std::as_const(m_receitas)) {
        const Receita *outra = Da(lidas, QString(r.Nome).replace(u'\'', QChar(0x2019)));
        QVERIFY2(outra, qPrintable(r.Nome));
        QCOMPARE(outra->Classificacao, r.Classificacao);
        QCOMPARE(outra->Porcoes, SemZero(r.Porcoes));
        QCOMPARE(outra->Preparo, r.Preparo);
        QCOMPARE(outra->Calorias, SemZero(r.Calorias));
        QCOMPARE(outra->Origem, r.Origem);
        QCOMPARE(outra->Observacao, r.Observacao);
        QCOMPARE(outra->DadosFigura, r.DadosFigura);
        QVERIFY2(outra->Modo.endsWith(r.Modo), qPrintable(outra->Modo + "\n--\n" + r.Modo));
        // An ingredient that comes again without a quantity is only text: the second of them is lost.
        QStringList esperadas;
        QStringList vistas;
        for (const Linha &l : r.Ingredientes) {
            if (l.Quantidade.isEmpty() && l.Unidade.isEmpty() && !ETitulo(l) && vistas.contains(l.Ingrediente))
                continue;
            vistas += l.Ingrediente;
            esperadas += l.Quantidade + "|" + l.Unidade + "|" + l.Ingrediente;
        }
        QCOMPARE(LinhasDe(*outra), esperadas);
    }
}

void TesteSaidas::PastaOcupada()
{
    const QString saida = m_pasta.filePath("ocupada");
    QDir().mkpath(saida);
    QFile arquivo(saida + "/meu.txt");
    QVERIFY(arquivo.open(QIODevice::WriteOnly));
    QVERIFY(!Exportar(Tudo(), "json", saida, m_relato).isEmpty());
    QCOMPARE(QDir(saida).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{"meu.txt"});
    QVERIFY(!Exportar(Tudo(), "nada", saida, m_relato).isEmpty());
}

void TesteSaidas::NomeDosArquivos()
{
    QCOMPARE(NomeDeArquivo("a/b:c"), QString("a b c"));
    QCOMPARE(NomeDeArquivo("../.."), QString("receita"));
    QCOMPARE(NomeDeArquivo("???"), QString("receita"));
    QCOMPARE(NomeDeArquivo(QString(300, u'x')).size(), 100);
}

QTEST_GUILESS_MAIN(TesteSaidas)
#include "teste_saidas.moc"
