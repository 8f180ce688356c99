// The rules that hold for every format: bytes to text, cleaning, times, servings, calories, limits.

#include "formatos/Codificacao.h"
#include "formatos/Importador.h"
#include "formatos/Limpeza.h"
#include "formatos/Medidas.h"
#include "formatos/Rascunho.h"

#include <QTest>

using namespace Formatos;

class TesteRegras : public QObject
{
    Q_OBJECT

private slots:
    void Bytes();
    void Texto_data();
    void Texto();
    void Letras_data();
    void Letras();
    void Tempos_data();
    void Tempos();
    void Rendimentos_data();
    void Rendimentos();
    void CaloriasLidas_data();
    void CaloriasLidas();
    void Markdown_data();
    void Markdown();
    void Limites();
    void Seguras();
    void Modo();
    void Recusas();
};

void TesteRegras::Bytes()
{
    QCOMPARE(TextoDosBytes("P\xC3\xA3o", "iso-8859-1"), QString("Pão"));
    QCOMPARE(TextoDosBytes("\xEF\xBB\xBFP\xC3\xA3o"), QString("Pão"));
    QCOMPARE(TextoDosBytes(QByteArray("\xFF\xFEP\0\xE3\0o\0", 8)), QString("Pão"));
    QCOMPARE(TextoDosBytes("P\xE3o \x93""de\x94", "iso-8859-1"), QString("Pão “de”"));
    QCOMPARE(TextoDosBytes("a\x87\xA3""car, p\xC6o e lim\xC6o"), QString("açúcar, pão e limão"));
    QCOMPARE(TextoDosBytes("a\xE7\xFA""car e p\xE3o"), QString("açúcar e pão"));
    QCOMPARE(TextoDosBytes("p\xC6o", {}, "850"), QString("pão"));
    int perdidos = 0;
    QCOMPARE(BytesDoTexto("pão €", "850", perdidos), QByteArray("p\xC6o ?"));
    QCOMPARE(perdidos, 1);
    QVERIFY(!PaginaConhecida("klingon"));
}

void TesteRegras::Texto_data()
{
    QTest::addColumn<QString>("bruto");
    QTest::addColumn<QString>("limpo");
    QTest::newRow("entities twice") << "p&amp;atilde;o" << "pão";
    QTest::newRow("no semicolon") << "a &amp b" << "a &amp b";
    QTest::newRow("numeric like browsers") << "&#147;oi&#148;" << "“oi”";
    QTest::newRow("lines") << "um<br>dois<p>três</p>" << "um\ndois\ntrês";
    QTest::newRow("script") << "a<script>b()</script>c" << "ac";
    QTest::newRow("own words") << "a <mesmo> b" << "a <mesmo> b";
    QTest::newRow("less than") << "5 < 6" << "5 < 6";
    QTest::newRow("blanks") << QString("a\u00A0\u2003b\u200Bc\u00ADd") << "a bcd";
    QTest::newRow("decomposed") << QString("pa\u0303o") << "pão";
}

void TesteRegras::Texto()
{
    QFETCH(QString, bruto);
    QTEST(Limpar(bruto), "limpo");
}

void TesteRegras::Letras_data()
{
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("saida");
    QTest::addColumn<int>("perdidos");
    QTest::newRow("fraction") << "1⅓ e ½" << "1 1/3 e ½" << 0;
    QTest::newRow("letters") << "č ł đ ı" << "c l d i" << 0;
    QTest::newRow("signs") << "≤ → ℃ ✖" << "<= -> °C ×" << 0;
    QTest::newRow("emoji") << "bolo 🎂 bom" << "bolo bom" << 0;
    QTest::newRow("lost") << "寿司 bom" << "? bom" << 1;
}

void TesteRegras::Letras()
{
    QFETCH(QString, texto);
    int perdidos = 0;
    QTEST(ParaWindows1252(texto, perdidos), "saida");
    QTEST(perdidos, "perdidos");
}

