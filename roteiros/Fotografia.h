#pragma once

#include <QPixmap>

class QWidget;

/// The widget as it looks now; what a window's shape cuts away is transparent.
QPixmap Retrato(QWidget &widget);

/// The window with the dialogs and menus that lie over it, frames included where the window system draws
/// them.
QPixmap RetratoComDialogos(QWidget &janela);
