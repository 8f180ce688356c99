#include "store/Semelhante.h"

#include <QTest>

class TesteSemelhante : public QObject
{
    Q_OBJECT

private slots:
    void casaComOPadrao_data();
    void casaComOPadrao();
    void naoDemoraComMuitosCuringas();
};

void TesteSemelhante::casaComOPadrao_data()
{
    QTest::addColumn<QString>("padrao");
    QTest::addColumn<QString>("texto");
    QTest::addColumn<bool>("casa");
    const auto linha = [](const char *padrao, const char *texto, bool casa) {
        QTest::addRow("%s em %s", padrao, texto)
            << QString::fromUtf8(padrao) << QString::fromUtf8(texto) << casa;
    };
    linha("%PÃO%", "Um pão doce", true);
    linha("%PÃO%", "Um pao doce", false);
    linha("%pao%", "PÃO", false);
    linha("ÇÉÑŒŠ", "çéñœš", true);
    linha("", "", true);
    linha("", "a", false);
    linha("%", "", true);
    linha("%%", "qualquer coisa", true);
    linha("a%", "abc", true);
    linha("%c", "abc", true);
    linha("a%c", "abcb", false);
    linha("%bc%bd", "abcbcbd", true);
    linha("_ão", "PÃO", true);
    linha("_", "", false);
    linha("_", "é", true);
    linha("_", "😀", true);
    linha("__", "😀", false);
    linha("[a-c]olo", "bolo", true);
    linha("[a-c]olo", "Bolo", true);
    linha("[a-c]olo", "dolo", false);
    linha("[a-z]gua", "água", true);
    linha("[áé]gua", "água", true);
    linha("[ae]gua", "água", false);
    linha("[!b]olo", "bolo", false);
    linha("[!b]olo", "Bolo", false);
    linha("[!b]olo", "colo", true);
    linha("[!b]olo", "olo", false);
    linha("[!a-c]olo", "dolo", true);
    linha("[!]", "!", true);
    linha("[a!]", "!", true);
    linha("100[%]", "100%", true);
    linha("100[%]", "1000", false);
    linha("[_]", "_", true);
    linha("[_]", "a", false);
    linha("[[]", "[", true);
    linha("[a-]", "-", true);
    linha("[-a]", "-", true);
    linha("[0-9] ovos", "3 ovos", true);
    linha("a[]b", "ab", true);
    linha("a[b", "a[b", true);
    linha("%[%", "1 [kg", true);
    linha("%]%", "kg]", true);
    linha("-", "-", true);
    linha("*", "abc", false);
    linha("?", "a", false);
    linha("a\\b", "a\\b", true);
}

void TesteSemelhante::casaComOPadrao()
{
    QFETCH(QString, padrao);
    QFETCH(QString, texto);
    QFETCH(bool, casa);
    QCOMPARE(Semelhante(padrao.toStdString()).Casa(texto.toStdString()), casa);
}

/// A matcher that tries every split would not come back from this.
void TesteSemelhante::naoDemoraComMuitosCuringas()
{
    std::string padrao;
    for (int i = 0; i < 30; ++i)
        padrao += "%a";
    QVERIFY(!Semelhante(padrao + "b").Casa(std::string(5000, 'a')));
    QVERIFY(Semelhante(padrao).Casa(std::string(5000, 'a')));
}

QTEST_GUILESS_MAIN(TesteSemelhante)
#include "teste_semelhante.moc"
