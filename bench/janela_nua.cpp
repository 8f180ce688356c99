// A bare Qt window of the size of the program's: the least that a start to the first paint can cost.
#include <QApplication>
#include <QWidget>

int main(int argc, char **argv)
{
    QApplication aplicacao(argc, argv);
    QWidget janela;
    janela.setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    janela.setFixedSize(640, 598);
    janela.show();
    return QApplication::exec();
}
