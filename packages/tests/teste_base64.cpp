#include "base/PaginaCodigo.h"
#include "packages/Base64Class.h"
#include "packages/StringClass.h"

#include <QRandomGenerator>
#include <QTest>

#include <limits>
#include <stdexcept>

namespace
{
QByteArray TodosOsBytes()
{
    QByteArray bytes;
    for (int i = 0; i < 256; ++i)
        bytes += static_cast<char>(i);
    return bytes;
}

/// Another library's base64, broken into lines of 76.
QByteArray EmLinhas(const QByteArray &bytes)
{
    const QByteArray corrido = bytes.toBase64();
    QByteArrayList linhas;
    for (qsizetype i = 0; i < corrido.size(); i += 76)
        linhas += corrido.mid(i, 76);
    return linhas.join("\r\n");
}

/// The lenient decoder's rules, one step after the other, as slow as they read.
QByteArray DecodificarPassoAPasso(QByteArray texto)
{
    static const QByteArray alfabeto = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    texto.replace("\r\n", "");
    texto.replace("=", "");
    QByteArray bytes;
    for (qsizetype i = 0; i < texto.size(); i += 4) {
        const QByteArray grupo = texto.mid(i, 4);
        int c[4] = {};
        for (int k = 0; k < grupo.size(); ++k)
            c[k] = std::max<int>(0, static_cast<int>(alfabeto.indexOf(grupo[k])));
        const QByteArray tres = QByteArray()
                                    .append(static_cast<char>(c[0] << 2 | c[1] >> 4))
                                    .append(static_cast<char>((c[1] & 15) << 4 | c[2] >> 2))
                                    .append(static_cast<char>((c[2] & 3) << 6 | c[3]));
        bytes += tres.left(grupo.size() - 1);
    }
    return bytes;
}
} // namespace

class TesteBase64 : public QObject
{
    Q_OBJECT

private slots:
    void codifica_data();
    void codifica();
    void linhasTem76CaracteresComQualquerTamanho();
    void ultimaLinhaCheiaNaoGanhaQuebra();
    void voltaTodoByteComoBytesEComoTexto();
    void decodifica_data();
    void decodifica();
    void decodificaQualquerCoisaPelasRegras();
    void entradaVaziaEErro();
    void soSinaisDeIgualNaoDaoNada();

    void construtorCresceDe10000Em10000();
    void construtorCresceVariasVezesDeUmaVez();
    void valorNovoDescartaOAnterior();
    void valorNovoPodeVirDoProprioConteudo();
    void passoDeCrescimentoPodeMudar();
    void tamanhoAlemDe31BitsEErro();
    void valorPodeSerLevadoSemCopia();
};

void TesteBase64::codifica_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("texto");
    QTest::newRow("um byte") << QByteArray("M") << "TQ==";
    QTest::newRow("dois bytes") << QByteArray("Ma") << "TWE=";
    QTest::newRow("três bytes") << QByteArray("Man") << "TWFu";
    QTest::newRow("os valores mais altos") << QByteArray("\xFF\xFF\xFF\xFB\xF0") << "////+/A=";
    QTest::newRow("57 bytes") << QByteArray(57, '\0') << QString(76, 'A');
    QTest::newRow("58 bytes") << QByteArray(58, '\0') << QString(76, 'A') + "\r\nAA==";
    QTest::newRow("114 bytes") << QByteArray(114, '\0') << QString(76, 'A') + "\r\n" + QString(76, 'A');
}

void TesteBase64::codifica()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, texto);
    const Base64Class base64;
    QCOMPARE(base64.EncodeByteArray(bytes), texto);
    QCOMPARE(base64.EncodeString(PaginaCodigo::DeAnsi(bytes)), texto);
    QCOMPARE(base64.DecodeToByteArray(texto), bytes);
}

