// desenhar_icones DRAWING.svg FOLDER SIZE...: the drawing as FOLDER/SIZExSIZE/apps/cozinhario.png, once for each size.
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char *argv[])
{
    if (argc < 4) {
        std::fputs("usage: desenhar_icones DRAWING.svg FOLDER SIZE...\n", stderr);
        return 2;
    }
    QSvgRenderer desenho(QString::fromLocal8Bit(argv[1]));
    if (!desenho.isValid()) {
        std::fprintf(stderr, "desenhar_icones: %s is no drawing\n", argv[1]);
        return 1;
    }
    const QDir pasta(QString::fromLocal8Bit(argv[2]));
    for (int i = 3; i < argc; ++i) {
        const QString lado = QString::fromLocal8Bit(argv[i]);
        const QString lugar = QString("%1x%1/apps").arg(lado);
        // Drawn larger and brought down: thin lines of a small icon keep their weight.
        QImage grande(lado.toInt() * 4, lado.toInt() * 4, QImage::Format_ARGB32_Premultiplied);
        grande.fill(Qt::transparent);
        QPainter pintor(&grande);
        pintor.setRenderHint(QPainter::Antialiasing);
        desenho.render(&pintor);
        pintor.end();
        const QImage icone = grande.scaled(lado.toInt(), lado.toInt(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
        if (!pasta.mkpath(lugar) || !icone.save(pasta.filePath(lugar + "/cozinhario.png"))) {
            std::fprintf(stderr, "desenhar_icones: cannot write size %s\n", argv[i]);
            return 1;
        }
    }
    return 0;
}
