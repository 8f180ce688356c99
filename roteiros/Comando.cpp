#include "Comando.h"

namespace
{
QStringList Palavras(const QString &linha)
{
    QStringList palavras;
    QString palavra;
    bool dentro = false;
    bool houve = false;
    for (qsizetype i = 0; i < linha.size(); ++i) {
        const QChar c = linha[i];
        if (dentro && c == u'\\' && i + 1 < linha.size()) {
            ++i;
            palavra += linha[i] == u'n' ? QChar(u'\n') : linha[i];
        } else if (c == u'"') {
            dentro = !dentro;
            houve = true;
        } else if (c == u' ' && !dentro) {
            if (houve || !palavra.isEmpty())
                palavras += palavra;
            palavra.clear();
            houve = false;
        } else {
            palavra += c;
        }
    }
    if (houve || !palavra.isEmpty())
        palavras += palavra;
    return palavras;
}
} // namespace

QList<Comando> LerRoteiro(const QString &texto)
{
    QList<Comando> comandos;
    const QStringList linhas = texto.split('\n');
    for (qsizetype i = 0; i < linhas.size(); ++i) {
        const QString linha = linhas[i].trimmed();
        if (linha.isEmpty() || linha.startsWith('#'))
            continue;
        QStringList palavras = Palavras(linha);
        const QString verbo = palavras.takeFirst();
        comandos += Comando{static_cast<int>(i + 1), verbo, palavras};
    }
    return comandos;
}
