#include "assets/Recursos.h"

#include <QDir>

void IniciarRecursos()
{
    Q_INIT_RESOURCE(assets);
    Q_INIT_RESOURCE(traducoes);
}
