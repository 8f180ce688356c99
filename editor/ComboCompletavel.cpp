#include "editor/ComboCompletavel.h"

#include "base/Texto.h"
#include "editor/CampoDeCombo.h"
#include "editor/Colagem.h"

#include <QListView>
#include <QWheelEvent>

#include <utility>

ComboCompletavel::ComboCompletavel(const QString &nome, int limite, bool &blnApagandoCombo, QWidget *parent)
    : ComboTexto(nome, new CampoDeCombo(nome + "_texto", limite, blnApagandoCombo), parent)
    , m_blnApagandoCombo(blnApagandoCombo)
{
    // Rows of equal height let a list of many thousand names drop down at once.
    if (auto *lista = qobject_cast<QListView *>(view()))
        lista->setUniformItemSizes(true);
    setFocusPolicy(Qt::StrongFocus);

    ManterEmUmaLinha(*Campo());
    connect(Campo(), &QLineEdit::textEdited, this, [this] { m_doUsuario = true; });
    connect(Campo(), &QLineEdit::textChanged, this, &ComboCompletavel::AoMudar);
    connect(Campo(), &CampoDeCombo::composicaoTerminada, this, [this] { Tratar(true); });
    connect(Campo(), &CampoDeCombo::teclaRecusada, this, &ComboCompletavel::teclaRecusada);
}

CampoDeCombo *ComboCompletavel::Campo() const
{
    return static_cast<CampoDeCombo *>(lineEdit());
}

int ComboCompletavel::Limite() const
{
    return Campo()->Limite();
}

void ComboCompletavel::AoMudar()
{
    const bool doUsuario = std::exchange(m_doUsuario, false);
    if (!Campo()->Suspenso())
        Tratar(doUsuario);
}

void ComboCompletavel::Tratar(bool doUsuario)
{
    AutoCompletarCombo(doUsuario);
    if (currentText().isEmpty())
        m_blnApagandoCombo = false;
}

void ComboCompletavel::AutoCompletarCombo(bool doUsuario)
{
    if (m_blnApagandoCombo) {
        m_blnApagandoCombo = false;
        return;
    }
    if (!doUsuario)
        return;
    const QString digitado = currentText();
    const int achado = Procurar(digitado);
    if (achado < 0)
        return;
    const QString item = itemText(achado);
    const int n = static_cast<int>(item.size() - digitado.size());
    if (n == 0)
        return;
    // The change that follows comes back here and must not complete again.
    m_blnApagandoCombo = true;
    Campo()->insert(item.right(n));
    Campo()->setSelection(static_cast<int>(digitado.size()), n);
}

void ComboCompletavel::CortarNoLimite()
{
    const QString texto = currentText();
    if (texto.size() <= Limite())
        return;
    // Half of a character beyond the basic plane would be no text at all.
    const int fim = texto.at(Limite() - 1).isHighSurrogate() ? Limite() - 1 : Limite();
    DefinirTexto(texto.left(fim));
}

void ComboCompletavel::LembrarValor(const QString &valor)
{
    const QString aparado = Aparar(valor);
    if (!aparado.isEmpty() && !ItemSelecionado() && !LocalizarValorCombo(*this, aparado))
        AdicionarItem(aparado);
}

void ComboCompletavel::focusOutEvent(QFocusEvent *event)
{
    ComboTexto::focusOutEvent(event);
    // The drop-down list, a context menu and another program only borrow the focus.
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        CortarNoLimite();
}

// A wheel turned to scroll the panel must not change the recipe on its way.
void ComboCompletavel::wheelEvent(QWheelEvent *event)
{
    if (hasFocus())
        ComboTexto::wheelEvent(event);
    else
        event->ignore();
}
