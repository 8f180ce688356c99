#include "print/ErroImpressao.h"
#include "print/LayoutReceita.h"
#include "print/tests/ReceitasDeTeste.h"
#include "print/tests/SuperficieDeTeste.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <algorithm>
#include <limits>

using namespace ReceitasDeTeste;

namespace
{
// An A4 page's printable area, and letters about as wide as the printed ones.
constexpr double kW = 200;
constexpr double kH = 280;

class Pagina : public SuperficieDeTeste
{
public:
    explicit Pagina(double altura = kH)
        : SuperficieDeTeste(kW, altura)
    {
        seguirFonte = true;
        larguraDaLetra = 2;
        alturaDaLinha = 4.7;
    }

    std::vector<Corrida> Achar(const QString &texto) const
    {
        std::vector<Corrida> achadas;
        std::copy_if(corridas.begin(), corridas.end(), std::back_inserter(achadas),
                     [&](const Corrida &corrida) { return corrida.texto == texto; });
        return achadas;
    }
    Corrida Uma(const QString &texto) const
    {
        const auto achadas = Achar(texto);
        if (achadas.size() != 1)
            qFatal("%zu runs of '%s'", achadas.size(), qPrintable(texto));
        return achadas.front();
    }
};

Pagina Imprimir(const ReceitaImpressa &receita, double altura = kH)
{
    Pagina pagina(altura);
    LayoutReceita::Imprimir(pagina, receita, kSite);
    return pagina;
}

// Where the next block finds the current y when the method ends: right under the last line of a page that
// many lines tall.
ReceitaImpressa ComLinhasDeModo(int linhas)
{
    ReceitaImpressa receita;
    receita.Nome = "Pão";
    for (int i = 1; i <= linhas; ++i)
        receita.Modo += QString("linha %1\r\n").arg(i);
    return receita;
}

bool Perto(double a, double b)
{
    return qAbs(a - b) < 1e-6;
}
} // namespace

class TesteLayoutReceita : public QObject
{
    Q_OBJECT

private slots:
    void desenhaComoNoArquivo_data();
    void desenhaComoNoArquivo();
    void cabecalhoTemNomeOrigemERegua();
    void origemVaziaImprimeParenteses();
    void nomeLongoEmpurraAOrigem();
    void fatoVazioNaoSai();
    void valorDoFatoFicaAUmMilimetroDoRotulo();
    void rendimento_data();
    void rendimento();
    void calorias_data();
    void calorias();
    void linhaDoIngrediente_data();
    void linhaDoIngrediente();
    void figuraFicaNaBordaDireitaOndeOsFatosComecam();
    void textoContinua40AbaixoDoTopoDaFigura();
    void linhaJuntoAoPeDaFiguraNaoVolta();
    void listaMaiorQueAFiguraNaoVolta();
    void ingredienteLongoNaoPassaPorBaixoDaFigura();
    void muitosIngredientesContinuamNaPaginaSeguinte();
    void receitaDeTresPaginasTemTresRodapesNumerados();
    void modoQueTerminaEmLinhasVaziasNaoAsImprime();
    void quebrasDeOutrosSistemasSeparamLinhas_data();
    void quebrasDeOutrosSistemasSeparamLinhas();
    void blocoNaoComecaNosUltimosOito();
    void depoisDaObservacaoValeOLimiteInteiro();
    void observacaoVaziaNaoTemTitulo();
    void rodapeFicaAbaixoDoLimite();
    void numeroDePaginaNaoDaAVolta();
};

