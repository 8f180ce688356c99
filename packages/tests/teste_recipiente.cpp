#include "packages/Recipiente.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <memory>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

namespace
{
QByteArray Mistura(int tamanho)
{
    QRandomGenerator acaso(7);
    QByteArray bytes;
    while (bytes.size() < tamanho)
        bytes += acaso.bounded(3) ? QByteArray("farinha de trigo ") : QByteArray(1, char(acaso.bounded(256)));
    return bytes.left(tamanho);
}

QByteArray Trailer(const QByteArray &campo)
{
    return QByteArray(5, '\0') + campo.leftJustified(12, '\0');
}

QByteArray Fluxo(const QByteArray &bytes, int nivel)
{
    auto m = compressBound(static_cast<uLong>(bytes.size()));
    QByteArray fluxo(static_cast<qsizetype>(m), '\0');
    compress2(reinterpret_cast<Bytef *>(fluxo.data()), &m, reinterpret_cast<const Bytef *>(bytes.constData()),
              static_cast<uLong>(bytes.size()), nivel);
    return fluxo.left(static_cast<qsizetype>(m));
}

void Gravar(const QString &caminho, const QByteArray &bytes)
{
    QFile arquivo(caminho);
    QVERIFY(arquivo.open(QIODevice::WriteOnly));
    QCOMPARE(arquivo.write(bytes), bytes.size());
}

QByteArray Ler(const QString &caminho)
{
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray("(não há)");
}
} // namespace

class TesteRecipiente : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void milBytesTerminamNoTrailerPrometido();
    void oFluxoEODeUmaChamadaDeCompress2();
    void capacidadeArredondaAoParMaisProximo();
    void entradaVaziaTemSucessoESaidaIntacta();
    void nivelImpossivelEErroDoZlib();
    void abreQualquerNivel_data();
    void abreQualquerNivel();
    void desfazNBytesMaisUmZero();

    void recusa_data();
    void recusa();
    void comprimentoMaiorQueOTextoEnchemSeDeZeros();
    void bytesDepoisDoFluxoSaoIgnorados();
    void bombaDeZerosERecusadaAcimaDoLimite();
    void gigabyteDeZerosAtrasDeFluxoPequeno();

    void arquivoParaArquivoVaiEVolta();
    void arquivoVazioDaArquivoVazio();
    void caminhoVazioEFalha();
    void origemInexistenteE53();
    void pastaEDispositivoNaoSaoLidos();
    void origemIlegivelERecusada();
    void destinoExistenteSoComLicenca();
    void falhaDeixaODestinoComoEstava();
    void discoCheioEFalhaSemRestos_data();
    void discoCheioEFalhaSemRestos();

private:
    QString Caminho(const QString &nome) const { return m_pasta->filePath(nome); }
    std::unique_ptr<QTemporaryDir> m_pasta;
};

void TesteRecipiente::init()
{
    m_pasta = std::make_unique<QTemporaryDir>();
    QVERIFY(m_pasta->isValid());
}

void TesteRecipiente::milBytesTerminamNoTrailerPrometido()
{
    QByteArray recipiente;
    QCOMPARE(Recipiente::Compactar(Mistura(1000), recipiente), Recipiente::kSucesso);
    QCOMPARE(recipiente.last(17), QByteArray("\0\0\0\0\0"
                                             "1000"
                                             "\0\0\0\0\0\0\0\0",
                                             17));
    QByteArray saida;
    QCOMPARE(Recipiente::Descompactar(recipiente, saida), Recipiente::kSucesso);
    QCOMPARE(saida.size(), 1001);
    QCOMPARE(saida.back(), '\0');
}

void TesteRecipiente::oFluxoEODeUmaChamadaDeCompress2()
{
    for (const int tamanho : {1, 2, 57, 1000, 70000, 300000}) {
        const QByteArray bytes = Mistura(tamanho);
        QByteArray recipiente;
        QCOMPARE(Recipiente::Compactar(bytes, recipiente), Recipiente::kSucesso);
        QCOMPARE(recipiente, Fluxo(bytes, 9) + Trailer(QByteArray::number(tamanho)));
    }
    // Bytes that do not shrink fit as well.
    QByteArray acaso(100000, '\0');
    std::generate(acaso.begin(), acaso.end(),
                  [gerador = QRandomGenerator(1)]() mutable { return char(gerador.bounded(256)); });
    QByteArray recipiente;
    QCOMPARE(Recipiente::Compactar(acaso, recipiente), Recipiente::kSucesso);
    QVERIFY(recipiente.size() > acaso.size());
}