void TesteBase64::linhasTem76CaracteresComQualquerTamanho()
{
    const Base64Class base64;
    QRandomGenerator acaso(2005);
    QByteArray bytes;
    for (int n = 1; n <= 400; ++n) {
        bytes += static_cast<char>(acaso.bounded(256));
        const QByteArray texto = base64.Codificar(bytes);
        QCOMPARE(texto, EmLinhas(bytes));
        QCOMPARE(base64.Decodificar(texto), bytes);
    }
}

void TesteBase64::ultimaLinhaCheiaNaoGanhaQuebra()
{
    const QString texto = Base64Class().EncodeByteArray(QByteArray(114, 'x'));
    QCOMPARE(texto.size(), 154);
    QCOMPARE(texto.indexOf("\r\n"), 76);
    QVERIFY(!texto.endsWith("\r\n"));
}

void TesteBase64::voltaTodoByteComoBytesEComoTexto()
{
    const Base64Class base64;
    const QByteArray bytes = TodosOsBytes();
    const QString texto = PaginaCodigo::DeAnsi(bytes);
    QCOMPARE(base64.DecodeToByteArray(base64.EncodeByteArray(bytes)), bytes);
    QCOMPARE(base64.DecodeToString(base64.EncodeString(texto)), texto);
    QCOMPARE(base64.EncodeString("Pão d'água €"),
             QString::fromLatin1(QByteArray("P\xE3o d'\xE1gua \x80").toBase64()));
}

void TesteBase64::decodifica_data()
{
    QTest::addColumn<QByteArray>("texto");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("dois caracteres sem =") << QByteArray("QQ") << QByteArray("A");
    QTest::newRow("três caracteres sem =") << QByteArray("TWE") << QByteArray("Ma");
    QTest::newRow("um caractere só") << QByteArray("Q") << QByteArray();
    QTest::newRow("um caractere depois de um grupo") << QByteArray("TWFuQ") << QByteArray("Man");
    QTest::newRow("CR LF no meio de um grupo") << QByteArray("TW\r\nFu") << QByteArray("Man");
    QTest::newRow("CR LF sem fim") << QByteArray("TWFu\r\n\r\n") << QByteArray("Man");
    QTest::newRow("= no meio") << QByteArray("T=WF=u") << QByteArray("Man");
    QTest::newRow("LF sozinho vale zero") << QByteArray("TWFu\nTWF") << QByteArray("Man\x01\x35\x85", 6);
    QTest::newRow("CR sozinho vale zero") << QByteArray("TWFu\rTWF") << QByteArray("Man\x01\x35\x85", 6);
    QTest::newRow("CR no fim vale zero") << QByteArray("TWF\r") << QByteArray("Ma\x40");
    QTest::newRow("CR = LF não é CR LF") << QByteArray("TW\r=\n") << QByteArray("M`\0", 3);
    QTest::newRow("CR CR LF LF perde só o par") << QByteArray("TW\r\r\n\n") << QByteArray("M`\0", 3);
    QTest::newRow("espaço e tabulação valem zero") << QByteArray("TW \t") << QByteArray("M`\0", 3);
    QTest::newRow("letra acentuada vale zero") << QByteArray("TW\xE3u") << QByteArray("M`.");
    QTest::newRow("alfabeto de endereços vale zero") << QByteArray("-_-_") << QByteArray(3, '\0');
}

void TesteBase64::decodifica()
{
    QFETCH(QByteArray, texto);
    QFETCH(QByteArray, bytes);
    QCOMPARE(Base64Class().Decodificar(texto), bytes);
    QCOMPARE(Base64Class().DecodeToByteArray(PaginaCodigo::DeAnsi(texto)), bytes);
}