void TesteLayoutReceita::desenhaComoNoArquivo_data()
{
    QTest::addColumn<ReceitaImpressa>("receita");
    ReceitaImpressa receita = Bolo();
    QTest::newRow("bolo_sem_figura") << receita;
    receita.Figura = Figura();
    QTest::newRow("bolo_com_figura") << receita;
    receita.Modo += "\r\n" + Paragrafos(40);
    receita.Observacao = Paragrafos(4);
    QTest::newRow("bolo_de_tres_paginas") << receita;
    receita = ReceitaImpressa();
    receita.Nome = "Sal";
    QTest::newRow("so_o_nome") << receita;
    receita = Bolo();
    receita.Figura = Figura();
    for (int i = 1; i <= 60; ++i)
        receita.Ingredientes << IngredienteImpresso{QString::number(i), "g", "tempero secreto"};
    QTest::newRow("lista_de_duas_paginas") << receita;
}

void TesteLayoutReceita::desenhaComoNoArquivo()
{
    QFETCH(ReceitaImpressa, receita);
    const QString nome = QString::fromLatin1(QTest::currentDataTag()) + ".txt";
    const QByteArray atual = Imprimir(receita).Registro().toUtf8();
    QFile arquivo(QStringLiteral(PASTA_FONTES) + "/tests/data/" + nome);
    const QByteArray esperado = arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
    if (atual != esperado) {
        // After a wanted change: copy this file over the stored one, read the difference, commit it.
        QFile novo(QDir::temp().filePath(nome));
        QVERIFY(novo.open(QIODevice::WriteOnly) && novo.write(atual) == atual.size());
        QFAIL(qPrintable("differs from the stored layout; what was drawn is in " + novo.fileName()));
    }
}

void TesteLayoutReceita::cabecalhoTemNomeOrigemERegua()
{
    const Pagina pagina = Imprimir(Bolo());
    const auto nome = pagina.corridas[0];
    QCOMPARE(nome.texto, QString("Bolo de fubá da Vovó Cota"));
    QCOMPARE(nome.x, 15.0);
    QCOMPARE(nome.y, 5.0);
    QCOMPARE(nome.FontSize, 16.0);
    QVERIFY(nome.FontBold);
    QCOMPARE(nome.cor, QColor(0, 0, 255));
    const auto origem = pagina.corridas[1];
    QCOMPARE(origem.texto, QString("(Caderno da família)"));
    QCOMPARE(origem.y, 11.0);
    QCOMPARE(origem.FontSize, 9.0);
    QVERIFY(!origem.FontBold);
    QCOMPARE(origem.cor, QColor(0, 0, 255));
    const auto regua = pagina.barras[0];
    QVERIFY(Perto(regua.y1, 15.8));
    QVERIFY(Perto(regua.y2, 16.1));
    QCOMPARE(regua.x2, kW - 5);
    QCOMPARE(regua.cor, QColor(Qt::black));
    QVERIFY(Perto(pagina.Uma("Tipo :").y, 16.1 + 4.5));
    QCOMPARE(pagina.Uma("Tipo :").cor, QColor(Qt::black));
}

void TesteLayoutReceita::origemVaziaImprimeParenteses()
{
    ReceitaImpressa receita = Bolo();
    receita.Origem.clear();
    QCOMPARE(Imprimir(receita).corridas[1].texto, QString("()"));
}

void TesteLayoutReceita::nomeLongoEmpurraAOrigem()
{
    ReceitaImpressa receita = Bolo();
    receita.Nome = "Bolo de fubá com goiabada, queijo e erva-doce da Vovó Cota de Minas Gerais";
    const Pagina pagina = Imprimir(receita);
    const auto origem = pagina.Uma("(Caderno da família)");
    QVERIFY(Perto(origem.y, 5 + 4.7 * 16 / 11 + 6));
}

void TesteLayoutReceita::fatoVazioNaoSai()
{
    ReceitaImpressa receita;
    receita.Nome = "Sal";
    const Pagina pagina = Imprimir(receita);
    for (const char *rotulo : {"Tipo :", "Tempo de Preparo :", "Rendimento :", "Calorias :"})
        QVERIFY(pagina.Achar(rotulo).empty());
    QVERIFY(Perto(pagina.Uma("Ingredientes :").y, 16.1 + 4.5));
}

