#include "base/PaginaCodigo.h"
#include "exemplos/LeitorExemplos.h"
#include "exemplos/desenhos/GravadorGif.h"

#include <QDir>
#include <QImage>
#include <QImageReader>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

namespace
{
const QString PastaReceitas = PASTA_FONTES "/receitas";
const QString PastaFiguras = PASTA_FONTES "/figuras";

const QByteArray Minima = "Nome: Angu\n"
                          "Ingredientes:\n"
                          "- 1 | xícara | fubá\n"
                          "Modo:\n"
                          "Mexa sempre.\n";

QString ErroDe(const QByteArray &bytes)
{
    try {
        LeitorExemplos::Interpretar(bytes, "angu.txt");
    } catch (const ErroExemplo &erro) {
        return QString::fromUtf8(erro.what());
    }
    return QString();
}

bool CabeNaPagina(const QString &texto)
{
    return PaginaCodigo::DeAnsi(PaginaCodigo::ParaAnsi(texto)) == texto;
}
} // namespace

class TesteExemplos : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_receitas = LeitorExemplos::LerPasta(PastaReceitas); }
    void leTodosOsCampos();
    void oQueFaltaFicaVazio();
    void aceitaFimDeLinhaCrLf();
    void recusaComArquivoELinha_data();
    void recusaComArquivoELinha();
    void recusaOQueNaoEhUtf8();
    void dizQueOArquivoNaoExiste();
    void pastaVaziaEhErro();
    void pastaParaNoPrimeiroArquivoRuim();

    void haPeloMenosQuarentaReceitas();
    void cadaReceitaCabeNosCampos_data();
    void cadaReceitaCabeNosCampos();
    void nomesSaoUnicos();
    void receitasSaoVariadas();
    void figurasSaoVariadasEPequenas();
    void nenhumaFiguraSobra();

    void gifGuardaAteDuzentasECinquentaESeisCores_data();
    void gifGuardaAteDuzentasECinquentaESeisCores();
    void gifAproximaMaisCores();
    void gifDeImagemVaziaNaoExiste();

private:
    QList<ReceitaExemplo> m_receitas;
};

void TesteExemplos::leTodosOsCampos()
{
    const ReceitaExemplo receita = LeitorExemplos::Interpretar("Nome: Pão d'água\n"
                                                               "Tipo: Pães\n"
                                                               "Preparo:  3 horas: com o crescimento \n"
                                                               "Porcoes: 12\n"
                                                               "Calorias: 140 P\n"
                                                               "Figura: pao.jpg\n"
                                                               "\n"
                                                               "Ingredientes:\n"
                                                               "- 1 1/2 | kg | farinha de trigo\n"
                                                               "- a gosto | | sal\n"
                                                               "- | | manteiga para untar\n"
                                                               "Modo:\n"
                                                               "Misture\n"
                                                               "e sove: 10 minutos.\n"
                                                               "\n"
                                                               "\n"
                                                               "- Asse.\n"
                                                               "Observacao:\n"
                                                               "\n"
                                                               "Primeiro.\n"
                                                               "\n"
                                                               "Segundo.\n",
                                                               "pao.txt");
    QCOMPARE(receita.nome, QStringLiteral("Pão d'água"));
    QCOMPARE(receita.tipo, QStringLiteral("Pães"));
    QCOMPARE(receita.preparo, QStringLiteral("3 horas: com o crescimento"));
    QCOMPARE(receita.porcoes, 12);
    QCOMPARE(receita.calorias, 140);
    QCOMPARE(receita.tipoCalorias, 'P');
    QCOMPARE(receita.figura, QStringLiteral("pao.jpg"));
    QCOMPARE(receita.ingredientes.size(), 3);
    QCOMPARE(receita.ingredientes[0].quantidade, QStringLiteral("1 1/2"));
    QCOMPARE(receita.ingredientes[0].unidade, QStringLiteral("kg"));
    QCOMPARE(receita.ingredientes[0].ingrediente, QStringLiteral("farinha de trigo"));
    QCOMPARE(receita.ingredientes[1].quantidade, QStringLiteral("a gosto"));
    QCOMPARE(receita.ingredientes[1].unidade, QString());
    QCOMPARE(receita.ingredientes[2].quantidade, QString());
    QCOMPARE(receita.ingredientes[2].ingrediente, QStringLiteral("manteiga para untar"));
    QCOMPARE(receita.modo, QStringLiteral("Misture e sove: 10 minutos.\r\n- Asse."));
    QCOMPARE(receita.observacao, QStringLiteral("Primeiro.\r\nSegundo."));
}

