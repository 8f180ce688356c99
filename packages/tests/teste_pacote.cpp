#include "base/PaginaCodigo.h"
#include "packages/Base64Class.h"
#include "packages/LinhaDeComando.h"
#include "packages/MensagemPacote.h"
#include "packages/Pacote.h"
#include "packages/Recipiente.h"
#include "packages/TextoDoPacote.h"

#include <QBuffer>
#include <QFile>
#include <QTest>

#include <memory>

namespace
{
const QString kCabecalho = "Exportação do Cozinhario 2005 por Tamarel\r\n";

QByteArray Dourado(const QString &nome)
{
    QFile arquivo(QString(PASTA_FONTES "/tests/data/") + nome);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
}

/// A package text as an unpacked file, and its reader.
struct Lido {
    explicit Lido(const QByteArray &bytes)
    {
        arquivo.setData(bytes);
        arquivo.open(QIODevice::ReadOnly);
        abertura = texto.Abrir(arquivo, [this] { ++respiros; });
    }
    bool Aberto() const { return abertura == Pacote::Texto::Abertura::Aberto; }

    QBuffer arquivo;
    Pacote::Texto texto;
    Pacote::Texto::Abertura abertura;
    int respiros = 0;
};

std::unique_ptr<Lido> Ler(const QByteArray &bytes)
{
    auto lido = std::make_unique<Lido>(bytes);
    return lido->Aberto() ? std::move(lido) : nullptr;
}

/// A text as it is read: the one record of a package that holds nothing else.
QString LerTexto(const QByteArray &bytes)
{
    const auto pacote = Ler(Pacote::EscreverCabecalho() + "<RECEITA>" + bytes);
    return pacote ? pacote->texto[0].Tudo().toString() : "(outro texto)";
}

/// All the bytes of a record's picture; `blocos` receives how many pieces they came in.
QByteArray Figura(const Pacote::Registro &registro, int *blocos = nullptr)
{
    QByteArray figura;
    Pacote::LeitorDaFigura leitor = registro.AbrirFigura();
    for (QByteArray bloco = leitor.LerBloco(); !bloco.isEmpty(); bloco = leitor.LerBloco()) {
        figura += bloco;
        if (blocos)
            ++*blocos;
    }
    return figura;
}

Pacote::Receita Minima()
{
    Pacote::Receita receita;
    receita.Nome = "Arroz";
    receita.Modo = "Cozinhe.";
    return receita;
}

QList<Pacote::Receita> TresReceitas()
{
    Pacote::Receita arroz;
    arroz.Nome = "Arroz doce";
    arroz.Modo = "Cozinhe o arroz no leite.";
    arroz.Porcoes = arroz.Calorias = "0";
    Pacote::Receita bolo = {
        "Bolo de fubá, simples",
        " Bolos, tortas ",
        "Bata os ovos, o açúcar e o óleo.\r\nAsse por 40 minutos.",
        "8",
        "1 hora, mais ou menos",
        "R",
        "2150,5",
        "",
        "",
        "Sirva morno,\r\ncom café.",
        "F0000002.img",
        Dourado("figura.png"),
        {{"Fubá, fino", "1,5", "xícara(s), de chá"}, {"Óleo", "1/2", "xícara"}, {"Sal", "", ""}}};
    Pacote::Receita pao = {"Pão d'água",
                           "Pães",
                           "Sove bem.",
                           "2,5",
                           "3 h",
                           "P",
                           "120",
                           "1",
                           "Receitas da Vovó, vol. 2",
                           "",
                           "",
                           "",
                           {{"Farinha d'aveia", "500", "g"}}};
    return {arroz, bolo, pao};
}

QString Valor(const QString &registro, QStringView tag)
{
    return Pacote::Registro(registro).Valor(tag).toString();
}
} // namespace

