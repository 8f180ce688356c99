#include "base/CampoTexto.h"

#include "base/FiltrarTecla.h"
#include "base/ModeloDeItens.h"
#include "base/Texto.h"

#include <QAbstractItemView>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>

#include <algorithm>

namespace
{
bool Enter(const QKeyEvent &tecla)
{
    return tecla.key() == Qt::Key_Return || tecla.key() == Qt::Key_Enter;
}

// Whether the key types a character that the filter drops. Editing commands (Ctrl and a letter) pass.
bool Filtrada(const QKeyEvent &tecla, bool numeric)
{
    if (Enter(tecla))
        return true;
    quint16 codigo = CodigoDaTecla(tecla);
    if (codigo < 32)
        return false;
    return FiltrarTecla(codigo, numeric) == 0;
}

// A dead key or an input method commits whole texts: what the filter would drop is taken out of them.
void FiltrarComposicao(QInputMethodEvent &event, bool numeric)
{
    const QString filtrado = FiltrarTexto(event.commitString(), numeric);
    if (filtrado != event.commitString())
        event.setCommitString(filtrado, event.replacementStart(), event.replacementLength());
}
} // namespace

quint16 CodigoDaTecla(const QKeyEvent &tecla)
{
    switch (tecla.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Delete:
        return 0;
    default:
        return tecla.text().isEmpty() ? 0 : tecla.text().at(0).unicode();
    }
}

CampoTexto::CampoTexto(const QString &nome, QWidget *parent, bool numeric)
    : QLineEdit(parent)
    , m_numeric(numeric)
{
    setObjectName(nome);
    // Pasted text is not filtered, but a NUL in it would end the text somewhere on its way.
    connect(this, &QLineEdit::textEdited, this, [this](const QString &texto) {
        if (!texto.contains(QChar::Null))
            return;
        const qsizetype cursor = cursorPosition() - texto.left(cursorPosition()).count(QChar::Null);
        setText(QString(texto).remove(QChar::Null));
        setCursorPosition(static_cast<int>(cursor));
    });
}

bool CampoTexto::Aceitar(QKeyEvent *)
{
    return true;
}

void CampoTexto::keyPressEvent(QKeyEvent *event)
{
    if (!Aceitar(event) || Filtrada(*event, m_numeric)) {
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void CampoTexto::inputMethodEvent(QInputMethodEvent *event)
{
    FiltrarComposicao(*event, m_numeric);
    QLineEdit::inputMethodEvent(event);
}

namespace
{
constexpr qsizetype kMaiorPalavra = 2000;

qsizetype MaiorPalavra(const QString &texto)
{
    qsizetype maior = 0;
    qsizetype atual = 0;
    for (const QChar c : texto) {
        atual = c.isSpace() ? 0 : atual + 1;
        maior = std::max(maior, atual);
    }
    return maior;
}
} // namespace

CampoMemo::CampoMemo(const QString &nome, QWidget *parent)
    : QPlainTextEdit(parent)
{
    setObjectName(nome);
    setTabChangesFocus(true);
    setLineWrapMode(QPlainTextEdit::WidgetWidth);
}

QString CampoMemo::Texto() const
{
    // toPlainText() would turn no-break spaces into plain ones.
    QString texto = document()->toRawText();
    texto.replace(QChar::ParagraphSeparator, "\r\n");
    texto.replace(QChar::LineSeparator, "\r\n");
    return texto;
}

void CampoMemo::DefinirTexto(const QString &texto)
{
    AjustarQuebra(texto);
    setPlainText(ComLf(texto));
}

/// Words of such a length are none: Qt looks for the end of one at every line that it breaks it into, and a
/// megabyte without a blank would take minutes.
void CampoMemo::AjustarQuebra(const QString &texto)
{
    const bool palavras = MaiorPalavra(texto) <= kMaiorPalavra;
    setWordWrapMode(palavras ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::WrapAnywhere);
}

void CampoMemo::insertFromMimeData(const QMimeData *source)
{
    // With what stands before and behind it a pasted word may be twice as long, and is still no trouble.
    if (MaiorPalavra(source->text()) > kMaiorPalavra)
        AjustarQuebra(source->text());
    if (!source->hasText() || !source->text().contains(QChar::Null)) {
        QPlainTextEdit::insertFromMimeData(source);
        return;
    }
    QMimeData limpo;
    limpo.setText(source->text().remove(QChar::Null));
    QPlainTextEdit::insertFromMimeData(&limpo);
}

void CampoMemo::keyPressEvent(QKeyEvent *event)
{
    if (Filtrada(*event, false)) {
        event->accept();
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

void CampoMemo::inputMethodEvent(QInputMethodEvent *event)
{
    FiltrarComposicao(*event, false);
    QPlainTextEdit::inputMethodEvent(event);
}

ComboTexto::ComboTexto(const QString &nome, QWidget *parent)
    : ComboTexto(nome, new CampoTexto(nome + "_texto"), parent)
{
}

ComboTexto::ComboTexto(const QString &nome, CampoTexto *campo, QWidget *parent)
    : QComboBox(parent)
    , m_itens(new ModeloDeItens(this))
{
    setObjectName(nome);
    setModel(m_itens);
    setEditable(true);
    setLineEdit(campo);
    setCompleter(nullptr);
    setInsertPolicy(QComboBox::NoInsert);
    setMaxVisibleItems(12);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(4);
}

void ComboTexto::DefinirItens(const QStringList &itens)
{
    DefinirFonte(std::make_shared<FonteDeTextos>(itens));
}

void ComboTexto::DefinirFonte(std::shared_ptr<FonteDeItens> fonte, bool comVazio)
{
    m_itens->Trocar(std::move(fonte), comVazio);
}

QStringList ComboTexto::Itens() const
{
    QStringList itens;
    const int quantos = count();
    itens.reserve(quantos);
    for (int i = 0; i < quantos; ++i)
        itens += itemText(i);
    return itens;
}

void ComboTexto::AdicionarItem(const QString &item)
{
    const QString texto = currentText();
    const int escolhido = currentIndex();
    m_itens->Acrescentar(item);
    if (escolhido < 0 && currentIndex() >= 0)
        setCurrentIndex(-1); // a first item would be chosen by itself
    setEditText(texto);
}

bool ComboTexto::ItemSelecionado() const
{
    return currentIndex() >= 0 && itemText(currentIndex()) == currentText();
}

void ComboTexto::DefinirTexto(const QString &texto)
{
    setCurrentIndex(-1);
    setEditText(texto);
}

int ComboTexto::Procurar(QStringView prefixo) const
{
    return m_itens->Procurar(prefixo);
}

// Qt counts the rows to find out whether one has an icon; none has.
QSize ComboTexto::sizeHint() const
{
    m_itens->DefinirSemEsperar(true);
    const QSize tamanho = QComboBox::sizeHint();
    m_itens->DefinirSemEsperar(false);
    return tamanho;
}

QSize ComboTexto::minimumSizeHint() const
{
    m_itens->DefinirSemEsperar(true);
    const QSize tamanho = QComboBox::minimumSizeHint();
    m_itens->DefinirSemEsperar(false);
    return tamanho;
}

bool LocalizarValorCombo(const ComboTexto &combo, const QString &valor)
{
    return combo.m_itens->Contem(valor);
}