void TesteExemplos::oQueFaltaFicaVazio()
{
    const ReceitaExemplo receita = LeitorExemplos::Interpretar(Minima, "angu.txt");
    QCOMPARE(receita.nome, QStringLiteral("Angu"));
    QVERIFY(receita.tipo.isEmpty() && receita.preparo.isEmpty() && receita.figura.isEmpty());
    QCOMPARE(receita.porcoes, 0);
    QCOMPARE(receita.calorias, 0);
    QCOMPARE(receita.tipoCalorias, '\0');
    QVERIFY(receita.observacao.isEmpty());

    const ReceitaExemplo semTipo = LeitorExemplos::Interpretar("Calorias: 90\n" + Minima, "angu.txt");
    QCOMPARE(semTipo.calorias, 90);
    QCOMPARE(semTipo.tipoCalorias, '\0');
}

void TesteExemplos::aceitaFimDeLinhaCrLf()
{
    const ReceitaExemplo receita =
        LeitorExemplos::Interpretar(QByteArray(Minima).replace("\n", "\r\n"), "angu.txt");
    QCOMPARE(receita.modo, QStringLiteral("Mexa sempre."));
    QCOMPARE(receita.ingredientes.size(), 1);
}

void TesteExemplos::recusaComArquivoELinha_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("comeco");
    const QByteArray fim = QByteArray(Minima).mid(Minima.indexOf("Ingredientes:"));
    QTest::newRow("vazio") << QByteArray() << "angu.txt: the recipe has no name";
    QTest::newRow("sem nome") << fim << "angu.txt: the recipe has no name";
    QTest::newRow("nome vazio") << "Nome: \n" + fim << "angu.txt:1: \"Nome\" has no value";
    QTest::newRow("sem ingredientes")
        << QByteArray("Nome: A\nIngredientes:\nModo:\nB\n") << "angu.txt: the recipe has no ingredients";
    QTest::newRow("sem modo") << QByteArray("Nome: A\nIngredientes:\n- | | b\nModo:\n\n")
                              << "angu.txt: the recipe has no method";
    QTest::newRow("campo repetido") << "Nome: A\nNome: B\n" + fim << "angu.txt:2: \"Nome\" is given twice";
    QTest::newRow("seção repetida") << Minima + "Ingredientes:\n"
                                    << "angu.txt:6: \"Ingredientes\" is given twice";
    QTest::newRow("campo desconhecido") << "Autor: Ana\n" + Minima << "angu.txt:1: unknown field \"Autor\"";
    QTest::newRow("sem dois-pontos") << "Angu\n" + Minima << "angu.txt:1: expected \"Field: value\"";
    QTest::newRow("porções em palavras")
        << "Porcoes: seis\n" + Minima << "angu.txt:1: \"Porcoes\" must be a whole";
    QTest::newRow("porções negativas")
        << "Porcoes: -1\n" + Minima << "angu.txt:1: \"Porcoes\" must be a whole";
    QTest::newRow("calorias quebradas")
        << "Calorias: 1,5 P\n" + Minima << "angu.txt:1: \"Calorias\" must be a whole";
    QTest::newRow("calorias de quê") << "Calorias: 90 X\n" + Minima << "angu.txt:1: calories count for R";
    QTest::newRow("calorias com sobra") << "Calorias: 90 RP\n" + Minima << "angu.txt:1: calories count for R";
    QTest::newRow("figura com caminho")
        << "Figura: ../a.jpg\n" + Minima << "angu.txt:1: a picture is named without";
    QTest::newRow("ingrediente com duas partes") << QByteArray("Nome: A\nIngredientes:\n- 1 | ovo\n")
                                                 << "angu.txt:3: expected \"- quantity | unit | ingredient\"";
    QTest::newRow("ingrediente sem hífen") << QByteArray("Nome: A\nIngredientes:\n1 | | ovo\n")
                                           << "angu.txt:3: expected \"- quantity | unit | ingredient\"";
    QTest::newRow("ingrediente sem nome")
        << QByteArray("Nome: A\nIngredientes:\n- 1 | g |\n") << "angu.txt:3: the line names no ingredient";
}

void TesteExemplos::recusaComArquivoELinha()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, comeco);
    const QString erro = ErroDe(bytes);
    QVERIFY2(erro.startsWith(comeco), qPrintable("error: " + erro));
}

void TesteExemplos::recusaOQueNaoEhUtf8()
{
    QCOMPARE(ErroDe(QByteArray(Minima).replace("fubá", "fub\xE1")),
             QStringLiteral("angu.txt:3: not UTF-8 text"));
}

