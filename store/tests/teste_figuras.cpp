#include "store/Figuras.h"

#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QImageWriter>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <algorithm>
#include <csignal>

#include <sys/fsuid.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Comandos;

namespace
{
// GIF89a, 2 x 1 pixels, red and blue: Qt reads the format but does not write it.
const QByteArray kGif =
    QByteArray::fromHex("47494638396102000100800000ff00000000ff2c00000000020001000002024401003b");

QImage Desenho(int largura = 4, int altura = 2)
{
    QImage imagem(largura, altura, QImage::Format_RGB32);
    imagem.fill(Qt::green);
    imagem.setPixelColor(0, 0, Qt::red);
    return imagem;
}

QByteArray Codificar(const char *formato, const QImage &imagem = Desenho())
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!imagem.save(&buffer, formato))
        qFatal("formato %s", formato);
    return bytes;
}

/// A JPEG whose camera was held upright: Exif orientation 6, turn a quarter to the right.
QByteArray JpegDeitado()
{
    const QByteArray exif = QByteArray::fromHex("ffe10022457869660000"     // segment of 34 bytes, "Exif"
                                                "49492a0008000000"         // little endian, directory at 8
                                                "0100"                     // one entry:
                                                "120103000100000006000000" // orientation, short, one value, 6
                                                "00000000");               // no further directory
    QByteArray jpeg = Codificar("jpg", Desenho(40, 20));
    return jpeg.insert(2, exif); // behind the start of image
}

QByteArray BmpGigante(qint32 lado)
{
    QByteArray bytes = Codificar("bmp");
    qToLittleEndian<qint32>(lado, bytes.data() + 18);
    qToLittleEndian<qint32>(lado, bytes.data() + 22);
    return bytes;
}

QByteArray PngGigante()
{
    // Only the header announces the size; its checksum is mended so that the reader believes it.
    QByteArray bytes = Codificar("png");
    qToBigEndian<quint32>(60000, bytes.data() + 16);
    qToBigEndian<quint32>(60000, bytes.data() + 20);
    quint32 crc = 0xFFFFFFFF;
    for (int i = 12; i < 29; ++i) {
        crc ^= static_cast<quint8>(bytes[i]);
        for (int k = 0; k < 8; ++k)
            crc = crc & 1 ? crc >> 1 ^ 0xEDB88320 : crc >> 1;
    }
    qToBigEndian<quint32>(~crc, bytes.data() + 29);
    return bytes;
}

QByteArray Progressivo(const QImage &imagem)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter escritor(&buffer, "jpg");
    escritor.setProgressiveScanWrite(true);
    if (!escritor.write(imagem))
        qFatal("%s", qPrintable(escritor.errorString()));
    return bytes;
}

/// A JPEG whose header announces another size; what is missing behind it the decoder fills.
QByteArray ComTamanho(QByteArray jpeg, const QSize &tamanho)
{
    const qsizetype quadro = std::max(jpeg.indexOf("\xFF\xC0"), jpeg.indexOf("\xFF\xC2"));
    if (quadro < 0)
        qFatal("no frame");
    qToBigEndian<quint16>(static_cast<quint16>(tamanho.height()), jpeg.data() + quadro + 5);
    qToBigEndian<quint16>(static_cast<quint16>(tamanho.width()), jpeg.data() + quadro + 7);
    return jpeg;
}

/// The last scan so many times more.
QByteArray ComPassadas(QByteArray jpeg, int mais)
{
    const qsizetype ultima = jpeg.lastIndexOf("\xFF\xDA");
    const qsizetype fim = jpeg.lastIndexOf("\xFF\xD9");
    return jpeg.insert(fim, jpeg.mid(ultima, fim - ultima).repeated(mais));
}
} // namespace