void TesteRegras::Tempos_data()
{
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("casa");
    const auto caso = [](const char *texto, const char *casa) { QTest::newRow(texto) << QString(texto) << QString(casa); };
    caso("PT1H30M", "1 hora e 30 minutos");
    caso("PTH50MS", "50 minutos");
    caso("P0DT0H35M", "35 minutos");
    caso("PT4200S", "1 hora e 10 minutos");
    caso("PT70M", "1 hora e 10 minutos");
    caso("PT0M", "");
    caso("45", "45 minutos");
    caso("1h30", "1 hora e 30 minutos");
    caso("1:30", "1 hora e 30 minutos");
    caso("1 hora e meia", "1 hora e 30 minutos");
    caso("1 hora e 40", "1 hora e 40 minutos");
    caso("meia hora", "30 minutos");
    caso("2 hrs 5 mins", "2 horas e 5 minutos");
    caso("10 horas e 45 minutos", "10 h 45 min");
    caso("1500", "1 dia e 1 hora");
    caso("uma noite", "uma noite");
    caso("30 a 40 minutos", "30 a 40 minutos");
}

void TesteRegras::Tempos()
{
    QFETCH(QString, texto);
    QTEST(TempoDaCasa(texto), "casa");
}

void TesteRegras::Rendimentos_data()
{
    QTest::addColumn<QStringList>("textos");
    QTest::addColumn<QString>("porcoes");
    QTest::addColumn<QString>("resto");
    const auto caso = [](const QStringList &textos, const char *porcoes, const char *resto) {
        QTest::newRow(qPrintable(textos.join("+"))) << textos << QString(porcoes) << QString(resto);
    };
    caso({"8", "8 servings"}, "8", "");
    caso({"Rende 6 porções"}, "6", "");
    caso({"4-6 pessoas"}, "4", "4-6 pessoas");
    caso({"meia dúzia"}, "6", "meia dúzia");
    caso({"2 dúzias de bolinhos"}, "24", "2 dúzias de bolinhos");
    caso({"1 kg"}, "", "1 kg");
    caso({"8 fatias"}, "8", "8 fatias");
    caso({"0"}, "", "");
    caso({"6", "1 bolo grande"}, "6", "1 bolo grande");
    caso({"2,5"}, "2,5", "");
    caso({}, "", "");
}

void TesteRegras::Rendimentos()
{
    QFETCH(QStringList, textos);
    const Rendimento rendimento = RendimentoDe(textos);
    QTEST(rendimento.porcoes, "porcoes");
    QTEST(rendimento.texto, "resto");
}

void TesteRegras::CaloriasLidas_data()
{
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("numero");
    QTest::addColumn<QString>("tipo");
    QTest::newRow("plain") << "485.09" << "485,09" << "P";
    QTest::newRow("kcal") << "310 kcal" << "310" << "P";
    QTest::newRow("thousands") << "1.250 calorias" << "1250" << "P";
    QTest::newRow("thousands, comma") << "1,250 calories" << "1250" << "P";
    QTest::newRow("whole") << "2400 kcal por receita" << "2400" << "R";
    QTest::newRow("joules") << "900 kJ" << "" << "P";
    QTest::newRow("grams") << "12 g" << "" << "P";
}

void TesteRegras::CaloriasLidas()
{
    QFETCH(QString, texto);
    const Calorias calorias = CaloriasDe(texto);
    QTEST(calorias.numero, "numero");
    QTEST(calorias.tipo, "tipo");
}

void TesteRegras::Markdown_data()
{
    QTest::addColumn<QString>("linha");
    QTest::addColumn<QString>("limpa");
    QTest::newRow("strong") << "com **força** e *jeito*" << "com força e jeito";
    QTest::newRow("link") << "ver [aqui](http://x.example)" << "ver aqui";
    QTest::newRow("bullet") << "- item" << "item";
    QTest::newRow("number stays") << "1. item" << "1. item";
    QTest::newRow("heading") << "## Massa" << "Massa:";
    QTest::newRow("brackets") << "[Massa]" << "Massa:";
    QTest::newRow("product") << "2 * 3 * 4" << "2 * 3 * 4";
    QTest::newRow("underscore") << "um_nome_so" << "um_nome_so";
}

