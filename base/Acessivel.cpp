#include "base/Acessivel.h"

#include "base/Alcance.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

namespace
{
/// A panel that another one covers counts as not showing, and so does all it holds.
class PainelAcessivel : public QAccessibleWidget
{
public:
    explicit PainelAcessivel(QWidget *painel)
        : QAccessibleWidget(painel, QAccessible::Grouping)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State estado = QAccessibleWidget::state();
        if (Alcance::Encoberto(*widget()))
            estado.invisible = estado.offscreen = true;
        return estado;
    }

    int childCount() const override { return Alcance::Encoberto(*widget()) ? 0 : QAccessibleWidget::childCount(); }
    QAccessibleInterface *child(int index) const override
    {
        return Alcance::Encoberto(*widget()) ? nullptr : QAccessibleWidget::child(index);
    }
};

QAccessibleInterface *Criar(const QString &classe, QObject *objeto)
{
    auto *widget = qobject_cast<QWidget *>(objeto);
    if (!widget)
        return nullptr;
    if (classe == u"Painel")
        return new PainelAcessivel(widget);
    if (widget->property("papelAcessivel").isValid())
        return new QAccessibleWidget(
            widget, static_cast<QAccessible::Role>(widget->property("papelAcessivel").toInt()));
    return nullptr;
}

/// The words that are seen beside or around a field.
QString PalavrasDoCampo(const QWidget &campo, const QList<QLabel *> &rotulos)
{
    for (const QLabel *rotulo : rotulos) {
        if (rotulo->buddy() == &campo)
            return Acessivel::Palavras(rotulo->text());
    }
    const auto *quadro = qobject_cast<const QGroupBox *>(campo.parentWidget());
    return quadro ? Acessivel::Palavras(quadro->title()) : QString();
}
} // namespace

QString Acessivel::Palavras(const QString &legenda)
{
    QString palavras;
    for (qsizetype i = 0; i < legenda.size(); ++i) {
        if (legenda[i] != u'&' || (i > 0 && legenda[i - 1] == u'&'))
            palavras += legenda[i];
    }
    palavras = palavras.trimmed();
    if (palavras.endsWith(u':'))
        palavras.chop(1);
    return palavras.trimmed();
}

void Acessivel::Nomear(QWidget &raiz)
{
    const QList<QLabel *> rotulos = raiz.findChildren<QLabel *>();
    for (QWidget *controle : raiz.findChildren<QWidget *>()) {
        const auto *botao = qobject_cast<QAbstractButton *>(controle);
        if (botao && !botao->text().isEmpty()) {
            controle->setAccessibleName(Palavras(botao->text()));
            continue;
        }
        if (controle->accessibleName().isEmpty() && controle->focusPolicy() != Qt::NoFocus)
            controle->setAccessibleName(PalavrasDoCampo(*controle, rotulos));
    }
    for (QComboBox *combo : raiz.findChildren<QComboBox *>()) {
        if (combo->lineEdit())
            combo->lineEdit()->setAccessibleName(combo->accessibleName());
    }
}

void Acessivel::Instalar()
{
    static const bool uma = [] {
        QAccessible::installFactory(&Criar);
        return true;
    }();
    Q_UNUSED(uma);
}

void Acessivel::Anunciar(QWidget &aviso)
{
    QAccessibleEvent event(&aviso, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}