class TesteFiguras : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void copiaByteAByte();
    void substituiAFiguraAnterior();
    void copiaQueFalhaMantemAAnterior();
    void copiaAFiguraSobreElaMesma();
    void discoCheioMantemAAnterior();
    void naoListaAPastaParaCadaFigura();
    void gravaOsBytesComoSao();
    void ignoraPastaQueNaoSePodeCriar();
    void achaAFiguraEmQualquerCaixa();
    void substituiAFiguraDeOutraCaixa();
    void recusaNomesQueSaemDaPasta_data();
    void recusaNomesQueSaemDaPasta();
    void apagaAFiguraDaReceita();
    void naoApagaForaDaPasta();
    void pegaONomeDoArquivo();

    void carregaPeloConteudo_data();
    void carregaPeloConteudo();
    void mostraOQueChegouDeUmaFotoCortada();
    void endireitaFotosDeitadas();
    void recusaOQueNaoEFigura_data();
    void recusaOQueNaoEFigura();
    void recusaFigurasGigantes_data();
    void recusaFigurasGigantes();
    void substituiUmArquivoSoDeLeitura();
    void aFiguraNaoMostraMaisDoQueOLivro();
    void reduzFotosGrandesAoLer();
    void contaAsPassadasDeUmJpeg();
    void recusaJpegDePassadasDemais_data();
    void recusaJpegDePassadasDemais();
    void naoDecodificaDuasVezesAMesma();
    void naoEsperaPorUmCanoSemEscritor();

private:
    QString Gravar(const QString &nome, const QByteArray &bytes) const
    {
        QFile arquivo(m_pasta->filePath(nome));
        if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(bytes) != bytes.size())
            qFatal("sem espaço");
        return arquivo.fileName();
    }
    QByteArray Ler(const QString &nome) const
    {
        QFile arquivo(m_pasta->filePath(nome));
        return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray("(ausente)");
    }
    qint64 InserirReceita(const QString &figura) const
    {
        m_banco->ExecutarSQL("Insert into Receitas(Nome,Figura) values ('Sal'," + TextoOuNulo(figura) + ")");
        return m_banco->AbrirRecordset(SqlMaiorNumero()).Valor(0).toLongLong();
    }

    std::unique_ptr<QTemporaryDir> m_pasta;
    std::unique_ptr<Banco> m_banco;
    std::unique_ptr<Figuras> m_figuras;
};

void TesteFiguras::init()
{
    m_pasta = std::make_unique<QTemporaryDir>();
    QVERIFY(m_pasta->isValid());
    m_banco = std::make_unique<Banco>(m_pasta->path());
    m_figuras = std::make_unique<Figuras>(*m_banco);
}

void TesteFiguras::copiaByteAByte()
{
    m_figuras->CopiarFigura(Gravar("Minha Foto.GIF", kGif), 12);
    QCOMPARE(Ler("Fotos/F0000012.img"), kGif);
    QCOMPARE(m_figuras->Caminho("F0000012.img"), m_pasta->filePath("Fotos/F0000012.img"));
    QCOMPARE(QDir(m_pasta->filePath("Fotos")).entryList(QDir::Files | QDir::Hidden),
             QStringList("F0000012.img"));
    // Bytes are bytes, whatever they mean.
    m_figuras->CopiarFigura(Gravar("texto.img", "não é figura"), 12345678);
    QCOMPARE(Ler("Fotos/F12345678.img"), QByteArray("não é figura"));
}

void TesteFiguras::substituiAFiguraAnterior()
{
    m_figuras->CopiarFigura(Gravar("a.png", Codificar("png")), 1);
    m_figuras->CopiarFigura(Gravar("b.gif", kGif), 1);
    QCOMPARE(Ler("Fotos/F0000001.img"), kGif);
}

void TesteFiguras::copiaQueFalhaMantemAAnterior()
{
    m_figuras->CopiarFigura(Gravar("a.gif", kGif), 1);
    m_figuras->CopiarFigura(m_pasta->filePath("não há.gif"), 1);
    QCOMPARE(Ler("Fotos/F0000001.img"), kGif);
    m_figuras->CopiarFigura(m_pasta->path(), 1);
    QCOMPARE(Ler("Fotos/F0000001.img"), kGif);
    m_figuras->CopiarFigura(m_pasta->filePath("não há.gif"), 2);
    QVERIFY(!QFile::exists(m_pasta->filePath("Fotos/F0000002.img")));
}

