#include "news/Enderecos.h"
#include "news/Estilo.h"
#include "news/LimitesPagina.h"
#include "news/LimparPagina.h"
#include "news/PastaDaPagina.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace
{

/// Pages and pictures from memory; remembers what was asked for.
class PastaFalsa : public PastaDaPagina
{
public:
    QHash<QString, QByteArray> paginas;
    QHash<QString, QSize> figuras{{"foto1.jpg", QSize(200, 100)}};
    QStringList pedidos;

    QByteArray LerPagina(const QString &nome) override
    {
        pedidos += nome;
        return paginas.value(nome);
    }
    Figura PegarFigura(const QString &nome) override
    {
        pedidos += nome;
        if (!figuras.contains(nome))
            return {};
        return {"figura-" + nome, figuras.value(nome)};
    }
};

const QUrl kBase("https://site.example/cozinhario/");

/// What stands between <body> and </body> of the cleaned page.
QString Corpo(const QByteArray &pagina)
{
    PastaFalsa pasta;
    const QString html = LimparPagina(pagina, pasta, kBase).html;
    const qsizetype inicio = html.indexOf(u'>', html.indexOf("<body")) + 1;
    return html.mid(inicio, html.lastIndexOf("</body>") - inicio);
}

QByteArray Vezes(const QByteArray &texto, int n)
{
    return texto.repeated(n);
}

int Conta(const QString &html, const QString &o_que)
{
    return static_cast<int>(html.count(o_que));
}

} // namespace

class TesteLimparPagina : public QObject
{
    Q_OBJECT

private slots:
    void escreveOQueConhece_data();
    void escreveOQueConhece();
    void decodificaUtf8EWindows1252_data();
    void decodificaUtf8EWindows1252();
    void figuraSoDaPastaDaPagina_data();
    void figuraSoDaPastaDaPagina();
    void figuraTemTamanhoSensato();
    void linksSoParaAWebEOCorreio_data();
    void linksSoParaAWebEOCorreio();
    void estilosSoDoQueEInofensivo_data();
    void estilosSoDoQueEInofensivo();
    void folhaDeEstiloPerdeAsMarcasDeComentario();
    void folhaDeEstiloSemOQueBuscaNaRede();
    void coresDoCorpo();
    void tomaOQuadroPrincipal_data();
    void tomaOQuadroPrincipal();
    void quadroSemArquivoMostraOTextoAlternativo();
    void quadrosQueSeChamamTerminam();
    void paginaSemNadaEVazia_data();
    void paginaSemNadaEVazia();
    void limitaAProfundidade();
    void limitaTabelasDentroDeTabelas();
    void limitaCelulas_data();
    void limitaCelulas();
    void limitaElementosTextoEFiguras();
    void soLeOComecoDeUmArquivoEnorme();
    void figurasDaPastaLocal();
    void figuraBombaNaoSeAbre();
    void figuraDeMuitasPassadasNaoSeAbre();
};