void TesteLayoutReceita::valorDoFatoFicaAUmMilimetroDoRotulo()
{
    const Pagina pagina = Imprimir(Bolo());
    const auto rotulo = pagina.Uma("Tempo de Preparo :");
    const auto valor = pagina.Uma("1 hora e 10 minutos");
    QVERIFY(rotulo.FontBold && !valor.FontBold);
    QCOMPARE(rotulo.FontSize, 11.0);
    QCOMPARE(rotulo.x, 15.0);
    QVERIFY(Perto(valor.y, rotulo.y));
    QVERIFY(Perto(valor.x, rotulo.x + rotulo.largura + 1));
    QVERIFY(Perto(rotulo.y, pagina.Uma("Tipo :").y + 4.5));
}

void TesteLayoutReceita::rendimento_data()
{
    QTest::addColumn<QString>("porcoes");
    QTest::addColumn<QString>("texto");
    QTest::newRow("uma") << "1"
                         << "1 porção";
    QTest::newRow("quatro") << "4"
                            << "4 porções";
    QTest::newRow("uma e meia") << "1.5"
                                << "1.5 porção";
    QTest::newRow("zero") << "0"
                          << "0 porções";
    QTest::newRow("onze") << "11"
                          << "11 porções";
    QTest::newRow("menos de uma") << "0.5"
                                  << "0.5 porções";
}

void TesteLayoutReceita::rendimento()
{
    QFETCH(QString, porcoes);
    QFETCH(QString, texto);
    ReceitaImpressa receita = Bolo();
    receita.Porcoes = porcoes;
    QCOMPARE(Imprimir(receita).Achar(texto).size(), size_t(1));
}

void TesteLayoutReceita::calorias_data()
{
    QTest::addColumn<QString>("tipo");
    QTest::addColumn<QString>("texto");
    QTest::newRow("por porcao") << "P"
                                << "250 por Porção";
    QTest::newRow("por receita") << "R"
                                 << "250 por Receita";
    QTest::newRow("nenhum") << ""
                            << "250";
}

void TesteLayoutReceita::calorias()
{
    QFETCH(QString, tipo);
    QFETCH(QString, texto);
    ReceitaImpressa receita = Bolo();
    receita.Tipo_Calorias = tipo;
    QCOMPARE(Imprimir(receita).Achar(texto).size(), size_t(1));
}

void TesteLayoutReceita::linhaDoIngrediente_data()
{
    QTest::addColumn<IngredienteImpresso>("ingrediente");
    QTest::addColumn<QString>("linha");
    QTest::newRow("tudo") << IngredienteImpresso{" 2 ", " xícaras ", " farinha "} << "2 xícaras farinha";
    QTest::newRow("so o ingrediente") << IngredienteImpresso{std::nullopt, std::nullopt, "sal"} << "sal";
    QTest::newRow("sem unidade") << IngredienteImpresso{"3", std::nullopt, "ovos"} << "3 ovos";
    QTest::newRow("quantidade vazia nao e nula") << IngredienteImpresso{"", std::nullopt, "sal"} << " sal";
    QTest::newRow("unidade vazia nao e nula") << IngredienteImpresso{"3", "", "ovos"} << "3  ovos";
}

void TesteLayoutReceita::linhaDoIngrediente()
{
    QFETCH(IngredienteImpresso, ingrediente);
    QFETCH(QString, linha);
    QCOMPARE(LinhaIngrediente(ingrediente), linha);
    ReceitaImpressa receita = Bolo();
    receita.Ingredientes = {ingrediente};
    const Pagina pagina = Imprimir(receita);
    const auto impressa = pagina.Uma(linha);
    QCOMPARE(impressa.x, 15.0);
    QVERIFY(Perto(impressa.y, pagina.Uma("Ingredientes :").y + 4.5));
    QVERIFY(!impressa.FontBold);
}

