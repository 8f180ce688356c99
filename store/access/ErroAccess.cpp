#include "store/access/ErroAccess.h"

void Access::Danificado(const QString &detalhe)
{
    throw ErroAccess("O arquivo está danificado ou incompleto (" + detalhe + ").");
}
