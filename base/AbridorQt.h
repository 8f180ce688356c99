#pragma once

#include "base/Abridor.h"

/// Opens through the desktop's own settings.
class AbridorQt : public Abridor
{
public:
    void AbrirArquivo(const QString &caminho) override;
    void AbrirEndereco(const QUrl &endereco) override;
};
