#include "base/Ordem.h"

#include "base/PaginaCodigo.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <vector>

namespace
{
int Comparar(const QString &a, const QString &b)
{
    return Ordem::Comparar(QStringView(a), QStringView(b));
}

/// The promise in its slow form: what is left of a text when its letter case is set aside.
QString SemCaixa(const QString &texto)
{
    QString saida;
    for (const char32_t c : texto.toUcs4()) {
        const bool daPagina = PaginaCodigo::ByteDe(c) >= 0;
        const char32_t minuscula = QChar::toLower(c);
        saida += QChar::fromUcs4(daPagina && PaginaCodigo::ByteDe(minuscula) >= 0 ? minuscula : c);
    }
    return saida;
}

/// Texts of a few characters out of few, so that near-equal ones meet often.
QString Sortear(QRandomGenerator &sorte)
{
    static const QString letras = "aAáÁàãªæÆeoœŒºsSßšŠtTþÞhnÑñ '-–\u00AD.½1¹10ÿŸyžŽ…€μЖ北😀\t";
    static const QList<uint> codigos = letras.toUcs4();
    QString texto;
    for (int n = sorte.bounded(6); n > 0; --n)
        texto += QChar::fromUcs4(codigos[sorte.bounded(codigos.size())]);
    return texto;
}

/// The same in bytes, with some that are no UTF-8.
std::string SortearBytes(QRandomGenerator &sorte)
{
    static const std::vector<std::string> pecas = {
        "a", "A", "\xC3\xA1", "\xC3",     "\xA1", "\x80", "\xF0\x9F", "\xE2\x80\x93",
        "-", "'", "\xFF",     "\xC0\xAF", "b"};
    std::string texto;
    for (int n = sorte.bounded(6); n > 0; --n)
        texto += pecas[static_cast<std::size_t>(sorte.bounded(static_cast<int>(pecas.size())))];
    return texto;
}
} // namespace

class TesteOrdem : public QObject
{
    Q_OBJECT

private slots:
    void ordenaComoOsLivrosAntigos_data();
    void ordenaComoOsLivrosAntigos();
    void igualaSoOQueDifereNaCaixa_data();
    void igualaSoOQueDifereNaCaixa();
    void nuncaIgualaTextosDiferentes();
    void cadaCaractereDaPaginaTemLugarProprio();
    void formaUmaOrdemTotal();
    void utf8EUtf16Concordam();
    void bytesQueNaoSaoUtf8TambemTemOrdem();
    void asChavesComparamComoOsTextos();
};

void TesteOrdem::ordenaComoOsLivrosAntigos_data()
{
    QTest::addColumn<QString>("antes");
    QTest::addColumn<QString>("depois");
    const auto linha = [](const char *nome, const char *antes, const char *depois) {
        QTest::newRow(nome) << QString::fromUtf8(antes) << QString::fromUtf8(depois);
    };
    linha("o vazio vem primeiro", "", " ");
    linha("o prefixo vem antes", "Pão", "Pão de queijo");
    linha("o apóstrofo quase não conta", "Pão da casa", "Pão d'água");
    linha("o hífen quase não conta", "Carnes", "Carne-seca");
    linha("mas desempata", "Carneseca", "Carne-seca");
    linha("quanto antes o hífen, antes o texto", "ca-rneseca", "carne-seca");
    linha("apóstrofo antes de hífen", "d'agua", "d-agua");
    linha("um hífen antes de dois", "pé-de", "pé-de-");
    linha("o segundo hífen mais à esquerda vem antes", "pe--de-moleque", "pe-de-moleque");
    linha("o acento vem depois da letra", "coco", "cocó");
    linha("o acento só desempata", "Pé", "Pedaço");
    linha("o acento pesa mais que o hífen", "a-vó", "ávo");
    linha("o primeiro acento decide", "maça", "mácà");
    linha("agudo, grave, circunflexo, til", "pá", "pà");
    linha("grave antes de circunflexo", "pà", "pâ");
    linha("circunflexo antes de til", "pâ", "pã");
    linha("cedilha depois de c", "laca", "laça");
    linha("cedilha não é letra nova", "laça", "lada");
    linha("eñe não é letra nova", "peña", "peo");
    linha("a caixa não conta", "ABACATE", "abacaxi");
    linha("branco antes de sinal", "a b", "a!b");
    linha("sinal antes de algarismo", "Bolo (2)", "Bolo 2");
    linha("algarismo antes de letra", "9 ovos", "Abóbora");
    linha("algarismo a algarismo", "Bolo 10", "Bolo 2");
    linha("meio entre zero e um", "0 kg", "½ kg");
    linha("meio antes de um", "½ kg", "1 kg");
    linha("ordinal depois da letra", "1a", "1ª");
    linha("o que a página não tem vem depois", "zebra", "Жаркое");
    linha("e em ordem de código", "Ж", "北");
    linha("fora do plano básico por último", "北", "😀");
}

void TesteOrdem::ordenaComoOsLivrosAntigos()
{
    QFETCH(QString, antes);
    QFETCH(QString, depois);
    QVERIFY(Comparar(antes, depois) < 0);
    QVERIFY(Comparar(depois, antes) > 0);
    QCOMPARE(Comparar(antes, antes), 0);
}

