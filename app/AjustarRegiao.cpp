#include "app/AjustarRegiao.h"

#include <QGuiApplication>
#include <QWidget>

QRegion RegiaoDosPaineis(const QWidget &janela)
{
    QRegion regiao;
    const auto filhos = janela.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget *controle : filhos)
        if (!controle->isWindow()) // dialogs belong to the window without lying on it
            regiao += controle->geometry();
    return regiao;
}

void AjustarRegiao(QWidget &janela)
{
    if (janela.isMinimized() || QGuiApplication::platformName().startsWith("wayland"))
        return;
    const QRegion regiao = RegiaoDosPaineis(janela);
    if (regiao != janela.mask())
        janela.setMask(regiao);
}
