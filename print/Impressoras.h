#pragma once

#include "print/ImpressoraAtual.h"

#include <QStringList>

#include <memory>

class QPrinter;

/// The paper of one job: what is drawn on its printer is handed over at the end, or leaves no trace.
class SaidaImpressao
{
public:
    /// A job that was not handed over is dropped, with whatever it had put aside.
    virtual ~SaidaImpressao() = default;

    /// The printer to draw on, set up; it belongs to this object.
    virtual QPrinter &Printer() = 0;
    /// Hands over what was drawn; the painter has ended. Throws ErroImpressao, with the printer's name, when
    /// it is not accepted.
    virtual void Entregar() = 0;
};

/// The printers of the desktop, as the dialog and the print routes see them. Tests hand in their own.
class Impressoras
{
public:
    virtual ~Impressoras() = default;

    /// Device names of the installed printers, in the order the system lists them. Throws ErroImpressao when
    /// the print service is there and does not answer.
    virtual QStringList Nomes() const = 0;
    /// The printer that is meant when nobody chose one, with its own settings: the user's default, the
    /// system's, else the first. An empty device name when there is none.
    virtual ImpressoraAtual Padrao() const = 0;
    /// An installed printer with its own settings; an empty device name when it is not installed (any more).
    virtual ImpressoraAtual Configuracao(const QString &nome) const = 0;

    /**
     * A fresh printer for one job, with these settings.
     *
     * @param documento the job's title
     * Throws ErroImpressao when there is no such printer, or no answer. A setting that it rejects is skipped.
     */
    virtual std::unique_ptr<SaidaImpressao> Criar(const ImpressoraAtual &atual,
                                                  const QString &documento) const = 0;
};

/// The printers that the print system (CUPS) knows.
class ImpressorasDoSistema : public Impressoras
{
public:
    QStringList Nomes() const override;
    ImpressoraAtual Padrao() const override;
    ImpressoraAtual Configuracao(const QString &nome) const override;
    std::unique_ptr<SaidaImpressao> Criar(const ImpressoraAtual &atual,
                                          const QString &documento) const override;
};
