#include "app/Aparencia.h"

#include "base/Fontes.h"

#include <QApplication>
#include <QComboBox>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOptionButton>
#include <QStyledItemDelegate>

namespace
{
// Navy on pale blue keeps a contrast above 7:1; white fields and lists on it.
const QColor kTexto(0x14, 0x21, 0x4d);
const QColor kPainel(0xe6, 0xee, 0xfb);
const QColor kDestaque(0x2f, 0x5f, 0xc4);

// The edge of a control is at least 3:1 against the panel and its own white, text at least 4.5:1.
const QColor kBorda(0x5f, 0x7d, 0xbd);
constexpr int kAlturaDaLinha = 20; // of lists that drop down, pixels

// Every combo box is drawn from here in all its states: one rule alone, for the focus say, would give that
// state the looks of another style.
constexpr auto kFolha = R"(
#frmPrincipal { background: #c9d9f5; }
#picFundo { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #dfe9fa, stop:1 #b9cdf1);
            border: 1px solid #7f9cd6; }
#picLstReceitas, #picDetReceita, #picPesReceita, #picWeb { background: #e6eefb; border: 1px solid #8aa5da; }
#picMsg { background: #f7faff; border: 2px solid #4a6fbf; }

QGroupBox { border: 1px solid #a9bfe6; border-radius: 4px; margin-top: 8px; padding-top: 6px; }
QGroupBox::title { subcontrol-origin: margin; left: 8px; color: #14214d; }

QLineEdit, QPlainTextEdit, QTreeView, QTreeWidget, QListView, QListWidget, QTextBrowser {
    background: #ffffff; color: #14214d; border: 1px solid #5f7dbd; border-radius: 3px;
    selection-background-color: #2f5fc4; selection-color: #ffffff; }
QLineEdit { padding: 1px 3px; }
QLineEdit:focus, QPlainTextEdit:focus, QTreeView:focus, QTreeWidget:focus, QListView:focus, QTextBrowser:focus {
    border: 1px solid #1c3f94; }
QLineEdit:read-only { background: #eef3fc; color: #3b4a78; }
QLineEdit:disabled, QPlainTextEdit:disabled { background: #e3e9f5; color: #7a86a8; }

QComboBox { background: #ffffff; border: 1px solid #5f7dbd; border-radius: 3px; padding: 1px 3px;
    selection-background-color: #2f5fc4; selection-color: #ffffff; combobox-popup: 0; }
QComboBox:focus, QComboBox:on { border-color: #1c3f94; }
QComboBox:!editable:focus { background: #eaf1ff; }
QComboBox:disabled { background: #e3e9f5; color: #7a86a8; }
QComboBox QLineEdit, QComboBox QLineEdit:focus { border: 0; padding: 0; background: transparent; }
QComboBox::drop-down { subcontrol-origin: padding; subcontrol-position: center right; width: 17px; border: 0;
    border-left: 1px solid #c3d1ee; }
QComboBox::down-arrow { image: url(:/seta.svg); width: 9px; height: 9px; }
QComboBox QAbstractItemView { border: 1px solid #5f7dbd; border-radius: 0; }

#TrVwIngredientes::item { min-height: 18px; }
#WbBsr1, #WbBsr1:focus { border: 0; border-radius: 0; }
#imgFigura { background: #ffffff; border: 1px solid #5f7dbd; }

QPushButton { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #ffffff, stop:1 #d3e0f7);
    color: #14214d; border: 1px solid #5f7dbd; border-radius: 4px; padding: 4px 12px; min-height: 14px; }
QPushButton:hover { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #ffffff, stop:1 #fbe6c0);
    border-color: #c98a2b; }
QPushButton:pressed { background: #bcd0f2; }
QPushButton:focus { border: 2px solid #2f5fc4; padding: 3px 11px; }
QPushButton:disabled { color: #8c97b5; background: #e3e9f5; border-color: #b9c6e2; }

QPushButton#lblFechar { padding: 2px 12px; }
QPushButton#lblFechar:focus { padding: 1px 11px; }

QHeaderView::section { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #f4f8ff, stop:1 #cfddf6);
    color: #14214d; border: 0; border-right: 1px solid #a9bfe6; border-bottom: 1px solid #8aa5da; padding: 3px 2px; }

QProgressBar { border: 1px solid #5f7dbd; border-radius: 4px; background: #ffffff; min-height: 16px; max-height: 16px; }
QProgressBar::chunk { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #7ea6f0, stop:1 #2f5fc4);
    border-radius: 3px; }

QToolTip { background: #fffbe8; color: #14214d; border: 1px solid #c9a94b; padding: 2px; }
)";

/// Rows with some air around the text.
class LinhaArejada : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return QStyledItemDelegate::sizeHint(option, index).expandedTo(QSize(0, kAlturaDaLinha));
    }
};

/// Message boxes show the program's own drawings, and the buttons of dialogs their text alone.
class Estilo : public QProxyStyle
{
public:
    Estilo()
        : QProxyStyle(QStyleFactory::create("Fusion"))
    {
    }

    QIcon standardIcon(StandardPixmap qual, const QStyleOption *option, const QWidget *widget) const override
    {
        switch (qual) {
        case SP_MessageBoxInformation:
            return QIcon(":/avisos/informacao.svg");
        case SP_MessageBoxWarning:
            return QIcon(":/avisos/exclamacao.svg");
        case SP_MessageBoxCritical:
            return QIcon(":/avisos/parada.svg");
        case SP_MessageBoxQuestion:
            return QIcon(":/avisos/pergunta.svg");
        default:
            return QProxyStyle::standardIcon(qual, option, widget);
        }
    }

    int styleHint(StyleHint qual, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *dados) const override
    {
        if (qual == SH_DialogButtonBox_ButtonsHaveIcons)
            return 0;
        return QProxyStyle::styleHint(qual, option, widget, dados);
    }

    int pixelMetric(PixelMetric qual, const QStyleOption *option, const QWidget *widget) const override
    {
        if (qual == PM_FocusFrameHMargin)
            return 1; // a cell's text stands two pixels from its edge, like the head of its column
        return QProxyStyle::pixelMetric(qual, option, widget);
    }

    void drawPrimitive(PrimitiveElement qual, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override
    {
        const auto *botao = qstyleoption_cast<const QStyleOptionButton *>(option);
        if (botao && (qual == PE_IndicatorRadioButton || qual == PE_IndicatorCheckBox)) {
            QStyleOptionButton nitido(*botao); // whose ring is darkened from this colour
            nitido.palette.setColor(QPalette::Window, kBorda.lighter(115));
            QProxyStyle::drawPrimitive(qual, &nitido, painter, widget);
            return;
        }
        QProxyStyle::drawPrimitive(qual, option, painter, widget);
    }

    using QProxyStyle::polish;
    void polish(QWidget *controle) override
    {
        QProxyStyle::polish(controle);
        if (auto *combo = qobject_cast<QComboBox *>(controle))
            combo->setItemDelegate(new LinhaArejada(combo));
    }
};
} // namespace

void AplicarAparencia(QApplication &aplicacao)
{
    // One style everywhere: desktop styles and dark themes would fight with the gradients.
    QApplication::setStyle(new Estilo);
    QPalette cores;
    cores.setColor(QPalette::Window, kPainel);
    cores.setColor(QPalette::WindowText, kTexto);
    cores.setColor(QPalette::Base, Qt::white);
    cores.setColor(QPalette::AlternateBase, QColor(0xf3, 0xf7, 0xfe));
    cores.setColor(QPalette::Text, kTexto);
    cores.setColor(QPalette::Button, QColor(0xdc, 0xe6, 0xf8));
    cores.setColor(QPalette::ButtonText, kTexto);
    cores.setColor(QPalette::BrightText, Qt::white);
    cores.setColor(QPalette::Highlight, kDestaque);
    cores.setColor(QPalette::HighlightedText, Qt::white);
    cores.setColor(QPalette::Link, QColor(0x1a, 0x48, 0xa8));
    cores.setColor(QPalette::ToolTipBase, QColor(0xff, 0xfb, 0xe8));
    cores.setColor(QPalette::ToolTipText, kTexto);
    cores.setColor(QPalette::PlaceholderText, QColor(0x62, 0x6f, 0x96));
    cores.setColor(QPalette::Light, Qt::white);
    cores.setColor(QPalette::Mid, QColor(0xa9, 0xbf, 0xe6));
    cores.setColor(QPalette::Dark, QColor(0x7f, 0x9c, 0xd6));
    cores.setColor(QPalette::Shadow, QColor(0x4a, 0x5a, 0x8a));
    for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        cores.setColor(QPalette::Disabled, papel, QColor(0x8c, 0x97, 0xb5));
    QApplication::setPalette(cores);
    // A dark desktop has its own colours for some kinds of control, which would stay.
    for (const char *tipo : {"QAbstractButton", "QAbstractItemView", "QCheckBox", "QComboBox", "QGroupBox",
                             "QHeaderView", "QLabel", "QLineEdit", "QMenu", "QMessageBoxLabel",
                             "QRadioButton", "QTabBar", "QTextControl", "QTextEdit", "QToolButton"})
        QApplication::setPalette(cores, tipo);
    QApplication::setFont(FonteVerdana(8.25));
    aplicacao.setStyleSheet(kFolha);
}
