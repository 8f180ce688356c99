#include "mail/MensagemReceita.h"
#include "mail/tests/Mensagens.h"
#include "packages/Base64Class.h"

#include <QFile>
#include <QtTest>

using MensagemReceita::Montar;

namespace
{
const QString kSite = "https://www.tamarel.example";

QByteArray Ansi(const char *utf8)
{
    return QString::fromUtf8(utf8).toLatin1();
}

QByteArray Linha(const QByteArray &mensagem, const QByteArray &comeco)
{
    for (const QByteArray &linha : mensagem.split('\n'))
        if (linha.startsWith(comeco))
            return linha.endsWith('\r') ? linha.chopped(1) : linha;
    return {};
}

ReceitaNaTela SoNome()
{
    ReceitaNaTela receita;
    receita.txtNome = "Bolo";
    return receita;
}
} // namespace

class TesteMailFormato : public QObject
{
    Q_OBJECT

private slots:
    void mensagensSaoAsGuardadas_data();
    void mensagensSaoAsGuardadas();
    void cadaLinhaTerminaEmCrLf();
    void semFiguraOLimiteFinalSegueAoCorpo();
    void figuraVaiEmLinhasDe76SeguidasDeUmaVazia();
    void figuraQueFaltaDeixaAParteSemLinhas();
    void semUnidadeFicamQuantidadeUmBrancoENome();
    void semIngredientesOTituloEncostaNoFecho();
    void semFatosOParagrafoFicaVazio();
    void cadaFatoSoApareceComValor_data();
    void cadaFatoSoApareceComValor();
    void caloriasSemBaseTerminamNoNumero();
    void porcaoVenceReceitaQuandoAsDuasEstaoMarcadas();
    void semObservacaoAFileiraSome();
    void semModoOTituloFica();
    void quebrasDeModoEObservacaoViramBr();
    void valoresEntramComoEstao();
    void quebraEmCampoDeUmaLinhaNaoFazLinhaNova();
    void foraDaPaginaDeCodigoViraInterrogacao();
    void origemVaziaGuardaOsParenteses();
    void tagIncompletaNaoDerruba();
    void enderecosSaemDoSite();
};

void TesteMailFormato::mensagensSaoAsGuardadas_data()
{
    QTest::addColumn<int>("indice");
    const auto mensagens = MensagensGuardadas();
    for (int i = 0; i < mensagens.size(); ++i)
        QTest::newRow(mensagens[i].nome) << i;
}

void TesteMailFormato::mensagensSaoAsGuardadas()
{
    QFETCH(int, indice);
    const MensagemGuardada caso = MensagensGuardadas()[indice];
    QFile guardada(QString(PASTA_FONTES "/tests/data/%1.eml").arg(caso.nome));
    QVERIFY2(guardada.open(QIODevice::ReadOnly), qPrintable(guardada.fileName()));
    QCOMPARE(Montar(caso.receita, caso.figura, kSite), guardada.readAll());
}

void TesteMailFormato::cadaLinhaTerminaEmCrLf()
{
    for (const MensagemGuardada &caso : MensagensGuardadas()) {
        const QByteArray mensagem = Montar(caso.receita, caso.figura, kSite);
        QCOMPARE(mensagem.count('\r'), mensagem.count('\n'));
        QCOMPARE(mensagem.count("\r\n"), mensagem.count('\n'));
        QVERIFY(mensagem.endsWith("\r\n------=_NextPart_000_0013_01C4900A.6AABC050--\r\n\r\n"));
    }
}

void TesteMailFormato::semFiguraOLimiteFinalSegueAoCorpo()
{
    const QByteArray mensagem = Montar(SoNome(), std::nullopt, kSite);
    QVERIFY(!mensagem.contains("<IMG"));
    QVERIFY(!mensagem.contains("image/jpeg"));
    QVERIFY(!mensagem.contains("cid:"));
    QVERIFY(mensagem.endsWith("\r\n------=_NextPart_001_0014_01C4900A.6AABC050--\r\n\r\n"
                              "------=_NextPart_000_0013_01C4900A.6AABC050--\r\n\r\n"));
}

