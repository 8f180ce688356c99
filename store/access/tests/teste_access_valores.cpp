// What the bytes of a value mean: texts, numbers, dates and long values, in both formats.
#include "store/access/Rc4.h"
#include "store/access/Valores.h"
#include "store/access/tests/LivroFeito.h"

#include <QtTest>

#include <cmath>

using Access::Trecho;

class TesteAccessValores : public QObject
{
    Q_OBJECT
private slots:
    void cifraComoOPrevisto();
    void oTrechoNaoDeixaSairDosLimites();
    void leTextoDeUmByte();
    void leTextoComprimido_data();
    void leTextoComprimido();
    void trocaMeioParPorSinalDeTroca();
    void recusaMeioCaractere();
    void leDatas_data();
    void leDatas();
    void recusaDatasQueNaoExistem();
    void leDecimais_data();
    void leDecimais();
    void leQualquerTipoDeNumero_data();
    void leQualquerTipoDeNumero();
    void recusaNumerosQueNaoExistem();
    void leMemosDeTodasAsFormas_data();
    void leMemosDeTodasAsFormas();
    void oTextoDeLarguraFixaPerdeOsBrancosDoFim();
    void distingueNuloDeVazio_data();
    void distingueNuloDeVazio();
};

void TesteAccessValores::cifraComoOPrevisto()
{
    // Published examples of the cipher.
    QCOMPARE(Access::Rc4("Key", "Plaintext").toHex(), QByteArray("bbf316e8d940af0ad3"));
    QCOMPARE(Access::Rc4("Wiki", "pedia").toHex(), QByteArray("1021bf0420"));
    // The stream that masks the header.
    QCOMPARE(Access::Rc4(QByteArrayView("\xC7\xDA\x39\x6B", 4), QByteArray(16, '\0')).toHex(),
             QByteArray("b56f03626108c255eba96772433f009c"));
}

void TesteAccessValores::oTrechoNaoDeixaSairDosLimites()
{
    const QByteArray bytes("\x01\x02\x03\x04\x05\x06\x07\x08", 8);
    const Trecho trecho{bytes};
    QCOMPARE(trecho.U8(7), 8);
    QCOMPARE(trecho.U16(6), 0x0807);
    QCOMPARE(trecho.U32(4), 0x08070605u);
    QCOMPARE(trecho.I64(0), 0x0807060504030201);
    QCOMPARE(trecho.Desde(8).Tamanho(), 0);
    QVERIFY_EXCEPTION_THROWN(trecho.U8(8), Access::ErroAccess);
    QVERIFY_EXCEPTION_THROWN(trecho.U16(7), Access::ErroAccess);
    QVERIFY_EXCEPTION_THROWN(trecho.U32(5), Access::ErroAccess);
    QVERIFY_EXCEPTION_THROWN(trecho.F64(1), Access::ErroAccess);
    QVERIFY_EXCEPTION_THROWN(trecho.U8(-1), Access::ErroAccess);
    QVERIFY_EXCEPTION_THROWN(trecho.Parte(4, 5), Access::ErroAccess);
    QVERIFY_EXCEPTION_THROWN(trecho.Parte(4, -1), Access::ErroAccess);
    QVERIFY_EXCEPTION_THROWN(trecho.Desde(9), Access::ErroAccess);
    QVERIFY_EXCEPTION_THROWN(trecho.Parte(std::numeric_limits<qint64>::max(), 2), Access::ErroAccess);
}

void TesteAccessValores::leTextoDeUmByte()
{
    QCOMPARE(Access::TextoDaPagina1252(Trecho{QByteArrayView("\x93P\xE3o\x94 \x96 \x80 2\x85")}),
             "“Pão” – € 2…");
    QCOMPARE(Access::TextoDaPagina1252(Trecho{QByteArrayView("\x81\x8D\x8F\x90\x9D")}),
             QString("\u0081\u008D\u008F\u0090\u009D"));
}

