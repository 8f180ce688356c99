#include "base/Numero.h"

#include "base/Separadores.h"
#include "base/Texto.h"

#include <QVariant>

#include <cmath>

QString TextoDoNumero(double numero)
{
    QString texto = QString::number(numero, 'g', 15);
    texto.replace('.', Separadores::Atuais().decimal);
    return texto;
}

QString TextoDoNumero(qint64 numero)
{
    return QString::number(numero);
}

QString TextoDoValor(const QVariant &valor)
{
    if (valor.isNull())
        return {};
    if (valor.typeId() == QMetaType::Double)
        return TextoDoNumero(valor.toDouble());
    return valor.toString();
}

double Int(double numero)
{
    return std::floor(numero);
}

double NumeroDoTexto(const QString &texto, bool *ok)
{
    QString numero = Aparar(texto);
    numero.replace(Separadores::Atuais().decimal, '.');
    return numero.toDouble(ok);
}