class TestePacote : public QObject
{
    Q_OBJECT

private slots:
    void tresReceitasDaoOsBytesPrometidos();
    void oRecipienteDasTresReceitasDaOsBytesPrometidos();
    void receitaSemFiguraNemIngredientesTem14Linhas();
    void modoDeDuasLinhasFicaEmUmaEVolta();
    void tipoComVirgulaFicaComoEsta();
    void figuraVaziaNaoEscreveAsLinhas();
    void valoresPerdemEspacosDasPontas();

    void leTextoSemOZeroFinal();
    void leTextoComMuitosZerosNoFim();
    void leLinhasDeTodoJeito_data();
    void leLinhasDeTodoJeito();
    void leCrLfPartidoEntreDoisBlocos();
    void recusaCabecalho_data();
    void recusaCabecalho();
    void pacoteSemReceitasNaoTemRegistros();
    void valorVemDaPrimeiraEtiquetaAteOSeuFim_data();
    void valorVemDaPrimeiraEtiquetaAteOSeuFim();
    void registroCortadoDaOQueRestou();
    void ingredientesSeparamSeEmItens();
    void figuraDanificadaAindaDaBytes();
    void leOQueEscreve();
    void figuraGrandeFicaNoArquivoEVemEmPedacos_data();
    void figuraGrandeFicaNoArquivoEVemEmPedacos();
    void figuraGrandeCortadaDaOQueRestou();
    void controlesViramBrancosAoEscrever();
    void oQueEGrandeDemaisTemNome_data();
    void oQueEGrandeDemaisTemNome();
    void nomeCompridoVemCortado();
    void receitasDemais();
    void arquivoQueNaoSeLeEDito();
    void aLeituraDeixaRespirar();

    void mensagemDasTresReceitasDaOsBytesPrometidos();
    void mensagemSemPacoteTemAnexoVazio();
    void mensagemLevaOSiteDado();
    void mensagemEscreveNomesComoEstao();

    void caminhoDaLinhaDeComandoPerdeAsAspas_data();
    void caminhoDaLinhaDeComandoPerdeAsAspas();
};

void TestePacote::tresReceitasDaoOsBytesPrometidos()
{
    QByteArray texto = Pacote::EscreverCabecalho();
    for (const Pacote::Receita &receita : TresReceitas())
        texto += Pacote::EscreverReceita(receita);
    QCOMPARE(texto, Dourado("PacoteReceitas.lrs"));
}

void TestePacote::oRecipienteDasTresReceitasDaOsBytesPrometidos()
{
    QByteArray recipiente;
    QCOMPARE(Recipiente::Compactar(Dourado("PacoteReceitas.lrs"), recipiente), Recipiente::kSucesso);
    QCOMPARE(recipiente, Dourado("PacoteReceita.lr$"));
}

void TestePacote::receitaSemFiguraNemIngredientesTem14Linhas()
{
    const QByteArray texto = Pacote::EscreverCabecalho() + Pacote::EscreverReceita(Minima());
    QVERIFY(texto.endsWith("\r\n"));
    const QList<QByteArray> linhas = texto.chopped(2).split('\n');
    QCOMPARE(linhas.size(), 14);
    QCOMPARE(linhas[0], PaginaCodigo::ParaAnsi(kCabecalho).chopped(1));
    QCOMPARE(linhas[1], QByteArray("<RECEITA>\r"));
    QCOMPARE(linhas[12], QByteArray("<INGREDIENTES>\r"));
    QCOMPARE(linhas[13], QByteArray("</INGREDIENTES>"));
}

void TestePacote::modoDeDuasLinhasFicaEmUmaEVolta()
{
    Pacote::Receita receita = Minima();
    receita.Modo = "Bata tudo, bem batido.\r\nAsse.";
    const QByteArray bytes = Pacote::EscreverReceita(receita);
    QVERIFY(bytes.contains("<MODO>Bata tudo\\VG/ bem batido.</BR\\>Asse.</MODO>\r\n"));
    const auto pacote = Ler(Pacote::EscreverCabecalho() + bytes);
    QVERIFY(pacote);
    QCOMPARE(Pacote::DesfazerVirgulas(Pacote::DesfazerQuebras(pacote->texto[0].Valor(u"MODO"))), receita.Modo);
}