void TesteRegras::Markdown()
{
    QFETCH(QString, linha);
    QTEST(SemMarkdown(linha), "limpa");
}

void TesteRegras::Limites()
{
    Rascunho r;
    r.nome = QString("Bolo de milho com coco ").repeated(6).trimmed();
    r.tipos = {"Um tipo de receita com um nome comprido demais"};
    r.tempoTotal = "o tempo de uma boa conversa na cozinha";
    r.fontes = {"Caderno de capa dura da tia Conceição, folha 12"};
    r.Texto("2 xícaras (chá) de farinha de trigo bem peneirada com o fermento (duas vezes)");
    r.passos += PassoLido{{}, "Misture."};
    Relato relato;
    const std::optional<Receita> receita = Montar(r, relato);
    QVERIFY(receita);
    QVERIFY(receita->Nome.size() <= 80 && !receita->Nome.endsWith(u' '));
    QCOMPARE(receita->Classificacao, QString("Um tipo de receita com um nome"));
    QCOMPARE(receita->Preparo, QString("o tempo de uma boa"));
    QVERIFY(receita->Origem.size() <= 30);
    QVERIFY(receita->Ingredientes[0].Ingrediente.size() <= 40);
    QCOMPARE(receita->Ingredientes[0].Unidade, QString("xícaras (chá)"));
    const QString &o = receita->Observacao;
    QVERIFY(o.contains("Nome: " + r.nome));
    QVERIFY(o.contains("Tempo de preparo: o tempo de uma boa conversa na cozinha"));
    QVERIFY(o.contains("Origem: Caderno de capa dura da tia Conceição, folha 12"));
    QVERIFY(o.contains("Categorias: Um tipo de receita com um nome comprido demais"));
    QVERIFY(o.contains("Ingredientes por extenso:\r\n- 2 xícaras (chá) de farinha de trigo bem peneirada com o fermento (duas vezes)"));
    QVERIFY(relato.Avisos().size() >= 5);
}

void TesteRegras::Seguras()
{
    Rascunho r;
    r.nome = "Pão d'água <nosso>";
    r.markdown = false;
    r.Texto("1 copo d'água");
    r.passos += PassoLido{{}, "Não use \\VG/ nem <RECEITA> nem 'aspas'."};
    Relato relato;
    const std::optional<Receita> receita = Montar(r, relato);
    QVERIFY(receita);
    QCOMPARE(receita->Nome, QString("Pão d’água ‹nosso>"));
    QCOMPARE(receita->Modo, QString("Não use \\ VG/ nem ‹RECEITA> nem 'aspas'."));
}

void TesteRegras::Modo()
{
    Rascunho r;
    r.nome = "A";
    r.passos = {{"Massa", QString()}, {"Passo 1", "Misture."}, {"Bata tudo...", "Bata tudo no liquidificador."},
                {"Asse", ""}, {"Massa", "De novo."}, {QString(), "Modo de preparo:"}};
    Relato relato;
    QCOMPARE(Montar(r, relato)->Modo, QString("Massa:\r\nMisture.\r\nBata tudo no liquidificador.\r\nAsse\r\nDe novo."));
    r.passos.clear();
    r.Texto("1 ovo");
    QCOMPARE(Montar(r, relato)->Modo, QString("(sem modo de preparo na origem)"));
}

void TesteRegras::Recusas()
{
    Rascunho r;
    Relato relato;
    QVERIFY(!Montar(r, relato));
    r.nome = "A";
    QVERIFY(!Montar(r, relato));
    QCOMPARE(relato.Puladas(), 2);
}

QTEST_GUILESS_MAIN(TesteRegras)
#include "teste_regras.moc"
