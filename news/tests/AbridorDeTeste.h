#pragma once

#include "base/Abridor.h"

#include <QList>
#include <QStringList>

/// Remembers what would have been opened.
class AbridorDeTeste : public Abridor
{
public:
    void AbrirArquivo(const QString &caminho) override { arquivos += caminho; }
    void AbrirEndereco(const QUrl &endereco) override { enderecos += endereco; }

    QStringList arquivos;
    QList<QUrl> enderecos;
};