void TestePacote::tipoComVirgulaFicaComoEsta()
{
    Pacote::Receita receita = Minima();
    receita.Tipo = "1,5";
    receita.Porcoes = "2,5";
    receita.Calorias = "10,5";
    receita.Tipo_Calorias = ",";
    const QByteArray bytes = Pacote::EscreverReceita(receita);
    QVERIFY(bytes.contains("<TIPO>1,5</TIPO>\r\n"));
    QVERIFY(bytes.contains("<PORCOES>2,5</PORCOES>\r\n"));
    QVERIFY(bytes.contains("<CALORIAS>10,5</CALORIAS>\r\n"));
    QVERIFY(bytes.contains("<TIPO_CALORIAS>,</TIPO_CALORIAS>\r\n"));
    const auto pacote = Ler(Pacote::EscreverCabecalho() + bytes);
    QVERIFY(pacote);
    QCOMPARE(pacote->texto[0].Valor(u"TIPO"), u"1,5");
}

void TestePacote::figuraVaziaNaoEscreveAsLinhas()
{
    Pacote::Receita receita = Minima();
    receita.Figura = "F0000001.img";
    QVERIFY(!Pacote::EscreverReceita(receita).contains("FIGURA"));
    receita.DadosFigura = "x";
    QVERIFY(Pacote::EscreverReceita(receita).contains(
        "<FIGURA>F0000001.img</FIGURA>\r\n<DADOS_FIGURA>eA==</DADOS_FIGURA>\r\n<INGREDIENTES>\r\n"));
}

void TestePacote::valoresPerdemEspacosDasPontas()
{
    Pacote::Receita receita = Minima();
    receita.Nome = "  Arroz  ";
    receita.Observacao = " \r\n a ";
    receita.Ingredientes = {{" Sal ", " 1 ", " g "}};
    const QByteArray bytes = Pacote::EscreverReceita(receita);
    QVERIFY(bytes.contains("<NOME>Arroz</NOME>"));
    QVERIFY(bytes.contains("<OBSERVACAO></BR\\> a</OBSERVACAO>"));
    QVERIFY(bytes.contains(
        "<INGREDIENTE>Sal</INGREDIENTE>\r\n<QUANTIDADE>1</QUANTIDADE>\r\n<UNIDADE>g</UNIDADE>"));
}

void TestePacote::leTextoSemOZeroFinal()
{
    const QByteArray texto = Dourado("PacoteReceitas.lrs");
    const QByteArray registro = texto.mid(texto.lastIndexOf("<RECEITA>") + 9);
    QCOMPARE(LerTexto(registro), PaginaCodigo::DeAnsi(registro));
    QCOMPARE(LerTexto(registro + '\0'), PaginaCodigo::DeAnsi(registro));
}

void TestePacote::leTextoComMuitosZerosNoFim()
{
    const QByteArray texto = Dourado("PacoteReceitas.lrs");
    const QByteArray registro = texto.mid(texto.lastIndexOf("<RECEITA>") + 9);
    QCOMPARE(LerTexto(registro + QByteArray(2'000'000, '\0')), PaginaCodigo::DeAnsi(registro));
}

void TestePacote::leLinhasDeTodoJeito_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("texto");
    // The tag that the record begins with stands on its first line.
    QTest::newRow("nada") << QByteArray() << "\r\n";
    QTest::newRow("só o zero") << QByteArray(1, '\0') << "\r\n";
    QTest::newRow("CR LF") << QByteArray("a\r\nb\r\n") << "a\r\nb\r\n";
    QTest::newRow("sem fim na última") << QByteArray("a\r\nb") << "a\r\nb\r\n";
    QTest::newRow("CR sozinho termina a linha") << QByteArray("a\rb\r") << "a\r\nb\r\n";
    QTest::newRow("LF sozinho é conteúdo") << QByteArray("a\nb\r\n") << "a\nb\r\n";
    QTest::newRow("linhas vazias") << QByteArray("\r\n\r\r\n") << "\r\n\r\n\r\n";
    QTest::newRow("zero no meio é conteúdo")
        << QByteArray("a\0b\r\n\0", 6) << QString("a") + QChar(0) + "b\r\n";
    QTest::newRow("acentos") << QByteArray("p\xE3o \x96 \x80\r\n") << "pão – €\r\n";
}

