#include "base/Protegido.h"

#include "base/Ponteiro.h"

#include <exception>
#include <new>

void RelatarErro(Avisos &avisos)
{
    QString texto;
    try {
        throw;
    } catch (const std::bad_alloc &) {
        texto = "Memória insuficiente para concluir a operação.";
    } catch (const std::exception &erro) {
        texto = QString::fromUtf8(erro.what());
    } catch (...) {
        texto = "Ocorreu um erro inesperado e a operação não foi concluída.";
    }
    Ponteiro::NormalSempre();
    avisos.Avisar(texto, Avisos::Icone::Parada);
}
