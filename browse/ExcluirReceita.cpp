#include "browse/ExcluirReceita.h"

#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/Figuras.h"

void ExcluirReceita(const Banco &banco, qint64 lngReceita)
{
    Figuras(banco).ApagarFigura(lngReceita);
    banco.ExecutarSQL(Comandos::SqlExcluirIngredientes(lngReceita));
    banco.ExecutarSQL(Comandos::SqlExcluirReceita(lngReceita));
}
