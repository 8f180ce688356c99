#include "packages/LinhaDeComando.h"

QString CaminhoDaLinhaDeComando(const QStringList &argumentos)
{
    return argumentos.join(' ').remove('"');
}
