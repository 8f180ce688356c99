#include "editor/Colagem.h"

#include <QLineEdit>
#include <QRegularExpression>

QString EmUmaLinha(const QString &texto)
{
    static const QRegularExpression quebras("[\\t\\r\\n\\x{2028}\\x{2029}]+");
    QString saida = texto;
    return saida.replace(quebras, " ");
}

void ManterEmUmaLinha(QLineEdit &campo)
{
    QObject::connect(&campo, &QLineEdit::textEdited, &campo, [&campo](const QString &texto) {
        const QString limpo = EmUmaLinha(texto);
        if (limpo == texto)
            return;
        const qsizetype cursor = EmUmaLinha(texto.left(campo.cursorPosition())).size();
        campo.setText(limpo);
        campo.setCursorPosition(static_cast<int>(cursor));
    });
}

void DefinirTextoInteiro(QLineEdit &campo, const QString &texto, int limite)
{
    campo.setMaxLength(qMax(limite, static_cast<int>(texto.size())));
    campo.setText(texto);
    campo.setCursorPosition(0);
}
