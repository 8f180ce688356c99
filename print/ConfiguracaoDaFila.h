#pragma once

#include "print/ImpressoraAtual.h"

#include <QList>
#include <QMap>
#include <QStringList>

#include <utility>

/// A choice that a printer's own description (PPD) offers, e.g. "ColorModel" with "Gray" and "RGB".
struct EscolhaDaDescricao {
    QString opcao;   ///< "" when the description has nothing of the kind
    QString escolha; ///< what a job gets that asks for nothing
    QStringList possiveis;
};

/**
 * What a queue of the print system says of itself, in the print system's own words.
 *
 * A setting may stand in three places: the service's defaults of the queue, the user's own options
 * (lpoptions) and the printer's description.
 */
struct ConfiguracaoDaFila {
    QString nome;                     ///< as the list of printers shows it, an instance behind a "/"
    QMap<QString, QString> doServico; ///< "copies" of the attribute "copies-default" ...
    QMap<QString, QString> doUsuario; ///< options that the user set, or that the service repeats
    EscolhaDaDescricao qualidade;     ///< of the printer's description
    EscolhaDaDescricao cor;

    /// The user's option, else the service's default, else "".
    QString Opcao(const QString &opcao) const;
};

/// The queue's settings in the print options dialog's numbers. What nobody says: one copy, portrait, normal
/// quality, monochrome.
ImpressoraAtual LerConfiguracao(const ConfiguracaoDaFila &fila);

/// The options that a job with these settings takes along: what the queue says of paper, duplex and all else
/// that the dialog does not touch, and what the dialog says. Copies are always among them.
QList<std::pair<QString, QString>> OpcoesDoTrabalho(const ConfiguracaoDaFila &fila,
                                                    const ImpressoraAtual &atual);
