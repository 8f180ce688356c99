#include "app/SolturaDePacote.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

SolturaDePacote::SolturaDePacote(QWidget &janela, std::function<void(const QString &)> importar)
    : QObject(&janela)
    , m_janela(janela)
    , m_importar(std::move(importar))
{
    janela.setAcceptDrops(true);
    qApp->installEventFilter(this);
}

QString SolturaDePacote::Pacote(const QMimeData &dados)
{
    const QList<QUrl> urls = dados.urls();
    if (urls.size() != 1 || !urls.first().isLocalFile())
        return {};
    const QString caminho = urls.first().toLocalFile();
    return caminho.endsWith(".lr$", Qt::CaseInsensitive) ? caminho : QString();
}

bool SolturaDePacote::eventFilter(QObject *objeto, QEvent *event)
{
    const QEvent::Type tipo = event->type();
    if (tipo != QEvent::DragEnter && tipo != QEvent::DragMove && tipo != QEvent::Drop)
        return false;
    const auto *controle = qobject_cast<QWidget *>(objeto);
    auto *soltura = static_cast<QDropEvent *>(event); // the base of the three
    const QString pacote = Pacote(*soltura->mimeData());
    if (!controle || controle->window() != &m_janela || pacote.isEmpty())
        return false;
    soltura->setDropAction(Qt::CopyAction);
    soltura->accept();
    if (tipo == QEvent::Drop)
        QMetaObject::invokeMethod(
            this, [this, pacote] { m_importar(pacote); }, Qt::QueuedConnection);
    return true;
}