void TesteLimparPagina::escreveOQueConhece_data()
{
    QTest::addColumn<QByteArray>("pagina");
    QTest::addColumn<QString>("corpo");
    const auto linha = [](const char *nome, const char *pagina, const char *corpo) {
        QTest::newRow(nome) << QByteArray(pagina) << QString::fromUtf8(corpo);
    };
    linha("texto", "<p>a <b>b</b></p>", "<p>a <b>b</b></p>");
    linha("sem corpo", "a", "<p>a</p>");
    linha("maiusculas", "<P ALIGN=CENTER>a</P>", "<p align=\"center\">a</p>");
    linha("escapa", "<p>&lt;script&gt; &amp; &quot;</p>", "<p>&lt;script&gt; &amp; &quot;</p>");
    linha("entidade", "<p>p&atilde;o&nbsp;d&#39;&aacute;gua</p>", "<p>pão\u00A0d'água</p>");
    linha("brancos", "<p>a \n\t b</p>", "<p>a b</p>");
    linha("pre", "<pre>a \n b</pre>", "<pre>a \n b</pre>");
    linha("script some", "<p>a<script>alert('<p>x')</script>b</p>", "<p>ab</p>");
    linha("evento some", "<p onclick='x()' onmouseover=y>a</p>", "<p>a</p>");
    linha("objetos somem", "<p>a</p><object><p>x</p></object><embed src=x><applet>y</applet>", "<p>a</p>");
    linha("sem fim conhecido", "<p>a<embed src=x>b<wbr>c<source src=y>d<bgsound src=z>e</p>", "<p>abcde</p>");
    linha("acentos empilhados", "<p>a&#769;&#769;&#769;&#769;&#769;b&#769;</p>",
          "<p>a\u0301\u0301\u0301b\u0301</p>");
    linha("duas escritas do mundo bastam", "<p>&#1488;&#4304;&#12354;&#1489; &#937; &#1046; &#128512;</p>",
          "<p>\u05D0\u10D0?\u05D1 Ω Ж \U0001F600</p>");
    linha("iframe some", "<p>a</p><iframe src='foto1.jpg'>x</iframe>", "<p>a</p>");
    linha("campos somem",
          "<form><p>a<input value=x><select><option>y</select><textarea>z</textarea></p></form>",
          "<div><p>a</p></div>");
    linha("noscript fica", "<noscript><p>a</p></noscript>", "<p>a</p>");
    linha("desconhecida fica sem a tag", "<p><blink>a</blink></p>", "<p>a</p>");
    linha("comentario some", "<p>a<!-- <p>x</p> -->b</p>", "<p>ab</p>");
    linha("comentario que nao fecha", "<p>a</p><!-- <p>x", "<p>a</p>");
    linha("processamento some", "<p>a<?php x ?>b</p>", "<p>ab</p>");
    linha("titulo some", "<html><head><title>t</title></head><body><p>a</p></body></html>", "<p>a</p>");
    linha("meta e link somem",
          "<head><meta http-equiv=refresh content='0;url=http://x/'><link rel=stylesheet href=x.css>"
          "<base href='http://x/'></head><p>a</p>",
          "<p>a</p>");
    linha("tabela",
          "<table border=1 width='50%'><tr bgcolor=red><td colspan=2 valign=top>a</td></tr></table>",
          "<table border=\"1\" width=\"50%\"><tr bgcolor=\"#ff0000\"><td valign=\"top\" "
          "colspan=\"2\">a</td></tr></table>");
    linha("celula sem tabela", "<td>a</td>", "a");
    linha("texto entre linhas some", "<table>x<tr>y<td>a</td></tr></table>",
          "<table><tr><td>a</td></tr></table>");
    linha("fonte", "<font color=navy size=+1 face='Comic Sans, Verdana'>a</font>",
          "<font color=\"#000080\" size=\"+1\" face=\"Verdana\">a</font>");
    linha("valores absurdos",
          "<table border=99999 width=99999999999 cellpadding=-5><tr><td>a</td></tr></table>",
          "<table border=\"20\" cellpadding=\"0\"><tr><td>a</td></tr></table>");
    linha("aspas em atributo", "<p align='center\"><script>'>a</p>", "<p>a</p>");
    linha("ancora", "<a name=topo>a</a><a href='#topo'>b</a>",
          "<a name=\"topo\">a</a><a href=\"#topo\">b</a>");
}

void TesteLimparPagina::escreveOQueConhece()
{
    QFETCH(QByteArray, pagina);
    QTEST(Corpo(pagina).trimmed(), "corpo");
}

void TesteLimparPagina::decodificaUtf8EWindows1252_data()
{
    QTest::addColumn<QByteArray>("pagina");
    QTest::newRow("utf-8") << QByteArray("<p>p\xC3\xA3o \xE2\x80\x9Coi\xE2\x80\x9D</p>");
    QTest::newRow("utf-8 com marca") << QByteArray(
        "\xEF\xBB\xBF<p>p\xC3\xA3o \xE2\x80\x9Coi\xE2\x80\x9D</p>");
    QTest::newRow("windows-1252") << QByteArray("<p>p\xE3o \x93oi\x94</p>");
    QTest::newRow("diz que e latin 1") << QByteArray(
        "<meta http-equiv=content-type content='text/html; charset=iso-8859-1'><p>p\xE3o \x93oi\x94</p>");
    QTest::newRow("diz que e utf-8 e nao e") << QByteArray("<meta charset=utf-8><p>p\xE3o \x93oi\x94</p>");
    QTest::newRow("codificacao que nao existe") << QByteArray("<meta charset=xyz><p>p\xE3o \x93oi\x94</p>");
    const QString texto = "<p>pão “oi”</p>";
    QTest::newRow("utf-16") << QByteArray("\xFF\xFE") +
                                   QByteArray(reinterpret_cast<const char *>(texto.utf16()),
                                              texto.size() * 2);
    QTest::newRow("nulos no meio") << QByteArray("<p>p\xE3o\0\x93oi\x94</p>", 15);
}