void TesteMailFormato::figuraVaiEmLinhasDe76SeguidasDeUmaVazia()
{
    const QByteArray figura = FiguraDeExemplo();
    const QByteArray mensagem = Montar(SoNome(), figura, kSite);
    const QByteArray antes = "Content-ID: <000e01c49023$8e488930$0100000a@tamarel>\r\n\r\n";
    const qsizetype inicio = mensagem.indexOf(antes) + antes.size();
    const qsizetype fim = mensagem.indexOf("\r\n\r\n------=_NextPart_000", inicio);
    QVERIFY(inicio > antes.size() && fim > inicio);
    const QByteArray texto = mensagem.mid(inicio, fim - inicio);
    const QList<QByteArray> linhas = QByteArray(texto).replace("\r\n", "\n").split('\n');
    for (qsizetype i = 0; i + 1 < linhas.size(); ++i)
        QCOMPARE(linhas[i].size(), 76);
    QCOMPARE(QByteArray::fromBase64(texto), figura);
}

void TesteMailFormato::figuraQueFaltaDeixaAParteSemLinhas()
{
    const QByteArray mensagem = Montar(SoNome(), QByteArray(), kSite);
    QVERIFY(mensagem.contains("<IMG align=3Dbaseline =\r\n"));
    QVERIFY(mensagem.endsWith("Content-ID: <000e01c49023$8e488930$0100000a@tamarel>\r\n\r\n\r\n\r\n"
                              "------=_NextPart_000_0013_01C4900A.6AABC050--\r\n\r\n"));
}

void TesteMailFormato::semUnidadeFicamQuantidadeUmBrancoENome()
{
    ReceitaNaTela receita = SoNome();
    receita.ingredientes = {Tag("2", "", "ovos"), Tag("", "", "sal")};
    QVERIFY(Montar(receita, std::nullopt, kSite)
                .contains("<B>Ingredientes : </B><BR>2 ovos<BR> sal<BR></FONT></DIV>"));
}

void TesteMailFormato::semIngredientesOTituloEncostaNoFecho()
{
    QVERIFY(Montar(SoNome(), std::nullopt, kSite).contains("<B>Ingredientes : </B><BR></FONT></DIV>"));
}

void TesteMailFormato::semFatosOParagrafoFicaVazio()
{
    ReceitaNaTela receita = SoNome();
    receita.cmbTipo = "  ";
    receita.optReceita = true;
    QVERIFY(
        Montar(receita, std::nullopt, kSite)
            .contains("\r\n<FONT face=3DVerdana size=3D2></FONT></TD><TD rowSpan=3D2 vAlign=3Dtop width=3D"));
}

void TesteMailFormato::cadaFatoSoApareceComValor_data()
{
    QTest::addColumn<int>("campo");
    QTest::addColumn<QByteArray>("esperado");
    QTest::newRow("tipo") << 0 << QByteArray("<B>Tipo: </B>x<BR>");
    QTest::newRow("preparo") << 1 << QByteArray("<B>Tempo de Preparo: </B>x<BR>");
    QTest::newRow("porções") << 2 << Ansi("<B>Rendimento: </B>x porções<BR>");
    QTest::newRow("calorias") << 3 << Ansi("<B>Calorias: </B>x por porção.<BR>");
}

void TesteMailFormato::cadaFatoSoApareceComValor()
{
    QFETCH(int, campo);
    QFETCH(QByteArray, esperado);
    ReceitaNaTela receita = SoNome();
    receita.optPorcao = true;
    QString *const campos[] = {&receita.cmbTipo, &receita.txtPreparo, &receita.txtPorcoes,
                               &receita.txtCalorias};
    *campos[campo] = " x ";
    QVERIFY(Linha(Montar(receita, std::nullopt, kSite), "<FONT face=3DVerdana size=3D2>")
                .startsWith("<FONT face=3DVerdana size=3D2>" + esperado + "</FONT></TD>"));
}

void TesteMailFormato::caloriasSemBaseTerminamNoNumero()
{
    ReceitaNaTela receita = SoNome();
    receita.txtCalorias = "120";
    QVERIFY(Montar(receita, std::nullopt, kSite).contains("<B>Calorias: </B>120<BR>"));
    receita.optReceita = true;
    QVERIFY(Montar(receita, std::nullopt, kSite).contains("<B>Calorias: </B>120 por receita.<BR>"));
}

void TesteMailFormato::porcaoVenceReceitaQuandoAsDuasEstaoMarcadas()
{
    ReceitaNaTela receita = SoNome();
    receita.txtCalorias = "120";
    receita.optPorcao = receita.optReceita = true;
    QVERIFY(Montar(receita, std::nullopt, kSite).contains(Ansi("120 por porção.<BR>")));
}

