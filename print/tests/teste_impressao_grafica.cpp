#include "print/ImpressaoGrafica.h"
#include "print/ListaDesenho.h"
#include "print/SuperficiePainter.h"
#include "print/tests/SuperficieDeTeste.h"

#include <QImage>
#include <QPainter>
#include <QTest>

namespace
{
// Prints on a surface 16 letters wide; "|" marks a line's end in the expectation.
QString Quebrar(QString texto, double largura = 16)
{
    SuperficieDeTeste superficie(largura);
    ImpressaoGrafica::ImprimirTexto(superficie, 0, 0, largura, 1000, texto);
    QStringList linhas;
    double y = 0;
    for (const SuperficieDeTeste::Corrida &corrida : superficie.corridas) {
        while (linhas.isEmpty() || y < corrida.y - 0.5) { // an empty line prints nothing
            linhas << QString();
            y = static_cast<double>(linhas.size() - 1);
        }
        linhas.last() += (linhas.last().isEmpty() ? QString() : QStringLiteral(" ")) + corrida.texto;
    }
    return linhas.join(u'|');
}

const QString kReceita =
    QStringLiteral("Bata os ovos com o açúcar até formar um creme claro, junte a farinha aos "
                   "poucos e mexa bem. Leve ao forno já quente por cerca de 40 minutos, até "
                   "que um palito espetado no meio do bolo saia limpo.");
} // namespace

class TesteImpressaoGrafica : public QObject
{
    Q_OBJECT

private slots:
    void quebraOTextoEmLinhas_data();
    void quebraOTextoEmLinhas();
    void primeiraLinhaFicaNoTopo();
    void textoVazioNaoDesenhaNada();
    void linhaJustificadaTerminaNoLimite();
    void ultimaLinhaEFimDeParagrafoFicamAEsquerda();
    void espacosDobradosDividemAFolga();
    void nenhumaLinhaPassaDoLimite_data();
    void nenhumaLinhaPassaDoLimite();
    void paraNoFimDaPaginaEDevolveOResto();
    void oRestoPerdeOsControlesDoComeco();
    void medeAPalavraTextoatualParaSaberSeCabeOutra();
    void aUltimaLinhaQueCabeTerminaOTexto();
    void primeiraLinhaSaiMesmoAbaixoDoLimite();
    void terminaComAPosicaoAtrasDoUltimoCaractere();
    void paginasJuntasDaoOTextoInteiro();
    void medidasFeitasCrescemComOTextoENaoComOQuadrado();
    void cartaoEPaginaQuebramIgual();
    void listaPintaSoOQueSeVe();
    void listaEPintorDesenhamNoMesmoLugar();
    void fotoGrandeEReduzidaAoQueSeVe_data();
    void fotoGrandeEReduzidaAoQueSeVe();
};

void TesteImpressaoGrafica::quebraOTextoEmLinhas_data()
{
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("linhas");
    QTest::newRow("quebra entre palavras") << "mexa bem a massa e leve ao forno"
                                           << "mexa bem a massa|e leve ao forno";
    QTest::newRow("palavra que nao coube vai inteira") << "unte a forma com manteiga"
                                                       << "unte a forma com|manteiga";
    QTest::newRow("a palavra volta para depois do espaco") << "misture o fermento"
                                                           << "misture o|fermento";
    QTest::newRow("retorno termina a linha") << "bata\r\nasse"
                                             << "bata|asse";
    QTest::newRow("retorno sem avanco tambem") << "bata\rasse"
                                               << "bata|asse";
    QTest::newRow("linha cheia seguida de retorno") << "mexa bem a massa\r\ne sirva"
                                                    << "mexa bem a massa|e sirva";
    QTest::newRow("linha vazia entre paragrafos") << "bata\r\n\r\nasse"
                                                  << "bata||asse";
    QTest::newRow("espacos do fim da linha somem") << "bata   \r\nasse"
                                                   << "bata|asse";
    QTest::newRow("espaco que estoura a linha some") << "mexa bem a massa e"
                                                     << "mexa bem a massa|e";
    QTest::newRow("palavra maior que a linha") << "inconstitucionalissimamente"
                                               << "inconstitucional|issimamente";
    QTest::newRow("palavra maior depois de outra") << "ah inconstitucionalissimamente"
                                                   << "ah|inconstitucional|issimamente";
    QTest::newRow("til nao fica no fim da linha") << "abcdefghijklmno~xyz"
                                                  << "abcdefghijklmno|~xyz";
    QTest::newRow("travessao nao fica no fim da linha") << "abcdefghijklmno–xyz"
                                                        << "abcdefghijklmno|–xyz";
    QTest::newRow("letra acentuada fica no fim da linha") << "abcdefghijklmnoçxyz"
                                                          << "abcdefghijklmnoç|xyz";
    QTest::newRow("tabulacao vale um espaco") << "mexa\tbem a massa e"
                                              << "mexa bem a massa|e";
    QTest::newRow("uma letra") << "a"
                               << "a";
    QTest::newRow("linha feita so de tis") << "~~~~~~~~~~~~~~~~~~"
                                           << "~~~~~~~~~~~~~~~|~~~";
}