void TesteLimparPagina::decodificaUtf8EWindows1252()
{
    QFETCH(QByteArray, pagina);
    QVERIFY2(Corpo(pagina).contains("<p>pão “oi”</p>"), qPrintable(Corpo(pagina)));
}

void TesteLimparPagina::figuraSoDaPastaDaPagina_data()
{
    QTest::addColumn<QByteArray>("src");
    QTest::addColumn<bool>("aparece");
    for (const char *bom : {"foto1.jpg", "img/foto1.jpg", "./foto1.jpg", "/cozinhario/img/foto1.jpg",
                            "foto1.jpg?x=1", "foto1%2Ejpg", " foto1.jpg ", "../foto1.jpg"})
        QTest::newRow(bom) << QByteArray(bom) << true;
    for (const char *mau :
         {"http://x/foto1.jpg", "https://x/foto1.jpg", "//x/foto1.jpg", "file:///foto1.jpg", "file:foto1.jpg",
          "FILE:///tmp/foto1.jpg", "data:image/png;base64,AAAA", "qrc:/foto1.jpg", ":/foto1.jpg",
          "c:\\foto1.jpg", "\\\\x\\foto1.jpg", "javascript:foto1.jpg", "", "..", "outra.jpg",
          "ftp://x/foto1.jpg", "http:foto1.jpg"})
        QTest::newRow(qPrintable("recusa " + QString(mau))) << QByteArray(mau) << false;
}

void TesteLimparPagina::figuraSoDaPastaDaPagina()
{
    QFETCH(QByteArray, src);
    QFETCH(bool, aparece);
    const QString corpo = Corpo("<p><img src=\"" + src + "\" alt=\"a <b>\"></p>");
    QCOMPARE(corpo, aparece ? "<p><img src=\"figura-foto1.jpg\" width=\"200\" height=\"100\"></p>"
                            : "<p>a &lt;b&gt;</p>");
}

void TesteLimparPagina::figuraTemTamanhoSensato()
{
    const auto medidas = [](const QByteArray &atributos) {
        const QString corpo = Corpo("<img src=foto1.jpg " + atributos + ">");
        static const QRegularExpression kMedidas("width=\"(\\d+)\" height=\"(\\d+)\"");
        const auto m = kMedidas.match(corpo);
        return QSize(m.captured(1).toInt(), m.captured(2).toInt());
    };
    QCOMPARE(medidas(""), QSize(200, 100));
    QCOMPARE(medidas("width=100"), QSize(100, 50));
    QCOMPARE(medidas("height=50"), QSize(100, 50));
    QCOMPARE(medidas("width=30 height=40"), QSize(30, 40));
    QCOMPARE(medidas("width=999999999 height=999999"), QSize(2000, 2000));
    QCOMPARE(medidas("width=-3 height=0"), QSize(1, 1));
    QCOMPARE(medidas("width=99999999999999999999"), QSize(200, 100));
}

