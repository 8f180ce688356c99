// desenhar_exemplos DRAWINGS PICTURES
// Makes the pictures that DRAWINGS/lista.txt names (a drawing, a picture and its width to a line) of the SVG
// files beside the list. The ending of the picture's name says its format.

#include "exemplos/desenhos/GravadorGif.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

namespace
{
QImage Desenhar(const QString &svg, int largura)
{
    QSvgRenderer desenho(svg);
    if (!desenho.isValid())
        return QImage();
    const QSize tamanho = desenho.defaultSize().scaled(largura, largura, Qt::KeepAspectRatio);
    // Drawn four times as large first: thin strokes survive in the small pictures.
    QImage imagem(tamanho * 4, QImage::Format_RGB32);
    imagem.fill(Qt::white);
    QPainter pintor(&imagem);
    pintor.setRenderHint(QPainter::Antialiasing);
    desenho.render(&pintor);
    pintor.end();
    return imagem.scaled(tamanho, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

bool Gravar(const QImage &imagem, const QString &nome)
{
    if (imagem.isNull())
        return false;
    if (!nome.endsWith(".gif"))
        return imagem.save(nome, nullptr, nome.endsWith(".jpg") ? 88 : -1);
    const QByteArray bytes = GravarGif(imagem);
    QFile arquivo(nome);
    return arquivo.open(QIODevice::WriteOnly) && arquivo.write(bytes) == bytes.size() && arquivo.flush();
}
} // namespace

int main(int argc, char **argv)
{
    // No window is shown, so none need be possible.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication programa(argc, argv);
    if (argc != 3) {
        std::fputs("usage: desenhar_exemplos DRAWINGS PICTURES\n", stderr);
        return 2;
    }
    const QDir desenhos(QString::fromLocal8Bit(argv[1]));
    const QDir figuras(QString::fromLocal8Bit(argv[2]));
    QFile lista(desenhos.filePath("lista.txt"));
    if (!lista.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(lista.fileName()), qPrintable(lista.errorString()));
        return 1;
    }
    while (!lista.atEnd()) {
        const QStringList partes = QString::fromUtf8(lista.readLine()).simplified().split(' ');
        if (partes[0].isEmpty() || partes[0].startsWith('#'))
            continue;
        if (partes.size() != 3 || !Gravar(Desenhar(desenhos.filePath(partes[0] + ".svg"), partes[2].toInt()),
                                          figuras.filePath(partes[1]))) {
            std::fprintf(stderr, "cannot make a picture of: %s\n", qPrintable(partes.join(' ')));
            return 1;
        }
    }
    return 0;
}
