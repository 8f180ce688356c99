#pragma once

#include "app/Gradiente.h"

#include <QHash>

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
    /// Normal looks, but for `aceso`, which is lit; nullptr lights none.
    void Atualizar(const BotaoImagem *aceso);

private:
    QHash<QString, BotaoImagem *> m_botoes;
};
