#pragma once

#include <QString>

class QApplication;

/// The look of the whole program: colours, frames, fields and buttons of one family, the same on every
/// desktop and under dark themes too.
void AplicarAparencia(QApplication &aplicacao);
