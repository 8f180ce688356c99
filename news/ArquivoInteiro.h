#pragma once

#include <QByteArray>
#include <QString>

/**
 * Replaces the file `caminho` (native path) by one that holds exactly `bytes`: written beside it under a work
 * name, flushed to the disk and renamed, so that the old file stays whole until the new one is.
 *
 * A symbolic link of either name is replaced, never followed.
 * @return false when it could not be done; the old file is unchanged then and no work file is left
 */
bool GravarArquivoInteiro(const QString &caminho, const QByteArray &bytes);
