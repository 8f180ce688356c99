#include "news/LimitesPagina.h"
#include "news/VisorNovidades.h"
#include "news/tests/AbridorDeTeste.h"
#include "news/tests/ServidorLocal.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QElapsedTimer>
#include <QFile>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>

namespace
{

/// A view with a folder for its pages.
struct Cena {
    QTemporaryDir pasta;
    AbridorDeTeste abridor;
    VisorNovidades visor{abridor};

    Cena() { visor.resize(600, 462); }

    void Gravar(const QString &nome, const QByteArray &bytes) const
    {
        QFile arquivo(pasta.filePath(nome));
        QVERIFY(arquivo.open(QIODevice::WriteOnly));
        arquivo.write(bytes);
    }

    void Mostrar(const QByteArray &pagina)
    {
        Gravar("index.htm", pagina);
        visor.Navegar(pasta.filePath("index.htm"), QUrl("https://site.example/cozinhario/"));
        visor.show();
    }

    /// Where a word of the page stands in the viewport.
    QPoint Onde(const QString &palavra)
    {
        QTextCursor cursor = visor.document()->find(palavra);
        cursor.setPosition(cursor.selectionStart() + 1);
        return visor.cursorRect(cursor).center();
    }

    void Clicar(const QString &palavra)
    {
        QTest::mouseClick(visor.viewport(), Qt::LeftButton, Qt::NoModifier, Onde(palavra));
    }
};

QByteArray Figura(int lado, Qt::GlobalColor cor)
{
    QImage imagem(lado, lado, QImage::Format_RGB32);
    imagem.fill(cor);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    imagem.save(&buffer, "PNG");
    return bytes;
}

} // namespace

class TesteVisorNovidades : public QObject
{
    Q_OBJECT

private slots:
    void mostraAPaginaComAFigura();
    void coresDaPaginaMesmoEmAmbienteEscuro();
    void umCliqueAbreOLinkNoNavegador();
    void umCliqueEmAncoraRolaAPagina();
    void linkPerigosoNaoAbreNada();
    void oTecladoTambemAbreOLink();
    void paginaEmBrancoDizQueNaoPodeSerMostrada();
    void soConheceAsFigurasDaPagina();
    void nadaSaiParaARede();
    void aPaginaNovaTrocaAsFiguras();
    void paginasHostisAparecem_data();
    void paginasHostisAparecem();
};

void TesteVisorNovidades::mostraAPaginaComAFigura()
{
    Cena cena;
    cena.Gravar("foto1.png", Figura(50, Qt::red));
    cena.Mostrar("<body bgcolor=#00ff00><h1>Novidades</h1><p><img src=img/foto1.png></p></body>");
    QCOMPARE(cena.visor.document()->firstBlock().text(), "Novidades");
    const QImage tela = cena.visor.grab().toImage();
    int vermelhos = 0;
    for (int y = 0; y < tela.height(); ++y) {
        for (int x = 0; x < tela.width(); ++x)
            vermelhos += tela.pixelColor(x, y) == QColor(Qt::red);
    }
    QCOMPARE(vermelhos, 50 * 50);
    QCOMPARE(tela.pixelColor(300, 400), QColor(0, 255, 0)); // below the text, the page's colour too
}

void TesteVisorNovidades::coresDaPaginaMesmoEmAmbienteEscuro()
{
    Cena cena;
    QPalette escura;
    escura.setColor(QPalette::Base, Qt::black);
    escura.setColor(QPalette::Text, Qt::white);
    cena.visor.setPalette(escura);
    cena.Mostrar("<p>oi</p>");
    QCOMPARE(cena.visor.palette().color(QPalette::Base), QColor(Qt::white));
    QCOMPARE(cena.visor.palette().color(QPalette::Text), QColor(Qt::black));
}

void TesteVisorNovidades::umCliqueAbreOLinkNoNavegador()
{
    Cena cena;
    cena.Mostrar("<p><a href='http://a.b/c?d=1'>primeiro</a> <a href='mailto:eu@a.b'>segundo</a> "
                 "<a href='pacotes/doces.lr$'>terceiro</a></p>");
    for (const char *palavra : {"primeiro", "segundo", "terceiro"})
        cena.Clicar(palavra);
    QCOMPARE(cena.abridor.enderecos,
             QList<QUrl>({QUrl("http://a.b/c?d=1"), QUrl("mailto:eu@a.b"),
                          QUrl("https://site.example/cozinhario/pacotes/doces.lr$")}));
    QVERIFY(cena.visor.toPlainText().contains("primeiro")); // the page stays
}