void TesteLayoutReceita::figuraFicaNaBordaDireitaOndeOsFatosComecam()
{
    ReceitaImpressa receita = Bolo();
    receita.Figura = Figura();
    const Pagina pagina = Imprimir(receita);
    QCOMPARE(pagina.figuras.size(), size_t(1));
    const auto figura = pagina.figuras[0];
    QVERIFY(Perto(figura.x2, kW - 5));
    QVERIFY(Perto(figura.x1, kW - 5 - 55));
    QVERIFY(Perto(figura.y1, pagina.Uma("Tipo :").y));
    QVERIFY(Perto(figura.y2 - figura.y1, 45));
}

void TesteLayoutReceita::textoContinua40AbaixoDoTopoDaFigura()
{
    ReceitaImpressa receita = Bolo();
    receita.Ingredientes.resize(2);
    receita.Figura = Figura();
    const Pagina pagina = Imprimir(receita);
    QVERIFY(Perto(pagina.Uma("Modo de Preparo :").y, pagina.figuras[0].y1 + 40 + 4.5));
}

void TesteLayoutReceita::linhaJuntoAoPeDaFiguraNaoVolta()
{
    // Four facts, the heading and six ingredients: the last of these lines starts exactly 45 under the first.
    ReceitaImpressa receita = Bolo();
    receita.Ingredientes << IngredienteImpresso{"1", "pitada", "canela"};
    receita.Figura = Figura();
    const Pagina pagina = Imprimir(receita);
    QVERIFY(Perto(pagina.Uma("1 pitada canela").y, pagina.figuras[0].y2));
    QVERIFY(Perto(pagina.Uma("Modo de Preparo :").y, pagina.Uma("1 pitada canela").y + 4.5));
}

void TesteLayoutReceita::listaMaiorQueAFiguraNaoVolta()
{
    ReceitaImpressa receita = Bolo();
    for (int i = 0; i < 10; ++i)
        receita.Ingredientes << IngredienteImpresso{"1", "pitada", QString("tempero %1").arg(i)};
    receita.Figura = Figura();
    const Pagina pagina = Imprimir(receita);
    QVERIFY(Perto(pagina.Uma("Modo de Preparo :").y, pagina.Uma("1 pitada tempero 9").y + 4.5));
}

void TesteLayoutReceita::ingredienteLongoNaoPassaPorBaixoDaFigura()
{
    ReceitaImpressa receita = Bolo();
    const QString longo =
        "queijo meia-cura ralado na hora, de preferência da Serra da Canastra, bem seco e picante";
    receita.Ingredientes = QList<IngredienteImpresso>(12, {"1", "kg", longo});
    receita.Figura = Figura();
    const Pagina pagina = Imprimir(receita);
    const auto figura = pagina.figuras[0];
    bool abaixoUsaALarguraToda = false;
    for (const auto &corrida : pagina.corridas) {
        const bool aoLado = corrida.y + 4.7 > figura.y1 && corrida.y < figura.y2 - 1e-6;
        QVERIFY2(!aoLado || corrida.x + corrida.largura < figura.x1, qPrintable(corrida.texto));
        abaixoUsaALarguraToda |= corrida.y > figura.y2 && corrida.y < pagina.Uma("Modo de Preparo :").y &&
                                 corrida.x + corrida.largura > figura.x1;
    }
    QVERIFY(abaixoUsaALarguraToda);
}