void TesteAccessValores::leTextoComprimido_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("texto");
    QTest::newRow("sem compressão") << QByteArray("P\0\xE3\0o\0", 6) << "Pão";
    QTest::newRow("nada") << QByteArray() << "";
    QTest::newRow("comprimido e vazio") << QByteArray("\xFF\xFE") << "";
    QTest::newRow("estreito") << QByteArray("\xFF\xFEP\xE3o") << "Pão";
    QTest::newRow("estreito é Latin-1, não 1252")
        << QByteArray("\xFF\xFE\x80\x93") << QString("\u0080\u0093");
    QTest::newRow("largo no meio") << QByteArray("\xFF\xFE"
                                                 "a\0\x1C\x20\x1D\x20\0b",
                                                 10)
                                   << "a“”b";
    QTest::newRow("largo até o fim") << QByteArray("\xFF\xFE"
                                                   "a\0\xAC\x20",
                                                   6)
                                     << "a€";
    QTest::newRow("largo desde o começo") << QByteArray("\xFF\xFE\0\xAC\x20\0x", 7) << "€x";
    QTest::newRow("duas vezes") << QByteArray("\xFF\xFE\0\xAC\x20\0x\0\x13\x20", 10) << "€x–";
    QTest::newRow("um byte alto zero não troca") << QByteArray("\xFF\xFE\0A\0\xAC\x20\0", 8) << "A€";
    QTest::newRow("troca no fim") << QByteArray("\xFF\xFE"
                                                "a\0",
                                                4)
                                  << "a";
    QTest::newRow("um byte FF não basta") << QByteArray("\xFF\0", 2) << "ÿ";
}

void TesteAccessValores::leTextoComprimido()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, texto);
    QCOMPARE(Access::TextoJet4(Trecho{bytes}), texto);
}

void TesteAccessValores::trocaMeioParPorSinalDeTroca()
{
    const auto ler = [](const QByteArray &bytes) { return Access::TextoJet4(Trecho{bytes}); };
    QCOMPARE(ler(QByteArray("\x3D\xD8\x00\xDE", 4)), QString("😀"));
    QCOMPARE(ler(QByteArray("a\0\x3D\xD8", 4)), QString("a\uFFFD"));
    QCOMPARE(ler(QByteArray("\x00\xDE"
                            "a\0",
                            4)),
             QString("\uFFFDa"));
    QCOMPARE(ler(QByteArray("\x3D\xD8\x3D\xD8\x00\xDE", 6)), QString("\uFFFD") + "😀");
}

void TesteAccessValores::recusaMeioCaractere()
{
    QVERIFY_EXCEPTION_THROWN(Access::TextoJet4(Trecho{QByteArrayView("abc")}), Access::ErroAccess);
    QVERIFY_EXCEPTION_THROWN(Access::TextoJet4(Trecho{QByteArrayView("\xFF\xFE\0a", 4)}), Access::ErroAccess);
}

void TesteAccessValores::leDatas_data()
{
    QTest::addColumn<double>("numero");
    QTest::addColumn<QString>("data");
    QTest::newRow("zero") << 0.0 << "1899-12-30";
    QTest::newRow("dia") << 38046.0 << "2004-02-29";
    QTest::newRow("com hora") << 38158.0 + 56730.0 / 86400 << "2004-06-20 15:45:30";
    QTest::newRow("um segundo") << 38158.0 + 1.0 / 86400 << "2004-06-20 00:00:01";
    QTest::newRow("negativa, a fração anda para a frente") << -1.25 << "1899-12-29 06:00:00";
    QTest::newRow("negativa inteira") << -2.0 << "1899-12-28";
    QTest::newRow("menos um quarto de dia") << -0.25 << "1899-12-30 06:00:00";
    QTest::newRow("quase meia-noite vira o dia") << 36525.0 + 86399.6 / 86400 << "2000-01-01";
    QTest::newRow("quase meia-noite, fica") << 36525.0 + 86399.4 / 86400 << "1999-12-31 23:59:59";
    QTest::newRow("negativa, quase meia-noite") << -1.0 - 86399.6 / 86400 << "1899-12-30";
    QTest::newRow("a primeira") << -657434.0 << "0100-01-01";
    QTest::newRow("a última") << 2958465.0 << "9999-12-31";
    QTest::newRow("o último segundo não vira") << 2958465.0 + 86399.9 / 86400 << "9999-12-31 23:59:59";
}

void TesteAccessValores::leDatas()
{
    QFETCH(double, numero);
    QFETCH(QString, data);
    QCOMPARE(Access::DataDoNumero(numero), data);
}

void TesteAccessValores::recusaDatasQueNaoExistem()
{
    const double infinito = std::numeric_limits<double>::infinity();
    for (const double numero :
         {-657435.0, -657434.5, 2958466.0, 1e300, -1e300, infinito, -infinito, std::nan("")})
        QVERIFY_EXCEPTION_THROWN(Access::DataDoNumero(numero), Access::ErroAccess);
}

