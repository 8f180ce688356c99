#include "formatos/LinhaDeIngrediente.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Formatos;

class TesteLinhas : public QObject
{
    Q_OBJECT

private slots:
    void Tabela_data();
    void Tabela();
    void Outras_data();
    void Outras();
    void Numeros_data();
    void Numeros();
    void TextoDeVolta_data();
    void TextoDeVolta();
};

void TesteLinhas::Tabela_data()
{
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QStringList>("partes");
    QFile arquivo(PASTA_FONTES "/tests/data/linhas.json");
    QVERIFY(arquivo.open(QIODevice::ReadOnly));
    const QJsonArray linhas = QJsonDocument::fromJson(arquivo.readAll()).object()["linhas"].toArray();
    QVERIFY(linhas.size() > 50);
    for (const QJsonValue linha : linhas)
        QTest::newRow(qPrintable(linha[0].toString()))
            << linha[0].toString()
            << QStringList{linha[1].toString(), linha[2].toString(), linha[3].toString()};
}

void TesteLinhas::Tabela()
{
    QFETCH(QString, texto);
    QFETCH(QStringList, partes);
    const Linha linha = SepararLinha(texto);
    QCOMPARE(QStringList({linha.Quantidade, linha.Unidade, linha.Ingrediente}), partes);
}

void TesteLinhas::Outras_data()
{
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QStringList>("partes");
    const auto caso = [](const char *texto, const char *q, const char *u, const char *i) {
        QTest::newRow(texto) << QString(texto) << QStringList{q, u, i};
    };
    caso("- 2 ovos;", "2", "", "ovos");
    caso("• sal.", "", "", "sal");
    caso("2 unid.", "2", "", "unid.");
    caso("70% cacau", "", "", "70% cacau");
    caso("8-ounce steak", "", "", "8-ounce steak");
    caso("7up gelado", "", "", "7up gelado");
    caso("1 xícara de café", "1", "xícara", "café");
    caso("1 xícara (café) de leite", "1", "xícara (café)", "leite");
    caso("1 col. (sopa) de mel", "1", "col. (sopa)", "mel");
    caso("1 pé de alface", "1", "pé", "alface");
    caso("1 pé-de-moleque", "1", "", "pé-de-moleque");
    caso("1 e meia xícara de leite", "1 1/2", "xícara", "leite");
    caso("2 kg e meio de carne", "2 1/2", "kg", "carne");
    caso("Sal (a gosto)", "a gosto", "", "Sal");
    caso("Açúcar: 2 colheres de chá", "2", "colheres de chá", "Açúcar");
    caso("Ovos - 3", "3", "", "Ovos");
    caso("Ovos: 3", "3", "", "Ovos");
    caso("[Molho]", "", "", "Molho:");
    caso("# Massa: #", "", "", "Massa:");
    caso("2 fl oz de rum", "2", "fl oz", "rum");
    caso("1 copo de requeijão de leite", "1", "copo de requeijão", "leite");
    caso("1 copo de leite", "1", "copo", "leite");
    caso("2 T açúcar", "2", "T", "açúcar");
    caso("alguns tomates", "", "", "alguns tomates");
    caso("2 ou 3 colheres de sopa d'água", "2 ou 3", "colheres de sopa", "água");
    caso("half an onion", "1/2", "", "onion");
    caso("1 mão-cheia de espinafres", "1", "mão-cheia", "espinafres");
    caso("0.500 kg de peixe", "0,500", "kg", "peixe");
    caso("1 colher bem cheia de sal", "1", "colher bem cheia", "sal");
    caso("1 xícara (chá)", "1", "", "xícara (chá)");
    caso("", "", "", "");
    caso("1/0 de nada", "1", "", "/0 de nada");
}

void TesteLinhas::Outras()
{
    Tabela();
}

void TesteLinhas::Numeros_data()
{
    QTest::addColumn<double>("numero");
    QTest::addColumn<QString>("texto");
    QTest::newRow("half") << 0.5 << "1/2";
    QTest::newRow("third") << 1.33 << "1 1/3";
    QTest::newRow("eighth") << 0.125 << "1/8";
    QTest::newRow("decimal") << 0.4 << "0,4";
    QTest::newRow("whole") << 250.0 << "250";
    QTest::newRow("none") << 0.0 << "";
    QTest::newRow("huge") << 1e300 << "";
}

void TesteLinhas::Numeros()
{
    QFETCH(double, numero);
    QTEST(QuantidadeDoNumero(numero), "texto");
}

void TesteLinhas::TextoDeVolta_data()
{
    QTest::addColumn<QStringList>("partes");
    QTest::addColumn<QString>("texto");
    QTest::newRow("unit") << QStringList{"2", "xícaras", "farinha"} << "2 xícaras de farinha";
    QTest::newRow("none") << QStringList{"2", "", "ovos"} << "2 ovos";
    QTest::newRow("free") << QStringList{"a gosto", "", "sal"} << "sal a gosto";
    QTest::newRow("English") << QStringList{"2", "cups", "flour"} << "2 cups flour";
    QTest::newRow("and") << QStringList{"1", "xícara", "e 2 colheres de mel"} << "1 xícara e 2 colheres de mel";
    QTest::newRow("heading") << QStringList{"", "", "Massa:"} << "Massa:";
}

void TesteLinhas::TextoDeVolta()
{
    QFETCH(QStringList, partes);
    QTEST(TextoDaLinha({partes[2], partes[0], partes[1]}), "texto");
}

QTEST_GUILESS_MAIN(TesteLinhas)
#include "teste_linhas.moc"