void TesteLimparPagina::linksSoParaAWebEOCorreio_data()
{
    QTest::addColumn<QString>("href");
    QTest::addColumn<QString>("url");
    const auto linha = [](const char *href, const char *url) {
        QTest::newRow(href) << QString(href) << QString(url);
    };
    linha("http://a.b/c?d=e&f=g#h", "http://a.b/c?d=e&f=g#h");
    linha("HTTPS://a.b/", "https://a.b/");
    linha("mailto:eu@a.b", "mailto:eu@a.b");
    linha("mailto:eu@a.b?subject=Oi&attach=/etc/passwd&body=x", "mailto:eu@a.b?subject=Oi&body=x");
    linha("mailto:eu@a.b?attachment=file:///x", "mailto:eu@a.b");
    linha("mailto:?to=x", "");
    // A line break would add header lines to the cook's own message.
    for (const char *mau :
         {"mailto:eu@a.b%0ABcc:ele@a.b", "mailto:eu@a.b%0D%0ABcc:ele@a.b",
          "mailto:eu@a.b?subject=Oi%0ABcc:ele@a.b", "mailto:eu@a.b?subject=Oi%0dx",
          "mailto:eu@a.b?body=a%0Ab", "mailto:eu@a.b?%0ABcc=ele@a.b", "mailto:eu@a.b?subject=a%00b",
          "mailto:eu@a.b?subject=a%C2%85b", "mailto:eu@a.b%E2%80%A8Bcc:x", "mailto:eu\n@a.b%0a"})
        linha(mau, "");
    linha("pacotes/doces.lr$", "https://site.example/cozinhario/pacotes/doces.lr$");
    linha("/outra", "https://site.example/outra");
    linha("//a.b/c", "https://a.b/c");
    linha("java\tscript:x",
          "https://site.example/cozinhario/java%09script:x"); // no scheme, so a place on the site
    for (const char *mau : {"", "javascript:alert(1)", "JaVaScRiPt:alert(1)", "file:///etc/passwd",
                            "vbscript:x", "data:text/html,x", "ms-settings:x", "smb://a/b", "ftp://a/b",
                            "tel:190", "http://", "about:blank", "c:\\x.exe", "http://[", "exec:/bin/sh"})
        linha(mau, "");
    QTest::newRow("longo demais") << "http://a.b/" + QString(3000, 'x') << QString();
}

void TesteLimparPagina::linksSoParaAWebEOCorreio()
{
    QFETCH(QString, href);
    QFETCH(QString, url);
    QCOMPARE(LinkSeguro(href, kBase).toString(QUrl::FullyEncoded), url);
    const QString corpo = Corpo("<a href=\"" + href.toHtmlEscaped().toUtf8() + "\">x</a>");
    QCOMPARE(corpo, url.isEmpty() ? "<a>x</a>" : "<a href=\"" + url.toHtmlEscaped() + "\">x</a>");
}

void TesteLimparPagina::estilosSoDoQueEInofensivo_data()
{
    QTest::addColumn<QString>("estilo");
    QTest::addColumn<QString>("limpo");
    const auto linha = [](const char *estilo, const char *limpo) {
        QTest::newRow(estilo) << QString(estilo) << QString(limpo);
    };
    linha("color:red", "color:#ff0000");
    linha(" COLOR : #ABC ; ", "color:#aabbcc");
    linha("color:rgb(300, 2, 3)", "color:#ff0203");
    linha("background:url(http://x/)", "");
    linha("background:#fff", "background-color:#ffffff");
    linha("background-image:url(x.gif)", "");
    linha("font-size:12px", "font-size:12px");
    linha("font-size:9.5pt", "font-size:9pt");
    linha("font-size:100000px", "");
    linha("font-size:41px", "");
    linha("font-size:5px", "");
    linha("font-size:300%", "");
    linha("font-size:2em", "");
    linha("font-family:'Comic Sans', Verdana", "font-family:'Verdana'");
    linha("font-family:Outra", "");
    linha("margin:0 10px", "margin:0 10px");
    linha("margin-left:-500px", "");
    linha("margin-left:5000px", "");
    linha("padding:99999px", "");
    linha("text-align:center;position:absolute", "text-align:center");
    linha("display:none", "");
    linha("width:expression(alert(1))", "");
    linha("behavior:url(x)", "");
    linha("-qt-block-indent:999999", "");
    linha("page-break-before:always", "");
    linha("border:1px solid #00f", "border:1px solid #0000ff");
    linha("border:9999px solid red", "");
    linha("font-weight:bold !important", "font-weight:bold");
    linha("color", "");
    linha(";;;:", "");
    linha("line-height:120%", "line-height:120%");
    linha("line-height:99999%", "");
    linha("color:\"><script>", "");
}