void TesteAccessValores::leDecimais_data()
{
    QTest::addColumn<bool>("negativo");
    QTest::addColumn<QList<quint32>>("palavras");
    QTest::addColumn<int>("escala");
    QTest::addColumn<double>("numero");
    QTest::newRow("zero") << false << QList<quint32>{0, 0, 0, 0} << 2 << 0.0;
    QTest::newRow("menos zero") << true << QList<quint32>{0, 0, 0, 0} << 0 << 0.0;
    QTest::newRow("inteiro") << false << QList<quint32>{0, 0, 0, 42} << 0 << 42.0;
    QTest::newRow("duas casas") << false << QList<quint32>{0, 0, 0, 150} << 2 << 1.5;
    QTest::newRow("negativo") << true << QList<quint32>{0, 0, 0, 21550} << 2 << -215.5;
    QTest::newRow("um bilhão") << false << QList<quint32>{0, 0, 0, 1000000000} << 0 << 1e9;
    QTest::newRow("segunda palavra") << false << QList<quint32>{0, 0, 1, 0} << 0 << 4294967296.0;
    QTest::newRow("todas as palavras") << false << QList<quint32>{1, 0, 0, 0} << 0 << std::pow(2.0, 96);
    QTest::newRow("28 casas") << false << QList<quint32>{0, 542101086, 1042612833, 2682630144u} << 28
                              << 1.0000000000000000;
}

void TesteAccessValores::leDecimais()
{
    QFETCH(bool, negativo);
    QFETCH(QList<quint32>, palavras);
    QFETCH(int, escala);
    QFETCH(double, numero);
    const QByteArray bytes = EscritorJet::decimal(negativo, palavras);
    const double lido = Access::NumeroDecimal(Trecho{bytes}, escala);
    QVERIFY2(std::abs(lido - numero) <= std::abs(numero) * 1e-12, qPrintable(QString::number(lido, 'g', 17)));
    QVERIFY(numero != 0 || !std::signbit(lido));
}

void TesteAccessValores::leQualquerTipoDeNumero_data()
{
    QTest::addColumn<int>("jet");
    QTest::addColumn<int>("tipo");
    QTest::addColumn<bool>("fixa");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<double>("numero");
    using E = EscritorJet;
    for (const int jet : {3, 4}) {
        for (const bool fixa : {true, false}) {
            const auto linha = [&](const char *nome, int tipo, const QByteArray &bytes, double numero) {
                QTest::addRow("Jet %d, %s%s", jet, nome, fixa ? "" : ", na área variável")
                    << jet << tipo << fixa << bytes << numero;
            };
            linha("byte", E::Byte, QByteArray("\xFF"), 255);
            linha("inteiro", E::Inteiro, E::inteiro(-300), -300);
            linha("longo", E::Longo, E::longo(-70000), -70000);
            linha("moeda", E::Moeda, E::moeda(12345678), 1234.5678);
            linha("moeda negativa", E::Moeda, E::moeda(-5), -0.0005);
            linha("simples", E::Simples, E::simples(98.3F), 98.3);
            linha("duplo", E::Duplo, E::duplo(215.5), 215.5);
            if (jet == 4)
                linha("decimal", E::Decimal, E::decimal(true, {0, 0, 0, 150}), -1.5);
        }
    }
}

void TesteAccessValores::leQualquerTipoDeNumero()
{
    QFETCH(int, jet);
    QFETCH(int, tipo);
    QFETCH(bool, fixa);
    QFETCH(QByteArray, bytes);
    QFETCH(double, numero);
    LivroFeito livro(jet);
    for (EscritorJet::Coluna &coluna : livro.receitas.colunas)
        if (coluna.nome == "Calorias")
            coluna = {.nome = "Calorias", .tipo = tipo, .fixa = fixa, .escala = 2};
    livro.Receita(1, "Pão", {{"Calorias", bytes}});
    livro.Receita(2, "Bolo");
    const LivroAccess lido = Ler(livro.Bytes());
    QCOMPARE(lido.receitas[0].Calorias.value(), numero);
    QVERIFY(!lido.receitas[1].Calorias);
    QCOMPARE(lido.receitas[0].Nome.value(), "Pão");
    QCOMPARE(lido.receitas[0].Modo.value(), "Misture Pão");
}

void TesteAccessValores::recusaNumerosQueNaoExistem()
{
    const double infinito = std::numeric_limits<double>::infinity();
    for (const double numero : {infinito, -infinito, std::nan("")}) {
        LivroFeito livro(4);
        livro.Receita(1, "Pão", {{"Calorias", EscritorJet::duplo(numero)}});
        QVERIFY(Recusa(livro.Bytes()).contains("um número que não existe"));
    }
    LivroFeito livro(4);
    livro.receitas.colunas[10] = {
        .nome = "Calorias", .tipo = EscritorJet::Decimal, .fixa = true, .escala = 29};
    livro.Receita(1, "Pão", {{"Calorias", EscritorJet::decimal(false, {0, 0, 0, 1})}});
    QVERIFY(Recusa(livro.Bytes()).contains("casas demais"));
}

