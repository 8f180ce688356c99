#include "browse/CanvasAcessivel.h"

#include "base/Twips.h"
#include "browse/CanvasCartao.h"

#include <algorithm>

void CanvasAcessivel::Instalar()
{
    static const bool instalada = [] {
        QAccessible::installFactory([](const QString &classe, QObject *objeto) -> QAccessibleInterface * {
            return classe == u"CanvasCartao" ? new CanvasAcessivel(static_cast<CanvasCartao *>(objeto)) : nullptr;
        });
        return true;
    }();
    Q_UNUSED(instalada);
}

CanvasAcessivel::CanvasAcessivel(CanvasCartao *canvas)
    : QAccessibleWidget(canvas, QAccessible::EditableText)
{
}

const CanvasCartao *CanvasAcessivel::Canvas() const
{
    return static_cast<const CanvasCartao *>(widget());
}

QAccessible::State CanvasAcessivel::state() const
{
    QAccessible::State estado = QAccessibleWidget::state();
    estado.readOnly = estado.multiLine = true;
    return estado;
}

QString CanvasAcessivel::text(QAccessible::Text qual) const
{
    return qual == QAccessible::Value ? Canvas()->Texto() : QAccessibleWidget::text(qual);
}

void *CanvasAcessivel::interface_cast(QAccessible::InterfaceType tipo)
{
    if (tipo == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface *>(this);
    return QAccessibleWidget::interface_cast(tipo);
}

void CanvasAcessivel::selection(int, int *inicio, int *fim) const
{
    *inicio = *fim = 0;
}

void CanvasAcessivel::setCursorPosition(int posicao)
{
    m_cursor = std::clamp(posicao, 0, characterCount());
    QAccessibleTextCursorEvent event(widget(), m_cursor);
    QAccessible::updateAccessibility(&event);
    scrollToSubstring(m_cursor, m_cursor);
}

QString CanvasAcessivel::text(int inicio, int fim) const
{
    const QString texto = Canvas()->Texto();
    const int ate = fim < 0 ? static_cast<int>(texto.size()) : fim;
    return texto.mid(inicio, std::max(ate - inicio, 0));
}

int CanvasAcessivel::characterCount() const
{
    return static_cast<int>(Canvas()->Texto().size());
}

/// The line that holds the place, and where it begins.
int CanvasAcessivel::LinhaDe(int posicao, int *inicio) const
{
    const auto &linhas = Canvas()->Linhas();
    int comeco = 0;
    for (int i = 0; i < static_cast<int>(linhas.size()); ++i) {
        const int tamanho = static_cast<int>(linhas[i].texto.size()) + 1; // and its end
        if (posicao < comeco + tamanho || i + 1 == static_cast<int>(linhas.size())) {
            if (inicio)
                *inicio = comeco;
            return i;
        }
        comeco += tamanho;
    }
    return -1;
}

QRect CanvasAcessivel::characterRect(int posicao) const
{
    int inicio = 0;
    const int linha = LinhaDe(posicao, &inicio);
    if (linha < 0)
        return {};
    const auto &l = Canvas()->Linhas()[linha];
    // Evenly parted: nearly where it stands, and on its line for sure.
    const double passo = l.lugar.width() / std::max<double>(static_cast<double>(l.texto.size()), 1);
    const QRectF lugar(l.lugar.x() + passo * (posicao - inicio), l.lugar.y(), passo, l.lugar.height());
    const QRect pixels =
        QRectF(lugar.topLeft() * kPixelsPorMilimetro, lugar.size() * kPixelsPorMilimetro).toAlignedRect();
    return QRect(Canvas()->mapToGlobal(pixels.topLeft()), pixels.size());
}

int CanvasAcessivel::offsetAtPoint(const QPoint &ponto) const
{
    const QPointF mm = QPointF(Canvas()->mapFromGlobal(ponto)) / kPixelsPorMilimetro;
    int comeco = 0;
    for (const auto &linha : Canvas()->Linhas()) {
        if (linha.lugar.contains(mm)) {
            const double parte = (mm.x() - linha.lugar.x()) / std::max(linha.lugar.width(), 0.1);
            return comeco + static_cast<int>(parte * static_cast<double>(linha.texto.size()));
        }
        comeco += static_cast<int>(linha.texto.size()) + 1;
    }
    return -1;
}

void CanvasAcessivel::scrollToSubstring(int inicio, int)
{
    const int linha = LinhaDe(inicio);
    if (linha >= 0)
        emit const_cast<CanvasCartao *>(Canvas())->lugarPedido(
            static_cast<int>(Canvas()->Linhas()[linha].lugar.y() * kPixelsPorMilimetro));
}

QString CanvasAcessivel::attributes(int, int *inicio, int *fim) const
{
    *inicio = 0;
    *fim = characterCount();
    return {};
}
