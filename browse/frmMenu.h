#pragma once

#include "base/Operacao.h"

#include <QWidget>

#include <optional>

class QAction;
class QMenu;

/// The hidden form that holds the list's pop-up menu; it is never shown itself.
class frmMenu : public QWidget
{
    Q_OBJECT
public:
    explicit frmMenu(QWidget *parent = nullptr);

    QMenu *mnuPopUp;
    QAction *mnuConsultarReceita;
    QAction *mnuAlterarReceita;
    QAction *mnuImprimirReceita;
    QAction *mnuExcluirReceita;

private:
    std::optional<Operacao> m_aberto; ///< while the menu is open
};