void TesteLimparPagina::estilosSoDoQueEInofensivo()
{
    QFETCH(QString, estilo);
    QTEST(Estilo::LimparDeclaracoes(estilo), "limpo");
}

void TesteLimparPagina::folhaDeEstiloPerdeAsMarcasDeComentario()
{
    PastaFalsa pasta;
    const QString html =
        LimparPagina("<html><head><style type='text/css'><!--\n.t { color: green; }\n--></style></head>"
                     "<body><p class=t>a</p></body></html>",
                     pasta, kBase)
            .html;
    QVERIFY2(html.contains(".t{color:#008000}"), qPrintable(html));
    QVERIFY(html.contains("<p class=\"t\">a</p>"));
    QVERIFY(!html.contains("<!--"));
}

void TesteLimparPagina::folhaDeEstiloSemOQueBuscaNaRede()
{
    QCOMPARE(Estilo::LimparFolha("@import url(http://x/y.css); p{color:red}"), "p{color:#ff0000}\n");
    QCOMPARE(Estilo::LimparFolha("@media print{p{color:red}} b{color:red}"), "b{color:#ff0000}\n");
    QCOMPARE(Estilo::LimparFolha("@font-face{src:url(x)} b{color:red}"), "b{color:#ff0000}\n");
    QCOMPARE(Estilo::LimparFolha("/* p{color:red} */ td a:link, .x{color:red}"),
             "td a:link,.x{color:#ff0000}\n");
    QCOMPARE(Estilo::LimparFolha("a:hover{color:red} p[x]{color:red} *{color:red} a>b{color:red}"), "");
    QCOMPARE(Estilo::LimparFolha("</style><script>{color:red}"), "");
    QCOMPARE(Estilo::LimparFolha("p{background:url(http://x/)}"), "");
    QCOMPARE(Estilo::LimparFolha("p{color:red"), "p{color:#ff0000}\n");
    QCOMPARE(Estilo::LimparFolha("p{{{{color:red}"), "");
    QCOMPARE(Conta(Estilo::LimparFolha(QString("p{color:red}").repeated(1000)), "p{"), Estilo::kMaximoRegras);
}

void TesteLimparPagina::coresDoCorpo()
{
    PastaFalsa pasta;
    const PaginaLimpa pagina = LimparPagina(
        "<body bgcolor=#000080 text=yellow link=white background='http://x/y.gif'>a</body>", pasta, kBase);
    QCOMPARE(pagina.fundo, QColor(0, 0, 128));
    QCOMPARE(pagina.texto, QColor(255, 255, 0));
    QVERIFY(pagina.html.contains("a:link{color:#ffffff}"));
    QVERIFY(!pagina.html.contains("http"));
    const PaginaLimpa simples = LimparPagina("<body>a</body>", pasta, kBase);
    QCOMPARE(simples.fundo, QColor(Qt::white));
    QCOMPARE(simples.texto, QColor(Qt::black));
}

void TesteLimparPagina::tomaOQuadroPrincipal_data()
{
    QTest::addColumn<QByteArray>("quadros");
    QTest::newRow("pelo nome") << QByteArray(
        "<frameset cols='50%,50%'><frame src=a.htm name=menu><frame src=b.htm name=principal></frameset>");
    QTest::newRow("pela estrela") << QByteArray(
        "<frameset cols='150,*'><frame src=a.htm><frame src=b.htm></frameset>");
    QTest::newRow("estrela no meio") << QByteArray(
        "<frameset rows='80,*,40'><frame src=a.htm><frame src=b.htm><frame src=c.htm></frameset>");
    QTest::newRow("a maior parte") << QByteArray(
        "<frameset rows='20%,80%'><frame src=a.htm><frame src=b.htm></frameset>");
    QTest::newRow("dentro de outro") << QByteArray(
        "<frameset rows='80,*'><frame src=a.htm><frameset cols='150,*'><frame src=c.htm><frame src=b.htm>"
        "</frameset></frameset>");
    QTest::newRow("com html em volta") << QByteArray(
        "<html><head><title>x</title></head><frameset cols='10,*'><frame src=a.htm><frame src='sub/b.htm'>"
        "<noframes><body>velho</body></noframes></frameset></html>");
}

