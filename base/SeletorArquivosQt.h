#pragma once

#include "base/SeletorArquivos.h"

#include <QPointer>
#include <QWidget>

/// The file dialog on the screen.
class SeletorArquivosQt : public SeletorArquivos
{
public:
    QString EscolherParaAbrir(const PedidoArquivo &pedido) override;
    QString EscolherParaSalvar(const PedidoArquivo &pedido) override;

    void DefinirJanela(QWidget *janela) { m_janela = janela; }

    /// "Arquivos de Imagens|*.bmp;*.jpg" as Qt's dialog states it: "Arquivos de Imagens (*.bmp *.jpg)".
    /// @param doisCasos each pattern in small and in capital letters, for dialogs that tell them apart
    static QString FiltroQt(const QString &filtro, bool doisCasos = false);

private:
    QString Escolher(const PedidoArquivo &pedido, bool salvar);
    QPointer<QWidget> m_janela;
};