void TestePacote::leLinhasDeTodoJeito()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, texto);
    QCOMPARE(LerTexto(bytes), texto);
}

void TestePacote::leCrLfPartidoEntreDoisBlocos()
{
    const int bloco = 256 * 1024 - int(Pacote::EscreverCabecalho().size()) - 9;
    for (int n = bloco - 2; n <= bloco + 2; ++n) {
        const QByteArray linha(n, 'x');
        QCOMPARE(LerTexto(linha + "\r\ny\r\n"), QString::fromLatin1(linha + "\r\ny\r\n"));
        QCOMPARE(LerTexto(linha + "\ry"), QString::fromLatin1(linha + "\r\ny\r\n"));
    }
}

void TestePacote::recusaCabecalho_data()
{
    QTest::addColumn<QString>("inicio");
    QTest::newRow("vazio") << "";
    QTest::newRow("outro ano") << "Exportação do Cozinhario 2004 por Tamarel\r\n";
    QTest::newRow("outra casa") << "Exportação do Cozinhario 2005 por Outra\r\n";
    QTest::newRow("espaço no fim") << "Exportação do Cozinhario 2005 por Tamarel \r\n";
    QTest::newRow("espaço no começo") << " Exportação do Cozinhario 2005 por Tamarel\r\n";
    QTest::newRow("letras maiúsculas") << kCabecalho.toUpper();
    QTest::newRow("linha a mais") << kCabecalho + "\r\n";
    QTest::newRow("sem fim de linha") << kCabecalho.chopped(2);
}

void TestePacote::recusaCabecalho()
{
    QFETCH(QString, inicio);
    QVERIFY(!Ler(PaginaCodigo::ParaAnsi(inicio + "<RECEITA>\r\n<NOME>Arroz</NOME>\r\n")));
}

void TestePacote::pacoteSemReceitasNaoTemRegistros()
{
    const auto pacote = Ler(Pacote::EscreverCabecalho() + '\0');
    QVERIFY(pacote);
    QCOMPARE(pacote->texto.Quantas(), 0);
}

void TestePacote::valorVemDaPrimeiraEtiquetaAteOSeuFim_data()
{
    QTest::addColumn<QString>("registro");
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("valor");
    const QString registro =
        "\r\n<NOME>Bolo</NOME>\r\n<TIPO_CALORIAS>R</TIPO_CALORIAS>\r\n<TIPO>2</TIPO>\r\n";
    QTest::newRow("simples") << registro << "NOME"
                             << "Bolo";
    QTest::newRow("nome que começa por outro") << registro << "TIPO"
                                               << "2";
    QTest::newRow("etiqueta que falta") << registro << "MODO"
                                        << "";
    QTest::newRow("letras minúsculas não valem") << registro << "nome"
                                                 << "";
    QTest::newRow("vazio") << "<NOME></NOME>"
                           << "NOME"
                           << "";
    QTest::newRow("fim antes do começo") << "</NOME><NOME>Bolo</NOME>"
                                         << "NOME"
                                         << "Bolo";
    QTest::newRow("duas vezes") << "<NOME>Bolo</NOME><NOME>Pão</NOME>"
                                << "NOME"
                                << "Bolo";
    QTest::newRow("fim sem o sinal") << "<NOME>Bolo</NOME"
                                     << "NOME"
                                     << "Bolo";
    QTest::newRow("espaços ficam") << "<NOME> Bolo </NOME>"
                                   << "NOME"
                                   << " Bolo ";
    QTest::newRow("sem fim") << "<NOME>Bolo\r\n"
                             << "NOME"
                             << "Bolo";
}