void TesteRecipiente::capacidadeArredondaAoParMaisProximo()
{
    QCOMPARE(Recipiente::Capacidade(1), 16);      // 16.001
    QCOMPARE(Recipiente::Capacidade(500), 516);   // 515.5
    QCOMPARE(Recipiente::Capacidade(1500), 1516); // 1516.5
    QCOMPARE(Recipiente::Capacidade(1000), 1016);
}

void TesteRecipiente::entradaVaziaTemSucessoESaidaIntacta()
{
    QByteArray saida = "como estava";
    QCOMPARE(Recipiente::Compactar({}, saida), Recipiente::kSucesso);
    QCOMPARE(saida, QByteArray("como estava"));
    QCOMPARE(Recipiente::Descompactar({}, saida), Recipiente::kSucesso);
    QCOMPARE(saida, QByteArray());
}

void TesteRecipiente::nivelImpossivelEErroDoZlib()
{
    QByteArray saida = "como estava";
    QCOMPARE(Recipiente::Compactar("bolo", saida, 10), Z_STREAM_ERROR);
    QCOMPARE(saida, QByteArray("como estava"));
}

void TesteRecipiente::abreQualquerNivel_data()
{
    QTest::addColumn<int>("nivel");
    for (int nivel = 0; nivel <= 9; ++nivel)
        QTest::addRow("nível %d", nivel) << nivel;
}

void TesteRecipiente::abreQualquerNivel()
{
    QFETCH(int, nivel);
    const QByteArray bytes = Mistura(300000);
    QByteArray saida;
    QCOMPARE(Recipiente::Descompactar(Fluxo(bytes, nivel) + Trailer("300000"), saida), Recipiente::kSucesso);
    QCOMPARE(saida, bytes + '\0');
}

void TesteRecipiente::desfazNBytesMaisUmZero()
{
    for (const int tamanho : {1, 57, 262143, 262144, 262145, 600000}) {
        const QByteArray bytes = Mistura(tamanho);
        QByteArray recipiente;
        QCOMPARE(Recipiente::Compactar(bytes, recipiente), Recipiente::kSucesso);
        Gravar(Caminho("a.lr$"), recipiente);
        int erro = -99;
        QVERIFY(Recipiente::DescompactarArquivo(Caminho("a.lr$"), Caminho("a.lrs"), erro, true));
        QCOMPARE(Ler(Caminho("a.lrs")), bytes + '\0');
    }
}

void TesteRecipiente::recusa_data()
{
    const QByteArray bytes = Mistura(5000);
    const QByteArray fluxo = Fluxo(bytes, 9);
    QByteArray torto = fluxo;
    torto[torto.size() / 2] = static_cast<char>(torto[torto.size() / 2] ^ 0x55);
    QByteArray semSoma = fluxo;
    semSoma.back() = static_cast<char>(semSoma.back() ^ 1);
    QByteArray dicionario = fluxo;
    dicionario[1] = char(0xF9); // 0x78 0xF9: asks for a preset dictionary

    QTest::addColumn<QByteArray>("recipiente");
    QTest::addColumn<int>("codigo");
    const int trailer = Recipiente::kTrailerInvalido;
    QTest::newRow("um byte") << QByteArray("x") << trailer;
    QTest::newRow("16 bytes") << QByteArray(16, '\0') << trailer;
    QTest::newRow("17 zeros") << QByteArray(17, '\0') << trailer;
    QTest::newRow("só o trailer") << Trailer("5000") << trailer;
    QTest::newRow("texto qualquer") << QByteArray("Isto é uma carta, e não um pacote de receitas.")
                                    << trailer;
    QTest::newRow("sem trailer") << fluxo << trailer;
    QTest::newRow("trailer com quatro zeros")
        << fluxo + "x" + QByteArray(4, '\0') + QByteArray("5000").leftJustified(12, '\0') << trailer;
    QTest::newRow("cortado") << (fluxo + Trailer("5000")).chopped(1) << trailer;
    QTest::newRow("cortado ao meio") << (fluxo + Trailer("5000")).first(fluxo.size() / 2) << trailer;
    QTest::newRow("comprimento vazio") << fluxo + Trailer("") << trailer;
    QTest::newRow("comprimento negativo") << fluxo + Trailer("-5000") << trailer;
    QTest::newRow("comprimento com sinal") << fluxo + Trailer("+5000") << trailer;
    QTest::newRow("comprimento com espaço") << fluxo + Trailer(" 5000") << trailer;
    QTest::newRow("comprimento com letra") << fluxo + Trailer("5k") << trailer;
    QTest::newRow("doze noves") << fluxo + Trailer("999999999999") << trailer;
    QTest::newRow("onze noves") << fluxo + Trailer("99999999999") << trailer;
    QTest::newRow("mais do que o fluxo pode encher")
        << fluxo + Trailer(QByteArray::number((fluxo.size() + 1) * 1032)) << trailer;
    QTest::newRow("zeros atrás do fluxo não enchem nada")
        << fluxo + QByteArray(2000000, '\0') + Trailer("1000000000") << trailer;
    QTest::newRow("comprimento zero") << fluxo + Trailer("0") << Z_DATA_ERROR;
    QTest::newRow("comprimento curto demais") << fluxo + Trailer("4999") << Z_BUF_ERROR;
    QTest::newRow("fluxo cortado") << fluxo.chopped(20) + Trailer("5000") << Z_DATA_ERROR;
    QTest::newRow("fluxo sem o último byte") << fluxo.chopped(1) + Trailer("5000") << Z_BUF_ERROR;
    QTest::newRow("fluxo danificado") << torto + Trailer("5000") << Z_DATA_ERROR;
    QTest::newRow("soma de controle errada") << semSoma + Trailer("5000") << Z_DATA_ERROR;
    QTest::newRow("fluxo com dicionário") << dicionario + Trailer("5000") << Z_DATA_ERROR;
    QTest::newRow("fluxo de outro formato")
        << QByteArray("PK\3\4 isto é outro arquivo") + Trailer("5000") << Z_DATA_ERROR;
}

