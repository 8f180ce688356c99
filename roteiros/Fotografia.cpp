#include "Fotografia.h"

#include <QApplication>
#include <QPainter>
#include <QScreen>
#include <QWidget>

namespace
{
// A dialog's frame belongs to the window manager: only the screen has it.
QPixmap ComMoldura(QWidget &dialogo)
{
    const QRect moldura = dialogo.frameGeometry();
    if (moldura == dialogo.geometry())
        return Retrato(dialogo);
    return dialogo.screen()->grabWindow(0, moldura.x(), moldura.y(), moldura.width(), moldura.height());
}
} // namespace

QPixmap Retrato(QWidget &widget)
{
    QPixmap inteiro = widget.grab();
    const QRegion forma = widget.mask();
    if (forma.isEmpty())
        return inteiro;
    QPixmap cortado(inteiro.size());
    cortado.setDevicePixelRatio(inteiro.devicePixelRatio());
    cortado.fill(Qt::transparent);
    QPainter painter(&cortado);
    painter.setClipRegion(forma);
    painter.drawPixmap(0, 0, inteiro);
    return cortado;
}

QPixmap RetratoComDialogos(QWidget &janela)
{
    QList<QWidget *> sobre;
    QRect area = janela.frameGeometry();
    const auto todas = QApplication::topLevelWidgets();
    for (QWidget *outra : todas) {
        if (outra == &janela || !outra->isVisible())
            continue;
        // A menu opens over a dialog, never under it.
        if (outra->windowType() == Qt::Popup)
            sobre.append(outra);
        else
            sobre.prepend(outra);
        area |= outra->frameGeometry();
    }
    const qreal escala = janela.devicePixelRatioF();
    QPixmap tela((QSizeF(area.size()) * escala).toSize());
    tela.setDevicePixelRatio(escala);
    tela.fill(Qt::transparent);
    QPainter painter(&tela);
    painter.drawPixmap(janela.frameGeometry().topLeft() - area.topLeft(), ComMoldura(janela));
    for (QWidget *outra : std::as_const(sobre))
        painter.drawPixmap(outra->frameGeometry().topLeft() - area.topLeft(), ComMoldura(*outra));
    return tela;
}