void TestePacote::valorVemDaPrimeiraEtiquetaAteOSeuFim()
{
    QFETCH(QString, registro);
    QFETCH(QString, tag);
    QFETCH(QString, valor);
    QCOMPARE(Valor(registro, tag), valor);
}

void TestePacote::registroCortadoDaOQueRestou()
{
    const QByteArray inteiro = Dourado("PacoteReceitas.lrs");
    const qsizetype corte = inteiro.indexOf("<UNIDADE>x\xED"
                                            "cara</UNIDADE>") +
                            12;
    const auto pacote = Ler(inteiro.first(corte));
    QVERIFY(pacote);
    QCOMPARE(pacote->texto.Quantas(), 2);
    QCOMPARE(pacote->texto[1].Valor(u"NOME"), u"Bolo de fubá\\VG/ simples");
    const auto itens = pacote->texto[1].Itens();
    QCOMPARE(itens.size(), 2u);
    QCOMPARE(itens[1].Valor(u"UNIDADE"), u"xíc");
}

void TestePacote::ingredientesSeparamSeEmItens()
{
    const QString registro =
        "<INGREDIENTES>\r\n<ITEM>\r\n<INGREDIENTE>Sal</INGREDIENTE>\r\n<QUANTIDADE></QUANTIDADE>"
        "<ITEM><UNIDADE>g</UNIDADE></INGREDIENTES>\r\n<ITEM>fora";
    const auto itens = Pacote::Registro(registro).Itens();
    QCOMPARE(itens.size(), 2u);
    QCOMPARE(itens[0].Valor(u"INGREDIENTE"), u"Sal");
    QCOMPARE(itens[1].Valor(u"INGREDIENTE"), u"");
    QCOMPARE(itens[1].Valor(u"UNIDADE"), u"g");
    const QString semItens = "<INGREDIENTES>\r\n</INGREDIENTES>";
    QVERIFY(Pacote::Registro(semItens).Itens().empty());
}

void TestePacote::figuraDanificadaAindaDaBytes()
{
    const QString inteira = "<DADOS_FIGURA>TWFu\r\nTWFu</DADOS_FIGURA>";
    const QString danificada = "<DADOS_FIGURA>TW*u\r\nTWFu</DADOS_FIGURA>";
    QCOMPARE(Figura(Pacote::Registro(inteira)), QByteArray("ManMan"));
    QCOMPARE(Figura(Pacote::Registro(danificada)), QByteArray("M`.Man"));
    const QString vazia = "<DADOS_FIGURA></DADOS_FIGURA>";
    QCOMPARE(Figura(Pacote::Registro(vazia)), QByteArray());
}

void TestePacote::leOQueEscreve()
{
    QByteArray texto;
    QCOMPARE(Recipiente::Descompactar(Dourado("PacoteReceita.lr$"), texto), Recipiente::kSucesso);
    const auto pacote = Ler(texto);
    QVERIFY(pacote);
    const QList<Pacote::Receita> receitas = TresReceitas();
    QCOMPARE(pacote->texto.Quantas(), receitas.size());
    for (qsizetype i = 0; i < receitas.size(); ++i) {
        const Pacote::Registro lida = pacote->texto[i];
        QCOMPARE(Pacote::DesfazerVirgulas(lida.Valor(u"NOME")), receitas[i].Nome);
        QCOMPARE(Pacote::DesfazerVirgulas(lida.Valor(u"ORIGEM")), receitas[i].Origem);
        QCOMPARE(Pacote::DesfazerVirgulas(Pacote::DesfazerQuebras(lida.Valor(u"OBSERVACAO"))),
                 receitas[i].Observacao);
        QCOMPARE(lida.Valor(u"FIGURA").toString(), receitas[i].Figura);
        QCOMPARE(Figura(lida), receitas[i].DadosFigura);
        QCOMPARE(qsizetype(lida.Itens().size()), receitas[i].Ingredientes.size());
    }
}

