#include "app/Aparencia.h"

#include "base/Fontes.h"

#include <QApplication>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>

namespace
{
// Navy on pale blue keeps a contrast above 7:1; white fields and lists on it.
const QColor kTexto(0x14, 0x21, 0x4d);
const QColor kPainel(0xe6, 0xee, 0xfb);
const QColor kDestaque(0x2f, 0x5f, 0xc4);

constexpr auto kFolha = R"(
#frmPrincipal { background: #c9d9f5; }
#picFundo { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #dfe9fa, stop:1 #b9cdf1);
            border: 1px solid #7f9cd6; }
#picLstReceitas, #picDetReceita, #picPesReceita, #picWeb { background: #e6eefb; border: 1px solid #8aa5da; }
#picMsg { background: #f7faff; border: 2px solid #4a6fbf; }

QGroupBox { border: 1px solid #a9bfe6; border-radius: 4px; margin-top: 8px; padding-top: 6px; }
QGroupBox::title { subcontrol-origin: margin; left: 8px; color: #14214d; }

QLineEdit, QPlainTextEdit, QTreeView, QTreeWidget, QListView, QListWidget, QTextBrowser {
    background: #ffffff; color: #14214d; border: 1px solid #9fb4dc; border-radius: 3px;
    selection-background-color: #2f5fc4; selection-color: #ffffff; }
QLineEdit { padding: 1px 3px; }
QLineEdit:focus, QPlainTextEdit:focus, QTreeView:focus, QTreeWidget:focus, QListView:focus, QTextBrowser:focus,
QComboBox:focus { border: 1px solid #2f5fc4; }
QLineEdit:read-only { background: #eef3fc; color: #3b4a78; }
QLineEdit:disabled, QPlainTextEdit:disabled { background: #e3e9f5; color: #7a86a8; }

QPushButton { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #ffffff, stop:1 #d3e0f7);
    color: #14214d; border: 1px solid #7f9cd6; border-radius: 4px; padding: 4px 12px; min-height: 14px; }
QPushButton:hover { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #ffffff, stop:1 #fbe6c0);
    border-color: #c98a2b; }
QPushButton:pressed { background: #bcd0f2; }
QPushButton:focus { border: 2px solid #2f5fc4; padding: 3px 11px; }
QPushButton:disabled { color: #8c97b5; background: #e3e9f5; border-color: #b9c6e2; }

QPushButton#lblFechar { padding: 2px 12px; }
QPushButton#lblFechar:focus { padding: 1px 11px; }

QHeaderView::section { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #f4f8ff, stop:1 #cfddf6);
    color: #14214d; border: 0; border-right: 1px solid #a9bfe6; border-bottom: 1px solid #8aa5da; padding: 3px 5px; }

QProgressBar { border: 1px solid #7f9cd6; border-radius: 4px; background: #ffffff; min-height: 16px; max-height: 16px; }
QProgressBar::chunk { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #7ea6f0, stop:1 #2f5fc4);
    border-radius: 3px; }

QToolTip { background: #fffbe8; color: #14214d; border: 1px solid #c9a94b; padding: 2px; }
)";

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
    cores.setColor(QPalette::Link, QColor(0x1d, 0x4f, 0xb8));
    cores.setColor(QPalette::ToolTipBase, QColor(0xff, 0xfb, 0xe8));
    cores.setColor(QPalette::ToolTipText, kTexto);
    cores.setColor(QPalette::PlaceholderText, QColor(0x6b, 0x78, 0xa0));
    cores.setColor(QPalette::Light, Qt::white);
    cores.setColor(QPalette::Mid, QColor(0xa9, 0xbf, 0xe6));
    cores.setColor(QPalette::Dark, QColor(0x7f, 0x9c, 0xd6));
    cores.setColor(QPalette::Shadow, QColor(0x4a, 0x5a, 0x8a));
    for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        cores.setColor(QPalette::Disabled, papel, QColor(0x8c, 0x97, 0xb5));
    QApplication::setPalette(cores);
    QApplication::setFont(FonteVerdana(8.25));
    aplicacao.setStyleSheet(kFolha);
}
