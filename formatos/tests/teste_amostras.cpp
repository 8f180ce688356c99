// Every sample file gives the recipes that its folder's esperado.json says.

#include "formatos/Importador.h"

#include "formatos/Rascunho.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Formatos;

class TesteAmostras : public QObject
{
    Q_OBJECT

private slots:
    void Amostra_data();
    void Amostra();
    void Recusada_data();
    void Recusada();
};

static QJsonObject Esperado(const QString &arquivo)
{
    QFile f(arquivo);
    return f.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(f.readAll()).object() : QJsonObject();
}

static QString PastaDasAmostras()
{
    // Other samples of the same shape can be put to the test without building anew.
    const QString outra = qEnvironmentVariable("FORMATOS_AMOSTRAS");
    return outra.isEmpty() ? QString(PASTA_FONTES "/tests/data") : outra;
}

void TesteAmostras::Amostra_data()
{
    QTest::addColumn<QString>("caminho");
    QTest::addColumn<QJsonArray>("receitas");
    const QDir raiz(PastaDasAmostras());
    int quantas = 0;
    for (const QString &pasta : raiz.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QJsonObject arquivos = Esperado(raiz.filePath(pasta + "/esperado.json"))["arquivos"].toObject();
        for (auto it = arquivos.begin(); it != arquivos.end(); ++it, ++quantas)
            QTest::newRow(qPrintable(pasta + "/" + it.key()))
                << raiz.filePath(pasta + "/" + it.key()) << it->toArray();
    }
    QVERIFY(quantas > 0);
}

void TesteAmostras::Amostra()
{
    QFETCH(QString, caminho);
    QFETCH(QJsonArray, receitas);
    Relato relato;
    const QList<Receita> lidas = Importador(relato).Ler(caminho);
    QStringList avisos;
    for (const Aviso &aviso : relato.Avisos())
        avisos += aviso.texto;
    QVERIFY2(lidas.size() == receitas.size(), qPrintable(QString::number(lidas.size()) + " " + avisos.join(" / ")));
    for (const QJsonValue esperada : receitas) {
        const QString nome = esperada["nome"].toString();
        const auto achada = std::find_if(lidas.begin(), lidas.end(), [&](const Receita &r) { return r.Nome == nome; });
        QVERIFY2(achada != lidas.end(), qPrintable(nome + " | " + (lidas.isEmpty() ? "" : lidas[0].Nome)));
        QCOMPARE(achada->Classificacao, esperada["classificacao"].toString());
        QCOMPARE(achada->Porcoes, esperada["porcoes"].toString());
        QCOMPARE(achada->Preparo, esperada["preparo"].toString());
        QCOMPARE(achada->Calorias, esperada["calorias"].toString());
        QCOMPARE(achada->Tipo_Calorias, esperada["tipo_calorias"].toString());
        QCOMPARE(achada->Origem, esperada["origem"].toString());
        QCOMPARE(achada->Modo, esperada["modo"].toString());
        for (const QJsonValue trecho : esperada["observacao_contem"].toArray())
            QVERIFY2(achada->Observacao.contains(trecho.toString()),
                     qPrintable(trecho.toString() + "\n in \n" + achada->Observacao));
        for (const QJsonValue trecho : esperada["observacao_nao_contem"].toArray())
            QVERIFY2(!achada->Observacao.contains(trecho.toString()),
                     qPrintable(trecho.toString() + "\n in \n" + achada->Observacao));
        const QJsonValue figura = esperada["figura"];
        if (figura.isNull()) {
            QVERIFY(achada->DadosFigura.isEmpty());
        } else if (!(figura["opcional"].toBool() && achada->DadosFigura.isEmpty())) {
            QCOMPARE(FormatoDaFigura(achada->DadosFigura), figura["formato"].toString());
            if (!figura["sha256"].isUndefined())
                QCOMPARE(QString::fromLatin1(
                             QCryptographicHash::hash(achada->DadosFigura, QCryptographicHash::Sha256).toHex()),
                         figura["sha256"].toString());
        }
        QStringList linhas;
        for (const Linha &linha : achada->Ingredientes)
            linhas += linha.Quantidade + "|" + linha.Unidade + "|" + linha.Ingrediente;
        QStringList esperadas;
        for (const QJsonValue linha : esperada["linhas"].toArray())
            esperadas += linha[0].toString() + "|" + linha[1].toString() + "|" + linha[2].toString();
        QCOMPARE(linhas, esperadas);
    }
}

void TesteAmostras::Recusada_data()
{
    QTest::addColumn<QString>("caminho");
    const QDir raiz(PastaDasAmostras());
    for (const QString &pasta : raiz.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QJsonObject arquivos = Esperado(raiz.filePath(pasta + "/esperado.json"))["recusados"].toObject();
        for (auto it = arquivos.begin(); it != arquivos.end(); ++it)
            QTest::newRow(qPrintable(pasta + "/" + it.key())) << raiz.filePath(pasta + "/" + it.key());
    }
    QTest::newRow("no file") << raiz.filePath("nada.json");
}

void TesteAmostras::Recusada()
{
    QFETCH(QString, caminho);
    Relato relato;
    QCOMPARE(Importador(relato).Ler(caminho).size(), 0);
    QVERIFY(!relato.Avisos().isEmpty());
}

QTEST_GUILESS_MAIN(TesteAmostras)
#include "teste_amostras.moc"