void TesteLayoutReceita::muitosIngredientesContinuamNaPaginaSeguinte()
{
    ReceitaImpressa receita = Bolo();
    receita.Figura = Figura();
    receita.Ingredientes.clear();
    for (int i = 1; i <= 60; ++i)
        receita.Ingredientes << IngredienteImpresso{QString::number(i), "g", "tempero"};
    const Pagina pagina = Imprimir(receita);
    QCOMPARE(pagina.paginas, 2);
    for (const auto &corrida : pagina.corridas)
        QVERIFY2(corrida.FontSize != 11 || corrida.y < kH - 22, qPrintable(corrida.texto));
    for (int i = 1; i <= 60; ++i)
        QCOMPARE(pagina.Achar(QString("%1 g tempero").arg(i)).size(), size_t(1));
    QCOMPARE(pagina.figuras.size(), size_t(1)); // once, on the page of the facts
    QCOMPARE(pagina.figuras[0].pagina, 1);
    QVERIFY(Perto(pagina.figuras[0].y1, pagina.Uma("Tipo :").y));
    QCOMPARE(pagina.Uma("Modo de Preparo :").pagina, 2);
    QVERIFY(Perto(pagina.Uma("Modo de Preparo :").y, pagina.Uma("60 g tempero").y + 4.5));
}

void TesteLayoutReceita::receitaDeTresPaginasTemTresRodapesNumerados()
{
    ReceitaImpressa receita = Bolo();
    receita.Modo = Paragrafos(60);
    receita.Observacao.clear();
    const Pagina pagina = Imprimir(receita);
    QCOMPARE(pagina.paginas, 3);
    for (int n = 1; n <= 3; ++n) {
        QCOMPARE(pagina.Uma(QString("Pag.: %1").arg(n)).pagina, n);
        QCOMPARE(pagina.Achar(receita.Nome)[static_cast<size_t>(n - 1)].pagina, n);
        QCOMPARE(pagina.Achar("(Caderno da família)")[static_cast<size_t>(n - 1)].pagina, n);
    }
    QCOMPARE(pagina.Achar(receita.Nome).size(), size_t(3));
    QVERIFY(pagina.Achar("Modo de Preparo :").size() == 1); // the label is not repeated
    for (const auto &corrida : pagina.corridas)
        QVERIFY2(corrida.FontSize != 11 || corrida.y < kH - 22, qPrintable(corrida.texto));
}

void TesteLayoutReceita::modoQueTerminaEmLinhasVaziasNaoAsImprime()
{
    ReceitaImpressa receita = ComLinhasDeModo(2);
    receita.Modo += "\r\n\r\n\r\n";
    receita.Observacao = "Sirva frio.\r\n\r\n";
    const Pagina pagina = Imprimir(receita);
    QVERIFY(Perto(pagina.Uma("Informações Adicionais :").y, pagina.Uma("linha 2").y + 4.5));
    QVERIFY(Perto(pagina.Uma("linha 1").y, pagina.Uma("Modo de Preparo :").y + 4.5));
}

void TesteLayoutReceita::quebrasDeOutrosSistemasSeparamLinhas_data()
{
    QTest::addColumn<QString>("quebra");
    QTest::newRow("CR LF") << "\r\n";
    QTest::newRow("LF") << "\n";
    QTest::newRow("CR") << "\r";
}

void TesteLayoutReceita::quebrasDeOutrosSistemasSeparamLinhas()
{
    QFETCH(QString, quebra);
    ReceitaImpressa receita = ComLinhasDeModo(2);
    receita.Modo = "Mexa a massa." + quebra + "Leve ao forno." + quebra;
    receita.Observacao = "Rende." + quebra + "Sirva.";
    const Pagina pagina = Imprimir(receita);
    const double altura = pagina.Uma("Sirva.").y - pagina.Uma("Rende.").y;
    QVERIFY(altura > 0);
    QVERIFY(Perto(pagina.Uma("Leve ao forno.").y, pagina.Uma("Mexa a massa.").y + altura));
    QVERIFY(Perto(pagina.Uma("Informações Adicionais :").y, pagina.Uma("Leve ao forno.").y + 4.5));
}

