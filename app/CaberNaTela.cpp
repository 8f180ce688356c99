#include "app/CaberNaTela.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

#include <dlfcn.h>

double FatorQueCabe(const QSize &janela, const QSize &lugar)
{
    if (janela.isEmpty() || lugar.isEmpty())
        return 1;
    return std::min({1.0, static_cast<double>(lugar.width()) / janela.width(),
                     static_cast<double>(lugar.height()) / janela.height()});
}

void CaberNaTela(const QSize &janela)
{
    const QScreen *tela = QGuiApplication::primaryScreen();
    if (!tela)
        return;
    const double fator = FatorQueCabe(janela, tela->availableSize());
    if (fator == 1)
        return;
    // Qt reads the desktop's scale when it starts, before it knows the screen, and has no public call to
    // change it afterwards; inside it has one. Where some version of Qt lacks it the window stays as large as
    // it was asked to be.
    using DefinirFator = void (*)(double);
    const auto definirFator =
        reinterpret_cast<DefinirFator>(dlsym(RTLD_DEFAULT, "_ZN15QHighDpiScaling15setGlobalFactorEd"));
    if (!definirFator)
        return;
    const double pedido = qEnvironmentVariable("QT_SCALE_FACTOR").toDouble();
    definirFator((pedido > 0 ? pedido : 1) * fator);
}