void TesteLimparPagina::tomaOQuadroPrincipal()
{
    QFETCH(QByteArray, quadros);
    PastaFalsa pasta;
    pasta.paginas = {{"a.htm", "<p>menu</p>"}, {"b.htm", "<p>novidades</p>"}, {"c.htm", "<p>rodape</p>"}};
    const PaginaLimpa pagina = LimparPagina(quadros, pasta, kBase);
    QVERIFY2(pagina.html.contains("<p>novidades</p>"), qPrintable(pagina.html));
    QVERIFY(!pagina.vazia);
    QCOMPARE(pasta.pedidos, QStringList({"b.htm"}));
}

void TesteLimparPagina::quadroSemArquivoMostraOTextoAlternativo()
{
    for (const char *src : {"falta.htm", "http://x/b.htm", "file:///etc/hostname"}) {
        const QString corpo =
            Corpo("<html><frameset cols='*'><frame src='" + QByteArray(src) +
                  "'><noframes><body><p>sem quadros</p></body></noframes></frameset></html>");
        QVERIFY2(corpo.contains("sem quadros"), qPrintable(corpo));
    }
}

void TesteLimparPagina::quadrosQueSeChamamTerminam()
{
    PastaFalsa pasta;
    pasta.paginas = {{"a.htm", "<frameset><frame src=b.htm></frameset>"},
                     {"b.htm", "<frameset><frame src=a.htm></frameset>"}};
    const PaginaLimpa pagina = LimparPagina("<frameset><frame src=a.htm></frameset>", pasta, kBase);
    QVERIFY(pagina.vazia);
    QCOMPARE(pasta.pedidos.size(), LimitesPagina::kQuadros);
}

void TesteLimparPagina::paginaSemNadaEVazia_data()
{
    QTest::addColumn<QByteArray>("pagina");
    QTest::addColumn<bool>("vazia");
    QTest::newRow("nada") << QByteArray() << true;
    QTest::newRow("brancos") << QByteArray(" \r\n ") << true;
    QTest::newRow("so script") << QByteArray("<script>document.write('x')</script>") << true;
    QTest::newRow("so figura que falta") << QByteArray("<img src=x.gif>") << true;
    QTest::newRow("so o titulo") << QByteArray("<title>x</title>") << true;
    QTest::newRow("nulos") << QByteArray(1000, '\0') << true;
    QTest::newRow("texto") << QByteArray("x") << false;
    QTest::newRow("figura") << QByteArray("<img src=foto1.jpg>") << false;
}

void TesteLimparPagina::paginaSemNadaEVazia()
{
    QFETCH(QByteArray, pagina);
    PastaFalsa pasta;
    QTEST(LimparPagina(pagina, pasta, kBase).vazia, "vazia");
}

void TesteLimparPagina::limitaAProfundidade()
{
    // Some 90 000 levels: neither the reading nor the writing may use the stack for them.
    const QString corpo = Corpo(Vezes("<b>", 30000) + "fim");
    QVERIFY(Conta(corpo, "<b>") <= LimitesPagina::kProfundidade);
    QCOMPARE(Conta(corpo, "<b>"), Conta(corpo, "</b>"));
    const QString divs = Corpo(Vezes("<div>", 100) + "fim");
    QCOMPARE(Conta(divs, "<div>"), LimitesPagina::kProfundidade);
    QVERIFY(divs.contains("fim"));
    Corpo(Vezes("<blockquote><x>", 40000));
    Corpo(Vezes("<ul><li>", 60000));
    Corpo(Vezes("<table><tr><td>", 40000));
}

void TesteLimparPagina::limitaTabelasDentroDeTabelas()
{
    const QString corpo = Corpo(Vezes("<table><tr><td>", 20) + "fim" + Vezes("</td></tr></table>", 20));
    QCOMPARE(Conta(corpo, "<table"), LimitesPagina::kTabelas);
    QCOMPARE(Conta(corpo, "<td"), LimitesPagina::kTabelas);
    QVERIFY(corpo.contains("fim"));
}

