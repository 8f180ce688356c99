#pragma once

#include "Comando.h"

#include <QObject>
#include <QPointer>

class QAbstractItemView;
class QModelIndex;
class QWidget;

/**
 * Carries single commands out on the running program, as a user would: events enter through the window
 * system's door, so focus, modality, shortcuts and mouse grabs act as they do for a person. Controls are
 * found by object name. See README.md in this folder for the verbs.
 */
class Executor
{
public:
    enum class Resultado {
        Feito,
        AindaNao, ///< the control is not there yet, or the condition does not hold yet: try again
        Falhou    ///< cannot become true by waiting
    };

    /// Carries the command out, or tells why not in `motivo`.
    Resultado Executar(const Comando &comando, QString &motivo);

private:
    Resultado Clicar(const Comando &comando, QString &motivo);
    Resultado ClicarLinha(const Comando &comando, QString &motivo);
    Resultado Digitar(const Comando &comando, QString &motivo);
    Resultado Colar(const Comando &comando, QString &motivo);
    Resultado Arquivo(const Comando &comando, QString &motivo);
    Resultado Responder(const Comando &comando, QString &motivo);
    Resultado Escolher(const Comando &comando, QString &motivo);
    Resultado Conferir(const Comando &comando, QString &motivo);
    Resultado Fotografar(const Comando &comando, QString &motivo);
    Resultado FotografarEmAndamento(const Comando &comando, QString &motivo);
    Resultado Guardar(const Comando &comando, QString &motivo);
};