void TesteOrdem::igualaSoOQueDifereNaCaixa_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<bool>("iguais");
    QTest::newRow("letras") << "PÃO DE LÓ"
                            << "pão de ló" << true;
    QTest::newRow("fora do Latin-1") << "ŠŽŒŸ"
                                     << "šžœÿ" << true;
    QTest::newRow("acento") << "pão"
                            << "pao" << false;
    QTest::newRow("hífen") << "couveflor"
                           << "couve-flor" << false;
    QTest::newRow("travessão") << "couve–flor"
                               << "couve-flor" << false;
    QTest::newRow("branco no fim") << "sal"
                                   << "sal " << false;
    QTest::newRow("ligadura") << "œuf"
                              << "oeuf" << false;
    QTest::newRow("esse agudo") << "ß"
                                << "ss" << false;
    QTest::newRow("grego, que a tabela não tem") << "Ω"
                                                 << "ω" << false;
}

void TesteOrdem::igualaSoOQueDifereNaCaixa()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(bool, iguais);
    QCOMPARE(Comparar(a, b) == 0, iguais);
    QCOMPARE(Comparar(b, a) == 0, iguais);
}

void TesteOrdem::nuncaIgualaTextosDiferentes()
{
    QRandomGenerator sorte(20051121);
    int iguais = 0;
    for (int i = 0; i < 200000; ++i) {
        const QString a = Sortear(sorte);
        const QString b = Sortear(sorte);
        const bool igual = Comparar(a, b) == 0;
        iguais += igual;
        if (igual != (SemCaixa(a) == SemCaixa(b)))
            QFAIL(qPrintable("'" + a + "' e '" + b + "'"));
    }
    QVERIFY(iguais > 1000);
}

void TesteOrdem::cadaCaractereDaPaginaTemLugarProprio()
{
    for (int a = 0; a < 256; ++a)
        for (int b = 0; b < a; ++b) {
            const QString textoA = PaginaCodigo::DeAnsi(QByteArray(1, static_cast<char>(a)));
            const QString textoB = PaginaCodigo::DeAnsi(QByteArray(1, static_cast<char>(b)));
            QCOMPARE(Comparar(textoA, textoB) == 0, SemCaixa(textoA) == SemCaixa(textoB));
        }
}

void TesteOrdem::formaUmaOrdemTotal()
{
    QRandomGenerator sorte(1);
    for (int i = 0; i < 200000; ++i) {
        const QString a = Sortear(sorte);
        const QString b = Sortear(sorte);
        const QString c = Sortear(sorte);
        QCOMPARE(Comparar(a, b), -Comparar(b, a));
        if (Comparar(a, b) <= 0 && Comparar(b, c) <= 0 && Comparar(a, c) > 0)
            QFAIL(qPrintable("'" + a + "' '" + b + "' '" + c + "'"));
    }
}

void TesteOrdem::utf8EUtf16Concordam()
{
    QRandomGenerator sorte(2);
    for (int i = 0; i < 100000; ++i) {
        const QString inicio = Sortear(sorte); // a common beginning is skipped in one of the two
        const QString a = inicio + Sortear(sorte);
        const QString b = inicio + Sortear(sorte);
        if (Ordem::Comparar(a.toStdString(), b.toStdString()) != Comparar(a, b))
            QFAIL(qPrintable("'" + a + "' e '" + b + "'"));
    }
}

void TesteOrdem::bytesQueNaoSaoUtf8TambemTemOrdem()
{
    QRandomGenerator sorte(3);
    for (int i = 0; i < 200000; ++i) {
        const std::string inicio = SortearBytes(sorte);
        const std::string a = inicio + SortearBytes(sorte);
        const std::string b = inicio + SortearBytes(sorte);
        const std::string c = inicio + SortearBytes(sorte);
        QCOMPARE(Ordem::Comparar(a, b), -Ordem::Comparar(b, a));
        if (Ordem::Comparar(a, b) <= 0 && Ordem::Comparar(b, c) <= 0)
            QVERIFY(Ordem::Comparar(a, c) <= 0);
        std::string minusculaA = a;
        std::string minusculaB = b;
        std::replace(minusculaA.begin(), minusculaA.end(), 'A', 'a');
        std::replace(minusculaB.begin(), minusculaB.end(), 'A', 'a');
        QCOMPARE(Ordem::Comparar(a, b) == 0, minusculaA == minusculaB);
    }
}

void TesteOrdem::asChavesComparamComoOsTextos()
{
    QRandomGenerator sorte(4);
    const auto sinal = [](int n) { return (n > 0) - (n < 0); };
    for (int i = 0; i < 200000; ++i) {
        const bool bytes = i % 4 == 0;
        const std::string a = bytes ? SortearBytes(sorte) : Sortear(sorte).toStdString();
        const std::string b = bytes ? SortearBytes(sorte) : Sortear(sorte).toStdString();
        if (sinal(Ordem::Chave(a).compare(Ordem::Chave(b))) != sinal(Ordem::Comparar(a, b)))
            QFAIL(("'" + a + "' e '" + b + "'").c_str());
    }
}

QTEST_GUILESS_MAIN(TesteOrdem)
#include "teste_ordem.moc"
