#pragma once

#include <QByteArray>

class QImage;

/// The picture as a GIF 89a file of one frame with at most 256 colours, chosen by median cut. Qt reads GIF
/// but does not write it. Transparency is not kept. An empty picture, or one wider or higher than 65535,
/// gives no bytes.
QByteArray GravarGif(const QImage &imagem);
