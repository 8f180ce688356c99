#pragma once

class QWidget;

/**
 * Moves the keyboard focus of `janela`'s window to the next control (`next`) or the one before, as the Tab
 * key does, but leaves out controls that lie wholly under another one: panels share the same place, and a
 * focus that nobody sees is lost.
 * @return false when there is no other control to go to
 */
bool MoverFoco(const QWidget &janela, bool next);

/// Whether `controle`, or a panel it lies on, is wholly covered by a visible sibling in front.
bool Encoberto(const QWidget &controle);