void TesteImpressaoGrafica::quebraOTextoEmLinhas()
{
    QFETCH(QString, texto);
    QFETCH(QString, linhas);
    QCOMPARE(Quebrar(texto), linhas);
}

void TesteImpressaoGrafica::primeiraLinhaFicaNoTopo()
{
    SuperficieDeTeste superficie;
    superficie.alturaDaLinha = 4;
    QString texto = "mexa bem a massa e leve ao forno";
    QVERIFY(ImpressaoGrafica::ImprimirTexto(superficie, 5, 2, 18, 1000, texto));
    QCOMPARE(superficie.corridas.front().y, 5.0);
    QCOMPARE(superficie.corridas.back().y, 9.0);
    QCOMPARE(superficie.CurrentY, 9.0);
}

void TesteImpressaoGrafica::textoVazioNaoDesenhaNada()
{
    SuperficieDeTeste superficie;
    superficie.CurrentX = 3;
    superficie.CurrentY = 7;
    QString texto;
    QVERIFY(ImpressaoGrafica::ImprimirTexto(superficie, 20, 2, 18, 1000, texto));
    QVERIFY(superficie.corridas.empty());
    QCOMPARE(superficie.CurrentX, 3.0);
    QCOMPARE(superficie.CurrentY, 7.0);
}

void TesteImpressaoGrafica::linhaJustificadaTerminaNoLimite()
{
    // "misture o" leaves 7 of 16, all of it for the one space.
    SuperficieDeTeste superficie;
    QString texto = "misture o fermento";
    ImpressaoGrafica::ImprimirTexto(superficie, 0, 2, 18, 1000, texto);
    QCOMPARE(superficie.corridas.size(), size_t(3));
    QCOMPARE(superficie.corridas[0].x, 2.0);
    QCOMPARE(superficie.corridas[1].texto, QString("o"));
    QCOMPARE(superficie.corridas[1].x, 17.0);
    QCOMPARE(superficie.corridas[2].x, 2.0);
}

void TesteImpressaoGrafica::ultimaLinhaEFimDeParagrafoFicamAEsquerda()
{
    SuperficieDeTeste superficie;
    QString texto = "bata bem\rleve ao forno";
    ImpressaoGrafica::ImprimirTexto(superficie, 0, 0, 16, 1000, texto);
    QCOMPARE(superficie.corridas.size(), size_t(2)); // printed whole, no word moved
    QCOMPARE(superficie.corridas[0].texto, QString("bata bem"));
    QCOMPARE(superficie.corridas[1].texto, QString("leve ao forno"));
    QCOMPARE(superficie.corridas[1].x, 0.0);
}

void TesteImpressaoGrafica::espacosDobradosDividemAFolga()
{
    // "um  dois" holds two spaces and leaves 8: four for each, so "dois" starts at 2 + 2 + 8.
    SuperficieDeTeste superficie;
    QString texto = "um  dois quatrocentos";
    ImpressaoGrafica::ImprimirTexto(superficie, 0, 0, 16, 1000, texto);
    QCOMPARE(superficie.corridas[1].texto, QString("dois"));
    QCOMPARE(superficie.corridas[1].x, 12.0);
}

