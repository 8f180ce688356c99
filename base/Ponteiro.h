#pragma once

/**
 * The program's mouse pointer: the hourglass or the normal one, as one state rather than a stack, because
 * the database operations set it absolutely and a failed one leaves the hourglass behind on purpose.
 */
namespace Ponteiro
{
void Ampulheta();
/// Back to normal, unless a long operation is still running.
void Normal();
/// Back to normal whatever is running: what the error report does before it speaks to the user.
void NormalSempre();
bool EmEspera();
} // namespace Ponteiro

/// Keeps the hourglass up for as long as it lives, through any number of database operations.
class EsperaLonga
{
public:
    EsperaLonga();
    ~EsperaLonga();
    EsperaLonga(const EsperaLonga &) = delete;
    EsperaLonga &operator=(const EsperaLonga &) = delete;
    /// Ends the wait before the object's life does. Idempotent.
    void Encerrar();

private:
    bool m_ativa = true;
};
