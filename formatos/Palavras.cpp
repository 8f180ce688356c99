#include "formatos/Palavras.h"

#include "formatos/Limpeza.h"

#include <QFile>

#include <algorithm>

static void CarregarRecursos()
{
    Q_INIT_RESOURCE(formatos);
}

namespace Formatos
{
const Palavras &Palavras::Da()
{
    static const Palavras palavras;
    return palavras;
}

Palavras::Palavras()
{
    CarregarRecursos();
    QFile arquivo(":/formatos/palavras.txt");
    if (!arquivo.open(QIODevice::ReadOnly))
        qFatal("the word list is not in the program");
    QString secao;
    for (const QString &bruta : QString::fromUtf8(arquivo.readAll()).split(u'\n')) {
        const QString linha = bruta.trimmed();
        if (linha.isEmpty() || linha.startsWith(u'#'))
            continue;
        if (linha.startsWith(u'[') && linha.endsWith(u']')) {
            secao = linha.sliced(1, linha.size() - 2);
            continue;
        }
        if (const qsizetype igual = linha.indexOf(u'='); igual > 0) {
            m_pares[secao].append({Dobrar(linha.first(igual)), linha.sliced(igual + 1)});
            continue;
        }
        m_frases[secao].append(Dobrar(linha));
        if (secao == "unidades" || secao == "unidades-inglesas")
            if (const QStringList formas = linha.split(u' ', Qt::SkipEmptyParts); formas.size() > 1)
                m_plurais.append({formas[0], formas[1]});
        for (const QString &palavra : linha.split(u' ', Qt::SkipEmptyParts))
            m_conjuntos[secao].insert(secao == "unidades-de-uma-letra" ? palavra : Dobrar(palavra));
    }
    m_inglesas = Conjunto("unidades-inglesas") | Conjunto("unidades-inglesas-abreviadas");
    m_unidades = Conjunto("unidades") | Conjunto("unidades-abreviadas") | m_inglesas;
    const auto maior = [](const QString &a, const QString &b) { return a.size() > b.size(); };
    for (QStringList &frases : m_frases)
        std::stable_sort(frases.begin(), frases.end(), maior);
    for (auto &pares : m_pares)
        std::stable_sort(pares.begin(), pares.end(),
                         [&](const auto &a, const auto &b) { return maior(a.first, b.first); });
}

const QSet<QString> &Palavras::Conjunto(const QString &secao) const
{
    static const QSet<QString> vazio;
    const auto achado = m_conjuntos.constFind(secao);
    return achado == m_conjuntos.constEnd() ? vazio : *achado;
}

const QStringList &Palavras::Frases(const QString &secao) const
{
    static const QStringList vazio;
    const auto achado = m_frases.constFind(secao);
    return achado == m_frases.constEnd() ? vazio : *achado;
}

const QList<std::pair<QString, QString>> &Palavras::Pares(const QString &secao) const
{
    static const QList<std::pair<QString, QString>> vazio;
    const auto achado = m_pares.constFind(secao);
    return achado == m_pares.constEnd() ? vazio : *achado;
}

bool Palavras::EUnidadeInglesa(const QString &dobrada) const
{
    const QString semPonto = dobrada.endsWith(u'.') ? dobrada.chopped(1) : dobrada;
    return m_inglesas.contains(semPonto);
}

bool Palavras::EUnidade(const QString &dobrada) const
{
    const QString semPonto = dobrada.endsWith(u'.') ? dobrada.chopped(1) : dobrada;
    return m_unidades.contains(semPonto);
}
} // namespace Formatos
