#pragma once

#include <functional>

class QObject;

/**
 * What the program is doing right now. Long work lets window events run between its steps, so anything could
 * start inside anything; this is the one place that says whether it may.
 *
 * Who works holds an Operacao for as long as the work lasts; operations may lie inside each other (a save
 * fills the list at its end). Who wants to start something asks here:
 *  - what the user asks for goes through Pedir(): while a panel rolls or the list fills it waits for the end
 *    of that, while anything else runs it is refused;
 *  - timers, notices of another copy and other things nobody asked for go through QuandoLivre() (or look at
 *    EmAndamento() and re-arm): they wait until nothing at all runs.
 * No handler needs a guard of its own. Everything here belongs to the user-interface thread.
 */
class Operacao
{
public:
    enum class Tipo {
        Partida,       ///< the window is not complete yet: what nobody asked for waits
        Preenchimento, ///< the list takes its rows
        Rolagem,       ///< a panel rolls open
        Dialogo,       ///< a message or a chooser waits for its answer
        Longa,         ///< the message panel shows, whatever for
        Gravacao,      ///< a recipe is saved
        Exclusao,
        Importacao,
        Exportacao,
        Email,
        Impressao,
        Backup,
        Restauracao,
        Visita, ///< the news are fetched: the user goes on working meanwhile, what nobody asked for waits
        Menu    ///< a pop-up menu is open: the same
    };

    explicit Operacao(Tipo tipo);
    ~Operacao();
    Operacao(const Operacao &) = delete;
    Operacao &operator=(const Operacao &) = delete;
    /// The operation is over before the object's life is. Idempotent.
    void Encerrar();

    /// Whether anything runs.
    static bool EmAndamento();
    /// Whether an operation of this kind runs, be it around others.
    static bool EmAndamento(Tipo tipo);
    /// Whether anything but operations of this kind runs.
    static bool EmAndamentoAlemDe(Tipo tipo);
    /// Whether what the user asks for could start at once.
    static bool PodeComecar();

    /**
     * Runs what the user has asked for: at once, or when the roll or the fill under way has ended, or never
     * (see above). Of several requests of one `dono` that wait, the newest remains; one whose `dono` is gone
     * is dropped, and so is everything once the program ends.
     * @return false when it was refused
     */
    static bool Pedir(QObject *dono, std::function<void()> comando);

    /// Runs `tarefa` from the event loop as soon as nothing runs; tasks run in their order, unless `dono` is
    /// gone or the program ends.
    static void QuandoLivre(QObject *dono, std::function<void()> tarefa);

private:
    Tipo m_tipo;
    bool m_aberta = true;
};
