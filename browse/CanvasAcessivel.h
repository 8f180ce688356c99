#pragma once

#include <QAccessibleTextInterface>
#include <QAccessibleWidget>

class CanvasCartao;

/// The card as a text of lines, as they stand on it: to be read line by line, word by word, or from here on.
class CanvasAcessivel : public QAccessibleWidget, public QAccessibleTextInterface
{
public:
    explicit CanvasAcessivel(CanvasCartao *canvas);
    /// Whoever listens to one gets this, from the next one made on. Again and again does no harm.
    static void Instalar();

    QAccessible::State state() const override;
    QString text(QAccessible::Text qual) const override;
    void *interface_cast(QAccessible::InterfaceType tipo) override;

    void selection(int indice, int *inicio, int *fim) const override;
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    int cursorPosition() const override { return m_cursor; }
    void setCursorPosition(int posicao) override;
    QString text(int inicio, int fim) const override;
    int characterCount() const override;
    QRect characterRect(int posicao) const override;
    int offsetAtPoint(const QPoint &ponto) const override;
    void scrollToSubstring(int inicio, int fim) override;
    QString attributes(int posicao, int *inicio, int *fim) const override;

private:
    const CanvasCartao *Canvas() const;
    int LinhaDe(int posicao, int *inicio = nullptr) const;

    int m_cursor = 0;
};
