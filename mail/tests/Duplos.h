#pragma once

#include "base/Abridor.h"
#include "base/Avisos.h"
#include "base/Telas.h"
#include "base/tests/LimiteDeArquivo.h"

#include <QStringList>

/// Remembers what the user would have been told.
class AvisosDeTeste : public Avisos
{
public:
    void Avisar(const QString &texto, Icone icone) override
    {
        textos << texto;
        icones << icone;
    }
    bool Perguntar(const QString &) override { return false; }

    QStringList textos;
    QList<Icone> icones;
};

/// A window whose only property is the view on screen.
class TelasDeTeste : public Telas
{
public:
    void AbrirTela(const QString &) override {}
    void FecharTela() override {}
    QString TelaAtual() const override { return atual; }
    void RestaurarBotoes() override {}
    int AlturaDeTrabalho() const override { return 6540; }

    QString atual = "Detalhe";
};

/// Remembers what would have been opened.
class AbridorDeTeste : public Abridor
{
public:
    void AbrirArquivo(const QString &caminho) override { arquivos << caminho; }
    void AbrirEndereco(const QUrl &) override {}

    QStringList arquivos;
};