void TesteImpressaoGrafica::nenhumaLinhaPassaDoLimite_data()
{
    QTest::addColumn<QString>("texto");
    QTest::newRow("receita") << kReceita;
    QTest::newRow("sem espacos") << QString(kReceita).remove(u' ');
    QTest::newRow("espacos dobrados") << QString(kReceita).replace(" ", "   ");
    QTest::newRow("emojis") << QString::fromUtf8("🍰🍰🍰🍰🍰 bolo🍰 ").repeated(9);
}

void TesteImpressaoGrafica::nenhumaLinhaPassaDoLimite()
{
    QFETCH(QString, texto);
    for (double largura = 3; largura < 120; largura += 1) {
        SuperficieDeTeste superficie(largura);
        QString resto = texto;
        QVERIFY(ImpressaoGrafica::ImprimirTexto(superficie, 0, 0, largura, 1e9, resto));
        double y = -1;
        double fim = 0;
        bool justificada = false;
        for (const SuperficieDeTeste::Corrida &corrida : superficie.corridas) {
            QVERIFY2(corrida.x + corrida.largura <= largura + 1e-6, qPrintable(corrida.texto));
            QVERIFY(!corrida.texto.front().isLowSurrogate());
            QVERIFY(!corrida.texto.back().isHighSurrogate());
            if (corrida.y > y) { // the line before is complete: several words mean it was justified
                if (justificada)
                    QVERIFY2(qAbs(fim - largura) < 1e-6, qPrintable(QString::number(fim)));
                justificada = false;
            } else {
                justificada = true;
            }
            y = corrida.y;
            fim = corrida.x + corrida.largura;
        }
    }
}

void TesteImpressaoGrafica::paraNoFimDaPaginaEDevolveOResto()
{
    SuperficieDeTeste superficie;
    QString texto = "mexa bem a massa e leve ao forno por uma hora";
    QVERIFY(!ImpressaoGrafica::ImprimirTexto(superficie, 0, 0, 16, 2, texto));
    QCOMPARE(superficie.Linhas(), (QStringList{"mexa bem a massa", "e leve ao forno"}));
    QCOMPARE(texto, QString("por uma hora"));
    QCOMPARE(superficie.CurrentY, 1.0);
}

void TesteImpressaoGrafica::oRestoPerdeOsControlesDoComeco()
{
    SuperficieDeTeste superficie;
    QString texto = "bata\r\n\r\n\tasse";
    QVERIFY(!ImpressaoGrafica::ImprimirTexto(superficie, 0, 0, 16, 1, texto));
    QCOMPARE(texto, QString("asse"));
}

void TesteImpressaoGrafica::medeAPalavraTextoatualParaSaberSeCabeOutra()
{
    // A surface on which only that word is tall.
    class Alta : public SuperficieDeTeste
    {
    public:
        double TextHeight(const QString &texto) const override { return texto == "textoatual" ? 10 : 1; }
    };
    Alta superficie;
    QString texto = "um\rdois\rtres\rquatro";
    QVERIFY(!ImpressaoGrafica::ImprimirTexto(superficie, 0, 0, 16, 12, texto)); // 2 + 10 is not below 12
    QCOMPARE(superficie.Linhas(), (QStringList{"um", "dois", "tres"}));
    QCOMPARE(texto, QString("quatro"));
}

void TesteImpressaoGrafica::aUltimaLinhaQueCabeTerminaOTexto()
{
    SuperficieDeTeste superficie;
    QString texto = "bata\r\n";
    QVERIFY(ImpressaoGrafica::ImprimirTexto(superficie, 0, 0, 16, 1, texto)); // only the LF was left
    QVERIFY(texto.isEmpty());
}

void TesteImpressaoGrafica::primeiraLinhaSaiMesmoAbaixoDoLimite()
{
    SuperficieDeTeste superficie;
    QString texto = "um\rdois";
    QVERIFY(!ImpressaoGrafica::ImprimirTexto(superficie, 50, 0, 16, 10, texto));
    QCOMPARE(superficie.Linhas(), QStringList{"um"});
    QCOMPARE(texto, QString("dois"));
}