void TesteLayoutReceita::blocoNaoComecaNosUltimosOito()
{
    // The same recipe on pages of falling height: as soon as the method's last line is lower than H - 30 the
    // next block opens a new page, and not before.
    ReceitaImpressa receita = ComLinhasDeModo(10);
    receita.Observacao = "fim";
    const double y = Imprimir(receita).Uma("linha 10").y;
    QCOMPARE(Imprimir(receita, y + 30.01).Uma("Informações Adicionais :").pagina, 1);
    const Pagina outra = Imprimir(receita, y + 29.99);
    QCOMPARE(outra.Uma("linha 10").pagina, 1);
    QCOMPARE(outra.Uma("Informações Adicionais :").pagina, 2);
    QVERIFY(Perto(outra.Uma("Informações Adicionais :").y, 16.1 + 4.5));
    QCOMPARE(outra.paginas, 2);
    // The rule asks nothing of what follows.
    receita.Observacao.clear();
    QCOMPARE(Imprimir(receita, y + 30.01).paginas, 1);
    QCOMPARE(Imprimir(receita, y + 29.99).paginas, 2);
}

void TesteLayoutReceita::depoisDaObservacaoValeOLimiteInteiro()
{
    // The heading may start as low as H - 30 + 4.5; its one line then stands under the bottom limit.
    ReceitaImpressa receita = ComLinhasDeModo(10);
    receita.Observacao = "fim";
    const double y = Imprimir(receita).Uma("fim").y;
    QCOMPARE(Imprimir(receita, y + 22.01).paginas, 1); // lower than H - 30, yet nothing is finished
    const Pagina outra = Imprimir(receita, y + 21.99);
    QCOMPARE(outra.Uma("fim").pagina, 1);
    QCOMPARE(outra.paginas, 2);
    QCOMPARE(outra.Uma("Pag.: 2").pagina, 2);
}

void TesteLayoutReceita::observacaoVaziaNaoTemTitulo()
{
    ReceitaImpressa receita = Bolo();
    for (const char *vazia : {"", "\r\n", "\r\n\r\n"}) {
        receita.Observacao = vazia;
        QVERIFY(Imprimir(receita).Achar("Informações Adicionais :").empty());
    }
}

void TesteLayoutReceita::rodapeFicaAbaixoDoLimite()
{
    const Pagina pagina = Imprimir(Bolo());
    const auto barra = pagina.barras.back();
    QCOMPARE(barra.x1, 5.0);
    QCOMPARE(barra.x2, kW - 5);
    QVERIFY(Perto(barra.y1, kH - 22 + 6));
    QVERIFY(Perto(barra.y2, kH - 22 + 6.3));
    const auto numero = pagina.Uma("Pag.: 1");
    QVERIFY(Perto(numero.x + numero.largura, kW - 5));
    QVERIFY(Perto(numero.y, kH - 22 + 6.3 + 1));
    QCOMPARE(numero.FontSize, 8.0);
    QVERIFY(numero.FontBold);
    QCOMPARE(numero.cor, QColor(0, 0, 255));
    const auto credito = pagina.Uma("Receita Impressa com o Cozinhario 2005 - Por Tamarel Informática");
    QCOMPARE(credito.x, 15.0);
    QVERIFY(Perto(credito.y, numero.y + 5));
    const auto site = pagina.Uma("Para mais informações visite nosso site www.tamarel.example");
    QVERIFY(site.y > credito.y);
    QVERIFY(site.y + 4.7 * 8 / 11 < kH);
    QCOMPARE(pagina.ForeColor, QColor(Qt::black));
}

void TesteLayoutReceita::numeroDePaginaNaoDaAVolta()
{
    Pagina pagina;
    LayoutReceita::Folha folha{"Pão", "", kSite, std::numeric_limits<qint16>::max()};
    QVERIFY_EXCEPTION_THROWN(LayoutReceita::QuebrarPagina(pagina, folha), ErroImpressao);
    QCOMPARE(folha.pagina, std::numeric_limits<qint16>::max());
}

QTEST_MAIN(TesteLayoutReceita)
#include "teste_layout_receita.moc"