void TesteLimparPagina::limitaCelulas_data()
{
    QTest::addColumn<QByteArray>("pagina");
    QTest::newRow("muitas linhas") << "<table>" + Vezes("<tr><td>a</td></tr>", 20000) + "</table>";
    QTest::newRow("muitas colunas") << "<table><tr>" + Vezes("<td>a</td>", 20000) + "</tr></table>";
    QTest::newRow("muitas tabelas") << Vezes("<table><tr><td>a</td></tr></table>", 8000);
    QTest::newRow("colspan") << Vezes("<table><tr><td colspan=40>a</td></tr></table>", 2000);
    QTest::newRow("colspan absurdo") << Vezes("<table><tr><td colspan=1000000000>a</td></tr></table>", 2000);
    QTest::newRow("rowspan que empurra colunas")
        << "<table>" + Vezes("<tr>" + Vezes("<td rowspan=1000>a</td>", 10) + "</tr>", 50) + "</table>";
}

void TesteLimparPagina::limitaCelulas()
{
    QFETCH(QByteArray, pagina);
    const QString corpo = Corpo(pagina);
    // The grid the view would build: each table's rows times its widest row.
    int celulas = 0;
    for (const QString &tabela : corpo.split("<table").mid(1)) {
        int largura = 0;
        const QStringList linhas = tabela.split("<tr").mid(1);
        for (const QString &linha : linhas) {
            static const QRegularExpression kSpan("colspan=\"(\\d+)\"");
            int nesta = 0;
            for (const QString &celula : linha.split("<td").mid(1)) {
                const auto m = kSpan.match(celula.section(u'>', 0, 0));
                nesta += m.hasMatch() ? m.captured(1).toInt() : 1;
            }
            largura = qMax(largura, nesta);
        }
        celulas += largura * static_cast<int>(linhas.size());
    }
    QVERIFY2(celulas <= LimitesPagina::kCelulas, qPrintable(QString::number(celulas)));
    QVERIFY(corpo.contains(u'a')); // what a table loses is its lines, not its text
}

