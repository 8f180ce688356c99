#pragma once

#include "print/ImpressoraAtual.h"

#include <QStringList>

#include <memory>

class QPrinter;

/// The printers of the desktop, as the dialog and the print routes see them. Tests hand in their own.
class Impressoras
{
public:
    virtual ~Impressoras() = default;

    /// Device names of the installed printers, in the order the system lists them.
    virtual QStringList Nomes() const = 0;
    /// The system's default printer with its own settings; an empty device name when there is none.
    virtual ImpressoraAtual Padrao() const = 0;
    /// An installed printer with its own settings.
    virtual ImpressoraAtual Configuracao(const QString &nome) const = 0;

    /**
     * A fresh printer for one job, with these settings.
     *
     * @param documento the job's title
     * Throws ErroImpressao when there is no such printer. A setting that it rejects is skipped.
     */
    virtual std::unique_ptr<QPrinter> Criar(const ImpressoraAtual &atual, const QString &documento) const = 0;
};

/// The printers that the print system (CUPS) knows.
class ImpressorasDoSistema : public Impressoras
{
public:
    QStringList Nomes() const override;
    ImpressoraAtual Padrao() const override;
    ImpressoraAtual Configuracao(const QString &nome) const override;
    std::unique_ptr<QPrinter> Criar(const ImpressoraAtual &atual, const QString &documento) const override;
};

/// Orientation, copies, resolution and colour of the settings, on any printer.
void AplicarConfiguracao(QPrinter &printer, const ImpressoraAtual &atual);
