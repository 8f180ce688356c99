#pragma once

#include "store/ReceitaNaTela.h"

#include <QGroupBox>

class Avisos;
class Banco;
class ImagemFigura;
class SeletorArquivos;
class QLabel;
class QPushButton;

/**
 * The frame `fraFigura`: the recipe's picture, chosen, shown and cleared. Nothing is copied or deleted here:
 * that is the saving's business. `cmdLimparFig` is visible only while a picture is shown.
 */
class QuadroFigura : public QGroupBox
{
    Q_OBJECT
public:
    QuadroFigura(const Banco &banco, Avisos &avisos, SeletorArquivos &seletor, QWidget *parent = nullptr);

    /// Shows the placeholder; the tag becomes "NADA".
    void Limpar();
    /// Shows the recipe's stored picture with the tag "OLD". A file that is missing or no picture gives the
    /// placeholder and false. One that is too large to be shown gives the placeholder and false too, but
    /// keeps its tag: saving the recipe leaves it alone.
    bool MostrarAntiga(const QString &caminho);
    EstadoDaFigura Tag() const;
    /// The stored picture's bytes while the tag is "OLD", empty when they are too many to keep.
    QByteArray BytesAntigos() const;
    /// After a save the picture on screen is the recipe's own.
    void DarPorGravada(qint64 lngReceita);
    /// Whether a picture is shown, the placeholder not counted.
    bool FiguraMostrada() const;

private:
    void Escolher();
    void Mostrar(const QImage &imagem, const EstadoDaFigura &estado);

    const Banco &m_banco;
    Avisos &m_avisos;
    SeletorArquivos &m_seletor;
    ImagemFigura *m_imgFigura;
    QLabel *m_imgNada;
    QPushButton *m_cmdSalvarFig;
    QPushButton *m_cmdLimparFig;
    QByteArray m_bytesAntigos;
    QString m_pastaInicial; ///< where the last picture came from, until the program ends
};
