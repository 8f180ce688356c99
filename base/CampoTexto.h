#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

#include <memory>

class FonteDeItens;
class ModeloDeItens;
class QKeyEvent;

/**
 * The house's input controls: standard Qt controls whose typed characters pass through the keystroke filter
 * (base/FiltrarTecla.h), input methods and dead keys included. Pasted text is not filtered. Enter is
 * swallowed.
 */

/// What a key press types, as the filter counts characters: its code, or 0 for keys that type none (arrows,
/// Tab, Delete, function keys).
quint16 CodigoDaTecla(const QKeyEvent &tecla);

class CampoTexto : public QLineEdit
{
    Q_OBJECT
public:
    explicit CampoTexto(const QString &nome, QWidget *parent = nullptr, bool numeric = false);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    /// False drops the key press before the filter sees it.
    virtual bool Aceitar(QKeyEvent *event);

private:
    bool m_numeric;
};

/// A field of many lines. Tab leaves it. Texts go in and out with CR LF line ends; no-break spaces survive.
class CampoMemo : public QPlainTextEdit
{
    Q_OBJECT
public:
    explicit CampoMemo(const QString &nome, QWidget *parent = nullptr);
    QString Texto() const;
    void DefinirTexto(const QString &texto);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;

private:
    void AjustarQuebra(const QString &texto);
};

/**
 * An editable combo box over a plain list of texts (a model, not one object a row). It never completes by
 * itself and never inserts what is typed.
 */
class ComboTexto : public QComboBox
{
    Q_OBJECT
public:
    explicit ComboTexto(const QString &nome, QWidget *parent = nullptr);
    /// With an own line edit, for subclasses that look at keys first.
    ComboTexto(const QString &nome, CampoTexto *campo, QWidget *parent);

    /// Replaces the whole list; the text stays as it is.
    void DefinirItens(const QStringList &itens);
    /// The same with texts that may still be on their way; `comVazio` puts an empty one before them.
    void DefinirFonte(std::shared_ptr<FonteDeItens> fonte, bool comVazio = false);
    QStringList Itens() const;
    void AdicionarItem(const QString &item);
    /// Whether the text is that of the item chosen in the list (typing takes the choice away).
    bool ItemSelecionado() const;
    /// Text without choosing an item.
    void DefinirTexto(const QString &texto);
    /// The first item that begins so, as FonteDeItens looks for it; -1 for none.
    int Procurar(QStringView prefixo) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

private:
    friend bool LocalizarValorCombo(const ComboTexto &combo, const QString &valor);
    ModeloDeItens *m_itens;
};

/// Whether `valor` already is an item of the combo's list, both compared in upper case.
bool LocalizarValorCombo(const ComboTexto &combo, const QString &valor);
