#pragma once

#include <QString>

/// What a file chooser shows before the user touches it.
struct PedidoArquivo {
    QString titulo;
    QString filtro; ///< as the dialogs state it: "Arquivos de Backups|*.bck" (patterns separated by ";")
    QString pastaInicial;        ///< native path; empty lets the system choose
    QString nome;                ///< proposed file name, may be empty
    bool exigirExistente = true; ///< opening only: false lets the user type a name that does not exist
};

/// The common open/save dialog. Answers are native absolute paths; empty means the user cancelled.
class SeletorArquivos
{
public:
    virtual ~SeletorArquivos() = default;
    virtual QString EscolherParaAbrir(const PedidoArquivo &pedido) = 0;
    /// Overwriting is never questioned here: callers that replace a file do so by promise.
    virtual QString EscolherParaSalvar(const PedidoArquivo &pedido) = 0;
};