void TesteRecipiente::recusa()
{
    QFETCH(QByteArray, recipiente);
    QFETCH(int, codigo);
    QByteArray saida;
    QCOMPARE(Recipiente::Descompactar(recipiente, saida), codigo);
    QCOMPARE(saida, QByteArray());

    Gravar(Caminho("a.lr$"), recipiente);
    Gravar(Caminho("a.lrs"), "como estava");
    int erro = 0;
    QVERIFY(!Recipiente::DescompactarArquivo(Caminho("a.lr$"), Caminho("a.lrs"), erro, true));
    QCOMPARE(erro, codigo);
    QCOMPARE(Ler(Caminho("a.lrs")), QByteArray("como estava"));
    QCOMPARE(QDir(m_pasta->path()).entryList(QDir::Files), QStringList({"a.lr$", "a.lrs"}));
}

void TesteRecipiente::comprimentoMaiorQueOTextoEnchemSeDeZeros()
{
    const QByteArray recipiente = Fluxo(Mistura(5000), 9) + Trailer("6000");
    QByteArray saida;
    QCOMPARE(Recipiente::Descompactar(recipiente, saida), Recipiente::kSucesso);
    QCOMPARE(saida, Mistura(5000) + QByteArray(1001, '\0'));

    Gravar(Caminho("a.lr$"), recipiente);
    int erro = -99;
    QVERIFY(Recipiente::DescompactarArquivo(Caminho("a.lr$"), Caminho("a.lrs"), erro, true));
    QCOMPARE(Ler(Caminho("a.lrs")), saida);
}

void TesteRecipiente::bytesDepoisDoFluxoSaoIgnorados()
{
    const QByteArray recipiente = Fluxo(Mistura(5000), 9) + "sobras" + Trailer("5000");
    QByteArray saida;
    QCOMPARE(Recipiente::Descompactar(recipiente, saida), Recipiente::kSucesso);
    QCOMPARE(saida, Mistura(5000) + '\0');

    Gravar(Caminho("a.lr$"), recipiente);
    int erro = -99;
    QVERIFY(Recipiente::DescompactarArquivo(Caminho("a.lr$"), Caminho("a.lrs"), erro, true));
    QCOMPARE(Ler(Caminho("a.lrs")), saida);
}

