// desenhar_botoes OUTPUT SCALE FILE.svg WIDTH HEIGHT [FILE.svg WIDTH HEIGHT ...]: draws while the program is
// built, so that its start need not; the pixels are kept as they lie in memory.
#include "app/Desenho.h"

#include <QDataStream>
#include <QFile>
#include <QGuiApplication>
#include <QHash>

int main(int argc, char **argv)
{
    const QGuiApplication aplicacao(argc, argv);
    const QStringList pedidos = QCoreApplication::arguments();
    if (pedidos.size() < 6 || pedidos.size() % 3 != 0)
        qFatal("usage: desenhar_botoes OUTPUT SCALE FILE.svg WIDTH HEIGHT ...");
    QHash<QString, QByteArray> prontos;
    for (qsizetype i = 3; i < pedidos.size(); i += 3) {
        const QSize lugar(pedidos[i + 1].toInt(), pedidos[i + 2].toInt());
        const QImage figura = Desenhar(pedidos[i], lugar, pedidos[2].toInt());
        prontos.insert(ChaveDoDesenho(pedidos[i], figura.size()),
                       QByteArray(reinterpret_cast<const char *>(figura.constBits()), figura.sizeInBytes()));
    }
    QFile saida(pedidos[1]);
    if (!saida.open(QIODevice::WriteOnly))
        qFatal("%s", qPrintable(saida.errorString()));
    QDataStream fluxo(&saida);
    fluxo << prontos;
    return fluxo.status() == QDataStream::Ok && saida.flush() ? 0 : 1;
}