void TestePacote::figuraGrandeFicaNoArquivoEVemEmPedacos_data()
{
    QTest::addColumn<QByteArray>("fimDeLinha");
    QTest::newRow("CR LF") << QByteArray("\r\n");
    QTest::newRow("CR") << QByteArray("\r");
    QTest::newRow("LF, que vale zero") << QByteArray("\n");
    QTest::newRow("CR com o igual no meio") << QByteArray("\r=\n");
    QTest::newRow("sem linhas") << QByteArray("");
}

void TestePacote::figuraGrandeFicaNoArquivoEVemEmPedacos()
{
    QFETCH(QByteArray, fimDeLinha);
    QByteArray dados(3'000'001, Qt::Uninitialized);
    for (qsizetype i = 0; i < dados.size(); ++i)
        dados[i] = static_cast<char>(i * 7 + i / 251);
    const QByteArray base64 = Base64Class().Codificar(dados).replace("\r\n", fimDeLinha);
    // What a reader of the whole text would make of it: every CR ends a line.
    QByteArray linhas = base64;
    linhas.replace("\r\n", "\n\t").replace("\r", "\n\t").replace("\n\t", "\r\n");
    const QByteArray esperado = Base64Class().Decodificar(linhas);

    const auto pacote = Ler(Pacote::EscreverCabecalho() + "<RECEITA>\r\n<NOME>A</NOME>\r\n<DADOS_FIGURA>" + base64 +
                            "</DADOS_FIGURA>\r\n<INGREDIENTES>\r\n<ITEM>\r\n<INGREDIENTE>Sal</INGREDIENTE>\r\n"
                            "</INGREDIENTES>\r\n<RECEITA>\r\n<NOME>B</NOME>\r\n");
    QVERIFY(pacote);
    QCOMPARE(pacote->texto.Quantas(), 2);
    const Pacote::Registro registro = pacote->texto[0];
    QVERIFY(registro.Tudo().size() < 1000);
    QCOMPARE(registro.Itens().at(0).Valor(u"INGREDIENTE"), u"Sal");
    QCOMPARE(registro.Excesso(), "");
    int blocos = 0;
    QVERIFY(Figura(registro, &blocos) == esperado);
    QVERIFY(blocos > 5);
    QCOMPARE(pacote->texto[1].Valor(u"NOME"), u"B");
}

void TestePacote::figuraGrandeCortadaDaOQueRestou()
{
    const QByteArray dados(3'000'000, 'x');
    const QByteArray inteiro =
        Pacote::EscreverCabecalho() + "<RECEITA>\r\n<NOME>A</NOME>\r\n<DADOS_FIGURA>" + Base64Class().Codificar(dados);
    const auto pacote = Ler(inteiro.first(2'000'000));
    QVERIFY(pacote);
    QCOMPARE(pacote->texto[0].Valor(u"NOME"), u"A");
    const QByteArray figura = Figura(pacote->texto[0]);
    QVERIFY(figura.size() > 1'400'000);
    QVERIFY(figura == dados.first(figura.size()));
}

void TestePacote::controlesViramBrancosAoEscrever()
{
    Pacote::Receita receita = Minima();
    receita.Nome = "Torta\r\nBcc: x";
    receita.Origem = "a\tb";
    receita.Modo = "Bata.\r\nAsse.";
    receita.Ingredientes = {{"Sal\r", "1\n2", "g\v"}};
    const QByteArray bytes = Pacote::EscreverReceita(receita);
    QVERIFY(bytes.contains("<NOME>Torta  Bcc: x</NOME>\r\n"));
    QVERIFY(bytes.contains("<ORIGEM>a b</ORIGEM>\r\n"));
    QVERIFY(bytes.contains("<MODO>Bata.</BR\\>Asse.</MODO>\r\n"));
    QVERIFY(bytes.contains(
        "<INGREDIENTE>Sal</INGREDIENTE>\r\n<QUANTIDADE>1 2</QUANTIDADE>\r\n<UNIDADE>g</UNIDADE>\r\n"));
}