void TesteRecipiente::bombaDeZerosERecusadaAcimaDoLimite()
{
    const QByteArray bomba = Fluxo(QByteArray(20'000'000, '\0'), 9) + Trailer("20000000");
    QVERIFY(bomba.size() < 20'000);
    QByteArray saida;
    QCOMPARE(Recipiente::Descompactar(bomba, saida, 19'999'999), Recipiente::kGrandeDemais);
    QCOMPARE(Recipiente::Descompactar(bomba, saida, 20'000'000), Recipiente::kSucesso);

    Gravar(Caminho("a.lr$"), bomba);
    int erro = 0;
    QVERIFY(!Recipiente::DescompactarArquivo(Caminho("a.lr$"), Caminho("a.lrs"), erro, true, 19'999'999));
    QCOMPARE(erro, Recipiente::kGrandeDemais);
    QVERIFY(!QFile::exists(Caminho("a.lrs")));
    QVERIFY(Recipiente::DescompactarArquivo(Caminho("a.lr$"), Caminho("a.lrs"), erro, true, 20'000'000));
}

void TesteRecipiente::gigabyteDeZerosAtrasDeFluxoPequeno()
{
    const QByteArray fluxo = Fluxo(Mistura(5000), 9);
    const qint64 gigabyte = qint64(1) << 30;
    {
        QFile esparso(Caminho("a.lr$"));
        QVERIFY(esparso.open(QIODevice::WriteOnly));
        esparso.write(fluxo);
        QVERIFY(esparso.seek(gigabyte)); // a hole: takes no room on the disk
        esparso.write(Trailer("5000"));
    }
    int erro = -99;
    QVERIFY(Recipiente::DescompactarArquivo(Caminho("a.lr$"), Caminho("a.lrs"), erro, true));
    QCOMPARE(Ler(Caminho("a.lrs")), Mistura(5000) + '\0');

    // Without a trailer behind the zeros there is no length to believe.
    QVERIFY(QFile::resize(Caminho("a.lr$"), gigabyte));
    QVERIFY(!Recipiente::DescompactarArquivo(Caminho("a.lr$"), Caminho("a.lrs"), erro, true));
    QCOMPARE(erro, Recipiente::kTrailerInvalido);
}

void TesteRecipiente::arquivoParaArquivoVaiEVolta()
{
    const QByteArray bytes = Mistura(123456);
    Gravar(Caminho("açaí & pão.lrs"), bytes);
    int erro = -99;
    QVERIFY(Recipiente::CompactarArquivo(Caminho("açaí & pão.lrs"), Caminho("b.lr$"), 9, erro, true));
    QCOMPARE(erro, Recipiente::kSucesso);
    QCOMPARE(Ler(Caminho("b.lr$")), Fluxo(bytes, 9) + Trailer("123456"));
    // Over itself: what is read is read before anything is written.
    QVERIFY(Recipiente::DescompactarArquivo(Caminho("b.lr$"), Caminho("b.lr$"), erro, true));
    QCOMPARE(Ler(Caminho("b.lr$")), bytes + '\0');
}

void TesteRecipiente::arquivoVazioDaArquivoVazio()
{
    Gravar(Caminho("a"), {});
    int erro = -99;
    QVERIFY(Recipiente::CompactarArquivo(Caminho("a"), Caminho("b"), 9, erro, true));
    QCOMPARE(Ler(Caminho("b")), QByteArray());
    QVERIFY(Recipiente::DescompactarArquivo(Caminho("b"), Caminho("c"), erro, true));
    QCOMPARE(Ler(Caminho("c")), QByteArray());
}

void TesteRecipiente::caminhoVazioEFalha()
{
    Gravar(Caminho("a"), "bolo");
    int erro = 0;
    QVERIFY(!Recipiente::CompactarArquivo("", Caminho("b"), 9, erro, true));
    QVERIFY(erro != 0);
    QVERIFY(!Recipiente::CompactarArquivo(Caminho("a"), "", 9, erro, true));
    QVERIFY(!Recipiente::DescompactarArquivo("", Caminho("b"), erro, true));
    QVERIFY(!Recipiente::DescompactarArquivo(Caminho("a"), "", erro, true));
    QVERIFY(!QFile::exists(Caminho("b")));
}

void TesteRecipiente::origemInexistenteE53()
{
    Gravar(Caminho("b"), "como estava");
    int erro = 0;
    QVERIFY(!Recipiente::CompactarArquivo(Caminho("a"), Caminho("b"), 9, erro, true));
    QCOMPARE(erro, 53);
    QVERIFY(!Recipiente::DescompactarArquivo(Caminho("a"), Caminho("b"), erro, true));
    QCOMPARE(erro, 53);
    QCOMPARE(Ler(Caminho("b")), QByteArray("como estava"));
}

void TesteRecipiente::pastaEDispositivoNaoSaoLidos()
{
    QCOMPARE(mkfifo(QFile::encodeName(Caminho("tubo")).constData(), 0600), 0);
    for (const QString &origem : {m_pasta->path(), QString("/dev/zero"), Caminho("tubo")}) {
        int erro = 0;
        QVERIFY(!Recipiente::DescompactarArquivo(origem, Caminho("b"), erro, true));
        QCOMPARE(erro, Recipiente::kArquivoIlegivel);
        QVERIFY(!Recipiente::CompactarArquivo(origem, Caminho("b"), 9, erro, true));
        QCOMPARE(erro, Recipiente::kArquivoIlegivel);
    }
}

void TesteRecipiente::origemIlegivelERecusada()
{
    Gravar(Caminho("a"), "bolo");
    QVERIFY(QFile::setPermissions(Caminho("a"), QFileDevice::Permissions()));
    QCOMPARE(chmod(QFile::encodeName(m_pasta->path()).constData(), 0755), 0);
    const uid_t eu = geteuid(); // root reads everything: ask as somebody else
    if (eu == 0)
        QCOMPARE(seteuid(65534), 0);
    const auto voltar = qScopeGuard([eu] {
        if (seteuid(eu) != 0)
            qFatal("seteuid");
    });
    int erro = 0;
    QVERIFY(!Recipiente::DescompactarArquivo(Caminho("a"), Caminho("b"), erro, true));
    QCOMPARE(erro, Recipiente::kArquivoIlegivel);
}

void TesteRecipiente::destinoExistenteSoComLicenca()
{
    Gravar(Caminho("a"), "bolo");
    Gravar(Caminho("b"), "como estava");
    int erro = 0;
    QVERIFY(!Recipiente::CompactarArquivo(Caminho("a"), Caminho("b"), 9, erro, false));
    QCOMPARE(erro, Recipiente::kArquivoJaExiste);
    QCOMPARE(Ler(Caminho("b")), QByteArray("como estava"));
    QVERIFY(Recipiente::CompactarArquivo(Caminho("a"), Caminho("b"), 9, erro, true));
    QVERIFY(!Recipiente::DescompactarArquivo(Caminho("b"), Caminho("a"), erro, false));
    QCOMPARE(Ler(Caminho("a")), QByteArray("bolo"));
}

void TesteRecipiente::falhaDeixaODestinoComoEstava()
{
    Gravar(Caminho("a"), "bolo");
    Gravar(Caminho("b"), "como estava");
    int erro = 0;
    QVERIFY(!Recipiente::CompactarArquivo(Caminho("a"), Caminho("b"), 10, erro, true));
    QCOMPARE(erro, Z_STREAM_ERROR);
    QCOMPARE(Ler(Caminho("b")), QByteArray("como estava"));
    QVERIFY(!Recipiente::CompactarArquivo(Caminho("a"), Caminho("não há/b"), 9, erro, true));
    QCOMPARE(erro, Recipiente::kDestinoIndisponivel);
}

void TesteRecipiente::discoCheioEFalhaSemRestos_data()
{
    QTest::addColumn<int>("tamanho");
    QTest::addColumn<int>("espaco");
    QTest::newRow("muitos blocos") << 3'000'000 << 1'000'000;
    QTest::newRow("menos que a memória intermediária") << 9'000 << 4'000;
    QTest::newRow("falta um byte") << 9'000 << 9'000;
}

void TesteRecipiente::discoCheioEFalhaSemRestos()
{
    QFETCH(int, tamanho);
    QFETCH(int, espaco);
    Gravar(Caminho("a"), QByteArray(tamanho, 'x'));
    Gravar(Caminho("a.lr$"), Fluxo(QByteArray(tamanho, 'x'), 0) + Trailer(QByteArray::number(tamanho)));
    Gravar(Caminho("b"), "como estava");
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit antes = {};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &antes), 0);
    const rlimit pouco = {static_cast<rlim_t>(espaco), antes.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &pouco), 0);
    int erroDescompactar = 0;
    int erroCompactar = 0;
    Recipiente::DescompactarArquivo(Caminho("a.lr$"), Caminho("b"), erroDescompactar, true);
    Recipiente::CompactarArquivo(Caminho("a"), Caminho("b"), 0, erroCompactar, true);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &antes), 0);
    QCOMPARE(erroDescompactar, Recipiente::kDestinoIndisponivel);
    QCOMPARE(erroCompactar, Recipiente::kDestinoIndisponivel);
    QCOMPARE(Ler(Caminho("b")), QByteArray("como estava"));
    QCOMPARE(QDir(m_pasta->path()).entryList(QDir::Files), QStringList({"a", "a.lr$", "b"}));
}

QTEST_GUILESS_MAIN(TesteRecipiente)
#include "teste_recipiente.moc"