void TesteAccessValores::leMemosDeTodasAsFormas_data()
{
    QTest::addColumn<int>("jet");
    QTest::addColumn<int>("forma");
    QTest::addColumn<int>("tamanho");
    for (const int jet : {3, 4}) {
        for (const int tamanho : {0, 1, 20, 1000})
            QTest::addRow("Jet %d, um registro de %d", jet, tamanho) << jet << 1 << tamanho;
        for (const int tamanho : {0, 1, 26, 60})
            QTest::addRow("Jet %d, em linha, %d", jet, tamanho) << jet << 0 << tamanho;
        for (const int tamanho : {1, 999, 1000, 1001, 30000, 200000})
            QTest::addRow("Jet %d, em cadeia, %d", jet, tamanho) << jet << 2 << tamanho;
        for (const int tamanho : {1, 3, 50})
            QTest::addRow("Jet %d, em pedaços de dois bytes, %d", jet, tamanho) << jet << 3 << tamanho;
    }
}

void TesteAccessValores::leMemosDeTodasAsFormas()
{
    QFETCH(int, jet);
    QFETCH(int, forma);
    QFETCH(int, tamanho);
    QString texto;
    for (int i = 0; i < tamanho; ++i)
        texto += QChar(u'a' + i % 26);
    if (tamanho > 3)
        texto.replace(1, 2, "“é");
    LivroFeito livro(jet);
    const QByteArray bytes = livro.escritor.texto(texto);
    const QByteArray valor = forma == 0   ? livro.escritor.memoEmLinha(bytes)
                             : forma == 1 ? livro.escritor.memoEmUmRegistro(bytes)
                             : forma == 2 ? livro.escritor.memoEmCadeia(bytes)
                                          : livro.escritor.memoEmCadeia(bytes, 2);
    livro.Receita(1, "Pão", {{"Modo", valor}, {"Preparo", livro.escritor.texto("1 hora")}});
    const LivroAccess lido = Ler(livro.Bytes());
    QCOMPARE(lido.receitas[0].Modo.value(), texto);
    QCOMPARE(lido.receitas[0].Preparo.value(), "1 hora");
    QVERIFY(!lido.receitas[0].Observacao);
}

void TesteAccessValores::oTextoDeLarguraFixaPerdeOsBrancosDoFim()
{
    for (const int jet : {3, 4}) {
        LivroFeito livro(jet);
        const int porLetra = jet == 3 ? 1 : 2;
        livro.receitas.colunas[9] = {.nome = "Tipo_Calorias", .fixa = true, .tamanho = porLetra};
        livro.receitas.colunas[12] = {.nome = "Figura", .fixa = true, .tamanho = 14 * porLetra};
        livro.Receita(1, "Pão",
                      {{"Tipo_Calorias", livro.escritor.texto("R")},
                       {"Figura", livro.escritor.texto("F0000001.img  ")}});
        const LivroAccess lido = Ler(livro.Bytes());
        QCOMPARE(lido.receitas[0].Tipo_Calorias.value(), "R");
        QCOMPARE(lido.receitas[0].Figura.value(), "F0000001.img");
    }
}

void TesteAccessValores::distingueNuloDeVazio_data()
{
    QTest::addColumn<int>("jet");
    QTest::newRow("Jet 3") << 3;
    QTest::newRow("Jet 4") << 4;
}

void TesteAccessValores::distingueNuloDeVazio()
{
    QFETCH(int, jet);
    LivroFeito livro(jet);
    livro.Receita(1, "Pão", {{"Preparo", ""}, {"Observacao", livro.escritor.memoEmLinha("")}});
    livro.Receita(2, "Bolo");
    livro.Ingrediente(1, 1, "sal", {{"Quantidade", ""}});
    const LivroAccess lido = Ler(livro.Bytes());
    QCOMPARE(lido.receitas[0].Preparo, std::optional<QString>(""));
    QCOMPARE(lido.receitas[0].Observacao, std::optional<QString>(""));
    QVERIFY(!lido.receitas[0].Origem);
    QVERIFY(!lido.receitas[1].Preparo);
    QVERIFY(!lido.receitas[1].Observacao);
    QVERIFY(!lido.receitas[1].Data);
    QCOMPARE(lido.ingredientes[0].Quantidade, std::optional<QString>(""));
    QVERIFY(!lido.ingredientes[0].Unidade);
}

QTEST_GUILESS_MAIN(TesteAccessValores)
#include "teste_access_valores.moc"