void TestePacote::oQueEGrandeDemaisTemNome_data()
{
    QTest::addColumn<QByteArray>("registro");
    QTest::addColumn<QString>("motivo");
    const QByteArray limite(Pacote::kMaiorValor, 'x');
    const QByteArray linha = "<ITEM>\r\n<INGREDIENTE>a</INGREDIENTE>\r\n";
    const auto modo = [](const QByteArray &valor) { return "<MODO>" + valor + "</MODO>"; };
    const auto linhas = [](const QByteArray &itens) { return "<INGREDIENTES>" + itens + "</INGREDIENTES>"; };
    QTest::newRow("modo no limite") << modo(limite) << "";
    QTest::newRow("modo") << modo(limite + 'x') << "O campo MODO";
    QTest::newRow("nome") << "<NOME>" + limite + "x</NOME>" << "O campo NOME";
    QTest::newRow("quantidade") << linhas(linha + "<ITEM><QUANTIDADE>" + limite + "x</QUANTIDADE>")
                                << "O campo QUANTIDADE";
    QTest::newRow("linhas no limite") << linhas(linha.repeated(Pacote::kMaisLinhas)) << "";
    QTest::newRow("linhas") << linhas(linha.repeated(Pacote::kMaisLinhas + 1)) << "A receita tem ingredientes demais";
    QTest::newRow("tudo junto") << modo(limite) + "<NOME>" + limite + "</NOME><OBSERVACAO>" + limite +
                                       "</OBSERVACAO><ORIGEM>" + limite + "</ORIGEM>"
                                << "A receita tem textos grandes demais";
    QTest::newRow("figura não conta") << "<DADOS_FIGURA>" + QByteArray(30'000'000, 'A') + "</DADOS_FIGURA>" << "";
}

void TestePacote::oQueEGrandeDemaisTemNome()
{
    QFETCH(QByteArray, registro);
    QFETCH(QString, motivo);
    const auto pacote = Ler(Pacote::EscreverCabecalho() + "<RECEITA>\r\n" + registro + "\r\n<RECEITA>\r\n");
    QVERIFY(pacote);
    const QString excesso = pacote->texto[0].Excesso();
    QVERIFY2(motivo.isEmpty() ? excesso.isEmpty() : excesso.startsWith(motivo), qPrintable(excesso.left(200)));
    QVERIFY(pacote->texto[0].Tudo().size() < Pacote::kMaiorReceita + 1000);
    QCOMPARE(pacote->texto[1].Excesso(), "");
}

void TestePacote::nomeCompridoVemCortado()
{
    const QByteArray nome = "P\xE3o " + QByteArray(3000, 'a');
    const auto pacote = Ler(Pacote::EscreverCabecalho() + "<RECEITA>\r\n<NOME>" + nome +
                            "</NOME>\r\n<RECEITA>\r\n<NOME>Bolo\\VG/ bom</NOME>\r\n<RECEITA>\r\n<RECEITA>\r\n<NOME>a\r\n");
    QVERIFY(pacote);
    QCOMPARE(pacote->texto.Nome(0, 1000), PaginaCodigo::DeAnsi(nome).first(1000));
    QCOMPARE(pacote->texto.Nome(1, 1000), "Bolo\\VG/ bom");
    QCOMPARE(pacote->texto.Nome(1, 6), "Bolo\\V");
    QCOMPARE(pacote->texto.Nome(2, 1000), "");
    QCOMPARE(pacote->texto.Nome(3, 1000), "a");
}