void TesteBase64::decodificaQualquerCoisaPelasRegras()
{
    const QByteArray letras = "AZaz09+/==\r\n\r\n \n\r-\xE7QUJD";
    const Base64Class base64;
    QRandomGenerator acaso(6);
    for (int vez = 0; vez < 20000; ++vez) {
        QByteArray texto;
        for (int n = acaso.bounded(1, 40); n > 0; --n)
            texto += letras[acaso.bounded(static_cast<int>(letras.size()))];
        QCOMPARE(base64.Decodificar(texto), DecodificarPassoAPasso(texto));
    }
}

void TesteBase64::entradaVaziaEErro()
{
    const Base64Class base64;
    QVERIFY_EXCEPTION_THROWN(base64.EncodeString(""), std::invalid_argument);
    QVERIFY_EXCEPTION_THROWN(base64.EncodeByteArray({}), std::invalid_argument);
    QVERIFY_EXCEPTION_THROWN(base64.DecodeToString(""), std::invalid_argument);
    QVERIFY_EXCEPTION_THROWN(base64.DecodeToByteArray(""), std::invalid_argument);
}

void TesteBase64::soSinaisDeIgualNaoDaoNada()
{
    QCOMPARE(Base64Class().DecodeToByteArray("==\r\n="), QByteArray());
}

void TesteBase64::construtorCresceDe10000Em10000()
{
    StringClass texto;
    QCOMPARE(texto.BufferSize(), 10000);
    QCOMPARE(texto.Capacity(), 0);
    QCOMPARE(texto.Value(), QString());
    texto.Append(u"abc");
    QCOMPARE(texto.Capacity(), 10000);
    texto.Append(QString(9997, 'x'));
    QCOMPARE(texto.Capacity(), 10000);
    texto.Append(u"y");
    QCOMPARE(texto.Capacity(), 20000);
    QCOMPARE(texto.Value(), "abc" + QString(9997, 'x') + "y");
}

void TesteBase64::construtorCresceVariasVezesDeUmaVez()
{
    StringClass texto;
    const QString longo = QString("ção12").repeated(5000);
    texto.Append(longo);
    QCOMPARE(texto.Capacity(), 30000);
    QCOMPARE(texto.Length(), 25000);
    QCOMPARE(texto.Value(), longo);
}

void TesteBase64::valorNovoDescartaOAnterior()
{
    StringClass texto;
    texto.Append(QString(15000, 'a'));
    texto.SetValue(u"bolo");
    QCOMPARE(texto.Value(), "bolo");
    QCOMPARE(texto.Capacity(), 10000);
}

void TesteBase64::valorNovoPodeVirDoProprioConteudo()
{
    StringClass texto;
    texto.Append(u"bolo de fubá");
    const QString antes = texto.Value();
    texto.SetValue(QStringView(antes).first(4));
    QCOMPARE(texto.Value(), "bolo");
}

void TesteBase64::passoDeCrescimentoPodeMudar()
{
    StringClass texto;
    texto.SetBufferSize(3);
    texto.Append(u"abcd");
    QCOMPARE(texto.BufferSize(), 3);
    QCOMPARE(texto.Capacity(), 6);
    QVERIFY_EXCEPTION_THROWN(texto.SetBufferSize(0), std::invalid_argument);
    QCOMPARE(texto.BufferSize(), 3);
}

void TesteBase64::tamanhoAlemDe31BitsEErro()
{
    StringClass texto;
    texto.Append(u"bolo");
    // Refused before a single character of it is read.
    const QStringView enorme(u"x", std::numeric_limits<qint32>::max());
    QVERIFY_EXCEPTION_THROWN(texto.Append(enorme), std::overflow_error);
    QCOMPARE(texto.Value(), "bolo");
}

void TesteBase64::valorPodeSerLevadoSemCopia()
{
    StringClass texto;
    texto.Append(u"bolo");
    QCOMPARE(std::move(texto).Value(), "bolo");
    QCOMPARE(texto.Length(), 0);
    texto.Append(u"pão");
    QCOMPARE(texto.Value(), "pão");
}

QTEST_GUILESS_MAIN(TesteBase64)
#include "teste_base64.moc"
