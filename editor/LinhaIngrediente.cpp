#include "editor/LinhaIngrediente.h"

#include "base/Texto.h"

#include <QStringList>

namespace
{
constexpr QChar kSeparador = u'\u00A0';

// Text pasted from a web page or a word processor often carries no-break spaces. In a tag they would be taken
// for separators and push the ingredient into another column, so a value never keeps one.
QString Preparar(QString valor)
{
    return Aparar(valor.replace(kSeparador, u' '));
}

QString ComEspaco(const QString &valor)
{
    return valor.isEmpty() ? QString() : valor + ' ';
}
} // namespace

LinhaIngrediente LinhaIngrediente::DoTag(const QString &tag)
{
    const QStringList partes = tag.split(kSeparador);
    return {partes.value(0), partes.value(1), partes.value(2)};
}

LinhaIngrediente LinhaIngrediente::De(const QString &quantidade, const QString &unidade,
                                      const QString &ingrediente)
{
    return {Preparar(quantidade), Preparar(unidade), Preparar(ingrediente)};
}

QString LinhaIngrediente::Texto() const
{
    return ComEspaco(quantidade) + ComEspaco(unidade) + ingrediente;
}

QString LinhaIngrediente::Tag() const
{
    return quantidade + kSeparador + unidade + kSeparador + ingrediente;
}

QString ProximaChave(const QString &ultimaChave)
{
    if (ultimaChave == kChaveRaiz)
        return "C1";
    return QString("C%1").arg(ultimaChave.mid(1).toLongLong() + 1);
}
