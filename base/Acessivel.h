#pragma once

#include <QString>

class QWidget;

/**
 * What screen readers and voice control are told of the window, beyond what Qt tells by itself.
 */
namespace Acessivel
{
/**
 * Names the controls below `raiz` by the words that are seen: a button by what stands on it, a field by its
 * label (its buddy) or the title of the frame it fills, the edit within a combo box as the box. What has a
 * name keeps it, buttons excepted: who says "Salvar Dados" to the computer reads it there. The tooltip stays
 * what describes the control. Call it once the controls are made.
 */
void Nomear(QWidget &raiz);

/// The words of a caption: without the mark of the access key, the colon and blanks around them.
QString Palavras(const QString &legenda);

/// Installs what is told of panels, image buttons and the main window; any number of calls.
void Instalar();

/// Says that a message has appeared, so that it is read out at once.
void Anunciar(QWidget &aviso);
} // namespace Acessivel