void TesteExemplos::dizQueOArquivoNaoExiste()
{
    QTemporaryDir pasta;
    try {
        LeitorExemplos::Ler(pasta.filePath("nada.txt"));
        QFAIL("a file that is not there was read");
    } catch (const ErroExemplo &erro) {
        QVERIFY(QString::fromUtf8(erro.what()).startsWith(pasta.filePath("nada.txt") + ": "));
        QCOMPARE(erro.Linha(), 0);
    }
}

void TesteExemplos::pastaVaziaEhErro()
{
    QTemporaryDir pasta;
    QVERIFY_THROWS_EXCEPTION(ErroExemplo, LeitorExemplos::LerPasta(pasta.path()));
}

void TesteExemplos::pastaParaNoPrimeiroArquivoRuim()
{
    QTemporaryDir pasta;
    const auto gravar = [&pasta](const char *nome, const QByteArray &bytes) {
        QFile arquivo(pasta.filePath(nome));
        return arquivo.open(QIODevice::WriteOnly) && arquivo.write(bytes) == bytes.size();
    };
    QVERIFY(gravar("a.txt", Minima));
    QVERIFY(gravar("leia-me.md", "not a recipe"));
    QCOMPARE(LeitorExemplos::LerPasta(pasta.path()).size(), 1);
    QVERIFY(gravar("b.txt", "Nome: B\nSabor: bom\n"));
    try {
        LeitorExemplos::LerPasta(pasta.path());
        QFAIL("a bad recipe was read");
    } catch (const ErroExemplo &erro) {
        QCOMPARE(QString::fromUtf8(erro.what()), pasta.filePath("b.txt") + ":2: unknown field \"Sabor\"");
        QCOMPARE(erro.Linha(), 2);
    }
}

void TesteExemplos::haPeloMenosQuarentaReceitas()
{
    QVERIFY(m_receitas.size() >= 40);
}

void TesteExemplos::cadaReceitaCabeNosCampos_data()
{
    QTest::addColumn<QString>("arquivo");
    const QStringList nomes = QDir(PastaReceitas).entryList(QDir::Files, QDir::Name);
    for (const QString &nome : nomes)
        QTest::newRow(qPrintable(nome)) << nome;
}

void TesteExemplos::cadaReceitaCabeNosCampos()
{
    QFETCH(QString, arquivo);
    QVERIFY(QRegularExpression("^[a-z0-9]+(-[a-z0-9]+)*\\.txt$").match(arquivo).hasMatch());
    const ReceitaExemplo receita = LeitorExemplos::Ler(PastaReceitas + '/' + arquivo);
    QVERIFY(receita.nome.size() <= 60);
    QVERIFY(!receita.tipo.isEmpty() && receita.tipo.size() <= 30);
    // "()" under the name is no welcome for a newcomer.
    QVERIFY(!receita.origem.isEmpty() && receita.origem.size() <= 50);
    QVERIFY(receita.preparo.size() <= 30);
    QVERIFY(receita.ingredientes.size() >= 5 && receita.ingredientes.size() <= 14);
    QVERIFY(CabeNaPagina(receita.nome + receita.tipo + receita.origem + receita.preparo));
    QVERIFY(CabeNaPagina(receita.modo) && CabeNaPagina(receita.observacao));
    for (const IngredienteExemplo &linha : receita.ingredientes) {
        QVERIFY2(linha.quantidade.size() <= 15, qPrintable(linha.quantidade));
        QVERIFY2(linha.unidade.size() <= 20, qPrintable(linha.unidade));
        QVERIFY2(linha.ingrediente.size() <= 40, qPrintable(linha.ingrediente));
        QVERIFY(CabeNaPagina(linha.quantidade + linha.unidade + linha.ingrediente));
    }
    QVERIFY(receita.tipoCalorias == 0 || receita.calorias > 0);
    if (!receita.figura.isEmpty()) {
        QImageReader leitor(PastaFiguras + '/' + receita.figura);
        const QByteArray extensao = receita.figura.section('.', -1).toLatin1();
        QCOMPARE(leitor.format(), extensao == "jpg" ? QByteArray("jpeg") : extensao);
        const QImage figura = leitor.read();
        QVERIFY2(!figura.isNull(), qPrintable(leitor.errorString()));
        QVERIFY(figura.width() >= 200 && figura.width() <= 480);
    }
}

void TesteExemplos::nomesSaoUnicos()
{
    QSet<QString> vistos;
    for (const ReceitaExemplo &receita : m_receitas) {
        const QString nome = receita.nome.toUpper();
        QVERIFY2(!vistos.contains(nome), qPrintable(receita.nome));
        vistos.insert(nome);
    }
    QCOMPARE(vistos.size(), m_receitas.size());
}

