#include "base/Acompanha.h"

#include <QDir>
#include <QFileInfo>

namespace
{
QString Procurar(const QString &pastaDoPrograma, const QString &nome)
{
    for (const char *lugar : {"/", "/../share/cozinhario/"}) {
        const QString caminho = QDir::cleanPath(pastaDoPrograma + lugar + nome);
        if (QFileInfo(caminho).isFile())
            return caminho;
    }
    return {};
}
} // namespace

QString Acompanha::Guia(const QString &pastaDoPrograma)
{
    return Procurar(pastaDoPrograma, "guia/index.html");
}

QString Acompanha::Exemplos(const QString &pastaDoPrograma)
{
    return Procurar(pastaDoPrograma, "exemplos/PacoteReceita.lr$");
}