void TesteMailFormato::semObservacaoAFileiraSome()
{
    ReceitaNaTela receita = SoNome();
    receita.txtObs = "   ";
    const QByteArray mensagem = Montar(receita, std::nullopt, kSite);
    QVERIFY(!mensagem.contains("Adicionais"));
    QVERIFY(mensagem.contains("=size=3D2>&nbsp;</FONT></TD></TR></TBODY></TABLE>\r\n"));
}

void TesteMailFormato::semModoOTituloFica()
{
    QVERIFY(
        Montar(SoNome(), std::nullopt, kSite).contains("<B>Modo de Preparo :=20</B><BR></FONT></TD></TR>"));
}

void TesteMailFormato::quebrasDeModoEObservacaoViramBr()
{
    ReceitaNaTela receita = SoNome();
    receita.txtModo = "a\r\n\r\nb";
    receita.txtObs = "c\r\nd";
    const QByteArray mensagem = Montar(receita, std::nullopt, kSite);
    QVERIFY(mensagem.contains(":=20</B><BR>a<BR><BR>b</FONT>"));
    QVERIFY(mensagem.contains(
        "<B>Informa=E7=F5es Adicionais :=20</B><BR>c<BR>d</FONT></TD></TR></TBODY></TABLE>\r\n"));
}

void TesteMailFormato::valoresEntramComoEstao()
{
    ReceitaNaTela receita = SoNome();
    receita.txtNome = "Pão = <b> & \"água\"";
    const QByteArray mensagem = Montar(receita, std::nullopt, kSite);
    QCOMPARE(Linha(mensagem, "Subject:"), Ansi("Subject: Receita de Pão = <b> & \"água\""));
    QVERIFY(mensagem.contains(Ansi("size=3D5><B>Pão = <b> & \"água\"<FONT size=3D2>")));
}

void TesteMailFormato::quebraEmCampoDeUmaLinhaNaoFazLinhaNova()
{
    ReceitaNaTela receita;
    receita.txtNome = "Torta\r\nBcc: x@y.example";
    receita.txtOrigem = receita.cmbTipo = receita.txtPreparo = receita.txtPorcoes = receita.txtCalorias =
        "a\r\nBcc: x";
    receita.ingredientes = {QString("1\nBcc: x") + QChar(160) + "g\rBcc: x" + QChar(160) + "sal\r\nBcc: x"};
    receita.txtModo = receita.txtObs = "um\nBcc: x\rBcc: x\r\ndois\ttrês";
    const QByteArray mensagem = Montar(receita, std::nullopt, kSite);
    QCOMPARE(Linha(mensagem, "Subject:"), QByteArray("Subject: Receita de Torta  Bcc: x@y.example"));
    for (const QByteArray &linha : mensagem.split('\n'))
        for (const QByteArray &parte : linha.split('\r'))
            QVERIFY2(!parte.startsWith("Bcc"), parte.constData());
    QCOMPARE(mensagem.count("\r\n"), Montar(SoNome(), std::nullopt, kSite).count("\r\n"));
    QVERIFY(mensagem.contains("um Bcc: x Bcc: x<BR>dois\ttr\xEAs"));
}

void TesteMailFormato::foraDaPaginaDeCodigoViraInterrogacao()
{
    ReceitaNaTela receita = SoNome();
    receita.txtNome = "\u5bff\u53f8 \u20AC \U0001F35E";
    QCOMPARE(Linha(Montar(receita, std::nullopt, kSite), "Subject:"), "Subject: Receita de ?? \x80 ?");
}

void TesteMailFormato::origemVaziaGuardaOsParenteses()
{
    QVERIFY(Montar(SoNome(), std::nullopt, kSite)
                .contains("size=3D5><B>Bolo<FONT size=3D2><BR>()</FONT></FONT>=20\r\n"));
}

void TesteMailFormato::tagIncompletaNaoDerruba()
{
    ReceitaNaTela receita = SoNome();
    receita.ingredientes = {"", "3"};
    QVERIFY(Montar(receita, std::nullopt, kSite).contains("<B>Ingredientes : </B><BR> <BR>3 <BR></FONT>"));
}

void TesteMailFormato::enderecosSaemDoSite()
{
    const QByteArray mensagem = Montar(SoNome(), std::nullopt, "http://127.0.0.1:8080");
    QVERIFY(mensagem.contains(
        "<a href=3D\"http://127.0.0.1:8080/cozinhario/download/instalar.exe\">clique aqui</a>!"));
    QVERIFY(mensagem.contains("\r\nhref=3D\"http://127.0.0.1:8080\">127.0.0.1</A> =\r\n"));
}

QTEST_GUILESS_MAIN(TesteMailFormato)
#include "teste_mail_formato.moc"