void TesteFiguras::copiaAFiguraSobreElaMesma()
{
    m_figuras->CopiarFigura(Gravar("a.gif", kGif), 1);
    m_figuras->CopiarFigura(m_pasta->filePath("Fotos/F0000001.img"), 1);
    QCOMPARE(Ler("Fotos/F0000001.img"), kGif);
}

// A picture smaller than the buffer: only the last write meets the full disk.
void TesteFiguras::discoCheioMantemAAnterior()
{
    const QString nova = Gravar("nova.img", QByteArray(3000, 'n'));
    m_figuras->CopiarFigura(Gravar("a.gif", kGif), 1);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit antes = {};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &antes), 0);
    const rlimit pouco = {1000, antes.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &pouco), 0);
    m_figuras->CopiarFigura(nova, 1);
    m_figuras->GravarFigura(QByteArray(3000, 'g'), 1);
    m_figuras->GravarFigura(QByteArray(3000, 'g'), 2);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &antes), 0);
    QCOMPARE(Ler("Fotos/F0000001.img"), kGif);
    QCOMPARE(QDir(m_pasta->filePath("Fotos")).entryList(QDir::Files | QDir::Hidden),
             QStringList("F0000001.img"));
}

// Proved with a folder that may be entered but not read, by a user who is bound by that: root is none.
void TesteFiguras::naoListaAPastaParaCadaFigura()
{
    constexpr uid_t ninguem = 65534;
    const QString fotos = m_pasta->filePath("Fotos");
    QVERIFY(QDir().mkdir(fotos));
    Gravar("Fotos/f0000003.IMG", kGif);
    if (geteuid() == 0) {
        for (const QString &caminho : {m_pasta->path(), fotos, fotos + "/f0000003.IMG"})
            QCOMPARE(chown(QFile::encodeName(caminho).constData(), ninguem, ninguem), 0);
        setfsuid(ninguem);
    }
    QCOMPARE(chmod(QFile::encodeName(fotos).constData(), S_IWUSR | S_IXUSR), 0);
    QVERIFY(QDir(fotos).entryList(QDir::Files).isEmpty());
    m_figuras->GravarFigura("outra", 3);
    m_figuras->GravarFigura("nova", 4);
    const QString achada = m_figuras->Caminho("F0000003.img");
    QCOMPARE(chmod(QFile::encodeName(fotos).constData(), S_IRWXU), 0);
    setfsuid(geteuid());
    QCOMPARE(achada, m_pasta->filePath("Fotos/f0000003.IMG"));
    QCOMPARE(Ler("Fotos/f0000003.IMG"), QByteArray("outra"));
    QCOMPARE(Ler("Fotos/F0000004.img"), QByteArray("nova"));
}

void TesteFiguras::gravaOsBytesComoSao()
{
    m_figuras->GravarFigura(QByteArray("\0\xff\r\n", 4), 7);
    QCOMPARE(Ler("Fotos/F0000007.img"), QByteArray("\0\xff\r\n", 4));
    m_figuras->GravarFigura(QByteArray(), 7);
    QCOMPARE(Ler("Fotos/F0000007.img"), QByteArray());
}

void TesteFiguras::ignoraPastaQueNaoSePodeCriar()
{
    Gravar("Fotos", "um arquivo no lugar da pasta");
    m_figuras->CopiarFigura(Gravar("a.gif", kGif), 1);
    m_figuras->GravarFigura(kGif, 1);
    QCOMPARE(Ler("Fotos"), QByteArray("um arquivo no lugar da pasta"));
}

void TesteFiguras::achaAFiguraEmQualquerCaixa()
{
    QVERIFY(QDir(m_pasta->path()).mkdir("FOTOS"));
    Gravar("FOTOS/f0000003.IMG", kGif);
    QCOMPARE(m_figuras->Caminho("F0000003.img"), m_pasta->filePath("FOTOS/f0000003.IMG"));
    m_figuras->GravarFigura(kGif, 4);
    QCOMPARE(Ler("FOTOS/F0000004.img"), kGif);
    QVERIFY(!QFile::exists(m_pasta->filePath("Fotos")));
    QCOMPARE(m_figuras->Caminho("F0000099.img"), m_pasta->filePath("FOTOS/F0000099.img"));
}

