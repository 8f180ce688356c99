#include "backup/ArquivoBackup.h"
#include "backup/EscalaDeProgresso.h"
#include "packages/Recipiente.h"
#include "packages/RecipienteEmFatias.h"

#include <QBuffer>
#include <QDir>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <zlib.h>

using ArquivoBackup::Cabecalho;
using ArquivoBackup::Entrada;

namespace
{
constexpr qsizetype kFatia = 256 * 1024;

bool SemPausa()
{
    return true;
}

bool Parar()
{
    return false;
}

QByteArray Acaso(qsizetype tamanho, quint32 semente)
{
    QRandomGenerator gerador(semente);
    QByteArray bytes(tamanho, Qt::Uninitialized);
    for (char &c : bytes)
        c = static_cast<char>(gerador.generate());
    return bytes;
}

/// Bytes that pack well, badly and not at all, one after another.
QByteArray Mistura(qsizetype tamanho)
{
    QByteArray bytes;
    for (quint32 i = 0; bytes.size() < tamanho; ++i) {
        bytes += Acaso(20'000 + 7 * i, i);
        bytes += QByteArray("Misture a farinha com o acucar; ").repeated(900 + i);
        bytes += QByteArray(50'000, static_cast<char>(i));
    }
    return bytes.left(tamanho);
}

QByteArray EntradaCompleta(const QString &nome, const QByteArray &dados)
{
    return Cabecalho(nome, dados.size()) + dados;
}

/// An archive as unpacking leaves it: with one 0x00 behind.
bool LerBytes(const QByteArray &arquivo, QList<Entrada> &entradas)
{
    QByteArray bytes = arquivo + '\0';
    QBuffer buffer(&bytes);
    return buffer.open(QIODevice::ReadOnly) && ArquivoBackup::Ler(buffer, entradas);
}

QByteArray CompactarEmFatias(const QByteArray &dados, int *codigo = nullptr, quint32 *soma = nullptr)
{
    QByteArray copia = dados;
    QBuffer origem(&copia);
    QBuffer destino;
    origem.open(QIODevice::ReadOnly);
    destino.open(QIODevice::WriteOnly);
    quint32 adler = 0;
    const int resultado = RecipienteEmFatias::Compactar(origem, destino, adler, SemPausa);
    if (codigo)
        *codigo = resultado;
    if (soma)
        *soma = adler;
    return destino.data();
}

int DescompactarEmFatias(const QByteArray &recipiente, QByteArray &saida)
{
    QByteArray copia = recipiente;
    QBuffer origem(&copia);
    QBuffer destino(&saida);
    saida.clear();
    origem.open(QIODevice::ReadOnly);
    destino.open(QIODevice::WriteOnly);
    return RecipienteEmFatias::Descompactar(origem, destino, SemPausa);
}

int ConferirBytes(const QByteArray &recipiente, const QByteArray &original, quint32 soma)
{
    QByteArray a = recipiente;
    QByteArray b = original;
    QBuffer primeiro(&a);
    QBuffer segundo(&b);
    primeiro.open(QIODevice::ReadOnly);
    segundo.open(QIODevice::ReadOnly);
    return RecipienteEmFatias::Conferir(primeiro, segundo, soma, SemPausa);
}

/// The container with another length in its trailer.
QByteArray ComComprimento(const QByteArray &recipiente, const QByteArray &digitos)
{
    return recipiente.chopped(17) + QByteArray(5, '\0') + digitos + QByteArray(12 - digitos.size(), '\0');
}

/// A disk that is full after so many bytes.
class DiscoCheio : public QIODevice
{
public:
    explicit DiscoCheio(qint64 cabem)
        : m_cabem(cabem)
    {
        open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *, qint64 tamanho) override
    {
        if (tamanho > m_cabem)
            return -1;
        m_cabem -= tamanho;
        return tamanho;
    }

private:
    qint64 m_cabem;
};

QByteArray Conteudo(const QString &caminho)
{
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray("(does not exist)");
}
} // namespace

class TesteBackupFormato : public QObject
{
    Q_OBJECT

private slots:
    void cabecalhoTemNomeBrancosENoveAlgarismos();
    void nomeLongoECortadoEm200();
    void arquivoPequenoEOGuardado();
    void leTodasAsEntradasNaOrdem();
    void restoCurtoTerminaSemErro_data();
    void restoCurtoTerminaSemErro();
    void recusaArquivoEstragado_data();
    void recusaArquivoEstragado();
    void soOPrimeiroNomeEConferido();
    void nomesAceitos_data();
    void nomesAceitos();

    void fatiasDaoOsBytesDeUmSoCompress2_data();
    void fatiasDaoOsBytesDeUmSoCompress2();
    void desdobraOQueFoiCompactado_data();
    void desdobraOQueFoiCompactado();
    void recipienteVazioDaNada();
    void recusaRecipienteRuim_data();
    void recusaRecipienteRuim();
    void comprimentoMaiorDeixaZeros();
    void conferirAchaUmByteTrocado();
    void aPausaInterrompe();
    void discoCheioEDito();

    void aBarraFicaAbaixoDe32001_data();
    void aBarraFicaAbaixoDe32001();

};

void TesteBackupFormato::cabecalhoTemNomeBrancosENoveAlgarismos()
{
    QCOMPARE(Cabecalho("dadosr.lst", 524288), "dadosr.lst" + QByteArray(190, ' ') + "000524288");
    QCOMPARE(Cabecalho("Pão.img", 0), "P\xE3o.img" + QByteArray(193, ' ') + "000000000");
    QCOMPARE(Cabecalho("a", ArquivoBackup::kMaiorEntrada).right(9), "999999999");
}

void TesteBackupFormato::nomeLongoECortadoEm200()
{
    const QString nome = QString(199, 'x') + "yz";
    QCOMPARE(Cabecalho(nome, 7), QByteArray(199, 'x') + "y000000007");
    QCOMPARE(ArquivoBackup::NomeNaEntrada(nome), QString(199, 'x') + 'y');
    QCOMPARE(ArquivoBackup::NomeNaEntrada(QString(199, 'x') + " y"), QString(199, 'x'));
}

/// The stored file was made by another program from the same bytes.
void TesteBackupFormato::arquivoPequenoEOGuardado()
{
    QByteArray livro;
    for (int i = 0; i < 3000; ++i)
        livro.append(static_cast<char>(i * i / 7));
    const QByteArray arquivo = EntradaCompleta("dadosr.lst", livro) +
                               EntradaCompleta("F0000001.img", QByteArray("figura um").repeated(40)) +
                               EntradaCompleta("F0000012.img", "GIF89a");
    QCOMPARE(CompactarEmFatias(arquivo), Conteudo(PASTA_FONTES "/tests/data/livro_pequeno.bck"));
}

void TesteBackupFormato::leTodasAsEntradasNaOrdem()
{
    QList<Entrada> entradas;
    QVERIFY(LerBytes(EntradaCompleta("dadosr.lst", "livro") + EntradaCompleta("  F0000001.img", "figura") +
                         EntradaCompleta("pão.img", ""),
                     entradas));
    QCOMPARE(entradas.size(), 3);
    QCOMPARE(entradas[0].nome, "dadosr.lst");
    QCOMPARE(entradas[0].posicao, 209);
    QCOMPARE(entradas[0].tamanho, 5);
    QCOMPARE(entradas[1].nome, "F0000001.img");
    QCOMPARE(entradas[1].posicao, 209 + 5 + 209);
    QCOMPARE(entradas[1].tamanho, 6);
    QCOMPARE(entradas[2].nome, "pão.img");
    QCOMPARE(entradas[2].tamanho, 0);
}

void TesteBackupFormato::restoCurtoTerminaSemErro_data()
{
    QTest::addColumn<int>("resto");
    for (const int resto : {0, 1, 100, 208})
        QTest::addRow("%d bytes", resto) << resto;
}

void TesteBackupFormato::restoCurtoTerminaSemErro()
{
    QFETCH(int, resto);
    QList<Entrada> entradas;
    QVERIFY(LerBytes(EntradaCompleta("dadosr.lst", "livro") + QByteArray(resto, 'r'), entradas));
    QCOMPARE(entradas.size(), 1);
}

void TesteBackupFormato::recusaArquivoEstragado_data()
{
    QTest::addColumn<QByteArray>("arquivo");
    const QByteArray livro = EntradaCompleta("dadosr.lst", "livro");
    const QByteArray brancos(190, ' ');
    QTest::newRow("nada") << QByteArray();
    QTest::newRow("menos que um cabeçalho") << livro.left(208);
    QTest::newRow("primeiro é figura, livro depois") << EntradaCompleta("F0000001.img", "figura") + livro;
    QTest::newRow("primeiro com maiúsculas") << EntradaCompleta("DADOSR.LST", "livro");
    QTest::newRow("comprimento com letra") << "dadosr.lst" + brancos + "00000000x" + "livro";
    QTest::newRow("comprimento com brancos") << "dadosr.lst" + brancos + "        5" + "livro";
    QTest::newRow("comprimento negativo") << "dadosr.lst" + brancos + "-00000005" + "livro";
    QTest::newRow("comprimento de zeros binários") << "dadosr.lst" + brancos + QByteArray(9, '\0') + "livro";
    QTest::newRow("livro cortado") << livro.chopped(1); // the 0x00 behind the archive is not its last byte
    QTest::newRow("figura cortada") << livro + EntradaCompleta("F0000001.img", "figura").chopped(3);
    QTest::newRow("figura sem número")
        << livro + "F0000001.img" + QByteArray(188, ' ') + "um dois  " + "figura";
    for (const char *nome : {"", "..", "../x", "a/b", "a\\b", "C:x", "a..b", "a\tb", "\x7F"})
        QTest::addRow("figura de nome \"%s\"", nome) << livro + EntradaCompleta(nome, "figura");
    QTest::newRow("nome com 0x00") << livro + "F\0" + QByteArray(198, ' ') + "000000006figura";
}

void TesteBackupFormato::recusaArquivoEstragado()
{
    QFETCH(QByteArray, arquivo);
    QList<Entrada> entradas;
    QVERIFY(!LerBytes(arquivo, entradas));
}

void TesteBackupFormato::soOPrimeiroNomeEConferido()
{
    QList<Entrada> entradas;
    const QByteArray livro = EntradaCompleta("dadosr.lst", "livro");
    QVERIFY(LerBytes(livro + livro, entradas));
    QCOMPARE(entradas.size(), 2);
}

void TesteBackupFormato::nomesAceitos_data()
{
    QTest::addColumn<QString>("nome");
    QTest::addColumn<bool>("aceito");
    QTest::newRow("figura") << "F0000042.img" << true;
    QTest::newRow("acentos e brancos") << "pão d'água 2.img" << true;
    QTest::newRow("oculto") << ".img" << true;
    QTest::newRow("vazio") << "" << false;
    QTest::newRow("ponto") << "." << false;
    QTest::newRow("dois pontos seguidos") << ".." << false;
    QTest::newRow("barra") << "a/b" << false;
    QTest::newRow("barra invertida") << "a\\b" << false;
    QTest::newRow("unidade") << "C:a" << false;
    QTest::newRow("linha") << "a\nb" << false;
    QTest::newRow("controle alto") << QString("a") + QChar(0x81) << false;
}

void TesteBackupFormato::nomesAceitos()
{
    QFETCH(QString, nome);
    QFETCH(bool, aceito);
    QCOMPARE(ArquivoBackup::NomeAceito(nome), aceito);
}

void TesteBackupFormato::fatiasDaoOsBytesDeUmSoCompress2_data()
{
    QTest::addColumn<QByteArray>("dados");
    for (const qsizetype n :
         {qsizetype(1), qsizetype(1000), kFatia - 1, kFatia, kFatia + 1, 3 * kFatia + 17}) {
        QTest::addRow("acaso de %lld", n) << Acaso(n, 1);
        QTest::addRow("texto de %lld", n)
            << QByteArray("farinha, ovos e leite\r\n").repeated(n / 23 + 1).left(n);
    }
    QTest::newRow("zeros") << QByteArray(20 * kFatia, '\0');
    QTest::newRow("mistura") << Mistura(12 * kFatia + 5);
}

void TesteBackupFormato::fatiasDaoOsBytesDeUmSoCompress2()
{
    QFETCH(QByteArray, dados);
    QByteArray esperado;
    QCOMPARE(Recipiente::Compactar(dados, esperado), Recipiente::kSucesso);
    int codigo = -99;
    QVERIFY(CompactarEmFatias(dados, &codigo) == esperado);
    QCOMPARE(codigo, Recipiente::kSucesso);
}

void TesteBackupFormato::desdobraOQueFoiCompactado_data()
{
    fatiasDaoOsBytesDeUmSoCompress2_data();
}

void TesteBackupFormato::desdobraOQueFoiCompactado()
{
    QFETCH(QByteArray, dados);
    quint32 soma = 0;
    const QByteArray recipiente = CompactarEmFatias(dados, nullptr, &soma);
    QByteArray saida;
    QCOMPARE(DescompactarEmFatias(recipiente, saida), Recipiente::kSucesso);
    QVERIFY(saida == dados + '\0');
    QCOMPARE(ConferirBytes(recipiente, dados, soma), Recipiente::kSucesso);
}

void TesteBackupFormato::recipienteVazioDaNada()
{
    int codigo = -99;
    QCOMPARE(CompactarEmFatias({}, &codigo), QByteArray());
    QCOMPARE(codigo, Recipiente::kSucesso);
    QByteArray saida = "x";
    QCOMPARE(DescompactarEmFatias({}, saida), Recipiente::kSucesso);
    QCOMPARE(saida, QByteArray());
}

void TesteBackupFormato::recusaRecipienteRuim_data()
{
    QTest::addColumn<QByteArray>("recipiente");
    const QByteArray bom = CompactarEmFatias(Mistura(2 * kFatia));
    QTest::newRow("curto") << QByteArray(16, '\0');
    QTest::newRow("só o trailer") << ComComprimento(bom, "1").right(17);
    QTest::newRow("nenhum recipiente") << QByteArray("isto nao e um backup do Cozinhario");
    QByteArray semNulos = bom;
    semNulos[bom.size() - 17] = 'x';
    QTest::newRow("trailer sem os nulos") << semNulos;
    QTest::newRow("comprimento vazio") << ComComprimento(bom, "");
    QTest::newRow("comprimento sem número") << ComComprimento(bom, "12a");
    QTest::newRow("comprimento menor") << ComComprimento(bom, "1000");
    QTest::newRow("comprimento que o fluxo não enche") << ComComprimento(bom, "99999999999");
    QTest::newRow("fluxo cortado") << bom.left(1000) + bom.right(17);
    QByteArray trocado = bom;
    trocado[bom.size() / 2] = static_cast<char>(~trocado[bom.size() / 2]);
    QTest::newRow("byte trocado") << trocado;
    QByteArray comDicionario = bom;
    comDicionario[1] = '\xF9'; // a valid zlib header that asks for a dictionary
    QTest::newRow("pede dicionário") << comDicionario;
}

void TesteBackupFormato::recusaRecipienteRuim()
{
    QFETCH(QByteArray, recipiente);
    QByteArray saida;
    const int codigo = DescompactarEmFatias(recipiente, saida);
    QVERIFY(codigo != Recipiente::kSucesso);
    // The same verdict as the reader that holds everything in memory.
    QByteArray emMemoria;
    QCOMPARE(codigo, Recipiente::Descompactar(recipiente, emMemoria));
}

void TesteBackupFormato::comprimentoMaiorDeixaZeros()
{
    const QByteArray recipiente = ComComprimento(CompactarEmFatias("dados"), "9");
    QByteArray saida;
    QByteArray emMemoria;
    QCOMPARE(DescompactarEmFatias(recipiente, saida), Recipiente::kSucesso);
    QCOMPARE(Recipiente::Descompactar(recipiente, emMemoria), Recipiente::kSucesso);
    QCOMPARE(saida, "dados" + QByteArray(5, '\0'));
    QCOMPARE(saida, emMemoria);
}

void TesteBackupFormato::conferirAchaUmByteTrocado()
{
    const QByteArray dados = Mistura(3 * kFatia);
    quint32 soma = 0;
    const QByteArray recipiente = CompactarEmFatias(dados, nullptr, &soma);
    for (const qsizetype posicao : {qsizetype(0), kFatia, dados.size() - 1}) {
        QByteArray outro = dados;
        outro[posicao] = static_cast<char>(outro[posicao] + 1);
        QCOMPARE(ConferirBytes(recipiente, outro, soma), Z_DATA_ERROR);
    }
    QCOMPARE(ConferirBytes(recipiente, dados + "x", soma), Z_DATA_ERROR);
    QCOMPARE(ConferirBytes(recipiente, dados.chopped(2), soma), Z_DATA_ERROR);
    QCOMPARE(ConferirBytes(recipiente, dados + QByteArray(2, '\0'), soma), Z_DATA_ERROR);
    QCOMPARE(ConferirBytes({}, dados, soma), Z_DATA_ERROR);
    // Damage that the bytes do not show: to the stream's own sum, which a restore will look at.
    QByteArray somaTrocada = recipiente;
    const qsizetype ultimo = recipiente.size() - 18;
    somaTrocada[ultimo] = static_cast<char>(somaTrocada[ultimo] + 1);
    QCOMPARE(ConferirBytes(somaTrocada, dados, soma), Z_DATA_ERROR);
}

void TesteBackupFormato::aPausaInterrompe()
{
    QByteArray dados = Mistura(3 * kFatia);
    QByteArray recipiente = CompactarEmFatias(dados);
    QBuffer origem(&dados);
    QBuffer compactado(&recipiente);
    QBuffer saida;
    origem.open(QIODevice::ReadOnly);
    compactado.open(QIODevice::ReadOnly);
    saida.open(QIODevice::WriteOnly);
    quint32 soma = 0;
    QCOMPARE(RecipienteEmFatias::Compactar(origem, saida, soma, Parar), RecipienteEmFatias::kInterrompido);
    QCOMPARE(RecipienteEmFatias::Descompactar(compactado, saida, Parar), RecipienteEmFatias::kInterrompido);
    QCOMPARE(RecipienteEmFatias::Conferir(compactado, origem, soma, Parar),
             RecipienteEmFatias::kInterrompido);
}

void TesteBackupFormato::discoCheioEDito()
{
    QByteArray dados = Acaso(3 * kFatia, 5);
    QByteArray recipiente = CompactarEmFatias(dados);
    QBuffer origem(&dados);
    QBuffer compactado(&recipiente);
    origem.open(QIODevice::ReadOnly);
    compactado.open(QIODevice::ReadOnly);
    quint32 soma = 0;
    for (const qint64 cabem : {qint64(0), qint64(kFatia), recipiente.size() - 1}) {
        DiscoCheio disco(cabem);
        QCOMPARE(RecipienteEmFatias::Compactar(origem, disco, soma, SemPausa),
                 Recipiente::kDestinoIndisponivel);
    }
    for (const qint64 cabem : {qint64(0), qint64(kFatia), qint64(dados.size())}) {
        DiscoCheio disco(cabem);
        QCOMPARE(RecipienteEmFatias::Descompactar(compactado, disco, SemPausa),
                 Recipiente::kDestinoIndisponivel);
    }
}

void TesteBackupFormato::aBarraFicaAbaixoDe32001_data()
{
    QTest::addColumn<qint64>("tamanho");
    QTest::addColumn<int>("total");
    QTest::addColumn<qint64>("divisor");
    QTest::newRow("um byte") << qint64(1) << 1 << qint64(10);
    QTest::newRow("sem volta nenhuma") << qint64(32000) << 32000 << qint64(10);
    QTest::newRow("uma volta") << qint64(32001) << 320 << qint64(100);
    QTest::newRow("ainda uma volta") << qint64(3'200'000) << 32000 << qint64(100);
    QTest::newRow("metade vai para o par") << qint64(32050) << 320 << qint64(100);
    QTest::newRow("a divisão se acumula") << qint64(4'000'000) << 40 << qint64(1000);
    QTest::newRow("três voltas") << qint64(4'000'000'000) << 4 << qint64(10000);
}

void TesteBackupFormato::aBarraFicaAbaixoDe32001()
{
    QFETCH(qint64, tamanho);
    QFETCH(int, total);
    QFETCH(qint64, divisor);
    const EscalaDeProgresso escala(tamanho);
    QCOMPARE(escala.total, total);
    QCOMPARE(escala.divisor, divisor);
}

QTEST_GUILESS_MAIN(TesteBackupFormato)
#include "teste_backup_formato.moc"
