#pragma once

#include "base/Abridor.h"
#include "base/Avisos.h"
#include "base/Telas.h"

#include <QStringList>

#include <csignal>

#include <sys/resource.h>

/// While it lives no file grows beyond so many bytes: a full disk.
class LimiteDeArquivo
{
public:
    explicit LimiteDeArquivo(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_antes);
        const rlimit pouco = {bytes, m_antes.rlim_max};
        setrlimit(RLIMIT_FSIZE, &pouco);
    }
    ~LimiteDeArquivo() { setrlimit(RLIMIT_FSIZE, &m_antes); }
    LimiteDeArquivo(const LimiteDeArquivo &) = delete;
    LimiteDeArquivo &operator=(const LimiteDeArquivo &) = delete;

private:
    rlimit m_antes = {};
};

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