void TesteFiguras::substituiAFiguraDeOutraCaixa()
{
    QVERIFY(QDir(m_pasta->path()).mkdir("fotos"));
    Gravar("fotos/f0000003.img", "antiga");
    m_figuras->CopiarFigura(Gravar("a.gif", kGif), 3);
    QCOMPARE(QDir(m_pasta->filePath("fotos")).entryList(QDir::Files), QStringList("f0000003.img"));
    QCOMPARE(Ler("fotos/f0000003.img"), kGif);
}

void TesteFiguras::recusaNomesQueSaemDaPasta_data()
{
    QTest::addColumn<QString>("nome");
    for (const char *nome : {"", ".", "..", "../dadosr.lst", "..\\dadosr.lst", "/etc/passwd", "a/b", "C:\\a"})
        QTest::addRow("'%s'", nome) << QString(nome);
    QTest::newRow("caractere nulo") << QString("a") + QChar(0);
}

void TesteFiguras::recusaNomesQueSaemDaPasta()
{
    QFETCH(QString, nome);
    QCOMPARE(m_figuras->Caminho(nome), "");
}

void TesteFiguras::apagaAFiguraDaReceita()
{
    const qint64 receita = InserirReceita("F0000001.img");
    m_figuras->GravarFigura(kGif, receita);
    m_figuras->ApagarFigura(receita);
    QVERIFY(!QFile::exists(m_pasta->filePath("Fotos/F0000001.img")));
    m_figuras->ApagarFigura(receita);            // already gone
    m_figuras->ApagarFigura(999);                // no such recipe
    m_figuras->ApagarFigura(InserirReceita("")); // no picture
    // The row is the caller's business.
    QCOMPARE(m_banco->AbrirRecordset(SqlFigura(receita)).Texto(0), "F0000001.img");
    Gravar("dadosr.lst", "isto não é um banco de dados");
    QVERIFY_EXCEPTION_THROWN(m_figuras->ApagarFigura(receita), ErroBanco);
}

void TesteFiguras::naoApagaForaDaPasta()
{
    const QString alvo = Gravar("importante.txt", "x");
    QVERIFY(QDir(m_pasta->path()).mkdir("Fotos"));
    for (const char *nome : {"../importante.txt", "..\\importante.txt"})
        m_figuras->ApagarFigura(InserirReceita(nome));
    m_figuras->ApagarFigura(InserirReceita(alvo));
    QVERIFY(QFile::exists(alvo));
}

void TesteFiguras::pegaONomeDoArquivo()
{
    QCOMPARE(m_figuras->PegarNomeArquivo(InserirReceita("F0000001.img")), "F0000001.img");
    QCOMPARE(m_figuras->PegarNomeArquivo(InserirReceita("")), "");
    QCOMPARE(m_figuras->PegarNomeArquivo(999), "");
    Gravar("dadosr.lst", "isto não é um banco de dados");
    QCOMPARE(m_figuras->PegarNomeArquivo(1), "");
}

void TesteFiguras::carregaPeloConteudo_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QSize>("tamanho");
    QTest::newRow("BMP") << Codificar("bmp") << QSize(4, 2);
    QTest::newRow("JPEG") << Codificar("jpg") << QSize(4, 2);
    QTest::newRow("PNG") << Codificar("png") << QSize(4, 2);
    QTest::newRow("GIF") << kGif << QSize(2, 1);
}

void TesteFiguras::carregaPeloConteudo()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QSize, tamanho);
    for (const char *nome : {"F0000001.img", "trocada.png", "trocada.svg", "sem extensão"})
        QCOMPARE(CarregarImagem(Gravar(nome, bytes)).size(), tamanho);
}

void TesteFiguras::mostraOQueChegouDeUmaFotoCortada()
{
    const QByteArray foto = Codificar("jpg", Desenho(200, 200));
    const QImage imagem = CarregarImagem(Gravar("foto.img", foto.left(foto.size() - 20)));
    QCOMPARE(imagem.size(), QSize(200, 200));
}

void TesteFiguras::endireitaFotosDeitadas()
{
    const QByteArray bytes = JpegDeitado();
    const QString caminho = Gravar("foto.img", bytes);
    QCOMPARE(CarregarImagem(caminho).size(), QSize(20, 40));
    QCOMPARE(Ler("foto.img"), bytes);
}

