#include "base/FiltrarTecla.h"

#include "base/Separadores.h"

quint16 FiltrarTecla(quint16 &keyAscii, bool numeric)
{
    if (keyAscii == 3 || keyAscii == 8 || keyAscii == 22 || keyAscii == 24)
        return keyAscii;
    if (numeric) {
        const bool algarismo = keyAscii >= u'0' && keyAscii <= u'9';
        if (keyAscii != Separadores::Atuais().decimal.unicode() && keyAscii != u'-' && !algarismo)
            keyAscii = 0;
    } else if (keyAscii == u'\'' || keyAscii < 30) {
        keyAscii = 0;
    }
    return keyAscii;
}

QString FiltrarTexto(const QString &texto, bool numeric)
{
    QString saida;
    for (const QChar c : texto) {
        quint16 codigo = c.unicode();
        if (FiltrarTecla(codigo, numeric) != 0)
            saida += c;
    }
    return saida;
}