void TestePacote::receitasDemais()
{
    const Lido demais(Pacote::EscreverCabecalho() + QByteArray("<RECEITA>").repeated(Pacote::kMaisReceitas + 1));
    QCOMPARE(demais.abertura, Pacote::Texto::Abertura::ReceitasDemais);
    const Lido cabe(Pacote::EscreverCabecalho() + QByteArray("<RECEITA>").repeated(Pacote::kMaisReceitas));
    QVERIFY(cabe.Aberto());
    QCOMPARE(cabe.texto.Quantas(), Pacote::kMaisReceitas);
}

void TestePacote::arquivoQueNaoSeLeEDito()
{
    const auto pacote = Ler(Pacote::EscreverCabecalho() + QByteArray("<RECEITA>\r\n<MODO>") +
                            QByteArray(1'000'000, 'x') + "</MODO>");
    QVERIFY(pacote);
    pacote->arquivo.close();
    QVERIFY_EXCEPTION_THROWN(pacote->texto[0], std::runtime_error);
}

void TestePacote::aLeituraDeixaRespirar()
{
    const auto pacote = Ler(Pacote::EscreverCabecalho() + QByteArray("<RECEITA>\r\n<MODO>") +
                            QByteArray(10'000'000, 'x') + "</MODO>");
    QVERIFY(pacote);
    QVERIFY(pacote->respiros > 30);
}

void TestePacote::mensagemDasTresReceitasDaOsBytesPrometidos()
{
    QString nomes;
    for (const Pacote::Receita &receita : TresReceitas())
        nomes += "<LI>" + receita.Nome;
    const QByteArray mensagem =
        MensagemPacote(nomes, Dourado("PacoteReceita.lr$"), "https://www.tamarel.example");
    QCOMPARE(mensagem, Dourado("temppct.eml"));
}

void TestePacote::mensagemSemPacoteTemAnexoVazio()
{
    const QByteArray mensagem = MensagemPacote("<LI>A", {}, "https://www.tamarel.example");
    QVERIFY(mensagem.endsWith("lr$?=\"\r\n\r\n\r\n------=_NextPart_000_0009_01C4903F.EF2FE790--\r\n\r\n"));
}

void TestePacote::mensagemLevaOSiteDado()
{
    const QByteArray mensagem = MensagemPacote("", "x", "http://127.0.0.1:8080");
    QVERIFY(mensagem.contains(
        "<a href=3D\"http://127.0.0.1:8080/cozinhario/download/instalar.exe\">clique aqui</a>"));
    QVERIFY(mensagem.contains("\r\nhref=3D\"http://127.0.0.1:8080\">127.0.0.1</A> =\r\n"));
}

void TestePacote::mensagemEscreveNomesComoEstao()
{
    const QByteArray mensagem =
        MensagemPacote("<LI>A & B = <C><LI>Pão 日", "x", "https://www.tamarel.example");
    QVERIFY(mensagem.contains("<BR><LI>A & B = <C><LI>P\xE3o ?</TBODY></TABLE>\r\n"));
}

void TestePacote::caminhoDaLinhaDeComandoPerdeAsAspas_data()
{
    QTest::addColumn<QStringList>("argumentos");
    QTest::addColumn<QString>("caminho");
    QTest::newRow("nenhum") << QStringList() << "";
    QTest::newRow("simples") << QStringList{"/a/b.lr$"} << "/a/b.lr$";
    QTest::newRow("com aspas") << QStringList{"\"/a/b c.lr$\""} << "/a/b c.lr$";
    QTest::newRow("com espaços e acentos") << QStringList{"/tmp/Pão de ló.lr$"} << "/tmp/Pão de ló.lr$";
    QTest::newRow("partido pelos espaços") << QStringList{"\"/a/b", "c.lr$\""} << "/a/b c.lr$";
    QTest::newRow("só aspas") << QStringList{"\"\""} << "";
}

void TestePacote::caminhoDaLinhaDeComandoPerdeAsAspas()
{
    QFETCH(QStringList, argumentos);
    QFETCH(QString, caminho);
    QCOMPARE(CaminhoDaLinhaDeComando(argumentos), caminho);
}

QTEST_GUILESS_MAIN(TestePacote)
#include "teste_pacote.moc"