void TesteVisorNovidades::umCliqueEmAncoraRolaAPagina()
{
    Cena cena;
    cena.Mostrar("<p><a href='#fim'>desce</a></p>" + QByteArray("<p>x</p>").repeated(100) +
                 "<p><a name=fim>ali</a></p>" + QByteArray("<p>x</p>").repeated(100));
    QCOMPARE(cena.visor.verticalScrollBar()->value(), 0);
    cena.Clicar("desce");
    QVERIFY(cena.visor.verticalScrollBar()->value() > 1000);
    QVERIFY(cena.abridor.enderecos.isEmpty());
    QVERIFY(cena.visor.toPlainText().contains("desce"));
}

void TesteVisorNovidades::linkPerigosoNaoAbreNada()
{
    Cena cena;
    cena.Mostrar("<p><a href='file:///etc/passwd'>um</a> <a href='javascript:x()'>dois</a> "
                 "<a href='smb://a/b'>tres</a></p>");
    for (const char *palavra : {"um", "dois", "tres"})
        cena.Clicar(palavra);
    // Even if such a link came past the cleaning.
    emit cena.visor.anchorClicked(QUrl("file:///etc/passwd"));
    emit cena.visor.anchorClicked(QUrl("smb://a/b"));
    QVERIFY(cena.abridor.enderecos.isEmpty());
    QVERIFY(cena.abridor.arquivos.isEmpty());
}

void TesteVisorNovidades::oTecladoTambemAbreOLink()
{
    Cena cena;
    cena.Mostrar("<p><a href='http://a.b/'>link</a></p>");
    cena.visor.setFocus();
    QTest::keyClick(&cena.visor, Qt::Key_Tab);
    QTest::keyClick(&cena.visor, Qt::Key_Return);
    QCOMPARE(cena.abridor.enderecos, QList<QUrl>({QUrl("http://a.b/")}));
}

void TesteVisorNovidades::paginaEmBrancoDizQueNaoPodeSerMostrada()
{
    Cena cena;
    cena.Mostrar("<script>x</script>");
    QCOMPARE(cena.visor.toPlainText().trimmed(), "A página de novidades não pôde ser mostrada.");
}

void TesteVisorNovidades::soConheceAsFigurasDaPagina()
{
    Cena cena;
    cena.Gravar("foto1.png", Figura(5, Qt::red));
    cena.Mostrar("<img src=foto1.png>");
    const auto pedir = [&cena](const QUrl &url) {
        return qvariant_cast<QImage>(cena.visor.loadResource(QTextDocument::ImageResource, url)).size();
    };
    QCOMPARE(pedir(QUrl("figura-1")), QSize(5, 5));
    QCOMPARE(pedir(QUrl("foto1.png")), QSize(1, 1));
    QCOMPARE(pedir(QUrl::fromLocalFile(cena.pasta.filePath("foto1.png"))), QSize(1, 1));
    QCOMPARE(pedir(QUrl(cena.pasta.filePath("foto1.png"))), QSize(1, 1));
    QCOMPARE(pedir(QUrl("http://127.0.0.1/x.png")), QSize(1, 1));
    for (int tipo : {int(QTextDocument::StyleSheetResource), int(QTextDocument::HtmlResource),
                     int(QTextDocument::MarkdownResource)})
        QCOMPARE(cena.visor.loadResource(tipo, QUrl::fromLocalFile(cena.pasta.filePath("index.htm")))
                     .toByteArray(),
                 QByteArray());
}

void TesteVisorNovidades::nadaSaiParaARede()
{
    ServidorLocal servidor;
    const QByteArray site = servidor.Site().toLatin1();
    Cena cena;
    cena.Mostrar("<html><head><base href='" + site + "/'><link rel=stylesheet href='" + site +
                 "/a.css'><style>@import url(" + site + "/b.css); p{background:url(" + site +
                 "/c.gif)}</style><meta http-equiv=refresh content='0;url=" + site +
                 "/d'></head><body background='" + site + "/e.gif'><script src='" + site +
                 "/f.js'></script><img src='" + site + "/g.gif'><img src='//" + site.mid(7) +
                 "/h.gif'><iframe src='" + site + "/i'></iframe><object data='" + site +
                 "/j'></object><embed src='" + site + "/k'><table background='" + site +
                 "/l.gif'><tr><td background='" + site + "/m.gif' style='background-image:url(" + site +
                 "/n.gif)'>texto</td></tr></table><video src='" + site +
                 "/o'></video><input type=image src='" + site + "/p.gif'><ul style='list-style-image:url(" +
                 site + "/q.gif)'><li>x</ul><a href='" + site + "/r'>link</a></body></html>");
    QVERIFY(cena.visor.toPlainText().contains("texto"));
    cena.visor.grab();
    QTest::mouseMove(cena.visor.viewport(), cena.Onde("link"));
    QTest::qWait(100);
    QCOMPARE(servidor.conexoes, 0);

    // A frameset that names remote pages fetches none of them.
    cena.Mostrar("<frameset><frame src='" + site + "/a'></frameset>");
    QTest::qWait(50);
    QCOMPARE(servidor.conexoes, 0);
}