void TesteLimparPagina::limitaElementosTextoEFiguras()
{
    const auto tags = [](const QString &corpo) { return Conta(corpo, "<") - Conta(corpo, "</"); };
    QCOMPARE(tags(Corpo(Vezes("<p>a", 20000))), LimitesPagina::kElementos);
    QCOMPARE(tags(Corpo(Vezes("<br>", 20000))), LimitesPagina::kElementos);
    QCOMPARE(Conta(Corpo("<p>" + Vezes("x", 300'000)), "x"), LimitesPagina::kTexto);
    QCOMPARE(Conta(Corpo(Vezes("<img src=foto1.jpg>", 5000)), "<img"), LimitesPagina::kFiguras);
    QVERIFY(Corpo("<p><img src=x alt='" + Vezes("y", 5000) + "'>").size() < 1000);
    QVERIFY(Corpo(Vezes("<img src=x alt=y>", 20000)).size() < 1000);
}

void TesteLimparPagina::soLeOComecoDeUmArquivoEnorme()
{
    PastaFalsa pasta;
    const QByteArray enorme = "<p>comeco</p><!--" + QByteArray(20'000'000, 'x') + "--><p>fim</p>";
    const PaginaLimpa pagina = LimparPagina(enorme, pasta, kBase);
    QVERIFY(pagina.html.contains("comeco"));
    QVERIFY(!pagina.html.contains("fim"));
}

void TesteLimparPagina::figurasDaPastaLocal()
{
    QTemporaryDir raiz;
    QDir().mkpath(raiz.filePath("temporario"));
    const QString dentro = raiz.filePath("temporario/");
    QImage imagem(12, 8, QImage::Format_RGB32);
    imagem.fill(Qt::red);
    QVERIFY(imagem.save(dentro + "Foto.PNG"));
    QVERIFY(imagem.save(dentro + "sem-extensao", "JPEG"));
    QVERIFY(imagem.save(raiz.filePath("fora.png")));
    QVERIFY(QFile::link(raiz.filePath("fora.png"), dentro + "atalho.png"));
    QVERIFY(imagem.save(dentro + "icone.ppm"));

    PastaLocal pasta(raiz.filePath("temporario"));
    const PastaDaPagina::Figura figura = pasta.PegarFigura("Foto.PNG");
    QCOMPARE(figura.tamanho, QSize(12, 8));
    QCOMPARE(pasta.Imagem(figura.chave).size(), QSize(12, 8));
    QCOMPARE(pasta.PegarFigura("foto.png").chave, figura.chave); // pages from Windows do not care for case
    QCOMPARE(pasta.PegarFigura("sem-extensao").tamanho, QSize(12, 8));
    for (const char *mau : {"atalho.png", "../fora.png", "..", "", "falta.png", "icone.ppm", "/etc/passwd"})
        QVERIFY2(pasta.PegarFigura(mau).chave.isEmpty(), mau);
    QVERIFY(pasta.Imagem("Foto.PNG").isNull());
    QVERIFY(pasta.LerPagina("../fora.png").isEmpty());
    QVERIFY(pasta.LerPagina("atalho.png").isEmpty());
    QVERIFY(!pasta.LerPagina("Foto.PNG").isEmpty());
}

void TesteLimparPagina::figuraBombaNaoSeAbre()
{
    QTemporaryDir raiz;
    QImage imagem(5000, 5000, QImage::Format_Mono); // small on disk, beyond the limit unfolded
    imagem.fill(0);
    QVERIFY(imagem.save(raiz.filePath("bomba.png")));
    QImage grande(2400, 2400, QImage::Format_Mono);
    grande.fill(0);
    for (int i = 0; i < 4; ++i)
        QVERIFY(grande.save(raiz.filePath("g" + QString::number(i) + ".png")));
    PastaLocal pasta(raiz.path());
    QVERIFY(pasta.PegarFigura("bomba.png").chave.isEmpty());
    QVERIFY(!pasta.PegarFigura("g0.png").chave.isEmpty());
    QVERIFY(!pasta.PegarFigura("g1.png").chave.isEmpty());
    QVERIFY(pasta.PegarFigura("g2.png").chave.isEmpty()); // all together would be too much
}

/// A JPEG whose last scan is repeated: a few bytes each, and for each the decoder goes over every pixel.
void TesteLimparPagina::figuraDeMuitasPassadasNaoSeAbre()
{
    const QTemporaryDir raiz;
    QImage desenho(600, 500, QImage::Format_RGB32);
    for (int y = 0; y < desenho.height(); ++y) {
        for (int x = 0; x < desenho.width(); ++x)
            desenho.setPixel(x, y, qRgb(x & 255, y & 255, (x * y) & 255));
    }
    QByteArray bytes;
    QBuffer saida(&bytes);
    QVERIFY(saida.open(QIODevice::WriteOnly));
    QImageWriter escritor(&saida, "jpeg");
    escritor.setProgressiveScanWrite(true);
    QVERIFY(escritor.write(desenho));
    const QByteArray passada = bytes.mid(bytes.lastIndexOf("\xFF\xDA")).chopped(2);
    const auto gravar = [&](const QString &nome, int mais) {
        QFile arquivo(raiz.filePath(nome));
        QVERIFY(arquivo.open(QIODevice::WriteOnly));
        arquivo.write(bytes.chopped(2) + passada.repeated(mais) + bytes.right(2));
    };
    gravar("comum.jpg", 0);
    gravar("bomba.jpg", 3000);
    for (int i = 0; i < 10; ++i)
        gravar("p" + QString::number(i) + ".jpg", 80); // each bearable, all of them not

    PastaLocal pasta(raiz.path());
    QVERIFY(!pasta.PegarFigura("comum.jpg").chave.isEmpty());
    QVERIFY(pasta.PegarFigura("bomba.jpg").chave.isEmpty());
    int abertas = 0;
    for (int i = 0; i < 10; ++i)
        abertas += !pasta.PegarFigura("p" + QString::number(i) + ".jpg").chave.isEmpty();
    QCOMPARE(abertas, 4);
}

QTEST_GUILESS_MAIN(TesteLimparPagina)
#include "teste_limpar_pagina.moc"