void TesteImpressaoGrafica::terminaComAPosicaoAtrasDoUltimoCaractere()
{
    SuperficieDeTeste superficie;
    QString texto = "Tipo : ";
    ImpressaoGrafica::ImprimirTexto(superficie, 3, 5, 16, 1000, texto);
    QCOMPARE(superficie.CurrentX, 11.0); // the trailing space is not part of the line
    QCOMPARE(superficie.CurrentY, 3.0);
    QVERIFY(texto.isEmpty());
}

void TesteImpressaoGrafica::paginasJuntasDaoOTextoInteiro()
{
    const QString texto = (kReceita + "\r\n").repeated(20);
    SuperficieDeTeste inteira(40);
    QString resto = texto;
    QVERIFY(ImpressaoGrafica::ImprimirTexto(inteira, 0, 0, 40, 1e9, resto));

    SuperficieDeTeste paginada(40);
    resto = texto;
    int paginas = 1;
    while (!ImpressaoGrafica::ImprimirTexto(paginada, 0, 0, 40, 7, resto)) {
        paginada.NewPage();
        ++paginas;
    }
    QVERIFY(paginas > 10);
    QCOMPARE(paginada.Linhas(), inteira.Linhas());
}

void TesteImpressaoGrafica::medidasFeitasCrescemComOTextoENaoComOQuadrado()
{
    class Contadora : public SuperficieDeTeste
    {
    public:
        double TextWidth(const QString &texto) const override
        {
            medidas += texto.size();
            return SuperficieDeTeste::TextWidth(texto);
        }
        mutable qint64 medidas = 0;
    };
    const auto medidas = [](QString texto) {
        Contadora superficie;
        ImpressaoGrafica::ImprimirTexto(superficie, 0, 0, 80, 1e9, texto);
        return superficie.medidas;
    };
    for (const QString &trecho : {kReceita + u' ', QString(kReceita).remove(u' ')}) {
        const qint64 uma = medidas(trecho.repeated(10));
        const qint64 dez = medidas(trecho.repeated(100));
        QVERIFY2(dez < uma * 11, qPrintable(QString("%1 %2").arg(uma).arg(dez)));
    }
}

void TesteImpressaoGrafica::cartaoEPaginaQuebramIgual()
{
    constexpr double largura = 113.7;
    const auto linhas = [](Superficie &superficie, auto &&ler) {
        QString texto = kReceita.repeated(3);
        superficie.FontSize = 9;
        ImpressaoGrafica::ImprimirTexto(superficie, 0, 3, largura, 1e9, texto);
        return ler();
    };

    ListaDesenho lista;
    SuperficieLista cartao(lista, largura + 3, 1000);
    const QString noCartao = linhas(cartao, [&] { return lista.Texto(); });

    // The same text on devices of several resolutions, remembered on its way to the painter.
    class Espia : public SuperficiePainter
    {
    public:
        using SuperficiePainter::SuperficiePainter;
        void Print(const QString &texto) override
        {
            if (!lido.isEmpty())
                lido += qAbs(CurrentY - y) < 0.01 ? u' ' : u'\n';
            lido += texto;
            y = CurrentY;
            SuperficiePainter::Print(texto);
        }
        QString lido;
        double y = 0;
    };
    for (int pontosPorPolegada : {75, 96, 300, 1200}) {
        QImage imagem(200, 200, QImage::Format_RGB32);
        QPainter painter(&imagem);
        Espia pagina(painter, QSizeF(imagem.size()), pontosPorPolegada / 25.4);
        QCOMPARE(linhas(pagina, [&] { return pagina.lido; }), noCartao);
    }
    QVERIFY(noCartao.count(u'\n') > 3);
}

