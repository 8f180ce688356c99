#pragma once

#include "app/Gradiente.h"

#include <QHash>
#include <QList>

class BotaoImagem;
class QLabel;

/// The toolbar: eleven image buttons, and the hidden frame that keeps their two looks each.
class Barra : public Faixa
{
    Q_OBJECT
public:
    /// @param altura twips
    Barra(int altura, QWidget *janela);

    BotaoImagem *Botao(const QString &nome) const { return m_botoes.value(nome); }
    /// Draws the lit looks, which nobody sees before the mouse comes; later calls do nothing.
    void DesenharAcesos();
    /// Normal looks, but for `aceso`, which is lit; nullptr lights none.
    void Atualizar(const BotaoImagem *aceso);

private:
    void PorFigura(QLabel *imagem) const;

    QList<QLabel *> m_acesosPorDesenhar;
    QHash<QString, BotaoImagem *> m_botoes;
};