void TesteFiguras::recusaOQueNaoEFigura_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("texto") << QByteArray("isto não é uma figura");
    QTest::newRow("vazio") << QByteArray();
    QTest::newRow("só o começo de um GIF") << kGif.left(10);
    QTest::newRow("só o começo de um PNG") << Codificar("png").left(20);
    QTest::newRow("só o começo de um JPEG") << Codificar("jpg").left(20);
    QTest::newRow("só o começo de um BMP") << Codificar("bmp").left(20);
    QTest::newRow("outro formato") << Codificar("ppm");
    QTest::newRow("desenho vetorial")
        << QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>");
}

void TesteFiguras::recusaOQueNaoEFigura()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(CarregarImagem(Gravar("figura.img", bytes)).isNull());
    QVERIFY(CarregarImagem(m_pasta->filePath("não há.img")).isNull());
    QVERIFY(CarregarImagem(m_pasta->path()).isNull());
    QVERIFY(CarregarImagem("").isNull());
}

void TesteFiguras::recusaFigurasGigantes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("BMP") << BmpGigante(60000);
    QTest::newRow("BMP menor") << BmpGigante(8000);
    QTest::newRow("PNG") << PngGigante();
}

/// The files are small and well-formed but for the size that they announce.
void TesteFiguras::recusaFigurasGigantes()
{
    QFETCH(QByteArray, bytes);
    const QString caminho = Gravar("bomba.img", bytes);
    QVERIFY(CarregarImagem(caminho).isNull());
}

void TesteFiguras::substituiUmArquivoSoDeLeitura()
{
    m_figuras->GravarFigura("antiga", 1);
    QVERIFY(QFile::setPermissions(m_pasta->filePath("Fotos/F0000001.img"), QFile::ReadOwner));
    m_figuras->CopiarFigura(Gravar("a.gif", kGif), 1);
    QCOMPARE(Ler("Fotos/F0000001.img"), kGif);
    // A link is replaced, not followed.
    const QString alvo = Gravar("alvo", "de outro");
    QVERIFY(QFile::link(alvo, m_pasta->filePath("Fotos/F0000002.img")));
    m_figuras->GravarFigura(kGif, 2);
    QCOMPARE(Ler("alvo"), "de outro");
    QCOMPARE(Ler("Fotos/F0000002.img"), kGif);
}

void TesteFiguras::aFiguraNaoMostraMaisDoQueOLivro()
{
    m_banco->AbrirRecordset(SqlLista());
    QVERIFY(QFile::setPermissions(m_banco->CaminhoDoLivro(), QFile::ReadOwner | QFile::WriteOwner));
    m_figuras->CopiarFigura(Gravar("a.gif", kGif), 1);
    m_figuras->GravarFigura(kGif, 2);
    for (const char *nome : {"Fotos/F0000001.img", "Fotos/F0000002.img"}) {
        struct stat dados = {};
        QCOMPARE(::stat(QFile::encodeName(m_pasta->filePath(nome)).constData(), &dados), 0);
        QCOMPARE(int(dados.st_mode & 0777), 0600);
    }
}

/// A camera's photo: the header tells the size, the decoder fills what is missing behind it.
void TesteFiguras::reduzFotosGrandesAoLer()
{
    for (const QSize &tamanho : {QSize(8000, 6000), QSize(12000, 9000), QSize(3000, 30)}) {
        const ImagemLida lida = LerFigura(Gravar("foto.img", ComTamanho(Codificar("jpg"), tamanho)));
        QCOMPARE(lida.estado, ImagemLida::Estado::Boa);
        QCOMPARE(lida.imagem.size(), tamanho.scaled(kMaiorLado, kMaiorLado, Qt::KeepAspectRatio));
    }
    QCOMPARE(LerFigura(Gravar("foto.img", ComTamanho(Codificar("jpg"), {65500, 65500}))).estado,
             ImagemLida::Estado::GrandeDemais);
    QCOMPARE(LerFigura(Gravar("foto.img", BmpGigante(9000))).estado, ImagemLida::Estado::GrandeDemais);
    QCOMPARE(LerFigura(Gravar("foto.img", "nada")).estado, ImagemLida::Estado::NaoEImagem);
}

