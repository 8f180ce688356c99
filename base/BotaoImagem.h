#pragma once

#include <QAbstractButton>
#include <QIcon>

/**
 * An image that is a button: two looks, normal and lit. Which one shows is decided from outside
 * (frmPrincipal::AtualizarBotoes); the keyboard reaches it like any button and the focus is drawn.
 */
class BotaoImagem : public QAbstractButton
{
    Q_OBJECT
    Q_PROPERTY(bool aceso READ Aceso)

public:
    /// Loads ":/botoes/<nome>Norm.svg" and ":/botoes/<nome>Over.svg".
    explicit BotaoImagem(const QString &nome, const QString &dica, QWidget *parent = nullptr);

    bool Aceso() const { return m_aceso; }
    void Acender(bool aceso);
    QSize sizeHint() const override { return {40, 40}; }

signals:
    /// The mouse moves over the button, or the keyboard's focus comes to it.
    void apontado();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QIcon m_normal;
    QIcon m_sobre;
    bool m_aceso = false;
};
