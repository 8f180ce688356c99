#pragma once

#include <QAbstractButton>
#include <QPixmap>

class QLabel;

/**
 * An image that is a button. It has two looks, normal and lit, kept by two image controls; which one shows is
 * decided from outside (the main window lights the one under the mouse). The keyboard reaches it like any
 * button and the focus is drawn.
 */
class BotaoImagem : public QAbstractButton
{
    Q_OBJECT
    Q_PROPERTY(QPixmap pixmap READ Figura)
    Q_PROPERTY(bool aceso READ Aceso)

public:
    BotaoImagem(const QString &nome, const QString &dica, const QLabel *normal, const QLabel *sobre,
                QWidget *parent = nullptr);

    bool Aceso() const { return m_aceso; }
    void Acender(bool aceso);
    /// The look that shows now.
    QPixmap Figura() const;
    QSize sizeHint() const override;

signals:
    /// The mouse moves over the button, or the keyboard's focus comes to it.
    void apontado();
    /// The mouse left the button, or the focus a button that the mouse is not on.
    void deixado();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    const QLabel *m_normal;
    const QLabel *m_sobre;
    bool m_aceso = false;
};