void TesteFiguras::contaAsPassadasDeUmJpeg()
{
    const CustoJpeg simples = MedirJpeg(Codificar("jpg", Desenho(200, 100)));
    QCOMPARE(simples.largura, 200);
    QCOMPARE(simples.altura, 100);
    QCOMPARE(simples.passadas, 1);
    const QByteArray progressivo = Progressivo(Desenho(200, 100));
    const int passadas = MedirJpeg(progressivo).passadas;
    QVERIFY(passadas > 4 && passadas < 20);
    QCOMPARE(MedirJpeg(ComPassadas(progressivo, 300)).passadas, passadas + 300);
    // A small picture inside the file's remarks, and what lies behind the end, are no scans of this one.
    QByteArray comentario("\xFF\xE1\x00\x08\xFF\xDA\xFF\xDA\xFF\xDA", 10);
    QCOMPARE(MedirJpeg(QByteArray(progressivo).insert(2, comentario) + "\xFF\xDA\xFF\xDA").passadas,
             passadas);
    for (const QByteArray &resto : {QByteArray(), QByteArray("GIF89a"), QByteArray("\xFF\xD8\xFF"),
                                    QByteArray("\xFF\xD8\xFF\xE0"), QByteArray("\xFF\xD8\xFF\xE0\xFF", 5)})
        QCOMPARE(MedirJpeg(resto).passadas, 0);
}

void TesteFiguras::recusaJpegDePassadasDemais_data()
{
    QTest::addColumn<QSize>("tamanho");
    QTest::addColumn<int>("passadas");
    QTest::addColumn<bool>("aceito");
    QTest::newRow("foto progressiva comum") << QSize(200, 100) << 0 << true;
    QTest::newRow("grande e progressiva") << QSize(4000, 3000) << 0 << true;
    QTest::newRow("300 passadas") << QSize(4000, 3000) << 300 << false;
    QTest::newRow("3000 passadas") << QSize(4000, 3000) << 3000 << false;
    QTest::newRow("pequena, 3000 passadas") << QSize(200, 100) << 3000 << false;
    QTest::newRow("progressiva, grande demais") << QSize(20000, 20000) << 0 << false;
}

void TesteFiguras::recusaJpegDePassadasDemais()
{
    QFETCH(QSize, tamanho);
    QFETCH(int, passadas);
    QFETCH(bool, aceito);
    const QByteArray bytes = ComPassadas(ComTamanho(Progressivo(Desenho(200, 100)), tamanho), passadas);
    const ImagemLida lida = LerFigura(Gravar("foto.img", bytes));
    QCOMPARE(lida.estado, aceito ? ImagemLida::Estado::Boa : ImagemLida::Estado::GrandeDemais);
    QCOMPARE(lida.imagem.isNull(), !aceito);
}

/// The card and the editor behind it ask for the same picture.
void TesteFiguras::naoDecodificaDuasVezesAMesma()
{
    const QString caminho = Gravar("foto.img", Codificar("jpg", Desenho(20, 10)));
    const QImage uma = CarregarImagem(caminho);
    QCOMPARE(CarregarImagem(caminho).cacheKey(), uma.cacheKey());
    Gravar("foto.img", Codificar("jpg", Desenho(40, 10)));
    QCOMPARE(CarregarImagem(caminho).size(), QSize(40, 10));
    QVERIFY(QFile::remove(caminho));
    QVERIFY(CarregarImagem(caminho).isNull());
}

void TesteFiguras::naoEsperaPorUmCanoSemEscritor()
{
    const QString caminho = m_pasta->filePath("cano.img");
    QCOMPARE(::mkfifo(QFile::encodeName(caminho).constData(), 0600), 0);
    QVERIFY(CarregarImagem(caminho).isNull());
    m_figuras->CopiarFigura(caminho, 1);
    QVERIFY(!QFile::exists(m_pasta->filePath("Fotos/F0000001.img")));
}

QTEST_GUILESS_MAIN(TesteFiguras)
#include "teste_figuras.moc"
