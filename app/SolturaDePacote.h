#pragma once

#include <QObject>

#include <functional>

class QMimeData;
class QWidget;

/// Takes a package (.lr$) that is dropped anywhere on a window, before a text field under the mouse takes its
/// name for text.
class SolturaDePacote : public QObject
{
    Q_OBJECT
public:
    /// @param importar is given the package's native path, from the event loop
    SolturaDePacote(QWidget &janela, std::function<void(const QString &)> importar);

    /// Native path of the one package that is dragged, or "".
    static QString Pacote(const QMimeData &dados);

protected:
    bool eventFilter(QObject *objeto, QEvent *event) override;

private:
    QWidget &m_janela;
    std::function<void(const QString &)> m_importar;
};
