#pragma once

#include "base/Abridor.h"

/// Opens through the desktop's own settings.
class AbridorQt : public Abridor
{
public:
    void AbrirArquivo(const QString &caminho) override;
    void AbrirMensagem(const QString &caminho, const std::function<void()> &semPrograma) override;
    void AbrirEndereco(const QUrl &endereco) override;
};
