#pragma once

#include <QImage>
#include <QLabel>

/**
 * The picture of the recipe, `imgFigura`, shown whole, in its proportions and never enlarged, with as many
 * pixels as the screen has. Its tag holds the picture's state (store/ReceitaNaTela.h).
 */
class ImagemFigura : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(QString tag READ Tag WRITE DefinirTag)

public:
    explicit ImagemFigura(QWidget *parent = nullptr);

    QString Tag() const { return m_tag; }
    void DefinirTag(const QString &tag) { m_tag = tag; }
    void Mostrar(const QImage &imagem);
    const QImage &Imagem() const { return m_imagem; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_tag;
    QImage m_imagem;    ///< at most kMaiorLado pixels a side
    QPixmap m_ajustada; ///< m_imagem as last painted
};
