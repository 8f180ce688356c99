#include "editor/tests/Bancada.h"

#include "base/Fontes.h"
#if __has_include("assets/Recursos.h")
#include "assets/Recursos.h"
#endif

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

Bancada::Bancada()
    : banco(pasta.path())
    , figuras(banco)
{
#if __has_include("assets/Recursos.h")
    IniciarRecursos();
#endif
    InstalarFontes();
    janela.resize(640, 460);
    painel = new PainelEditor(banco, figuras, avisos, seletor, relogio, &janela);
    painel->move(9, 9);
    janela.show();
    janela.activateWindow();
    if (!QTest::qWaitForWindowActive(&janela))
        qFatal("the test window is not active");
}

void Bancada::Digitar(const char *nome, const QString &texto) const
{
    for (const QChar c : texto) {
        const auto tecla = static_cast<Qt::Key>(c.toUpper().unicode());
        QTest::sendKeyEvent(QTest::Click, Controle(nome), tecla, QString(c), Qt::NoModifier);
    }
}

void Bancada::Clicar(const char *nome) const
{
    QWidget *controle = Controle(nome);
    QVERIFY2(controle->isVisible() && controle->isEnabled(), nome);
    QTest::mouseClick(controle, Qt::LeftButton, {}, QPoint(10, controle->height() / 2));
}

void Bancada::ClicarNo(const QTreeWidgetItem *no) const
{
    Arvore()->scrollToItem(no);
    QTest::mouseClick(Arvore()->viewport(), Qt::LeftButton, {}, Arvore()->visualItemRect(no).center());
}

void Bancada::Colar(const char *nome, const QString &texto) const
{
    QGuiApplication::clipboard()->setText(texto);
    QTest::keyClick(Controle(nome), Qt::Key_V, Qt::ControlModifier);
}

void Bancada::EntrarLinha(const QString &qtde, const QString &medida, const QString &ingrediente) const
{
    Digitar("txtQtde", qtde);
    Digitar("cmbMedida", medida);
    Digitar("cmbIngrediente", ingrediente);
    Clicar("cmdSalvarIngredientes");
}

void Bancada::EntrarMinimo(const QString &nome) const
{
    Digitar("txtNome", nome);
    Digitar("txtModo", "Misture e asse.");
    EntrarLinha("2", "xícaras", "fubá");
}

QStringList Bancada::ChavesDaArvore() const
{
    QStringList chaves = {Arvore()->topLevelItem(0)->data(0, Qt::UserRole).toString()};
    for (int i = 0; i < Arvore()->topLevelItem(0)->childCount(); ++i)
        chaves += Linha(i)->data(0, Qt::UserRole).toString();
    return chaves;
}

QStringList Bancada::TextosDaArvore() const
{
    QStringList textos = {Arvore()->topLevelItem(0)->text(0)};
    for (int i = 0; i < Arvore()->topLevelItem(0)->childCount(); ++i)
        textos += Linha(i)->text(0);
    return textos;
}

QStringList Bancada::Linhas(const QString &sql) const
{
    QStringList linhas;
    for (RecordSet rs = banco.AbrirRecordset(sql); !rs.Eof(); rs.MoveNext()) {
        QStringList colunas;
        for (int i = 0; i < rs.FieldCount(); ++i)
            colunas += rs.Nulo(i) ? QString("NULL") : rs.Texto(i);
        linhas += colunas.join('|');
    }
    return linhas;
}

QString Bancada::CriarFigura(const QString &nome, QColor cor, const char *formato) const
{
    QImage imagem(24, 16, QImage::Format_RGB32);
    imagem.fill(cor);
    const QString caminho = pasta.filePath(nome);
    if (!imagem.save(caminho, formato))
        qFatal("cannot write the picture");
    return caminho;
}

QByteArray Bancada::Bytes(const QString &caminho)
{
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
}

QByteArray Bancada::FiguraGravada(int numero) const
{
    return Bytes(banco.Caminho(QString("Fotos\\F%1.img").arg(numero, 7, 10, QChar('0'))));
}

QString Tag(QString partes)
{
    return partes.replace('|', QChar(0xA0));
}