void TesteExemplos::receitasSaoVariadas()
{
    QSet<QString> tipos;
    QSet<char> tiposDeCalorias;
    int individuais = 0, comObservacao = 0, comApostrofo = 0, comHifen = 0, semQuantidade = 0, semUnidade = 0;
    for (const ReceitaExemplo &receita : m_receitas) {
        tipos.insert(receita.tipo);
        tiposDeCalorias.insert(receita.tipoCalorias);
        individuais += receita.porcoes == 1;
        comObservacao += !receita.observacao.isEmpty();
        comApostrofo += receita.nome.contains(u'’'); // the typographic one: packages cannot check names with '
        comHifen += receita.nome.contains(u'-');
        for (const IngredienteExemplo &linha : receita.ingredientes) {
            semQuantidade += linha.quantidade.isEmpty();
            semUnidade += linha.unidade.isEmpty();
        }
    }
    QVERIFY(tipos.size() >= 12);
    QCOMPARE(tiposDeCalorias, (QSet<char>{'R', 'P', 0}));
    QVERIFY(individuais >= 2);
    QVERIFY(comObservacao >= 10);
    QVERIFY(comApostrofo >= 2);
    QVERIFY(comHifen >= 3);
    QVERIFY(semQuantidade >= 5 && semUnidade > semQuantidade);
}

void TesteExemplos::figurasSaoVariadasEPequenas()
{
    int jpg = 0, gif = 0, bmp = 0;
    for (const ReceitaExemplo &receita : m_receitas) {
        jpg += receita.figura.endsWith(".jpg");
        gif += receita.figura.endsWith(".gif");
        bmp += receita.figura.endsWith(".bmp");
    }
    QVERIFY(jpg + gif + bmp >= 12);
    QVERIFY(gif >= 2 && bmp >= 2 && jpg > gif + bmp);
    qint64 bytes = 0;
    for (const QFileInfo &figura : QDir(PastaFiguras).entryInfoList(QDir::Files))
        bytes += figura.size();
    QVERIFY(bytes < 1'500'000);
}

void TesteExemplos::nenhumaFiguraSobra()
{
    QStringList usadas;
    for (const ReceitaExemplo &receita : m_receitas) {
        if (!receita.figura.isEmpty())
            usadas.append(receita.figura);
    }
    usadas.sort();
    QCOMPARE(QDir(PastaFiguras).entryList(QDir::Files, QDir::Name), usadas);
}

void TesteExemplos::gifGuardaAteDuzentasECinquentaESeisCores_data()
{
    QTest::addColumn<QSize>("tamanho");
    QTest::addColumn<int>("cores");
    QTest::newRow("um ponto") << QSize(1, 1) << 1;
    QTest::newRow("uma cor só, códigos longos") << QSize(300, 300) << 1;
    QTest::newRow("duas cores") << QSize(17, 5) << 2;
    QTest::newRow("256 cores, tabela cheia muitas vezes") << QSize(251, 190) << 256;
}

void TesteExemplos::gifGuardaAteDuzentasECinquentaESeisCores()
{
    QFETCH(QSize, tamanho);
    QFETCH(int, cores);
    QImage imagem(tamanho, QImage::Format_RGB32);
    quint32 semente = 7;
    for (int y = 0; y < tamanho.height(); ++y) {
        for (int x = 0; x < tamanho.width(); ++x) {
            semente = semente * 1664525u + 1013904223u; // noise: LZW finds little to shorten
            const int cor = int((semente >> 16) % quint32(cores));
            imagem.setPixel(x, y, qRgb(cor, 255 - cor, (cor * 37) % 256));
        }
    }
    const QImage lida = QImage::fromData(GravarGif(imagem), "GIF");
    QCOMPARE(lida.convertToFormat(QImage::Format_RGB32), imagem);
}

void TesteExemplos::gifAproximaMaisCores()
{
    QImage imagem(64, 64, QImage::Format_RGB32);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x)
            imagem.setPixel(x, y, qRgb(x * 4, y * 4, 128));
    }
    const QImage lida = QImage::fromData(GravarGif(imagem), "GIF");
    QCOMPARE(lida.size(), imagem.size());
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            const QRgb antes = imagem.pixel(x, y), depois = lida.pixel(x, y);
            QVERIFY(qAbs(qRed(antes) - qRed(depois)) <= 16);
            QVERIFY(qAbs(qGreen(antes) - qGreen(depois)) <= 16);
            QVERIFY(qAbs(qBlue(antes) - qBlue(depois)) <= 1);
        }
    }
}

void TesteExemplos::gifDeImagemVaziaNaoExiste()
{
    QVERIFY(GravarGif(QImage()).isEmpty());
}

QTEST_MAIN(TesteExemplos)
#include "teste_exemplos.moc"