void TesteVisorNovidades::aPaginaNovaTrocaAsFiguras()
{
    Cena cena;
    cena.Gravar("a.png", Figura(20, Qt::red));
    cena.Mostrar("<img src=a.png>");
    cena.visor.grab();
    cena.Gravar("a.png", Figura(20, Qt::blue));
    cena.Mostrar("<img src=a.png>");
    QCOMPARE(cena.visor.grab().toImage().pixelColor(15, 15), QColor(Qt::blue));
}

void TesteVisorNovidades::paginasHostisAparecem_data()
{
    QTest::addColumn<QByteArray>("pagina");
    const auto vezes = [](const char *texto, int n) { return QByteArray(texto).repeated(n); };
    QTest::newRow("tabelas aninhadas") << vezes("<table><tr><td>a", 5000);
    QTest::newRow("tabelas aninhadas cheias")
        << vezes("<table border=1><tr><td>a</td><td>", 3) + vezes("<table border=1><tr>", 1) +
               vezes("<td>b</td>", 20) + vezes("</tr></table>", 1) + "</td></tr></table>";
    QTest::newRow("grade cheia tres niveis")
        << "<table border=1><tr><td><table border=1><tr><td><table border=1>" +
               ("<tr>" + vezes("<td>palavra palavra</td>", 30) + "</tr>").repeated(32) +
               "</table></td></tr></table></td></tr></table>";
    QTest::newRow("tabelas por toda parte")
        << vezes("<table width='100%'><tr><td><table width='100%'><tr><td><table width='100%'><tr><td>x y "
                 "z</td></tr></table></td></tr></table></td></tr></table>",
                 3000);
    QTest::newRow("spans")
        << "<table>" + ("<tr>" + vezes("<td rowspan=2 colspan=3>a</td>", 5) + "</tr>").repeated(500) +
               "</table>";
    QTest::newRow("span enorme") << "<table>" +
                                        vezes("<tr><td colspan=99999999 rowspan=99999999>a</td></tr>", 1000) +
                                        "</table>";
    QTest::newRow("profundidade") << vezes("<div>", 100'000);
    QTest::newRow("listas aninhadas") << vezes("<ul><li>a", 20'000);
    QTest::newRow("citacoes aninhadas") << vezes("<blockquote>a ", 20'000);
    QTest::newRow("uma palavra sem fim") << QByteArray(500'000, 'x');
    QTest::newRow("texto sem fim") << vezes("palavra ", 60'000);
    QTest::newRow("texto justificado") << "<p align=justify>" + vezes("palavra ", 60'000);
    QTest::newRow("pre sem fim") << "<pre>" + QByteArray(500'000, 'x');
    QTest::newRow("pre de linhas") << "<pre>" + vezes("x\n", 200'000);
    QTest::newRow("acentos empilhados") << "a" + vezes("\xCC\x81", 200'000);
    QTest::newRow("todas as letras do mundo") << [] {
        QString texto;
        for (char32_t c = 0x100; c < 0x20000; c += 2) {
            if (c < 0xD800 || c > 0xF8FF)
                texto += QString::fromUcs4(&c, 1) + u' ';
        }
        return texto.toUtf8();
    }();
    QTest::newRow("direita para a esquerda") << vezes("\xE2\x80\xAE\xD7\x90 a ", 50'000);
    QTest::newRow("fontes diferentes") << [] {
        QByteArray pagina;
        const char *familias[] = {"Verdana", "Arial", "Georgia", "Courier",
                                  "Tahoma",  "Times", "serif",   "monospace"};
        for (int i = 0; i < 8000; ++i)
            pagina += "<span style='font-family:" + QByteArray(familias[i % 8]) +
                      ";font-size:" + QByteArray::number(6 + i % 35) + (i % 2 ? "px" : "pt") +
                      ";font-weight:" + QByteArray(i % 3 ? "bold" : "normal") +
                      ";font-style:" + (i % 5 ? "normal" : "italic") + "'>a</span> ";
        return pagina;
    }();
    QTest::newRow("folha de estilo enorme") << [] {
        QByteArray pagina = "<style>";
        for (int i = 0; i < 5000; ++i)
            pagina += "p.c" + QByteArray::number(i) + " b{color:red}";
        return pagina + "</style>" + QByteArray("<p class=c1><b>a</b>").repeated(5000);
    }();
    QTest::newRow("estilos que casam com tudo") << [] {
        QByteArray pagina = "<style>";
        for (int i = 0; i < 100; ++i)
            pagina += "p b,p i,p span,p a,b,i,div p,td p{font-size:" + QByteArray::number(6 + i % 30) + "px}";
        return pagina + "</style>" + QByteArray("<p><b>a</b><i>b</i>").repeated(5000);
    }();
    QTest::newRow("figuras flutuantes") << vezes("<img src=g.png align=left width=1><p>a", 5000);
    QTest::newRow("figuras enormes") << vezes("<img src=g.png width=99999 height=99999>", 5000);
    QTest::newRow("muitas figuras grandes") << [] {
        QByteArray pagina;
        for (int i = 0; i < 50; ++i)
            pagina += "<img src=g" + QByteArray::number(i) + ".png>";
        return pagina;
    }();
    QTest::newRow("entidades") << vezes("&nbsp;&lt;&#9999;&amp;", 30'000);
    QTest::newRow("atributos") << "<p " + vezes("a=b ", 100'000) + ">x</p>";
    QTest::newRow("atributos todos diferentes") << [] {
        QByteArray pagina = "<p ";
        for (int i = 0; pagina.size() < 500'000; ++i)
            pagina += 'a' + QByteArray::number(i, 36) + ' ';
        return pagina + ">x</p>";
    }();
    QTest::newRow("linhas sem celulas") << "<table>" + vezes("<tr>", 120'000);
    QTest::newRow("doctype com entidades") << "<!DOCTYPE html [<!ENTITY a 'xxxxxxxxxx'><!ENTITY b '" +
                                                  vezes("&a;", 1000) + "'><!ENTITY c '" + vezes("&b;", 1000) +
                                                  "'>]><p>&c;&c;</p>";
    QTest::newRow("tags que nao fecham") << vezes("<b><i><a href=x><font color=red>", 10'000);
    QTest::newRow("tags cruzadas") << vezes("<b><p></b><table></p><i></table>", 10'000);
    QTest::newRow("menores que") << vezes("<", 500'000);
    QTest::newRow("comentarios") << vezes("<!--", 100'000);
    QTest::newRow("titulos") << vezes("<h1>a</h1>", 50'000);
    QTest::newRow("linhas horizontais") << vezes("<hr>", 50'000);
    QTest::newRow("links") << vezes("<a href=http://a.b/>x</a> ", 20'000);
    QTest::newRow("quadros") << vezes("<frameset><frame src=index.htm>", 5000);
    QTest::newRow("lixo") << [] {
        QByteArray lixo;
        quint32 x = 12345;
        for (int i = 0; i < 500'000; ++i) {
            x = x * 1664525u + 1013904223u;
            lixo += static_cast<char>(x >> 24);
        }
        return lixo;
    }();
}

/// Whatever the page holds, it is laid out whole and painted; the time is printed, and the test's time limit
/// is what a hanging page would run into.
void TesteVisorNovidades::paginasHostisAparecem()
{
    QFETCH(QByteArray, pagina);
    Cena cena;
    cena.Gravar("g.png", Figura(2000, Qt::red));
    for (int i = 0; i < 50; ++i)
        QFile::copy(cena.pasta.filePath("g.png"), cena.pasta.filePath("g" + QString::number(i) + ".png"));
    QElapsedTimer relogio;
    relogio.start();
    cena.Mostrar(pagina);
    const qint64 lida = relogio.elapsed();
    cena.visor.verticalScrollBar()->setValue(cena.visor.verticalScrollBar()->maximum());
    cena.visor.grab();
    qInfo("%lld ms to show, %lld ms with the last line", lida, relogio.elapsed());
    QVERIFY(cena.visor.document()->characterCount() <= LimitesPagina::kTexto + 4 * LimitesPagina::kElementos);
    QVERIFY(cena.visor.document()->size().height() > 0);
}

QTEST_MAIN(TesteVisorNovidades)
#include "teste_visor_novidades.moc"
