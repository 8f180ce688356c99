#include "base/AvisosQt.h"

#include "base/Operacao.h"
#include "base/Texto.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>

namespace
{
constexpr auto kTitulo = "Cozinhario 2005";

QMessageBox::Icon IconeQt(Avisos::Icone icone)
{
    switch (icone) {
    case Avisos::Icone::Informacao:
        return QMessageBox::Information;
    case Avisos::Icone::Exclamacao:
        return QMessageBox::Warning;
    case Avisos::Icone::Parada:
        return QMessageBox::Critical;
    case Avisos::Icone::Nenhum:
        break;
    }
    return QMessageBox::NoIcon;
}

/// A box that knows whether it was closed without a button: by Escape or by the window's own button.
class Caixa : public QMessageBox
{
public:
    using QMessageBox::QMessageBox;
    bool FechadaSemResposta() const { return m_fechada; }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        m_fechada = event->matches(QKeySequence::Cancel);
        QMessageBox::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent *event) override
    {
        m_fechada = true;
        QMessageBox::closeEvent(event);
    }

private:
    bool m_fechada = false;
};

// Recipe names and engine messages are shown as they are, never taken for markup.
void Preparar(QMessageBox &caixa, const QString &texto)
{
    caixa.setObjectName("caixaMensagem");
    caixa.setWindowTitle(kTitulo);
    caixa.setTextFormat(Qt::PlainText);
    caixa.setText(ComLf(texto));
}
} // namespace

QWidget *AvisosQt::Dono() const
{
    QWidget *ativa = QApplication::activeModalWidget();
    if (!ativa)
        ativa = m_janela;
    return ativa && ativa->isVisible() ? ativa : nullptr;
}

void AvisosQt::Avisar(const QString &texto, Icone icone)
{
    QMessageBox caixa(Dono());
    Preparar(caixa, texto);
    caixa.setIcon(IconeQt(icone));
    caixa.setStandardButtons(QMessageBox::Ok);
    caixa.button(QMessageBox::Ok)->setText("OK");
    const Operacao operacao(Operacao::Tipo::Dialogo);
    caixa.exec();
}

bool AvisosQt::Perguntar(const QString &texto)
{
    return PerguntarComSaida(texto) == Resposta::Sim;
}

Avisos::Resposta AvisosQt::PerguntarComSaida(const QString &texto)
{
    Caixa caixa(Dono());
    Preparar(caixa, texto);
    caixa.setIcon(QMessageBox::Question);
    caixa.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    caixa.button(QMessageBox::Yes)->setText("&Sim");
    caixa.button(QMessageBox::No)->setText("&Não");
    caixa.setDefaultButton(QMessageBox::No);
    caixa.setEscapeButton(QMessageBox::No);
    const Operacao operacao(Operacao::Tipo::Dialogo);
    if (caixa.exec() == QMessageBox::Yes)
        return Resposta::Sim;
    return caixa.FechadaSemResposta() ? Resposta::Nenhuma : Resposta::Nao;
}