void TesteImpressaoGrafica::listaPintaSoOQueSeVe()
{
    ListaDesenho lista;
    SuperficieLista superficie(lista, 100, 1000);
    superficie.Line(10, 10, 20, 12);
    superficie.ForeColor = Qt::blue;
    superficie.Line(10, 500, 20, 502);
    QCOMPARE(superficie.CurrentX, 20.0);
    QCOMPARE(superficie.CurrentY, 502.0);
    QCOMPARE(lista.Limites(), QRectF(10, 10, 10, 492));

    QImage imagem(100, 100, QImage::Format_RGB32);
    imagem.fill(Qt::white);
    QPainter painter(&imagem);
    painter.translate(0, -450);
    lista.Pintar(painter, QRectF(0, 450, 100, 100), 1);
    QCOMPARE(imagem.pixelColor(15, 51), QColor(Qt::blue));
    QCOMPARE(imagem.pixelColor(15, 11), QColor(Qt::white));

    imagem.fill(Qt::white);
    painter.resetTransform();
    lista.Pintar(painter, QRectF(0, 600, 100, 100), 1); // nothing lies there
    QImage branca(imagem.size(), imagem.format());
    branca.fill(Qt::white);
    QCOMPARE(imagem, branca);
}

void TesteImpressaoGrafica::listaEPintorDesenhamNoMesmoLugar()
{
    for (double pixelsPorMm : {96 / 25.4, 2 * 96 / 25.4, 300 / 25.4}) {
        const QSize tamanho = QSizeF(60 * pixelsPorMm, 40 * pixelsPorMm).toSize();
        const auto desenhar = [](Superficie &superficie) {
            QString texto = kReceita;
            superficie.FontSize = 8;
            ImpressaoGrafica::ImprimirTexto(superficie, 2, 3, 57, 1000, texto);
            QImage figura(4, 4, QImage::Format_RGB32);
            figura.fill(Qt::red);
            superficie.PaintPicture(figura, 20, 25, 20, 10);
        };
        QImage direta(tamanho, QImage::Format_RGB32);
        direta.fill(Qt::white);
        {
            QPainter painter(&direta);
            SuperficiePainter superficie(painter, tamanho, pixelsPorMm);
            desenhar(superficie);
        }
        ListaDesenho lista;
        SuperficieLista gravadora(lista, 60, 40);
        desenhar(gravadora);
        QImage repetida(tamanho, QImage::Format_RGB32);
        repetida.fill(Qt::white);
        {
            QPainter painter(&repetida);
            lista.Pintar(painter, QRectF(0, 0, 60, 40), pixelsPorMm);
        }
        QCOMPARE(repetida, direta);
        const QPointF meio = QPointF(30, 30) * pixelsPorMm;
        QCOMPARE(direta.pixelColor(meio.toPoint()), QColor(Qt::red));
    }
}

void TesteImpressaoGrafica::fotoGrandeEReduzidaAoQueSeVe_data()
{
    QTest::addColumn<QSize>("foto");
    QTest::addColumn<double>("unidadesPorMm");
    QTest::addColumn<double>("densidade");
    QTest::addColumn<QSize>("reduzida");
    QTest::newRow("tela") << QSize(4000, 3000) << 4.0 << 1.0 << QSize(220, 180);
    QTest::newRow("tela de densidade dupla") << QSize(4000, 3000) << 4.0 << 2.0 << QSize(440, 360);
    QTest::newRow("papel: 300 pontos por polegada bastam")
        << QSize(4000, 3000) << 1200 / 25.4 << 1.0 << QSize(650, 531);
    QTest::newRow("foto pequena fica como e") << QSize(100, 80) << 1200 / 25.4 << 1.0 << QSize(100, 80);
}

void TesteImpressaoGrafica::fotoGrandeEReduzidaAoQueSeVe()
{
    QFETCH(QSize, foto);
    QFETCH(double, unidadesPorMm);
    QFETCH(double, densidade);
    QFETCH(QSize, reduzida);
    QImage tela(50, 50, QImage::Format_RGB32);
    tela.setDevicePixelRatio(densidade);
    QPainter painter(&tela);
    QImage figura(foto, QImage::Format_RGB32);
    figura.fill(Qt::red);
    const QRectF lugar(0, 0, 55 * unidadesPorMm, 45 * unidadesPorMm);
    QCOMPARE(ReduzirFigura(painter, figura, lugar, unidadesPorMm).size(), reduzida);
}

QTEST_MAIN(TesteImpressaoGrafica)
#include "teste_impressao_grafica.moc"
